#include "tests/check/sample.h"

#include <algorithm>

namespace check {

using report::Health;
using report::State;

report::ServerReport goodReport(const std::string& name) {
  report::ServerReport good;
  good.target.name = name;
  good.target.address = name + ":443";
  good.read.time = "2026-11-21T22:57:03Z";
  good.read.seconds = 0.219;
  good.read.status = report::ReadStatus::kComplete;
  good.system.serialNumber = "SERVER1";
  good.health.status = Health::kNormal;
  good.health.categories.fill(Health::kNormal);
  good.health.events.emplace();
  const auto number = [](int i) { return std::to_string(i); };
  good.processors.emplace();
  good.memory.emplace();
  good.fans.emplace();
  good.powerSupplies.emplace();
  good.pciAdapters.emplace();
  for (int i = 1; i <= 2; ++i) {
    good.processors->push_back({"/cpu/" + number(i),
                                "CPU " + number(i),
                                "Model 9",
                                8,
                                16,
                                {},
                                {},
                                Health::kNormal,
                                State::kEnabled});
    good.memory->push_back({"/dimm/" + number(i),
                            "DIMM " + number(i),
                            16384,
                            "DDR5",
                            {},
                            {},
                            "Maker",
                            "PART",
                            "D" + number(i),
                            Health::kNormal,
                            State::kEnabled});
    good.fans->push_back({"/fan/" + number(i),
                          "Fan " + number(i),
                          6000.0 + i,
                          {},
                          Health::kNormal,
                          State::kEnabled});
    good.powerSupplies->push_back({"/psu/" + number(i), "PSU " + number(i),
                                   1600, "Maker", "P1600", "", "P" + number(i),
                                   Health::kNormal, State::kEnabled});
    report::PciAdapter card;
    card.id = "/card/" + number(i);
    card.name = "Card " + number(i);
    card.slot = "Slot " + number(i);
    card.model = "C9";
    card.health = Health::kNormal;
    card.state = State::kEnabled;
    good.pciAdapters->push_back(card);
  }
  return good;
}

report::Event event(report::Category category, Health severity,
                    const std::string& message) {
  report::Event event;
  event.category = category;
  event.severity = severity;
  event.messageId = "PowerAlerts.1.0.InputLost";
  event.message = message;
  event.origin = "/redfish/v1/Chassis/1/PowerSubsystem/2";
  return event;
}

void addEvent(const report::Event& event, report::ServerReport& report) {
  report.health.events->push_back(event);
  Health& category =
      report.health.categories[static_cast<std::size_t>(event.category)];
  category = std::max(category, event.severity);
  report.health.status = std::max(report.health.status, event.severity);
}

}  // namespace check
