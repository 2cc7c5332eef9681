#include "suite/platform/interrupt.h"

#include <gtest/gtest.h>
#include <poll.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>

namespace {

using platform::installInterruptHandlers;
using platform::interrupted;
using platform::interruptFd;

// Each body runs in a child process: signals and their mark are for good.

bool readable(int descriptor) {
  pollfd watched{descriptor, POLLIN, 0};
  return poll(&watched, 1, 0) == 1;
}

bool waitIsEnded() {
  platform::installInterruptHandlers();
  const pid_t self = getpid();
  if (fork() == 0) {
    usleep(50000);
    kill(self, SIGINT);
    _exit(0);
  }
  pollfd watched{};
  watched.fd = platform::interruptFd();
  watched.events = POLLIN;
  const int first = poll(&watched, 1, 5000);
  if (first < 0 && errno != EINTR) {
    return false;
  }
  return readable(platform::interruptFd()) && platform::interrupted();
}

TEST(Interrupt, IsQuietBeforeAnySignal) {
  EXPECT_EXIT(
      {
        const bool installed = platform::installInterruptHandlers();
        _exit(installed && !platform::interrupted() &&
                      !readable(platform::interruptFd())
                  ? 0
                  : 1);
      },
      testing::ExitedWithCode(0), "");
}

TEST(Interrupt, TerminateSetsTheMarkAndTheDescriptor) {
  EXPECT_EXIT(
      {
        platform::installInterruptHandlers();
        raise(SIGTERM);
        _exit(platform::interrupted() && readable(platform::interruptFd()) ? 0
                                                                           : 1);
      },
      testing::ExitedWithCode(0), "");
}

TEST(Interrupt, HangUpSetsTheMark) {
  EXPECT_EXIT(
      {
        signal(SIGHUP, SIG_DFL);
        platform::installInterruptHandlers();
        raise(SIGHUP);
        _exit(platform::interrupted() ? 0 : 1);
      },
      testing::ExitedWithCode(0), "");
}

TEST(Interrupt, IgnoredHangUpStaysIgnored) {
  EXPECT_EXIT(
      {
        signal(SIGHUP, SIG_IGN);
        platform::installInterruptHandlers();
        raise(SIGHUP);
        _exit(platform::interrupted() ? 1 : 0);
      },
      testing::ExitedWithCode(0), "");
}

TEST(Interrupt, InterruptEndsAWait) {
  EXPECT_EXIT(_exit(waitIsEnded() ? 0 : 1), testing::ExitedWithCode(0), "");
}

TEST(Interrupt, SecondSignalEndsTheProcess) {
  EXPECT_EXIT(
      {
        platform::installInterruptHandlers();
        raise(SIGINT);
        raise(SIGINT);
        _exit(0);
      },
      testing::KilledBySignal(SIGINT), "");
}

TEST(Interrupt, SecondInstallationKeepsTheDescriptor) {
  EXPECT_EXIT(
      {
        platform::installInterruptHandlers();
        const int before = platform::interruptFd();
        const bool again = platform::installInterruptHandlers();
        _exit(again && platform::interruptFd() == before ? 0 : 1);
      },
      testing::ExitedWithCode(0), "");
}

}  // namespace
