#pragma once

#include <string>
#include <vector>

/// What the dynamic linker sees of one shared library, read from the file.
struct ElfFile {
  std::vector<std::string> exports;  ///< Names that it defines.
  std::vector<std::string> imports;  ///< Names that it needs and that have no
                                     ///< version, as those of the C and C++
                                     ///< runtime have; weak ones left out.
  std::string runPath;               ///< Where it looks for other libraries.
  bool symbolic = false;             ///< Bound to its own definitions first.
};

/// Reads a library of this machine's kind. Throws `std::runtime_error` where
/// the file is none.
ElfFile readElfFile(const std::string& path);
