#pragma once

#include <utility>
#include <vector>

#include "tests/bmc/faults/fault_plan.h"
#include "tests/bmc/wire/connection_policy.h"

namespace bmc {

/// Treats connections as the rules of a fault plan say.
class PlannedConnections : public ConnectionPolicy {
 public:
  explicit PlannedConnections(std::vector<ConnectionRule> rules)
      : rules_(std::move(rules)) {}

  ConnectionPlan plan(std::uint64_t number) override {
    for (const ConnectionRule& rule : rules_) {
      if (rule.numbers.contains(number)) {
        return rule.plan;
      }
    }
    return {};
  }

 private:
  std::vector<ConnectionRule> rules_;
};

}  // namespace bmc
