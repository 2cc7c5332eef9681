#include "tests/suite/local/folder.h"

namespace local {

namespace fs = std::filesystem;

Folder& Folder::file(const std::string& path, const std::string& bytes) {
  constexpr fs::perms kReadable =
      fs::perms::owner_read | fs::perms::owner_write | fs::perms::group_read |
      fs::perms::others_read;
  folder_.write(path, bytes, kReadable);
  return *this;
}

Folder& Folder::link(const std::string& path, const std::string& target) {
  const fs::path place = folder_.at(path);
  fs::create_directories(place.parent_path());
  fs::create_symlink(target, place);
  return *this;
}

Folder& Folder::folder(const std::string& path) {
  fs::create_directories(folder_.at(path));
  return *this;
}

}  // namespace local
