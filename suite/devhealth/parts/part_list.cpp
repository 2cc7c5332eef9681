#include "suite/devhealth/parts/part_list.h"

#include <boost/json/array.hpp>
#include <utility>

namespace devhealth {

namespace json = redfish::json;
using redfish::Graph;
using redfish::Resource;
using redfish::ResourceState;
using redfish::Uri;

void PartList::addLinked(const Graph& graph, const Uri& link) {
  const redfish::LinkTarget found = graph.resolve(link);
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
  parts_.push_back(std::move(part));
}

LinkedList membersAt(const Graph& graph, const json::object& holder,
                     std::string_view path) {
  LinkedList result;
  const std::optional<Uri> link = redfish::linkAt(holder, path);
  if (!link) {
    result.failure = refusedLinkAt(holder, path);
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

std::optional<base::Failure> refusedLinkAt(const json::object& holder,
                                           std::string_view path) {
  const json::object* reference = redfish::objectAt(holder, path);
  const std::string_view link =
      reference == nullptr ? "" : redfish::stringAt(*reference, "@odata.id");
  if (link.empty() || Uri::parse(link)) {
    return std::nullopt;
  }
  base::Failure refused;
  refused.kind = base::FailureKind::kRefusedLink;
  if (const auto own = Uri::parse(redfish::stringAt(holder, "@odata.id"))) {
    refused.uri = own->target();
  }
  refused.cause =
      "its link to " + std::string(path) + " does not stay below /redfish/";
  return refused;
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
