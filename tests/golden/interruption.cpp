#include "tests/golden/interruption.h"

#include <gtest/gtest.h>

#include <chrono>
#include <csignal>
#include <map>
#include <string>
#include <thread>

#include "tests/golden/expectations.h"
#include "tests/support/child_process.h"

namespace golden {

void interrupt(const std::string& order, const bmc::Controller& controller,
               const support::ChildProcess& process) {
  constexpr std::chrono::seconds kPatience{20};
  constexpr std::chrono::milliseconds kPause{5};
  const auto blank = order.find(' ');
  ASSERT_NE(blank, std::string::npos) << order;
  const std::string name = order.substr(0, blank);
  static const std::map<std::string, int> kSignals{{"SIGHUP", SIGHUP},
                                                   {"SIGINT", SIGINT},
                                                   {"SIGQUIT", SIGQUIT},
                                                   {"SIGTERM", SIGTERM}};
  ASSERT_EQ(kSignals.count(name), 1U) << order;
  const std::string condition = order.substr(blank + 1);
  const auto end = std::chrono::steady_clock::now() + kPatience;
  while (!unmet(condition, figuresOf(controller.counters())).empty()) {
    ASSERT_LT(std::chrono::steady_clock::now(), end)
        << "never came about: " << condition;
    std::this_thread::sleep_for(kPause);
  }
  process.signal(kSignals.at(name));
}

}  // namespace golden
