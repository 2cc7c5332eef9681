#include "suite/connection/password/password_file.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <cerrno>
#include <cstring>

#include "suite/connection/password/password_line.h"
#include "suite/platform/descriptor.h"

namespace connection {
using base::Failure;
using base::FailureKind;

base::Result<base::Secret> readPasswordFile(const std::string& file) {
  const platform::Descriptor descriptor(
      open(file.c_str(), O_RDONLY | O_CLOEXEC | O_NOCTTY));
  struct stat status = {};
  if (descriptor.number() < 0 || fstat(descriptor.number(), &status) != 0) {
    const int reason = errno;
    Failure failure;
    const bool missing = reason == ENOENT || reason == ENOTDIR;
    failure.kind = missing ? FailureKind::kCredentialMissing
                           : FailureKind::kFileUnreadable;
    failure.cause =
        "the password file " + file +
        (missing ? " does not exist"
                 : std::string(" cannot be opened: ") + std::strerror(reason));
    return failure;
  }
  if ((status.st_mode & (S_IRWXG | S_IRWXO)) != 0 && !S_ISCHR(status.st_mode)) {
    Failure failure;
    failure.kind = FailureKind::kFileUnreadable;
    failure.cause =
        "the password file " + file + " is open to other users of this machine";
    failure.remedy = "run: chmod 600 " + file;
    return failure;
  }
  return readPasswordLine(descriptor.number(), "the password file " + file);
}

}  // namespace connection
