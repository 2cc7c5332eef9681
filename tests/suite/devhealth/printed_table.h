#pragma once

#include "suite/devhealth/inventory/printed_records.h"
#include "suite/devhealth/parts/mapped.h"

namespace devhealth {

/// A mapped table as it is printed.
template <typename Part>
auto printed(const Mapped<Part>& table) {
  return Mapped<decltype(printed(table.records.front()))>{
      printed(table.records), table.failure, table.gap};
}

}  // namespace devhealth
