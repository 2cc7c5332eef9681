#pragma once

#include <map>
#include <string>
#include <string_view>

#include "suite/devhealth/parts/part_list.h"
#include "suite/redfish/graph/topology.h"

namespace devhealth {

/// Tells the parts of a node's chassis that a service lists more than once:
/// some services have two documents for one chassis, others list a part under
/// the chassis and under the board in it. Two parts under different chassis
/// are the same when both serial numbers and names are, where the name is none
/// also the identifiers; under two documents of one chassis (the same `Id`)
/// parts without a serial number are the same when names and identifiers are.
/// Within one chassis no two parts are the same.
class SameParts {
 public:
  explicit SameParts(const redfish::Node& node);

  /// Adds a part of some kind, in the order of the node's chassis. Returns
  /// the link of the part that was added before and is the same; null when
  /// this is the first of its kind.
  const redfish::Uri* add(std::string_view kind, const redfish::Uri& uri,
                          const redfish::json::object& part);

 private:
  struct First {
    std::string chassis;
    redfish::Uri uri;
  };

  std::string keyOf(std::string_view kind, std::string_view chassis,
                    const redfish::json::object& part) const;

  std::map<std::string, std::string, std::less<>> twins_;  ///< Id by chassis.
  std::map<std::string, First> firsts_;
};

}  // namespace devhealth
