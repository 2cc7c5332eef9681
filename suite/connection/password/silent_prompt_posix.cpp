#include "suite/connection/password/silent_prompt.h"

#include <fcntl.h>
#include <unistd.h>

#include "suite/connection/password/password_line.h"
#include "suite/connection/password/silent_terminal_posix.h"
#include "suite/platform/files/descriptor.h"
#include "suite/platform/terminal.h"

namespace connection {

bool inputIsTerminal() { return isatty(STDIN_FILENO) != 0; }

std::optional<base::Result<base::Secret>> askSilently(
    const std::string& question) {
  const platform::Descriptor terminal(
      open("/dev/tty", O_WRONLY | O_CLOEXEC | O_NOCTTY));
  const int output = terminal.number() >= 0 ? terminal.number() : STDERR_FILENO;
  const SilentTerminal silent(STDIN_FILENO, output, question);
  if (!silent.silenced()) {
    return std::nullopt;
  }
  base::Result<base::Secret> password =
      readPasswordLine(STDIN_FILENO, "the answer");
  platform::writeRaw(output, "\n");
  return password;
}

}  // namespace connection
