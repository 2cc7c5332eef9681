// The members of collections: checked, expanded, and in pages.
#include <algorithm>
#include <utility>

#include "suite/base/log.h"
#include "suite/redfish/crawl/crawl.h"

namespace redfish {
namespace {

constexpr std::size_t kMaxPages = 64;  // Of one collection.

// Whether an object says that it is of the type of a resource, whose schema has
// its name ("#Fan.v1_5_0.Fan"), and not of a part of one
// ("#Thermal.v1_7_0.Fan", DSP0266).
bool isOfResourceType(const json::object& object) {
  std::string_view type = stringAt(object, "@odata.type");
  type.remove_prefix(std::min<std::size_t>(1, type.size()));
  const std::string_view schema = type.substr(0, type.find('.'));
  return !schema.empty() && schema == type.substr(type.rfind('.') + 1);
}

// Whether an embedded object is the whole resource rather than a link or an
// extract: every resource has these properties.
bool isWhole(const json::object& object) {
  return isOfResourceType(object) && object.contains("Id") &&
         object.contains("Name");
}

bool isWholeCollection(const json::object& object) {
  return isOfResourceType(object) && object.contains("Members");
}

// The document that a nested object is, when it is a whole one and another
// than that around it.
std::optional<Uri> nestedDocument(const json::value& value,
                                  const std::string& around) {
  const json::object* object = value.if_object();
  if (object == nullptr || !(isWhole(*object) || isWholeCollection(*object))) {
    return std::nullopt;
  }
  std::optional<Uri> link = linkOf(value);
  if (!link || !link->fragment().empty() || link->document() == around) {
    return std::nullopt;
  }
  return link;
}

// Calls `use` with each whole document inside an object, its link and its
// value. What makers add in their own format belongs to the object.
template <typename Use>
void forEachNested(json::object& object, const std::string& around,
                   const Use& use);

template <typename Use>
void forEachNested(json::value& value, const std::string& around,
                   const Use& use) {
  if (const auto link = nestedDocument(value, around)) {
    use(*link, value);
  } else if (json::object* object = value.if_object()) {
    forEachNested(*object, around, use);
  } else if (json::array* array = value.if_array()) {
    for (json::value& entry : *array) {
      forEachNested(entry, around, use);
    }
  }
}

template <typename Use>
void forEachNested(json::object& object, const std::string& around,
                   const Use& use) {
  for (auto& member : object) {
    if (member.key() != "Oem") {
      forEachNested(member.value(), around, use);
    }
  }
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

// How many of the members in a page are refused links, where none can be
// followed; else 0.
std::size_t refusedMembers(const json::object& page) {
  const json::value* members = page.if_contains("Members");
  if (members == nullptr || anyLinkAt(page, "Members", anyLink)) {
    return 0;
  }
  const json::array* all = members->if_array();
  if (all == nullptr) {
    return isRefusedLink(*members) ? 1 : 0;
  }
  return static_cast<std::size_t>(
      std::count_if(all->begin(), all->end(), isRefusedLink));
}

}  // namespace

bool Crawl::checkMembers(const std::string& head, const json::object& page) {
  const std::size_t refused = refusedMembers(page);
  if (refused == 0) {
    return true;
  }
  markUnreadable(head, base::FailureKind::kRefusedLink,
                 refused == 1
                     ? "the link of its only member leaves /redfish/"
                     : "the links of all its " + std::to_string(refused) +
                           " members leave /redfish/");
  return false;
}

std::string Crawl::tooManyMembers() {
  return "more than " + std::to_string(kMaxMembers) + " members";
}

bool Crawl::takeMembers(Resource& collection) {
  const std::string document = collection.uri.document();
  json::value* all = collection.body.if_contains("Members");
  json::array* members = all == nullptr ? nullptr : all->if_array();
  if (members == nullptr) {
    return true;
  }
  if (members->size() > kMaxMembers) {
    markUnreadable(document, base::FailureKind::kBadContent, tooManyMembers());
    return false;
  }
  dropSelf(*members, document);
  return true;
}

void Crawl::setNestedAside(Resource& resource, const std::string& around) {
  forEachNested(resource.body, around,
                [this](const Uri& link, json::value& value) {
                  json::object reference;
                  reference["@odata.id"] = link.target();
                  const std::string& document = link.document();
                  if (knowledge_.graph.find(document) == nullptr &&
                      underWay_.count(document) == 0) {
                    Resource nested;
                    nested.uri = link;
                    nested.state = ResourceState::kRead;
                    nested.body = std::move(value.get_object());
                    knowledge_.nested.emplace(document, std::move(nested));
                  }
                  value = std::move(reference);
                });
}

void Crawl::askNextPage(const std::string& head, const json::object& page) {
  const std::string_view text = stringAt(page, "Members@odata.nextLink");
  if (text.empty()) {
    return;
  }
  const auto link = Uri::parse(text);
  if (!link) {
    markUnreadable(head, base::FailureKind::kRefusedLink,
                   "its next page is not a valid link");
    return;
  }
  auto& seen = pages_[head];
  if (!seen.insert(link->document()).second) {
    return;
  }
  if (seen.size() > kMaxPages) {
    markUnreadable(head, base::FailureKind::kBadContent,
                   "more than " + std::to_string(kMaxPages) + " pages");
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
    markUnreadable(
        head,
        page.failure ? page.failure->kind : base::FailureKind::kBadContent,
        "its page " + page.uri.target() + " cannot be read" +
            (page.failure ? " (" + page.failure->cause + ")" : ""));
    return;
  }
  logRefusedLinks(page, surveyLinks(page.body));
  if (!checkMembers(head, page.body)) {
    return;
  }
  Resource& collection = *knowledge_.graph.edit(head);
  setNestedAside(page, head);
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
    markUnreadable(head, base::FailureKind::kBadContent, tooManyMembers());
    return;
  }
  list.insert(list.end(), members.begin(), members.end());
  const KindSet kinds = knowledge_.kinds[head];
  policy_.changed(kinds);
  forEachKind(kinds, [&](Kind kind) { openRules(head, kind); });
  askNextPage(head, page.body);
}

void Crawl::markUnreadable(const std::string& document, base::FailureKind kind,
                           std::string cause) {
  const Resource* found = knowledge_.graph.find(document);
  if (found == nullptr) {
    return;
  }
  Resource unreadable;
  unreadable.uri = found->uri;
  unreadable.state = ResourceState::kUnreadable;
  unreadable.failure = fail(kind, session_.scrub(std::move(cause)));
  unreadable.failure->uri = unreadable.uri.target();
  BRIVEL_LOG(base::kLogError) << base::describe(*unreadable.failure);
  knowledge_.graph.insert(std::move(unreadable));
  policy_.changed(knowledge_.kinds[document]);
}

}  // namespace redfish
