#include "suite/connection/password/password_line.h"

#include <unistd.h>

#include <cerrno>
#include <cstddef>
#include <cstring>
#include <string_view>
#include <utility>

#include "suite/platform/interrupt.h"

namespace connection {
namespace {

using base::FailureKind;

constexpr std::size_t kLongestPassword = 1024;
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

}  // namespace

base::Result<base::Secret> passwordOf(std::string&& line,
                                      const std::string& source) {
  if (!line.empty() && line.back() == '\r') {
    line.pop_back();
  }
  // Editors put it before a text; no password begins with it.
  if (line.compare(0, kByteOrderMark.size(), kByteOrderMark) == 0) {
    line.erase(0, kByteOrderMark.size());
  }
  base::Secret password(std::move(line));
  const std::string& text = password.text();
  if (text.empty() || text.size() > kLongestPassword ||
      text.find('\0') != std::string::npos) {
    return base::makeFailure(
        FailureKind::kFileUnreadable,
        source + (text.empty() ? " holds no password in its first line"
                               : " holds no text of at most " +
                                     std::to_string(kLongestPassword) +
                                     " bytes in its first line"));
  }
  return password;
}

base::Result<base::Secret> readPasswordLine(int descriptor,
                                            const std::string& source,
                                            bool nonBlocking) {
  // Reserved whole, so that no half of it stays behind in a smaller buffer.
  std::string line;
  line.reserve(kLongestPassword + 1);
  // A pipe that nobody writes to is at its end for a read, but is waited for.
  bool wait = !nonBlocking;
  while (line.size() <= kLongestPassword) {
    char byte = '\0';
    const bool ready = !wait || platform::awaitInput(descriptor);
    const auto count = ready ? read(descriptor, &byte, 1) : 0;
    if (!ready || (count <= 0 && platform::interrupted())) {
      const base::Secret discarded(std::move(line));
      return base::makeFailure(FailureKind::kInterrupted,
                               "interrupted by the user");
    }
    wait = !nonBlocking || (count < 0 && errno == EAGAIN);
    if (nonBlocking && wait) {
      continue;
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
