#include "generate_building.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <iterator>
#include <stdexcept>
#include <utility>

namespace vtt::generate {
namespace {

// The building in kN and m: 6 m bays along X, 5 m along Y, a 4 m ground storey and
// 3.5 m above it.
constexpr int kUnitsKnM = 6;
constexpr double kBayX = 6.0;
constexpr double kBayY = 5.0;
constexpr double kGroundStorey = 4.0;
constexpr double kStorey = 3.5;

// Hands the text on in pieces of about this size, so that a model of any size is written
// without being held whole.
constexpr std::size_t kPiece = std::size_t{1} << 20;

// A pseudo-random sequence that is the same on every platform and library (the standard
// distributions are not): splitmix64.
class Sequence {
 public:
  explicit Sequence(std::uint64_t seed) : state_(seed) {}
  std::uint64_t Next() {
    std::uint64_t z = (state_ += 0x9E3779B97F4A7C15ULL);
    z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9ULL;
    z = (z ^ (z >> 27)) * 0x94D049BB133111EBULL;
    return z ^ (z >> 31);
  }
  // Uniform in [0, 1).
  double Unit() { return static_cast<double>(Next() >> 11) * 0x1.0p-53; }
  // One of `count` choices, 0 to count - 1.
  int Choice(int count) { return static_cast<int>(Next() % static_cast<std::uint64_t>(count)); }

 private:
  std::uint64_t state_;
};

void Check(const BuildingOptions& options) {
  if (options.storeys < 1) throw std::invalid_argument("a building has at least one storey");
  if (options.bays_x < 1 || options.bays_y < 1) {
    throw std::invalid_argument("a building has at least one bay in each direction");
  }
}

class BuildingWriter {
 public:
  BuildingWriter(const BuildingOptions& options,
                 const std::function<void(std::string_view)>& sink)
      : o_(options), sink_(sink), random_(options.seed) {}

  void Write() {
    Text("{\n\"format\": \"vask-model\", \"version\": 1, \"units\": ");
    Put("{},\n", kUnitsKnM);
    Materials();
    Sections();
    Points();
    if (f_.diaphragms) Constraints();
    Frames();
    Areas();
    LoadPatterns();
    if (f_.functions) Functions();
    if (f_.groups) Groups();
    if (f_.cases) {
      LoadCases();
    } else {
      Text("\"load_cases\": []\n");
    }
    Text("}\n");
    Flush();
  }

 private:
  // ---- Output ----
  template <class... Args>
  void Put(fmt::format_string<Args...> format, Args&&... args) {
    fmt::format_to(std::back_inserter(buffer_), format, std::forward<Args>(args)...);
    if (buffer_.size() >= kPiece) Flush();
  }
  void Text(std::string_view text) {
    buffer_.append(text);
    if (buffer_.size() >= kPiece) Flush();
  }
  void Flush() {
    if (buffer_.size() == 0) return;
    sink_(std::string_view(buffer_.data(), buffer_.size()));
    buffer_.clear();
  }
  // The separator ahead of the n-th entry of a list (from 0).
  void Separator(std::int64_t n) { Text(n == 0 ? "\n " : ",\n "); }

  // ---- Grid ----
  int Top() const { return o_.storeys; }
  static double Z(int level) { return level == 0 ? 0.0 : kGroundStorey + kStorey * (level - 1); }
  bool OnFacadeY(int j) const { return j == 0 || j == o_.bays_y; }
  bool OnFacadeX(int i) const { return i == 0 || i == o_.bays_x; }
  bool OnPerimeter(int i, int j) const { return OnFacadeX(i) || OnFacadeY(j); }
  // The middle facade bays hold the walls: layered ones on the Y facades (bay i), thin
  // ones on the X facades (bay j).
  int WallBayX() const { return o_.bays_x / 2; }
  int WallBayY() const { return o_.bays_y / 2; }
  // Every third bay of the Y facades, beside the wall bay, holds a brace in each storey.
  bool BraceBay(int i) const { return f_.braces && i % 3 == 1 && i != WallBayX(); }
  // Slabs on the plan's diagonal are given as two triangles.
  bool TriangleBay(int i, int j) const { return f_.triangles && i == j; }

  // ---- Sections of the model ----
  void Materials() {
    Text(
        "\"materials\": [\n"
        " {\"name\": \"C30\", \"type\": 2, \"weight_per_volume\": 25, \"mass_per_volume\": 2.549,"
        " \"isotropic\": {\"E\": 33000000, \"U\": 0.2, \"A\": 1e-05, \"G\": 13750000},"
        " \"concrete\": {\"fc\": 30000}},\n"
        " {\"name\": \"S355\", \"type\": 1, \"weight_per_volume\": 76.98, \"mass_per_volume\": "
        "7.849,"
        " \"isotropic\": {\"E\": 210000000, \"U\": 0.3, \"A\": 1.2e-05, \"G\": 80769231},"
        " \"steel\": {\"Fy\": 355000, \"Fu\": 510000, \"eFy\": 390500, \"eFu\": 561000}},\n"
        " {\"name\": \"B500\", \"type\": 6, \"symmetry\": 3, \"weight_per_volume\": 76.98,"
        " \"mass_per_volume\": 7.849, \"uniaxial\": {\"E\": 200000000, \"A\": 1e-05},"
        " \"rebar\": {\"Fy\": 500000, \"Fu\": 540000, \"eFy\": 550000, \"eFu\": 594000}}\n"
        "],\n");
  }

  void Sections() {
    Text(
        "\"frame_sections\": [\n"
        " {\"name\": \"C600\", \"type\": 8, \"material\": \"C30\", \"rebar_design\": 1,"
        " \"properties\": {\"area\": 0.36, \"As2\": 0.3, \"As3\": 0.3, \"J\": 0.0183,"
        " \"I22\": 0.0108, \"I33\": 0.0108}},\n"
        " {\"name\": \"C500\", \"type\": 8, \"material\": \"C30\", \"rebar_design\": 1,"
        " \"properties\": {\"area\": 0.25, \"As2\": 0.2083, \"As3\": 0.2083, \"J\": 0.0088,"
        " \"I22\": 0.0052, \"I33\": 0.0052}},\n"
        " {\"name\": \"B300x600\", \"type\": 8, \"material\": \"C30\", \"rebar_design\": 2,"
        " \"properties\": {\"area\": 0.18, \"As2\": 0.15, \"As3\": 0.15, \"J\": 0.0037,"
        " \"I22\": 0.00135, \"I33\": 0.0054}},\n"
        " {\"name\": \"IPE400\", \"type\": 1, \"material\": \"S355\","
        " \"properties\": {\"area\": 0.00845, \"As2\": 0.00427, \"As3\": 0.00391,"
        " \"J\": 5.1e-07, \"I22\": 1.318e-05, \"I33\": 0.0002313, \"S22\": 0.000146,"
        " \"S33\": 0.001156, \"Z22\": 0.000229, \"Z33\": 0.001307, \"R22\": 0.0395,"
        " \"R33\": 0.1655}},\n"
        " {\"name\": \"CHS219\", \"type\": 7, \"material\": \"S355\","
        " \"properties\": {\"area\": 0.00536, \"As2\": 0.00268, \"As3\": 0.00268,"
        " \"J\": 6.06e-05, \"I22\": 3.03e-05, \"I33\": 3.03e-05, \"R22\": 0.0752,"
        " \"R33\": 0.0752}}\n"
        "],\n"
        "\"area_sections\": [\n"
        " {\"name\": \"SLAB200\", \"shell_type\": 1, \"material\": \"C30\","
        " \"membrane_thickness\": 0.2, \"bending_thickness\": 0.2},\n"
        " {\"name\": \"WALL200\", \"shell_type\": 1, \"material\": \"C30\","
        " \"membrane_thickness\": 0.2, \"bending_thickness\": 0.2},\n"
        " {\"name\": \"WALL300L\", \"shell_type\": 6, \"layers\": [\n"
        "  {\"name\": \"CONC\", \"distance\": 0, \"thickness\": 0.3, \"type\": 1,"
        " \"integration_points\": 2, \"material\": \"C30\", \"S11\": 1, \"S22\": 2, \"S12\": 1},\n"
        "  {\"name\": \"VERT\", \"distance\": -0.11, \"thickness\": 0.0011, \"type\": 1,"
        " \"material\": \"B500\", \"material_angle\": 90, \"S11\": 2, \"S22\": 0, \"S12\": 0},\n"
        "  {\"name\": \"HORZ\", \"distance\": 0.11, \"thickness\": 0.0008, \"type\": 1,"
        " \"material\": \"B500\", \"S11\": 2, \"S22\": 0, \"S12\": 0}]}\n"
        "],\n");
  }

  // ---- Points ----
  void Point(int i, int j, int k) { Put("\"J{}-{}-{}\"", i, j, k); }

  void Points() {
    Text("\"points\": [");
    std::int64_t n = 0;
    for (int k = 0; k <= Top(); ++k) {
      for (int j = 0; j <= o_.bays_y; ++j) {
        for (int i = 0; i <= o_.bays_x; ++i) {
          Separator(n++);
          Put("{{\"name\": \"J{}-{}-{}\", \"x\": {}, \"y\": {}, \"z\": {}", i, j, k, kBayX * i,
              kBayY * j, Z(k));
          if (k == 0) {
            Text(", \"restraints\": [true, true, true, true, true, true]}");
            continue;
          }
          if (f_.diaphragms) Put(", \"constraints\": [\"D{}\"]", k);
          // Facade joints carry the cladding's own mass.
          if (f_.masses && OnPerimeter(i, j)) {
            static constexpr std::array<double, 3> kFacadeMass = {1.0, 1.5, 2.0};
            const double m = kFacadeMass[static_cast<std::size_t>(random_.Choice(3))];
            Put(", \"mass\": [{}, {}, 0, 0, 0, 0]", m, m);
          }
          if (f_.point_forces) PointForces(i, j, k);
          Text("}");
        }
      }
    }
    Text("\n],\n");
  }

  void PointForces(int i, int j, int k) {
    std::array<std::string, 3> forces;
    std::size_t count = 0;
    // Wind on the windward facades, growing with height.
    if (i == 0) {
      forces[count++] = fmt::format(
          "{{\"pattern\": \"WIND-X\", \"values\": [{}, 0, 0, 0, 0, 0]}}", 2.0 + 0.1 * k);
    }
    if (j == 0) {
      forces[count++] = fmt::format(
          "{{\"pattern\": \"WIND-Y\", \"values\": [0, {}, 0, 0, 0, 0]}}", 1.5 + 0.1 * k);
    }
    // Plant on the roof: a downward force with a small overturning moment.
    if (k == Top() && (i + j) % 5 == 0) {
      static constexpr std::array<double, 3> kPlant = {8.0, 10.0, 12.0};
      const double f = kPlant[static_cast<std::size_t>(random_.Choice(3))];
      forces[count++] = fmt::format(
          "{{\"pattern\": \"LIVE\", \"csys\": \"GLOBAL\", \"values\": [0, 0, {}, 0.5, 0, 0]}}",
          -f);
    }
    if (count == 0) return;
    Text(", \"forces\": [");
    for (std::size_t n = 0; n < count; ++n) {
      if (n > 0) Text(", ");
      Text(forces[n]);
    }
    Text("]");
  }

  void Constraints() {
    Text("\"constraints\": [");
    for (int k = 1; k <= Top(); ++k) {
      Separator(k - 1);
      Put("{{\"name\": \"D{}\", \"type\": 2, \"axis\": 3}}", k);
    }
    Text("\n],\n");
  }

  // ---- Frames ----
  void Frames() {
    Text("\"frames\": [");
    std::int64_t n = 0;
    for (int k = 1; k <= Top(); ++k) {
      for (int j = 0; j <= o_.bays_y; ++j) {
        for (int i = 0; i <= o_.bays_x; ++i) {
          Separator(n++);
          Column(i, j, k);
        }
      }
      for (int j = 0; j <= o_.bays_y; ++j) {
        for (int i = 0; i < o_.bays_x; ++i) {
          Separator(n++);
          Beam('X', i, j, k, i + 1, j, OnFacadeY(j));
        }
      }
      for (int j = 0; j < o_.bays_y; ++j) {
        for (int i = 0; i <= o_.bays_x; ++i) {
          Separator(n++);
          Beam('Y', i, j, k, i, j + 1, OnFacadeX(i));
        }
      }
      for (const int j : {0, o_.bays_y}) {
        for (int i = 0; i < o_.bays_x; ++i) {
          if (!BraceBay(i)) continue;
          Separator(n++);
          Put("{{\"name\": \"BR{}-{}-{}\", \"section\": \"CHS219\", \"i\": ", i, j, k);
          Point(i, j, k - 1);
          Text(", \"j\": ");
          Point(i + 1, j, k);
          // Pinned at both ends: the brace carries axial force only.
          if (f_.releases) {
            Text(
                ", \"releases\": {\"i\": [false, false, false, false, true, true],"
                " \"j\": [false, false, false, false, true, true]}");
          }
          Text("}");
        }
      }
    }
    Text("\n],\n");
  }

  void Column(int i, int j, int k) {
    // The lower half of the building stands on the larger columns.
    const char* section = 2 * k <= Top() + 1 ? "C600" : "C500";
    Put("{{\"name\": \"C{}-{}-{}\", \"section\": \"{}\", \"i\": ", i, j, k, section);
    Point(i, j, k - 1);
    Text(", \"j\": ");
    Point(i, j, k);
    // The ground storey forms its plastic hinges at both ends.
    if (f_.hinges && k == 1) {
      Text(
          ", \"hinges\": [{\"dof\": 10, \"relative_distance\": 0},"
          " {\"dof\": 10, \"relative_distance\": 1}]");
    }
    Text("}");
  }

  // A beam from (i, j) to (i2, j2) at level k; `facade`: it runs along a facade.
  void Beam(char axis, int i, int j, int k, int i2, int j2, bool facade) {
    const bool roof = k == Top();
    Put("{{\"name\": \"B{}{}-{}-{}\", \"section\": \"{}\", \"i\": ", axis, i, j, k,
        roof ? "IPE400" : "B300x600");
    Point(i, j, k);
    Text(", \"j\": ");
    Point(i2, j2, k);
    const int along = axis == 'X' ? i : j;
    if (facade) {
      if (f_.hinges) {
        Text(
            ", \"hinges\": [{\"dof\": 6, \"relative_distance\": 0.05},"
            " {\"dof\": 6, \"relative_distance\": 0.95}]");
      }
      if (f_.masses) Text(", \"mass_per_length\": 0.5");
    } else if (f_.releases && (i + j + k) % 4 == 3) {
      Text(", \"releases\": {\"j\": [false, false, false, false, false, true]}");
    }
    // Partitions on every beam; cladding on facade beams; a partial live load on every
    // third beam.
    if (f_.frame_distributed_loads) DistributedLoads(i, j, k, facade);
    if (f_.frame_point_loads) PointLoads(i, j, along, facade);
    Text("}");
  }

  void DistributedLoads(int i, int j, int k, bool facade) {
    Text(", \"distributed_loads\": [");
    Text(
        "{\"pattern\": \"DEAD\", \"dir\": 10, \"rd1\": 0, \"rd2\": 1, \"val1\": 4.5,"
        " \"val2\": 4.5}");
    if (facade) {
      Text(
          ", {\"pattern\": \"SDEAD\", \"dir\": 10, \"rd1\": 0, \"rd2\": 1, \"val1\": 8,"
          " \"val2\": 8}");
    }
    if ((i + j + k) % 3 == 0) {
      Text(
          ", {\"pattern\": \"LIVE\", \"dir\": 11, \"rd1\": 0.25, \"rd2\": 0.75, \"val1\": 6,"
          " \"val2\": 6}");
    }
    Text("]");
  }

  // A secondary beam bears at mid-span of every other interior beam; a heavy item stands
  // at the I end of some (it goes to the joint).
  void PointLoads(int i, int j, int along, bool facade) {
    const bool midspan = !facade && along % 2 == 0;
    const bool atEnd = (i + j) % 7 == 0;
    if (midspan || atEnd) {
      Text(", \"point_loads\": [");
      if (midspan) Text("{\"pattern\": \"LIVE\", \"dir\": 10, \"rd\": 0.5, \"val\": 20}");
      if (midspan && atEnd) Text(", ");
      if (atEnd) Text("{\"pattern\": \"SDEAD\", \"dir\": 6, \"rd\": 0, \"val\": -5}");
      Text("]");
    }
  }

  // ---- Areas ----
  void Areas() {
    Text("\"areas\": [");
    std::int64_t n = 0;
    for (int k = 1; k <= Top(); ++k) {
      for (int j = 0; j < o_.bays_y && f_.slabs; ++j) {
        for (int i = 0; i < o_.bays_x; ++i) {
          if (TriangleBay(i, j)) {
            Separator(n++);
            Slab(fmt::format("T{}-{}-{}a", i, j, k), {{{i, j}, {i + 1, j}, {i + 1, j + 1}}}, 3, k);
            Separator(n++);
            Slab(fmt::format("T{}-{}-{}b", i, j, k), {{{i, j}, {i + 1, j + 1}, {i, j + 1}}}, 3, k);
          } else {
            Separator(n++);
            Slab(fmt::format("S{}-{}-{}", i, j, k),
                 {{{i, j}, {i + 1, j}, {i + 1, j + 1}, {i, j + 1}}}, 4, k);
          }
        }
      }
      if (!f_.walls) continue;
      for (const int j : {0, o_.bays_y}) {
        const int i = WallBayX();
        Separator(n++);
        Put("{{\"name\": \"WL{}-{}-{}\", \"section\": \"WALL300L\", \"points\": [", i, j, k);
        WallCorners(i, j, i + 1, j, k);
      }
      for (const int i : {0, o_.bays_x}) {
        const int j = WallBayY();
        Separator(n++);
        Put("{{\"name\": \"WT{}-{}-{}\", \"section\": \"WALL200\", \"points\": [", i, j, k);
        WallCorners(i, j, i, j + 1, k);
      }
    }
    Text("\n],\n");
  }

  void WallCorners(int i, int j, int i2, int j2, int k) {
    Point(i, j, k - 1);
    Text(", ");
    Point(i2, j2, k - 1);
    Text(", ");
    Point(i2, j2, k);
    Text(", ");
    Point(i, j, k);
    Text("]}");
  }

  void Slab(const std::string& name, const std::array<std::array<int, 2>, 4>& corners,
            int count, int k) {
    Put("{{\"name\": \"{}\", \"section\": \"SLAB200\", \"points\": [", name);
    for (int c = 0; c < count; ++c) {
      if (c > 0) Text(", ");
      Point(corners[static_cast<std::size_t>(c)][0], corners[static_cast<std::size_t>(c)][1], k);
    }
    Text("]");
    // Screed and finishes everywhere; office live load on the floors; the roof takes its
    // live load to the beams and carries the mass of its plant.
    if (f_.area_uniform_loads) {
      Text(", \"uniform_loads\": [{\"pattern\": \"SDEAD\", \"dir\": 10, \"value\": 1.5}");
      if (k != Top()) Text(", {\"pattern\": \"LIVE\", \"dir\": 10, \"value\": 2.5}");
      Text("]");
    }
    if (k == Top()) {
      if (f_.masses) Text(", \"mass_per_area\": 0.05");
      if (f_.area_to_frame_loads) {
        Text(
            ", \"uniform_to_frame_loads\": [{\"pattern\": \"ROOF\","
            " \"dir\": 11, \"value\": 1, \"dist_type\": 2}]");
      }
    }
    Text("}");
  }

  // ---- Loads, functions, groups and cases ----
  void LoadPatterns() {
    Text(
        "\"load_patterns\": [\n"
        " {\"name\": \"DEAD\", \"type\": 1, \"self_weight_multiplier\": 1},\n"
        " {\"name\": \"SDEAD\", \"type\": 2},\n"
        " {\"name\": \"LIVE\", \"type\": 3},\n"
        " {\"name\": \"ROOF\", \"type\": 3},\n"
        " {\"name\": \"WIND-X\", \"type\": 6},\n"
        " {\"name\": \"WIND-Y\", \"type\": 6}\n"
        "],\n");
    if (!f_.mass_source) return;
    Text(
        "\"mass_source\": {\"option\": 3, \"loads\": [{\"pattern\": \"SDEAD\", \"factor\": 1},"
        " {\"pattern\": \"LIVE\", \"factor\": 0.25}]},\n");
  }

  void Functions() {
    // A ground motion record: a few damped waves of the seed's phases, with noise, 10 s at
    // 0.01 s.
    constexpr int kSteps = 1000;
    constexpr double kDt = 0.01;
    std::array<double, 3> phase{};
    for (double& p : phase) p = 6.283185307179586 * random_.Unit();
    Text("\"functions\": [\n {\"name\": \"QUAKE\", \"kind\": 1, \"points\": [");
    for (int s = 0; s <= kSteps; ++s) {
      const double t = s * kDt;
      const double envelope = t * std::exp(1.0 - t / 2.0) / 2.0;
      const double wave = 0.5 * std::sin(2.0 * 3.141592653589793 * 1.1 * t + phase[0]) +
                          0.3 * std::sin(2.0 * 3.141592653589793 * 2.7 * t + phase[1]) +
                          0.2 * std::sin(2.0 * 3.141592653589793 * 6.3 * t + phase[2]) +
                          0.1 * (2.0 * random_.Unit() - 1.0);
      const double value = std::round(0.3 * envelope * wave * 1e5) / 1e5;
      Put("{}[{}, {}]", s == 0 ? "" : ", ", t, value);
    }
    Text(
        "]},\n"
        " {\"name\": \"SINE-1HZ\", \"kind\": 2, \"period\": 1, \"steps_per_cycle\": 20,"
        " \"cycles\": 10, \"amplitude\": 0.2},\n"
        " {\"name\": \"RAMP\", \"kind\": 4, \"time\": 1, \"amplitude\": 1, \"max_time\": 10}\n"
        "],\n");
  }

  void Groups() {
    Text("\"groups\": [");
    for (int k = 1; k <= Top(); ++k) {
      Separator(k - 1);
      Put("{{\"name\": \"STOREY-{}\", \"assignments\": [", k);
      bool first = true;
      const auto entry = [&](int type) {
        Put("{}{{\"type\": {}, \"name\": ", first ? "" : ", ", type);
        first = false;
      };
      for (int j = 0; j <= o_.bays_y; ++j) {
        for (int i = 0; i <= o_.bays_x; ++i) {
          entry(1);
          Point(i, j, k);
          Text("}");
          entry(2);
          Put("\"C{}-{}-{}\"}}", i, j, k);
          if (i < o_.bays_x) {
            entry(2);
            Put("\"BX{}-{}-{}\"}}", i, j, k);
          }
          if (j < o_.bays_y) {
            entry(2);
            Put("\"BY{}-{}-{}\"}}", i, j, k);
          }
          if (f_.slabs && i < o_.bays_x && j < o_.bays_y) {
            if (TriangleBay(i, j)) {
              entry(5);
              Put("\"T{}-{}-{}a\"}}", i, j, k);
              entry(5);
              Put("\"T{}-{}-{}b\"}}", i, j, k);
            } else {
              entry(5);
              Put("\"S{}-{}-{}\"}}", i, j, k);
            }
          }
          if (OnFacadeY(j) && i < o_.bays_x && BraceBay(i)) {
            entry(2);
            Put("\"BR{}-{}-{}\"}}", i, j, k);
          }
          if (f_.walls && OnFacadeY(j) && i == WallBayX()) {
            entry(5);
            Put("\"WL{}-{}-{}\"}}", i, j, k);
          }
          if (f_.walls && OnFacadeX(i) && j == WallBayY()) {
            entry(5);
            Put("\"WT{}-{}-{}\"}}", i, j, k);
          }
        }
      }
      Text("]}");
    }
    Text("\n],\n");
  }

  void LoadCases() {
    // The pushovers are monitored at the roof's corner, to a drift of 2 % of the height.
    const double height = Z(Top());
    const std::string roof = fmt::format("J{}-{}-{}", o_.bays_x, o_.bays_y, Top());
    Text(
        "\"load_cases\": [\n"
        " {\"name\": \"DEAD\", \"type\": 1, \"loads\": [{\"type\": \"Load\", \"name\": "
        "\"DEAD\"}]},\n"
        " {\"name\": \"MODAL\", \"type\": 3},\n"
        " {\"name\": \"GRAVITY\", \"type\": 2, \"loads\": ["
        "{\"type\": \"Load\", \"name\": \"DEAD\", \"factor\": 1},"
        " {\"type\": \"Load\", \"name\": \"SDEAD\", \"factor\": 1},"
        " {\"type\": \"Load\", \"name\": \"LIVE\", \"factor\": 0.3},"
        " {\"type\": \"Load\", \"name\": \"ROOF\", \"factor\": 0.3}]},\n");
    // Without functions there are no history cases, and the last pushover ends the list.
    const auto push = [&](const char* name, int dof, const char* loads, bool last = false) {
      Put(" {{\"name\": \"{}\", \"type\": 2, \"load_application\": {{\"control\": 2,"
          " \"displacement\": {}, \"monitored_dof\": {}, \"monitored_point\": \"{}\"}},"
          " \"loads\": [{}]}}{}\n",
          name, 0.02 * height, dof, roof, loads, last ? "\n]" : ",");
    };
    push("PUSH-X", 1, "{\"type\": \"Accel\", \"name\": \"UX\", \"factor\": -1}");
    push("PUSH-Y", 2, "{\"type\": \"Accel\", \"name\": \"UY\", \"factor\": -1}");
    push("PUSH-WIND", 1, "{\"type\": \"Load\", \"name\": \"WIND-X\", \"factor\": 1}");
    push("PUSH-MODE1", 1, "{\"type\": \"Mode\", \"name\": \"1\", \"factor\": 1}",
         !f_.functions);
    if (!f_.functions) return;
    Text(
        " {\"name\": \"TH-QUAKE\", \"type\": 8, \"loads\": ["
        "{\"type\": \"Accel\", \"name\": \"U1\", \"function\": \"QUAKE\", \"factor\": 9.81},"
        " {\"type\": \"Accel\", \"name\": \"U2\", \"function\": \"QUAKE\", \"factor\": 2.943}],"
        " \"time_step\": {\"steps\": 1000, \"size\": 0.01},"
        " \"damping\": {\"type\": 2, \"values\": [0.1, 1.0], \"ratios\": [0.05, 0.05]}},\n"
        " {\"name\": \"TH-SINE\", \"type\": 8, \"loads\": ["
        "{\"type\": \"Accel\", \"name\": \"U1\", \"function\": \"SINE-1HZ\", \"factor\": 4.905,"
        " \"time_factor\": 1.5},"
        " {\"type\": \"Accel\", \"name\": \"U3\", \"function\": \"RAMP\", \"factor\": 1}],"
        " \"time_step\": {\"steps\": 1500, \"size\": 0.01},"
        " \"damping\": {\"type\": 1, \"mass_coefficient\": 0.6, \"stiffness_coefficient\": "
        "0.002}}\n"
        "]\n");
  }

  const BuildingOptions& o_;
  const BuildingFeatures& f_ = o_.features;
  const std::function<void(std::string_view)>& sink_;
  Sequence random_;
  fmt::memory_buffer buffer_;
};

}  // namespace

BuildingOptions OptionsForJoints(std::int64_t joints, std::uint64_t seed) {
  // (levels) x (side)^2 joints with side = 2 x levels: side^3 = 2 x joints.
  const double target = static_cast<double>(std::max<std::int64_t>(joints, 1));
  const int side = std::max(2, static_cast<int>(std::lround(std::cbrt(2.0 * target))));
  const int levels =
      std::max(2, static_cast<int>(std::lround(target / (static_cast<double>(side) * side))));
  BuildingOptions options;
  options.storeys = levels - 1;
  options.bays_x = side - 1;
  options.bays_y = side - 1;
  options.seed = seed;
  return options;
}

BuildingOptions RandomBuildingOptions(std::uint64_t seed) {
  Sequence random(seed);
  BuildingOptions options;
  options.storeys = 1 + random.Choice(4);
  options.bays_x = 1 + random.Choice(3);
  options.bays_y = 1 + random.Choice(3);
  options.seed = seed;
  BuildingFeatures& f = options.features;
  for (bool* part :
       {&f.walls, &f.slabs, &f.triangles, &f.braces, &f.hinges, &f.releases, &f.diaphragms,
        &f.point_forces, &f.frame_distributed_loads, &f.frame_point_loads,
        &f.area_uniform_loads, &f.area_to_frame_loads, &f.masses, &f.mass_source,
        &f.functions, &f.cases, &f.groups}) {
    *part = random.Choice(2) == 1;
  }
  return options;
}

BuildingCounts CountBuilding(const BuildingOptions& options) {
  Check(options);
  const std::int64_t s = options.storeys;
  const std::int64_t a = options.bays_x;
  const std::int64_t b = options.bays_y;
  const BuildingFeatures& f = options.features;
  std::int64_t braceBays = 0;
  for (int i = 0; i < options.bays_x && f.braces; ++i) {
    if (i % 3 == 1 && i != options.bays_x / 2) ++braceBays;
  }
  BuildingCounts counts;
  counts.points = (s + 1) * (a + 1) * (b + 1);
  const std::int64_t columns = s * (a + 1) * (b + 1);
  const std::int64_t beams = s * (a * (b + 1) + b * (a + 1));
  counts.frames = columns + beams + s * 2 * braceBays;
  const std::int64_t diagonal = f.slabs && f.triangles ? std::min(a, b) : 0;
  counts.triangles = s * 2 * diagonal;
  counts.walls = f.walls ? s * 4 : 0;
  const std::int64_t slabs = f.slabs ? s * (a * b - diagonal) : 0;
  counts.areas = slabs + counts.triangles + counts.walls;
  return counts;
}

void WriteBuilding(const BuildingOptions& options,
                   const std::function<void(std::string_view piece)>& sink) {
  Check(options);
  BuildingWriter(options, sink).Write();
}

std::string BuildingText(const BuildingOptions& options) {
  std::string text;
  WriteBuilding(options, [&text](std::string_view piece) { text.append(piece); });
  return text;
}

}  // namespace vtt::generate
