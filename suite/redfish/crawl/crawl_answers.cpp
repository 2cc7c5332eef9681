// What a crawl makes of the answers: repeats, failures, resources.
#include <algorithm>
#include <utility>

#include "suite/base/log.h"
#include "suite/redfish/crawl/crawl.h"
#include "suite/redfish/session/answer.h"

namespace redfish {
namespace {

// Connections that fail one after another before the controller is given up.
constexpr int kMaxUnreachable = 3;

}  // namespace

void Crawl::arrive(FetchResult fetched, base::Clock::time_point until) {
  const auto found = pending_.find(fetched.ticket);
  if (found == pending_.end()) {
    return;
  }
  Pending pending = std::move(found->second);
  pending_.erase(found);
  level_ = std::max(level_, pending.level);
  knowledge_.levels = std::max(knowledge_.levels, pending.level);
  if (!reauthorized(fetched, pending, until)) {
    return;
  }

  Resource resource = resourceFrom(std::move(fetched.answer), pending.uri,
                                   options_.address, knowledge_.budget);
  if (refusedExpansion(pending, resource)) {
    return;
  }
  countTrouble(resource);
  if (fatal_) {
    return;
  }
  if (!pending.head.empty()) {
    takePage(pending.head, std::move(resource));
  } else {
    admit(std::move(resource));
  }
}

bool Crawl::reauthorized(const FetchResult& fetched, const Pending& pending,
                         base::Clock::time_point until) {
  if (fetched.answer.failure || fetched.answer.status != 401) {
    return true;
  }
  const bool stale = fetched.generation != fetcher_.generation();
  if (!stale) {
    if (!session_.renewable() || renewed_) {
      end(session_.unauthorizedFailure());
      return false;
    }
    renewed_ = true;
    if (auto failure = session_.renew(options_.requestTimeout, until)) {
      end(std::move(*failure));
      return false;
    }
  }
  fetchAgain(pending);
  return false;
}

bool Crawl::refusedExpansion(const Pending& pending, const Resource& resource) {
  if (!pending.expanded || resource.state == ResourceState::kRead) {
    return false;
  }
  // Busy is no refusal: a plain request would fare no better.
  if (resource.failure &&
      (resource.failure->kind == base::FailureKind::kBusy ||
       resource.failure->kind == base::FailureKind::kForbidden)) {
    return false;
  }
  if (knowledge_.expand.usable()) {
    BRIVEL_LOG(base::kLogInformation)
        << options_.address << ": " << pending.uri.target()
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
    case base::FailureKind::kUnreachable:
    case base::FailureKind::kConnectTimeout:
    case base::FailureKind::kNameNotResolved:
      if (++unreachableInRow_ >= kMaxUnreachable) {
        end(*resource.failure);
      }
      break;
    case base::FailureKind::kCertificate:
    case base::FailureKind::kPasswordChange:
      end(*resource.failure);
      break;
    default:
      unreachableInRow_ = 0;
  }
}

void Crawl::admit(Resource resource) {
  const std::string document = resource.uri.document();
  const KindSet kinds = knowledge_.kinds[document];
  underWay_.erase(document);
  if (resource.failure) {
    resource.failure = session_.scrub(*std::move(resource.failure));
    BRIVEL_LOG(base::kLogError) << base::describe(*resource.failure);
  } else if (resource.state == ResourceState::kAbsent) {
    BRIVEL_LOG(base::kLogInformation)
        << options_.address << ": " << resource.uri.target()
        << ": does not exist";
  }
  Resource& kept = knowledge_.graph.insert(std::move(resource));
  bool collection = false;
  forEachKind(kinds, [&](Kind kind) {
    --state_.waiting[index(kind)];
    collection = collection || isCollection(kind);
  });
  policy_.changed(kinds);
  if (kept.state != ResourceState::kRead) {
    return;
  }
  if ((collection && !takeMembers(kept)) || !checkLinks(kept) ||
      (collection && !checkMembers(document, kept.body))) {
    return;
  }
  setNestedAside(kept, document);
  forEachKind(kinds, [&](Kind kind) { openRules(document, kind); });
  if (collection) {
    pages_[document].insert(document);
    askNextPage(document, kept.body);
  }
}

void Crawl::logRefusedLinks(const Resource& resource,
                            const LinkReport& report) const {
  for (const std::string& refused : report.refused) {
    BRIVEL_LOG(base::kLogError)
        << options_.address << ": " << resource.uri.target()
        << ": refused a link that does not stay below /redfish/: \""
        << session_.scrub(refused) << "\"";
  }
  if (report.refusedCount > report.refused.size()) {
    BRIVEL_LOG(base::kLogError)
        << options_.address << ": " << resource.uri.target() << ": refused "
        << report.refusedCount - report.refused.size() << " more links";
  }
}

bool Crawl::checkLinks(const Resource& resource) {
  const LinkReport report = surveyLinks(resource.body);
  logRefusedLinks(resource, report);
  if (report.longList.empty()) {
    return true;
  }
  markUnreadable(resource.uri.document(), base::FailureKind::kBadContent,
                 "more than " + std::to_string(kMaxLinks) + " links in " +
                     report.longList);
  return false;
}

}  // namespace redfish
