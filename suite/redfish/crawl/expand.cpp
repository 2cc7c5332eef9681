#include "suite/redfish/crawl/expand.h"

#include "suite/redfish/crawl/selection.h"

namespace redfish {
namespace {

bool isTrue(const json::object& object, std::string_view path) {
  const json::value* value = memberAt(object, path);
  return value != nullptr && value->is_bool() && value->get_bool();
}

}  // namespace

void Expand::offer(const json::object& root) {
  const json::object* offered =
      objectAt(root, "ProtocolFeaturesSupported/ExpandQuery");
  if (offered == nullptr) {
    return;
  }
  usable_ = isTrue(*offered, "NoLinks");
  const json::value* depth = memberAt(*offered, "MaxLevels");
  const bool deep =
      depth != nullptr && ((depth->is_int64() && depth->get_int64() >= 2) ||
                           (depth->is_uint64() && depth->get_uint64() >= 2));
  twoLevels_ = usable_ && isTrue(*offered, "Levels") && deep;
}

std::string_view Expand::queryFor(Kind kind, std::uint32_t planBits) const {
  if (!usable_) {
    return {};
  }
  if (isCollection(kind)) {
    return "$expand=.";
  }
  const bool wanted =
      (kind == Kind::kThermalSubsystem && (planBits & kWantFans) != 0) ||
      kind == Kind::kPowerSubsystem;
  return wanted && twoLevels_ ? "$expand=.($levels=2)" : std::string_view();
}

}  // namespace redfish
