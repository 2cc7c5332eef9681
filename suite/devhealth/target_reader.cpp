#include "suite/devhealth/target_reader.h"

#include <utility>

#include "suite/base/log.h"
#include "suite/base/time_limit.h"
#include "suite/devhealth/failure_status.h"
#include "suite/platform/last_resort.h"

namespace devhealth {
namespace {

using base::Failure;

Unread unreadTarget(Failure failure, Phase phase) {
  const int status = statusOf(failure.kind, phase);
  return {std::move(failure), status, Extent::kTarget};
}

// Writes what the service itself has not logged yet.
void log(const Failure& failure) {
  BRIVEL_LOG(base::kLogError) << describe(failure);
}

}  // namespace

TargetReader::TargetReader(redfish::Service* service, std::string address,
                           std::uint16_t nodeIndex)
    : service_(service), address_(std::move(address)), nodeIndex_(nodeIndex) {}

std::optional<Unread> TargetReader::read(redfish::Selection selection) {
  if (service_ == nullptr) {
    Failure failure;
    failure.kind = base::FailureKind::kUnreachable;
    failure.address = address_;
    failure.cause = "there is no connection to this target";
    log(failure);
    return unreadTarget(std::move(failure), Phase::kConnecting);
  }
  selection.nodeIndex = nodeIndex_;
  auto failure = service_->read(selection);
  if (!failure) {
    return std::nullopt;
  }
  // The module has nothing to say about it, and lets it pass. Should memory
  // run out while it is copied, the run ends just as well.
  if (failure->kind == base::FailureKind::kInterrupted) {
    throw base::Failure(*failure);  // NOLINT(cert-err60-cpp)
  }
  // Opening answers again what it answered first: whether it got that far.
  const Phase phase = service_->open() ? Phase::kConnecting : Phase::kReading;
  return unreadTarget(std::move(*failure), phase);
}

std::optional<Unread> TargetReader::read(redfish::Want want) {
  redfish::Selection selection;
  selection.wants = want;
  return read(std::move(selection));
}

std::optional<Unread> TargetReader::work(
    const std::function<std::optional<Unread>()>& task) const {
  try {
    const platform::LastResort watch(service_->watchEnd());
    const base::TimeLimit limit(service_->workEnd());
    return task();
  } catch (const base::OutOfTime&) {
    Failure failure = service_->outOfTime();
    if (failure.kind == base::FailureKind::kInterrupted) {
      throw Failure(failure);  // NOLINT(cert-err60-cpp)
    }
    log(failure);
    return unreadTarget(std::move(failure), Phase::kReading);
  }
}

const redfish::Node& TargetReader::node() const {
  return service_->node(nodeIndex_);
}

Unread TargetReader::fail(Failure failure, Extent extent) const {
  if (failure.address.empty()) {
    failure.address = service_->address();
  }
  // The service has logged why a part cannot be read.
  if (extent != Extent::kParts) {
    log(failure);
  }
  const int status = statusOf(failure.kind, Phase::kReading);
  return {std::move(failure), status, extent};
}

}  // namespace devhealth
