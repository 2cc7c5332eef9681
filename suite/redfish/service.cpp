#include "suite/redfish/service.h"

#include <algorithm>
#include <utility>

#include "suite/base/ascii.h"
#include "suite/base/log.h"
#include "suite/platform/interrupt.h"
#include "suite/platform/last_resort.h"
#include "suite/redfish/crawl/crawl.h"
#include "suite/redfish/session/answer.h"

namespace redfish {
namespace {

constexpr const char* kRootTarget = "/redfish/v1/";

// The root of a service that shows it to nobody without a login, which it
// must not (DSP0266): the standard URIs stand in for it.
json::object standardRoot() {
  const auto link = [](const char* uri) {
    json::object object;
    object["@odata.id"] = uri;
    return object;
  };
  json::object root;
  root["@odata.id"] = kRootTarget;
  root["@odata.type"] = "#ServiceRoot.ServiceRoot";
  root["Systems"] = link("/redfish/v1/Systems");
  root["Chassis"] = link("/redfish/v1/Chassis");
  root["Managers"] = link("/redfish/v1/Managers");
  return root;
}

// Failures after which the run has nothing more to hope for.
bool isLasting(base::FailureKind kind) {
  switch (kind) {
    case base::FailureKind::kAuthentication:
    case base::FailureKind::kPasswordChange:
    case base::FailureKind::kNoCredentials:
    case base::FailureKind::kInterrupted:
      return true;
    default:
      return false;
  }
}

}  // namespace

Service::Service(ServiceOptions options,
                 std::unique_ptr<http::Transport> transport)
    : options_(std::move(options)),
      transport_(std::move(transport)),
      knowledge_(options_.readingBytes),
      fetcher_(*transport_, options_.maxConnections),
      session_(fetcher_, transport_->address(),
               transport_->live() ? options_.user : std::string(),
               std::move(options_.password)) {}

Service::~Service() { close(); }

std::optional<base::Failure> Service::open() {
  if (!opened_) {
    opened_ = true;
    const platform::LastResort watch(watchEnd());
    lost_ = openOnce();
    if (entered_) {
      options_.gate->leave(lost_ ? &*lost_ : nullptr);
    }
    if (lost_) {
      lost_ = session_.scrub(*std::move(lost_));
    }
    readingEnded();
    if (lost_) {
      BRIVEL_LOG(base::kLogError) << base::describe(*lost_);
    }
  }
  return lost_;
}

void Service::readingEnded() const {
  if (options_.progress != nullptr) {
    options_.progress->done();
  }
}

const Probed& Service::probe() {
  if (!probed_) {
    probed_ =
        probeGeneration({open(), graph(), address()}, options_.lan, callEnd());
  }
  return *probed_;
}

std::optional<base::Failure> Service::read(const Selection& selection) {
  if (auto failure = open()) {
    return failure;
  }
  if (!isComplete(selection)) {
    const platform::LastResort watch(watchEnd());
    auto failure = crawl(selection);
    readingEnded();
    if (failure) {
      failure = session_.scrub(*std::move(failure));
      BRIVEL_LOG(base::kLogError) << base::describe(*failure);
      if (isLasting(failure->kind)) {
        lost_ = failure;
      }
      return failure;
    }
  }
  BRIVEL_LOG(base::kLogInformation)
      << address() << ": read "
      << node(selection.nodeIndex).system->uri.target();
  return std::nullopt;
}

std::optional<base::Failure> Service::crawl(const Selection& selection) {
  const std::uint16_t index = selection.nodeIndex;
  Selection whole = selection;
  whole.wants |= options_.prefetch & kWantThorough;
  // Once with all that will be asked for, and after that went well once more,
  // to see that nothing is left.
  if (whole.wants != 0 && (readAhead_.insert(index).second ||
                           (lastCrawl_ && lastCrawl_->nodeIndex == index))) {
    whole.wants |= options_.prefetch;
  }
  const CrawlOptions how = {address(), options_.requestTimeout,
                            options_.progress};
  const std::uint64_t before = graph().changes();
  Crawl crawl(knowledge_, whole, fetcher_, session_, how);
  // Reading ahead leaves the time for what this call itself is for.
  const bool readsAhead = whole.wants != selection.wants;
  lastCrawl_.reset();
  auto failure = crawl.run(callEnd(), readsAhead ? callEnd() : workEnd());
  if (!failure) {
    lastCrawl_ = {index, whole.wants, graph().changes(),
                  graph().changes() == before};
  } else if (failure->kind == base::FailureKind::kDeadline && readsAhead) {
    // What was only read ahead may have taken the time; what this call is for
    // may be there all the same.
    Crawl own(knowledge_, selection, fetcher_, session_, how);
    if (!own.run(base::Clock::now(), workEnd())) {
      failure.reset();
    }
  }
  return failure;
}

bool Service::isComplete(const Selection& selection) const {
  return lastCrawl_ && lastCrawl_->foundNothing &&
         lastCrawl_->nodeIndex == selection.nodeIndex &&
         (selection.wants & ~lastCrawl_->wants) == 0 &&
         lastCrawl_->changes == graph().changes() && selection.extras.empty() &&
         selection.unexplained.empty() && !platform::interrupted() &&
         base::Clock::now() < workEnd();
}

void Service::close() noexcept {
  std::optional<platform::LastResort> watch;
  try {
    watch.emplace(base::Clock::now());
  } catch (...) {
    // The session has to be closed all the same.
  }
  session_.logout();
}

ServiceStats Service::stats() const {
  ServiceStats stats;
  stats.transport = transport_->stats();
  stats.logins = session_.logins();
  stats.logouts = session_.logouts();
  stats.retries = fetcher_.retries();
  stats.levels = knowledge_.levels + (session_.logouts() > 0 ? 1 : 0);
  return stats;
}

std::optional<base::Failure> Service::openOnce() {
  const base::Clock::time_point until = callEnd();
  // Beside the first request, unless others have to be heard before: then only
  // a service that answers gets a password.
  const bool gated =
      session_.wanted() && options_.gate != nullptr && !options_.gate->proven();
  if (!gated) {
    session_.begin(options_.requestTimeout);
  }
  Fetch fetch;
  fetch.target = kRootTarget;
  fetch.timeout = options_.requestTimeout;
  const std::uint64_t ticket = fetcher_.get(std::move(fetch));
  std::optional<http::Answer> root;
  bool loggingIn = session_.wanted() && !gated;
  while (!root || loggingIn) {
    const bool loginOnly = root && session_.loginEnd() < until;
    auto fetched = fetcher_.next(loginOnly ? session_.loginEnd() : until);
    if (!fetched) {
      return loginOnly && !platform::interrupted() ? session_.timeoutFailure()
                                                   : outOfTime(kRootTarget);
    }
    if (session_.accept(*fetched)) {
      loggingIn = false;
    } else if (fetched->ticket == ticket) {
      // No root, no use in waiting for the login; it is undone at the end.
      if (fetched->answer.failure) {
        return std::move(fetched->answer.failure);
      }
      root = std::move(fetched->answer);
      if (gated) {
        if (auto refused = options_.gate->enter(until)) {
          refused->address = address();
          return refused;
        }
        entered_ = true;
        session_.begin(options_.requestTimeout);
        loggingIn = true;
      }
    }
  }
  knowledge_.levels = 1;
  if (auto failure = takeRoot(std::move(*root), until)) {
    return failure;
  }

  const json::object& body = serviceRoot(knowledge_.graph)->body;
  takeFeatures(body);
  if (auto failure = session_.conclude(body, options_.requestTimeout, until)) {
    return failure;
  }
  return session_.basic() ? provePassword(body, until) : std::nullopt;
}

std::optional<base::Failure> Service::provePassword(
    const json::object& root, base::Clock::time_point until) {
  const auto systems = linkAt(root, "Systems");
  if (!systems) {
    return std::nullopt;
  }
  const auto answer = readPlainly(systems->target(), until);
  if (!answer) {
    return outOfTime(systems->target());
  }
  if (answer->status == 401) {
    return session_.unauthorizedFailure();
  }
  return std::nullopt;
}

void Service::takeFeatures(const json::object& root) {
  knowledge_.expand = Expand();
  if (transport_->live()) {
    knowledge_.expand.offer(root);
  }
  const json::value* parallel =
      memberAt(root, "ProtocolFeaturesSupported/MultipleHTTPRequests");
  if (parallel != nullptr && parallel->is_bool() && !parallel->get_bool()) {
    fetcher_.setSerial();
  }
}

std::optional<base::Failure> Service::takeRoot(http::Answer answer,
                                               base::Clock::time_point until) {
  if (answer.status == 404) {
    base::Result<http::Answer> other = readOtherRoot(until);
    if (!other) {
      return other.error();
    }
    answer = *std::move(other);
  }
  base::Result<Resource> root = rootFrom(std::move(answer));
  if (!root) {
    return root.error();
  }
  constexpr std::string_view kType = "#ServiceRoot.";
  if (!base::startsWith(stringAt(root->body, "@odata.type"), kType)) {
    return notRedfish("what it answers is no Redfish service root");
  }
  const std::string_view version = stringAt(root->body, "RedfishVersion");
  if (version.empty()) {
    BRIVEL_LOG(base::kLogInformation)
        << address() << ": the service does not tell its Redfish version, "
        << "taking it for 1.0.0";
  } else if (!base::startsWith(version, "1.")) {
    return notRedfish("its Redfish version is not 1.x");
  }
  knowledge_.kinds[root->uri.document()].set(index(Kind::kRoot));
  knowledge_.graph.insert(*std::move(root));
  return std::nullopt;
}

base::Result<http::Answer> Service::readOtherRoot(
    base::Clock::time_point until) {
  // A service of another version says under /redfish which ones it has.
  const auto versions = readPlainly("/redfish", until);
  if (!versions) {
    return outOfTime("/redfish");
  }
  const auto body = parseSmallObject(versions->body);
  const auto link = body && versions->status == 200
                        ? Uri::parse(stringAt(*body, "v1"))
                        : std::nullopt;
  if (!link) {
    return notRedfish("no Redfish service (404)");
  }
  auto root = readPlainly(link->target(), until);
  if (!root) {
    return outOfTime(link->target());
  }
  if (root->failure) {
    return *std::move(root->failure);
  }
  return *std::move(root);
}

base::Result<Resource> Service::rootFrom(http::Answer answer) {
  const auto uri = Uri::parse(kRootTarget);
  const int status = answer.status;
  if (status == 401 || status == 403) {
    BRIVEL_LOG(base::kLogInformation)
        << address() << ": the service root asks for a login; going on with "
        << "the standard URIs";
    Resource root;
    root.uri = *uri;
    root.state = ResourceState::kRead;
    root.body = standardRoot();
    return root;
  }
  const bool object = answer.body.find('{') != std::string::npos;
  Resource root =
      resourceFrom(std::move(answer), *uri, address(), knowledge_.budget);
  if (root.state == ResourceState::kAbsent) {
    return notRedfish("no Redfish service");
  }
  if (root.state != ResourceState::kUnreadable) {
    return root;
  }
  const bool refused = status >= 400 && status < 500 && status != 429;
  if (refused || (status == 200 && !object)) {
    return notRedfish(root.failure->cause);
  }
  return *std::move(root.failure);
}

base::Failure Service::notRedfish(std::string cause) const {
  base::Failure failure;
  failure.kind = base::FailureKind::kNotRedfish;
  failure.address = address();
  failure.uri = kRootTarget;
  failure.cause = std::move(cause);
  failure.remedy = "is this the address of a management controller?";
  return failure;
}

std::optional<http::Answer> Service::readPlainly(
    const std::string& target, base::Clock::time_point until) {
  Fetch fetch;
  fetch.target = target;
  fetch.timeout = options_.requestTimeout;
  const std::uint64_t ticket = fetcher_.get(std::move(fetch));
  while (auto fetched = fetcher_.next(until)) {
    if (fetched->ticket == ticket) {
      return std::move(fetched->answer);
    }
  }
  return std::nullopt;
}

base::Failure Service::outOfTime(const std::string& target) const {
  base::Failure failure;
  failure.kind = platform::interrupted() ? base::FailureKind::kInterrupted
                                         : base::FailureKind::kDeadline;
  failure.address = address();
  failure.uri = target;
  failure.cause = "interrupted by the user";
  if (!platform::interrupted()) {
    failure.cause = target.empty() ? "time is up" : "no answer in time";
    failure.remedy =
        "raise --timeout or --deadline, or see why the controller is slow";
  }
  return failure;
}

base::Clock::time_point Service::workEnd() const {
  constexpr std::chrono::milliseconds kGrace{500};
  return std::min(options_.deadline, base::Clock::time_point::max() - kGrace) +
         kGrace;
}

base::Clock::time_point Service::watchEnd() const {
  return std::max(base::Clock::now(), workEnd());
}

base::Clock::time_point Service::callEnd() const {
  return std::min(options_.deadline, base::Clock::now() + options_.callTimeout);
}

}  // namespace redfish
