#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "suite/base/failure.h"
#include "suite/base/progress.h"
#include "suite/base/result.h"
#include "suite/base/secret.h"
#include "suite/connection/in_band.h"
#include "suite/connection/password/credential.h"
#include "suite/connection/run_recording.h"
#include "suite/connection/settings/target.h"
#include "suite/run/run.h"

namespace connection {

/// A service of the run, by its handle in the pool.
struct RunService {
  Target target;
  std::string serviceUuid;  ///< That it must have; empty: any.
};

/// Makes the services of a run in its pool: that of the target, or those of
/// the controllers which this machine leads to, each with its credential.
class RunServices {
 public:
  /// `target`: nullopt for this machine itself. `wants` are the
  /// `redfish::Want` values that the run will ask for.
  RunServices(run::Run& run, std::optional<Target> target,
              std::optional<base::Secret> environmentPassword,
              std::uint32_t wants, InBandOptions inBand);

  /// Says what the run will ask for, if that was not known before. To be
  /// called before `ensure`.
  void expect(std::uint32_t wants) { wants_ = wants; }

  /// Makes the services, once per run. If there is none, returns the failure,
  /// the same at each call.
  std::optional<base::Failure> ensure();

  /// Opens the first service that can be reached, and reads what the run needs,
  /// so that a failure is as specific as possible. Returns its handle, or the
  /// failure of the last service if none can be reached.
  /// `nodeIndex` is the node that it is read for.
  base::Result<std::int64_t> reachAny(std::uint16_t nodeIndex);

  /// Records what the services read that are made from now on; see
  /// `Connections::recordInto`.
  void recordInto(RunRecording* recording) { recording_ = recording; }

  /// Shows the reading of the services that are made from now on; see
  /// `Connections::showProgress`.
  void showProgress(base::Progress* progress) { progress_ = progress; }

  /// The services by their handles; empty before `ensure`.
  const std::map<std::int64_t, RunService>& all() const { return services_; }

  const std::optional<Target>& target() const { return target_; }

  /// No controller was found: the machine itself is the target.
  bool noController() const { return noController_; }

  /// A way that the firmware names leads nowhere.
  bool pathBlocked() const { return pathBlocked_; }

  /// Where the password came from; empty if there is none.
  std::string credentialOrigin() const {
    return credential_ ? credential_->origin : "";
  }

  /// Keeps a line for a person once: see `Connections::notices`.
  void notice(const std::string& text);
  const std::vector<std::string>& notices() const { return notices_; }

 private:
  std::optional<base::Failure> ensureControllers();
  std::optional<base::Failure> addController(FoundController controller);
  std::optional<base::Failure> addService(Target target,
                                          const std::string& serviceUuid = "");
  std::optional<base::Failure> takeCredential(const Target& target);
  std::optional<base::Failure> checkBeforeAsking(const Target& target) const;
  void trustOverIpmi(Target& target);
  std::optional<base::Failure> makeAccount(FoundController& controller);

  run::Run& run_;
  std::optional<Target> target_;
  std::optional<base::Secret> environmentPassword_;
  std::uint32_t wants_;
  InBandOptions inBand_;
  RunRecording* recording_ = nullptr;
  base::Progress* progress_ = nullptr;
  std::optional<Credential> credential_;
  std::map<std::int64_t, RunService> services_;
  bool noController_ = false;
  bool pathBlocked_ = false;
  std::optional<base::Failure> unusable_;  ///< Why there is no service.
  std::vector<std::string> notices_;
};

}  // namespace connection
