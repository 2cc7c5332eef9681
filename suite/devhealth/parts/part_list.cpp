#include "suite/devhealth/parts/part_list.h"

#include <algorithm>
#include <boost/json/array.hpp>
#include <utility>

#include "suite/base/time_limit.h"

namespace devhealth {

namespace json = redfish::json;
using redfish::Graph;
using redfish::Resource;
using redfish::ResourceState;
using redfish::Uri;

namespace {

// Whether a value is a link that is refused; an empty text is none at all.
bool isRefused(const json::value& value) {
  const json::object* reference = value.if_object();
  return reference != nullptr && redfish::isRefusedLink(value) &&
         !redfish::stringAt(*reference, "@odata.id").empty();
}

base::Failure refusal(const json::object& holder, const std::string& what) {
  base::Failure failure;
  failure.kind = base::FailureKind::kRefusedLink;
  if (const auto own = Uri::parse(redfish::stringAt(holder, "@odata.id"))) {
    failure.uri = own->target();
  }
  failure.cause = what + " does not stay below /redfish/";
  return failure;
}

}  // namespace

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
    result.refused = refusedLinksAt(collection->body, "Members");
  }
  return result;
}

std::optional<base::Failure> refusedLinkAt(const json::object& holder,
                                           std::string_view path) {
  const json::value* reference = redfish::memberAt(holder, path);
  if (reference == nullptr || !isRefused(*reference)) {
    return std::nullopt;
  }
  return refusal(holder, "its link to " + std::string(path));
}

RefusedLinks refusedLinksAt(const json::object& holder, std::string_view path) {
  RefusedLinks refused;
  const auto count = [&](const json::value& entry) {
    base::heedTime();
    if (isRefused(entry) && refused.count++ == 0) {
      refused.first = refusal(holder, "a link in " + std::string(path));
    }
  };
  const json::value* value = redfish::memberAt(holder, path);
  if (value == nullptr) {
    return refused;
  }
  if (const json::array* entries = value->if_array()) {
    std::for_each(entries->begin(), entries->end(), count);
  } else {
    count(*value);
  }
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
