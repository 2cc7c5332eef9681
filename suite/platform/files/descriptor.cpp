#include "suite/platform/files/descriptor.h"

#include <unistd.h>

#include <utility>

namespace platform {

Descriptor& Descriptor::operator=(Descriptor&& other) noexcept {
  // What was held here goes with the temporary.
  const Descriptor former(std::exchange(number_, other.release()));
  return *this;
}

Descriptor::~Descriptor() {
  if (number_ >= 0) {
    close(number_);
  }
}

int Descriptor::release() { return std::exchange(number_, -1); }

}  // namespace platform
