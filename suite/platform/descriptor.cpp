#include "suite/platform/descriptor.h"

#include <unistd.h>

namespace platform {

Descriptor::~Descriptor() {
  if (number_ >= 0) {
    close(number_);
  }
}

}  // namespace platform
