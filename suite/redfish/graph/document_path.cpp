#include "suite/redfish/graph/document_path.h"

#include <algorithm>

namespace redfish {

bool liesWithin(std::string_view document, std::string_view holder) {
  if (holder.empty() || document.substr(0, holder.size()) != holder) {
    return false;
  }
  return document.size() == holder.size() || document[holder.size()] == '/';
}

std::string_view parentOf(std::string_view document) {
  const std::size_t slash = document.rfind('/');
  return document.substr(0, slash == std::string_view::npos ? 0 : slash);
}

std::string_view segmentOf(std::string_view document, unsigned int index) {
  std::string_view rest = document;
  for (unsigned int skipped = 0;; ++skipped) {
    if (rest.empty() || rest.front() != '/') {
      return {};
    }
    rest.remove_prefix(1);
    const std::string_view segment = rest.substr(0, rest.find('/'));
    if (skipped == index) {
      return segment;
    }
    rest.remove_prefix(segment.size());
  }
}

}  // namespace redfish
