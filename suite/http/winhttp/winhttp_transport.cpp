#include <algorithm>
#include <array>
#include <boost/nowide/convert.hpp>
#include <deque>
#include <map>
#include <utility>

#include "suite/http/interrupt_watch.h"
#include "suite/http/network_fault.h"
#include "suite/http/network_limits.h"
#include "suite/http/network_transport.h"
#include "suite/http/request_trace.h"
#include "suite/http/winhttp/winhttp_exchange.h"
#include "suite/platform/interrupt.h"
#include "suite/platform/interrupt_windows.h"

namespace http {
namespace {

class WinhttpTransport final : public Transport {
 public:
  explicit WinhttpTransport(NetworkTransportOptions options);
  ~WinhttpTransport() override { cancelAll(); }

  const std::string& address() const override { return address_; }
  bool live() const override { return true; }
  std::uint64_t start(Request request) override;
  std::optional<Answer> next(base::Clock::time_point until) override;
  void deferInterrupt(bool defer) override { interrupt_.defer(defer); }
  bool mayHaveArrived(std::uint64_t id) const override;
  void cancelAll() override;
  TransportStats stats() const override { return stats_; }

 private:
  using ExchangePtr = std::shared_ptr<WinhttpExchange>;

  std::optional<base::Failure> optionFault() const;
  std::shared_ptr<WinhttpSession> openSession() const;
  void sendWaiting();
  void collect();
  void expire(base::Clock::time_point now);
  void complete(const ExchangePtr& exchange);
  void fail(std::uint64_t id, const std::string& target, base::Failure failure);
  void wait(base::Clock::time_point until);

  NetworkTransportOptions options_;
  std::string address_;
  std::shared_ptr<WinhttpCommon> common_;
  std::shared_ptr<WinhttpSession> session_;
  bool sessionUsed_ = false;
  InterruptWatch interrupt_;
  std::uint64_t lastId_ = 0;
  TransportStats stats_;
  std::deque<ExchangePtr> waiting_;
  std::map<std::uint64_t, ExchangePtr> active_;
  std::deque<Answer> ready_;
};

WinhttpTransport::WinhttpTransport(NetworkTransportOptions options)
    : options_(std::move(options)),
      address_(addressOf(options_.origin)),
      common_(std::make_shared<WinhttpCommon>(options_)) {
  options_.maxConnections = std::max(options_.maxConnections, 1);
}

std::optional<base::Failure> WinhttpTransport::optionFault() const {
  if (!urlOf(options_.origin)) {
    return failureOf(NetworkFault::kNoHostName, "");
  }
  return options_.origin.plainHttp ? std::nullopt : common_->trust.fault();
}

std::shared_ptr<WinhttpSession> WinhttpTransport::openSession() const {
  auto opened = std::make_shared<WinhttpSession>();
  opened->session.reset(WinHttpOpen(
      boost::nowide::widen(userAgent()).c_str(), WINHTTP_ACCESS_TYPE_NO_PROXY,
      WINHTTP_NO_PROXY_NAME, WINHTTP_NO_PROXY_BYPASS, WINHTTP_FLAG_ASYNC));
  if (!opened->session) {
    return nullptr;
  }
  const auto set = [&](DWORD option, DWORD value) {
    return WinHttpSetOption(opened->session.get(), option, &value,
                            sizeof(value)) != 0;
  };
  // Version 1.3 is refused by systems that do not have it.
  static_cast<void>(set(WINHTTP_OPTION_SECURE_PROTOCOLS,
                        WINHTTP_FLAG_SECURE_PROTOCOL_TLS1_2 |
                            WINHTTP_FLAG_SECURE_PROTOCOL_TLS1_3) ||
                    set(WINHTTP_OPTION_SECURE_PROTOCOLS,
                        WINHTTP_FLAG_SECURE_PROTOCOL_TLS1_2));
  static_cast<void>(set(WINHTTP_OPTION_MAX_CONNS_PER_SERVER,
                        static_cast<DWORD>(options_.maxConnections)));
  const Origin& origin = options_.origin;
  const bool ipv6 = origin.host.find(':') != std::string::npos;
  const std::string host = ipv6 ? '[' + origin.host + ']' : origin.host;
  constexpr INTERNET_PORT kHttp = INTERNET_DEFAULT_HTTP_PORT;
  constexpr INTERNET_PORT kHttps = INTERNET_DEFAULT_HTTPS_PORT;
  const INTERNET_PORT port = origin.port != 0   ? origin.port
                             : origin.plainHttp ? kHttp
                                                : kHttps;
  opened->connection.reset(WinHttpConnect(
      opened->session.get(), boost::nowide::widen(host).c_str(), port, 0));
  return opened->connection ? opened : nullptr;
}

std::uint64_t WinhttpTransport::start(Request request) {
  const std::uint64_t id = ++lastId_;
  if (std::optional<base::Failure> fault = optionFault()) {
    fail(id, request.target, *std::move(fault));
    return id;
  }
  waiting_.push_back(
      std::make_shared<WinhttpExchange>(id, std::move(request), common_));
  ++stats_.requests;
  sendWaiting();
  return id;
}

void WinhttpTransport::sendWaiting() {
  const auto most = static_cast<std::size_t>(options_.maxConnections);
  while (!waiting_.empty() && active_.size() < most) {
    const ExchangePtr exchange = std::move(waiting_.front());
    waiting_.pop_front();
    // A new session has no connection that could be reused; what follows
    // uses the new one, too. The old one lasts as long as its requests.
    if (!session_ || (sessionUsed_ && exchange->wantsFreshConnection())) {
      session_ = openSession();
      sessionUsed_ = false;
    }
    if (!session_) {
      fail(exchange->id(), exchange->request().target,
           failureOf(NetworkFault::kInternal, messageFor(GetLastError())));
      continue;
    }
    sessionUsed_ = true;
    active_.emplace(exchange->id(), exchange);
    exchange->send(session_);
  }
}

void WinhttpTransport::fail(std::uint64_t id, const std::string& target,
                            base::Failure failure) {
  Answer answer;
  answer.id = id;
  answer.failure = std::move(failure);
  answer.failure->address = address_;
  answer.failure->uri = target;
  ready_.push_back(std::move(answer));
}

std::optional<Answer> WinhttpTransport::next(base::Clock::time_point until) {
  while (true) {
    if (ready_.empty()) {
      collect();
      expire(base::Clock::now());
      sendWaiting();
    }
    if (!ready_.empty()) {
      Answer answer = std::move(ready_.front());
      ready_.pop_front();
      common_->heldBytes -= answer.body.size();
      return answer;
    }
    if ((active_.empty() && waiting_.empty()) || interrupt_.tell()) {
      return std::nullopt;
    }
    if (base::Clock::now() >= until) {
      return std::nullopt;
    }
    wait(until);
  }
}

void WinhttpTransport::collect() {
  while (const std::optional<std::uint64_t> id = common_->mailbox.take()) {
    // A request that was given up may have ended just before.
    const auto found = active_.find(*id);
    if (found != active_.end()) {
      complete(ExchangePtr(found->second));
    }
  }
}

void WinhttpTransport::expire(base::Clock::time_point now) {
  std::vector<ExchangePtr> late;
  for (const auto& [id, exchange] : active_) {
    if (exchange->deadline() <= now) {
      late.push_back(exchange);
    }
  }
  for (const ExchangePtr& exchange : waiting_) {
    if (exchange->deadline() <= now) {
      late.push_back(exchange);
    }
  }
  for (const ExchangePtr& exchange : late) {
    exchange->abandon();
    complete(exchange);
  }
}

void WinhttpTransport::complete(const ExchangePtr& exchange) {
  active_.erase(exchange->id());
  waiting_.erase(std::remove(waiting_.begin(), waiting_.end(), exchange),
                 waiting_.end());
  Answer answer = exchange->finish();
  stats_.connections += exchange->connections();
  stats_.bytes += exchange->bytes();
  const Request& request = exchange->request();
  if (answer.failure) {
    answer.failure->address = address_;
    answer.failure->uri = request.target;
  }
  traceAnswer(address_, request, answer, exchange->bytes());
  ready_.push_back(std::move(answer));
}

void WinhttpTransport::wait(base::Clock::time_point until) {
  for (const auto& [id, exchange] : active_) {
    until = std::min(until, exchange->deadline());
  }
  for (const ExchangePtr& exchange : waiting_) {
    until = std::min(until, exchange->deadline());
  }
  // Rounded up, so that the last fraction of a millisecond is no busy loop.
  const auto wanted = std::chrono::ceil<std::chrono::milliseconds>(
      std::clamp<base::Clock::duration>(
          until - base::Clock::now(), base::Clock::duration::zero(), kMaxWait));
  const std::array<HANDLE, 2> events = {common_->mailbox.event(),
                                        platform::interruptEvent()};
  const bool watch = interrupt_.watching() && events[1] != nullptr;
  WaitForMultipleObjects(watch ? 2 : 1, events.data(), FALSE,
                         static_cast<DWORD>(wanted.count()));
}

bool WinhttpTransport::mayHaveArrived(std::uint64_t id) const {
  const auto found = active_.find(id);
  if (found != active_.end()) {
    return found->second->sent();
  }
  return std::none_of(
      waiting_.begin(), waiting_.end(),
      [id](const ExchangePtr& exchange) { return exchange->id() == id; });
}

void WinhttpTransport::cancelAll() {
  for (const auto& [id, exchange] : active_) {
    exchange->abandon();
  }
  active_.clear();
  waiting_.clear();
  for (const Answer& answer : ready_) {
    common_->heldBytes -= answer.body.size();
  }
  ready_.clear();
}

}  // namespace

std::unique_ptr<Transport> makeNetworkTransport(
    NetworkTransportOptions options) {
  return std::make_unique<WinhttpTransport>(std::move(options));
}

std::string networkLibraries() { return "WinHTTP"; }

}  // namespace http
