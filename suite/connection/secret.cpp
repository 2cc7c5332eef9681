#include "suite/connection/secret.h"

#include <utility>

#include "suite/connection/process.h"
#include "suite/redfish/secret.h"

namespace connection {
namespace {

using redfish::wipe;

constexpr const char* kVariable = "BRIVEL_PASSWORD";

}  // namespace

Secret::Secret(std::string&& text) : text_(text) {
  wipe(text);
  forbidMemoryDumps();
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
  std::optional<std::string> text = takeVariable(kVariable);
  if (!text || text->empty()) {
    return std::nullopt;
  }
  return Secret(*std::move(text));
}

}  // namespace connection
