#pragma once

#include <boost/json/object.hpp>
#include <chrono>
#include <cstdint>
#include <fstream>
#include <string>

namespace bmc {

/// The controller's log: one JSON object a line, written at once, so that a
/// test may read it at any moment. It holds no secret: neither passwords nor
/// tokens.
class Journal {
 public:
  /// Starts an empty log.
  explicit Journal(const std::string& path);

  /// Whether the file could be opened.
  bool good() const { return file_.good(); }

  const std::string& path() const { return path_; }

  /// Microseconds since the log was started.
  std::int64_t now() const;

  /// Adds a line.
  void write(const boost::json::object& entry);

 private:
  std::string path_;
  std::ofstream file_;
  std::chrono::steady_clock::time_point start_;
};

}  // namespace bmc
