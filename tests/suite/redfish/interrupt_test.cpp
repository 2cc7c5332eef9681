#include "suite/redfish/interrupt.h"

#include <gtest/gtest.h>
#include <poll.h>
#include <signal.h>
#include <unistd.h>

#include <cerrno>

namespace {

using redfish::installInterruptHandlers;
using redfish::interrupted;
using redfish::interruptFd;

// Each body runs in a child process: signals and their mark are for good.

bool readable(int descriptor) {
  pollfd watched{descriptor, POLLIN, 0};
  return poll(&watched, 1, 0) == 1;
}

bool waitIsEnded() {
  installInterruptHandlers();
  const pid_t self = getpid();
  if (fork() == 0) {
    usleep(50000);
    kill(self, SIGINT);
    _exit(0);
  }
  pollfd watched{};
  watched.fd = interruptFd();
  watched.events = POLLIN;
  const int first = poll(&watched, 1, 5000);
  if (first < 0 && errno != EINTR) {
    return false;
  }
  return readable(interruptFd()) && interrupted();
}

TEST(Interrupt, IsQuietBeforeAnySignal) {
  EXPECT_EXIT(
      {
        const bool installed = installInterruptHandlers();
        _exit(installed && !interrupted() && !readable(interruptFd()) ? 0 : 1);
      },
      testing::ExitedWithCode(0), "");
}

TEST(Interrupt, TerminateSetsTheMarkAndTheDescriptor) {
  EXPECT_EXIT(
      {
        installInterruptHandlers();
        raise(SIGTERM);
        _exit(interrupted() && readable(interruptFd()) ? 0 : 1);
      },
      testing::ExitedWithCode(0), "");
}

TEST(Interrupt, HangUpSetsTheMark) {
  EXPECT_EXIT(
      {
        signal(SIGHUP, SIG_DFL);
        installInterruptHandlers();
        raise(SIGHUP);
        _exit(interrupted() ? 0 : 1);
      },
      testing::ExitedWithCode(0), "");
}

TEST(Interrupt, IgnoredHangUpStaysIgnored) {
  EXPECT_EXIT(
      {
        signal(SIGHUP, SIG_IGN);
        installInterruptHandlers();
        raise(SIGHUP);
        _exit(interrupted() ? 1 : 0);
      },
      testing::ExitedWithCode(0), "");
}

TEST(Interrupt, InterruptEndsAWait) {
  EXPECT_EXIT(_exit(waitIsEnded() ? 0 : 1), testing::ExitedWithCode(0), "");
}

TEST(Interrupt, SecondSignalEndsTheProcess) {
  EXPECT_EXIT(
      {
        installInterruptHandlers();
        raise(SIGINT);
        raise(SIGINT);
        _exit(0);
      },
      testing::KilledBySignal(SIGINT), "");
}

TEST(Interrupt, SecondInstallationKeepsTheDescriptor) {
  EXPECT_EXIT(
      {
        installInterruptHandlers();
        const int before = interruptFd();
        const bool again = installInterruptHandlers();
        _exit(again && interruptFd() == before ? 0 : 1);
      },
      testing::ExitedWithCode(0), "");
}

}  // namespace
