#pragma once

#include <functional>

#include "suite/redfish/graph/graph.h"

namespace devhealth {

/// Calls `use` with the link and the object of everything in a document that
/// has a Status worth a look: conditions, a health or roll-up other than "OK",
/// the state "Degraded", or a predicted failure. That is the document itself
/// and the parts inside it, such as the fans of a Thermal document or the
/// redundancy groups of a subsystem, each told by its place in the document;
/// not what it links, not what makers added in their own format, and no other
/// resource that came along inside it.
void forEachNeedingAttention(
    const redfish::Resource& document,
    const std::function<void(const redfish::Uri&,
                             const redfish::json::object&)>& use);

}  // namespace devhealth
