#pragma once

#include <algorithm>
#include <vector>

#include "suite/base/natural_order.h"

namespace devhealth {

/// Sorts the rows of a table by their first column, as a person sorts. Rows
/// with the same text keep their order. Some services list their parts in a new
/// order at each read; two reports must differ only where the machine does.
template <typename Row, typename Text>
void sortNaturally(std::vector<Row>& rows, Text Row::*first) {
  std::stable_sort(rows.begin(), rows.end(),
                   [first](const Row& left, const Row& right) {
                     return base::naturallyBefore(left.*first, right.*first);
                   });
}

}  // namespace devhealth
