#pragma once

namespace platform {

// The user's wish to end the run, and its way out of a wait. SIGINT, SIGTERM
// and SIGHUP, or what the console of Windows has for them, only leave a mark
// here; those who wait watch the descriptor, those who loop ask for the mark,
// and the run ends in order: the sessions at the controllers are closed before
// the process is.

/// Takes over SIGINT and SIGTERM for the rest of the process, and SIGHUP unless
/// it is ignored. The first signal leaves the mark; a second one of the same
/// kind ends the process at once. On Windows the same holds for Ctrl+C and
/// Ctrl+Break, and a closed console or the end of the user's session leave the
/// mark, too. To be called by the thread that reads input. Repeated calls do
/// nothing. False when the system refuses.
bool installInterruptHandlers();

/// Whether the user has asked to end the run.
bool interrupted();

/// A descriptor that turns readable when the user asks to end the run, and
/// stays so; to be polled, never read. -1 before the handlers are installed,
/// and on Windows, where waits take the event of interrupt_windows.h.
int interruptFd();

/// Waits until a descriptor can be read. False if the user ends the run
/// instead. On Windows, where not everything can be waited for, it returns at
/// once, and the end of the run ends the read that follows.
bool awaitInput(int descriptor);

}  // namespace platform
