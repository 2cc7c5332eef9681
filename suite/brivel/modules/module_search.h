#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "suite/base/result.h"

namespace brivel {

/// The folder of the applications, as an absolute path: BRIVEL_MODULES of the
/// environment; else a folder beside the library that this code is in, which
/// is "brivel" in a build tree and "applications-" with the number of the ABI
/// in an installed one.
std::filesystem::path moduleDirectory();

/// The libraries in a directory, sorted by name; empty if the directory does
/// not exist.
std::vector<std::filesystem::path> moduleFiles(
    const std::filesystem::path& directory);

/// The names of the applications that `moduleDirectory()` holds, sorted.
std::vector<std::string> applicationNames();

/// Finds the library of an application by its file name; it is not loaded.
/// If there is none, the cause of the failure lists the names that exist.
base::Result<std::filesystem::path> findModule(
    const std::filesystem::path& directory, const std::string& application);

}  // namespace brivel
