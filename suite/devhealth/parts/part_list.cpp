#include "suite/devhealth/parts/part_list.h"

#include <boost/json/array.hpp>
#include <utility>

#include "suite/redfish/graph/document_path.h"

namespace devhealth {

namespace json = redfish::json;
using redfish::Graph;
using redfish::Resource;
using redfish::ResourceState;
using redfish::Uri;

namespace {

// Counts what was read directly below a folder.
void addNamesOfDocuments(const Graph& graph, std::string_view folder,
                         NameCounts& names) {
  for (auto entry = graph.resources().lower_bound(folder);
       entry != graph.resources().end() &&
       entry->first.compare(0, folder.size(), folder) == 0;
       ++entry) {
    if (redfish::parentOf(entry->first) == folder) {
      names.add(entry->second.body);
    }
  }
}

// Counts the entries of an array, told by its JSON pointer ("/Fans").
void addNamesOfEntries(const json::object& document, std::string_view pointer,
                       NameCounts& names) {
  if (pointer.empty()) {
    return;
  }
  const json::array* entries = redfish::arrayAt(document, pointer.substr(1));
  if (entries == nullptr) {
    return;
  }
  for (const json::value& value : *entries) {
    if (const json::object* entry = value.if_object()) {
      names.add(*entry);
    }
  }
}

}  // namespace

void PartList::addLinked(const Graph& graph, const Uri& link) {
  const redfish::Found found = graph.resolve(link);
  if (found.document == nullptr) {
    add({link, nullptr, nullptr});
  } else if (found.document->state == ResourceState::kUnreadable) {
    add({link, nullptr, found.document->why()});
  } else if (found.object != nullptr) {
    add({link, found.object, nullptr});
  }
}

void PartList::addEntry(const Uri& uri, const json::object& entry) {
  add({uri, &entry, nullptr});
}

void PartList::add(Part part) {
  if (!seen_.insert(part.uri.identity()).second) {
    return;
  }
  if (part.object != nullptr) {
    names_.add(*part.object);
  }
  parts_.push_back(std::move(part));
}

LinkedList membersAt(const Graph& graph, const json::object& holder,
                     std::string_view path) {
  LinkedList result;
  const std::optional<Uri> link = redfish::linkAt(holder, path);
  if (!link) {
    return result;
  }
  const Resource* collection = graph.find(link->document());
  if (collection == nullptr) {
    result.failure = failureOf(*link, nullptr);
  } else if (collection->state == ResourceState::kUnreadable) {
    result.failure = failureOf(*link, collection->why());
  } else {
    for (const Uri& member : redfish::linksAt(collection->body, "Members")) {
      result.list.addLinked(graph, member);
    }
  }
  return result;
}

PartList entriesAt(const Resource& document, std::string_view array) {
  PartList list;
  const json::array* entries = redfish::arrayAt(document.body, array);
  if (entries == nullptr) {
    return list;
  }
  const std::string prefix =
      document.uri.document() + "#/" + std::string(array) + "/";
  for (std::size_t index = 0; index < entries->size(); ++index) {
    const json::object* entry = (*entries)[index].if_object();
    const std::optional<Uri> uri = Uri::parse(prefix + std::to_string(index));
    if (entry != nullptr && uri) {
      list.addEntry(*uri, *entry);
    }
  }
  return list;
}

const NameCounts& SiblingNames::of(const Uri& uri) {
  const std::string_view pointer = uri.fragment();
  const std::string_view folder = redfish::parentOf(uri.document());
  const std::string_view array = redfish::parentOf(pointer);
  std::string key = pointer.empty() ? std::string(folder)
                                    : uri.document() + '#' + std::string(array);
  const auto [entry, isNew] = counts_.try_emplace(std::move(key));
  NameCounts& names = entry->second;
  if (!isNew) {
    return names;
  }
  if (pointer.empty()) {
    addNamesOfDocuments(graph_, folder, names);
  } else if (const Resource* document = graph_.find(uri.document())) {
    addNamesOfEntries(document->body, array, names);
  }
  return names;
}

base::Failure failureOf(const Uri& uri, const base::Failure* failure) {
  if (failure != nullptr) {
    return *failure;
  }
  base::Failure unread;
  unread.kind = base::FailureKind::kBadContent;
  unread.uri = uri.target();
  unread.cause = "the resource was not read";
  return unread;
}

}  // namespace devhealth
