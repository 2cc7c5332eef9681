#pragma once

#include <cstddef>
#include <string_view>

#include "suite/base/result.h"

namespace redfish {

/// Objects and arrays inside one another.
constexpr std::size_t kMaxJsonDepth = 64;

/// Values of one document. A parsed value takes up to fifty times the room
/// of its text, so that a body within the size limit could still exhaust a
/// small machine: so many take 45 MiB at most. Real documents, registries
/// included, stay below a tenth. An empty object or array counts twice.
constexpr std::size_t kMaxJsonValues = 500000;

/// Members of one object: bounds the time of a lookup when all their names
/// hash alike.
constexpr std::size_t kMaxJsonMembers = 20000;

/// The number of values in a JSON text, or somewhat more. Fails with
/// `kBadContent` if the text has more values, or an object with more members,
/// than the limits above. Looks at the structure only: the parser finds out
/// whether the text is JSON.
base::Result<std::size_t> countJsonValues(std::string_view text);

}  // namespace redfish
