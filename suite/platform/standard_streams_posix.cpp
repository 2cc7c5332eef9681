#include "suite/platform/standard_streams.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>

#include <csignal>
#include <iostream>

namespace platform {

void prepareStandardStreams() {
  int descriptor = 0;
  do {
    // Read-only: what is written to a closed output is still an error.
    descriptor = open("/dev/null", O_RDONLY);
  } while (descriptor >= 0 && descriptor <= STDERR_FILENO);
  if (descriptor > STDERR_FILENO) {
    close(descriptor);
  }
  signal(SIGPIPE, SIG_IGN);
  // A file at its limit of size is an error of the write, too.
  signal(SIGXFSZ, SIG_IGN);
}

bool outputIsWhole() { return static_cast<bool>(std::cout.flush()); }

bool outputIsPipe() {
  struct stat status = {};
  return fstat(STDOUT_FILENO, &status) == 0 && S_ISFIFO(status.st_mode);
}

bool outputIsAbandoned() {
  pollfd output = {};
  output.fd = STDOUT_FILENO;
  output.events = POLLOUT;
  return poll(&output, 1, 0) == 1 && (output.revents & POLLERR) != 0;
}

}  // namespace platform
