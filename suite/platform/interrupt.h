#pragma once

namespace platform {

// Interruption of a run by the user. SIGINT, SIGTERM and SIGHUP, or the
// console events of Windows, only set a flag here. Code that waits watches the
// descriptor, code that loops checks the flag, so that the run ends in order:
// the sessions at the controllers are closed before the process ends.

/// Takes over SIGINT and SIGTERM for the rest of the process, and SIGHUP unless
/// it is ignored. The first signal sets the flag; a second one of the same
/// kind ends the process at once. On Windows the same holds for Ctrl+C and
/// Ctrl+Break; a closed console and the end of the user's session set the flag,
/// too. To be called by the thread that reads input. Repeated calls do
/// nothing. Returns false if the system refuses.
bool installInterruptHandlers();

/// Whether the user has asked to end the run.
bool interrupted();

/// A descriptor that becomes readable when the user asks to end the run, and
/// stays so; poll it, never read it. -1 before the handlers are installed,
/// and on Windows, where waits use the event of interrupt_windows.h.
int interruptFd();

/// Waits until a descriptor can be read. Returns false if the user interrupts
/// the run instead. On Windows, where not everything can be waited for, it
/// returns at once; an interrupt then ends the read that follows.
bool awaitInput(int descriptor);

}  // namespace platform
