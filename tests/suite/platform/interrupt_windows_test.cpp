#include "suite/platform/interrupt_windows.h"

#include <windows.h>
#include <gtest/gtest.h>

#include "suite/platform/interrupt.h"

namespace {

using platform::installInterruptHandlers;
using platform::interrupted;
using platform::interruptEvent;

// Each body runs in a process of its own: the mark is for good.

bool signalled() {
  return WaitForSingleObject(platform::interruptEvent(), 0) == WAIT_OBJECT_0;
}

// Presses Ctrl+C or Ctrl+Break, at a console of the process's own, and waits
// for the handlers, which run in another thread. Whether the mark is left.
bool leavesTheMark(DWORD key) {
  FreeConsole();  // Not at one that others share.
  if (AllocConsole() == 0 || GenerateConsoleCtrlEvent(key, 0) == 0) {
    return false;
  }
  WaitForSingleObject(platform::interruptEvent(), 5000);
  return platform::interrupted() && signalled();
}

bool underWine() {
  return GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "wine_get_version") !=
         nullptr;
}

TEST(Interrupt, IsQuietBeforeAnyKey) {
  EXPECT_EXIT(
      {
        const bool installed = platform::installInterruptHandlers();
        _exit(installed && !platform::interrupted() && !signalled() ? 0 : 1);
      },
      testing::ExitedWithCode(0), "");
}

TEST(Interrupt, ControlCSetsTheMarkAndTheEvent) {
  EXPECT_EXIT(
      {
        platform::installInterruptHandlers();
        _exit(leavesTheMark(CTRL_C_EVENT) ? 0 : 1);
      },
      testing::ExitedWithCode(0), "");
}

TEST(Interrupt, SecondControlCEndsTheProcess) {
  EXPECT_EXIT(
      {
        platform::installInterruptHandlers();
        if (leavesTheMark(CTRL_C_EVENT)) {
          Sleep(500);  // Time between two presses of a key.
          GenerateConsoleCtrlEvent(CTRL_C_EVENT, 0);
          Sleep(5000);
        }
        _exit(1);
      },
      [](int status) {
        // The system's status; Wine gives 0.
        return static_cast<DWORD>(status) == STATUS_CONTROL_C_EXIT ||
               status == 0;
      },
      "");
}

TEST(Interrupt, SamePressToldTwiceIsOne) {
  EXPECT_EXIT(
      {
        platform::installInterruptHandlers();
        const bool first = leavesTheMark(CTRL_C_EVENT);
        GenerateConsoleCtrlEvent(CTRL_C_EVENT, 0);
        Sleep(500);
        _exit(first ? 7 : 1);
      },
      testing::ExitedWithCode(7), "");
}

TEST(Interrupt, BreakSetsTheMarkAndTheEvent) {
  if (underWine()) {
    GTEST_SKIP() << "Wine has no Ctrl+Break";
  }
  EXPECT_EXIT(
      {
        platform::installInterruptHandlers();
        _exit(leavesTheMark(CTRL_BREAK_EVENT) ? 0 : 1);
      },
      testing::ExitedWithCode(0), "");
}

TEST(Interrupt, SecondInstallationKeepsTheEvent) {
  EXPECT_EXIT(
      {
        platform::installInterruptHandlers();
        const HANDLE before = platform::interruptEvent();
        const bool again = platform::installInterruptHandlers();
        _exit(again && platform::interruptEvent() == before ? 0 : 1);
      },
      testing::ExitedWithCode(0), "");
}

}  // namespace
