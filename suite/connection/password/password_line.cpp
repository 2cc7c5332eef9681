#include "suite/connection/password/password_line.h"

#include <unistd.h>

#include <cerrno>
#include <cstddef>
#include <cstring>
#include <utility>

#include "suite/platform/interrupt.h"

namespace connection {
namespace {

using base::FailureKind;

constexpr std::size_t kLongestPassword = 1024;

}  // namespace

base::Result<base::Secret> passwordOf(std::string&& line,
                                      const std::string& source) {
  if (!line.empty() && line.back() == '\r') {
    line.pop_back();
  }
  base::Secret password(std::move(line));
  const std::string& text = password.text();
  if (text.empty() || text.size() > kLongestPassword ||
      text.find('\0') != std::string::npos) {
    return base::makeFailure(
        FailureKind::kFileUnreadable,
        source + (text.empty() ? " holds no password in its first line"
                               : " holds no text of at most 1024 bytes "
                                 "in its first line"));
  }
  return password;
}

base::Result<base::Secret> readPasswordLine(int descriptor,
                                            const std::string& source) {
  // Reserved whole, so that no half of it stays behind in a smaller buffer.
  std::string line;
  line.reserve(kLongestPassword + 1);
  while (line.size() <= kLongestPassword) {
    char byte = '\0';
    const bool ready = platform::awaitInput(descriptor);
    const auto count = ready ? read(descriptor, &byte, 1) : 0;
    if (!ready || (count <= 0 && platform::interrupted())) {
      const base::Secret discarded(std::move(line));
      return base::makeFailure(FailureKind::kInterrupted,
                               "interrupted by the user");
    }
    if (count < 0) {
      const int reason = errno;
      const base::Secret discarded(std::move(line));
      return base::makeFailure(
          FailureKind::kFileUnreadable,
          source + " cannot be read: " + std::strerror(reason));
    }
    if (count == 0 || byte == '\n') {
      break;
    }
    line.push_back(byte);
  }
  return passwordOf(std::move(line), source);
}

}  // namespace connection
