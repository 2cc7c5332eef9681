#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "suite/redfish/graph/graph.h"

namespace devhealth {

/// One part that a service lists: a member of a collection, an entry of an
/// array inside a document, or what a single link leads to. Its pointers obey
/// the graph's rules.
struct Part {
  redfish::Uri uri;
  const redfish::json::object* object = nullptr;  ///< Null: unreadable.
  const base::Failure* failure = nullptr;         ///< Why; null: never read.
};

/// Parts in the order served, each place once. Those that do not exist are
/// left out.
class PartList {
 public:
  /// Adds what a link leads to.
  void addLinked(const redfish::Graph& graph, const redfish::Uri& link);

  /// Adds an entry of an array inside a document.
  void addEntry(const redfish::Uri& uri, const redfish::json::object& entry);

  const std::vector<Part>& parts() const { return parts_; }

  /// Adds a part of another list.
  void add(Part part);

 private:
  std::vector<Part> parts_;
  std::unordered_set<std::string> seen_;
};

/// Links that do not stay below /redfish/, so that nobody knows what is behind
/// them.
struct RefusedLinks {
  std::size_t count = 0;
  base::Failure first;  ///< Where the first of them stands, if there is one.
};

/// A list, or why it could not be read although the service links it.
struct LinkedList {
  PartList list;
  std::optional<base::Failure> failure;
  RefusedLinks refused;  ///< Of its members, which the list lacks.
};

/// The members of the collection that an object links at a path. Empty without
/// a failure if there is no link or no such collection. A refused link is a
/// failure.
LinkedList membersAt(const redfish::Graph& graph,
                     const redfish::json::object& holder,
                     std::string_view path);

/// The failure of a refused link at a path of an object; nullopt if the link is
/// good or there is none.
std::optional<base::Failure> refusedLinkAt(const redfish::json::object& holder,
                                           std::string_view path);

/// The refused ones among the links at a path of an object: the entries of an
/// array, or a single link. Empty texts are no links.
RefusedLinks refusedLinksAt(const redfish::json::object& holder,
                            std::string_view path);

/// The entries of an array of a document that was read: their links are the
/// document's with the place as fragment.
PartList entriesAt(const redfish::Resource& document, std::string_view array);

/// Why a document was not read: its own failure, or that nobody asked for it.
base::Failure failureOf(const redfish::Uri& uri, const base::Failure* failure);

}  // namespace devhealth
