#include "suite/connection/password/password_prompt.h"

#include <fcntl.h>
#include <termios.h>
#include <unistd.h>

#include "suite/connection/password/password_line.h"
#include "suite/platform/descriptor.h"

namespace connection {
namespace {

using base::Failure;
using base::FailureKind;

// Keeps a terminal from showing what is typed.
class SilentTerminal {
 public:
  explicit SilentTerminal(int descriptor) : descriptor_(descriptor) {
    silenced_ = tcgetattr(descriptor, &before_) == 0;
    if (silenced_) {
      termios silent = before_;
      silent.c_lflag &= ~static_cast<tcflag_t>(ECHO);
      silenced_ = tcsetattr(descriptor, TCSAFLUSH, &silent) == 0;
    }
  }
  ~SilentTerminal() {
    if (silenced_) {
      tcsetattr(descriptor_, TCSAFLUSH, &before_);
    }
  }
  SilentTerminal(const SilentTerminal&) = delete;
  SilentTerminal& operator=(const SilentTerminal&) = delete;

  bool silenced() const { return silenced_; }

 private:
  int descriptor_;
  bool silenced_ = false;
  termios before_{};
};

void show(int descriptor, const std::string& text) {
  // A question that cannot be shown is still answered, or interrupted.
  static_cast<void>(write(descriptor, text.data(), text.size()) < 0);
}

}  // namespace

bool inputIsTerminal() { return isatty(STDIN_FILENO) != 0; }

base::Result<base::Secret> askPassword(const std::string& question) {
  if (!inputIsTerminal()) {
    Failure failure;
    failure.kind = FailureKind::kNoCredentials;
    failure.cause = "no password is given";
    failure.remedy =
        "use --password-file, --password-stdin or BRIVEL_PASSWORD, or run at a "
        "terminal to be asked";
    return failure;
  }
  const platform::Descriptor terminal(
      open("/dev/tty", O_WRONLY | O_CLOEXEC | O_NOCTTY));
  const int output = terminal.number() >= 0 ? terminal.number() : STDERR_FILENO;
  const SilentTerminal silent(STDIN_FILENO);
  if (!silent.silenced()) {
    Failure failure;
    failure.kind = FailureKind::kNoCredentials;
    failure.cause = "the terminal cannot be kept from showing a password";
    failure.remedy = "use --password-file or --password-stdin";
    return failure;
  }
  show(output, question);
  base::Result<base::Secret> password =
      readPasswordLine(STDIN_FILENO, "the answer");
  show(output, "\n");
  return password;
}

}  // namespace connection
