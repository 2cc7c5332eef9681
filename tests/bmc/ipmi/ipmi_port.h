#pragma once

#include <array>
#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/udp.hpp>
#include <cstdint>
#include <string>

#include "tests/bmc/ipmi/ipmi.h"
#include "tests/bmc/record/counters.h"
#include "tests/bmc/record/journal.h"

namespace bmc {

/// Answers datagrams as an older controller does on the port of IPMI over LAN.
class IpmiPort {
 public:
  /// Everything given outlives it.
  IpmiPort(boost::asio::io_context& io, IpmiSettings settings,
           Counters& counters, Journal& journal);

  /// Binds to an address and port (0: any free one) and answers from then on.
  /// False, and the reason in `error`, when that fails.
  bool start(const std::string& address, std::uint16_t port,
             std::string& error);

  std::uint16_t port() const;

 private:
  void receive();
  void answer(std::size_t count);

  boost::asio::ip::udp::socket socket_;
  IpmiSettings settings_;
  Counters& counters_;
  Journal& journal_;
  boost::asio::ip::udp::endpoint client_;
  std::array<char, 512> datagram_{};
};

}  // namespace bmc
