#pragma once

namespace upgradesrv {

/// Has a failure that nobody can catch, of a library while it is loaded for example, end the process with one error
/// line, which names a strategy that runs, and the status of trouble in place of a signal. To be called once; may be
/// called before the libraries are set up.
void ExitOnTerminate();

}  // namespace upgradesrv
