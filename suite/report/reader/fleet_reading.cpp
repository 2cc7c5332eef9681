#include "suite/report/reader/fleet_reading.h"

#include <algorithm>
#include <chrono>
#include <exception>
#include <string>
#include <utility>

#include "suite/connection/service_nodes.h"
#include "suite/devhealth/redfish_inventory.h"
#include "suite/platform/interrupt.h"
#include "suite/platform/memory.h"
#include "suite/report/reader/node_report.h"

namespace report {
namespace {

using base::Failure;
using base::FailureKind;

// How often a wait tells how far the run is, and looks whether the user has
// ended it.
constexpr std::chrono::milliseconds kGlance{200};

// What is kept of each of the services that are read side by side. The largest
// servers that are known take 9 MiB.
constexpr std::size_t kUsualReadingBytes = std::size_t{12} << 20U;

std::vector<ServerReport> onlyFailed(const Failure& failure, Target target,
                                     base::Clock::time_point begun) {
  std::vector<ServerReport> reports = {failedReport(failure, begun)};
  reports.front().target = std::move(target);
  return reports;
}

std::size_t countFailed(const std::vector<ServerReport>& reports) {
  return std::any_of(reports.begin(), reports.end(),
                     [](const ServerReport& report) {
                       return report.read.status == ReadStatus::kFailed;
                     })
             ? 1
             : 0;
}

// Begins the run before the threads do.
fleet::Fleet& begun(fleet::Fleet& fleet) {
  fleet.begin();
  return fleet;
}

}  // namespace

FleetReading::FleetReading(fleet::Fleet& fleet, std::uint32_t wants)
    : fleet_(begun(fleet)),
      wants_(wants),
      progress_{0, 0, fleet.members().size()},
      read_(fleet.members().size()),
      workers_(
          fleet.members().size(), fleet.fanout(),
          [this](std::size_t index) { read_[index] = readMember(index); }) {}

FleetReading::~FleetReading() {
  workers_.stop();
  turn_.close();
}

bool FleetReading::next(ServerReport& report) {
  if (ready_.empty() && hasTurn_) {
    hasTurn_ = false;
    platform::returnFreed();
    turn_.give();
  }
  while (ready_.empty()) {
    const auto index = workers_.next(base::Clock::now() + kGlance);
    if (platform::interrupted()) {
      workers_.stop();
      throw base::makeFailure(FailureKind::kInterrupted,
                              "interrupted by the user");
    }
    if (index) {
      Reading read = std::move(read_[*index]);
      ++progress_.read;
      progress_.failed += countFailed(read.reports);
      std::move(read.reports.begin(), read.reports.end(),
                std::back_inserter(ready_));
      hasTurn_ = read.alone;
    } else if (workers_.finished()) {
      return false;
    }
    fleet_.showProgress(progress_);
  }
  report = std::move(ready_.front());
  ready_.pop_front();
  return true;
}

FleetReading::Reading FleetReading::readMember(std::size_t index) {
  Reading reading = readOnce(index, kUsualReadingBytes);
  if (reading.tooLarge && turn_.take()) {
    reading = Reading();
    reading = readOnce(index, redfish::kMaxReadingBytes);
    reading.alone = true;
    // Each thread would keep what it freed, and the next large one is
    // another's.
    platform::returnFreed();
  }
  return reading;
}

// No exception leaves a thread: what goes wrong with one target is told of that
// target alone.
FleetReading::Reading FleetReading::readOnce(std::size_t index,
                                             std::size_t readingBytes) const {
  const auto begun = base::Clock::now();
  const fleet::Member& member = fleet_.members()[index];
  Target target;
  target.name = member.name;
  if (member.target) {
    target.address = connection::toString(member.target->address);
  }
  try {
    const auto service = fleet_.open(index, wants_, readingBytes);
    if (!service) {
      return {onlyFailed(service.error(), std::move(target), begun)};
    }
    Reading reading;
    reading.reports = readNodes(**service, target, begun);
    reading.tooLarge = (*service)->isTooLarge();
    (*service)->close();
    fleet_.addCost((*service)->stats());
    return reading;
  } catch (const Failure& interrupted) {
    return {onlyFailed(interrupted, std::move(target), begun)};
  } catch (const std::exception& failure) {
    return {
        onlyFailed(base::makeFailure(FailureKind::kInternal, failure.what()),
                   std::move(target), begun)};
  }
}

std::vector<ServerReport> FleetReading::readNodes(
    redfish::Service& service, const Target& target,
    base::Clock::time_point begun) const {
  const int asked = fleet_.node().value_or(1);
  const auto first = static_cast<std::uint16_t>(std::max(asked, 1) - 1);
  const connection::ServiceNodes nodes =
      connection::readNodes(service, wants_, first);
  if (nodes.failure) {
    return onlyFailed(*nodes.failure, target, begun);
  }
  const std::size_t count = nodes.nodes.size();
  if (asked < 1 || static_cast<std::size_t>(asked) > count) {
    Failure failure = base::makeFailure(
        FailureKind::kUsage, "--node " + std::to_string(asked) +
                                 ": this service has " + std::to_string(count) +
                                 (count == 1 ? " node" : " nodes"));
    return onlyFailed(failure, target, begun);
  }
  std::vector<ServerReport> reports;
  const std::size_t end = fleet_.node() ? first + std::size_t{1} : count;
  for (std::size_t index = first; index < end; ++index) {
    devhealth::RedfishInventory inventory(devhealth::TargetReader(
        &service, service.address(), static_cast<std::uint16_t>(index)));
    reports.push_back(readNode(inventory, wants_, begun));
    reports.back().target = target;
    reports.back().target.address = service.address();
    reports.back().target.node = static_cast<int>(index) + 1;
    reports.back().target.nodes = static_cast<int>(count);
  }
  return reports;
}

}  // namespace report
