// Reading and merging rigid diaphragms stays linear in the number of memberships: a
// building of floors, each floor one diaphragm, where every floor shares a node with the
// one above it (so every pair merges), read through the host and merged.
#include <benchmark/benchmark.h>

#include <string>
#include <unordered_map>
#include <vector>

#include "source/diaphragm_merge.h"
#include "source/fake_host_model_test_support.h"
#include "source/vask_model.h"

namespace vtt {
namespace {

// A host of `floors` diaphragms with `per_floor` nodes each; the first node of each floor
// also belongs to the diaphragm of the floor below.
class FloorsHost : public test_support::FakeHostModel {
 public:
  FloorsHost(int floors, int per_floor) {
    for (int f = 0; f < floors; ++f) {
      constraints_.push_back("D" + std::to_string(f));
      for (int k = 0; k < per_floor; ++k) {
        const std::string name = "P" + std::to_string(f) + "-" + std::to_string(k);
        points_.push_back(name);
        std::vector<std::string> held = {constraints_.back()};
        if (k == 0 && f > 0) held.insert(held.begin(), constraints_[static_cast<std::size_t>(f - 1)]);
        held_by_[name] = held;
        for (const std::string& c : held) {
          all_points_.push_back(name);
          all_constraints_.push_back(c);
        }
      }
    }
  }
  int GetPointCount() override { return static_cast<int>(points_.size()); }
  int GetPointNameList(int& count, Names& names) override {
    names = points_;
    count = static_cast<int>(names.size());
    return 0;
  }
  // Floor f, node k stands at (5 (k mod 10), 5 (k div 10), 3 f).
  int GetPointCoordinates(const std::string& name, double& x, double& y, double& z,
                          const std::string&) override {
    const std::size_t dash = name.find('-');
    const int f = std::stoi(name.substr(1, dash - 1));
    const int k = std::stoi(name.substr(dash + 1));
    x = 5.0 * (k % 10);
    y = 5.0 * (k / 10);
    z = 3.0 * f;
    return 0;
  }
  int GetPointRestraints(const std::string&, DofFlags& restraints) override {
    restraints = {};
    return 0;
  }
  int GetPointConstraints(const std::string& name, ItemType item, int& count, Names& points,
                          Names& constraints) override {
    if (item == ItemType::Group) {
      points = all_points_;
      constraints = all_constraints_;
    } else {
      constraints = held_by_.at(name);
      points.assign(constraints.size(), name);
    }
    count = static_cast<int>(constraints.size());
    return 0;
  }
  int GetConstraintNameList(int& count, Names& names) override {
    names = constraints_;
    count = static_cast<int>(names.size());
    return 0;
  }
  int GetConstraintType(const std::string&, int& type) override {
    type = 2;
    return 0;
  }
  int GetDiaphragmData(const std::string&, int& axis, std::string& csys) override {
    axis = 3;
    csys = "Global";
    return 0;
  }

 private:
  Names points_;
  Names constraints_;
  Names all_points_;
  Names all_constraints_;
  std::unordered_map<std::string, Names> held_by_;
};

// The whole reading of a model of 100 nodes a floor; 1,000 floors is 100,000 nodes.
void BM_ReadDiaphragms(benchmark::State& state) {
  FloorsHost host(static_cast<int>(state.range(0)), 100);
  for (auto _ : state) {
    VaskModelObj model(host);
    model.ReadVaskData();
    benchmark::DoNotOptimize(model.ConstraintNum());
  }
  state.SetComplexityN(state.range(0) * 100);
}
BENCHMARK(BM_ReadDiaphragms)->RangeMultiplier(4)->Range(16, 1024)->Unit(benchmark::kMillisecond)->Complexity();

// The merge alone: `floors` diaphragms of 100 nodes, every one keyed to the first.
template <void (*Merge)(VaskModelObj&)>
void MergeAllIntoOne(benchmark::State& state) {
  test_support::FakeHostModel host;
  const int floors = static_cast<int>(state.range(0));
  for (auto _ : state) {
    state.PauseTiming();
    VaskModelObj model(host);
    for (int f = 0; f < floors; ++f) {
      VaskConstraintObj* c = model.ConstraintAdd();
      c->Label = "D" + std::to_string(f);
      c->id = f + 1;
      c->idSort = 1;
      for (int k = 0; k < 100; ++k) {
        c->NodeAdd(model.AddNode("P" + std::to_string(f * 100 + k), 0, 0, f, {}));
      }
    }
    state.ResumeTiming();
    Merge(model);
    benchmark::DoNotOptimize(model.ConstraintObj(1)->NodeNum());
  }
  state.SetComplexityN(state.range(0) * 100);
}
void BM_MergeLinear(benchmark::State& state) { MergeAllIntoOne<MergeDiaphragmsBySortKey>(state); }
void BM_MergeNestedLoops(benchmark::State& state) {
  MergeAllIntoOne<MergeDiaphragmsBySortKeyLiteral>(state);
}
BENCHMARK(BM_MergeLinear)->RangeMultiplier(4)->Range(16, 1024)->Unit(benchmark::kMillisecond)->Complexity();
BENCHMARK(BM_MergeNestedLoops)->RangeMultiplier(4)->Range(16, 256)->Unit(benchmark::kMillisecond)->Complexity();

}  // namespace
}  // namespace vtt
