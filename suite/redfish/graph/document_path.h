#pragma once

#include <string>
#include <string_view>

#include "suite/base/time_limit.h"

namespace redfish {

// How documents lie below one another, from their keys (`Uri::document`).

/// Whether a document is `holder` itself or lies anywhere below its path.
bool liesWithin(std::string_view document, std::string_view holder);

/// The key without its last segment. Empty for a key of one segment.
std::string_view parentOf(std::string_view document);

/// Whether a document is one of `holders`, a set of texts, or lies somewhere
/// below the path of one.
template <typename Holders>
bool liesWithinAny(std::string_view document, const Holders& holders) {
  for (; !document.empty(); document = parentOf(document)) {
    base::heedTime();
    if (holders.count(std::string(document)) > 0) {
      return true;
    }
  }
  return false;
}

/// The n-th segment of the path, 0-based: 0 is "redfish", 1 the version, 2 the
/// first name below the service root. Empty where there is none.
std::string_view segmentOf(std::string_view document, unsigned int index);

}  // namespace redfish
