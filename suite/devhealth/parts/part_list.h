#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "suite/devhealth/parts/display_name.h"
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

  /// The names of all parts, absent ones included.
  const NameCounts& names() const { return names_; }

 private:
  void add(Part part);

  std::vector<Part> parts_;
  NameCounts names_;
  std::unordered_set<std::string> seen_;
};

/// A list, and why it could not be had although the service links it.
struct LinkedList {
  PartList list;
  std::optional<base::Failure> failure;
};

/// The members of the collection that an object links at a path. Empty, and
/// no failure, when there is no link or no such collection.
LinkedList membersAt(const redfish::Graph& graph,
                     const redfish::json::object& holder,
                     std::string_view path);

/// The entries of an array of a document that was read: their links are the
/// document's with the place as fragment.
PartList entriesAt(const redfish::Resource& document, std::string_view array);

/// The names among which the name of a part must be unique, for parts that are
/// met one by one. Counts each list once.
class SiblingNames {
 public:
  explicit SiblingNames(const redfish::Graph& graph) : graph_(graph) {}

  /// The names in the array that a link points into, or of all that was read
  /// beside its document.
  const NameCounts& of(const redfish::Uri& uri);

 private:
  const redfish::Graph& graph_;
  std::unordered_map<std::string, NameCounts> counts_;
};

/// The failure that stands for a document: its own, or that it was never
/// read.
base::Failure failureOf(const redfish::Uri& uri, const base::Failure* failure);

}  // namespace devhealth
