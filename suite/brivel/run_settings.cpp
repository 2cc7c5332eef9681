#include "suite/brivel/run_settings.h"

#include "suite/platform/user_paths.h"

namespace brivel {

std::optional<connection::Settings> readRunSettings(
    const std::string& chosenFile, std::string& error) {
  const std::string file =
      chosenFile.empty() ? platform::settingsFile() : chosenFile;
  if (file.empty()) {
    return connection::Settings();
  }
  return connection::loadSettings(file, platform::homeDirectory(), error);
}

}  // namespace brivel
