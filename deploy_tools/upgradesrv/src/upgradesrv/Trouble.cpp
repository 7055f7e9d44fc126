#include "upgradesrv/Trouble.h"

#include "kvxsptstring/StringHelper.h"
#include "upgradesrv/Passwords.h"

namespace upgradesrv {

// A NUL would end what().
CTrouble::CTrouble(const std::string& text) : std::runtime_error(WithoutPasswords(CStringHelper::ToVisible(text))) {}

}  // namespace upgradesrv
