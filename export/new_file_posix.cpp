#include "export/new_file.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>

namespace exporting {
namespace {

std::error_code lastError() { return {errno, std::generic_category()}; }

}  // namespace

std::string uniqueSuffix(int number) {
  return std::to_string(getpid()) + "-" + std::to_string(number);
}

std::error_code makeNewFile(const std::filesystem::path& path) {
  // As wide as the user's mask lets it be: others read what is written.
  constexpr mode_t kMode = 0666;
  const int file =
      open(path.c_str(), O_CREAT | O_EXCL | O_WRONLY | O_CLOEXEC, kMode);
  if (file < 0) {
    return lastError();
  }
  close(file);
  return {};
}

std::error_code bringToDisk(const std::filesystem::path& path) {
  const int file = open(path.c_str(), O_WRONLY | O_NOFOLLOW | O_CLOEXEC);
  if (file < 0) {
    return lastError();
  }
  std::error_code failed;
  if (fsync(file) != 0) {
    failed = lastError();
  }
  close(file);
  return failed;
}

}  // namespace exporting
