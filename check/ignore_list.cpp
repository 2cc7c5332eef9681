#include "check/ignore_list.h"

#include <algorithm>

#include "suite/base/ascii.h"
#include "suite/report/words.h"

namespace check {
namespace {

bool isSame(std::string_view left, std::string_view right) {
  return std::equal(
      left.begin(), left.end(), right.begin(), right.end(),
      [](char a, char b) { return base::lower(a) == base::lower(b); });
}

// Whether a path is that of a resource or of one below it.
bool isBelow(std::string_view path, std::string_view resource) {
  while (!resource.empty() && resource.back() == '/') {
    resource.remove_suffix(1);
  }
  return !resource.empty() && base::startsWith(path, resource) &&
         (path.size() == resource.size() || path[resource.size()] == '/' ||
          path[resource.size()] == '#');
}

// "InputLost" of "PowerAlerts.1.0.InputLost".
std::string_view keyOf(std::string_view messageId) {
  return messageId.substr(messageId.rfind('.') + 1);
}

bool covers(std::string_view entry, const Finding& finding) {
  return isSame(entry, wordFor(finding.category)) ||
         isSame(entry, finding.messageId) ||
         isSame(entry, keyOf(finding.messageId)) ||
         isBelow(finding.origin, entry);
}

std::string_view withoutBlanks(std::string_view text) {
  const std::size_t first = text.find_first_not_of(" \t");
  return first == std::string_view::npos
             ? std::string_view()
             : text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

}  // namespace

IgnoreList::IgnoreList(std::string_view list) {
  while (true) {
    const std::size_t comma = std::min(list.find(','), list.size());
    const std::string_view entry = withoutBlanks(list.substr(0, comma));
    if (!entry.empty()) {
      entries_.emplace_back(entry);
    }
    if (comma == list.size()) {
      return;
    }
    list.remove_prefix(comma + 1);
  }
}

bool IgnoreList::covers(const Finding& finding) const {
  return std::any_of(
      entries_.begin(), entries_.end(),
      [&](const std::string& entry) { return check::covers(entry, finding); });
}

}  // namespace check
