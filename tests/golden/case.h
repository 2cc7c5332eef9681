#pragma once

#include <filesystem>
#include <string>
#include <utility>
#include <vector>

namespace golden {

/// One run of brivel and what is expected of it. A case is a folder; each of
/// its files whose name begins with "args" is one run, each line of its file
/// "variants" is one more of each, and all of them expect the same.
/// docs/testing.md lists the files of a case.
struct Case {
  std::filesystem::path root;       ///< The folder of all cases.
  std::filesystem::path folder;     ///< The folder of this one.
  std::filesystem::path arguments;  ///< The "args" file of this run.
  /// Folder below the cases' root, what follows "args" in the file's name, and
  /// the variant: "rack_server/dimm", "rack_server/dimm/in_band". Blanks and
  /// dashes are underscores, because test filters give dashes a meaning.
  std::string name;
  std::string variant;  ///< Empty: there are none.
  /// What stands for a mark such as "@ANSWER@" in the files of this variant.
  std::vector<std::pair<std::string, std::string>> values;
  bool first = false;  ///< The run whose texts a refresh keeps.

  /// The file of this name: the variant's own ("stdout-VARIANT"), else the
  /// folder's. It need not exist.
  std::filesystem::path file(const std::string& name) const;

  /// The same, else the file of the nearest folder above that has one.
  std::filesystem::path inherited(const std::string& name) const;

  /// A text with the variant's values in the places of their marks.
  std::string filled(std::string text) const;
};

/// All cases below a root, by name.
std::vector<Case> findCases(const std::filesystem::path& root);

}  // namespace golden
