#pragma once

#include <string>

namespace upgradesrv {

/// `text` with "***" in place of what may be a password: the value of "password=", and what is between the ":" and the
/// "@" of an address, or in place of its port and no number. For what a user has typed in the wrong place.
std::string WithoutPasswords(const std::string& text);

/// The same for one argument of a command line, in which a password's quotation marks may be missing: it then reaches
/// to the next "word=" or to the end.
std::string ArgumentWithoutPassword(const std::string& argument);

/// Whether a text has "password=" in it, in whatever spelling libpq and its users know.
bool HoldsPassword(const std::string& text);

}  // namespace upgradesrv
