#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace platform {

/// When a file that grows is set aside, and how many older ones are kept
/// ("a.log" becomes "a.1.log", that one "a.2.log", and so on).
struct Rotation {
  std::uint64_t atBytes = 1;  ///< At least 1.
  unsigned int olderFiles = 0;
};

/// A file that this process appends to and that its user alone can read.
class OwnedFile {
 public:
  /// Opens a file, or makes it and the folders that are missing above it. It
  /// is set aside first if it has reached the size of `rotation`; what other
  /// processes have open stays theirs to append to. Returns nullopt and sets
  /// `reason` if it cannot be written. On POSIX also if it is a symbolic
  /// link, a pipe or a socket, has a second name, or belongs to another user;
  /// no link of another user leads the way to it, and no folder is made in
  /// one of another user. Root counts as no other user on the way.
  static std::optional<OwnedFile> open(const std::filesystem::path& file,
                                       const Rotation& rotation,
                                       std::string& reason);

  OwnedFile(OwnedFile&& other) noexcept;
  ~OwnedFile();

  OwnedFile(const OwnedFile&) = delete;
  OwnedFile& operator=(const OwnedFile&) = delete;
  OwnedFile& operator=(OwnedFile&&) = delete;

  /// Appends bytes, in one piece where the system takes them so. Returns false
  /// and sets `reason` if they cannot be written.
  bool append(std::string_view bytes, std::string& reason) const;

  /// The open file: a descriptor, on Windows a HANDLE. It stays this object's.
  std::intptr_t handle() const { return handle_; }

 private:
  explicit OwnedFile(std::intptr_t handle) : handle_(handle) {}

  std::intptr_t handle_;  // A descriptor, or a HANDLE; -1: moved away.
};

/// The name of the n-th older file beside one that is rotated.
std::filesystem::path olderName(const std::filesystem::path& file,
                                unsigned int number);

}  // namespace platform
