#include "suite/devhealth/health/message_id.h"

#include <algorithm>
#include <vector>

#include "suite/base/ascii.h"

namespace devhealth {
namespace {

bool isNumber(std::string_view text) {
  return !text.empty() && std::all_of(text.begin(), text.end(), base::isDigit);
}

std::vector<std::string_view> splitAtDots(std::string_view text) {
  std::vector<std::string_view> parts;
  while (true) {
    const std::size_t dot = text.find('.');
    parts.push_back(text.substr(0, dot));
    if (dot == std::string_view::npos) {
      return parts;
    }
    text.remove_prefix(dot + 1);
  }
}

}  // namespace

MessageId parseMessageId(std::string_view text) {
  const std::vector<std::string_view> parts = splitAtDots(text);
  MessageId id;
  id.key = parts.back();
  std::size_t version = 1;
  while (version < parts.size() && !isNumber(parts[version])) {
    ++version;
  }
  // What stands before the version, or before the key where there is none, is
  // the prefix; makers put dots into it.
  const std::size_t end = std::min(version, parts.size() - 1);
  for (std::size_t index = 0; index < end; ++index) {
    if (index > 0) {
      id.prefix += '.';
    }
    id.prefix += parts[index];
  }
  if (version + 1 < parts.size()) {
    id.major = parts[version];
    if (isNumber(parts[version + 1])) {
      id.minor = parts[version + 1];
    }
  }
  return id;
}

bool isPointer(const MessageId& id) {
  return id.key == "ConditionInRelatedResource";
}

}  // namespace devhealth
