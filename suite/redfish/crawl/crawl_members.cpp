// The members of collections: checked, expanded, and in pages.
#include <algorithm>
#include <utility>

#include "suite/redfish/crawl/crawl.h"
#include "suite/redfish/crawl/kind_set.h"
#include "syshealth/host/log.h"

namespace redfish {
namespace {

constexpr std::size_t kMaxPages = 64;  // Of one collection.

// The object at a path of names, to be changed; null where a step is none.
json::value* valueAt(json::object& object, std::string_view path) {
  const std::size_t slash = path.find('/');
  json::value* value = object.if_contains(path.substr(0, slash));
  if (slash == path.npos || value == nullptr) {
    return value;
  }
  json::object* inner = value->if_object();
  return inner == nullptr ? nullptr : valueAt(*inner, path.substr(slash + 1));
}

// Whether an embedded object is the whole resource rather than a link or an
// extract: every resource has these properties.
bool isWhole(const json::object& object) {
  return object.contains("@odata.type") && object.contains("Id") &&
         object.contains("Name");
}

bool isWholeCollection(const json::object& object) {
  return object.contains("@odata.type") && object.contains("Members");
}

// Takes the collection itself out of its members.
void dropSelf(json::array& members, const std::string& document) {
  members.erase(std::remove_if(members.begin(), members.end(),
                               [&](const json::value& member) {
                                 const auto link = linkOf(member);
                                 return link && link->document() == document;
                               }),
                members.end());
}

}  // namespace

bool Crawl::takeMembers(Resource& collection) {
  const std::string document = collection.uri.document();
  json::value* all = collection.body.if_contains("Members");
  json::array* members = all == nullptr ? nullptr : all->if_array();
  if (members == nullptr) {
    return true;
  }
  if (members->size() > kMaxMembers) {
    spoil(document, base::FailureKind::kBadContent, "more than 4096 members");
    return false;
  }
  dropSelf(*members, document);
  return true;
}

void Crawl::takeExpanded(Resource& resource, Kind kind) {
  for (const Rule& rule : rulesFrom(kind)) {
    json::value* value = valueAt(resource.body, rule.path);
    if (value == nullptr) {
      continue;
    }
    const auto take = [&](json::value& candidate) {
      json::object* object = candidate.if_object();
      if (object == nullptr ||
          !(isCollection(rule.to) ? isWholeCollection(*object)
                                  : isWhole(*object))) {
        return;
      }
      const auto link = linkOf(candidate);
      if (!link || !link->fragment().empty()) {
        return;
      }
      const std::string& document = link->document();
      if (document == resource.uri.document() ||
          knowledge_.graph.find(document) != nullptr ||
          underWay_.count(document) > 0) {
        return;
      }
      Resource embedded;
      embedded.uri = *link;
      embedded.state = ResourceState::kRead;
      embedded.body = std::move(*object);
      json::object reference;
      reference["@odata.id"] = link->target();
      candidate = std::move(reference);
      KindSet& kinds = knowledge_.kinds[document];
      forEachKind(kinds, [&](Kind known) { ++waiting_[index(known)]; });
      if (!kinds.test(index(rule.to))) {
        kinds.set(index(rule.to));
        ++waiting_[index(rule.to)];
      }
      admit(std::move(embedded));
    };
    if (json::array* array = value->if_array()) {
      for (json::value& element : *array) {
        take(element);
      }
    } else {
      take(*value);
    }
  }
}

void Crawl::askNextPage(const std::string& head, const json::object& page) {
  const std::string_view text = stringAt(page, "Members@odata.nextLink");
  if (text.empty()) {
    return;
  }
  const auto link = Uri::parse(text);
  if (!link) {
    spoil(head, base::FailureKind::kRefusedLink,
          "its next page is not a valid link");
    return;
  }
  auto& seen = pages_[head];
  if (!seen.insert(link->document()).second) {
    return;
  }
  if (seen.size() > kMaxPages) {
    spoil(head, base::FailureKind::kBadContent, "more than 64 pages");
    return;
  }
  Pending pending;
  pending.uri = *link;
  pending.level = level_ + 1;
  pending.head = head;
  pending.plain = true;
  fetch(std::move(pending));
}

void Crawl::takePage(const std::string& head, Resource page) {
  const Resource* found = knowledge_.graph.find(head);
  if (found == nullptr || found->state != ResourceState::kRead) {
    return;
  }
  if (page.state != ResourceState::kRead) {
    spoil(head,
          page.failure ? page.failure->kind : base::FailureKind::kBadContent,
          "its page " + page.uri.target() + " cannot be read" +
              (page.failure ? " (" + page.failure->cause + ")" : ""));
    return;
  }
  tellRefusedLinks(page);
  Resource& collection = knowledge_.graph.insert(*found);
  json::array members;
  if (const json::value* more = page.body.if_contains("Members")) {
    if (more->is_array()) {
      members = more->get_array();
    }
    if (more->is_object()) {
      members.push_back(*more);
    }
  }
  if (members.empty()) {
    return;  // An empty page ends the list.
  }
  dropSelf(members, head);
  json::value& all = collection.body["Members"];
  if (!all.is_array()) {
    all = all.is_object() ? json::array{all} : json::array();
  }
  json::array& list = all.get_array();
  if (list.size() + members.size() > kMaxMembers) {
    spoil(head, base::FailureKind::kBadContent, "more than 4096 members");
    return;
  }
  list.insert(list.end(), members.begin(), members.end());
  node_.reset();
  const KindSet kinds = knowledge_.kinds[head];
  forEachKind(kinds, [&](Kind kind) {
    takeExpanded(collection, kind);
    openRules(head, kind);
  });
  askNextPage(head, page.body);
}

void Crawl::spoil(const std::string& document, base::FailureKind kind,
                  std::string cause) {
  const Resource* found = knowledge_.graph.find(document);
  if (found == nullptr) {
    return;
  }
  Resource spoilt;
  spoilt.uri = found->uri;
  spoilt.state = ResourceState::kUnreadable;
  spoilt.failure = fail(kind, session_.scrub(std::move(cause)));
  spoilt.failure->uri = spoilt.uri.target();
  Tarvex::Log(1, __FILE__, __LINE__).Stream()
      << base::describe(*spoilt.failure);
  knowledge_.graph.insert(std::move(spoilt));
  node_.reset();
}

}  // namespace redfish
