#pragma once

#include <cstddef>

#include "fuzz/require.h"
#include "suite/base/time_limit.h"

/// What one input may cost in steps that the code under test counts
/// (`base::heedTime`): so many, and so many more for each of its bytes. An
/// input that costs more is a finding, whatever the machine is.
class StepBudget {
 public:
  StepBudget(unsigned long long base, unsigned long long perByte,
             std::size_t bytes)
      : most_(base::stepsSoFar() + base + perByte * bytes) {}

  ~StepBudget() { require(base::stepsSoFar() <= most_); }

  StepBudget(const StepBudget&) = delete;
  StepBudget& operator=(const StepBudget&) = delete;

 private:
  unsigned long long most_;
};
