#include "suite/connection/password_input.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <termios.h>
#include <unistd.h>

#include <cerrno>
#include <cstddef>
#include <cstring>
#include <utility>

#include "suite/redfish/interrupt.h"

namespace connection {
namespace {

constexpr std::size_t kLongestPassword = 1024;

using redfish::Failure;
using redfish::FailureKind;

Failure failureOf(FailureKind kind, std::string cause,
                  std::string remedy = "") {
  Failure failure;
  failure.kind = kind;
  failure.cause = std::move(cause);
  failure.remedy = std::move(remedy);
  return failure;
}

/// A descriptor that is closed at the end of its scope.
class Descriptor {
 public:
  explicit Descriptor(int number) : number_(number) {}
  ~Descriptor() {
    if (number_ >= 0) {
      close(number_);
    }
  }
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;

  int number() const { return number_; }

 private:
  int number_;
};

/// The first line of a descriptor. `source` names it in failures.
std::optional<Secret> readLine(int descriptor, const std::string& source,
                               Failure& failure) {
  // Reserved whole, so that no half of it stays behind in a smaller buffer.
  std::string line;
  line.reserve(kLongestPassword + 1);
  while (line.size() <= kLongestPassword) {
    char byte = '\0';
    const ssize_t count = read(descriptor, &byte, 1);
    if (count < 0 && errno == EINTR && !redfish::interrupted()) {
      continue;
    }
    if (count < 0) {
      const int reason = errno;
      Secret discarded(std::move(line));
      failure =
          redfish::interrupted()
              ? failureOf(FailureKind::kInterrupted, "interrupted by the user")
              : failureOf(FailureKind::kFileUnreadable,
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

/// Keeps a terminal from showing what is typed.
class SilentTerminal {
 public:
  explicit SilentTerminal(int descriptor) : descriptor_(descriptor) {
    silenced_ = tcgetattr(descriptor, &before_) == 0;
    if (silenced_) {
      termios silent = before_;
      silent.c_lflag &= ~static_cast<tcflag_t>(ECHO);
      silenced_ = tcsetattr(descriptor, TCSAFLUSH, &silent) == 0;
    }
  }
  ~SilentTerminal() {
    if (silenced_) {
      tcsetattr(descriptor_, TCSAFLUSH, &before_);
    }
  }
  SilentTerminal(const SilentTerminal&) = delete;
  SilentTerminal& operator=(const SilentTerminal&) = delete;

  bool silenced() const { return silenced_; }

 private:
  int descriptor_;
  bool silenced_ = false;
  termios before_{};
};

void show(int descriptor, const std::string& text) {
  // A question that cannot be shown is still answered, or interrupted.
  static_cast<void>(write(descriptor, text.data(), text.size()) < 0);
}

}  // namespace

std::optional<Secret> readPasswordFile(const std::string& file,
                                       Failure& failure) {
  const Descriptor descriptor(
      open(file.c_str(), O_RDONLY | O_CLOEXEC | O_NOCTTY));
  struct stat status = {};
  if (descriptor.number() < 0 || fstat(descriptor.number(), &status) != 0) {
    const bool missing = errno == ENOENT || errno == ENOTDIR;
    failure = failureOf(missing ? FailureKind::kCredentialMissing
                                : FailureKind::kFileUnreadable,
                        "the password file " + file +
                            (missing ? " does not exist"
                                     : std::string(" cannot be opened: ") +
                                           std::strerror(errno)));
    return std::nullopt;
  }
  if ((status.st_mode & (S_IRWXG | S_IRWXO)) != 0 && !S_ISCHR(status.st_mode)) {
    failure = failureOf(
        FailureKind::kFileUnreadable,
        "the password file " + file + " is open to other users of this machine",
        "run: chmod 600 " + file);
    return std::nullopt;
  }
  return readLine(descriptor.number(), "the password file " + file, failure);
}

std::optional<Secret> readPasswordFromStdin(Failure& failure) {
  return readLine(STDIN_FILENO, "standard input", failure);
}

std::optional<Secret> askPassword(const std::string& question,
                                  Failure& failure) {
  if (isatty(STDIN_FILENO) == 0) {
    failure = failureOf(FailureKind::kNoCredentials, "no password is given",
                        "use --password-file, --password-stdin or "
                        "BRIVEL_PASSWORD, or run at a terminal to be asked");
    return std::nullopt;
  }
  const Descriptor terminal(open("/dev/tty", O_WRONLY | O_CLOEXEC | O_NOCTTY));
  const int output = terminal.number() >= 0 ? terminal.number() : STDERR_FILENO;
  const SilentTerminal silent(STDIN_FILENO);
  if (!silent.silenced()) {
    failure = failureOf(FailureKind::kNoCredentials,
                        "the terminal cannot be kept from showing a password",
                        "use --password-file or --password-stdin");
    return std::nullopt;
  }
  show(output, question);
  std::optional<Secret> password =
      readLine(STDIN_FILENO, "the answer", failure);
  show(output, "\n");
  return password;
}

}  // namespace connection
