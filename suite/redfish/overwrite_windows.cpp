#include <windows.h>

#include "suite/redfish/secret.h"

namespace redfish {

void overwrite(void* bytes, std::size_t size) noexcept {
  SecureZeroMemory(bytes, size);
}

}  // namespace redfish
