#pragma once

#include <optional>
#include <string>
#include <vector>

#include "suite/local/facts.h"
#include "suite/local/host_interface.h"
#include "suite/local/root.h"
#include "suite/local/smbios.h"

namespace local {

/// Where the kernel shows the firmware's structure table; root's alone.
inline constexpr char kSmbiosTable[] = "/sys/firmware/dmi/tables/DMI";

/// One machine, as its own operating system shows it: the running one, or a
/// recorded one. The firmware's table is read once; the rest is read at each
/// call. Calls never fail: what cannot be read is missing from the answer,
/// and `table()` tells whether the firmware's table is the reason.
/// Single-threaded.
class Machine {
 public:
  /// `pciIdsFile`: the file with the names of PCI devices; empty: where
  /// systems keep it.
  explicit Machine(Root root, std::string pciIdsFile = "");

  const Root& root() const { return root_; }

  /// How reading the firmware's table went. Without it there are no
  /// processors, modules, supplies and host interfaces, and the system has
  /// what the kernel shows everyone.
  Access table();

  /// What is wrong with the firmware's table, in words for the log.
  const std::vector<std::string>& defects();

  SystemFacts system();
  BoardFacts board();
  std::vector<ProcessorFacts> processors();
  std::vector<MemoryFacts> memory();
  std::vector<SupplyFacts> supplies();
  std::vector<FanFacts> fans();
  std::vector<PciFacts> adapters();
  std::vector<HostInterface> hostInterfaces();

  /// Whether the kernel shows any of its sources of inventory: the table,
  /// the copy of its texts, fans, or a PCI bus. A container may have none.
  bool describesItself();

 private:
  const SmbiosTables& smbios();

  Root root_;
  std::string pciIdsFile_;
  std::optional<Content> table_;  // Held, because smbios_ refers to it.
  SmbiosTables smbios_;
};

}  // namespace local
