// Grouping frames by identical loading stays fast at both ends: when every frame carries
// the same load (one subgroup that gathers them all) and when every frame carries a load
// of its own (one subgroup each). The subgroup pass runs on 100,000 frames; the whole
// frame load step runs where the structure can hold the result (a pattern and group hold
// at most 32,766 subgroups and the structure 32,767 load items).
#include <benchmark/benchmark.h>

#include <string>

#include "analysis/fill_trelk_load.h"
#include "source/fake_host_model_test_support.h"
#include "source/vask_model.h"
#include "store/trelk_store.h"

namespace vtt {
namespace {

// N frames of one element group, each with a uniform load over its length in pattern
// "DEAD" and a point load at mid-span; with `same`, all alike, else each its own values.
void BuildLoadedFrames(VaskModelObj& model, TrelkStore& store, int frames, bool same) {
  VaskLoadPatternObj* pattern = model.AddLoadPattern();
  pattern->Label = "DEAD";
  pattern->LoadElementNotEmpty = true;
  store.AddTrelkElemGroup();
  for (int e = 0; e <= frames; ++e) store.AddTrelkElem();
  for (int f = 0; f < frames; ++f) {
    VaskFrameObj* frame = model.AddFrame();
    frame->Label = "F" + std::to_string(f);
    frame->idTrelkElemGroup = 1;
    frame->idTrelkElem = f + 2;
    const double own = same ? 0.0 : 0.001 * f;
    VaskLoadFrameDistObj* dist = frame->LoadFrameDistributedObj.Add();
    dist->Label = frame->Label;
    dist->PatternLabel = "DEAD";
    dist->CSys = "GLOBAL";
    dist->LoadType = 1;
    dist->ItemNum = 1;
    if (dist->ItemsKept() < 1) dist->KeepItems(1);
    dist->RD1(1) = 0.0;
    dist->RD2(1) = 1.0;
    dist->Val1(1) = 2.5 + own;
    dist->Val2(1) = 2.5 + own;
    VaskLoadFramePointObj* point = frame->LoadFramePointObj.Add();
    point->Label = frame->Label;
    point->PatternLabel = "DEAD";
    point->CSys = "GLOBAL";
    point->LoadType = 1;
    point->ItemNum = 1;
    point->KeepItems(1);
    point->RD(1) = 0.5;
    point->Val(1) = 10.0 + own;
  }
}

void SubGroupPass(benchmark::State& state, bool same) {
  const int frames = static_cast<int>(state.range(0));
  test_support::FakeHostModel host;
  VaskModelObj model(host);
  TrelkStore store;
  store.InitTrelkStore();
  BuildLoadedFrames(model, store, frames, same);
  for (auto _ : state) {
    const ElemLoadSubGroupCatalogue catalogue = CatalogueElemLoadSubGroups(model, store);
    benchmark::DoNotOptimize(catalogue.Num());
  }
  state.SetComplexityN(state.range(0));
}

void WholeStep(benchmark::State& state, bool same) {
  const int frames = static_cast<int>(state.range(0));
  test_support::FakeHostModel host;
  for (auto _ : state) {
    state.PauseTiming();
    VaskModelObj model(host);
    TrelkStore store;
    store.InitTrelkStore();
    BuildLoadedFrames(model, store, frames, same);
    state.ResumeTiming();
    FillTrelkLoadFrame(model, store);
    benchmark::DoNotOptimize(store.LoadFrameValues.Count());
  }
  state.SetComplexityN(state.range(0));
}

void BM_LoadFrameSubGroupsSameLoad(benchmark::State& state) { SubGroupPass(state, true); }
void BM_LoadFrameSubGroupsAllDifferent(benchmark::State& state) { SubGroupPass(state, false); }
void BM_FillTrelkLoadFrameSameLoad(benchmark::State& state) { WholeStep(state, true); }
void BM_FillTrelkLoadFrameAllDifferent(benchmark::State& state) { WholeStep(state, false); }

BENCHMARK(BM_LoadFrameSubGroupsSameLoad)
    ->RangeMultiplier(10)
    ->Range(1000, 100000)
    ->Unit(benchmark::kMillisecond)
    ->Complexity();
BENCHMARK(BM_LoadFrameSubGroupsAllDifferent)
    ->RangeMultiplier(10)
    ->Range(1000, 100000)
    ->Unit(benchmark::kMillisecond)
    ->Complexity();
BENCHMARK(BM_FillTrelkLoadFrameSameLoad)
    ->Arg(100000)
    ->Unit(benchmark::kMillisecond);
// Each frame has two items, so 16,000 frames come near the structure's item limit.
BENCHMARK(BM_FillTrelkLoadFrameAllDifferent)
    ->Arg(16000)
    ->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace vtt
