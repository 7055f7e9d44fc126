#pragma once

namespace upgradesrv {

/// Has SIGHUP, SIGINT and SIGTERM end the process at once, without a file that it was still writing and with the line
/// of progress erased; what is being written into a database is undone first (kvx::CDelayedEnd). The process dies of
/// the signal, which a shell shows as 128 and its number. A signal that the caller has had ignored, as nohup does,
/// stays ignored. To be called once, by the thread that runs the command.
void EndBySignals() noexcept;

}  // namespace upgradesrv
