#include "suite/base/secret.h"

#include <utility>

#include "suite/platform/memory.h"

namespace base {
namespace {

// Core dumps are disabled once, for good.
void forbidDumps() {
  static const bool kDone = (platform::disableCoreDumps(), true);
  static_cast<void>(kDone);
}

}  // namespace

void wipe(std::string& text) noexcept {
  text.resize(text.capacity());  // Never allocates.
  platform::overwrite(text.data(), text.size());
  text.clear();
}

std::string withoutSecret(std::string text, std::string_view secret) {
  constexpr std::size_t kShortestHidden = 4;
  constexpr std::string_view kMask = "***";
  if (secret.size() < kShortestHidden) {
    return text;
  }
  for (std::size_t at = text.find(secret); at != std::string_view::npos;
       at = text.find(secret, at + kMask.size())) {
    text.replace(at, secret.size(), kMask);
  }
  return text;
}

Secret::Secret(std::string&& text) : text_(text) {
  wipe(text);
  forbidDumps();
}

Secret::Secret(std::initializer_list<std::string_view> parts) {
  std::size_t size = 0;
  for (const std::string_view part : parts) {
    size += part.size();
  }
  text_.reserve(size);
  for (const std::string_view part : parts) {
    text_.append(part);
  }
  forbidDumps();
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

}  // namespace base
