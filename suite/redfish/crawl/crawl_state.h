#pragma once

#include <algorithm>
#include <array>
#include <initializer_list>

#include "suite/redfish/crawl/plan.h"

namespace redfish {

/// How far a crawl has come: what decides whether an open question may still
/// be answered.
struct CrawlState {
  bool drained = false;  ///< Nothing is under way: fall-backs may go ahead.
  std::array<int, kKindCount> waiting{};  ///< Under way, by kind.

  bool isWaitingFor(std::initializer_list<Kind> kinds) const {
    return std::any_of(kinds.begin(), kinds.end(),
                       [this](Kind kind) { return waiting[index(kind)] > 0; });
  }
};

}  // namespace redfish
