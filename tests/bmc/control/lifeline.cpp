#include "tests/bmc/control/lifeline.h"

#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <array>
#include <boost/asio/buffer.hpp>
#include <boost/asio/posix/stream_descriptor.hpp>
#include <boost/asio/signal_set.hpp>
#include <boost/system/error_code.hpp>
#include <csignal>
#include <cstddef>

namespace bmc {

namespace asio = boost::asio;
using boost::system::error_code;

struct Lifeline::Watches {
  explicit Watches(asio::io_context& loop)
      : io(loop), signals(loop, SIGTERM, SIGINT), parent(loop), input(loop) {}

  void watchSignals() {
    signals.async_wait([this](const error_code& error, int) {
      if (!error) {
        io.stop();
      }
    });
  }

  void watchParent() {
    // By number: the declaration of glibc 2.36 lacks its C linkage.
    const int descriptor =
        static_cast<int>(syscall(SYS_pidfd_open, getppid(), 0));
    if (descriptor < 0) {
      return;  // Signals and input remain.
    }
    parent.assign(descriptor);
    parent.async_wait(asio::posix::stream_descriptor::wait_read,
                      [this](const error_code& error) {
                        if (!error) {
                          io.stop();
                        }
                      });
  }

  void watchInput() {
    struct stat facts {};
    const bool lasting = fstat(STDIN_FILENO, &facts) == 0 &&
                         (S_ISFIFO(facts.st_mode) || S_ISSOCK(facts.st_mode));
    if (!lasting) {
      return;
    }
    input.assign(dup(STDIN_FILENO));
    readInput();
  }

  // Reads standard input to its end; what it says does not matter.
  void readInput() {
    input.async_read_some(asio::buffer(ignored),
                          [this](const error_code& error, std::size_t) {
                            if (error) {
                              io.stop();
                            } else {
                              readInput();
                            }
                          });
  }

  asio::io_context& io;
  asio::signal_set signals;
  asio::posix::stream_descriptor parent;
  asio::posix::stream_descriptor input;
  std::array<char, 256> ignored{};
};

Lifeline::Lifeline(asio::io_context& io)
    : watches_(std::make_unique<Watches>(io)) {
  watches_->watchSignals();
  watches_->watchParent();
  watches_->watchInput();
}

Lifeline::~Lifeline() = default;

}  // namespace bmc
