#pragma once

#include <optional>
#include <string>

namespace connection {

/// A password in memory: its bytes are overwritten when it dies or moves on,
/// and from the first one on the process leaves no core dump.
class Secret {
 public:
  /// Takes the text over, and wipes the original.
  explicit Secret(std::string&& text);
  Secret(Secret&& other) noexcept;
  Secret& operator=(Secret&& other) noexcept;
  ~Secret();

  const std::string& text() const { return text_; }

 private:
  std::string text_;
};

/// Takes the password out of the environment: what BRIVEL_PASSWORD holds, if
/// it is set and not empty. The variable is gone afterwards, and its bytes are
/// overwritten, so that neither a child nor /proc shows it.
std::optional<Secret> takeEnvironmentPassword();

}  // namespace connection
