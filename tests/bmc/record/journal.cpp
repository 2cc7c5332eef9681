#include "tests/bmc/record/journal.h"

#include <boost/json/serialize.hpp>

namespace bmc {

Journal::Journal(const std::string& path)
    : path_(path),
      file_(path, std::ios::binary | std::ios::trunc),
      start_(std::chrono::steady_clock::now()) {}

std::int64_t Journal::now() const {
  return std::chrono::duration_cast<std::chrono::microseconds>(
             std::chrono::steady_clock::now() - start_)
      .count();
}

void Journal::write(const boost::json::object& entry) {
  file_ << boost::json::serialize(entry) << '\n' << std::flush;
}

}  // namespace bmc
