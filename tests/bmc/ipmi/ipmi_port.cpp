#include "tests/bmc/ipmi/ipmi_port.h"

#include <boost/asio/buffer.hpp>
#include <boost/asio/ip/address.hpp>
#include <boost/json/object.hpp>
#include <string_view>

namespace bmc {
namespace {

std::string toHex(std::string_view bytes) {
  constexpr std::string_view kDigits = "0123456789abcdef";
  std::string text;
  for (const char byte : bytes) {
    const auto value = static_cast<unsigned char>(byte);
    text += kDigits[value >> 4U];
    text += kDigits[value & 15U];
  }
  return text;
}

}  // namespace

namespace asio = boost::asio;
using asio::ip::udp;
using boost::system::error_code;

IpmiPort::IpmiPort(asio::io_context& io, IpmiSettings settings,
                   Counters& counters, Journal& journal)
    : socket_(io),
      settings_(settings),
      counters_(counters),
      journal_(journal) {}

bool IpmiPort::start(const std::string& address, std::uint16_t port,
                     std::string& error) {
  error_code code;
  const udp::endpoint endpoint(asio::ip::make_address(address, code), port);
  if (!code) {
    socket_.open(endpoint.protocol(), code);
  }
  if (!code) {
    socket_.bind(endpoint, code);
  }
  if (code) {
    error = address + ", UDP: " + code.message();
    return false;
  }
  receive();
  return true;
}

std::uint16_t IpmiPort::port() const {
  error_code code;
  return socket_.local_endpoint(code).port();
}

void IpmiPort::receive() {
  socket_.async_receive_from(
      asio::buffer(datagram_), client_,
      [this](const error_code& error, std::size_t count) {
        if (error == asio::error::operation_aborted) {
          return;
        }
        if (!error) {
          answer(count);
        }
        receive();
      });
}

void IpmiPort::answer(std::size_t count) {
  const std::string_view datagram(datagram_.data(), count);
  const std::uint64_t number = ++counters_.datagrams;
  const auto reply = number <= settings_.ignoredFirst
                         ? std::nullopt
                         : answerIpmi(datagram, settings_);
  journal_.write({{"event", "datagram"},
                  {"atUs", journal_.now()},
                  {"received", toHex(datagram)},
                  {"answered", toHex(reply.value_or(std::string()))}});
  if (!reply) {
    return;
  }
  error_code lost;  // As datagrams may be.
  socket_.send_to(asio::buffer(*reply), client_, 0, lost);
}

}  // namespace bmc
