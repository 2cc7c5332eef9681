#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "check/finding.h"

namespace check {

/// Which findings do not count.
class IgnoreList {
 public:
  IgnoreList() = default;

  /// `list`: with commas between them, categories ("power"), message ids
  /// ("PowerAlerts.1.0.InputLost", or "InputLost" for every registry and
  /// version of it) and origins ("/redfish/v1/Chassis/1/PowerSubsystem", which
  /// covers the resources below it). The case of letters does not matter but
  /// in origins. Blanks around an entry are ignored.
  explicit IgnoreList(std::string_view list);

  bool covers(const Finding& finding) const;

 private:
  std::vector<std::string> entries_;
};

}  // namespace check
