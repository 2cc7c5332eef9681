#include <iostream>
#include <string>
#include <utility>

#include "tests/bmc/options.h"
#include "tests/bmc/server.h"

int main(int argc, char** argv) {
  bmc::Options options;
  int exitStatus = 0;
  if (!bmc::parseOptions(argc, argv, options, exitStatus)) {
    return exitStatus;
  }

  bmc::Server server(std::move(options));
  std::string error;
  if (!server.start(error)) {
    std::cerr << "bmc: " << error << '\n';
    return 1;
  }
  return server.run() ? 0 : 1;
}
