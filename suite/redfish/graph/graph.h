#pragma once

#include <boost/json/object.hpp>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "suite/base/failure.h"
#include "suite/redfish/graph/json.h"
#include "suite/redfish/graph/uri.h"

namespace redfish {

/// What became of a resource that was asked for.
enum class ResourceState {
  kRead,       ///< `body` holds it.
  kAbsent,     ///< 404, 410 or a stored error body: it does not exist.
  kUnreadable  ///< It exists, but could not be read; `failure` says why.
};

/// One document of the service. A collection that came in pages is one
/// resource whose "Members" holds the members of all its pages in order;
/// members that came with content (expanded) are resources of their own, and
/// only their links remain in the collection.
struct Resource {
  Uri uri;
  ResourceState state = ResourceState::kAbsent;
  json::object body;                     ///< Empty unless read.
  std::optional<base::Failure> failure;  ///< Set when unreadable.

  /// Why it could not be read; null where there is no reason.
  const base::Failure* why() const { return failure ? &*failure : nullptr; }
};

/// Whether there is a resource, and its document was read.
inline bool isRead(const Resource* resource) {
  return resource != nullptr && resource->state == ResourceState::kRead;
}

/// What a link leads to inside the graph.
struct LinkTarget {
  const Resource* document = nullptr;    ///< Null: never asked for.
  const json::object* object = nullptr;  ///< The document's body, or the part
                                         ///< that the fragment points at; null
                                         ///< when unread or not an object.
};

/// The resources of one service that a run has asked for, by document key.
/// References stay valid until the resource is replaced or the graph dies.
class Graph {
 public:
  /// Adds a resource, or replaces the one of the same document.
  Resource& insert(Resource resource);

  /// The resource of a document key, for changes that are made at once; null:
  /// never asked for.
  Resource* edit(std::string_view document);

  /// The resource of a document key (`Uri::document`); null: never asked for.
  const Resource* find(std::string_view document) const;

  /// The resource of a document key if it was read; null otherwise.
  const Resource* findRead(std::string_view document) const;

  /// How often resources were added, replaced or given out to be changed: where
  /// it is the same as before, so is the graph.
  std::uint64_t changes() const { return changes_; }

  /// What a link leads to.
  LinkTarget resolve(const Uri& link) const;

  /// What the link at a path of an object leads to. Both pointers are null if
  /// there is no link.
  LinkTarget follow(const json::object& holder, std::string_view path) const;

  const std::map<std::string, Resource, std::less<>>& resources() const {
    return resources_;
  }

 private:
  std::map<std::string, Resource, std::less<>> resources_;
  std::uint64_t changes_ = 0;
};

/// The resources that the links at a path of a resource lead to, in the order
/// served, without those that were not read.
std::vector<const Resource*> readLinks(const Graph& graph,
                                       const Resource& holder,
                                       std::string_view path);

/// Whether one of the links at a path of a resource leads to another.
bool linksTo(const Resource& holder, std::string_view path,
             const Resource& wanted);

}  // namespace redfish
