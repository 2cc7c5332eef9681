#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>

#include "suite/base/progress.h"
#include "suite/base/secret.h"
#include "suite/connection/run_recording.h"
#include "suite/connection/settings/target.h"
#include "suite/redfish/service.h"

namespace connection {

/// Whether the target requires a password: a recorded server and a target
/// without a user do not.
bool needsPassword(const Target& target);

/// What a service is opened with. All that is pointed to may be null; all but
/// the password, which is copied, must outlive the service.
struct OpenOptions {
  const base::Secret* password = nullptr;
  std::uint32_t wants = 0;  ///< `redfish::Want` values that will be asked for.
  redfish::LoginGate* gate = nullptr;  ///< Asked before the password is sent.
  RunRecording* recording = nullptr;   ///< Takes in what is read.
  base::Progress* progress = nullptr;  ///< Observes the reading.
  /// What may be kept of it; see `redfish::ReadingBudget`.
  std::size_t readingBytes = redfish::kMaxReadingBytes;
};

/// The service of a target, which has contacted nothing yet. The time of the
/// run counts from here.
std::unique_ptr<redfish::Service> openService(const Target& target,
                                              const OpenOptions& how);

}  // namespace connection
