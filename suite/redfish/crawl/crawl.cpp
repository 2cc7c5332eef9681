#include "suite/redfish/crawl/crawl.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "suite/base/text.h"
#include "suite/base/time_limit.h"
#include "suite/platform/interrupt.h"
#include "suite/redfish/graph/topology.h"

namespace redfish {
namespace {

constexpr std::size_t kMaxResources = 2000;  // Asked for in one crawl.
constexpr std::chrono::milliseconds kProgressStep{250};
constexpr std::size_t kQuotedLink = 120;  // Bytes of it in a message.
// How many waiting links may be looked at again for one answer.
constexpr std::size_t kLooksPerAnswer = 256;

}  // namespace

Crawl::Crawl(ServiceKnowledge& knowledge, Selection selection, Fetcher& fetcher,
             Session& session, CrawlOptions options)
    : knowledge_(knowledge),
      selection_(std::move(selection)),
      fetcher_(fetcher),
      session_(session),
      options_(std::move(options)),
      policy_(knowledge_, selection_, state_) {}

std::optional<base::Failure> Crawl::run(base::Clock::time_point until,
                                        base::Clock::time_point workEnd) {
  level_ = knowledge_.levels;
  try {
    const base::TimeLimit limit(workEnd);
    readAll(until);
  } catch (const base::OutOfTime&) {
    end(platform::interrupted() ? interrupted() : outOfTime());
  }
  if (fatal_) {
    fetcher_.cancelAll();
    for (const auto& document : underWay_) {
      knowledge_.kinds.erase(document);
    }
    return fatal_;
  }
  return requirementsMet();
}

void Crawl::readAll(base::Clock::time_point until) {
  for (const auto& known : knowledge_.kinds) {
    forEachKind(known.second, [&](Kind kind) { openRules(known.first, kind); });
  }
  for (const Uri& link : selection_.extras) {
    ask(link, Kind::kExtra);
  }

  while (!fatal_) {
    credit_ += kLooksPerAnswer;
    evaluate(false);
    if (pending_.empty()) {
      evaluate(true);
    }
    if (pending_.empty()) {
      state_.drained = true;
      evaluate(true);
      state_.drained = false;
      if (pending_.empty()) {
        break;
      }
    }
    if (auto fetched = nextAnswer(until)) {
      arrive(std::move(*fetched), until);
    }
  }
}

void Crawl::ask(const Uri& link, Kind kind) {
  const std::string& document = link.document();
  KindSet& kinds = knowledge_.kinds[document];
  if (kinds.test(index(kind))) {
    return;
  }
  kinds.set(index(kind));
  if (knowledge_.graph.find(document) != nullptr) {
    openRules(document, kind);
    return;
  }
  ++state_.waiting[index(kind)];
  if (const auto nested = knowledge_.nested.find(document);
      nested != knowledge_.nested.end()) {
    Resource resource = std::move(nested->second);
    knowledge_.nested.erase(nested);
    admit(std::move(resource));
    return;
  }
  if (!underWay_.insert(document).second || !isWithinLimit(link)) {
    return;
  }
  Pending pending;
  pending.uri = link;
  pending.kind = kind;
  pending.level = level_ + 1;
  fetch(std::move(pending));
}

bool Crawl::isWithinLimit(const Uri& link) {
  if (++asked_ <= kMaxResources) {
    return true;
  }
  if (asked_ > kMaxResources + kMaxMembers) {
    end(fail(base::FailureKind::kBadContent, "resources without end"));
    return false;
  }
  Resource resource;
  resource.uri = link;
  resource.state = ResourceState::kUnreadable;
  resource.failure = fail(base::FailureKind::kBadContent,
                          "more than " + std::to_string(kMaxResources) +
                              " resources in one reading");
  resource.failure->uri = link.target();
  admit(std::move(resource));
  return false;
}

void Crawl::fetch(Pending pending) {
  Fetch request;
  request.target = pending.uri.target();
  request.priority = heightOf(pending.kind);
  request.timeout = options_.requestTimeout;
  const std::string_view query =
      pending.plain ? std::string_view()
                    : knowledge_.expand.queryFor(pending.kind, policy_.bits());
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
  // Of a collection that came in pages only the latest are new.
  std::size_t& followed = followed_[{&rule, resource.uri.document()}];
  const json::array* list = arrayAt(resource.body, rule.path);
  for (const Uri& link : linksAt(resource.body, rule.path, followed)) {
    ask(link, rule.to);
  }
  followed = list == nullptr ? 0 : list->size();
}

void Crawl::openRules(const std::string& document, Kind kind) {
  const Resource* const resource = knowledge_.graph.find(document);
  if (resource == nullptr) {
    return;
  }
  for (const Rule& rule : rulesFrom(kind)) {
    if ((rule.wants & policy_.bits()) != 0) {
      (isStructural(rule) ? structural_ : others_)
          .fresh.push_back({resource, &rule});
    }
  }
}

// Looks at new links at once. Looks at waiting ones again when nothing is under
// way, and before that after every answer while they are few, or after several
// answers while they are many: else the work would grow with the square of the
// number of chassis.
void Crawl::evaluate(bool all) {
  // What belongs to the node is found out before what hangs on it is decided.
  while (!fatal_ &&
         (evaluatePass(structural_, all) || evaluatePass(others_, all))) {
  }
}

bool Crawl::evaluatePass(OpenLinks& open, bool all) {
  std::vector<Open> work;
  if (all || open.waiting.size() <= credit_) {
    credit_ -= std::min(credit_, open.waiting.size());
    work.swap(open.waiting);
  }
  std::move(open.fresh.begin(), open.fresh.end(), std::back_inserter(work));
  open.fresh.clear();
  bool decided = false;
  for (const Open& one : work) {
    base::heedTime();
    if (one.resource->state != ResourceState::kRead) {
      continue;
    }
    const Decision decision = policy_.decide(*one.rule, *one.resource);
    if (decision == Decision::kWait) {
      open.waiting.push_back(one);
      continue;
    }
    decided = true;
    if (decision == Decision::kEnter) {
      follow(*one.rule, *one.resource);
    }
  }
  return decided;
}

std::optional<FetchResult> Crawl::nextAnswer(base::Clock::time_point until) {
  while (true) {
    const base::Clock::time_point now = base::Clock::now();
    const base::Clock::time_point wake =
        options_.progress != nullptr ? std::min(until, now + kProgressStep)
                                     : until;
    auto fetched = fetcher_.next(wake);
    if (options_.progress != nullptr) {
      options_.progress->tick(knowledge_.graph.resources().size());
    }
    if (fetched) {
      return fetched;
    }
    if (platform::interrupted()) {
      end(interrupted());
      return std::nullopt;
    }
    if (base::Clock::now() >= until) {
      end(outOfTime());
      return std::nullopt;
    }
    if (fetcher_.idle()) {
      end(fail(base::FailureKind::kInternal, "an answer was lost"));
      return std::nullopt;
    }
  }
}

base::Failure Crawl::interrupted() const {
  return fail(base::FailureKind::kInterrupted, "interrupted by the user");
}

base::Failure Crawl::outOfTime() const {
  base::Failure failure = fail(base::FailureKind::kDeadline, "time is up");
  if (!pending_.empty()) {
    failure.uri = pending_.begin()->second.uri.target();
  }
  failure.remedy =
      "raise --timeout or --deadline, or see why the "
      "controller is slow";
  return failure;
}

void Crawl::end(base::Failure failure) {
  failure.cause = session_.scrub(std::move(failure.cause));
  fatal_ = std::move(failure);
}

base::Failure Crawl::fail(base::FailureKind kind, std::string cause) const {
  base::Failure failure;
  failure.kind = kind;
  failure.address = options_.address;
  failure.cause = std::move(cause);
  return failure;
}

std::optional<base::Failure> Crawl::requirementsMet() const {
  const Graph& graph = knowledge_.graph;
  const Resource* root = serviceRoot(graph);
  const auto systemsLink =
      root == nullptr ? std::nullopt : linkAt(root->body, "Systems");
  const std::string_view text =
      root == nullptr ? "" : stringAt(root->body, "Systems/@odata.id");
  if (!systemsLink && !text.empty()) {
    base::Failure failure =
        fail(base::FailureKind::kRefusedLink,
             "its link to the systems does not stay below /redfish/: \"" +
                 base::excerpt(text, kQuotedLink) + '"');
    failure.uri = root->uri.target();
    return failure;
  }
  const Resource* systems =
      systemsLink ? graph.find(systemsLink->document()) : nullptr;
  if (systems == nullptr || systems->state == ResourceState::kAbsent) {
    return fail(base::FailureKind::kNoSystem, "the service lists no systems");
  }
  if (systems->failure) {
    return systems->failure;
  }

  const std::vector<NodeSystems>& nodes = knowledge_.nodes.topology().nodes();
  if (nodes.empty()) {
    return fail(base::FailureKind::kNoSystem, "the service lists no systems");
  }
  if (selection_.nodeIndex >= nodes.size()) {
    return fail(base::FailureKind::kNoSystem,
                "the service has " + std::to_string(nodes.size()) +
                    " node(s), not " +
                    std::to_string(selection_.nodeIndex + 1));
  }
  const Resource* system = nodes[selection_.nodeIndex].front();
  if (system != nullptr && system->failure) {
    return system->failure;
  }
  if (system == nullptr || system->state != ResourceState::kRead) {
    base::Failure failure =
        fail(base::FailureKind::kNoSystem, "the node's system does not exist");
    if (system != nullptr) {
      failure.uri = system->uri.target();
    }
    return failure;
  }
  return std::nullopt;
}

}  // namespace redfish
