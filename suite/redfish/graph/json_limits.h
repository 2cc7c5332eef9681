#pragma once

#include <cstddef>
#include <string_view>

#include "suite/base/result.h"

namespace redfish {

/// Most levels of objects and arrays inside one another.
constexpr std::size_t kMaxJsonDepth = 64;

/// Most values of one document, which take up to 45 MiB. A parsed value takes
/// up to fifty times the memory of its text, so the limit of a body's size
/// would not protect a small machine. Real documents, registries included, stay
/// below a tenth. An empty object or array counts twice.
constexpr std::size_t kMaxJsonValues = 500000;

/// Most members of one object. Limits the time of a lookup when all their names
/// have the same hash.
constexpr std::size_t kMaxJsonMembers = 20000;

/// The number of values in a JSON text, or somewhat more. Fails with
/// `kBadContent` if the text has more values, or an object with more members,
/// than the limits above. Looks at the structure only: the parser finds out
/// whether the text is JSON.
base::Result<std::size_t> countJsonValues(std::string_view text);

}  // namespace redfish
