#pragma once

#include <filesystem>
#include <optional>
#include <string>

namespace support {

/// The bytes of a file; nullopt when it cannot be read whole.
std::optional<std::string> readFile(const std::filesystem::path& file);

/// The bytes of a file; empty when it cannot be read.
std::string fileText(const std::filesystem::path& file);

}  // namespace support
