#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "suite/base/progress.h"
#include "suite/redfish/crawl/crawl_state.h"
#include "suite/redfish/crawl/knowledge.h"
#include "suite/redfish/crawl/link_policy.h"
#include "suite/redfish/crawl/plan.h"
#include "suite/redfish/crawl/selection.h"
#include "suite/redfish/graph/graph.h"
#include "suite/redfish/session/fetcher.h"
#include "suite/redfish/session/session.h"

namespace redfish {

/// What a crawl needs beside its services.
struct CrawlOptions {
  std::string address;  ///< Of the service, for messages.
  std::chrono::milliseconds requestTimeout;
  base::Progress* progress = nullptr;  ///< Notified of each answer, if any.
};

/// One reading of a service: follows the links that the plan names, starting
/// from all that is known already. Every answer starts the next requests at
/// once. Links of which `LinkPolicy` cannot tell yet whether they are needed
/// wait for the answer that decides; fall-backs wait until nothing else is
/// under way. Runs once.
class Crawl {
 public:
  /// All that is passed by reference has to outlive the crawl.
  Crawl(ServiceKnowledge& knowledge, Selection selection, Fetcher& fetcher,
        Session& session, CrawlOptions options);

  Crawl(const Crawl&) = delete;
  Crawl& operator=(const Crawl&) = delete;

  /// Reads what the selection needs. Waits for answers until `until`, and works
  /// on them until `workEnd`, at the latest. Returns nullopt on success: root,
  /// Systems and the selected node were read. On failure the graph keeps what
  /// came, and later crawls ask again for the rest.
  std::optional<base::Failure> run(base::Clock::time_point until,
                                   base::Clock::time_point workEnd);

 private:
  /// Most members of one collection.
  static constexpr std::size_t kMaxMembers = kMaxLinks;

  /// A resource under way.
  struct Pending {
    Uri uri;
    Kind kind = Kind::kExtra;
    std::uint64_t level = 1;
    bool plain = false;     ///< Must be asked for without its members.
    bool expanded = false;  ///< Was asked for with its members.
    std::string head;       ///< For a page: the collection that it belongs to.
  };

  /// A row of the plan that is not decided yet for a resource.
  struct Open {
    const Resource* resource;  ///< Of the graph, which keeps its place.
    const Rule* rule;
  };

  /// The links that tell what belongs to a node, or all the others.
  struct OpenLinks {
    std::vector<Open> fresh;    ///< Not looked at yet.
    std::vector<Open> waiting;  ///< For what is still to come.
  };

  void readAll(base::Clock::time_point until);

  // Going from link to link.
  void ask(const Uri& link, Kind kind);
  /// Whether there is room for one more resource; if not, it is unreadable.
  bool isWithinLimit(const Uri& link);
  void fetch(Pending pending);
  void fetchAgain(Pending pending);
  void follow(const Rule& rule, const Resource& resource);
  void openRules(const std::string& document, Kind kind);
  void evaluate(bool all);
  bool evaluatePass(OpenLinks& open, bool all);

  // Taking answers in.
  std::optional<FetchResult> nextAnswer(base::Clock::time_point until);
  void arrive(FetchResult fetched, base::Clock::time_point until);
  bool reauthorized(const FetchResult& fetched, const Pending& pending,
                    base::Clock::time_point until);
  bool refusedExpansion(const Pending& pending, const Resource& resource);
  void admit(Resource resource);
  void logRefusedLinks(const Resource& resource,
                       const LinkReport& report) const;
  /// Logs refused links; false when a list of links is too long, so that the
  /// resource is unreadable.
  bool checkLinks(const Resource& resource);
  /// Checks a collection's members; false when there are too many of them.
  bool takeMembers(Resource& collection);
  /// False when all links of members in a page are refused, so that the
  /// collection, whose first page is `head`, is unreadable and not empty.
  bool checkMembers(const std::string& head, const json::object& page);
  /// Moves the resources inside another one to `ServiceKnowledge::nested` and
  /// leaves links in their places. `around` is the key of the document; for a
  /// page, that of the collection.
  void setNestedAside(Resource& resource, const std::string& around);
  void takePage(const std::string& head, Resource page);
  void askNextPage(const std::string& head, const json::object& page);
  void markUnreadable(const std::string& document, base::FailureKind kind,
                      std::string cause);
  void countTrouble(const Resource& resource);
  void end(base::Failure failure);

  std::optional<base::Failure> requirementsMet() const;
  static std::string tooManyMembers();
  base::Failure fail(base::FailureKind kind, std::string cause) const;
  base::Failure interrupted() const;
  base::Failure outOfTime() const;

  ServiceKnowledge& knowledge_;
  Selection selection_;
  Fetcher& fetcher_;
  Session& session_;
  CrawlOptions options_;

  CrawlState state_;
  LinkPolicy policy_;
  bool renewed_ = false;     ///< Has logged in again, which it does once.
  std::uint64_t level_ = 0;  ///< Of the answer being taken in.
  std::size_t asked_ = 0;
  int unreachableInRow_ = 0;
  std::optional<base::Failure> fatal_;
  OpenLinks structural_;
  OpenLinks others_;
  std::size_t credit_ = 0;  ///< Waiting links that may be looked at again.
  /// Entries of a list that were followed, by rule and document.
  std::map<std::pair<const Rule*, std::string>, std::size_t> followed_;
  std::map<std::uint64_t, Pending> pending_;  ///< By ticket.
  std::set<std::string> underWay_;            ///< Their document keys.
  std::map<std::string, std::set<std::string>> pages_;  ///< Seen, by head.
};

}  // namespace redfish
