#include "tests/suite/report/sample_report.h"

namespace report {

ServerReport fullReport() {
  ServerReport full;
  full.target = {"rack1-n3", "10.0.0.5:443", Source::kRedfish, 1, 2};
  full.read.time = "2026-11-21T22:57:03Z";
  full.read.seconds = 0.219;
  full.read.status = ReadStatus::kPartial;
  full.read.failures = {{"dimm", "/redfish/v1/Systems/1/Memory", 13, "gone"}};
  full.system = {"Maker 100",     "8Z50", "SN1", "0000-1",
                 PowerState::kOn, "2.10", "4.20"};
  full.health.status = Health::kWarning;
  full.health.categories.fill(Health::kNormal);
  full.health.categories[3] = Health::kWarning;
  full.health.events = {{Category::kMemory, Health::kWarning, "M.1.0.Hot",
                         "It is hot.", "/redfish/v1/Systems/1/Memory/1",
                         "2026-11-21T20:00:00Z"}};
  full.processors = {{"/p/1", "CPU 1", "Model 9", 8, 16, 2400.5, 3500,
                      Health::kNormal, State::kEnabled}};
  full.memory = {{"/m/1", "DIMM 1", 16384, "DDR5", 4800, 5600, "Maker", "PN1",
                  "SN2", Health::kError, State::kDegraded}};
  full.memorySlots = {24, 1};
  full.fans = {{"/f/1", "Fan 1", 6480, 45, Health::kNormal, State::kEnabled}};
  full.powerSupplies = {{"/s/1", "PSU 1", 1600, "Maker", "P1600", "PN2", "SN3",
                         Health::kNormal, State::kStandbySpare}};
  PciAdapter card;
  card.id = "/c/1";
  card.name = "Card 1";
  card.tag = "c1";
  card.slot = "Slot 1";
  card.manufacturer = "Maker";
  card.model = "C-9";
  card.serialNumber = "SN4";
  card.partNumber = "PN3";
  card.sku = "SKU1";
  card.health = Health::kNormal;
  card.state = State::kEnabled;
  full.pciAdapters = {card};
  return full;
}

}  // namespace report
