#pragma once

#include <optional>
#include <string>
#include <vector>

#include "suite/report/report.h"

namespace check {

/// A part of a server, as far as parts of all kinds are compared alike.
struct Part {
  std::string id;      ///< Path of its resource.
  std::string place;   ///< Slot or name; may be empty, may not be unique.
  std::string serial;  ///< May be empty.
  std::string model;   ///< Part number, else model; may be empty.
  std::optional<double> size;
  bool present = true;
};

/// The parts of one kind.
struct PartList {
  const char* kind = "";  ///< "memory module".
  const char* unit = "";  ///< Of `Part::size`: "MiB".
  report::Category category = report::Category::kSystem;
  std::optional<std::vector<Part>> parts;  ///< nullopt: not read.
};

/// All parts of a server, always with the same kinds in the same order. The
/// size of a processor is its number of cores; fans and PCI adapters have
/// none.
std::vector<PartList> partsOf(const report::ServerReport& report);

}  // namespace check
