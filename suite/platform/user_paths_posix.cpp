#include "suite/platform/user_paths.h"

#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>

#include "suite/platform/environment.h"

namespace platform {
namespace {

constexpr const char* kSystemSettings = "/etc/brivel/brivel.toml";

// Whether root may be led to a folder: the folder, or the nearest one above
// that is there, is root's own.
bool isRoots(const std::string& folder) {
  struct stat status = {};
  for (std::filesystem::path path = folder;; path = path.parent_path()) {
    if (stat(path.c_str(), &status) == 0) {
      return status.st_uid == 0;
    }
    if (path == path.parent_path()) {
      return false;
    }
  }
}

std::string absoluteFrom(const char* variable) {
  const std::string value = environmentValue(variable);
  const bool usable = !value.empty() && value.front() == '/' &&
                      (geteuid() != 0 || isRoots(value));
  return usable ? value : "";
}

// A base directory of the user's, by its variable or below the home; empty
// when there is neither.
std::string baseDirectory(const char* variable, const char* belowHome) {
  std::string base = absoluteFrom(variable);
  if (!base.empty()) {
    return base;
  }
  const std::string home = homeDirectory();
  return home.empty() ? "" : home + belowHome;
}

bool exists(const std::string& file) { return access(file.c_str(), F_OK) == 0; }

}  // namespace

std::string homeDirectory() {
  std::string home = absoluteFrom("HOME");
  if (!home.empty()) {
    return home;
  }
  const passwd* const entry = getpwuid(getuid());
  return entry == nullptr || entry->pw_dir == nullptr ? "" : entry->pw_dir;
}

std::string settingsFile() {
  const std::string base = baseDirectory("XDG_CONFIG_HOME", "/.config");
  std::string own = base + "/brivel/brivel.toml";
  if (!base.empty() && exists(own)) {
    return own;
  }
  return exists(kSystemSettings) ? kSystemSettings : "";
}

std::string logFile() {
  const std::string base = baseDirectory("XDG_STATE_HOME", "/.local/state");
  return base.empty() ? "" : base + "/brivel/brivel.log";
}

const char* userSettingsPath() { return "~/.config/brivel/brivel.toml"; }

}  // namespace platform
