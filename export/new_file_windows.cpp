#include "export/new_file.h"

#include <windows.h>

namespace exporting {
namespace {

std::error_code lastError() {
  return {static_cast<int>(GetLastError()), std::system_category()};
}

}  // namespace

std::string uniqueSuffix(int number) {
  return std::to_string(GetCurrentProcessId()) + "-" + std::to_string(number);
}

std::error_code makeNewFile(const std::filesystem::path& path) {
  const HANDLE file = CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr,
                                  CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr);
  if (file == INVALID_HANDLE_VALUE) {
    return GetLastError() == ERROR_FILE_EXISTS
               ? std::make_error_code(std::errc::file_exists)
               : lastError();
  }
  CloseHandle(file);
  return {};
}

std::error_code bringToDisk(const std::filesystem::path& path) {
  const HANDLE file =
      CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, OPEN_EXISTING,
                  FILE_ATTRIBUTE_NORMAL, nullptr);
  if (file == INVALID_HANDLE_VALUE) {
    return lastError();
  }
  std::error_code failed;
  if (FlushFileBuffers(file) == 0) {
    failed = lastError();
  }
  CloseHandle(file);
  return failed;
}

}  // namespace exporting
