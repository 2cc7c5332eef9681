#include "tests/support/machine.h"

#include <pty.h>
#include <unistd.h>

namespace support {

bool hasTerminals() {
  int controlling = -1;
  int terminal = -1;
  if (openpty(&controlling, &terminal, nullptr, nullptr, nullptr) != 0) {
    return false;
  }
  close(controlling);
  close(terminal);
  return true;
}

}  // namespace support
