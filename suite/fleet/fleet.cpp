#include "suite/fleet/fleet.h"

#include <algorithm>
#include <string>
#include <utility>

#include "suite/connection/open_service.h"

namespace fleet {
namespace {

using base::Failure;
using base::FailureKind;

}  // namespace

Fleet::Fleet(std::vector<Member> members, FleetOptions options)
    : members_(std::move(members)),
      options_(std::move(options)),
      credentials_(std::move(options_.environmentPassword)) {
  cost_.address = std::to_string(members_.size()) + " targets";
}

Fleet::~Fleet() = default;

Fleet* Fleet::current() { return dynamic_cast<Fleet*>(run::Run::current()); }

void Fleet::begin() {
  for (const Member& member : members_) {
    if (member.target && connection::needsPassword(*member.target)) {
      credentials_.prepare(*member.target);
    }
  }
  if (options_.total) {
    until_ = base::Clock::now() + *options_.total;
  }
}

base::Result<std::unique_ptr<redfish::Service>> Fleet::open(
    std::size_t member, std::uint32_t wants, std::size_t readingBytes) const {
  const Member& asked = members_[member];
  if (!asked.target) {
    return asked.target.error();
  }
  connection::Target target = *asked.target;
  const auto left = std::chrono::floor<std::chrono::milliseconds>(
      until_ - base::Clock::now());
  if (left.count() <= 0) {
    Failure failure = base::makeFailure(
        FailureKind::kDeadline, "not asked: the time of the run was over");
    failure.address = connection::toString(target.address);
    failure.remedy = "raise --total or --fanout";
    return failure;
  }
  target.deadline = std::min(target.deadline, left);
  target.timeout = std::min(target.timeout, left);
  if (!connection::needsPassword(target)) {
    connection::OpenOptions nobody;
    nobody.wants = wants;
    nobody.readingBytes = readingBytes;
    return connection::openService(target, nobody);
  }
  const Credentials::Known& known = credentials_.of(target);
  if (!known.credential) {
    Failure failure = known.credential.error();
    failure.address = connection::toString(target.address);
    return failure;
  }
  connection::OpenOptions how;
  how.password = &known.credential->password;
  how.wants = wants;
  how.readingBytes = readingBytes;
  how.gate = known.gate.get();
  return connection::openService(target, how);
}

void Fleet::addCost(const redfish::ServiceStats& stats) {
  const std::lock_guard lock(mutex_);
  cost_.logins += stats.logins;
  cost_.requests += stats.transport.requests;
  cost_.retries += stats.retries;
  cost_.connections += stats.transport.connections;
  cost_.resumed += stats.transport.resumed;
  cost_.mostUnderWay =
      std::max(cost_.mostUnderWay, stats.transport.mostUnderWay);
  cost_.bytes += stats.transport.bytes;
  cost_.levels = std::max(cost_.levels, stats.levels);
}

connection::TargetCost Fleet::cost() const {
  const std::lock_guard lock(mutex_);
  return cost_;
}

void Fleet::showProgress(const Progress& progress) const {
  if (options_.progress) {
    options_.progress(progress);
  }
}

}  // namespace fleet
