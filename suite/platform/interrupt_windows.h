#pragma once

namespace platform {

/// A manual-reset event that is signalled when the user asks to end the run,
/// and stays so: a HANDLE to be waited for, never reset or closed. Null before
/// the handlers are installed.
void* interruptEvent();

}  // namespace platform
