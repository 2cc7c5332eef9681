#pragma once

#include <string>
#include <vector>

#include "check/status.h"
#include "check/verdict.h"

namespace check {

/// The worst status of all nodes; kUnknown if there are none.
Status statusOf(const std::vector<Verdict>& verdicts);

/// What a plug-in prints, by the Monitoring Plugins' guidelines: a line with
/// status, text and performance data, then details. Of one node the details
/// are its findings and gaps; of several, one line for each node, the worst
/// first. Each line ends with a line end. Texts have no "|", ";" or control
/// characters, and are cut to 400 bytes.
std::string pluginOutput(std::vector<Verdict> verdicts);

/// A plug-in's whole output for a run that got nowhere, or a further line.
std::string unknownLine(const std::string& text);

}  // namespace check
