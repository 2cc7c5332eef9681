#include "suite/local/controller/way_choice.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <optional>
#include <vector>

#include "suite/local/controller/connect_race.h"
#include "suite/local/controller/discovery.h"

namespace local {
namespace {

std::optional<std::size_t> firstToAnswer(const ControllerWays& open,
                                         std::chrono::milliseconds limit) {
  std::vector<Endpoint> endpoints;
  endpoints.reserve(open.size());
  for (const ControllerPath& path : open) {
    endpoints.push_back({path.address, path.port});
  }
  return endpoints.empty() ? std::nullopt : firstToAccept(endpoints, limit);
}

// Completes a way whose service has to be searched. Of several that answer, the
// first one that accepts a connection is taken.
void discover(ControllerPath& path, std::chrono::milliseconds limit) {
  if (path.problem != PathProblem::kUndiscovered) {
    return;
  }
  ControllerWays found;
  for (const DiscoveredService& service :
       discoverServices(path.device, path.serviceUuid)) {
    found.push_back(path);
    found.back().problem = PathProblem::kNone;
    found.back().address = service.address;
    found.back().port = service.port;
  }
  if (!found.empty()) {
    const bool choice = found.size() > 1;
    path = found[choice ? firstToAnswer(found, limit).value_or(0) : 0];
  }
}

WayChoice chooseAmong(const ControllerWays& ways,
                      std::chrono::milliseconds limit) {
  ControllerWays open;
  std::copy_if(ways.begin(), ways.end(), std::back_inserter(open),
               [](const ControllerPath& path) {
                 return path.problem == PathProblem::kNone;
               });
  if (const auto first = firstToAnswer(open, limit)) {
    return {open[*first], true};
  }
  for (ControllerPath path : ways) {
    if (path.problem == PathProblem::kUndiscovered) {
      discover(path, limit);
      if (path.problem == PathProblem::kNone) {
        return {path, true};
      }
    }
  }
  return {open.empty() ? ways.front() : open.front(), false};
}

}  // namespace

WayChoice chooseWay(const ControllerWays& ways,
                    std::chrono::milliseconds limit) {
  WayChoice choice;
  if (ways.size() == 1) {
    choice.path = ways.front();
    discover(choice.path, limit);
    return choice;
  }
  choice = chooseAmong(ways, limit);
  // What the firmware says of the controller, on whichever way.
  for (const ControllerPath& way : ways) {
    choice.path.bootstrapsCredentials =
        choice.path.bootstrapsCredentials || way.bootstrapsCredentials;
    if (choice.path.serviceUuid.empty()) {
      choice.path.serviceUuid = way.serviceUuid;
    }
  }
  return choice;
}

}  // namespace local
