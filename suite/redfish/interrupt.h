#pragma once

namespace redfish {

// The user's wish to end the run, and its way out of a wait. SIGINT and
// SIGTERM only leave a mark here; those who wait watch the descriptor, those
// who loop ask for the mark, and the run ends in order: the sessions at the
// controllers are closed before the process is.

/// Takes over SIGINT and SIGTERM for the rest of the process. The first signal
/// leaves the mark; a second one of the same kind ends the process at once.
/// Repeated calls do nothing. False when the system refuses.
bool installInterruptHandlers();

/// Whether the user has asked to end the run.
bool interrupted();

/// A descriptor that turns readable when the user asks to end the run, and
/// stays so; to be polled, never read. -1 before the handlers are installed.
int interruptFd();

}  // namespace redfish
