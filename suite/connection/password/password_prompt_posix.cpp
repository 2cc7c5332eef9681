#include "suite/connection/password/password_prompt.h"

#include <fcntl.h>
#include <unistd.h>

#include "suite/connection/password/password_line.h"
#include "suite/connection/password/silent_terminal_posix.h"
#include "suite/platform/files/descriptor.h"
#include "suite/platform/terminal.h"

namespace connection {
namespace {

using base::Failure;
using base::FailureKind;

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
  const SilentTerminal silent(STDIN_FILENO, output, question);
  if (!silent.silenced()) {
    Failure failure;
    failure.kind = FailureKind::kNoCredentials;
    failure.cause = "the terminal cannot be kept from showing a password";
    failure.remedy = "use --password-file or --password-stdin";
    return failure;
  }
  base::Result<base::Secret> password =
      readPasswordLine(STDIN_FILENO, "the answer");
  platform::writeRaw(output, "\n");
  return password;
}

}  // namespace connection
