#pragma once

#include <string>
#include <string_view>
#include <unordered_map>

#include "suite/redfish/graph/json.h"
#include "suite/redfish/graph/uri.h"

namespace devhealth {

/// How often each Name stands among the members of one collection or the
/// entries of one array, absent parts included: many services call all of
/// them alike.
class NameCounts {
 public:
  void add(const redfish::json::object& part);
  bool unique(const std::string& name) const;

 private:
  std::unordered_map<std::string, int> counts_;
};

/// What a person calls a part: its `Name`, when it is unique among its
/// siblings and more than the word for its class ("Fan", "CPU", ...); else the
/// label of its place (`Location.PartLocation.ServiceLabel`); else its class's
/// own locator, a path such as "Socket" (empty: the class has none); else
/// `Name` and `Id` together; else `Id` or `MemberId`; else the last segment of
/// its link.
std::string displayName(const redfish::json::object& part,
                        const redfish::Uri& uri, const NameCounts& siblings,
                        std::string_view locator = {});

}  // namespace devhealth
