#pragma once

#include <optional>
#include <string>

#include "suite/base/failure.h"
#include "suite/http/transport.h"
#include "suite/redfish/graph/graph.h"

namespace redfish {

/// The resource that the answer to a read gives: read, absent (404, 410, or an
/// error body in place of the resource), or unreadable with the reason.
Resource resourceFrom(http::Answer answer, Uri uri, const std::string& address,
                      ReadingBudget& budget);

/// Whether an error body (DSP0266, error responses) holds a message of this
/// key, whatever its registry and version, such as "PasswordChangeRequired".
bool hasMessageKey(const json::object& body, std::string_view key);

/// The first message of an error body, cleaned and cut; empty without one.
std::string firstMessage(std::string_view body);

}  // namespace redfish
