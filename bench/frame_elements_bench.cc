// The component and element steps for frames stay linear in the number of frames: a
// building of N frames over a handful of sections, with releases and hinges mixed in,
// through the compound and element steps.
#include <benchmark/benchmark.h>

#include "components/fill_trelk_component_compound.h"
#include "elements/fill_trelk_element.h"
#include "source/fake_host_model_test_support.h"
#include "source/vask_model.h"
#include "store/trelk_store.h"

namespace vtt {
namespace {

// N frames on eight sections (four steel, four concrete); every seventh frame released at
// its I end with one of three patterns and at its J end with one of two, every fifth hinged.
void BuildFrames(VaskModelObj& model, int frames) {
  std::vector<VaskPropFrameSectObj*> sections;
  for (int s = 0; s < 8; ++s) {
    VaskPropMaterialObj* material = model.AddPropMaterial();
    material->Label = "M" + std::to_string(s);
    material->MatType = s < 4 ? 1 : 2;
    VaskPropFrameSectObj* section = model.AddPropFrameSect();
    section->Label = "S" + std::to_string(s);
    section->PropMatObj = material;
    section->area = 0.1;
    sections.push_back(section);
  }
  std::vector<VaskFrameReleaseObj*> patterns;
  for (int p = 0; p < 5; ++p) {
    VaskFrameReleaseObj* r = model.FrameReleaseAdd();
    r->idTrelkXecElaRelease = p + 2;
    patterns.push_back(r);
  }
  for (int f = 0; f < frames; ++f) {
    VaskFrameObj* frame = model.AddFrame();
    frame->Label = "F" + std::to_string(f);
    VaskPropFrameSectObj* section = sections[static_cast<std::size_t>(f % 8)];
    frame->PropFrameSectObj = section;
    frame->TrelkMatType = section->PropMatObj->MatType == 1 ? 2 : 1;
    frame->TrelkFrameType = 1 + f % 3;
    frame->NodeI = 2 + f;
    frame->NodeJ = 3 + f;
    if (f % 7 == 0) {
      frame->ReleaseIObj = patterns[static_cast<std::size_t>(f % 3)];
      frame->ReleaseJObj = patterns[static_cast<std::size_t>(3 + f % 2)];
    }
    if (f % 5 == 0) frame->HingeI = true;
  }
}

void BM_CompoundsAndFrameElements(benchmark::State& state) {
  const int frames = static_cast<int>(state.range(0));
  test_support::FakeHostModel host;
  for (auto _ : state) {
    state.PauseTiming();
    VaskModelObj model(host);
    BuildFrames(model, frames);
    TrelkStore store;
    store.InitTrelkStore();
    state.ResumeTiming();
    FillTrelkCompoundComponents(model, store);
    FillTrelkElements(model, store);
    benchmark::DoNotOptimize(store.Elems.Count());
  }
  state.SetComplexityN(state.range(0));
}
BENCHMARK(BM_CompoundsAndFrameElements)
    ->RangeMultiplier(4)
    ->Range(3125, 200000)
    ->Unit(benchmark::kMillisecond)
    ->Complexity();

}  // namespace
}  // namespace vtt
