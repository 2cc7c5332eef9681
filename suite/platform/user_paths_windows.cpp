#include "suite/platform/user_paths.h"

#include <windows.h>
#include <knownfolders.h>
#include <objbase.h>
#include <shlobj.h>

#include <boost/nowide/convert.hpp>
#include <filesystem>
#include <system_error>

#include "suite/platform/environment.h"

namespace platform {
namespace {

namespace fs = std::filesystem;

// One of the user's or the machine's folders: where its variable says, as
// other programs have it, else where the system has it; empty when there is
// none.
fs::path folder(const char* variable, const KNOWNFOLDERID& known) {
  const fs::path named = fs::u8path(environmentValue(variable));
  if (named.is_absolute()) {
    return named;
  }
  PWSTR path = nullptr;
  const HRESULT found = SHGetKnownFolderPath(known, 0, nullptr, &path);
  const fs::path result = SUCCEEDED(found) ? fs::path(path) : fs::path();
  CoTaskMemFree(path);
  return result;
}

// The settings below a folder, if they are there.
std::string settingsBelow(const fs::path& base) {
  const fs::path file = base / "brivel" / "brivel.toml";
  std::error_code error;
  return !base.empty() && fs::exists(file, error) ? file.u8string() : "";
}

}  // namespace

std::string homeDirectory() {
  return folder("USERPROFILE", FOLDERID_Profile).u8string();
}

std::string settingsFile() {
  const std::string own =
      settingsBelow(folder("APPDATA", FOLDERID_RoamingAppData));
  return !own.empty()
             ? own
             : settingsBelow(folder("ProgramData", FOLDERID_ProgramData));
}

std::string logFile() {
  const fs::path base = folder("LOCALAPPDATA", FOLDERID_LocalAppData);
  return base.empty() ? "" : (base / "brivel" / "brivel.log").u8string();
}

const char* userSettingsPath() { return "%APPDATA%\\brivel\\brivel.toml"; }

}  // namespace platform
