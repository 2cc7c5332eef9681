#include "suite/connection/secret.h"

#include <openssl/crypto.h>
#include <sys/resource.h>

#include <cstdlib>
#include <cstring>
#include <utility>

#include "suite/redfish/secret.h"

namespace connection {
namespace {

using redfish::wipe;

constexpr const char* kVariable = "BRIVEL_PASSWORD";

void forbidCoreDumps() {
  rlimit limit = {};
  if (getrlimit(RLIMIT_CORE, &limit) == 0) {
    limit.rlim_cur = 0;
    // Lowering a limit of one's own is always allowed.
    static_cast<void>(setrlimit(RLIMIT_CORE, &limit));
  }
}

}  // namespace

Secret::Secret(std::string&& text) : text_(text) {
  wipe(text);
  forbidCoreDumps();
}

Secret::Secret(Secret&& other) noexcept : text_(std::move(other.text_)) {
  wipe(other.text_);
}

Secret& Secret::operator=(Secret&& other) noexcept {
  if (this != &other) {
    wipe(text_);
    text_ = std::move(other.text_);
    wipe(other.text_);
  }
  return *this;
}

Secret::~Secret() { wipe(text_); }

std::optional<Secret> takeEnvironmentPassword() {
  char* const value = std::getenv(kVariable);
  if (value == nullptr) {
    return std::nullopt;
  }
  std::string text(value);
  OPENSSL_cleanse(value, std::strlen(value));
  unsetenv(kVariable);
  if (text.empty()) {
    return std::nullopt;
  }
  return Secret(std::move(text));
}

}  // namespace connection
