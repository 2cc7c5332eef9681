#pragma once

#include <filesystem>
#include <set>
#include <string>

namespace recording {

/// What identifies the server of a recorded tree, in small letters: the texts
/// of its serial numbers, tags, UUIDs, addresses and names, found without any
/// of the program's code.
std::set<std::string> identifyingValues(const std::filesystem::path& tree);

/// Those of the values that are told from ordinary words wherever they stand.
std::set<std::string> distinctValues(const std::set<std::string>& values);

/// The values that stand somewhere below a folder, in the names of files or in
/// their texts, each with the file.
std::set<std::string> foundBelow(const std::filesystem::path& folder,
                                 const std::set<std::string>& values);

/// A report in small letters with stars in the places of the values that stand
/// in `original`. Two reports that differ in such values alone look alike.
std::string withoutValues(const std::string& report,
                          const std::string& original,
                          const std::set<std::string>& values);

}  // namespace recording
