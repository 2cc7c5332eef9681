#include "suite/connection/password_line.h"

#include <poll.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstddef>
#include <cstring>
#include <utility>

#include "suite/redfish/interrupt.h"

namespace connection {
namespace {

using redfish::FailureKind;

constexpr std::size_t kLongestPassword = 1024;

redfish::Failure failureOf(FailureKind kind, std::string cause) {
  redfish::Failure failure;
  failure.kind = kind;
  failure.cause = std::move(cause);
  return failure;
}

/// Waits until a descriptor can be read. False when the user ends the run
/// instead; a read alone would sleep through a signal that comes just before.
bool awaitInput(int descriptor) {
  std::array<pollfd, 2> watched{};
  watched[0].fd = descriptor;
  watched[0].events = POLLIN;
  watched[1].fd = redfish::interruptFd();  // Passed over while it is -1.
  watched[1].events = POLLIN;
  while (poll(watched.data(), watched.size(), -1) < 0 && errno == EINTR &&
         !redfish::interrupted()) {
  }
  return !redfish::interrupted();
}

}  // namespace

std::optional<Secret> readPasswordLine(int descriptor,
                                       const std::string& source,
                                       redfish::Failure& failure) {
  // Reserved whole, so that no half of it stays behind in a smaller buffer.
  std::string line;
  line.reserve(kLongestPassword + 1);
  while (line.size() <= kLongestPassword) {
    if (!awaitInput(descriptor)) {
      const Secret discarded(std::move(line));
      failure = failureOf(FailureKind::kInterrupted, "interrupted by the user");
      return std::nullopt;
    }
    char byte = '\0';
    const ssize_t count = read(descriptor, &byte, 1);
    if (count < 0) {
      const int reason = errno;
      const Secret discarded(std::move(line));
      failure = failureOf(FailureKind::kFileUnreadable,
                          source + " cannot be read: " + std::strerror(reason));
      return std::nullopt;
    }
    if (count == 0 || byte == '\n') {
      break;
    }
    line.push_back(byte);
  }
  if (!line.empty() && line.back() == '\r') {
    line.pop_back();
  }
  Secret password(std::move(line));
  const std::string& text = password.text();
  if (text.empty() || text.size() > kLongestPassword ||
      text.find('\0') != std::string::npos) {
    failure = failureOf(
        FailureKind::kFileUnreadable,
        source + (text.empty() ? " holds no password in its first line"
                               : " holds no text of at most 1024 bytes "
                                 "in its first line"));
    return std::nullopt;
  }
  return password;
}

}  // namespace connection
