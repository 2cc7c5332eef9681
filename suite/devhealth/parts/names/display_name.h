#pragma once

#include <string>
#include <vector>

#include "suite/devhealth/parts/names/part_class.h"
#include "suite/redfish/graph/graph.h"

namespace devhealth {

/// Whether the places of parts come before their names.
enum class NameOrder { kNameFirst, kPlaceFirst };

/// A part that is to be called by a name which no other one beside it has.
struct Candidate {
  redfish::Uri uri;
  const redfish::json::object* object = nullptr;  ///< Null: unreadable.
  PartClass partClass;
  std::string label;  ///< The label of its place; may be empty.
};

/// The candidate that a part of some class is, with the label of its place
/// (`Location.PartLocation.ServiceLabel`).
Candidate candidateOf(const redfish::Uri& uri,
                      const redfish::json::object* object, PartClass partClass);

/// What a part is called.
struct DisplayName {
  std::string text;
  bool place = false;  ///< It is a label, locator or bay and nothing else.
};

/// The names of all candidates of one table, in their order, so that a person
/// can tell them apart. A part is called by the first of these that is a name
/// (`isName`) and that no other candidate has in the same property: `Name`,
/// label, locator of its class, the bay that a maker states
/// (`Oem.*.BayNumber`); else by `Name`, or the word for its class, and its
/// `Id` (`MemberId`, last segment of its link), of which one that starts with
/// the word for a class stands alone. Those that are still alike get the `Id`
/// of their chassis or system and a slash in front. What cannot be read is
/// called by the last segment of its link.
std::vector<DisplayName> displayNames(const redfish::Graph& graph,
                                      const std::vector<Candidate>& candidates,
                                      NameOrder order = NameOrder::kNameFirst);

/// The `Id` of the chassis or system that a link lies in; the segment of the
/// link where it does not tell. Empty for other links.
std::string holderId(const redfish::Graph& graph, const redfish::Uri& uri);

}  // namespace devhealth
