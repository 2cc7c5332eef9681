#pragma once

#include <functional>
#include <string>

namespace redfish {

/// Calls `use` with each resource that stands whole inside the body of another
/// one, as $expand brings them: its path and query, and its own body, in which
/// further ones are links again. A body that is no JSON object has none.
void forEachNestedDocument(
    const std::string& body,
    const std::function<void(const std::string& target,
                             const std::string& body)>& use);

}  // namespace redfish
