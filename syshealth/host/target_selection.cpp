#include "syshealth/host/target_selection.h"

#include <algorithm>

#include "syshealth/host/arg_parser.h"
#include "syshealth/host/connect_info.h"

namespace {

using Tarvex::TarvexConnection::ConnectionInfo;

TargetSelection selectByNode(std::vector<ConnectionInfo>& targets) {
  bool given = false;
  int node = 0;
  if (ArgParser* const parser = ArgParser::GetInstance(); parser != nullptr) {
    given = parser->GetValue("node", node);
  }
  if (!given) {
    return TargetSelection::kPicked;
  }
  if (node < 1 || static_cast<std::size_t>(node) > targets.size()) {
    return TargetSelection::kInvalidNode;
  }
  targets.erase(std::remove_if(targets.begin(), targets.end(),
                               [node](const ConnectionInfo& target) {
                                 return target.nodeIndex != node - 1;
                               }),
                targets.end());
  return TargetSelection::kPicked;
}

}  // namespace

TargetSelection selectTargets(std::int32_t connectionMode,
                              std::vector<ConnectionInfo>& targets) {
  switch (connectionMode) {
    case kConnectModeOutOfBand:
      targets.resize(1);
      return TargetSelection::kPicked;
    case kConnectModeInBand:
      return selectByNode(targets);
    default:
      return TargetSelection::kUnsupportedMode;
  }
}
