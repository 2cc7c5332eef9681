#include "suite/platform/files/private_folder.h"

#include <windows.h>

#include <system_error>

namespace platform {
namespace {

namespace fs = std::filesystem;

// The path of a name in a folder; empty if the name is none.
fs::path placeIn(const fs::path& folder, const std::string& name) {
  for (const fs::path& part : fs::u8path(name)) {
    if (part.empty() || part == "." || part == ".." || part.has_root_path()) {
      return {};
    }
  }
  return name.find_first_of("\\:") == std::string::npos
             ? folder / fs::u8path(name)
             : fs::path();
}

}  // namespace

std::optional<PrivateFolder> PrivateFolder::make(const fs::path& path,
                                                 Refusal& refusal,
                                                 std::string& reason) {
  refusal = Refusal::kNone;
  std::error_code error;
  if (!fs::create_directories(path, error) && error) {
    refusal = Refusal::kUnwritable;
    reason = error.message();
    return std::nullopt;
  }
  if (!fs::is_directory(fs::symlink_status(path, error)) ||
      !fs::is_empty(path, error) || error) {
    refusal = Refusal::kInUse;
    reason = "it is no empty folder";
    return std::nullopt;
  }
  PrivateFolder folder;
  folder.path_ = fs::absolute(path, error);
  return folder;
}

bool PrivateFolder::write(const std::string& name, const std::string& bytes,
                          std::string& reason) {
  const fs::path file = placeIn(path_, name);
  if (file.empty()) {
    reason = "no file can have this name";
    return false;
  }
  std::error_code error;
  fs::create_directories(file.parent_path(), error);
  const HANDLE handle =
      error ? INVALID_HANDLE_VALUE
            : CreateFileW(file.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW,
                          FILE_ATTRIBUTE_NORMAL, nullptr);
  if (handle == INVALID_HANDLE_VALUE) {
    reason =
        error
            ? error.message()
            : std::system_category().message(static_cast<int>(GetLastError()));
    return false;
  }
  DWORD written = 0;
  const bool whole =
      WriteFile(handle, bytes.data(), static_cast<DWORD>(bytes.size()),
                &written, nullptr) != 0 &&
      written == bytes.size();
  if (!whole) {
    reason = std::system_category().message(static_cast<int>(GetLastError()));
  }
  CloseHandle(handle);
  if (!whole) {
    fs::remove(file, error);
  }
  return whole;
}

bool PrivateFolder::link(const std::string& name, const std::string& target,
                         std::string& reason) {
  const fs::path file = placeIn(path_, name);
  std::error_code error;
  if (!file.empty()) {
    fs::create_directories(file.parent_path(), error);
    fs::create_symlink(fs::u8path(target), file, error);
  }
  reason = file.empty() ? "no file can have this name" : error.message();
  return !file.empty() && !error;
}

bool PrivateFolder::remove(const std::string& name) {
  const fs::path file = placeIn(path_, name);
  std::error_code error;
  return !file.empty() && fs::remove(file, error);
}

}  // namespace platform
