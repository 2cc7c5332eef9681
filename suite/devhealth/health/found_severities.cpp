#include "suite/devhealth/health/found_severities.h"

#include <algorithm>

#include "suite/redfish/graph/document_path.h"

namespace devhealth {

using redfish::Health;

namespace {

// Places below so many segments are not distinguished: twice as many as the
// deepest resource of the schemas has.
constexpr int kMaxSegments = 24;

// The start of a key, of so many segments at most.
std::string_view top(std::string_view document) {
  std::size_t end = 0;
  for (int segments = 0; segments < kMaxSegments; ++segments) {
    end = document.find('/', end + 1);
    if (end == std::string_view::npos) {
      return document;
    }
  }
  return document.substr(0, end);
}

}  // namespace

void FoundSeverities::add(const redfish::Uri& origin, Health severity) {
  std::string_view pointer = origin.fragment();
  while (!pointer.empty()) {
    raise(origin.document() + '#' + std::string(pointer), severity);
    pointer = redfish::parentOf(pointer);
  }
  raise(origin.document(), severity);
  std::string_view document = top(origin.document());
  while (!document.empty()) {
    raise(document, severity);
    document = redfish::parentOf(document);
  }
}

void FoundSeverities::raise(std::string_view place, Health severity) {
  Health& worst = worst_[std::string(place)];
  worst = std::max(worst, severity);
}

Health FoundSeverities::worstWithin(const std::string& identity) const {
  const auto found = worst_.find(identity);
  return found == worst_.end() ? Health::kUnknown : found->second;
}

}  // namespace devhealth
