#include "suite/platform/files/trust.h"

#include <windows.h>

#include <cstdint>
#include <fstream>
#include <ios>
#include <system_error>

#include "suite/platform/files/access_windows.h"

namespace platform {
namespace {

namespace fs = std::filesystem;

// Why a file should not be obeyed; empty if it may be. Every user may make
// folders in %ProgramData%, and settings in them.
std::string problemWith(const fs::path& file) {
  HANDLE handle =
      CreateFileW(file.c_str(), READ_CONTROL,
                  FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                  nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
  if (handle == INVALID_HANDLE_VALUE) {
    return std::system_category().message(static_cast<int>(GetLastError()));
  }
  const bool foreign = belongsToOthers(handle);
  CloseHandle(handle);
  return foreign ? "belongs to another user, who could change it; take it over "
                   "(takeown), or use a copy"
                 : "";
}

}  // namespace

std::optional<std::string> readTrustedFile(const fs::path& file,
                                           std::size_t limit,
                                           std::string& reason) {
  std::error_code failure;
  if (fs::is_directory(file, failure)) {
    reason = "is a directory";
    return std::nullopt;
  }
  reason = problemWith(file);
  if (!reason.empty()) {
    return std::nullopt;
  }
  std::ifstream stream(file, std::ios::binary);
  std::string text(limit + 1, '\0');
  stream.read(text.data(), static_cast<std::streamsize>(text.size()));
  text.resize(static_cast<std::size_t>(stream.gcount()));
  if (stream.bad() || text.size() > limit) {
    reason = stream.bad()
                 ? "cannot be read"
                 : "is larger than " + std::to_string(limit >> 20U) + " MiB";
    return std::nullopt;
  }
  return text;
}

std::string problemWithCode(const fs::path& /*file*/, const fs::path& /*own*/) {
  return "";
}

}  // namespace platform
