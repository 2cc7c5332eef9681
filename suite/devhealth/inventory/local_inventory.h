#pragma once

#include <vector>

#include "suite/local/facts/facts.h"
#include "syshealth/inventory/components.h"

namespace devhealth {

// From what a machine says of its own parts to the records: the same rules
// for texts, placeholders and units as for the parts that a controller
// reports. Row order is that of the facts.

/// What the system does not say is taken from its main board.
Tarvex::DeviceHealth::SystemBoard systemBoardOf(
    const local::SystemFacts& system, const local::BoardFacts& board);

std::vector<Tarvex::DeviceHealth::Processor> processorsOf(
    const std::vector<local::ProcessorFacts>& processors);

std::vector<Tarvex::DeviceHealth::Fan> fansOf(
    const std::vector<local::FanFacts>& fans);

/// A module is called after its place; the bank is added to places that
/// repeat.
std::vector<Tarvex::DeviceHealth::DIMM> dimmsOf(
    const std::vector<local::MemoryFacts>& modules);

std::vector<Tarvex::DeviceHealth::Power> powersOf(
    const std::vector<local::SupplyFacts>& supplies);

/// An adapter is called after its slot and model; one without either after
/// its ids.
std::vector<Tarvex::DeviceHealth::PCIAdapter> pciAdaptersOf(
    const std::vector<local::PciFacts>& adapters);

}  // namespace devhealth
