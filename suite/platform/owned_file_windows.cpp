#include "suite/platform/owned_file.h"

#include <windows.h>

#include <system_error>

namespace platform {
namespace {

HANDLE openToAppend(const std::filesystem::path& file) {
  return CreateFileW(file.c_str(), FILE_APPEND_DATA,
                     FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                     nullptr, OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
}

}  // namespace

bool prepareOwnedFile(const std::filesystem::path& file, bool& regular,
                      std::string& reason) {
  HANDLE handle = openToAppend(file);
  if (handle == INVALID_HANDLE_VALUE &&
      GetLastError() == ERROR_PATH_NOT_FOUND) {
    // What cannot be made shows when the file is opened.
    std::error_code ignored;
    std::filesystem::create_directories(file.parent_path(), ignored);
    handle = openToAppend(file);
  }
  if (handle == INVALID_HANDLE_VALUE) {
    reason = std::system_category().message(static_cast<int>(GetLastError()));
    return false;
  }
  regular = GetFileType(handle) == FILE_TYPE_DISK;
  CloseHandle(handle);
  return true;
}

void restrictToOwner(const std::filesystem::path& /*file*/) {
  // A file takes its rights from its folder, and the user's own folders are
  // closed to other users.
}

}  // namespace platform
