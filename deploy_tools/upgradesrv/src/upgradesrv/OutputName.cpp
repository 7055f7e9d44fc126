#include "upgradesrv/OutputName.h"

namespace upgradesrv {

std::string OutputNameProblem(const std::string& name, const std::string& thing) {
  return name == "-" ? "\"-\" is not taken for a name; write ./- for a " + thing + " of this name" : "";
}

}  // namespace upgradesrv
