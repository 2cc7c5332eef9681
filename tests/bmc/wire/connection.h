#pragma once

#include <array>
#include <boost/asio/io_context.hpp>
#include <boost/asio/steady_timer.hpp>
#include <boost/system/error_code.hpp>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "tests/bmc/record/counters.h"
#include "tests/bmc/record/journal.h"
#include "tests/bmc/wire/connection_policy.h"
#include "tests/bmc/wire/message.h"
#include "tests/bmc/wire/processor.h"
#include "tests/bmc/wire/reply_stream.h"
#include "tests/bmc/wire/request_reader.h"
#include "tests/bmc/wire/wire.h"

namespace bmc {

/// What all connections of a port share. Everything outlives them.
struct Environment {
  boost::asio::io_context& io;
  Responder& responder;
  ConnectionPolicy& policy;
  Processor& processor;
  Counters& counters;
  Journal* journal;  ///< None: nothing is logged.
  /// Of the network: a connection, its handshake and each answer take it.
  std::chrono::milliseconds roundTrip;
};

/// One connection from its acceptance to its end: handshake, then requests one
/// after another. It reads on while an answer is under way, so that it sees
/// the client leave. It lives as long as something is under way on it.
class Connection : public std::enable_shared_from_this<Connection> {
 public:
  Connection(std::unique_ptr<Wire> wire, Environment& environment,
             ConnectionPlan plan, std::uint64_t number, const char* port);
  ~Connection();

  Connection(const Connection&) = delete;
  Connection& operator=(const Connection&) = delete;

  void start();

 private:
  using ErrorCode = boost::system::error_code;

  void admit(Admission admission, const std::function<void()>& proceed);
  void hold();
  void drip();
  void connect();
  void shake();
  void onShaken(const ErrorCode& error);
  void read();
  void onRead(const ErrorCode& error, std::size_t count);
  void serve();
  void respond(Request request);
  void refuse();
  void deliver();
  void send();
  void onSent(const ErrorCode& error);
  void onAnswered();
  void finish(bool complete);
  void log(bool complete);
  void end(Ending ending);

  /// The request that is being answered.
  struct Exchange {
    Request request;
    ReplyStream answer;
    bool keepAlive;
    std::int64_t arrived;  ///< By the journal's clock.
  };

  std::unique_ptr<Wire> wire_;
  Environment& environment_;
  ConnectionPlan plan_;
  std::uint64_t number_;
  const char* port_;  ///< "http" or "https".
  boost::asio::steady_timer timer_;
  std::array<char, 16 * 1024> block_{};
  std::string received_;
  RequestReader reader_;
  std::uint64_t requests_ = 0;
  std::optional<Exchange> exchange_;
  std::size_t dripped_ = 0;
  bool held_ = false;  ///< Nothing more is sent; only the client's end counts.
  bool reading_ = false;
  bool clientLeft_ = false;
  bool ended_ = false;
};

}  // namespace bmc
