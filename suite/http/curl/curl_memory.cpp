#include "suite/http/curl/curl_memory.h"

#include <malloc.h>
#include <openssl/crypto.h>
#include <openssl/rand.h>
#include <openssl/ssl.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>

#include "suite/platform/memory.h"

namespace http {
namespace {

// libcurl's functions of memory, as curl_global_init_mem takes them: they are
// malloc and its kin for a library in C.
// NOLINTBEGIN(cppcoreguidelines-no-malloc)

void* allocate(std::size_t size) { return std::malloc(size); }

void* allocateZeroed(std::size_t count, std::size_t size) {
  return std::calloc(count, size);
}

void release(void* memory) {
  if (memory != nullptr) {
    platform::overwrite(memory, malloc_usable_size(memory));
    std::free(memory);
  }
}

// Memory that has to move is copied here, because realloc leaves the text
// behind.
void* resize(void* memory, std::size_t size) {
  if (memory == nullptr) {
    return std::malloc(size);
  }
  const std::size_t held = malloc_usable_size(memory);
  if (size != 0 && size <= held) {
    return memory;
  }
  void* const moved = std::malloc(size);
  if (moved != nullptr) {
    std::memcpy(moved, memory, std::min(size, held));
    release(memory);
  }
  return moved;
}

char* duplicate(const char* text) {
  const std::size_t size = std::strlen(text) + 1;
  void* const copy = std::malloc(size);
  return copy == nullptr ? nullptr
                         : static_cast<char*>(std::memcpy(copy, text, size));
}
// NOLINTEND(cppcoreguidelines-no-malloc)

}  // namespace

CURLcode startCurl() {
  // libcurl goes on with an OpenSSL that found no memory to start, which then
  // fails at its first lock. What OpenSSL would take apart when the process
  // exits, the system takes back as a whole.
  if (OPENSSL_init_ssl(OPENSSL_INIT_NO_ATEXIT, nullptr) != 1 ||
      OSSL_LIB_CTX_get0_global_default() == nullptr || RAND_status() != 1) {
    return CURLE_FAILED_INIT;
  }
  return curl_global_init_mem(CURL_GLOBAL_DEFAULT, allocate, release, resize,
                              duplicate, allocateZeroed);
}

}  // namespace http
