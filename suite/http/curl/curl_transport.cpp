#include <algorithm>
#include <deque>
#include <functional>
#include <map>
#include <utility>
#include <vector>

#include "suite/http/curl/certificate_check.h"
#include "suite/http/curl/curl_handle.h"
#include "suite/http/curl/curl_transfer.h"
#include "suite/http/curl/curl_trust.h"
#include "suite/http/curl/flood_guard.h"
#include "suite/http/curl/pacing.h"
#include "suite/http/curl/session_reuse.h"
#include "suite/http/interrupt_watch.h"
#include "suite/http/network_fault.h"
#include "suite/http/network_limits.h"
#include "suite/http/network_transport.h"
#include "suite/http/request_trace.h"
#include "suite/platform/interrupt.h"

namespace http {
namespace {

// How long a request is held back for the sake of the others while none of them
// is answered. A handshake that takes longer may never end.
constexpr std::chrono::milliseconds kMaxHold{2000};

class CurlTransport final : public Transport {
 public:
  explicit CurlTransport(NetworkTransportOptions options);
  ~CurlTransport() override;

  const std::string& address() const override { return address_; }
  bool live() const override { return true; }
  std::uint64_t start(Request request) override;
  std::optional<Answer> next(base::Clock::time_point until) override;
  void deferInterrupt(bool defer) override { interrupt_.defer(defer); }
  bool mayHaveArrived(std::uint64_t id) const override;
  void cancelAll() override;
  void disableCompression() override { identity_ = true; }
  void disableHttp2() override {
    http2Allowed_ = false;
    http2Known_ = false;
    standing_ = 0;
    pacing_.setMultiplexed(false);
  }
  TransportStats stats() const override { return stats_; }

 private:
  using TransferPtr = std::unique_ptr<CurlTransfer>;

  // What is wrong with the options, so that nothing can be asked.
  std::optional<base::Failure> optionFault() const;

  /// A request that waits for its turn.
  struct Waiting {
    std::uint64_t id;
    Request request;
    base::Clock::time_point since;

    base::Clock::time_point deadline() const { return since + request.timeout; }
  };

  void fail(std::uint64_t id, const Request& request, base::Failure failure);
  base::Clock::time_point heldUntil(const Waiting& waiting) const;
  bool overdue() const;
  int limit() const;
  void startWaiting();
  bool mayStart() const;
  void startNow(std::uint64_t id, Request request);
  void openMore();
  void startOpening();
  void learn();
  void learnOpening(CurlTransfer& transfer);
  void learn(const CurlTransfer& transfer);
  void setSharedOptions(CURL* easy);
  static CURLcode onTlsContext(CURL* easy, void* context, void* self);
  base::Clock::time_point nextEvent(base::Clock::time_point until) const;
  void perform(base::Clock::time_point until);
  void collect();
  void expire(base::Clock::time_point now);
  void complete(CurlTransfer* transfer, CURLcode code);
  void completeOpening(CurlTransfer* transfer, CURLcode code);
  TransferPtr take(const CurlTransfer* transfer,
                   std::vector<TransferPtr>& transfers);
  bool underWay() const { return !active_.empty() || !waiting_.empty(); }
  void wait(base::Clock::duration time);

  NetworkTransportOptions options_;
  std::string address_;
  std::string url_;  // Empty: the host is none.
  CurlTrust trust_;
  bool sound_ = false;  // There is no optionFault().
  bool identity_ = false;
  bool http2Allowed_ = true;
  bool http2Known_ = false;
  InterruptWatch interrupt_;
  std::uint64_t lastId_ = 0;
  Pacing pacing_;
  std::multimap<int, Waiting, std::greater<>> waiting_;  // By priority.
  base::Clock::time_point lastAnswer_;
  int standing_ = 0;      // Connections, as far as is known.
  bool refused_ = false;  // The server took no further connection.
  int atServer_ = 0;      // Requests that it had before the latest answers.
  bool crowded_ = false;  // There were others since nothing was under way.
  TransportStats stats_;
  std::deque<Answer> ready_;
  std::size_t heldBytes_ = 0;  // Of bodies, under way or ready.
  CertificateCheck certificateCheck_;
  FloodGuard floodGuard_{interrupt_};
  // Destroyed in the reverse order: the transfers go first, for their handles
  // use the others.
  CurlShare share_;
  CurlMulti multi_;
  std::vector<TransferPtr> active_;
  std::vector<TransferPtr> openings_;
};

CurlTransport::CurlTransport(NetworkTransportOptions options)
    : options_(std::move(options)),
      address_(addressOf(options_.origin)),
      url_(urlOf(options_.origin).value_or("")),
      trust_(options_.caFile, options_.pin, options_.insecure,
             !options_.certificate.empty()),
      pacing_(options_.maxConnections, !options_.origin.plainHttp),
      certificateCheck_{"", options_.certificate},
      share_(makeCurlShare()),
      multi_(makeCurlMulti()) {
  options_.maxConnections = std::max(options_.maxConnections, 1);
  const long connections = options_.maxConnections;
  check(curl_multi_setopt(multi_.get(), CURLMOPT_MAX_HOST_CONNECTIONS,
                          connections));
  check(curl_multi_setopt(multi_.get(), CURLMOPT_MAXCONNECTS, connections));
  check(curl_share_setopt(share_.get(), CURLSHOPT_SHARE,
                          CURL_LOCK_DATA_SSL_SESSION));
  check(curl_share_setopt(share_.get(), CURLSHOPT_SHARE, CURL_LOCK_DATA_DNS));
}

CurlTransport::~CurlTransport() { cancelAll(); }

std::optional<base::Failure> CurlTransport::optionFault() const {
  if (url_.empty()) {
    return failureOf(NetworkFault::kNoHostName, "");
  }
  return options_.origin.plainHttp ? std::nullopt : trust_.fault();
}

std::uint64_t CurlTransport::start(Request request) {
  const std::uint64_t id = ++lastId_;
  if (std::optional<base::Failure> fault =
          sound_ ? std::nullopt : optionFault()) {
    fail(id, request, std::move(*fault));
    return id;
  }
  sound_ = true;
  // What is no read is a login or a logout, which others wait for.
  if (request.method == Method::kGet) {
    const int priority = request.priority;
    waiting_.emplace(priority,
                     Waiting{id, std::move(request), base::Clock::now()});
    startWaiting();
  } else {
    startNow(id, std::move(request));
  }
  return id;
}

void CurlTransport::fail(std::uint64_t id, const Request& request,
                         base::Failure failure) {
  Answer answer;
  answer.id = id;
  answer.failure = std::move(failure);
  answer.failure->address = address_;
  answer.failure->uri = request.target;
  ready_.push_back(std::move(answer));
}

base::Clock::time_point CurlTransport::heldUntil(const Waiting& waiting) const {
  return std::max(waiting.since, lastAnswer_) + kMaxHold;
}

// Whether a request has waited so long that nothing is held back any more.
bool CurlTransport::overdue() const {
  const base::Clock::time_point now = base::Clock::now();
  return std::any_of(waiting_.begin(), waiting_.end(),
                     [this, now](const auto& entry) {
                       return heldUntil(entry.second) <= now;
                     });
}

int CurlTransport::limit() const {
  return overdue() ? options_.maxConnections
                   : pacing_.limit(waiting_.size() + active_.size());
}

void CurlTransport::startWaiting() {
  while (!waiting_.empty() && mayStart()) {
    Waiting next = std::move(waiting_.begin()->second);
    waiting_.erase(waiting_.begin());
    startNow(next.id, std::move(next.request));
  }
  if (pacing_.ahead() && !refused_) {
    openMore();
  }
}

// Whether one more request has a connection to go over. The first one opens
// its own, and so does each where connections are not opened ahead, or where
// those that are being opened may never stand.
bool CurlTransport::mayStart() const {
  const int active = static_cast<int>(active_.size());
  if (!pacing_.ahead() || overdue()) {
    return active < limit();
  }
  return active < standing_ || (active_.empty() && openings_.empty());
}

// Opens what the requests that are there need, as far as it is worth having.
void CurlTransport::openMore() {
  const auto own = std::count_if(
      active_.begin(), active_.end(), [](const TransferPtr& transfer) {
        return transfer->expectsOpening() && !transfer->connected();
      });
  std::size_t there =
      static_cast<std::size_t>(standing_ + own) + openings_.size();
  const std::size_t wanted = std::min(active_.size() + waiting_.size(),
                                      static_cast<std::size_t>(limit()));
  for (; there < wanted; ++there) {
    startOpening();
  }
}

void CurlTransport::startOpening() {
  auto transfer = std::make_unique<CurlTransfer>(heldBytes_);
  transfer->prepareOpening(url_ + "/redfish/v1/", options_.connectTimeout);
  setSharedOptions(transfer->easy());
  check(curl_multi_add_handle(multi_.get(), transfer->easy()));
  openings_.push_back(std::move(transfer));
}

void CurlTransport::startNow(std::uint64_t id, Request request) {
  auto transfer = std::make_unique<CurlTransfer>(heldBytes_);
  const std::string url = url_ + request.target;
  const bool opens = request.method == Method::kPost ||
                     request.freshConnection ||
                     static_cast<int>(active_.size()) >= standing_;
  transfer->prepare(id, std::move(request), url, identity_);
  transfer->expectOpening(opens);
  setSharedOptions(transfer->easy());
  check(curl_multi_add_handle(multi_.get(), transfer->easy()));
  crowded_ = !active_.empty();
  active_.push_back(std::move(transfer));
  ++stats_.requests;
  pacing_.started(static_cast<int>(active_.size()));
  stats_.mostUnderWay =
      std::max<std::uint64_t>(stats_.mostUnderWay, active_.size());
}

void CurlTransport::setSharedOptions(CURL* easy) {
  const bool plain = options_.origin.plainHttp;
  setOption(easy, CURLOPT_SHARE, share_.get());
  setOption(easy, CURLOPT_PROTOCOLS_STR, plain ? "http" : "https");
  setOption(easy, CURLOPT_PROXY, "");
  setOption(easy, CURLOPT_CONNECTTIMEOUT_MS,
            std::max(static_cast<long>(options_.connectTimeout.count()), 1L));
  setOption(easy, CURLOPT_NOSIGNAL, 1L);
  // A resolver that hangs must not hold us when we leave.
  setOption(easy, CURLOPT_QUICK_EXIT, 1L);
  // A name is searched for once: the logout is not to depend on a name server,
  // nor is how old an address is on the system's clock, which may jump.
  setOption(easy, CURLOPT_DNS_CACHE_TIMEOUT, -1L);
  setOption(easy, CURLOPT_TCP_KEEPALIVE, 1L);
  setOption(easy, CURLOPT_HTTP_VERSION,
            static_cast<long>(!plain && http2Allowed_ ? CURL_HTTP_VERSION_2TLS
                                                      : CURL_HTTP_VERSION_1_1));
  // Waiting to see whether the first connection can be shared costs round
  // trips on every controller that speaks HTTP/1.1, which most do.
  setOption(easy, CURLOPT_PIPEWAIT, http2Known_ ? 1L : 0L);
  if (plain) {
    return;
  }
  trust_.apply(easy);
  setOption(easy, CURLOPT_SSL_CTX_FUNCTION, &CurlTransport::onTlsContext);
  setOption(easy, CURLOPT_SSL_CTX_DATA, static_cast<void*>(this));
}

CURLcode CurlTransport::onTlsContext(CURL* /*easy*/, void* context,
                                     void* self) {
  auto& transport = *static_cast<CurlTransport*>(self);
  auto* const tls = static_cast<SSL_CTX*>(context);
  checkCertificates(tls, transport.certificateCheck_);
  copySessions(tls);
  transport.floodGuard_.watch(tls);
  return CURLE_OK;
}

std::optional<Answer> CurlTransport::next(base::Clock::time_point until) {
  while (true) {
    if (ready_.empty() && underWay()) {
      perform(until);
      learn();
      collect();
      expire(base::Clock::now());
      startWaiting();
    }
    if (!ready_.empty()) {
      Answer answer = std::move(ready_.front());
      ready_.pop_front();
      heldBytes_ -= answer.body.size();
      return answer;
    }
    if (!underWay() || interrupt_.tell()) {
      return std::nullopt;
    }
    const base::Clock::time_point now = base::Clock::now();
    if (now >= until) {
      return std::nullopt;
    }
    base::Clock::time_point wakeUp = nextEvent(until);
    for (const auto& entry : waiting_) {
      const Waiting& waiting = entry.second;
      const base::Clock::time_point held = heldUntil(waiting);
      wakeUp = std::min(wakeUp, held > now ? held : waiting.deadline());
    }
    wait(wakeUp - now);
  }
}

// When a wait ends, or a request under way is given up.
base::Clock::time_point CurlTransport::nextEvent(
    base::Clock::time_point until) const {
  for (const auto* transfers : {&active_, &openings_}) {
    for (const TransferPtr& transfer : *transfers) {
      until = std::min(until, transfer->deadline());
    }
  }
  return until;
}

void CurlTransport::perform(base::Clock::time_point until) {
  floodGuard_.begin(nextEvent(until));
  int running = 0;
  check(curl_multi_perform(multi_.get(), &running));
}

// What the connections of the requests under way tell, before their answers.
void CurlTransport::learn() {
  atServer_ = 0;
  for (const TransferPtr& transfer : active_) {
    if (!transfer->connected()) {
      continue;
    }
    ++atServer_;
    learnOpening(*transfer);
    if (transfer->keepsSession()) {
      pacing_.sessionKept();
    }
    if (http2Allowed_ && transfer->speaksHttp2()) {
      pacing_.setMultiplexed(true);
    }
  }
  for (const TransferPtr& transfer : openings_) {
    learnOpening(*transfer);
  }
}

void CurlTransport::learnOpening(CurlTransfer& transfer) {
  if (!transfer.newlyConnected() || !transfer.opening()) {
    return;
  }
  pacing_.connected(*transfer.opening(), transfer.openingNetwork(),
                    transfer.resumed());
  if (transfer.expectsOpening()) {
    standing_ = std::min(standing_ + 1, options_.maxConnections);
  } else {
    pacing_.closedByServer();
  }
}

void CurlTransport::learn(const CurlTransfer& transfer) {
  lastAnswer_ = base::Clock::now();
  pacing_.answered(
      std::chrono::duration_cast<Pacing::Time>(lastAnswer_.time_since_epoch()),
      std::chrono::ceil<Pacing::Duration>(lastAnswer_ - transfer.sentAt()),
      atServer_, !crowded_, transfer.request().method == Method::kGet);
}

void CurlTransport::collect() {
  int left = 0;
  while (const CURLMsg* message = curl_multi_info_read(multi_.get(), &left)) {
    if (message->msg != CURLMSG_DONE) {
      continue;
    }
    // The message dies with the next call.
    const CURLcode code = message->data.result;
    char* transfer = nullptr;
    check(curl_easy_getinfo(message->easy_handle, CURLINFO_PRIVATE, &transfer));
    auto* const owner = reinterpret_cast<CurlTransfer*>(transfer);
    if (owner->opensOnly()) {
      completeOpening(owner, code);
    } else {
      complete(owner, code);
    }
  }
}

void CurlTransport::expire(base::Clock::time_point now) {
  // Backwards: completing one takes it out of the list.
  for (std::size_t index = active_.size(); index-- > 0;) {
    if (active_[index]->deadline() <= now) {
      complete(active_[index].get(), CURLE_OPERATION_TIMEDOUT);
    }
  }
  for (std::size_t index = openings_.size(); index-- > 0;) {
    if (openings_[index]->deadline() <= now) {
      completeOpening(openings_[index].get(), CURLE_OPERATION_TIMEDOUT);
    }
  }
  for (auto entry = waiting_.begin(); entry != waiting_.end();) {
    const Waiting& waiting = entry->second;
    if (waiting.deadline() > now) {
      ++entry;
      continue;
    }
    fail(waiting.id, waiting.request,
         failureOf(NetworkFault::kQueueTimeout, "",
                   {options_.connectTimeout, waiting.request.timeout}));
    entry = waiting_.erase(entry);
  }
}

CurlTransport::TransferPtr CurlTransport::take(
    const CurlTransfer* transfer, std::vector<TransferPtr>& transfers) {
  const auto found = std::find_if(
      transfers.begin(), transfers.end(),
      [transfer](const TransferPtr& owner) { return owner.get() == transfer; });
  TransferPtr owner = std::move(*found);
  transfers.erase(found);
  check(curl_multi_remove_handle(multi_.get(), owner->easy()));
  stats_.connections += owner->connections();
  stats_.resumed += owner->resumed() ? 1U : 0U;
  return owner;
}

void CurlTransport::completeOpening(CurlTransfer* transfer, CURLcode code) {
  transfer->leaveConnection();
  take(transfer, openings_);
  refused_ = refused_ || code != CURLE_OK;
}

void CurlTransport::complete(CurlTransfer* transfer, CURLcode code) {
  if (code == CURLE_OK) {
    learn(*transfer);
  } else if (transfer->connected() && standing_ > 0) {
    --standing_;  // libcurl closes it.
  }
  TransferPtr owner = take(transfer, active_);
  stats_.bytes += owner->bytes();
  http2Known_ = http2Allowed_ && (http2Known_ || owner->speaksHttp2());
  Answer answer = owner->finish(code, address_, options_.connectTimeout,
                                certificateCheck_.pin, options_.caFile);
  answer.shownPin = certificateCheck_.pin;
  traceAnswer(address_, owner->request(), answer, owner->bytes());
  ready_.push_back(std::move(answer));
}

void CurlTransport::wait(base::Clock::duration time) {
  // Rounded up, so that the last fraction of a millisecond is no busy loop.
  const auto wanted = std::chrono::ceil<std::chrono::milliseconds>(
      std::min<base::Clock::duration>(time, kMaxWait));
  curl_waitfd interrupt{platform::interruptFd(), CURL_WAIT_POLLIN, 0};
  const bool watch = interrupt_.watching() && interrupt.fd >= 0;
  check(curl_multi_poll(multi_.get(), &interrupt, watch ? 1U : 0U,
                        static_cast<int>(wanted.count()), nullptr));
}

bool CurlTransport::mayHaveArrived(std::uint64_t id) const {
  return std::none_of(
             waiting_.begin(), waiting_.end(),
             [id](const auto& entry) { return entry.second.id == id; }) &&
         std::none_of(active_.begin(), active_.end(),
                      [id](const TransferPtr& transfer) {
                        return transfer->id() == id && !transfer->connected();
                      });
}

void CurlTransport::cancelAll() {
  standing_ -= static_cast<int>(std::count_if(
      active_.begin(), active_.end(),
      [](const TransferPtr& transfer) { return transfer->connected(); }));
  standing_ = std::max(standing_, 0);
  for (auto* transfers : {&active_, &openings_}) {
    for (const TransferPtr& transfer : *transfers) {
      static_cast<void>(
          curl_multi_remove_handle(multi_.get(), transfer->easy()));
    }
    transfers->clear();
  }
  waiting_.clear();
  ready_.clear();
  heldBytes_ = 0;
}

}  // namespace

std::unique_ptr<Transport> makeNetworkTransport(
    NetworkTransportOptions options) {
  return std::make_unique<CurlTransport>(std::move(options));
}

}  // namespace http
