#include "suite/connection/password/password_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <optional>
#include <utility>

#include "suite/connection/password/password_line.h"
#include "suite/platform/files/descriptor.h"
#include "suite/platform/files/folder_walk_posix.h"

namespace connection {
using base::Failure;
using base::FailureKind;

namespace {

Failure failureOf(std::string cause, std::string remedy = "") {
  Failure failure =
      base::makeFailure(FailureKind::kFileUnreadable, std::move(cause));
  failure.remedy = std::move(remedy);
  return failure;
}

// Why no password is taken from an open file; nullopt if one may be.
std::optional<Failure> problemWith(int descriptor, const struct stat& status,
                                   const std::string& file) {
  const std::string name = "the password file " + file;
  if (S_ISDIR(status.st_mode)) {
    return failureOf(name + " is a directory");
  }
  if (isatty(descriptor) != 0) {
    return failureOf(name + " is a terminal, which shows what is typed",
                     "name no file, and the password is asked for");
  }
  if (!platform::isOwnOrRoots(status)) {
    return failureOf(name + " belongs to another user, who could change it",
                     "make it yours (chown), or use a copy");
  }
  if ((status.st_mode & (S_IRWXG | S_IRWXO)) != 0 && !S_ISCHR(status.st_mode)) {
    return failureOf(name + " is open to other users of this machine",
                     "run: chmod 600 " + file);
  }
  return std::nullopt;
}

}  // namespace

base::Result<base::Secret> readPasswordFile(const std::string& file) {
  // Without O_NONBLOCK a pipe that nobody writes to would hold up the run.
  const platform::Descriptor descriptor(
      open(file.c_str(), O_RDONLY | O_CLOEXEC | O_NOCTTY | O_NONBLOCK));
  struct stat status = {};
  if (descriptor.number() < 0 || fstat(descriptor.number(), &status) != 0) {
    const int reason = errno;
    const bool missing = reason == ENOENT || reason == ENOTDIR;
    return base::makeFailure(missing ? FailureKind::kCredentialMissing
                                     : FailureKind::kFileUnreadable,
                             "the password file " + file +
                                 (missing ? " does not exist"
                                          : std::string(" cannot be opened: ") +
                                                std::strerror(reason)));
  }
  if (auto problem = problemWith(descriptor.number(), status, file)) {
    return *std::move(problem);
  }
  return readPasswordLine(descriptor.number(), "the password file " + file,
                          /*nonBlocking=*/true);
}

}  // namespace connection
