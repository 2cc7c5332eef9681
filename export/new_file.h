#pragma once

#include <filesystem>
#include <string>
#include <system_error>

namespace exporting {

/// A text for the name of a new file, another one for each process and number.
std::string uniqueSuffix(int number);

/// Makes an empty file where there is none, also no symbolic link.
std::error_code makeNewFile(const std::filesystem::path& path);

/// Waits until a file's contents are on the disk.
std::error_code bringToDisk(const std::filesystem::path& path);

}  // namespace exporting
