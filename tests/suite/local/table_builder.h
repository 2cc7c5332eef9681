#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "suite/local/smbios/smbios.h"

namespace local {

/// One structure of a table, made field by field.
class Structure {
 public:
  /// `length`: of the formatted part, header included; all zeros at first.
  Structure(std::uint8_t type, std::size_t length);

  Structure& byte(std::size_t offset, unsigned value);
  Structure& word(std::size_t offset, unsigned value);
  Structure& dword(std::size_t offset, std::uint32_t value);
  Structure& bytes(std::size_t offset, const std::string& value);

  /// Adds a text to the set and its number at the offset.
  Structure& text(std::size_t offset, const std::string& value);

  /// The structure as it stands in a table, terminators included.
  std::string build(std::uint16_t handle) const;

 private:
  std::string formatted_;
  std::vector<std::string> texts_;
};

/// A table of structures with handles 0, 1, ... and the structure that ends
/// it.
std::string tableOf(const std::vector<Structure>& structures);

/// Entry points with right checksums.
std::string entryPoint32(unsigned major, unsigned minor, std::size_t length,
                         std::size_t count);
std::string entryPoint64(unsigned major, unsigned minor, std::size_t length);

/// A table that lives as long as what was parsed from it.
struct ParsedTable {
  ParsedTable(const std::vector<Structure>& structures, unsigned major,
              unsigned minor);
  ParsedTable(const ParsedTable&) = delete;
  ParsedTable& operator=(const ParsedTable&) = delete;

  std::string bytes;
  SmbiosTables tables;
};

}  // namespace local
