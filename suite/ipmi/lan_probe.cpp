#include "suite/ipmi/lan_probe.h"

#include <algorithm>
#include <array>
#include <boost/asio/buffer.hpp>
#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/address.hpp>
#include <boost/asio/ip/udp.hpp>
#include <future>
#include <memory>
#include <optional>
#include <thread>
#include <utility>

#include "suite/ipmi/rmcp_message.h"
#include "suite/platform/interrupt.h"

namespace ipmi {
namespace {

namespace asio = boost::asio;
using asio::ip::udp;
using std::chrono::milliseconds;

constexpr std::uint8_t kPingTag = 0x5A;
constexpr milliseconds kAsk[] = {milliseconds(1000), milliseconds(1000),
                                 milliseconds(2000)};
constexpr milliseconds kPong{1000};
constexpr milliseconds kSlice{100};

// The host's first address. The system's resolver cannot be stopped: it runs
// in a thread of its own, which is left behind when time is up.
std::optional<asio::ip::address> resolve(const std::string& host,
                                         base::Clock::time_point until) {
  boost::system::error_code error;
  const asio::ip::address literal = asio::ip::make_address(host, error);
  if (!error) {
    return literal;
  }
  using Result = std::optional<asio::ip::address>;
  auto promise = std::make_shared<std::promise<Result>>();
  std::future<Result> result = promise->get_future();
  std::thread([promise, host] {
    asio::io_context context;
    boost::system::error_code failed;
    const auto found = udp::resolver(context).resolve(host, "623", failed);
    promise->set_value(failed || found.empty()
                           ? Result()
                           : Result(found.begin()->endpoint().address()));
  }).detach();
  while (result.wait_for(kSlice) != std::future_status::ready) {
    if (platform::interrupted() || base::Clock::now() >= until) {
      return std::nullopt;
    }
  }
  return result.get();
}

// A UDP conversation with one controller.
class Conversation {
 public:
  explicit Conversation(const udp::endpoint& peer) : socket_(context_) {
    boost::system::error_code error;
    socket_.open(peer.protocol(), error);
    if (!error) {
      socket_.connect(peer, error);
    }
    dead_ = static_cast<bool>(error);
  }

  // Whether nobody listens at the other end.
  bool dead() const { return dead_; }

  // Sends a datagram and gives each answer to `read` until that returns a
  // value, which it returns. Waits for `patience` at most.
  template <typename Read>
  auto ask(const std::string& datagram, milliseconds patience,
           base::Clock::time_point until, Read read)
      -> decltype(read(std::string_view())) {
    boost::system::error_code error;
    socket_.send(asio::buffer(datagram), 0, error);
    const auto end = std::min(until, base::Clock::now() + patience);
    while (!error && !platform::interrupted() && base::Clock::now() < end) {
      if (const auto answer = receive(end)) {
        if (auto taken = read(*answer)) {
          return taken;
        }
      } else if (dead_) {
        break;
      }
    }
    dead_ = dead_ || static_cast<bool>(error);
    return {};
  }

 private:
  // The next datagram; nullopt if none came within `kSlice`.
  std::optional<std::string_view> receive(base::Clock::time_point end) {
    std::optional<std::size_t> size;
    socket_.async_receive(
        asio::buffer(buffer_),
        [&](const boost::system::error_code& error, std::size_t received) {
          if (error == asio::error::operation_aborted) {
            return;
          }
          if (error) {
            dead_ = true;  // ICMP: nobody listens there.
          }
          if (!error) {
            size = received;
          }
        });
    context_.restart();
    context_.run_until(std::min(end, base::Clock::now() + kSlice));
    if (!size && !dead_) {
      socket_.cancel();
      context_.restart();
      context_.run();
    }
    if (!size) {
      return std::nullopt;
    }
    return std::string_view(buffer_.data(), *size);
  }

  asio::io_context context_;
  udp::socket socket_;
  std::array<char, 512> buffer_{};
  bool dead_ = false;
};

LanAnswer answerOf(Capabilities capabilities) {
  return capabilities == Capabilities::kIpmi20 ? LanAnswer::kIpmi20
                                               : LanAnswer::kIpmi15;
}

}  // namespace

LanAnswer probeLan(const std::string& host, std::uint16_t port,
                   base::Clock::time_point until) {
  const auto address = resolve(host, until);
  if (!address) {
    return LanAnswer::kNone;
  }
  Conversation controller(udp::endpoint(*address, port));
  bool extended = true;
  for (const milliseconds patience : kAsk) {
    if (controller.dead()) {
      return LanAnswer::kNone;
    }
    auto capabilities = controller.ask(capabilitiesRequest(extended), patience,
                                       until, readCapabilities);
    if (capabilities == Capabilities::kRefused && extended) {
      extended = false;
      capabilities = controller.ask(capabilitiesRequest(extended), patience,
                                    until, readCapabilities);
    }
    // A controller that refuses both still speaks IPMI.
    if (capabilities) {
      return answerOf(*capabilities);
    }
  }
  if (controller.dead()) {
    return LanAnswer::kNone;
  }
  const auto pong = controller.ask(
      presencePing(kPingTag), kPong, until, [](std::string_view datagram) {
        return readPresencePong(datagram, kPingTag);
      });
  return pong && *pong ? LanAnswer::kIpmi15 : LanAnswer::kNone;
}

}  // namespace ipmi
