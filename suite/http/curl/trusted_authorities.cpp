#include "suite/http/curl/trusted_authorities.h"

#include <algorithm>
#include <filesystem>

namespace http {
namespace {

namespace fs = std::filesystem;

bool isHashedName(const std::string& name) {
  constexpr std::size_t kHashDigits = 8;
  return name.size() == kHashDigits + 2 &&
         name.compare(kHashDigits, 2, ".0") == 0 &&
         std::all_of(name.begin(), name.begin() + kHashDigits, [](char c) {
           return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'f');
         });
}

}  // namespace

bool isHashedDirectory(const std::string& directory) {
  std::error_code error;
  for (fs::directory_iterator entry(directory, error), end;
       !error && entry != end; entry.increment(error)) {
    if (isHashedName(entry->path().filename().string())) {
      return true;
    }
  }
  return false;
}

}  // namespace http
