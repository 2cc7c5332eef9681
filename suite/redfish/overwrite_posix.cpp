#include <string.h>  // For explicit_bzero, which is no C++.

#include "suite/redfish/secret.h"

namespace redfish {

void overwrite(void* bytes, std::size_t size) noexcept {
  explicit_bzero(bytes, size);
}

}  // namespace redfish
