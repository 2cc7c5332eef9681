#include "suite/local/controller/connect_race.h"

#include <algorithm>
#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/address.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <list>

#include "suite/platform/interrupt.h"

namespace local {
namespace {

namespace asio = boost::asio;
using asio::ip::tcp;
using Clock = std::chrono::steady_clock;

// How long an interruption may go unnoticed.
constexpr std::chrono::milliseconds kSlice{100};

}  // namespace

std::optional<std::size_t> firstToAccept(const std::vector<Endpoint>& endpoints,
                                         std::chrono::milliseconds limit) {
  std::optional<std::size_t> first;
  asio::io_context context(1);
  std::list<tcp::socket> sockets;  // They must not move while they connect.
  for (std::size_t i = 0; i < endpoints.size(); ++i) {
    boost::system::error_code noAddress;
    const auto address =
        asio::ip::make_address(endpoints[i].address, noAddress);
    if (noAddress) {
      continue;
    }
    sockets.emplace_back(context).async_connect(
        {address, endpoints[i].port},
        [&first, i](const boost::system::error_code& failed) {
          if (!failed) {
            first = std::min(first.value_or(i), i);
          }
        });
  }
  const Clock::time_point until = Clock::now() + limit;
  while (!first && !context.stopped() && Clock::now() < until &&
         !platform::interrupted()) {
    context.run_one_until(std::min(until, Clock::now() + kSlice));
  }
  context.poll();  // Those that accepted at the same time.
  return first;
}

}  // namespace local
