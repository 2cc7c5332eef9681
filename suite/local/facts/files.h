#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace local {

/// How an attempt to read ended.
enum class Access {
  kRead,     ///< All of it was read.
  kMissing,  ///< There is no such file or folder.
  kDenied,   ///< It is there, but this user may not read it.
  kFailed    ///< It is there, and reading it failed otherwise.
};

/// A file's bytes, or how reading it failed.
struct Content {
  Access access = Access::kMissing;
  std::string bytes;
};

// The file systems of this process, as the system offers them. Paths are
// absolute and in UTF-8. std::filesystem takes every path apart and puts it
// together again, which costs more than reading an attribute of the kernel.

/// A path without symbolic links, "." and ".."; empty if it cannot be resolved.
std::string realPath(const std::string& path);

/// Whether there is something at a path, as far as this user can see.
bool exists(const std::string& path);

/// Reads a regular file up to `limit` bytes; a longer one, and what is no
/// regular file, is kFailed. Pipes and devices are not opened.
Content readFile(const std::string& path, std::size_t limit);

/// Names in a folder, in no order; none when it cannot be read.
std::vector<std::string> namesIn(const std::string& folder);

/// What a symbolic link points at, as it stands; empty when it is none.
std::string linkTarget(const std::string& path);

}  // namespace local
