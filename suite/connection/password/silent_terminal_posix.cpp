#include "suite/connection/password/silent_terminal_posix.h"

#include <termios.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstddef>

namespace connection {
namespace {

// What people and timers end or stop a process with, but for the signals that
// the whole run handles.
constexpr std::array<int, 6> kSignals = {SIGQUIT, SIGALRM, SIGTSTP,
                                         SIGUSR1, SIGUSR2, SIGXCPU};

// What a signal handler needs; set before the handlers are, and left alone
// until they are gone.
struct Asking {
  int input = -1;
  int output = -1;
  termios before = {};
  termios silent = {};
  const char* question = "";
  std::size_t questionSize = 0;
  std::array<struct sigaction, kSignals.size()> actions = {};
};
Asking asking;

void show() {
  // A question that cannot be shown is still answered, or interrupted.
  static_cast<void>(write(asking.output, asking.question, asking.questionSize) <
                    0);
}

// Lets a signal do what it does by default, with the terminal as it was. Calls
// only what a signal handler may.
void onSignal(int number) {
  const int savedErrno = errno;
  tcsetattr(asking.input, TCSAFLUSH, &asking.before);
  struct sigaction standard = {};
  standard.sa_handler = SIG_DFL;
  sigemptyset(&standard.sa_mask);
  struct sigaction own = {};
  sigaction(number, &standard, &own);
  sigset_t released;
  sigset_t held;
  sigemptyset(&released);
  sigaddset(&released, number);
  raise(number);
  sigprocmask(SIG_UNBLOCK, &released, &held);
  // Here the process has ended, or was stopped and goes on.
  sigprocmask(SIG_SETMASK, &held, nullptr);
  sigaction(number, &own, nullptr);
  tcsetattr(asking.input, TCSAFLUSH, &asking.silent);
  show();
  errno = savedErrno;
}

void takeSignals() {
  struct sigaction action = {};
  action.sa_handler = onSignal;
  action.sa_flags = SA_RESTART;
  sigemptyset(&action.sa_mask);
  // One after the other.
  for (const int number : kSignals) {
    sigaddset(&action.sa_mask, number);
  }
  for (std::size_t i = 0; i < kSignals.size(); ++i) {
    sigaction(kSignals[i], nullptr, &asking.actions[i]);
    if (asking.actions[i].sa_handler == SIG_DFL) {
      sigaction(kSignals[i], &action, nullptr);
    }
  }
}

void leaveSignals() {
  for (std::size_t i = 0; i < kSignals.size(); ++i) {
    sigaction(kSignals[i], &asking.actions[i], nullptr);
  }
}

}  // namespace

SilentTerminal::SilentTerminal(int input, int output,
                               const std::string& question) {
  asking = {input, output, {}, {}, question.data(), question.size(), {}};
  if (tcgetattr(input, &asking.before) != 0) {
    return;
  }
  asking.silent = asking.before;
  asking.silent.c_lflag &= ~static_cast<tcflag_t>(ECHO);
  takeSignals();
  silenced_ = tcsetattr(input, TCSAFLUSH, &asking.silent) == 0;
  if (silenced_) {
    show();
  } else {
    leaveSignals();
  }
}

SilentTerminal::~SilentTerminal() {
  if (silenced_) {
    tcsetattr(asking.input, TCSAFLUSH, &asking.before);
    leaveSignals();
  }
}

}  // namespace connection
