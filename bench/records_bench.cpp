// From the graph to the records of the six tables.

#include <benchmark/benchmark.h>

#include "bench/sample_graph.h"
#include "suite/devhealth/inventory/dimm_mapping.h"
#include "suite/devhealth/inventory/fan_mapping.h"
#include "suite/devhealth/inventory/pci_mapping.h"
#include "suite/devhealth/inventory/power_mapping.h"
#include "suite/devhealth/inventory/processor_mapping.h"
#include "suite/devhealth/inventory/system_mapping.h"
#include "suite/redfish/graph/topology.h"

namespace {

template <auto Map>
void graphToRecords(benchmark::State& state) {
  const redfish::Graph& graph = bench::sampleGraph();
  const redfish::Node node = redfish::Topology(graph).node(0);
  for (auto _ : state) {
    const auto mapped = Map(graph, node);
    if (mapped.failure || mapped.records.empty()) {
      state.SkipWithError("no records");
    }
    benchmark::DoNotOptimize(mapped.records.data());
  }
}
BENCHMARK(graphToRecords<devhealth::mapSystem>);
BENCHMARK(graphToRecords<devhealth::mapProcessors>);
BENCHMARK(graphToRecords<devhealth::mapFans>);
BENCHMARK(graphToRecords<devhealth::mapDimms>);
BENCHMARK(graphToRecords<devhealth::mapPowers>);
BENCHMARK(graphToRecords<devhealth::mapPciAdapters>);

void nodeOfGraph(benchmark::State& state) {
  const redfish::Graph& graph = bench::sampleGraph();
  for (auto _ : state) {
    benchmark::DoNotOptimize(redfish::Topology(graph).node(0));
  }
}
BENCHMARK(nodeOfGraph);

}  // namespace
