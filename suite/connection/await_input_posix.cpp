#include "suite/connection/await_input.h"

#include <poll.h>

#include <array>
#include <cerrno>

#include "suite/redfish/interrupt.h"

namespace connection {

// A read alone would sleep through a signal that comes just before it.
bool awaitInput(int descriptor) {
  std::array<pollfd, 2> watched{};
  watched[0].fd = descriptor;
  watched[0].events = POLLIN;
  watched[1].fd = redfish::interruptFd();  // Passed over while it is -1.
  watched[1].events = POLLIN;
  while (poll(watched.data(), watched.size(), -1) < 0 && errno == EINTR &&
         !redfish::interrupted()) {
  }
  return !redfish::interrupted();
}

}  // namespace connection
