#pragma once

#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>

namespace platform {

/// Reads a file that decides what this process does, of at most `limit` bytes
/// (a multiple of 1 MiB).
/// Returns nullopt and sets `reason`, a clause that tells what to do, if it
/// cannot be read, is larger, or is open to be changed by others: it belongs
/// to neither this user nor root (on Windows: the administrators or the
/// system), or others may write to it. A pipe is read to its end; that ends
/// with an interruption.
std::optional<std::string> readTrustedFile(const std::filesystem::path& file,
                                           std::size_t limit,
                                           std::string& reason);

/// Why code should not be loaded from a file, because others could have put
/// it there: they may write to the file or to its folder, or one of both
/// belongs to neither this user nor root nor the owner of `own`, which is a
/// file of the running program. A clause that tells what to do; empty if
/// nothing is wrong. Always empty on Windows, and for what does not exist.
std::string problemWithCode(const std::filesystem::path& file,
                            const std::filesystem::path& own);

}  // namespace platform
