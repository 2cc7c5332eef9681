// From JSON texts in memory to the graph.

#include <benchmark/benchmark.h>

#include <cstdint>
#include <string>

#include "bench/sample_graph.h"
#include "suite/redfish/graph/json.h"

namespace {

void jsonToGraph(benchmark::State& state) {
  const auto documents = bench::sampleDocuments();
  std::int64_t bytes = 0;
  for (const auto& document : documents) {
    bytes += static_cast<std::int64_t>(document.second.size());
  }
  for (auto _ : state) {
    redfish::Graph graph;
    for (const auto& [uri, text] : documents) {
      graph.insert({uri, redfish::ResourceState::kRead,
                    *redfish::parseObject(text), std::nullopt});
    }
    benchmark::DoNotOptimize(graph.resources().size());
  }
  state.SetBytesProcessed(state.iterations() * bytes);
  state.SetItemsProcessed(state.iterations() *
                          static_cast<std::int64_t>(documents.size()));
}
BENCHMARK(jsonToGraph)->Unit(benchmark::kMicrosecond);

}  // namespace
