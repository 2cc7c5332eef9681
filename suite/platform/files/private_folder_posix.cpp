#include "suite/platform/files/private_folder.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <string_view>

#include "suite/platform/files/folder_walk_posix.h"

namespace platform {
namespace {

constexpr int kFolderFlags = O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC;

// Whether an open folder is empty; false as well if it cannot be listed.
bool isEmpty(int folder) {
  const int again = openat(folder, ".", kFolderFlags);
  DIR* const stream = again < 0 ? nullptr : fdopendir(again);
  if (stream == nullptr) {
    if (again >= 0) {
      close(again);
    }
    return false;
  }
  bool empty = true;
  while (const dirent* const entry = readdir(stream)) {
    const std::string_view name = entry->d_name;
    empty = empty && (name == "." || name == "..");
  }
  closedir(stream);
  return empty;
}

// Why an open folder cannot be taken; null if it can.
const char* objectionTo(int folder) {
  struct stat status = {};
  if (fstat(folder, &status) != 0 || status.st_uid != geteuid()) {
    return "it belongs to another user";
  }
  if (!isEmpty(folder)) {
    return "it is not empty";
  }
  return fchmod(folder, S_IRWXU) == 0 ? nullptr
                                      : "its rights cannot be changed";
}

bool writeAll(int file, const std::string& bytes) {
  std::size_t written = 0;
  while (written < bytes.size()) {
    const ssize_t count =
        ::write(file, bytes.data() + written, bytes.size() - written);
    if (count < 0 && errno == EINTR) {
      continue;
    }
    if (count <= 0) {
      return false;
    }
    written += static_cast<std::size_t>(count);
  }
  return true;
}

// Opens the folder that a name lies in, and makes it and those above it. Holds
// no descriptor, and errno says why, if there is none to be had. `last` is the
// name in it.
Descriptor openFolderOf(int top, const std::string& name, std::string& last) {
  Descriptor folder(fcntl(top, F_DUPFD_CLOEXEC, 0));
  std::string_view left = name;
  while (folder.number() >= 0) {
    const std::size_t slash = left.find('/');
    last = left.substr(0, slash);
    if (last.empty() || last == "." || last == ".." ||
        last.find('\0') != std::string::npos) {
      errno = EINVAL;
      return Descriptor(-1);
    }
    if (slash == std::string_view::npos) {
      break;
    }
    left.remove_prefix(slash + 1);
    if (mkdirat(folder.number(), last.c_str(), S_IRWXU) != 0 &&
        errno != EEXIST) {
      return Descriptor(-1);
    }
    folder = Descriptor(openat(folder.number(), last.c_str(), kFolderFlags));
  }
  return folder;
}

}  // namespace

std::optional<PrivateFolder> PrivateFolder::make(
    const std::filesystem::path& path, Refusal& refusal, std::string& reason) {
  refusal = Refusal::kNone;
  std::error_code unknown;
  const auto status = std::filesystem::symlink_status(path, unknown);
  if (std::filesystem::exists(status) &&
      !std::filesystem::is_directory(status)) {
    refusal = Refusal::kInUse;
    reason = std::filesystem::is_symlink(status) ? "it is a symbolic link"
                                                 : "it is no folder";
    return std::nullopt;
  }
  const Descriptor way = openFolder(path, reason);
  PrivateFolder folder;
  if (way.number() >= 0) {
    folder.descriptor_ = Descriptor(openat(way.number(), ".", kFolderFlags));
    reason = std::strerror(errno);
  }
  if (folder.descriptor_.number() < 0) {
    refusal = Refusal::kUnwritable;
    return std::nullopt;
  }
  if (const char* const objection = objectionTo(folder.descriptor_.number())) {
    refusal = Refusal::kInUse;
    reason = objection;
    return std::nullopt;
  }
  return folder;
}

bool PrivateFolder::write(const std::string& name, const std::string& bytes,
                          std::string& reason) {
  std::string last;
  const Descriptor folder = openFolderOf(descriptor_.number(), name, last);
  const int file =
      folder.number() < 0
          ? -1
          : openat(folder.number(), last.c_str(),
                   O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC,
                   S_IRUSR | S_IWUSR);
  bool whole = file >= 0 && writeAll(file, bytes);
  int error = errno;
  // A network's file system tells at the end that there is no room.
  if (file >= 0 && close(file) != 0 && whole) {
    whole = false;
    error = errno;
  }
  if (!whole) {
    reason = std::strerror(error);
  }
  if (file >= 0 && !whole) {
    unlinkat(folder.number(), last.c_str(), 0);
  }
  return whole;
}

bool PrivateFolder::link(const std::string& name, const std::string& target,
                         std::string& reason) {
  std::string last;
  const Descriptor folder = openFolderOf(descriptor_.number(), name, last);
  const bool made =
      folder.number() >= 0 &&
      symlinkat(target.c_str(), folder.number(), last.c_str()) == 0;
  if (!made) {
    reason = std::strerror(errno);
  }
  return made;
}

bool PrivateFolder::remove(const std::string& name) {
  return unlinkat(descriptor_.number(), name.c_str(), 0) == 0;
}

}  // namespace platform
