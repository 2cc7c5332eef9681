#pragma once

#include <cstddef>
#include <optional>
#include <vector>

#include "suite/base/failure.h"
#include "suite/report/report.h"

namespace devhealth {

/// How much of a target could not be read.
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

/// What one target reports of itself. Each call fills its argument, which must
/// be empty, or returns why not. After a failure the argument is still empty,
/// but for `Extent::kParts`: then it holds all other parts. Every failure is
/// logged. Throws a `base::Failure` if the user has interrupted the run.
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

  /// The number of places for memory modules; nullopt if it is unknown. Call
  /// `memory` first.
  virtual std::optional<std::size_t> memoryPlaces() = 0;
};

}  // namespace devhealth
