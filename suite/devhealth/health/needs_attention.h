#pragma once

#include <functional>

#include "suite/redfish/graph/graph.h"

namespace devhealth {

/// Calls `use` with the link and the object of each part in a document that
/// needs attention: it has conditions, a health or roll-up other than "OK", the
/// state "Degraded", or a predicted failure. The parts are the document itself
/// and what is inside it, such as the fans of a Thermal document or the
/// redundancy groups of a subsystem, with their places in the document as
/// links. Left out is what the document links, what makers added in their own
/// format, and other resources that came inside it.
void forEachNeedingAttention(
    const redfish::Resource& document,
    const std::function<void(const redfish::Uri&,
                             const redfish::json::object&)>& use);

}  // namespace devhealth
