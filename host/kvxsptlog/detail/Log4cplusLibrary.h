#pragma once

#include <memory>
#include <string>

class CLogDestination;

namespace kvx {

/// The destination that a log4cplus properties file configures, see CLog::Configure. log4cplus starts threads as soon
/// as it is loaded; where it gets too few of them, or too little memory, it ends the process or waits for ever. So what
/// needs it is a library of its own, which is loaded here, and in another process before.
std::unique_ptr<CLogDestination> OpenLog4cplus(const std::string& propertiesFile);

}  // namespace kvx
