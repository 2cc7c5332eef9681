#pragma once

#include <filesystem>
#include <optional>
#include <string>

#ifndef _WIN32
#include "suite/platform/files/descriptor.h"
#endif

namespace platform {

/// A folder that only its owner may enter, with files that only their owner may
/// read. Nothing in it is ever followed or replaced: what is written is new.
/// On Windows rights are those of the folder that it is made in.
class PrivateFolder {
 public:
  enum class Refusal {
    kNone,
    kInUse,       ///< It is there and not empty, no folder, or another user's.
    kUnwritable,  ///< The system refuses to make or to open it.
  };

  /// Makes a folder and those that are missing above it, or takes one that is
  /// there and empty. Returns nullopt and sets `refusal` and `reason`, a
  /// clause, if it cannot be had.
  static std::optional<PrivateFolder> make(const std::filesystem::path& path,
                                           Refusal& refusal,
                                           std::string& reason);

  /// Writes a new file, and makes the folders above it. `name` is its path in
  /// the folder, with "/" between names; "." and ".." are refused. Returns
  /// false and sets `reason` if it cannot be written whole; what was written is
  /// removed then.
  bool write(const std::string& name, const std::string& bytes,
             std::string& reason);

  /// Makes a symbolic link likewise.
  bool link(const std::string& name, const std::string& target,
            std::string& reason);

  /// Removes a file. Returns false if it cannot be removed.
  bool remove(const std::string& name);

 private:
  PrivateFolder() = default;

#ifdef _WIN32
  std::filesystem::path path_;
#else
  Descriptor descriptor_{-1};
#endif
};

}  // namespace platform
