// From a recorded server on disk to the graph: links followed, files read.

#include <benchmark/benchmark.h>

#include <cstdint>

#include "bench/sample_graph.h"

namespace {

void crawlRecordedServer(benchmark::State& state) {
  std::size_t documents = 0;
  for (auto _ : state) {
    redfish::Service service = bench::sampleService();
    if (service.read(bench::wholeNode())) {
      state.SkipWithError("unreadable");
    }
    documents = service.graph().resources().size();
  }
  state.SetItemsProcessed(state.iterations() *
                          static_cast<std::int64_t>(documents));
}
BENCHMARK(crawlRecordedServer)->Unit(benchmark::kMicrosecond);

}  // namespace
