#include "suite/platform/interrupt.h"

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <cerrno>
#include <csignal>

#include "suite/platform/last_resort.h"

namespace platform {
namespace {

// Touched by the handler, which may do little: lock-free values only.
std::atomic<bool> mark{false};
std::atomic<int> writeEnd{-1};
int readEnd = -1;

static_assert(std::atomic<bool>::is_always_lock_free);
static_assert(std::atomic<int>::is_always_lock_free);

void onSignal(int /*signal*/) {
  const int savedErrno = errno;
  mark.store(true);
  interruptLastResort();
  const char wake = 1;
  // A full pipe is readable already, which is all that is wanted.
  static_cast<void>(write(writeEnd.load(), &wake, 1) < 0);
  errno = savedErrno;
}

bool handle(int signalNumber) {
  struct sigaction action = {};
  action.sa_handler = onSignal;
  // No SA_RESTART: a prompt that waits for input must come back, too.
  action.sa_flags = static_cast<int>(SA_RESETHAND);
  sigemptyset(&action.sa_mask);
  return sigaction(signalNumber, &action, nullptr) == 0;
}

// A run under nohup(1) outlives its terminal.
bool handleHangUp() {
  struct sigaction before = {};
  return sigaction(SIGHUP, nullptr, &before) == 0 &&
         (before.sa_handler == SIG_IGN || handle(SIGHUP));
}

}  // namespace

bool installInterruptHandlers() {
  if (readEnd >= 0) {
    return true;
  }
  int ends[2] = {-1, -1};
  if (pipe2(ends, O_CLOEXEC | O_NONBLOCK) != 0) {
    return false;
  }
  readEnd = ends[0];
  writeEnd.store(ends[1]);
  const bool onInterrupt = handle(SIGINT);
  const bool onTerminate = handle(SIGTERM);
  return onInterrupt && onTerminate && handleHangUp();
}

bool interrupted() { return mark.load(); }

int interruptFd() { return readEnd; }

// A read alone would sleep through a signal that comes just before it.
bool awaitInput(int descriptor) {
  std::array<pollfd, 2> watched{};
  watched[0].fd = descriptor;
  watched[0].events = POLLIN;
  watched[1].fd = interruptFd();  // Passed over while it is -1.
  watched[1].events = POLLIN;
  while (poll(watched.data(), watched.size(), -1) < 0 && errno == EINTR &&
         !interrupted()) {
  }
  return !interrupted();
}

}  // namespace platform
