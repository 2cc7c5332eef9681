#pragma once

#include <memory>
#include <string>

#include "tests/bmc/options.h"

namespace bmc {

/// The whole controller: a recorded tree, served until there is nobody left
/// to serve. One thread does everything.
class Server {
 public:
  explicit Server(Options options);
  ~Server();

  Server(const Server&) = delete;
  Server& operator=(const Server&) = delete;

  /// Loads, listens, and says that it is ready. False, and the reason in
  /// `error`, when that fails.
  bool start(std::string& error);

  /// Serves until the end, then writes the counters. False when they cannot
  /// be written.
  bool run();

 private:
  struct Parts;

  bool readFaults(std::string& error);
  bool makeService(std::string& error);
  bool makeTls(std::string& error);
  bool listen(std::string& error);

  Options options_;
  std::unique_ptr<Parts> parts_;
};

}  // namespace bmc
