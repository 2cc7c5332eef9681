#include "suite/platform/terminal.h"

#include <unistd.h>

namespace platform {

bool isTerminal(int descriptor) { return isatty(descriptor) != 0; }

void drawOn(int descriptor, std::string_view text) {
  static_cast<void>(write(descriptor, text.data(), text.size()) < 0);
}

}  // namespace platform
