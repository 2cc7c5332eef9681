// From records to the printed table, over a silent console and without a log.

#include <benchmark/benchmark.h>

#include <cstddef>
#include <string>
#include <vector>

#include "bench/silent_console.h"
#include "syshealth/app/system_health.h"
#include "syshealth/inventory/components.h"

namespace {

using Tarvex::DeviceHealth::DIMM;

std::vector<DIMM> modules(std::size_t count) {
  std::vector<DIMM> dimms;
  dimms.reserve(count);
  for (std::size_t i = 0; i < count; ++i) {
    const std::string number = std::to_string(i);
    dimms.push_back({"CPU 1 DIMM " + number, "PN-64G-" + number, "SN" + number,
                     "Ondrel", "DDR5", "5600 MHz"});
  }
  return dimms;
}

void tableOfDimms(benchmark::State& state) {
  const std::vector<DIMM> dimms =
      modules(static_cast<std::size_t>(state.range(0)));
  SystemHealth application;
  const bench::SilentConsole silence;
  for (auto _ : state) {
    application.showDIMMs(dimms);
  }
  state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(tableOfDimms)->Arg(24)->Arg(10000)->Unit(benchmark::kMicrosecond);

}  // namespace
