#pragma once

#include <vector>

#include "suite/local/facts/facts.h"
#include "suite/report/report.h"

namespace devhealth {

// From what a machine says of its own parts to the report, by the same rules
// for texts, fillers, units and names as for the parts that a controller
// reports. Rows are in the natural order of their first column; no two
// processors, fans, modules or supplies have the same name.

/// Values that the system lacks are those of its main board.
report::System systemOf(const local::SystemFacts& facts,
                        const local::BoardFacts& board);

/// The family is the version's text, else the name of the family's number.
std::vector<report::Processor> processorsOf(
    const std::vector<local::ProcessorFacts>& processors);

/// The speed is the measured one; the target only where nothing is measured.
std::vector<report::Fan> fansOf(const std::vector<local::FanFacts>& fans);

/// A module is named by its locator, equal ones by their bank, too.
std::vector<report::MemoryModule> dimmsOf(
    const std::vector<local::MemoryFacts>& modules);

/// A supply is named by its name, equal ones by their location, too. An
/// unplugged supply is a warning, unless it is worse.
std::vector<report::PowerSupply> powersOf(
    const std::vector<local::SupplyFacts>& supplies);

/// An adapter is named by its slot and model, one without either by its ids.
std::vector<report::PciAdapter> pciAdaptersOf(
    const std::vector<local::PciFacts>& adapters);

}  // namespace devhealth
