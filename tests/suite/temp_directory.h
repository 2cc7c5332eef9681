#pragma once

#include <filesystem>
#include <string_view>

/// A directory of a test's own, deleted with all that is in it.
class TempDirectory {
 public:
  TempDirectory();
  ~TempDirectory();

  TempDirectory(const TempDirectory&) = delete;
  TempDirectory& operator=(const TempDirectory&) = delete;

  const std::filesystem::path& path() const { return path_; }

  /// Writes a file below the directory, making the directories on its way.
  void write(const std::filesystem::path& file, std::string_view text) const;

 private:
  std::filesystem::path path_;
};
