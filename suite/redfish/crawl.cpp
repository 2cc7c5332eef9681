#include "suite/redfish/crawl.h"

#include <algorithm>
#include <utility>

#include "suite/redfish/answer.h"
#include "suite/redfish/interrupt.h"
#include "suite/redfish/progress.h"
#include "suite/redfish/text.h"
#include "syshealth/host/log.h"

namespace redfish {
namespace {

constexpr std::size_t kMaxResources = 2000;  ///< Asked for in one crawl.
constexpr std::size_t kMaxMembers = 4096;    ///< Of one collection.
constexpr std::size_t kMaxPages = 64;        ///< Of one collection.
/// Connections that fail one after another before the controller is given up.
constexpr int kMaxUnreachable = 3;
constexpr std::chrono::milliseconds kProgressStep{250};
constexpr std::size_t kQuotedLink = 120;  ///< Bytes of it in a message.

std::size_t index(Kind kind) { return static_cast<std::size_t>(kind); }

/// Calls `use` with each kind in a set.
template <typename Use>
void forEachKind(const Knowledge::Kinds& kinds, Use use) {
  for (std::size_t i = 0; i < kinds.size(); ++i) {
    if (kinds.test(i)) use(static_cast<Kind>(i));
  }
}

/// The object at a path of names, to be changed; null where a step is none.
json::value* valueAt(json::object& object, std::string_view path) {
  const std::size_t slash = path.find('/');
  json::value* value = object.if_contains(path.substr(0, slash));
  if (slash == path.npos || value == nullptr) return value;
  json::object* inner = value->if_object();
  return inner == nullptr ? nullptr : valueAt(*inner, path.substr(slash + 1));
}

/// Whether an embedded object is the whole resource rather than a link or an
/// extract: every resource has these properties.
bool isWhole(const json::object& object) {
  return object.contains("@odata.type") && object.contains("Id") &&
         object.contains("Name");
}

/// Takes the collection itself out of its members.
void dropSelf(json::array& members, const std::string& document) {
  members.erase(std::remove_if(members.begin(), members.end(),
                               [&](const json::value& member) {
                                 const auto link = linkOf(member);
                                 return link && link->document() == document;
                               }),
                members.end());
}

bool isWholeCollection(const json::object& object) {
  return object.contains("@odata.type") && object.contains("Members");
}

}  // namespace

Crawl::Crawl(Knowledge& knowledge, Fetcher& fetcher, Session& session,
             std::string address, std::chrono::milliseconds requestTimeout)
    : knowledge_(knowledge),
      fetcher_(fetcher),
      session_(session),
      address_(std::move(address)),
      requestTimeout_(requestTimeout) {}

std::optional<Failure> Crawl::run(const Selection& selection,
                                  Clock::time_point until) {
  selection_ = selection;
  bits_ = planBits(selection.wants);
  thorough_ = (selection.wants & kWantThorough) != 0;
  level_ = knowledge_.levels;
  for (const auto& known : knowledge_.kinds) {
    forEachKind(known.second, [&](Kind kind) { openRules(known.first, kind); });
  }
  for (const Uri& link : selection.extras) ask(link, Kind::kExtra);

  while (!fatal_) {
    evaluate();
    if (pending_.empty()) {
      drained_ = true;
      evaluate();
      drained_ = false;
      if (pending_.empty()) break;
    }
    if (auto fetched = nextAnswer(until)) arrive(std::move(*fetched), until);
  }
  if (fatal_) {
    fetcher_.cancelAll();
    for (const auto& document : underWay_) knowledge_.kinds.erase(document);
    return fatal_;
  }
  return requirementsMet();
}

void Crawl::ask(const Uri& link, Kind kind) {
  const std::string& document = link.document();
  Knowledge::Kinds& kinds = knowledge_.kinds[document];
  if (kinds.test(index(kind))) return;
  kinds.set(index(kind));
  if (knowledge_.graph.find(document) != nullptr) {
    openRules(document, kind);
    return;
  }
  ++waiting_[index(kind)];
  if (!underWay_.insert(document).second) return;
  if (++asked_ > kMaxResources + kMaxMembers) {
    end(fail(FailureKind::kBadContent, "resources without end"));
    return;
  }
  if (asked_ > kMaxResources) {
    Resource resource;
    resource.uri = link;
    resource.state = ResourceState::kUnreadable;
    resource.failure = fail(FailureKind::kBadContent,
                            "more than 2000 resources in one reading");
    resource.failure->uri = link.target();
    admit(std::move(resource));
    return;
  }
  Pending pending;
  pending.uri = link;
  pending.kind = kind;
  pending.level = level_ + 1;
  fetch(std::move(pending));
}

void Crawl::fetch(Pending pending) {
  Fetch request;
  request.target = pending.uri.target();
  request.priority = heightOf(pending.kind);
  request.timeout = requestTimeout_;
  const std::string_view query =
      pending.plain ? std::string_view()
                    : knowledge_.expand.queryFor(pending.kind, bits_);
  pending.expanded = !query.empty();
  if (pending.expanded) {
    request.target += request.target.find('?') == std::string::npos ? '?' : '&';
    request.target += query;
    request.patient = false;  // A refusal is answered by asking plainly.
    request.timeout *= 2;
  }
  pending_.emplace(fetcher_.get(std::move(request)), std::move(pending));
}

void Crawl::fetchAgain(Pending pending) {
  ++pending.level;
  fetch(std::move(pending));
}

void Crawl::follow(const Rule& rule, const Resource& resource) {
  const json::array* links = arrayAt(resource.body, rule.path);
  if (links != nullptr && links->size() > kMaxMembers) {
    spoil(resource.uri.document(), FailureKind::kBadContent,
          "more than 4096 links in " + std::string(rule.path));
    return;
  }
  for (const Uri& link : linksAt(resource.body, rule.path)) {
    ask(link, rule.to);
  }
}

void Crawl::openRules(const std::string& document, Kind kind) {
  for (const Rule& rule : rulesFrom(kind)) {
    if ((rule.wants & bits_) != 0) open_.push_back({document, &rule});
  }
}

void Crawl::evaluate() {
  // What belongs to the node is found out before what hangs on it is decided.
  while (!fatal_ && (evaluatePass(true) || evaluatePass(false))) {
  }
}

bool Crawl::evaluatePass(bool structure) {
  bool decided = false;
  std::vector<Open> work;
  work.swap(open_);
  for (Open& open : work) {
    const bool structural =
        (open.rule->wants & (kPlanChassis | kPlanHealth)) != 0;
    const Resource* resource = knowledge_.graph.find(open.document);
    if (structural != structure) {
      open_.push_back(std::move(open));
      continue;
    }
    if (resource == nullptr || resource->state != ResourceState::kRead) {
      continue;
    }
    const Decision decision = decide(*open.rule, *resource);
    if (decision == Decision::kWait) {
      open_.push_back(std::move(open));
      continue;
    }
    decided = true;
    if (decision == Decision::kEnter) follow(*open.rule, *resource);
  }
  return decided;
}

std::optional<Fetched> Crawl::nextAnswer(Clock::time_point until) {
  while (true) {
    const Clock::time_point now = Clock::now();
    const Clock::time_point wake =
        progress() != nullptr ? std::min(until, now + kProgressStep) : until;
    auto fetched = fetcher_.next(wake);
    if (Progress* observer = progress()) {
      observer->tick(knowledge_.graph.resources().size());
    }
    if (fetched) return fetched;
    if (interrupted()) {
      end(fail(FailureKind::kInterrupted, "interrupted by the user"));
      return std::nullopt;
    }
    if (Clock::now() >= until) {
      Failure failure = fail(FailureKind::kDeadline, "time is up");
      failure.uri = pending_.begin()->second.uri.target();
      failure.remedy =
          "raise --timeout or --deadline, or see why the "
          "controller is slow";
      end(std::move(failure));
      return std::nullopt;
    }
    if (fetcher_.idle()) {
      end(fail(FailureKind::kInternal, "an answer was lost"));
      return std::nullopt;
    }
  }
}

void Crawl::arrive(Fetched fetched, Clock::time_point until) {
  const auto found = pending_.find(fetched.ticket);
  if (found == pending_.end()) return;
  Pending pending = std::move(found->second);
  pending_.erase(found);
  level_ = std::max(level_, pending.level);
  knowledge_.levels = std::max(knowledge_.levels, pending.level);
  if (!reauthorized(fetched, pending, until)) return;

  Resource resource =
      resourceFrom(std::move(fetched.answer), pending.uri, address_);
  if (refusedExpansion(pending, resource)) return;
  countTrouble(resource);
  if (fatal_) return;
  if (!pending.head.empty()) {
    takePage(pending.head, std::move(resource));
  } else {
    admit(std::move(resource));
  }
}

bool Crawl::reauthorized(const Fetched& fetched, const Pending& pending,
                         Clock::time_point until) {
  if (fetched.answer.failure || fetched.answer.status != 401) return true;
  const bool stale = fetched.generation != fetcher_.generation();
  if (!stale) {
    if (!session_.renewable() || renewed_) {
      end(session_.refusal());
      return false;
    }
    renewed_ = true;
    if (auto failure = session_.renew(requestTimeout_, until)) {
      end(std::move(*failure));
      return false;
    }
  }
  fetchAgain(pending);
  return false;
}

bool Crawl::refusedExpansion(const Pending& pending, const Resource& resource) {
  if (!pending.expanded || resource.state == ResourceState::kRead) return false;
  // Busy is no refusal: a plain request would fare no better.
  if (resource.failure && (resource.failure->kind == FailureKind::kBusy ||
                           resource.failure->kind == FailureKind::kForbidden)) {
    return false;
  }
  if (knowledge_.expand.usable()) {
    Tarvex::Log(3, __FILE__, __LINE__).Stream()
        << address_ << ": " << pending.uri.target()
        << ": no answer to $expand, asking plainly from now on";
    knowledge_.expand.giveUp();
  }
  Pending again = pending;
  again.plain = true;
  fetchAgain(std::move(again));
  return true;
}

void Crawl::countTrouble(const Resource& resource) {
  if (!resource.failure) {
    unreachableInRow_ = 0;
    return;
  }
  switch (resource.failure->kind) {
    case FailureKind::kUnreachable:
    case FailureKind::kConnectTimeout:
    case FailureKind::kNameNotResolved:
      if (++unreachableInRow_ >= kMaxUnreachable) end(*resource.failure);
      break;
    case FailureKind::kCertificate:
    case FailureKind::kPasswordChange:
      end(*resource.failure);
      break;
    default:
      unreachableInRow_ = 0;
  }
}

void Crawl::end(Failure failure) {
  failure.cause = session_.scrub(std::move(failure.cause));
  fatal_ = std::move(failure);
}

Failure Crawl::fail(FailureKind kind, std::string cause) const {
  Failure failure;
  failure.kind = kind;
  failure.address = address_;
  failure.cause = std::move(cause);
  return failure;
}

void Crawl::admit(Resource resource) {
  const std::string document = resource.uri.document();
  const Knowledge::Kinds kinds = knowledge_.kinds[document];
  underWay_.erase(document);
  if (resource.failure) {
    resource.failure->cause =
        session_.scrub(std::move(resource.failure->cause));
    Tarvex::Log(1, __FILE__, __LINE__).Stream() << describe(*resource.failure);
  } else if (resource.state == ResourceState::kAbsent) {
    Tarvex::Log(3, __FILE__, __LINE__).Stream()
        << address_ << ": " << resource.uri.target() << ": does not exist";
  }
  Resource& kept = knowledge_.graph.insert(std::move(resource));
  bool collection = false;
  forEachKind(kinds, [&](Kind kind) {
    --waiting_[index(kind)];
    collection = collection || isCollection(kind);
    if (kind == Kind::kSystems || kind == Kind::kSystem ||
        kind == Kind::kChassisCollection || kind == Kind::kChassis ||
        kind == Kind::kManagers || kind == Kind::kManager) {
      node_.reset();
    }
  });
  if (kept.state != ResourceState::kRead) return;
  tellRefusedLinks(kept);
  if (collection) {
    json::value* all = kept.body.if_contains("Members");
    json::array* members = all == nullptr ? nullptr : all->if_array();
    if (members != nullptr && members->size() > kMaxMembers) {
      spoil(document, FailureKind::kBadContent, "more than 4096 members");
      return;
    }
    if (members != nullptr) dropSelf(*members, document);
  }
  forEachKind(kinds, [&](Kind kind) {
    takeExpanded(kept, kind);
    openRules(document, kind);
  });
  if (collection) {
    pages_[document].insert(document);
    askNextPage(document, kept.body);
  }
}

void Crawl::tellRefusedLinks(const Resource& resource) const {
  constexpr std::size_t kMaxTold = 8;
  const auto refused = refusedLinks(resource.body);
  for (std::size_t i = 0; i < std::min(refused.size(), kMaxTold); ++i) {
    Tarvex::Log(1, __FILE__, __LINE__).Stream()
        << address_ << ": " << resource.uri.target()
        << ": refused a link that does not stay below /redfish/: \""
        << session_.scrub(refused[i]) << "\"";
  }
  if (refused.size() > kMaxTold) {
    Tarvex::Log(1, __FILE__, __LINE__).Stream()
        << address_ << ": " << resource.uri.target() << ": refused "
        << refused.size() - kMaxTold << " more links";
  }
}

void Crawl::takeExpanded(Resource& resource, Kind kind) {
  for (const Rule& rule : rulesFrom(kind)) {
    json::value* value = valueAt(resource.body, rule.path);
    if (value == nullptr) continue;
    const auto take = [&](json::value& candidate) {
      json::object* object = candidate.if_object();
      if (object == nullptr ||
          !(isCollection(rule.to) ? isWholeCollection(*object)
                                  : isWhole(*object))) {
        return;
      }
      const auto link = linkOf(candidate);
      if (!link || !link->fragment().empty()) return;
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
      Knowledge::Kinds& kinds = knowledge_.kinds[document];
      forEachKind(kinds, [&](Kind known) { ++waiting_[index(known)]; });
      if (!kinds.test(index(rule.to))) {
        kinds.set(index(rule.to));
        ++waiting_[index(rule.to)];
      }
      admit(std::move(embedded));
    };
    if (json::array* array = value->if_array()) {
      for (json::value& element : *array) take(element);
    } else {
      take(*value);
    }
  }
}

void Crawl::askNextPage(const std::string& head, const json::object& page) {
  const std::string_view text = stringAt(page, "Members@odata.nextLink");
  if (text.empty()) return;
  const auto link = Uri::parse(text);
  if (!link) {
    spoil(head, FailureKind::kRefusedLink, "its next page is not a valid link");
    return;
  }
  auto& seen = pages_[head];
  if (!seen.insert(link->document()).second) return;
  if (seen.size() > kMaxPages) {
    spoil(head, FailureKind::kBadContent, "more than 64 pages");
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
  if (found == nullptr || found->state != ResourceState::kRead) return;
  if (page.state != ResourceState::kRead) {
    spoil(head, page.failure ? page.failure->kind : FailureKind::kBadContent,
          "its page " + page.uri.target() + " cannot be read" +
              (page.failure ? " (" + page.failure->cause + ")" : ""));
    return;
  }
  tellRefusedLinks(page);
  Resource& collection = knowledge_.graph.insert(*found);
  json::array members;
  if (const json::value* more = page.body.if_contains("Members")) {
    if (more->is_array()) members = more->get_array();
    if (more->is_object()) members.push_back(*more);
  }
  if (members.empty()) return;  // An empty page ends the list.
  dropSelf(members, head);
  json::value& all = collection.body["Members"];
  if (!all.is_array()) {
    all = all.is_object() ? json::array{all} : json::array();
  }
  json::array& list = all.get_array();
  if (list.size() + members.size() > kMaxMembers) {
    spoil(head, FailureKind::kBadContent, "more than 4096 members");
    return;
  }
  list.insert(list.end(), members.begin(), members.end());
  node_.reset();
  const Knowledge::Kinds kinds = knowledge_.kinds[head];
  forEachKind(kinds, [&](Kind kind) {
    takeExpanded(collection, kind);
    openRules(head, kind);
  });
  askNextPage(head, page.body);
}

void Crawl::spoil(const std::string& document, FailureKind kind,
                  std::string cause) {
  const Resource* found = knowledge_.graph.find(document);
  if (found == nullptr) return;
  Resource spoilt;
  spoilt.uri = found->uri;
  spoilt.state = ResourceState::kUnreadable;
  spoilt.failure = fail(kind, session_.scrub(std::move(cause)));
  spoilt.failure->uri = spoilt.uri.target();
  Tarvex::Log(1, __FILE__, __LINE__).Stream() << describe(*spoilt.failure);
  knowledge_.graph.insert(std::move(spoilt));
  node_.reset();
}

std::optional<Failure> Crawl::requirementsMet() const {
  const Graph& graph = knowledge_.graph;
  const Resource* root = serviceRoot(graph);
  const auto systemsLink =
      root == nullptr ? std::nullopt : linkAt(root->body, "Systems");
  const std::string_view text =
      root == nullptr ? "" : stringAt(root->body, "Systems/@odata.id");
  if (!systemsLink && !text.empty()) {
    Failure failure =
        fail(FailureKind::kRefusedLink,
             "its link to the systems does not stay below /redfish/: \"" +
                 excerpt(text, kQuotedLink) + '"');
    failure.uri = root->uri.target();
    return failure;
  }
  const Resource* systems =
      systemsLink ? graph.find(systemsLink->document()) : nullptr;
  if (systems == nullptr || systems->state == ResourceState::kAbsent) {
    return fail(FailureKind::kNoSystem, "the service lists no systems");
  }
  if (systems->failure) return systems->failure;

  const auto nodes = eligibleSystems(graph);
  if (nodes.empty()) {
    return fail(FailureKind::kNoSystem, "the service lists no systems");
  }
  if (selection_.nodeIndex >= nodes.size()) {
    return fail(FailureKind::kNoSystem,
                "the service has " + std::to_string(nodes.size()) +
                    " node(s), not " +
                    std::to_string(selection_.nodeIndex + 1));
  }
  const Resource* system = nodes[selection_.nodeIndex];
  if (system != nullptr && system->failure) return system->failure;
  if (system == nullptr || system->state != ResourceState::kRead) {
    Failure failure =
        fail(FailureKind::kNoSystem, "the node's system does not exist");
    if (system != nullptr) failure.uri = system->uri.target();
    return failure;
  }
  return std::nullopt;
}

}  // namespace redfish
