#pragma once

#include <boost/asio/io_context.hpp>
#include <memory>

namespace bmc {

/// Stops the loop when there is nobody left to serve: on SIGTERM and SIGINT,
/// when the parent process ends, and when standard input ends, if that is a
/// pipe or a socket. So no test leaves a controller behind, however it ends.
class Lifeline {
 public:
  explicit Lifeline(boost::asio::io_context& io);
  ~Lifeline();

  Lifeline(const Lifeline&) = delete;
  Lifeline& operator=(const Lifeline&) = delete;

 private:
  struct Watches;
  std::unique_ptr<Watches> watches_;
};

}  // namespace bmc
