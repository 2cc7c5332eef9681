#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace devhealth {

/// What a row of a table can be called.
struct RowName {
  std::string name;
  std::string place;  ///< Where the part sits, if that is more than the name.
};

/// One name for each row, in the same order and none of them twice: the name,
/// else the place, else `classWord` ("DIMM"). Equal names are followed by the
/// place, and by a number where they are still equal.
std::vector<std::string> distinctNames(const std::vector<RowName>& rows,
                                       std::string_view classWord);

}  // namespace devhealth
