// From a result code to its message.

#include <benchmark/benchmark.h>

#include "syshealth/result/result_codes.h"
#include "syshealth/result/result_registry.h"

namespace {

void messageOfSuiteCode(benchmark::State& state) {
  for (auto _ : state) {
    benchmark::DoNotOptimize(getResultMessage(kResultConnectionFailed));
  }
}
BENCHMARK(messageOfSuiteCode);

void messageOfModuleCode(benchmark::State& state) {
  for (auto _ : state) {
    benchmark::DoNotOptimize(getResultMessage(kResultConfigSetFailed));
  }
}
BENCHMARK(messageOfModuleCode);

void messageOfLegacyCode(benchmark::State& state) {
  constexpr int kLegacyCode = 0x0101;
  for (auto _ : state) {
    benchmark::DoNotOptimize(getResultMessage(kLegacyCode));
  }
}
BENCHMARK(messageOfLegacyCode);

void messageOfUnknownCode(benchmark::State& state) {
  constexpr int kUnknownCode = 126;
  for (auto _ : state) {
    benchmark::DoNotOptimize(getResultMessage(kUnknownCode));
  }
}
BENCHMARK(messageOfUnknownCode);

}  // namespace
