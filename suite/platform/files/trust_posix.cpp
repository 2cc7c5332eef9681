#include "suite/platform/files/trust.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

#include "suite/platform/files/descriptor.h"
#include "suite/platform/files/folder_walk_posix.h"
#include "suite/platform/interrupt.h"

namespace platform {
namespace {

// Why an open file should not be obeyed; empty if it may be.
std::string problemWith(const struct stat& status, const std::string& file) {
  if (S_ISDIR(status.st_mode)) {
    return "is a directory";
  }
  if (!isOwnOrRoots(status)) {
    return "belongs to another user, who could change it; make it yours "
           "(chown), or use a copy";
  }
  // Devices, such as /dev/null, are open to all.
  return !S_ISCHR(status.st_mode) && (status.st_mode & (S_IWGRP | S_IWOTH)) != 0
             ? "others may write to it; run: chmod go-w " + file
             : "";
}

// Reads up to the end, or one byte more than the limit. Returns false, with
// errno set, if that fails or the user ends the run.
bool readAll(int descriptor, std::size_t limit, std::string& text) {
  text.resize(limit + 1);
  std::size_t size = 0;
  while (size < text.size()) {
    const ssize_t count =
        read(descriptor, text.data() + size, text.size() - size);
    if (count == 0) {
      break;
    }
    if (count > 0) {
      size += static_cast<std::size_t>(count);
    } else if ((errno != EAGAIN && errno != EINTR) || !awaitInput(descriptor)) {
      return false;
    }
  }
  text.resize(size);
  return true;
}

std::string problemWithOwner(const struct stat& status, const struct stat& own,
                             const std::string& what, const std::string& path) {
  if (!isOwnOrRoots(status) && status.st_uid != own.st_uid) {
    return what + " belongs to another user, who could change it";
  }
  // Whose group may write, where an ordinary user has the file, is up to that
  // user, who is trusted.
  const mode_t others = status.st_uid == 0 ? S_IWGRP | S_IWOTH : S_IWOTH;
  return (status.st_mode & others) != 0
             ? "others may write to " + what + "; run: chmod go-w " + path
             : "";
}

}  // namespace

std::optional<std::string> readTrustedFile(const std::filesystem::path& file,
                                           std::size_t limit,
                                           std::string& reason) {
  // Without O_NONBLOCK a pipe that nobody writes to would hold up the run.
  const Descriptor descriptor(
      open(file.c_str(), O_RDONLY | O_CLOEXEC | O_NOCTTY | O_NONBLOCK));
  struct stat status = {};
  if (descriptor.number() < 0 || fstat(descriptor.number(), &status) != 0) {
    reason = std::strerror(errno);
    return std::nullopt;
  }
  reason = problemWith(status, file.string());
  if (!reason.empty()) {
    return std::nullopt;
  }
  std::string text;
  if (!readAll(descriptor.number(), limit, text)) {
    reason = interrupted() ? "interrupted by the user" : std::strerror(errno);
    return std::nullopt;
  }
  if (text.size() > limit) {
    reason = "is larger than " + std::to_string(limit >> 20U) + " MiB";
    return std::nullopt;
  }
  if (text.empty() && S_ISFIFO(status.st_mode)) {
    reason = "is a pipe that nothing was written to";
    return std::nullopt;
  }
  return text;
}

std::string problemWithCode(const std::filesystem::path& file,
                            const std::filesystem::path& own) {
  struct stat ownStatus = {};
  if (stat(own.c_str(), &ownStatus) != 0) {
    ownStatus.st_uid = 0;
  }
  const std::filesystem::path folder = file.parent_path();
  struct stat status = {};
  std::string problem;
  if (stat(file.c_str(), &status) == 0) {
    problem = problemWithOwner(status, ownStatus, "it", file.string());
  }
  if (problem.empty() && stat(folder.c_str(), &status) == 0) {
    problem =
        problemWithOwner(status, ownStatus, "its folder", folder.string());
  }
  return problem;
}

}  // namespace platform
