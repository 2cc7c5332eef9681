#pragma once

#include <map>
#include <set>
#include <string>

/// What the loader of Windows sees of one library, read from the file.
struct PeFile {
  std::set<std::string> exports;  ///< Names that it defines.
  /// Names that it needs, by the library that is to define them.
  std::map<std::string, std::set<std::string>> imports;
};

/// Reads a 64-bit library. Throws `std::runtime_error` where the file is none.
PeFile readPeFile(const std::string& path);
