#include "suite/platform/owned_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <system_error>

namespace platform {
namespace {

// Opens, and makes for its owner alone, a log file. A descriptor, or -1 with
// the reason in errno.
int openForOwner(const std::filesystem::path& file) {
  // Without O_NONBLOCK a pipe that nobody reads would hold up the run.
  return open(file.c_str(),
              O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC | O_NOCTTY | O_NONBLOCK,
              S_IRUSR | S_IWUSR);
}

// Makes the directories that are missing above a file, for the owner alone.
// Returns 0, or the error number of the one that cannot be made.
int makeParents(const std::filesystem::path& file) {
  std::filesystem::path made;
  for (const std::filesystem::path& part : file.parent_path()) {
    made /= part;
    if (mkdir(made.c_str(), S_IRWXU) != 0 && errno != EEXIST) {
      const int reason = errno;
      std::error_code unknown;
      if (!std::filesystem::is_directory(made, unknown)) {
        return reason;
      }
    }
  }
  return 0;
}

}  // namespace

bool prepareOwnedFile(const std::filesystem::path& file, bool& regular,
                      std::string& reason) {
  int descriptor = openForOwner(file);
  if (descriptor < 0 && errno == ENOENT) {
    const int failed = makeParents(file);
    descriptor = failed == 0 ? openForOwner(file) : descriptor;
    errno = failed == 0 ? errno : failed;
  }
  if (descriptor < 0) {
    reason = std::strerror(errno);
    return false;
  }
  struct stat status = {};
  regular = fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode);
  close(descriptor);
  return true;
}

void restrictToOwner(const std::filesystem::path& file) {
  const int descriptor = openForOwner(file);
  if (descriptor >= 0) {
    static_cast<void>(fchmod(descriptor, S_IRUSR | S_IWUSR));
    close(descriptor);
  }
}

}  // namespace platform
