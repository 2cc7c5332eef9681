#include "suite/brivel/modules/module_search.h"

#include <algorithm>
#include <boost/dll/runtime_symbol_info.hpp>
#include <boost/dll/shared_library.hpp>
#include <system_error>

#include "suite/base/suggestion.h"
#include "suite/base/text.h"
#include "suite/brivel/options/options.h"
#include "suite/platform/environment.h"

namespace brivel {
namespace {

namespace fs = std::filesystem;

constexpr const char* kVariable = "BRIVEL_MODULES";

std::string suffix() { return boost::dll::shared_library::suffix().string(); }

// Whether a text can be the name of an application. Such a name cannot lead
// out of the directory of the applications.
bool isName(const std::string& text) {
  return !text.empty() && std::all_of(text.begin(), text.end(), [](char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') ||
           (c >= '0' && c <= '9') || c == '-' || c == '_';
  });
}

}  // namespace

fs::path moduleDirectory() {
  const std::string chosen = platform::environmentValue(kVariable);
  if (!chosen.empty()) {
    return fs::absolute(fs::u8path(chosen));
  }
  const fs::path library = fs::canonical(boost::dll::this_line_location());
  const fs::path folder = library.parent_path();
  const fs::path built =
      (folder / BRIVEL_MODULES_FROM_LIBRARY).lexically_normal();
  std::error_code failure;
  return fs::is_directory(built, failure) ? built
                                          : folder / BRIVEL_INSTALLED_MODULES;
}

std::vector<fs::path> moduleFiles(const fs::path& directory) {
  std::vector<fs::path> files;
  std::error_code failure;
  fs::directory_iterator entry(directory, failure);
  while (!failure && entry != fs::directory_iterator()) {
    if (entry->path().extension() == suffix()) {
      files.push_back(entry->path());
    }
    entry.increment(failure);
  }
  std::sort(files.begin(), files.end());
  return files;
}

std::vector<std::string> applicationNames() {
  std::vector<std::string> names;
  for (const fs::path& file : moduleFiles(moduleDirectory())) {
    names.push_back(file.stem().string());
  }
  return names;
}

base::Result<fs::path> findModule(const fs::path& directory,
                                  const std::string& application) {
  if (!isName(application)) {
    return base::makeFailure(
        base::FailureKind::kUsage,
        "the name of an application holds letters, digits, '-' and '_' alone");
  }
  const fs::path file = directory / (application + suffix());
  std::error_code failure;
  if (fs::exists(file, failure)) {
    return file;
  }
  std::string known;
  std::vector<std::string> names;
  for (const fs::path& other : moduleFiles(directory)) {
    names.push_back(other.stem().string());
    known += (known.empty() ? "" : ", ") + names.back();
  }
  for (const HostCommand& command : kHostCommands) {
    names.emplace_back(command.name);
  }
  return base::makeFailure(
      base::FailureKind::kUsage,
      "no application '" + application + "' in " + directory.string() +
          (known.empty() ? "; there are none"
                         : "; there are: " + base::escapeControls(known)) +
          base::escapeControls(base::suggestionFor(application, names)));
}

}  // namespace brivel
