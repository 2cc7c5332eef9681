#pragma once

#include <filesystem>
#include <string>

#include "suite/local/facts/root.h"
#include "tests/support/temp_folder.h"

namespace local {

/// A recorded machine in a temporary folder, gone with the object.
class Folder {
 public:
  /// Writes a file, and the folders above it, at a path such as "/sys/a/b".
  Folder& file(const std::string& path, const std::string& bytes);

  /// Makes a symbolic link that points at `target`, as it stands.
  Folder& link(const std::string& path, const std::string& target);

  /// Makes an empty folder.
  Folder& folder(const std::string& path);

  Root root() const { return Root(path()); }
  std::string path() const { return folder_.path().string(); }

 private:
  support::TempFolder folder_;
};

}  // namespace local
