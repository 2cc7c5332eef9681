#pragma once

#include <filesystem>
#include <fstream>
#include <random>
#include <string>

/// A directory of a test's own, removed with all that is in it.
class TemporaryDirectory {
 public:
  TemporaryDirectory() {
    std::random_device random;
    do {
      path_ = std::filesystem::temp_directory_path() /
              ("brivel_test." + std::to_string(random()));
    } while (!std::filesystem::create_directory(path_));
    std::filesystem::permissions(path_, std::filesystem::perms::owner_all);
  }
  ~TemporaryDirectory() { std::filesystem::remove_all(path_); }

  TemporaryDirectory(const TemporaryDirectory&) = delete;
  TemporaryDirectory& operator=(const TemporaryDirectory&) = delete;

  std::string path(const std::string& name = "") const {
    return name.empty() ? path_.string() : (path_ / name).string();
  }

  static constexpr std::filesystem::perms kOwnersAlone =
      std::filesystem::perms::owner_read | std::filesystem::perms::owner_write;

  /// Writes a file with these rights, and the directories above it. Its path.
  std::string write(const std::string& name, const std::string& text,
                    std::filesystem::perms rights = kOwnersAlone) const {
    const std::filesystem::path file = path_ / name;
    std::filesystem::create_directories(file.parent_path());
    std::ofstream(file, std::ios::binary) << text;
    std::filesystem::permissions(file, rights);
    return file.string();
  }

 private:
  std::filesystem::path path_;
};
