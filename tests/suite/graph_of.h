#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "suite/redfish/graph/graph.h"

// Graphs for tests, out of small texts or a recorded server.

/// In place of a text: the resource does not exist.
inline constexpr std::string_view kMissing = "404";
/// In place of a text: the resource exists, and the service failed to give it.
inline constexpr std::string_view kBroken = "500";

/// A graph of resources, each a link and its JSON text. A text that is no JSON
/// object fails the test.
redfish::Graph graphOf(
    const std::vector<std::pair<std::string_view, std::string>>& resources);

/// Adds one resource to a graph, or replaces it.
void put(redfish::Graph& graph, std::string_view link, std::string_view text);

/// Everything that a recorded server in a directory holds, in both layouts.
/// Pages of collections are not joined.
redfish::Graph recordedGraph(const std::string& directory);
