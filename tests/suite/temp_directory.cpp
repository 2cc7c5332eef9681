#include "tests/suite/temp_directory.h"

#include <fstream>
#include <random>
#include <stdexcept>
#include <string>

namespace fs = std::filesystem;

TempDirectory::TempDirectory() {
  std::random_device random;
  path_ =
      fs::temp_directory_path() /
      ("redfish_test." + std::to_string(random()) + std::to_string(random()));
  if (!fs::create_directory(path_)) {
    throw std::runtime_error("the directory exists: " + path_.string());
  }
}

TempDirectory::~TempDirectory() {
  std::error_code ignored;
  fs::remove_all(path_, ignored);
}

void TempDirectory::write(const fs::path& file, std::string_view text) const {
  fs::create_directories((path_ / file).parent_path());
  std::ofstream stream(path_ / file, std::ios::binary);
  stream << text;
  if (!stream.flush()) {
    throw std::runtime_error("cannot write " + file.string());
  }
}
