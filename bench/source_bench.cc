// Reading stays linear in model size: label look-ups through the index and the drift pair
// through the grid, against the literal searches they must agree with.
#include <benchmark/benchmark.h>

#include <string>
#include <vector>

#include "source/fake_host_model_test_support.h"
#include "source/vask_drift_nodes.h"
#include "source/vask_model.h"

namespace vtt {
namespace {

// Two storeys of a square grid of columns, the upper storey shifted a little in plan.
std::vector<DriftPoint> TwoStoreys(int nodesPerStorey) {
  std::vector<DriftPoint> points;
  int side = 1;
  while (side * side < nodesPerStorey) ++side;
  for (int storey = 0; storey < 2; ++storey) {
    for (int i = 0; i < nodesPerStorey; ++i) {
      points.push_back({6.0 * (i % side) + 0.01 * storey, 6.0 * (i / side), 3.5 * storey});
    }
  }
  return points;
}

void BM_DriftPairIndexed(benchmark::State& state) {
  const std::vector<DriftPoint> points = TwoStoreys(static_cast<int>(state.range(0)));
  for (auto _ : state) benchmark::DoNotOptimize(FindDriftPairIndexed(points));
  state.SetComplexityN(state.range(0));
}
BENCHMARK(BM_DriftPairIndexed)->RangeMultiplier(4)->Range(256, 65536)->Complexity();

void BM_DriftPairLiteral(benchmark::State& state) {
  const std::vector<DriftPoint> points = TwoStoreys(static_cast<int>(state.range(0)));
  for (auto _ : state) benchmark::DoNotOptimize(FindDriftPairLiteral(points));
  state.SetComplexityN(state.range(0));
}
BENCHMARK(BM_DriftPairLiteral)->RangeMultiplier(4)->Range(256, 4096)->Complexity();

// Adds n nodes and looks each one up by label, as the frame and area readers do.
void BM_NodeLookUps(benchmark::State& state) {
  const int count = static_cast<int>(state.range(0));
  test_support::FakeHostModel host;
  for (auto _ : state) {
    VaskModelObj model(host);
    for (int i = 0; i < count; ++i) model.AddNode(std::to_string(i), i, 0.0, 0.0, DofFlags{});
    int sum = 0;
    for (int i = count - 1; i >= 0; --i) sum += model.NodeIdGet(std::to_string(i));
    benchmark::DoNotOptimize(sum);
  }
  state.SetComplexityN(state.range(0));
}
BENCHMARK(BM_NodeLookUps)->RangeMultiplier(4)->Range(256, 65536)->Complexity();

}  // namespace
}  // namespace vtt
