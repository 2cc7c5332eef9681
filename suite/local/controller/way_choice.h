#pragma once

#include <chrono>

#include "suite/local/controller/controller_path.h"

namespace local {

/// The way that is taken to a controller.
struct WayChoice {
  ControllerPath path;   ///< With its problem, if there is no open way.
  bool answers = false;  ///< It was tried and took a connection.
};

/// Chooses among the ways to one controller. A single way is taken as it is.
/// Of several the first whose service accepts a connection is taken; all of
/// them are tried at once, for no longer than `limit`. A way whose address is
/// left to discovery is searched on its network device, and only if no other
/// way answers. If none answers, the first open way is chosen, so that the
/// request over it reports why.
WayChoice chooseWay(const ControllerWays& ways,
                    std::chrono::milliseconds limit);

}  // namespace local
