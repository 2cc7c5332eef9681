#include "suite/platform/interrupt_windows.h"

#include <windows.h>

#include <atomic>

#include "suite/platform/interrupt.h"

namespace platform {
namespace {

// Time that the process has to end its sessions when its window is closed;
// the system itself ends it a second later.
constexpr DWORD kMillisecondsToEnd = 4000;

// A second event within this time belongs to the same key: some consoles tell
// of its way down and of its way up.
constexpr ULONGLONG kMillisecondsOfAKey = 300;

std::atomic<bool> mark{false};
std::atomic<ULONGLONG> markedAt{0};  // By the system's clock; 0: not yet.
HANDLE event = nullptr;
HANDLE installer = nullptr;

// Runs in a thread of its own, which the system makes.
BOOL WINAPI onControl(DWORD kind) {
  const ULONGLONG now = GetTickCount64();
  ULONGLONG first = 0;
  if (!markedAt.compare_exchange_strong(first, now)) {
    // The next handler is the system's: it ends the process.
    return now - first < kMillisecondsOfAKey ? TRUE : FALSE;
  }
  mark.store(true);
  SetEvent(event);
  // A thread that waits for input must come back, too.
  CancelSynchronousIo(installer);
  if (kind != CTRL_C_EVENT && kind != CTRL_BREAK_EVENT) {
    // The process ends as soon as this returns.
    Sleep(kMillisecondsToEnd);
  }
  return TRUE;
}

}  // namespace

bool installInterruptHandlers() {
  if (event != nullptr) {
    return true;
  }
  const HANDLE process = GetCurrentProcess();
  if (DuplicateHandle(process, GetCurrentThread(), process, &installer, 0,
                      FALSE, DUPLICATE_SAME_ACCESS) == 0) {
    return false;
  }
  event = CreateEventW(nullptr, TRUE, FALSE, nullptr);
  return event != nullptr && SetConsoleCtrlHandler(onControl, TRUE) != 0;
}

bool interrupted() { return mark.load(); }

int interruptFd() { return -1; }

void* interruptEvent() { return event; }

bool awaitInput(int /*descriptor*/) { return !interrupted(); }

}  // namespace platform
