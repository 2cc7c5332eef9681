#include "suite/platform/files/owned_file.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <utility>

#include "suite/platform/files/descriptor.h"
#include "suite/platform/files/folder_walk_posix.h"

namespace platform {
namespace {

// A file by its name in an open folder.
struct Place {
  const Descriptor& folder;
  std::filesystem::path name;
};

// Why an open file is not to be written to; empty if it may be.
std::string problemWith(const struct stat& status) {
  if (S_ISCHR(status.st_mode)) {
    return isOwnOrRoots(status) ? "" : "it belongs to another user";
  }
  if (!S_ISREG(status.st_mode)) {
    return "it is no regular file";
  }
  if (status.st_uid != geteuid()) {
    return "it belongs to another user";
  }
  return status.st_nlink > 1 ? "it has a second name (a hard link)" : "";
}

// Opens, and makes for its owner alone, a file that may be written to. Holds
// no descriptor, and sets `reason`, if there is none.
Descriptor openForOwner(const Place& place, struct stat& status,
                        std::string& reason) {
  // Without O_NONBLOCK a pipe that nobody reads would hold up the run.
  Descriptor file(openat(place.folder.number(), place.name.c_str(),
                         O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC | O_NOCTTY |
                             O_NONBLOCK | O_NOFOLLOW,
                         S_IRUSR | S_IWUSR));
  if (file.number() < 0 || fstat(file.number(), &status) != 0) {
    reason = errno == ELOOP ? "it is a symbolic link" : std::strerror(errno);
    return Descriptor(-1);
  }
  reason = problemWith(status);
  if (!reason.empty()) {
    return Descriptor(-1);
  }
  if (S_ISREG(status.st_mode)) {
    static_cast<void>(fchmod(file.number(), S_IRUSR | S_IWUSR));
  }
  return file;
}

// Whether the name still stands for the open file.
bool isNamed(const Place& place, const struct stat& open) {
  struct stat named = {};
  return fstatat(place.folder.number(), place.name.c_str(), &named,
                 AT_SYMLINK_NOFOLLOW) == 0 &&
         named.st_dev == open.st_dev && named.st_ino == open.st_ino;
}

// Renames the file and the older ones, the oldest first. Whether the name is
// free now.
bool setAside(const Place& place, unsigned int olderFiles) {
  bool done = false;
  for (unsigned int number = olderFiles; number > 0; --number) {
    const std::filesystem::path from =
        number == 1 ? place.name : olderName(place.name, number - 1);
    const std::filesystem::path to = olderName(place.name, number);
    done = renameat(place.folder.number(), from.c_str(), place.folder.number(),
                    to.c_str()) == 0;
  }
  return done;
}

}  // namespace

std::optional<OwnedFile> OwnedFile::open(const std::filesystem::path& file,
                                         const Rotation& rotation,
                                         std::string& reason) {
  const Descriptor folder = openFolder(file.parent_path(), reason);
  if (folder.number() < 0) {
    return std::nullopt;
  }
  const Place place{folder, file.filename()};
  while (true) {
    struct stat status = {};
    Descriptor opened = openForOwner(place, status, reason);
    if (opened.number() < 0) {
      return std::nullopt;
    }
    const bool isFull =
        S_ISREG(status.st_mode) &&
        static_cast<std::uint64_t>(status.st_size) >= rotation.atBytes;
    // One process at a time sets a file aside, and only while it has the name:
    // else it would move what another has just begun. Who does not get the
    // lock writes on to the file that it has.
    if (!isFull || flock(opened.number(), LOCK_EX | LOCK_NB) != 0 ||
        (isNamed(place, status) && !setAside(place, rotation.olderFiles))) {
      return OwnedFile(opened.release());
    }
  }
}

OwnedFile::~OwnedFile() {
  // Closes the descriptor.
  const Descriptor last(static_cast<int>(handle_));
}

bool OwnedFile::append(std::string_view bytes, std::string& reason) const {
  while (!bytes.empty()) {
    const ssize_t count =
        write(static_cast<int>(handle_), bytes.data(), bytes.size());
    if (count < 0 && errno != EINTR) {
      reason = std::strerror(errno);
      return false;
    }
    bytes.remove_prefix(count > 0 ? static_cast<std::size_t>(count) : 0);
  }
  return true;
}

}  // namespace platform
