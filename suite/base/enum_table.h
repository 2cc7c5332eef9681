#pragma once

#include <cstddef>

namespace base {

/// Whether a table has one row for each enumerator from 0 to `last`, in their
/// order, so that enumerators are its indices. `key` is the member of a row
/// that holds its enumerator. To be asserted beside the table.
template <typename Row, std::size_t Rows, typename Enum>
constexpr bool hasRowForEach(const Row (&table)[Rows], Enum Row::*key,
                             Enum last) {
  for (std::size_t index = 0; index < Rows; ++index) {
    if (static_cast<std::size_t>(table[index].*key) != index) {
      return false;
    }
  }
  return Rows == static_cast<std::size_t>(last) + 1;
}

}  // namespace base
