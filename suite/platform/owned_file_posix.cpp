#include "suite/platform/owned_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

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
// What cannot be made shows when the file is opened.
void makeParents(const std::filesystem::path& file) {
  std::filesystem::path made;
  for (const std::filesystem::path& part : file.parent_path()) {
    made /= part;
    static_cast<void>(mkdir(made.c_str(), S_IRWXU));
  }
}

}  // namespace

bool prepareOwnedFile(const std::filesystem::path& file, bool& regular,
                      std::string& reason) {
  int descriptor = openForOwner(file);
  if (descriptor < 0 && errno == ENOENT) {
    makeParents(file);
    descriptor = openForOwner(file);
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
