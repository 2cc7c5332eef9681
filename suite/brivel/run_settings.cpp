#include "suite/brivel/run_settings.h"

#include "suite/platform/user_paths.h"

namespace brivel {

base::Result<connection::Settings> readRunSettings(
    const std::string& chosenFile) {
  const std::string file =
      chosenFile.empty() ? platform::settingsFile() : chosenFile;
  if (file.empty()) {
    return connection::Settings();
  }
  return connection::loadSettings(file, platform::homeDirectory());
}

}  // namespace brivel
