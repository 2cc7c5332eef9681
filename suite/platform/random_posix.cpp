#include "suite/platform/random.h"

#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <system_error>

namespace platform {

void fillRandom(void* bytes, std::size_t size) {
  constexpr std::size_t kMostAtATime = 256;  // Of getentropy.
  auto* next = static_cast<unsigned char*>(bytes);
  while (size > 0) {
    const std::size_t part = std::min(size, kMostAtATime);
    if (::getentropy(next, part) != 0) {
      throw std::system_error(errno, std::generic_category(),
                              "no random numbers");
    }
    next += part;
    size -= part;
  }
}

}  // namespace platform
