#include "tests/support/temp_folder.h"

#include <fstream>
#include <random>
#include <stdexcept>
#include <system_error>

namespace support {

namespace fs = std::filesystem;

TempFolder::TempFolder() {
  std::random_device random;
  do {
    path_ =
        fs::temp_directory_path() / ("brivel_test." + std::to_string(random()));
  } while (!fs::create_directory(path_));
  fs::permissions(path_, fs::perms::owner_all);
}

TempFolder::~TempFolder() {
  std::error_code ignored;  // A folder left behind harms nobody.
  fs::remove_all(path_, ignored);
}

std::string TempFolder::at(std::string_view name) const {
  return (path_ / fs::path(name).relative_path()).string();
}

std::string TempFolder::write(std::string_view name, std::string_view bytes,
                              fs::perms rights) const {
  const fs::path file = at(name);
  fs::create_directories(file.parent_path());
  std::ofstream stream(file, std::ios::binary);
  if (!(stream << bytes) || !stream.flush()) {
    throw std::runtime_error("cannot write " + file.string());
  }
  stream.close();
  fs::permissions(file, rights);
  return file.string();
}

}  // namespace support
