#include "suite/redfish/recorded/stored_answer.h"

#include <algorithm>
#include <boost/json/serialize.hpp>
#include <iterator>

#include "suite/base/ascii.h"
#include "suite/base/text.h"
#include "suite/redfish/graph/json.h"

namespace redfish {
namespace {

using base::FailureKind;

struct KindName {
  FailureKind kind;
  std::string_view name;
};

// What may keep a request from being answered.
constexpr KindName kKinds[] = {
    {FailureKind::kNameNotResolved, "name-not-resolved"},
    {FailureKind::kUnreachable, "unreachable"},
    {FailureKind::kConnectTimeout, "connect-timeout"},
    {FailureKind::kReadTimeout, "read-timeout"},
    {FailureKind::kDeadline, "deadline"},
    {FailureKind::kCertificate, "certificate"},
    {FailureKind::kTls, "tls"},
    {FailureKind::kBadContent, "bad-content"},
    {FailureKind::kRefusedLink, "refused-link"},
    {FailureKind::kFileUnreadable, "file-unreadable"},
    {FailureKind::kInternal, "internal"},
};

std::string_view nameOf(FailureKind kind) {
  const auto known = std::find_if(
      std::begin(kKinds), std::end(kKinds),
      [kind](const KindName& entry) { return entry.kind == kind; });
  return known == std::end(kKinds) ? "internal" : known->name;
}

std::optional<FailureKind> kindNamed(std::string_view name) {
  const auto known = std::find_if(
      std::begin(kKinds), std::end(kKinds),
      [name](const KindName& entry) { return entry.name == name; });
  return known == std::end(kKinds) ? std::nullopt
                                   : std::make_optional(known->kind);
}

std::string fileName(std::string_view stem, std::string_view query) {
  constexpr std::string_view kDigits = "0123456789ABCDEF";
  constexpr std::string_view kAllowed = "$&=,;()+._-~!'@";
  std::string name(stem);
  if (!query.empty()) {
    name += '@';
  }
  for (const char c : query) {
    if (base::isAlphanumeric(c) || kAllowed.find(c) != kAllowed.npos) {
      name += c;
      continue;
    }
    const auto byte = static_cast<unsigned char>(c);
    name += '%';
    name += kDigits[byte >> 4U];
    name += kDigits[byte & 0xFU];
  }
  return name + ".json";
}

}  // namespace

std::string distinctQuery(std::string_view query) {
  std::string distinct;
  while (!query.empty()) {
    const std::string_view part = query.substr(0, query.find('&'));
    query.remove_prefix(std::min(query.size(), part.size() + 1));
    if (!base::startsWith(part, "$expand=") && !part.empty()) {
      distinct += distinct.empty() ? "" : "&";
      distinct += part;
    }
  }
  return distinct;
}

std::string bodyFileName(std::string_view query) {
  return fileName("index", query);
}

std::string answerFileName(std::string_view query) {
  return fileName("answer", query);
}

std::string textOf(const StoredAnswer& answer) {
  json::object object;
  if (answer.failure) {
    object["failure"] = std::string(nameOf(answer.failure->kind));
    object["cause"] = base::cleanText(answer.failure->cause);
    object["remedy"] = base::cleanText(answer.failure->remedy);
  } else {
    object["status"] = answer.status;
    if (!answer.location.empty()) {
      object["location"] = base::cleanText(answer.location);
    }
  }
  return json::serialize(object) + "\n";
}

std::optional<StoredAnswer> parseStoredAnswer(std::string_view text) {
  constexpr int kLeastStatus = 100;
  constexpr int kMostStatus = 599;
  const auto object = parseObject(text);
  if (!object) {
    return std::nullopt;
  }
  StoredAnswer answer;
  if (const auto kind = kindNamed(stringAt(*object, "failure"))) {
    answer.failure = base::Failure{
        *kind, "", "", base::cleanText(stringAt(*object, "cause")),
        base::cleanText(stringAt(*object, "remedy"))};
    return answer;
  }
  const json::value* status = object->if_contains("status");
  if (status == nullptr || !status->is_int64() ||
      status->get_int64() < kLeastStatus || status->get_int64() > kMostStatus) {
    return std::nullopt;
  }
  answer.status = static_cast<int>(status->get_int64());
  answer.location = stringAt(*object, "location");
  return answer;
}

bool isErrorBody(const std::string& body) {
  // Nearly every body is told apart without being parsed.
  if (body.find("\"error\"") == std::string::npos) {
    return false;
  }
  const auto object = parseSmallObject(body);
  return object && object->contains("error") && !object->contains("@odata.id");
}

}  // namespace redfish
