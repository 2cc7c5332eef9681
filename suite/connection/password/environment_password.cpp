#include "suite/connection/password/environment_password.h"

#include <string>
#include <utility>

#include "suite/platform/environment.h"

namespace connection {
namespace {

constexpr const char* kVariable = "BRIVEL_PASSWORD";

}  // namespace

std::optional<base::Secret> takeEnvironmentPassword() {
  std::optional<std::string> text =
      platform::takeEnvironmentVariable(kVariable);
  if (!text || text->empty()) {
    return std::nullopt;
  }
  return base::Secret(*std::move(text));
}

}  // namespace connection
