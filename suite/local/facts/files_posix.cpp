#include "suite/local/facts/files.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <climits>
#include <cstdlib>
#include <memory>
#include <string_view>

namespace local {
namespace {

Access accessOf(int error) {
  switch (error) {
    case ENOENT:
    case ENOTDIR:
    case ENXIO:
    case ENODEV:
      return Access::kMissing;
    case EACCES:
    case EPERM:
      return Access::kDenied;
    default:
      return Access::kFailed;
  }
}

// A file that is closed when it goes.
class File {
 public:
  explicit File(const std::string& path)
      : file_(open(path.c_str(), O_RDONLY | O_CLOEXEC)) {}
  ~File() {
    if (file_ >= 0) {
      close(file_);
    }
  }
  File(const File&) = delete;
  File& operator=(const File&) = delete;

  int number() const { return file_; }

 private:
  int file_;
};

struct CloseFolder {
  void operator()(DIR* folder) const { closedir(folder); }
};

}  // namespace

std::string realPath(const std::string& path) {
  char resolved[PATH_MAX];
  return realpath(path.c_str(), resolved) == nullptr ? "" : resolved;
}

bool exists(const std::string& path) {
  struct stat status = {};
  return stat(path.c_str(), &status) == 0;
}

Content readFile(const std::string& path, std::size_t limit) {
  // A pipe in a recorded folder must not stop the run.
  struct stat status = {};
  if (stat(path.c_str(), &status) != 0) {
    return {accessOf(errno), ""};
  }
  if (!S_ISREG(status.st_mode)) {
    return {Access::kFailed, ""};
  }
  const File file(path);
  if (file.number() < 0) {
    return {accessOf(errno), ""};
  }
  // The kernel makes its files up as they are read: in one go, if possible.
  // The sizes that it states for them are often wrong (0, or a page), so
  // reading goes on until there is no more.
  Content content;
  char chunk[16384];
  ssize_t count = 0;
  while ((count = read(file.number(), chunk, sizeof chunk)) > 0) {
    content.bytes.append(chunk, static_cast<std::size_t>(count));
    if (content.bytes.size() > limit) {
      return {Access::kFailed, ""};
    }
  }
  if (count < 0) {
    return {accessOf(errno), ""};
  }
  content.access = Access::kRead;
  return content;
}

std::vector<std::string> namesIn(const std::string& folder) {
  std::vector<std::string> names;
  const std::unique_ptr<DIR, CloseFolder> opened(opendir(folder.c_str()));
  if (opened == nullptr) {
    return names;
  }
  while (const dirent* entry = readdir(opened.get())) {
    const std::string_view name = entry->d_name;
    if (name != "." && name != "..") {
      names.emplace_back(name);
    }
  }
  return names;
}

std::string linkTarget(const std::string& path) {
  char target[PATH_MAX];
  const ssize_t length = readlink(path.c_str(), target, sizeof target);
  return length <= 0 ? std::string()
                     : std::string(target, static_cast<std::size_t>(length));
}

}  // namespace local
