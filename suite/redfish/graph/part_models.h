#pragma once

#include <string_view>

#include "suite/redfish/graph/graph.h"
#include "suite/redfish/graph/topology.h"

namespace redfish {

/// The two ways in which a chassis lists one kind of part: the subsystem with
/// a collection of resources, and the older document with an array.
struct PartSchema {
  std::string_view subsystem;   ///< Link of a chassis, and the type behind it.
  std::string_view collection;  ///< Link of the subsystem.
  std::string_view type;        ///< Type of a member.
  std::string_view document;    ///< Link of a chassis, older; also the type.
  std::string_view array;       ///< Array in the document.
  std::string_view locator;     ///< Locator of an entry, for its name.
  std::string_view suppliers;   ///< Links of a system or chassis to chassis or
                                ///< parts elsewhere.
  std::string_view parts;       ///< Links of a chassis to parts.
};

inline constexpr PartSchema kFanSchema = {
    "ThermalSubsystem", "Fans",           "Fan",       "Thermal", "Fans",
    "FanName",          "Links/CooledBy", "Links/Fans"};
inline constexpr PartSchema kPowerSupplySchema = {
    "PowerSubsystem",  "PowerSupplies",      "PowerSupply",
    "Power",           "PowerSupplies",      "",
    "Links/PoweredBy", "Links/PowerSupplies"};

// Whether parts were found in one of the two ways, which decides whether the
// plan falls back to the other. Pure functions of the graph. A part that cannot
// be read counts, because it exists.

/// Whether the subsystem of a chassis lists a part that is there.
bool subsystemHasParts(const Graph& graph, const json::object& chassis,
                       const PartSchema& schema);

/// Whether one of the node's `coolingSources`, or a chassis around the node,
/// has a fan, as far as they were read.
bool hasFans(const Graph& graph, const Node& node);

/// The same for power supplies.
bool hasPowerSupplies(const Graph& graph, const Node& node);

/// Whether any of the links at a path leads to a resource that exists.
bool anyExists(const Graph& graph, const json::object& holder,
               std::string_view path);

/// Whether the collection at a path lists a member that exists. True, too, if
/// the collection cannot be read.
bool anyMemberExists(const Graph& graph, const json::object& holder,
                     std::string_view path);

}  // namespace redfish
