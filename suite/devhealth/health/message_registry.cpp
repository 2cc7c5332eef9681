#include "suite/devhealth/health/message_registry.h"

#include <boost/json/array.hpp>

#include "suite/base/ascii.h"
#include "suite/base/numbers.h"
#include "suite/redfish/graph/topology.h"

namespace devhealth {
namespace {

namespace json = redfish::json;
using redfish::Uri;

constexpr std::size_t kMaxRegistries = 4;
constexpr std::size_t kMaxFiles = 64;

// How well a registry serves an identifier: -1 not at all, the version asked
// for best, else the higher minor version the better.
int fitness(const json::object& file, const MessageId& id) {
  constexpr int kExact = 1000000;
  for (const std::string_view name : {"Registry", "Id"}) {
    // A registry's name is an identifier without a key: one is added.
    const MessageId registry =
        parseMessageId(std::string(redfish::stringAt(file, name)) + ".Key");
    if (registry.prefix != id.prefix || registry.major != id.major) {
      continue;
    }
    return registry.minor == id.minor
               ? kExact
               : base::parseNumber<int>(registry.minor).value_or(-1);
  }
  return -1;
}

// Where the registry itself is: its location in English, or in the language
// that the service calls its default.
std::optional<Uri> locationOf(const json::object& file) {
  const json::array* locations = redfish::arrayAt(file, "Location");
  if (locations == nullptr) {
    return std::nullopt;
  }
  for (const json::value& value : *locations) {
    const json::object* location = value.if_object();
    if (location == nullptr) {
      continue;
    }
    const std::string_view language = redfish::stringAt(*location, "Language");
    if (!base::startsIgnoringCase(language, "en") &&
        !base::equalIgnoringCase(language, "default")) {
      continue;
    }
    if (auto uri = Uri::parse(redfish::stringAt(*location, "Uri"))) {
      return uri;
    }
  }
  return std::nullopt;
}

}  // namespace

const json::object* MessageRegistries::find(const MessageId& id) {
  if (id.prefix.empty() || id.major.empty() || id.minor.empty()) {
    return nullptr;
  }
  const std::string key = id.prefix + '.' + id.major + '.' + id.minor;
  auto registry = registries_.find(key);
  if (registry == registries_.end()) {
    if (registries_.size() == kMaxRegistries) {
      return nullptr;
    }
    registry = registries_.emplace(key, messagesOf(id)).first;
  }
  if (registry->second == nullptr) {
    return nullptr;
  }
  const json::value* message = registry->second->if_contains(id.key);
  return message == nullptr ? nullptr : message->if_object();
}

const json::object* MessageRegistries::messagesOf(const MessageId& id) {
  const redfish::Resource* root = redfish::serviceRoot(graph_);
  if (root == nullptr) {
    return nullptr;
  }
  const auto link = redfish::linkAt(root->body, "Registries");
  if (!link || !known(*link)) {
    return nullptr;
  }
  const json::object* collection = graph_.resolve(*link).object;
  if (collection == nullptr) {
    return nullptr;
  }

  const json::object* best = nullptr;
  int bestFitness = -1;
  bool waiting = false;
  for (const Uri& file : filesFor(*collection, id)) {
    waiting = !known(file) || waiting;
    const json::object* candidate = graph_.resolve(file).object;
    const int fits = candidate == nullptr ? -1 : fitness(*candidate, id);
    if (fits > bestFitness) {
      best = candidate;
      bestFitness = fits;
    }
  }
  // A better file may be among those to come.
  if (best == nullptr || waiting) {
    return nullptr;
  }
  const auto location = locationOf(*best);
  if (!location || !known(*location)) {
    return nullptr;
  }
  const json::object* registry = graph_.resolve(*location).object;
  return registry == nullptr ? nullptr
                             : redfish::objectAt(*registry, "Messages");
}

std::vector<Uri> MessageRegistries::filesFor(const json::object& collection,
                                             const MessageId& id) const {
  std::vector<Uri> all = redfish::linksAt(collection, "Members");
  std::vector<Uri> named;
  for (const Uri& file : all) {
    if (base::startsIgnoringCase(file.lastSegment(), id.prefix)) {
      named.push_back(file);
    }
  }
  // Services name the files as they like; where the name does not tell, each
  // file has to.
  std::vector<Uri>& files = named.empty() ? all : named;
  if (files.size() > kMaxFiles) {
    files.erase(files.begin() + kMaxFiles, files.end());
  }
  return files;
}

bool MessageRegistries::known(const Uri& link) {
  if (graph_.find(link.document()) != nullptr) {
    return true;
  }
  wanted_.push_back(link);
  return false;
}

}  // namespace devhealth
