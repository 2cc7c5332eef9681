#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace brivel {

/// Where the applications are: the environment's BRIVEL_MODULES, else the
/// folder "brivel" beside the library that this code is in. Absolute.
std::filesystem::path moduleDirectory();

/// The libraries in a directory, by name; empty when there is no such
/// directory.
std::vector<std::filesystem::path> moduleFiles(
    const std::filesystem::path& directory);

/// The library of an application, which need not be sound. Nothing when there
/// is none, and the reason in `error`, with the names that there are.
std::optional<std::filesystem::path> findModule(
    const std::filesystem::path& directory, const std::string& application,
    std::string& error);

}  // namespace brivel
