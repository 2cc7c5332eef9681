#include "suite/platform/terminal.h"

#include <sys/ioctl.h>
#include <unistd.h>

namespace platform {

bool isTerminal(int descriptor) { return isatty(descriptor) != 0; }

std::size_t terminalWidth(int descriptor, std::size_t otherwise) {
  winsize size = {};
  return ioctl(descriptor, TIOCGWINSZ, &size) == 0 && size.ws_col > 0
             ? size.ws_col
             : otherwise;
}

void writeRaw(int descriptor, std::string_view text) {
  static_cast<void>(write(descriptor, text.data(), text.size()) < 0);
}

}  // namespace platform
