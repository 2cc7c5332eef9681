#include "suite/platform/files/owned_file.h"

#include <windows.h>

#include <system_error>

// A file takes its rights from its folder, and the user's own folders are
// closed to other users.

namespace platform {
namespace {

namespace fs = std::filesystem;

HANDLE toHandle(std::intptr_t handle) {
  return reinterpret_cast<HANDLE>(handle);  // NOLINT(performance-no-int-to-ptr)
}

HANDLE openToAppend(const fs::path& file) {
  return CreateFileW(file.c_str(),
                     FILE_APPEND_DATA | FILE_READ_ATTRIBUTES | SYNCHRONIZE,
                     FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                     nullptr, OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
}

std::string lastReason() {
  return std::system_category().message(static_cast<int>(GetLastError()));
}

// One process at a time sets files aside; who comes meanwhile leaves it.
class RotationLock {
 public:
  explicit RotationLock(const fs::path& file)
      : handle_(CreateFileW((file.native() + L".lock").c_str(), DELETE, 0,
                            nullptr, CREATE_ALWAYS, FILE_FLAG_DELETE_ON_CLOSE,
                            nullptr)) {}
  ~RotationLock() {
    if (taken()) {
      CloseHandle(handle_);
    }
  }
  RotationLock(const RotationLock&) = delete;
  RotationLock& operator=(const RotationLock&) = delete;

  bool taken() const { return handle_ != INVALID_HANDLE_VALUE; }

 private:
  HANDLE handle_;
};

bool isFull(HANDLE handle, std::uint64_t atBytes) {
  LARGE_INTEGER size = {};
  return GetFileType(handle) == FILE_TYPE_DISK &&
         GetFileSizeEx(handle, &size) != 0 &&
         static_cast<std::uint64_t>(size.QuadPart) >= atBytes;
}

// Renames the file and the older ones, the oldest first, if the file still is
// full: else another process has just done so.
void setAside(const fs::path& file, const Rotation& rotation) {
  const RotationLock lock(file);
  std::error_code failure;
  if (!lock.taken() || fs::file_size(file, failure) < rotation.atBytes ||
      failure) {
    return;
  }
  for (unsigned int number = rotation.olderFiles; number > 0; --number) {
    const fs::path from = number == 1 ? file : olderName(file, number - 1);
    MoveFileExW(from.c_str(), olderName(file, number).c_str(),
                MOVEFILE_REPLACE_EXISTING);
  }
}

}  // namespace

std::optional<OwnedFile> OwnedFile::open(const fs::path& file,
                                         const Rotation& rotation,
                                         std::string& reason) {
  HANDLE handle = openToAppend(file);
  if (handle == INVALID_HANDLE_VALUE &&
      GetLastError() == ERROR_PATH_NOT_FOUND) {
    // What cannot be made shows when the file is opened.
    std::error_code ignored;
    fs::create_directories(file.parent_path(), ignored);
    handle = openToAppend(file);
  }
  if (handle != INVALID_HANDLE_VALUE && isFull(handle, rotation.atBytes)) {
    CloseHandle(handle);
    setAside(file, rotation);
    handle = openToAppend(file);
  }
  if (handle == INVALID_HANDLE_VALUE) {
    reason = lastReason();
    return std::nullopt;
  }
  return OwnedFile(reinterpret_cast<std::intptr_t>(handle));
}

OwnedFile::~OwnedFile() {
  if (handle_ != -1) {
    CloseHandle(toHandle(handle_));
  }
}

bool OwnedFile::append(std::string_view bytes, std::string& reason) const {
  while (!bytes.empty()) {
    DWORD count = 0;
    if (WriteFile(toHandle(handle_), bytes.data(),
                  static_cast<DWORD>(bytes.size()), &count, nullptr) == 0) {
      reason = lastReason();
      return false;
    }
    bytes.remove_prefix(count);
  }
  return true;
}

}  // namespace platform
