#include "suite/redfish/interrupt_windows.h"

#include <windows.h>
#include <gtest/gtest.h>

#include "suite/redfish/interrupt.h"

namespace {

using redfish::installInterruptHandlers;
using redfish::interrupted;
using redfish::interruptEvent;

// Each body runs in a process of its own: the mark is for good.

bool signalled() {
  return WaitForSingleObject(interruptEvent(), 0) == WAIT_OBJECT_0;
}

/// Presses Ctrl+Break, at a console of the process's own if it has none, and
/// waits for the handlers, which run in another thread.
void pressBreak() {
  AllocConsole();
  EXPECT_NE(GenerateConsoleCtrlEvent(CTRL_BREAK_EVENT, 0), 0);
  WaitForSingleObject(interruptEvent(), 5000);
}

TEST(Interrupt, IsQuietBeforeAnyKey) {
  EXPECT_EXIT(
      {
        const bool installed = installInterruptHandlers();
        _exit(installed && !interrupted() && !signalled() ? 0 : 1);
      },
      testing::ExitedWithCode(0), "");
}

TEST(Interrupt, BreakSetsTheMarkAndTheEvent) {
  EXPECT_EXIT(
      {
        installInterruptHandlers();
        pressBreak();
        _exit(interrupted() && signalled() ? 0 : 1);
      },
      testing::ExitedWithCode(0), "");
}

TEST(Interrupt, SecondInstallationKeepsTheEvent) {
  EXPECT_EXIT(
      {
        installInterruptHandlers();
        const HANDLE before = interruptEvent();
        const bool again = installInterruptHandlers();
        _exit(again && interruptEvent() == before ? 0 : 1);
      },
      testing::ExitedWithCode(0), "");
}

}  // namespace
