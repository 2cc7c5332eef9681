#include "suite/brivel/stats_lines.h"

#include <array>
#include <cstdint>
#include <cstdio>

namespace brivel {
namespace {

std::string counted(std::uint64_t count, const std::string& one) {
  return std::to_string(count) + " " + one + (count == 1 ? "" : "s");
}

std::string retries(std::uint64_t count) {
  return std::to_string(count) + (count == 1 ? " retry" : " retries");
}

}  // namespace

std::string statsLines(const std::vector<connection::TargetCost>& costs,
                       std::chrono::nanoseconds wallTime) {
  std::string lines;
  for (const connection::TargetCost& cost : costs) {
    lines += "brivel: " + cost.address + ": " + counted(cost.logins, "login") +
             ", " + counted(cost.requests, "request") + " (at most " +
             std::to_string(cost.mostUnderWay) + " at a time), " +
             retries(cost.retries) + ", " +
             counted(cost.connections, "connection") + " (" +
             std::to_string(cost.resumed) + " resumed), " +
             counted(cost.bytes, "byte") + ", " +
             counted(cost.levels, "level") + "\n";
  }
  std::array<char, 64> time{};
  std::snprintf(time.data(), time.size(), "brivel: wall time %.3f s\n",
                std::chrono::duration<double>(wallTime).count());
  return lines + time.data();
}

}  // namespace brivel
