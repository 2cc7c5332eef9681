#include <openssl/crypto.h>

#include "suite/redfish/secret.h"

namespace redfish {

void overwrite(void* bytes, std::size_t size) noexcept {
  OPENSSL_cleanse(bytes, size);
}

}  // namespace redfish
