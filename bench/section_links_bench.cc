// Stage 16 stays linear in model size: the label index against the nested loops it must
// agree with, for n materials and n frame sections.
#include <benchmark/benchmark.h>

#include <string>

#include "source/fake_host_model_test_support.h"
#include "source/vask_model.h"
#include "source/vask_section_links.h"

namespace vtt {
namespace {

// n materials "Mat0".."Mat<n-1>" and n sections naming them in upper case, in reverse order.
void FillModel(VaskModelObj& model, int n) {
  for (int i = 0; i < n; ++i) {
    VaskPropMaterialObj* material = model.AddPropMaterial();
    material->Label = "Mat" + std::to_string(i);
    material->MatType = 2;
  }
  for (int i = 0; i < n; ++i) {
    VaskPropFrameSectObj* section = model.AddPropFrameSect();
    section->Label = "S" + std::to_string(i);
    section->PropMatName = "MAT" + std::to_string(n - 1 - i);
  }
}

void BM_LinkFrameSectionsIndexed(benchmark::State& state) {
  test_support::FakeHostModel host;
  VaskModelObj model(host);
  FillModel(model, static_cast<int>(state.range(0)));
  for (auto _ : state) {
    LinkFrameSectionsToMaterials(model);
    benchmark::DoNotOptimize(model.PropFrameSectObj(1)->PropMatObj);
  }
  state.SetComplexityN(state.range(0));
}
BENCHMARK(BM_LinkFrameSectionsIndexed)->RangeMultiplier(4)->Range(256, 65536)->Complexity();

void BM_LinkFrameSectionsLiteral(benchmark::State& state) {
  test_support::FakeHostModel host;
  VaskModelObj model(host);
  FillModel(model, static_cast<int>(state.range(0)));
  for (auto _ : state) {
    LinkFrameSectionsToMaterialsLiteral(model);
    benchmark::DoNotOptimize(model.PropFrameSectObj(1)->PropMatObj);
  }
  state.SetComplexityN(state.range(0));
}
BENCHMARK(BM_LinkFrameSectionsLiteral)->RangeMultiplier(4)->Range(256, 4096)->Complexity();

}  // namespace
}  // namespace vtt
