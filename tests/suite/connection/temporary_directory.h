#pragma once

#include <sys/stat.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

/// A directory of a test's own, removed with all that is in it.
class TemporaryDirectory {
 public:
  TemporaryDirectory() {
    std::string name =
        (std::filesystem::temp_directory_path() / "brivel_test.XXXXXX")
            .string();
    path_ = mkdtemp(name.data());
  }
  ~TemporaryDirectory() { std::filesystem::remove_all(path_); }

  TemporaryDirectory(const TemporaryDirectory&) = delete;
  TemporaryDirectory& operator=(const TemporaryDirectory&) = delete;

  std::string path(const std::string& name = "") const {
    return name.empty() ? path_.string() : (path_ / name).string();
  }

  /// Writes a file with these rights, and the directories above it. Its path.
  std::string write(const std::string& name, const std::string& text,
                    mode_t rights = 0600) const {
    const std::filesystem::path file = path_ / name;
    std::filesystem::create_directories(file.parent_path());
    std::ofstream(file, std::ios::binary) << text;
    chmod(file.c_str(), rights);
    return file.string();
  }

 private:
  std::filesystem::path path_;
};
