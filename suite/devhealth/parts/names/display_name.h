#pragma once

#include <string>
#include <vector>

#include "suite/devhealth/parts/names/part_class.h"
#include "suite/redfish/graph/graph.h"

namespace devhealth {

/// Whether parts are rather called by their names or by their places.
enum class NameOrder { kNameFirst, kPlaceFirst };

/// A part that needs a name which no other part of its table has.
struct Candidate {
  redfish::Uri uri;
  const redfish::json::object* object = nullptr;  ///< Null: unreadable.
  PartClass partClass;
  std::string label;  ///< The label of its place; may be empty.
};

/// The candidate for a part of a class, with the label of its place
/// (`Location.PartLocation.ServiceLabel`).
Candidate candidateOf(const redfish::Uri& uri,
                      const redfish::json::object* object, PartClass partClass);

/// What a part is called.
struct DisplayName {
  std::string text;
  bool place = false;  ///< It is only a label, locator or bay.
};

/// The names of all candidates of one table, in their order, so that a person
/// can tell them apart:
///
/// 1. A part is called by the first of these that is a name (`isName`) and that
///    no other candidate has in the same property: `Name`, label, locator of
///    its class, the bay that a maker states (`Oem.*.BayNumber`).
/// 2. Else by its `Name`, or the word for its class, and its `Id` (`MemberId`,
///    last segment of its link). An `Id` that starts with the word for a class
///    stands alone.
/// 3. Names that are still equal get the `Id` of their chassis or system and a
///    slash in front.
///
/// A part that cannot be read is called by the last segment of its link.
std::vector<DisplayName> displayNames(const redfish::Graph& graph,
                                      const std::vector<Candidate>& candidates,
                                      NameOrder order = NameOrder::kNameFirst);

/// The `Id` of the chassis or system that a link lies in, or its segment of the
/// link if it has none. Empty for other links.
std::string holderId(const redfish::Graph& graph, const redfish::Uri& uri);

}  // namespace devhealth
