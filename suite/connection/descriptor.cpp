#include "suite/connection/descriptor.h"

#include <unistd.h>

namespace connection {

Descriptor::~Descriptor() {
  if (number_ >= 0) {
    close(number_);
  }
}

}  // namespace connection
