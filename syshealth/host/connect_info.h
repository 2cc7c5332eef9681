#pragma once

#include <cstdint>
#include <vector>

#include "syshealth/host/connection_info.h"
#include "syshealth/host/export.h"
#include "syshealth/result/brivel_result.h"

/// The road to the target that a run takes.
enum ConnectMode : std::int32_t {
  kConnectModeInBand = 1,     ///< From the server itself.
  kConnectModeOutOfBand = 2,  ///< Through its management controller.
  kConnectModeEsxi = 4        ///< Through a VMware ESXi host.
};

/// Why a list of targets could not be had; every value but 0 is known to the
/// connection library alone, which turns it into a result with
/// `ConnectInfo::ParseCimError`.
enum ConnectionErr : std::int32_t { kConnectionErrNone = 0 };

/// The suite's connection-settings service: one per process, owned by the
/// host, alive from before `Init` until after the module is unloaded.
class BRIVEL_SUITE_API ConnectInfo {
 public:
  /// The host's service; null when there is none.
  static ConnectInfo* Getinstance();

  /// The connection mode of the run.
  ConnectMode GetConMode();

  /// Tests that the run's target can be reached, and completes `info` with
  /// its settings. A result code: 0 reachable, any other says why not.
  int TryCimCon(Tarvex::TarvexConnection::ConnectionInfo& info);

  /// Fills `list` with the target connections for inventory, one per node
  /// in-band, one per address out-of-band. Never success with an empty list.
  ConnectionErr GetCimConnectInfo(
      std::vector<Tarvex::TarvexConnection::ConnectionInfo>& list);

  /// The same for the health summary.
  ConnectionErr GetIpmiConnectInfo(
      std::vector<Tarvex::TarvexConnection::ConnectionInfo>& list);

  /// The result that a failure of the two calls above stands for; a failure
  /// result for 0 too, which callers pass for an empty list.
  BrivelResult ParseCimError(const ConnectionErr& error);
};
