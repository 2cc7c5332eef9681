#include "suite/redfish/session/fetcher.h"

#include <algorithm>
#include <thread>
#include <utility>

#include "suite/base/log.h"
#include "suite/base/text.h"
#include "suite/platform/interrupt.h"
#include "suite/redfish/session/redirect.h"
#include "suite/redfish/session/retry_after.h"

namespace redfish {
namespace {

constexpr int kMaxOverloads = 3;
constexpr int kMaxRedirects = 3;
constexpr std::size_t kMaxLocation = 200;  // Bytes of it in a message.
constexpr std::chrono::milliseconds kServerErrorDelay{1000};
// HTTP/2 carries all requests over one connection; controllers are small.
constexpr int kMaxHttp2Streams = 8;
// Good answers in a row before one more request goes out at a time.
constexpr int kGoodInRow = 16;

// Waits when nothing is under way; false if the user interrupts.
bool sleepUntil(base::Clock::time_point until) {
  constexpr std::chrono::milliseconds kSlice{50};
  while (base::Clock::now() < until) {
    if (platform::interrupted()) {
      return false;
    }
    std::this_thread::sleep_until(std::min(until, base::Clock::now() + kSlice));
  }
  return true;
}

bool isRedirect(int status) {
  return status == 301 || status == 302 || status == 303 || status == 307 ||
         status == 308;
}

}  // namespace

Fetcher::Fetcher(http::Transport& transport, int maxConnections)
    : transport_(transport),
      maxConnections_(std::max(1, maxConnections)),
      limit_(maxConnections_) {}

void Fetcher::authorize(Authorization authorization) {
  authorization_ = std::move(authorization);
  ++generation_;
}

void Fetcher::nameInLog(std::function<std::string(std::string)> name) {
  nameInLog_ = std::move(name);
}

std::uint64_t Fetcher::get(Fetch fetch) {
  Job job;
  job.ticket = ++lastTicket_;
  const int priority = fetch.priority;
  job.fetch = std::move(fetch);
  queue_[priority].push_back(std::move(job));
  return lastTicket_;
}

std::uint64_t Fetcher::send(http::Request request) {
  const std::uint64_t ticket = ++lastTicket_;
  sends_[transport_.start(std::move(request))] = ticket;
  return ticket;
}

std::optional<FetchResult> Fetcher::next(base::Clock::time_point until) {
  // Looked at for every answer: with a recorded server there always is one, and
  // what is made of answers may take longer than they do.
  while (!platform::interrupted() && base::Clock::now() < until) {
    if (!kept_.empty()) {
      http::Answer answer = std::move(kept_.front());
      kept_.pop_front();
      if (auto fetched = settle(std::move(answer))) {
        return fetched;
      }
      continue;
    }
    startDue(base::Clock::now());
    startQueued();
    if (reads_.empty() && sends_.empty() && delayed_.empty()) {
      return std::nullopt;
    }
    const base::Clock::time_point wake =
        delayed_.empty() ? until : std::min(until, delayed_.begin()->first);
    if (reads_.empty() && sends_.empty()) {
      if (!sleepUntil(wake)) {
        return std::nullopt;
      }
    } else if (std::optional<http::Answer> answer = transport_.next(wake)) {
      if (auto fetched = settle(std::move(*answer))) {
        return fetched;
      }
      continue;
    }
    // Nothing came: time is up, a repeat is due, or the user interrupted.
    if (delayed_.empty() || base::Clock::now() >= until ||
        base::Clock::now() < delayed_.begin()->first) {
      return std::nullopt;
    }
  }
  return std::nullopt;
}

std::optional<http::Answer> Fetcher::wait(std::uint64_t ticket,
                                          base::Clock::time_point until) {
  while (std::optional<http::Answer> answer = transport_.next(until)) {
    const auto sent = sends_.find(answer->id);
    if (sent == sends_.end() || sent->second != ticket) {
      kept_.push_back(std::move(*answer));
      continue;
    }
    sends_.erase(sent);
    return answer;
  }
  return std::nullopt;
}

bool Fetcher::mayHaveArrived(std::uint64_t ticket) const {
  const auto sent =
      std::find_if(sends_.begin(), sends_.end(),
                   [&](const auto& entry) { return entry.second == ticket; });
  return sent == sends_.end() || transport_.mayHaveArrived(sent->first);
}

bool Fetcher::idle() const {
  const bool queued =
      std::any_of(queue_.begin(), queue_.end(),
                  [](const auto& jobs) { return !jobs.second.empty(); });
  return !queued && reads_.empty() && sends_.empty() && delayed_.empty() &&
         kept_.empty();
}

void Fetcher::cancelAll() {
  transport_.cancelAll();
  queue_.clear();
  delayed_.clear();
  reads_.clear();
  sends_.clear();
  kept_.clear();
}

void Fetcher::setSerial() {
  maxConnections_ = 1;
  limit_ = 1;
}

void Fetcher::startQueued() {
  for (auto& [priority, jobs] : queue_) {
    while (!jobs.empty() && static_cast<int>(reads_.size()) < limit()) {
      Job job = std::move(jobs.front());
      jobs.pop_front();
      http::Request request;
      request.target = job.fetch.target;
      request.logTarget = nameInLog_ ? nameInLog_(request.target) : "";
      request.timeout = job.fetch.timeout;
      request.priority = job.fetch.priority;
      request.freshConnection = std::exchange(job.fresh, false);
      request.authToken = base::Secret(authorization_.token);
      request.basicUser = authorization_.basicUser;
      request.basicPassword = base::Secret(authorization_.basicPassword);
      job.generation = generation_;
      const std::uint64_t id = transport_.start(std::move(request));
      reads_.emplace(id, std::move(job));
    }
  }
}

void Fetcher::startDue(base::Clock::time_point now) {
  while (!delayed_.empty() && delayed_.begin()->first <= now) {
    auto job = std::move(delayed_.begin()->second);
    delayed_.erase(delayed_.begin());
    queue_[job.fetch.priority].push_front(std::move(job));
  }
}

std::optional<FetchResult> Fetcher::settle(http::Answer answer) {
  FetchResult fetched;
  if (const auto sent = sends_.find(answer.id); sent != sends_.end()) {
    fetched.ticket = sent->second;
    sends_.erase(sent);
    fetched.answer = std::move(answer);
    return fetched;
  }
  const auto read = reads_.find(answer.id);
  if (read == reads_.end()) {
    return std::nullopt;  // Abandoned meanwhile.
  }
  Job job = std::move(read->second);
  reads_.erase(read);
  if (answer.http2) {
    maxConnections_ = std::min(maxConnections_, kMaxHttp2Streams);
  }
  if (!answer.failure && answer.status != 401 &&
      job.generation == generation_) {
    authorization_.unproven = false;
  }
  if (repeated(job, answer)) {
    return std::nullopt;
  }
  if (!answer.failure && answer.status < 500) {
    speedUp();
  }
  fetched.ticket = job.ticket;
  fetched.generation = job.generation;
  fetched.answer = std::move(answer);
  return fetched;
}

bool Fetcher::repeated(Job& job, http::Answer& answer) {
  if (answer.failure) {
    const base::FailureKind kind = answer.failure->kind;
    if (answer.badEncoding && !std::exchange(job.encodingRepeated, true)) {
      transport_.disableCompression();
      repeatAfter(std::move(job), std::chrono::milliseconds(0));
      return true;
    }
    if (answer.http2Error && !std::exchange(job.http2Repeated, true)) {
      transport_.disableHttp2();
      repeatAfter(std::move(job), std::chrono::milliseconds(0));
      return true;
    }
    if (kind == base::FailureKind::kUnreachable ||
        kind == base::FailureKind::kReadTimeout) {
      slowDown();
    }
    if (kind == base::FailureKind::kUnreachable &&
        (answer.reusedConnection || answer.lostBeforeAnswer) &&
        !std::exchange(job.resetRepeated, true)) {
      job.fresh = true;
      repeatAfter(std::move(job), std::chrono::milliseconds(0));
      return true;
    }
    return false;
  }
  // A recorded server would answer the same again.
  const bool live = transport_.live();
  if (live && (answer.status == 429 || answer.status == 503)) {
    slowDown();
    if (job.overloads < kMaxOverloads) {
      const auto delay = retryDelay(answer.retryAfter, job.overloads++,
                                    std::chrono::system_clock::now());
      repeatAfter(std::move(job), delay);
      return true;
    }
    return false;
  }
  if (live &&
      (answer.status == 500 || answer.status == 502 || answer.status == 504) &&
      job.fetch.patient && !std::exchange(job.serverErrorRepeated, true)) {
    repeatAfter(std::move(job), kServerErrorDelay);
    return true;
  }
  return isRedirect(answer.status) && redirected(job, answer);
}

bool Fetcher::redirected(Job& job, http::Answer& answer) {
  const auto target = redirectTarget(answer.location, transport_.address());
  std::string cause;
  std::string remedy = "check the controller's firmware";
  if (answer.status == 303) {
    cause = "answered 303 to a read";
  } else if (answer.location.empty()) {
    cause = "redirects without saying where";
  } else if (!target) {
    cause = "redirects away from the service, to \"" +
            base::excerpt(answer.location, kMaxLocation) + '"';
    if (answer.location.find("//") != std::string::npos) {
      remedy = "if that is the right address, ask it by --bmc";
    }
  } else if (job.redirects >= kMaxRedirects) {
    cause = "redirects without end";
  } else {
    ++job.redirects;
    job.fetch.target = *target;
    repeatAfter(std::move(job), std::chrono::milliseconds(0));
    return true;
  }
  base::Failure failure;
  failure.kind = base::FailureKind::kRefusedLink;
  failure.address = transport_.address();
  failure.uri = job.fetch.target;
  failure.cause = cause;
  failure.remedy = remedy;
  answer.failure = std::move(failure);
  answer.status = 0;
  return false;
}

void Fetcher::repeatAfter(Job job, std::chrono::milliseconds delay) {
  ++retries_;
  if (delay.count() == 0) {
    queue_[job.fetch.priority].push_front(std::move(job));
  } else {
    delayed_.emplace(base::Clock::now() + delay, std::move(job));
  }
}

void Fetcher::slowDown() {
  goodInRow_ = 0;
  if (limit_ > 1) {
    limit_ /= 2;
    BRIVEL_LOG(base::kLogInformation)
        << transport_.address() << ": trouble, now at most " << limit_
        << " request(s) at a time";
  }
}

void Fetcher::speedUp() {
  limit_ = std::min(limit_, maxConnections_);
  if (limit_ < maxConnections_ && ++goodInRow_ >= kGoodInRow) {
    goodInRow_ = 0;
    ++limit_;
  }
}

}  // namespace redfish
