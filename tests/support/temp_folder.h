#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace support {

/// An empty folder that only its owner may enter, removed with all that is in
/// it when the object goes.
class TempFolder {
 public:
  /// The rights of a file that only its owner may read and write.
  static constexpr std::filesystem::perms kOwnersAlone =
      std::filesystem::perms::owner_read | std::filesystem::perms::owner_write;

  /// Throws std::filesystem::filesystem_error when it cannot be made.
  TempFolder();
  ~TempFolder();

  TempFolder(const TempFolder&) = delete;
  TempFolder& operator=(const TempFolder&) = delete;

  const std::filesystem::path& path() const { return path_; }

  /// The path of something inside; a leading slash of `name` means the folder
  /// itself.
  std::string at(std::string_view name) const;

  /// Writes a file with these rights, and makes the folders above it. Its
  /// path. Throws std::runtime_error when it cannot be written.
  std::string write(std::string_view name, std::string_view bytes,
                    std::filesystem::perms rights = kOwnersAlone) const;

 private:
  std::filesystem::path path_;
};

}  // namespace support
