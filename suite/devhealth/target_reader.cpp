#include "suite/devhealth/target_reader.h"

#include <utility>

#include "suite/devhealth/failure_status.h"
#include "suite/run/run.h"
#include "syshealth/host/log.h"
#include "syshealth/result/health_status.h"

namespace devhealth {
namespace {

using base::Failure;

constexpr unsigned int kLogError = 1;

int report(Failure failure, Phase phase) {
  const int status = statusOf(failure.kind, phase);
  if (run::Run* current = run::Run::current()) {
    current->report(std::move(failure));
  }
  return status;
}

// Writes what the service itself has not logged yet.
void log(const Failure& failure) {
  if (Tarvex::Log::GetMinLogLevel() < kLogError) {
    return;
  }
  Tarvex::Log(kLogError, __FILE__, __LINE__).Stream() << describe(failure);
}

}  // namespace

TargetReader::TargetReader(
    const Tarvex::TarvexConnection::ConnectionInfo& connection)
    : service_(run::Run::current() == nullptr
                   ? nullptr
                   : run::Run::current()->pool().find(connection.service)),
      address_(connection.address),
      // Nodes count on over the services of a run.
      nodeIndex_(static_cast<std::uint16_t>(connection.nodeIndex -
                                            connection.firstNode)) {}

int TargetReader::read(redfish::Selection selection) {
  if (service_ == nullptr) {
    Failure failure;
    failure.kind = base::FailureKind::kUnreachable;
    failure.address = address_;
    failure.cause = "there is no connection to this target";
    log(failure);
    return report(std::move(failure), Phase::kConnecting);
  }
  selection.nodeIndex = nodeIndex_;
  auto failure = service_->read(selection);
  if (!failure) {
    return kHealthSuccess;
  }
  // The module has nothing to say about it, and lets it pass.
  if (failure->kind == base::FailureKind::kInterrupted) {
    throw *failure;
  }
  // Opening answers again what it answered first: whether it got that far.
  const Phase phase = service_->open() ? Phase::kConnecting : Phase::kReading;
  return report(std::move(*failure), phase);
}

int TargetReader::read(redfish::Want want) {
  redfish::Selection selection;
  selection.wants = want;
  return read(std::move(selection));
}

redfish::Node TargetReader::node() const {
  return redfish::nodeAt(service_->graph(), nodeIndex_);
}

int TargetReader::fail(Failure failure) const {
  if (failure.address.empty()) {
    failure.address = service_->address();
  }
  log(failure);
  return report(std::move(failure), Phase::kReading);
}

}  // namespace devhealth
