#pragma once

#include <stdexcept>
#include <string>

namespace upgradesrv {

/// Trouble that ends the command; what() is a whole sentence for the user, on one line, control characters of names
/// and texts in it made visible, without passwords.
class CTrouble : public std::runtime_error {
 public:
  explicit CTrouble(const std::string& text);
};

}  // namespace upgradesrv
