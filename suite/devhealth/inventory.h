#pragma once

#include <cstddef>
#include <optional>
#include <vector>

#include "suite/base/failure.h"
#include "suite/report/report.h"

namespace devhealth {

/// How much of a target a failure keeps from being read.
enum class Extent {
  kParts,  ///< Some parts of what was asked for; the others are there.
  kItem,   ///< All that was asked for.
  kTarget  ///< Anything else of the target, too.
};

/// Why something of a target could not be read.
struct Unread {
  base::Failure failure;
  int status = -1;  ///< What `DevHealth` answers for it; never 0.
  Extent extent = Extent::kItem;
};

/// What one target tells of itself. The calls fill their argument, which is
/// empty before; they return why not if it cannot be read, and leave it alone
/// then, unless parts of it alone are missing. Every failure is logged. Throws
/// a `base::Failure` if the user has interrupted the run.
class Inventory {
 public:
  virtual ~Inventory() = default;

  virtual std::optional<Unread> connect() = 0;
  virtual std::optional<Unread> system(report::System& system) = 0;
  virtual std::optional<Unread> processors(
      std::vector<report::Processor>& processors) = 0;
  virtual std::optional<Unread> fans(std::vector<report::Fan>& fans) = 0;
  virtual std::optional<Unread> memory(
      std::vector<report::MemoryModule>& modules) = 0;
  virtual std::optional<Unread> powerSupplies(
      std::vector<report::PowerSupply>& supplies) = 0;
  virtual std::optional<Unread> pciAdapters(
      std::vector<report::PciAdapter>& adapters) = 0;

  /// The active events.
  virtual std::optional<Unread> events(std::vector<report::Event>& events) = 0;

  /// How many places for memory modules there are, as far as the reading of
  /// the modules, which has to come first, has told.
  virtual std::optional<std::size_t> memoryPlaces() = 0;
};

}  // namespace devhealth
