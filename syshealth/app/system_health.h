#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "syshealth/health/alert.h"
#include "syshealth/health/alert_category_bucket.h"
#include "syshealth/host/app_base.h"
#include "syshealth/host/connect_info.h"
#include "syshealth/host/connection_info.h"
#include "syshealth/inventory/components.h"
#include "syshealth/result/brivel_result.h"

/// The application "syshealth": the health summary and the hardware inventory
/// of a server, printed on the console. One object serves one run of a
/// command; the host's services do the work behind it and are fetched afresh
/// at each use. One thread; no exception is thrown or caught here, one from a
/// service or from allocation passes out to the host.
///
/// Operations answer 32-bit result codes, 0 for success, unless they say
/// otherwise. Reports go to standard output, failures to standard error, both
/// also to the log. Every operation traces its entry and its exit; the exit is
/// left out where a contract says so.
class SystemHealth : public AppBase {
 public:
  /// Builds the eight category buckets.
  SystemHealth();
  ~SystemHealth() override;

  SystemHealth(const SystemHealth&) = delete;
  SystemHealth& operator=(const SystemHealth&) = delete;

  /// Registers the application's name and number at the host's parser. Does
  /// nothing, exit trace included, without a parser; a refusal is logged.
  static void Init();

  /// Registers the option specification of a command, which is empty: the
  /// options that the application reads are the host's. Generic failure
  /// without a parser, invalid command for any command but 1, both without
  /// exit trace.
  static std::int32_t ParamRegister(std::int32_t commandNumber);

  /// Runs a command and gives its code with an empty message. Invalid command
  /// for any but 1.
  BrivelResult AppMain(std::int32_t commandNumber);

  /// The command "show": the inventory items that the "device" option names,
  /// their results combined by bitwise OR, or the health summary without it.
  /// Generic failure, without exit trace, when a service is missing. The exit
  /// trace comes before the summary runs.
  std::int32_t showCmd();

  /// Reads and prints the health of the target or targets that the connection
  /// mode and the "node" option pick; of several targets the last one's is
  /// shown. Nothing reaches standard output unless every read succeeds. No
  /// exit trace on the failures before the first read.
  std::int32_t showHealthSummary(std::int32_t connectionMode);

  /// Fills the category buckets from the alerts, which are sorted by
  /// ascending severity, and prints the status of each category and then the
  /// events. An alert of no known category is left out. To be called once.
  void showHealth(std::vector<Tarvex::DeviceHealth::Alert>& alerts);

  /// Replaces `alerts` with the active events of one target. A device-health
  /// status, 0 for success; a failure is logged and leaves no exit trace.
  int getHealth(const Tarvex::TarvexConnection::ConnectionInfo& connection,
                std::vector<Tarvex::DeviceHealth::Alert>& alerts);

  /// Prints one inventory item of the targets that the connection mode and
  /// the "node" option pick, up to the first that fails. Only a failed read
  /// and an unsupported mode leave an exit trace.
  std::int32_t showSystemItem(const std::string& item, ConnectMode mode);

  /// Reads and prints one inventory item of one target. A device-health
  /// status, 0 for success; an unknown item is not supported. A failed read
  /// prints nothing and leaves no exit trace.
  int getSystemItems(const Tarvex::TarvexConnection::ConnectionInfo& connection,
                     const std::string& item);

  // The reports: an empty line, a heading and a table each, two for memory
  // modules and PCI adapters; a list without elements leaves the headers.
  void showSystem(const Tarvex::DeviceHealth::SystemBoard& system);
  void showProcessors(
      const std::vector<Tarvex::DeviceHealth::Processor>& processors);
  void showFans(const std::vector<Tarvex::DeviceHealth::Fan>& fans);
  void showDIMMs(const std::vector<Tarvex::DeviceHealth::DIMM>& dimms);
  void showPowers(const std::vector<Tarvex::DeviceHealth::Power>& powers);
  void showPCIAdapters(
      const std::vector<Tarvex::DeviceHealth::PCIAdapter>& adapters);

  /// One bucket for each category name, in that table's order.
  std::vector<AlertCategoryBucket> categoryBuckets;
};
