#pragma once

#include <vector>

#include "suite/local/facts/facts.h"
#include "suite/report/report.h"

namespace devhealth {

// From what a machine says of its own parts to the report: the same rules
// for texts, fillers, units and names as for the parts that a controller
// reports. Rows are in the natural order of their first column; no two rows
// of processors, fans, modules and supplies have one name.

/// What the system does not say is taken from its main board.
report::System systemOf(const local::SystemFacts& facts,
                        const local::BoardFacts& board);

/// The version names the family, else the number of the family does.
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
