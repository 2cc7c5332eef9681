#include "suite/platform/files/folder_walk_posix.h"

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <climits>
#include <cstddef>
#include <cstring>
#include <utility>
#include <vector>

namespace platform {
namespace {

// As many symbolic links as Linux follows in one path.
constexpr int kMostLinks = 40;

constexpr int kStep = O_PATH | O_NOFOLLOW | O_CLOEXEC;

class FolderWalk {
 public:
  explicit FolderWalk(const std::filesystem::path& folder)
      : here_(open(".", kStep)) {
    add(folder);
  }

  // Goes all the way; false, and why in `reason`, if it ends before.
  bool go(std::string& reason) {
    while (!ahead_.empty()) {
      const std::string name = std::move(ahead_.back());
      ahead_.pop_back();
      if (!step(name)) {
        reason = reason_.empty() ? std::strerror(errno) : reason_;
        return false;
      }
    }
    return true;
  }

  Descriptor take() { return std::move(here_); }

 private:
  // Puts the parts of a path before what is still ahead.
  void add(const std::filesystem::path& path) {
    const std::vector<std::filesystem::path> parts(path.begin(), path.end());
    for (auto part = parts.rbegin(); part != parts.rend(); ++part) {
      ahead_.push_back(part->native());
    }
  }

  bool step(const std::string& name) {
    if (name.empty()) {
      return true;  // After a slash at the end.
    }
    // An absolute path, here or in a link, begins with the part "/".
    Descriptor next(openat(here_.number(), name.c_str(), kStep));
    if (next.number() < 0 && errno == ENOENT && make(name)) {
      next = Descriptor(openat(here_.number(), name.c_str(), kStep));
    }
    struct stat status = {};
    if (next.number() < 0 || fstat(next.number(), &status) != 0) {
      return false;
    }
    if (S_ISLNK(status.st_mode)) {
      return follow(next, status, name);
    }
    if (!S_ISDIR(status.st_mode)) {
      errno = ENOTDIR;
      return false;
    }
    here_ = std::move(next);
    return true;
  }

  bool make(const std::string& name) {
    struct stat status = {};
    if (fstat(here_.number(), &status) != 0) {
      return false;
    }
    if (!isOwnOrRoots(status)) {
      reason_ = "the folder " + name +
                " is missing, and the one above it belongs to another user";
      return false;
    }
    return mkdirat(here_.number(), name.c_str(), S_IRWXU) == 0 ||
           errno == EEXIST;
  }

  bool follow(const Descriptor& link, const struct stat& status,
              const std::string& name) {
    if (!isOwnOrRoots(status)) {
      reason_ =
          "the symbolic link " + name + " on the way belongs to another user";
      return false;
    }
    if (++links_ > kMostLinks) {
      errno = ELOOP;
      return false;
    }
    std::array<char, PATH_MAX> target{};
    const ssize_t size =
        readlinkat(link.number(), "", target.data(), target.size());
    if (size < 0) {
      return false;
    }
    add(std::string(target.data(), static_cast<std::size_t>(size)));
    return true;
  }

  Descriptor here_;
  std::vector<std::string> ahead_;  // The next part is the last.
  std::string reason_;              // Empty: errno tells.
  int links_ = 0;
};

}  // namespace

bool isOwnOrRoots(const struct stat& status) {
  return status.st_uid == 0 || status.st_uid == geteuid();
}

Descriptor openFolder(const std::filesystem::path& folder,
                      std::string& reason) {
  FolderWalk walk(folder);
  return walk.go(reason) ? walk.take() : Descriptor(-1);
}

}  // namespace platform
