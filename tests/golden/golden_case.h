#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace golden {

/// One run of brivel and what is expected of it. A case is a folder; each of
/// its files whose name begins with "args" is one run, and all of them expect
/// the same. docs/testing.md lists the files of a case.
struct Case {
  std::filesystem::path folder;
  std::filesystem::path arguments;  ///< The "args" file of this run.
  /// Folder below the cases' root, and what follows "args" in the file's name:
  /// "rack_server/dimm", "rack_server/dimm/in_band". Blanks and dashes are
  /// underscores, because test filters give dashes a meaning.
  std::string name;
  bool first = false;  ///< The run whose texts a refresh keeps.
};

/// All cases below a root, by name.
std::vector<Case> findCases(const std::filesystem::path& root);

/// What is the same for all cases of a test program.
struct Setting {
  std::filesystem::path program;  ///< brivel.
  std::filesystem::path root;     ///< Root of the source tree; runs start here.
  bool refresh = false;           ///< Keep what comes instead of comparing.
};

/// Runs a case in a folder of its own and compares standard output, standard
/// error, exit status and log; reports differences as test failures.
void runCase(const Case& theCase, const Setting& setting);

}  // namespace golden
