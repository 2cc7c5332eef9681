#include "suite/platform/files/owned_file.h"

#include <utility>

namespace platform {

OwnedFile::OwnedFile(OwnedFile&& other) noexcept
    : handle_(std::exchange(other.handle_, -1)) {}

std::filesystem::path olderName(const std::filesystem::path& file,
                                unsigned int number) {
  std::filesystem::path name = file.stem();
  name += "." + std::to_string(number);
  name += file.extension();
  return file.parent_path() / name;
}

}  // namespace platform
