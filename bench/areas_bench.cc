// Reading areas stays linear in model size: dividing the triangles of a regular mesh (each
// triangle asks for four new nodes, most of them shared), and the grid search for a present
// node against the linear search it must agree with.
#include <benchmark/benchmark.h>

#include <cmath>
#include <cstddef>
#include <random>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "source/fake_host_model_test_support.h"
#include "source/vask_model.h"

namespace vtt {
namespace {

// A flat square mesh of n by n cells, each cut into two triangles, on one thin shell section.
class TriangleMeshHost : public test_support::FakeHostModel {
 public:
  explicit TriangleMeshHost(int n) {
    for (int i = 0; i <= n; ++i) {
      for (int j = 0; j <= n; ++j) {
        const std::string name = "P" + std::to_string(i) + "_" + std::to_string(j);
        pointIndex_[name] = points_.size();
        points_.push_back({name, i * 1.0, j * 1.0});
      }
    }
    const auto corner = [](int i, int j) {
      return "P" + std::to_string(i) + "_" + std::to_string(j);
    };
    for (int i = 0; i < n; ++i) {
      for (int j = 0; j < n; ++j) {
        AddTriangle({corner(i, j), corner(i + 1, j), corner(i + 1, j + 1)});
        AddTriangle({corner(i, j), corner(i + 1, j + 1), corner(i, j + 1)});
      }
    }
  }
  int TriangleNum() const { return static_cast<int>(triangles_.size()); }

  int GetAreaSectionNameList(int& count, Names& names) override {
    names = {"Slab"};
    count = 1;
    return 0;
  }
  int GetAreaSectionType(const std::string& /*name*/, int& type) override {
    type = 1;
    return 0;
  }
  int GetShellSection(const std::string& /*name*/, int& shellType, bool& drillingDof,
                      std::string& material, double& materialAngle, double& membraneThickness,
                      double& bendingThickness) override {
    shellType = 1;
    drillingDof = false;
    material = "C30";
    materialAngle = 0.0;
    membraneThickness = 0.2;
    bendingThickness = 0.2;
    return 0;
  }
  int GetPointNameList(int& count, Names& names) override {
    names.clear();
    for (const Point& p : points_) names.push_back(p.name);
    count = static_cast<int>(names.size());
    return 0;
  }
  int GetPointCoordinates(const std::string& name, double& x, double& y, double& z,
                          const std::string& /*csys*/) override {
    const Point& p = points_[pointIndex_.at(name)];
    x = p.x;
    y = p.y;
    z = 0.0;
    return 0;
  }
  int GetAreaNameList(int& count, Names& names) override {
    names.clear();
    for (std::size_t k = 0; k < triangles_.size(); ++k) names.push_back("T" + std::to_string(k));
    count = static_cast<int>(names.size());
    return 0;
  }
  int GetAreaSection(const std::string& /*name*/, std::string& section) override {
    section = "Slab";
    return 0;
  }
  int GetAreaPoints(const std::string& name, int& count, Names& names) override {
    names = triangles_[std::stoul(name.substr(1))];
    count = 3;
    return 0;
  }

 private:
  struct Point {
    std::string name;
    double x;
    double y;
  };
  void AddTriangle(Names corners) { triangles_.push_back(std::move(corners)); }

  std::vector<Point> points_;
  std::unordered_map<std::string, std::size_t> pointIndex_;
  std::vector<Names> triangles_;
};

void BM_ReadTriangleMesh(benchmark::State& state) {
  const int n = static_cast<int>(std::lround(std::sqrt(state.range(0) / 2.0)));
  TriangleMeshHost host(n);
  for (auto _ : state) {
    VaskModelObj model(host);
    model.ReadVaskData();
    benchmark::DoNotOptimize(model.NodeNum());
  }
  state.SetComplexityN(host.TriangleNum());
  state.counters["triangles"] = host.TriangleNum();
}
BENCHMARK(BM_ReadTriangleMesh)
    ->Arg(2000)
    ->Arg(8000)
    ->Arg(32000)
    ->Arg(128000)
    ->Arg(200000)
    ->Unit(benchmark::kMillisecond)
    ->Complexity(benchmark::oN);

// n nodes at random in a 100 by 100 by 30 box, and queries at every node, moved by half
// the tolerance.
void FillNodes(VaskModelObj& model, int n) {
  std::mt19937_64 random(7);
  std::uniform_real_distribution<double> plan(0.0, 100.0);
  std::uniform_real_distribution<double> height(0.0, 30.0);
  for (int i = 0; i < n; ++i) {
    model.AddNode("N" + std::to_string(i), plan(random), plan(random), height(random), DofFlags{});
  }
}

template <bool Indexed>
void BM_FindCoincidentNode(benchmark::State& state) {
  test_support::FakeHostModel host;
  VaskModelObj model(host);
  const int n = static_cast<int>(state.range(0));
  FillNodes(model, n);
  constexpr double shift = 0.5 * CoincidentPointIndex::kTolerance;
  for (auto _ : state) {
    for (int i = 1; i <= n; ++i) {
      const VaskNodeObj& node = *model.NodeObj(i);
      const VaskNodeObj* found =
          Indexed ? model.FindCoincidentNode(node.x + shift, node.y, node.z - shift)
                  : model.FindCoincidentNodeLinear(node.x + shift, node.y, node.z - shift);
      benchmark::DoNotOptimize(found);
    }
  }
  state.SetComplexityN(n);
}
BENCHMARK_TEMPLATE(BM_FindCoincidentNode, true)->RangeMultiplier(4)->Range(64, 4096)->Complexity();
BENCHMARK_TEMPLATE(BM_FindCoincidentNode, false)->RangeMultiplier(4)->Range(64, 4096)->Complexity();

}  // namespace
}  // namespace vtt
