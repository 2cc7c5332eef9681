#include "suite/report/reader/node_report.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <ctime>
#include <string_view>
#include <utility>

#include "suite/connection/failure_result.h"
#include "suite/redfish/crawl/selection.h"
#include "syshealth/result/health_status.h"
#include "syshealth/result/result_codes.h"

namespace report {
namespace {

using devhealth::Inventory;
using devhealth::Unread;

// The services of a run are told in advance what will be read of them.
constexpr bool areSame(Want own, redfish::Want other) {
  return static_cast<std::uint32_t>(own) == static_cast<std::uint32_t>(other);
}
static_assert(areSame(kWantSystem, redfish::kWantSystem));
static_assert(areSame(kWantProcessors, redfish::kWantProcessors));
static_assert(areSame(kWantFans, redfish::kWantFans));
static_assert(areSame(kWantMemory, redfish::kWantDimms));
static_assert(areSame(kWantPowerSupplies, redfish::kWantPowers));
static_assert(areSame(kWantPciAdapters, redfish::kWantPciAdapters));
static_assert(areSame(kWantHealth, redfish::kWantHealth));

// States when a reading ended that has begun at some time, and how long it
// took, without digits that mean nothing.
void noteTime(base::Clock::time_point begun, Read& read) {
  constexpr double kMilliseconds = 1000;
  const std::chrono::duration<double> passed = base::Clock::now() - begun;
  read.seconds = std::round(passed.count() * kMilliseconds) / kMilliseconds;
  read.time = utcTime();
}

ReadFailure failureOf(std::string_view what, const base::Failure& failure,
                      bool supported) {
  ReadFailure told;
  told.what = what;
  told.resource = failure.uri;
  told.code = supported ? connection::resultOf(failure.kind) : 0;
  if (told.code == kResultSuccess) {
    told.code = kResultNotSupported;
  }
  told.cause = failure.cause;
  if (!failure.remedy.empty()) {
    told.cause += "; " + failure.remedy;
  }
  return told;
}

// Reads the wanted parts of one target one after another.
class Reading {
 public:
  Reading(Inventory& inventory, std::uint32_t wants)
      : inventory_(inventory), wants_(wants) {}

  ServerReport take(base::Clock::time_point begun) {
    readParts();
    noteTime(begun, report_.read);
    report_.read.status = report_.read.failures.empty() ? ReadStatus::kComplete
                          : succeeded_                  ? ReadStatus::kPartial
                                                        : ReadStatus::kFailed;
    return std::move(report_);
  }

 private:
  void readParts() {
    if (wants(kWantSystem)) {
      note("system", inventory_.system(report_.system));
    }
    if (wants(kWantHealth)) {
      readHealth();
    }
    readList(kWantProcessors, "processor", &Inventory::processors,
             report_.processors);
    readList(kWantMemory, "dimm", &Inventory::memory, report_.memory);
    if (report_.memory) {
      report_.memorySlots.populated =
          static_cast<std::int64_t>(report_.memory->size());
      if (const auto places = inventory_.memoryPlaces()) {
        report_.memorySlots.total = static_cast<std::int64_t>(*places);
      }
    }
    readList(kWantFans, "fan", &Inventory::fans, report_.fans);
    readList(kWantPowerSupplies, "power", &Inventory::powerSupplies,
             report_.powerSupplies);
    readList(kWantPciAdapters, "pci_adapter", &Inventory::pciAdapters,
             report_.pciAdapters);
  }

  bool wants(Want want) const { return !unreachable_ && (wants_ & want) != 0; }

  // Returns whether there is data.
  bool note(std::string_view what, const std::optional<Unread>& unread) {
    const bool isThere = !unread || unread->extent == devhealth::Extent::kParts;
    succeeded_ = succeeded_ || isThere;
    if (!unread) {
      return true;
    }
    unreachable_ = unread->extent == devhealth::Extent::kTarget && !succeeded_;
    report_.read.failures.push_back(
        failureOf(unreachable_ ? "" : what, unread->failure,
                  unread->status != kHealthNotSupported));
    return isThere;
  }

  template <typename Part>
  void readList(Want want, std::string_view what,
                std::optional<Unread> (Inventory::*read)(std::vector<Part>&),
                std::optional<std::vector<Part>>& list) {
    std::vector<Part> parts;
    if (wants(want) && note(what, (inventory_.*read)(parts))) {
      list = std::move(parts);
    }
  }

  void readHealth() {
    std::vector<Event> events;
    if (!note("health", inventory_.events(events))) {
      return;
    }
    HealthSummary& health = report_.health;
    health.categories.fill(Health::kNormal);
    for (const Event& event : events) {
      Health& category =
          health.categories[static_cast<std::size_t>(event.category)];
      category = std::max(category, event.severity);
    }
    health.status =
        *std::max_element(health.categories.begin(), health.categories.end());
    health.events = std::move(events);
  }

  Inventory& inventory_;
  std::uint32_t wants_;
  ServerReport report_;
  bool succeeded_ = false;
  bool unreachable_ = false;
};

}  // namespace

ServerReport readNode(Inventory& inventory, std::uint32_t wants,
                      base::Clock::time_point begun) {
  return Reading(inventory, wants).take(begun);
}

ServerReport failedReport(const base::Failure& failure,
                          base::Clock::time_point begun) {
  ServerReport report;
  noteTime(begun, report.read);
  report.read.failures.push_back(failureOf("", failure, true));
  return report;
}

std::string utcTime() {
  const std::time_t now = std::time(nullptr);
  std::tm utc{};
#if defined(_WIN32)
  gmtime_s(&utc, &now);
#else
  gmtime_r(&now, &utc);
#endif
  char text[32];
  const std::size_t size =
      std::strftime(text, sizeof text, "%Y-%m-%dT%H:%M:%SZ", &utc);
  return {text, size};
}

}  // namespace report
