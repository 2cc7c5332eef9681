#include "suite/redfish/graph/graph.h"

#include <algorithm>
#include <boost/json/array.hpp>
#include <boost/json/value.hpp>
#include <utility>

#include "suite/base/numbers.h"
#include "suite/base/time_limit.h"

namespace redfish {
namespace {

// Undoes the two escapes of a reference token: "~1" is a slash, "~0" a tilde
// (RFC 6901, section 4). Returns nullopt if a tilde stands for neither.
std::optional<std::string> unescape(std::string_view token) {
  std::string name;
  name.reserve(token.size());
  for (std::size_t index = 0; index < token.size(); ++index) {
    if (token[index] != '~') {
      name += token[index];
      continue;
    }
    if (++index == token.size()) {
      return std::nullopt;
    }
    if (token[index] != '0' && token[index] != '1') {
      return std::nullopt;
    }
    name += token[index] == '0' ? '~' : '/';
  }
  return name;
}

const json::value* elementAt(const json::array& array, std::string_view token) {
  if (token.size() > 1 && token.front() == '0') {
    return nullptr;
  }
  const auto index = base::parseNumber<std::size_t>(token);
  return index ? array.if_contains(*index) : nullptr;
}

const json::value* memberOf(const json::object& object,
                            std::string_view token) {
  const std::optional<std::string> name = unescape(token);
  return name ? object.if_contains(*name) : nullptr;
}

const json::value* childOf(const json::value& parent, std::string_view token) {
  if (const json::array* array = parent.if_array()) {
    return elementAt(*array, token);
  }
  const json::object* object = parent.if_object();
  return object == nullptr ? nullptr : memberOf(*object, token);
}

// Takes the first reference token off a pointer, with its slash; nullopt if
// the pointer does not start with one.
std::optional<std::string_view> takeToken(std::string_view& pointer) {
  if (pointer.empty() || pointer.front() != '/') {
    return std::nullopt;
  }
  pointer.remove_prefix(1);
  const std::string_view token = pointer.substr(0, pointer.find('/'));
  pointer.remove_prefix(token.size());
  return token;
}

// The object that a JSON pointer leads to; null where it leads nowhere or to
// something else.
const json::object* pointAt(const json::object& document,
                            std::string_view pointer) {
  if (pointer.empty()) {
    return &document;
  }
  const std::optional<std::string_view> first = takeToken(pointer);
  const json::value* value = first ? memberOf(document, *first) : nullptr;
  while (value != nullptr && !pointer.empty()) {
    const std::optional<std::string_view> token = takeToken(pointer);
    value = token ? childOf(*value, *token) : nullptr;
  }
  return value == nullptr ? nullptr : value->if_object();
}

}  // namespace

Resource& Graph::insert(Resource resource) {
  ++changes_;
  std::string key = resource.uri.document();
  return resources_.insert_or_assign(std::move(key), std::move(resource))
      .first->second;
}

Resource* Graph::edit(std::string_view document) {
  ++changes_;
  const auto found = resources_.find(document);
  return found == resources_.end() ? nullptr : &found->second;
}

const Resource* Graph::find(std::string_view document) const {
  base::heedTime();
  const auto found = resources_.find(document);
  return found == resources_.end() ? nullptr : &found->second;
}

const Resource* Graph::findRead(std::string_view document) const {
  const Resource* found = find(document);
  return isRead(found) ? found : nullptr;
}

LinkTarget Graph::resolve(const Uri& link) const {
  LinkTarget found;
  found.document = find(link.document());
  if (found.document != nullptr &&
      found.document->state == ResourceState::kRead) {
    found.object = pointAt(found.document->body, link.fragment());
  }
  return found;
}

LinkTarget Graph::follow(const json::object& holder,
                         std::string_view path) const {
  const std::optional<Uri> link = linkAt(holder, path);
  return link ? resolve(*link) : LinkTarget{};
}

std::vector<const Resource*> readLinks(const Graph& graph,
                                       const Resource& holder,
                                       std::string_view path) {
  std::vector<const Resource*> found;
  for (const Uri& link : linksAt(holder.body, path)) {
    if (const Resource* resource = graph.findRead(link.document())) {
      found.push_back(resource);
    }
  }
  return found;
}

bool linksTo(const Resource& holder, std::string_view path,
             const Resource& wanted) {
  return anyLinkAt(holder.body, path, [&wanted](const Uri& link) {
    return link.document() == wanted.uri.document();
  });
}

}  // namespace redfish
