#include "suite/redfish/secret.h"

namespace redfish {

void wipe(std::string& text) noexcept {
  text.resize(text.capacity());  // Never allocates.
  overwrite(text.data(), text.size());
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

}  // namespace redfish
