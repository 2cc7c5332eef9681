#include "tests/suite/local/folder.h"

#include <cstdlib>
#include <fstream>
#include <stdexcept>

namespace local {

namespace fs = std::filesystem;

Folder::Folder() {
  std::string name = (fs::temp_directory_path() / "machine-XXXXXX").string();
  if (mkdtemp(name.data()) == nullptr) {
    throw std::runtime_error("no temporary folder");
  }
  path_ = name;
}

Folder::~Folder() {
  std::error_code ignored;  // A folder left behind harms nobody.
  fs::remove_all(path_, ignored);
}

fs::path Folder::at(const std::string& path) const {
  return path_.string() + path;
}

Folder& Folder::file(const std::string& path, const std::string& bytes) {
  fs::create_directories(at(path).parent_path());
  std::ofstream(at(path), std::ios::binary) << bytes;
  return *this;
}

Folder& Folder::link(const std::string& path, const std::string& target) {
  fs::create_directories(at(path).parent_path());
  fs::create_symlink(target, at(path));
  return *this;
}

Folder& Folder::folder(const std::string& path) {
  fs::create_directories(at(path));
  return *this;
}

}  // namespace local
