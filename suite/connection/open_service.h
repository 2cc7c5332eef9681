#pragma once

#include <cstdint>
#include <memory>

#include "suite/base/secret.h"
#include "suite/connection/run_recording.h"
#include "suite/connection/settings/target.h"
#include "suite/redfish/service.h"

namespace connection {

/// Whether the target requires a password: a recorded server and a target
/// without a user do not.
bool needsPassword(const Target& target);

/// The service of a target, which has contacted nothing yet. The time of the
/// run counts from here. `password` may be null; `wants` are the
/// `redfish::Want` values that the run will ask for. `gate` is asked before the
/// password is sent, and must outlive the service; it may be null. What is read
/// becomes part of `recording`, unless that is null.
std::unique_ptr<redfish::Service> openService(
    const Target& target, const base::Secret* password, std::uint32_t wants,
    redfish::LoginGate* gate = nullptr, RunRecording* recording = nullptr);

}  // namespace connection
