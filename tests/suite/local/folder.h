#pragma once

#include <filesystem>
#include <string>

#include "suite/local/facts/root.h"

namespace local {

/// A recorded machine in a temporary folder, gone with the object.
class Folder {
 public:
  Folder();
  ~Folder();

  Folder(const Folder&) = delete;
  Folder& operator=(const Folder&) = delete;

  /// Writes a file, and the folders above it, at a path such as "/sys/a/b".
  Folder& file(const std::string& path, const std::string& bytes);

  /// Makes a symbolic link that points at `target`, as it stands.
  Folder& link(const std::string& path, const std::string& target);

  /// Makes an empty folder.
  Folder& folder(const std::string& path);

  Root root() const { return Root(path_.string()); }
  std::string path() const { return path_.string(); }

 private:
  std::filesystem::path at(const std::string& path) const;

  std::filesystem::path path_;
};

}  // namespace local
