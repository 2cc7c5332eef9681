#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "suite/local/facts/facts.h"
#include "suite/local/facts/root.h"
#include "suite/local/smbios/firmware_table.h"
#include "suite/local/smbios/host_interface.h"
#include "suite/local/smbios/smbios.h"

namespace local {

/// The result of asking the machine's IPMI device for its version.
struct IpmiFinding {
  Access access = Access::kMissing;
  std::string path;            ///< The device that was tried.
  std::optional<int> version;  ///< 20 for 2.0; nullopt: no valid answer.
};

/// One machine, as its own operating system shows it: the running one, or a
/// recorded one. The firmware's table is read once; the rest is read at each
/// call. Calls never fail: what cannot be read is left out, and `table()` says
/// whether the firmware's table is the reason.
/// Single-threaded.
class Machine {
 public:
  /// `pciIdsFile`: the file with the names of PCI devices; empty: where
  /// systems keep it.
  explicit Machine(Root root, std::string pciIdsFile = "");
  ~Machine();

  Machine(const Machine&) = delete;
  Machine& operator=(const Machine&) = delete;

  const Root& root() const { return root_; }

  /// How reading the firmware's table went. Without it there are no
  /// processors, modules, supplies and host interfaces, and the system has
  /// what the kernel shows everyone.
  Access table();

  /// The table's name in messages: the file that holds it, if there is one.
  const std::string& tableName();

  /// What is wrong with the firmware's table, as texts for the log.
  const std::vector<std::string>& defects();

  SystemFacts system();
  BoardFacts board();
  std::vector<ProcessorFacts> processors();
  std::vector<MemoryFacts> memory();
  std::optional<std::size_t> memoryPlaces();
  std::vector<SupplyFacts> supplies();
  std::vector<FanFacts> fans();

  /// Whether there is a source of fans: some systems have none.
  bool hasFanSource() const;

  std::vector<PciFacts> adapters();

  /// Whether `adapters` has found some, and names for none of them: the list of
  /// names is not there.
  bool lacksPciNames() const { return lacksPciNames_; }
  std::vector<HostInterface> hostInterfaces();

  /// Asks the IPMI device, once.
  const IpmiFinding& ipmi();

  /// Whether the kernel shows any of its sources of inventory: the table,
  /// the copy of its texts, fans, or a PCI bus. A container may have none.
  bool describesItself();

 private:
  const SmbiosTables& smbios();

  Root root_;
  std::string pciIdsFile_;
  std::optional<FirmwareTable> table_;  // Held, because smbios_ refers to it.
  SmbiosTables smbios_;
  std::optional<IpmiFinding> ipmi_;
  bool lacksPciNames_ = false;
};

}  // namespace local
