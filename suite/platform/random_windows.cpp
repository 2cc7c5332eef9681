#include "suite/platform/random.h"

#include <algorithm>
#include <cstring>
#include <random>

namespace platform {

void fillRandom(void* bytes, std::size_t size) {
  std::random_device device;
  auto* next = static_cast<unsigned char*>(bytes);
  while (size > 0) {
    const std::random_device::result_type number = device();
    const std::size_t part = std::min(size, sizeof number);
    std::memcpy(next, &number, part);
    next += part;
    size -= part;
  }
}

}  // namespace platform
