// The load stages of the source model, run through ReadVaskData on small model files: load
// patterns, nodal loads, frame distributed and point loads, end point loads moved to
// nodes, area loads and their spreading to the corners, and the marks of what each pattern
// carries.
#include <gtest/gtest.h>

#include <cmath>
#include <memory>
#include <ostream>
#include <stdexcept>
#include <string>
#include <vector>

#include "hosts/json_model_host.h"
#include "source/fake_host_model_test_support.h"
#include "source/vask_model.h"

namespace vtt {
namespace {

// A model in kN and m with one weighted concrete material, a frame section and a thin shell
// section of it, and whatever `body` adds (points, frames, areas, load patterns).
std::unique_ptr<JsonModelHost> HostOf(const std::string& body,
                                      const std::string& weight = "24") {
  return JsonModelHost::FromText(
      R"({"format": "vask-model", "version": 1, "units": 6,
          "materials": [{"name": "C", "type": 2, "weight_per_volume": )" +
          weight + R"(}],
          "frame_sections": [{"name": "FS", "type": 8, "material": "C"}],
          "area_sections": [{"name": "SH", "shell_type": 1, "material": "C",
                             "membrane_thickness": 0.2, "bending_thickness": 0.2}])" +
          (body.empty() ? std::string() : ", " + body) + "}",
      "loads.json", "/models");
}

// A host model and the source model read from it.
struct LoadModel {
  explicit LoadModel(const std::string& body, const std::string& weight = "24")
      : host(HostOf(body, weight)), model(*host) {
    model.ReadVaskData();
  }
  std::unique_ptr<JsonModelHost> host;
  VaskModelObj model;

  VaskFrameObj& Frame(const char* label) const {
    VaskFrameObj* frame = model.FrameObjGet(label);
    if (frame == nullptr) throw std::runtime_error(std::string("no frame ") + label);
    return *frame;
  }
  // The F3 of `pattern` in the first load object of the node; NaN when there is none.
  double F3(const std::string& node, const std::string& pattern) const {
    const VaskLoadNodeObj* loads = model.LoadNodeObjGet(node);
    if (loads == nullptr) return std::nan("");
    for (int i = 1; i <= loads->ItemNum; ++i) {
      if (loads->LoadPattern(i) == pattern) return loads->F3(i);
    }
    return std::nan("");
  }
  // Sum of F3 over every nodal load object and item.
  double TotalF3() const {
    double sum = 0.0;
    for (int n = 1; n <= model.LoadNodeNum(); ++n) {
      const VaskLoadNodeObj& loads = *model.LoadNodeObj(n);
      for (int i = 1; i <= loads.ItemNum; ++i) sum += loads.F3(i);
    }
    return sum;
  }
};

const std::string kPatterns =
    R"("load_patterns": [{"name": "DEAD", "type": 1}, {"name": "LIVE", "type": 3}])";

// A beam F1 from P1 to P2, 4 long, with the given load lists inside its object.
std::string Beam(const std::string& loads) {
  return R"("points": [{"name": "P1", "x": 0, "y": 0, "z": 3},
                       {"name": "P2", "x": 4, "y": 0, "z": 3}],
            "frames": [{"name": "F1", "section": "FS", "i": "P1", "j": "P2", )" +
         loads + "}], " + kPatterns;
}

std::string Distributed(const std::string& items) {
  return Beam(R"("distributed_loads": [)" + items + "]");
}

std::string Points(const std::string& items) { return Beam(R"("point_loads": [)" + items + "]"); }

struct Piece {
  double rd1;
  double rd2;
  double val1;
  double val2;
  friend bool operator==(const Piece&, const Piece&) = default;
};

void PrintTo(const Piece& p, std::ostream* os) {
  *os << "(" << p.rd1 << "-" << p.rd2 << ": " << p.val1 << ", " << p.val2 << ")";
}

std::vector<Piece> PiecesOf(const VaskLoadFrameDistObj& load) {
  std::vector<Piece> pieces;
  for (int i = 1; i <= load.ItemNum; ++i) {
    pieces.push_back({load.RD1(i), load.RD2(i), load.Val1(i), load.Val2(i)});
  }
  return pieces;
}

struct PointLoad {
  double rd;
  double val;
  friend bool operator==(const PointLoad&, const PointLoad&) = default;
};

void PrintTo(const PointLoad& p, std::ostream* os) { *os << "(" << p.rd << ", " << p.val << ")"; }

std::vector<PointLoad> PointsOf(const VaskLoadFramePointObj& load) {
  std::vector<PointLoad> points;
  for (int i = 1; i <= load.ItemNum; ++i) points.push_back({load.RD(i), load.Val(i)});
  return points;
}

// ---- Load patterns ----

TEST(VaskModelLoadsTest, EveryPatternIsReadInOrderWithItsMultiplier) {
  LoadModel m(R"("load_patterns": [
      {"name": "DEAD", "type": 1, "self_weight_multiplier": 1},
      {"name": "WIND", "type": 6},
      {"name": "LIVE", "type": 3, "self_weight_multiplier": 0.5}])");
  ASSERT_EQ(m.model.LoadPatternNum(), 3);
  EXPECT_EQ(m.model.LoadPatternObj(1)->Label, "DEAD");
  EXPECT_EQ(m.model.LoadPatternObj(1)->SelfWtMultiplier, 1);
  EXPECT_EQ(m.model.LoadPatternObj(2)->Label, "WIND");
  EXPECT_EQ(m.model.LoadPatternObj(2)->SelfWtMultiplier, 0);
  EXPECT_EQ(m.model.LoadPatternObj(3)->Label, "LIVE");
  EXPECT_EQ(m.model.LoadPatternObj(3)->SelfWtMultiplier, 0.5);
  EXPECT_EQ(m.model.LoadPatternObj(3)->LoadType, 0);
  EXPECT_EQ(m.model.LoadPatternObjGet("WIND"), m.model.LoadPatternObj(2));
}

TEST(VaskModelLoadsTest, NoPatternTypeIsLeftOut) {
  for (const int type : {-1, 0, 1, 2, 3, 4, 5, 6, 8, 11}) {
    EXPECT_TRUE(VaskModelObj::IsLoadPatternDeadOrLive(type)) << type;
  }
}

// ---- Nodal loads ----

TEST(VaskModelLoadsTest, ANodalLoadInALocalSystemIsDroppedTheGlobalOneKept) {
  LoadModel m(R"("points": [
      {"name": "P1", "x": 0, "y": 0, "z": 0,
       "forces": [{"pattern": "DEAD", "csys": "Local", "values": [1, 2, 3, 4, 5, 6]},
                  {"pattern": "DEAD", "values": [0, 0, -10, 0, 0, 0]}]},
      {"name": "P2", "x": 1, "y": 0, "z": 0,
       "forces": [{"pattern": "LIVE", "csys": "Global", "values": [0, 0, -1, 0, 0, 0]}]}],
      )" + kPatterns);
  ASSERT_EQ(m.model.LoadNodeNum(), 1);
  const VaskLoadNodeObj& loads = *m.model.LoadNodeObj(1);
  EXPECT_EQ(loads.Label, "P1");
  ASSERT_EQ(loads.ItemNum, 1);
  EXPECT_EQ(loads.LoadPattern(1), "DEAD");
  EXPECT_EQ(loads.F1(1), 0);
  EXPECT_EQ(loads.F3(1), -10);
  EXPECT_EQ(loads.M3(1), 0);
}

TEST(VaskModelLoadsTest, NodalLoadsTakeAllSixComponentsOneItemPerPattern) {
  LoadModel m(R"("points": [
      {"name": "P1", "x": 0, "y": 0, "z": 0,
       "forces": [{"pattern": "DEAD", "values": [1, 2, 3, 4, 5, 6]},
                  {"pattern": "LIVE", "values": [0, 0, -5, 0, 0, 0]},
                  {"pattern": "DEAD", "csys": " GLOBAL ", "values": [10, 20, 30, 40, 50, 60]}]}],
      )" + kPatterns);
  ASSERT_EQ(m.model.LoadNodeNum(), 1);
  const VaskLoadNodeObj& loads = *m.model.LoadNodeObj(1);
  ASSERT_EQ(loads.ItemNum, 2);
  EXPECT_EQ(loads.LoadPattern(1), "DEAD");
  EXPECT_EQ(loads.F1(1), 11);
  EXPECT_EQ(loads.F2(1), 22);
  EXPECT_EQ(loads.F3(1), 33);
  EXPECT_EQ(loads.M1(1), 44);
  EXPECT_EQ(loads.M2(1), 55);
  EXPECT_EQ(loads.M3(1), 66);
  EXPECT_EQ(loads.LoadPattern(2), "LIVE");
  EXPECT_EQ(loads.F3(2), -5);
}

// ---- Frame distributed loads ----

TEST(VaskModelLoadsTest, OverlappingUniformLoadsGiveThreePieces) {
  LoadModel m(Distributed(R"(
      {"pattern": "DEAD", "dir": 10, "rd1": 0, "rd2": 0.6, "val1": 1, "val2": 1},
      {"pattern": "DEAD", "dir": 10, "rd1": 0.4, "rd2": 1, "val1": 1, "val2": 1})"));
  const VaskFrameObj& frame = m.Frame("F1");
  ASSERT_EQ(frame.LoadFrameDistributedNum(), 1);
  const VaskLoadFrameDistObj& load = *frame.LoadFrameDistributedObj(1);
  EXPECT_EQ(load.Label, "F1");
  EXPECT_EQ(load.PatternLabel, "DEAD");
  EXPECT_EQ(load.LoadType, 1);
  EXPECT_EQ(load.CSys, "GLOBAL");
  EXPECT_EQ(load.Dir, 0);
  EXPECT_EQ(PiecesOf(load),
            (std::vector<Piece>{{0, 0.4, 1, 1}, {0.4, 0.6, 2, 2}, {0.6, 1, 1, 1}}));
  EXPECT_EQ(frame.LoadFramePointNum(), 0);
}

TEST(VaskModelLoadsTest, AdjoiningEqualUniformLoadsEndAsOnePiece) {
  LoadModel m(Distributed(R"(
      {"pattern": "DEAD", "dir": 11, "rd1": 0, "rd2": 0.5, "val1": 1, "val2": 1},
      {"pattern": "DEAD", "dir": 11, "rd1": 0.5, "rd2": 1, "val1": 1, "val2": 1})"));
  const VaskFrameObj& frame = m.Frame("F1");
  ASSERT_EQ(frame.LoadFrameDistributedNum(), 1);
  EXPECT_EQ(PiecesOf(*frame.LoadFrameDistributedObj(1)), (std::vector<Piece>{{0, 1, 1, 1}}));
}

TEST(VaskModelLoadsTest, ADistributedLoadShorterThan1e6IsAPointLoadOfItsStartValue) {
  LoadModel m(Distributed(R"(
      {"pattern": "LIVE", "dir": 10, "rd1": 0.5, "rd2": 0.5000005, "val1": 4, "val2": 9})"));
  const VaskFrameObj& frame = m.Frame("F1");
  EXPECT_EQ(frame.LoadFrameDistributedNum(), 0);
  ASSERT_EQ(frame.LoadFramePointNum(), 1);
  const VaskLoadFramePointObj& load = *frame.LoadFramePointObj(1);
  EXPECT_EQ(load.Label, "F1");
  EXPECT_EQ(load.PatternLabel, "LIVE");
  EXPECT_EQ(load.LoadType, 1);
  EXPECT_EQ(load.CSys, "GLOBAL");
  EXPECT_EQ(PointsOf(load), (std::vector<PointLoad>{{0.5, 4}}));
}

TEST(VaskModelLoadsTest, UpwardDistributedLoadsAreStoredPositiveDownward) {
  LoadModel m(Distributed(R"(
      {"pattern": "DEAD", "dir": 6, "rd1": 0, "rd2": 0.5, "val1": -3, "val2": -3},
      {"pattern": "LIVE", "dir": 9, "rd1": 0.5, "rd2": 1, "val1": 2, "val2": 4})"));
  const VaskFrameObj& frame = m.Frame("F1");
  ASSERT_EQ(frame.LoadFrameDistributedNum(), 2);
  EXPECT_EQ(PiecesOf(*frame.LoadFrameDistributedObj(1)), (std::vector<Piece>{{0, 0.5, 3, 3}}));
  EXPECT_EQ(PiecesOf(*frame.LoadFrameDistributedObj(2)),
            (std::vector<Piece>{{0.5, 1, -2, -4}}));
}

TEST(VaskModelLoadsTest, DistributedLoadsTheTargetCannotTakeAreDropped) {
  LoadModel m(Distributed(R"(
      {"pattern": "DEAD", "type": 2, "dir": 10, "rd1": 0, "rd2": 1, "val1": 1, "val2": 1},
      {"pattern": "DEAD", "csys": "Local", "dir": 10, "rd1": 0, "rd2": 1, "val1": 1, "val2": 1},
      {"pattern": "DEAD", "dir": 1, "rd1": 0, "rd2": 1, "val1": 1, "val2": 1},
      {"pattern": "DEAD", "dir": 4, "rd1": 0.2, "rd2": 0.2, "val1": 1, "val2": 1},
      {"pattern": "DEAD", "dir": 7, "rd1": 0, "rd2": 1, "val1": 1, "val2": 1})"));
  const VaskFrameObj& frame = m.Frame("F1");
  EXPECT_EQ(frame.LoadFrameDistributedNum(), 0);
  EXPECT_EQ(frame.LoadFramePointNum(), 0);
}

TEST(VaskModelLoadsTest, DistributedLoadsAreKeptPerPatternAndSystemName) {
  LoadModel m(Distributed(R"(
      {"pattern": "DEAD", "dir": 10, "rd1": 0, "rd2": 1, "val1": 1, "val2": 1},
      {"pattern": "LIVE", "dir": 10, "rd1": 0, "rd2": 1, "val1": 2, "val2": 2},
      {"pattern": "DEAD", "csys": "GLOBAL ", "dir": 10, "rd1": 0, "rd2": 1, "val1": 3, "val2": 3},
      {"pattern": "DEAD", "dir": 10, "rd1": 0, "rd2": 1, "val1": 4, "val2": 4})"));
  const VaskFrameObj& frame = m.Frame("F1");
  ASSERT_EQ(frame.LoadFrameDistributedNum(), 3);
  EXPECT_EQ(frame.LoadFrameDistributedObj(1)->PatternLabel, "DEAD");
  EXPECT_EQ(PiecesOf(*frame.LoadFrameDistributedObj(1)), (std::vector<Piece>{{0, 1, 5, 5}}));
  EXPECT_EQ(frame.LoadFrameDistributedObj(2)->PatternLabel, "LIVE");
  EXPECT_EQ(frame.LoadFrameDistributedObj(3)->CSys, "GLOBAL ");
  EXPECT_EQ(PiecesOf(*frame.LoadFrameDistributedObj(3)), (std::vector<Piece>{{0, 1, 3, 3}}));
}

// Two beams, each with a uniform load when `loaded`, and a count of the unit questions.
class BeamsHost : public test_support::FakeHostModel {
 public:
  explicit BeamsHost(bool loaded) : loaded_(loaded) {}
  int units_asked = 0;

  int GetPresentUnits() override {
    ++units_asked;
    return 6;
  }
  int GetPointNameList(int& count, Names& names) override {
    names = {"P1", "P2", "P3"};
    count = 3;
    return 0;
  }
  int GetPointCoordinates(const std::string& name, double& x, double& y, double& z,
                          const std::string& /*csys*/) override {
    x = name == "P1" ? 0.0 : name == "P2" ? 4.0 : 8.0;
    y = 0.0;
    z = 3.0;
    return 0;
  }
  int GetFrameSectionNameList(int& count, Names& names) override {
    names = {"FS"};
    count = 1;
    return 0;
  }
  int GetFrameSectionType(const std::string& /*name*/, int& type) override {
    type = 8;
    return 0;
  }
  int GetFrameNameList(int& count, Names& names) override {
    names = {"F1", "F2"};
    count = 2;
    return 0;
  }
  int GetFrameSection(const std::string& /*name*/, std::string& section,
                      std::string& autoSelect) override {
    section = "FS";
    autoSelect.clear();
    return 0;
  }
  int GetFramePoints(const std::string& name, std::string& pointI, std::string& pointJ) override {
    pointI = name == "F1" ? "P1" : "P2";
    pointJ = name == "F1" ? "P2" : "P3";
    return 0;
  }
  int GetFrameDistributedLoads(const std::string& name, ItemType itemType, int& count,
                               Names& frameNames, Names& loadPatterns, Ints& myTypes, Names& csys,
                               Ints& dirs, Reals& rd1, Reals& rd2, Reals& dist1, Reals& dist2,
                               Reals& val1, Reals& val2) override {
    if (!loaded_) {
      return FakeHostModel::GetFrameDistributedLoads(name, itemType, count, frameNames,
                                                     loadPatterns, myTypes, csys, dirs, rd1, rd2,
                                                     dist1, dist2, val1, val2);
    }
    frameNames = {name};
    loadPatterns = {"DEAD"};
    myTypes = {1};
    csys = {"GLOBAL"};
    dirs = {10};
    rd1 = {0.0};
    rd2 = {1.0};
    dist1 = {0.0};
    dist2 = {4.0};
    val1 = {2.0};
    val2 = {2.0};
    count = 1;
    return 0;
  }

 private:
  bool loaded_;
};

TEST(VaskModelLoadsTest, TheLengthUnitIsAskedOnceAndOnlyForDistributedLoads) {
  BeamsHost loaded(true);
  VaskModelObj model(loaded);
  model.ReadVaskData();
  EXPECT_EQ(loaded.units_asked, 1);
  ASSERT_EQ(model.FrameNum(), 2);
  for (int i = 1; i <= 2; ++i) {
    ASSERT_EQ(model.FrameObj(i)->LoadFrameDistributedNum(), 1);
    EXPECT_EQ(PiecesOf(*model.FrameObj(i)->LoadFrameDistributedObj(1)),
              (std::vector<Piece>{{0, 1, 2, 2}}));
  }

  BeamsHost unloaded(false);
  VaskModelObj bare(unloaded);
  bare.ReadVaskData();
  EXPECT_EQ(unloaded.units_asked, 0);
  EXPECT_EQ(bare.FrameNum(), 2);
}

// ---- Frame point loads ----

TEST(VaskModelLoadsTest, APointLoadAtTheStartMovesToTheINodeOneAtHalfStays) {
  LoadModel m(Points(R"(
      {"pattern": "DEAD", "dir": 10, "rd": 0, "val": 5},
      {"pattern": "DEAD", "dir": 10, "rd": 0.5, "val": 3})"));
  const VaskFrameObj& frame = m.Frame("F1");
  ASSERT_EQ(frame.LoadFramePointNum(), 1);
  EXPECT_EQ(PointsOf(*frame.LoadFramePointObj(1)), (std::vector<PointLoad>{{0.5, 3}}));
  ASSERT_EQ(m.model.LoadNodeNum(), 1);
  const VaskLoadNodeObj& node = *m.model.LoadNodeObj(1);
  EXPECT_EQ(node.Label, "P1");
  ASSERT_EQ(node.ItemNum, 1);
  EXPECT_EQ(node.LoadPattern(1), "DEAD");
  // The frame's positive-downward value goes into F3 as it is.
  EXPECT_EQ(node.F3(1), 5);
  EXPECT_EQ(node.F1(1), 0);
}

TEST(VaskModelLoadsTest, APointLoadAtTheEndMovesToTheJNode) {
  LoadModel m(Points(R"(
      {"pattern": "LIVE", "dir": 6, "rd": 1, "val": 4},
      {"pattern": "LIVE", "dir": 10, "rd": 0.25, "val": 1})"));
  const VaskFrameObj& frame = m.Frame("F1");
  ASSERT_EQ(frame.LoadFramePointNum(), 1);
  EXPECT_EQ(PointsOf(*frame.LoadFramePointObj(1)), (std::vector<PointLoad>{{0.25, 1}}));
  ASSERT_EQ(m.model.LoadNodeNum(), 1);
  EXPECT_EQ(m.model.LoadNodeObj(1)->Label, "P2");
  EXPECT_EQ(m.F3("P2", "LIVE"), -4);
}

TEST(VaskModelLoadsTest, LoadsAtBothEndsMoveToBothNodesAndLeaveAnEmptyObject) {
  LoadModel m(Points(R"(
      {"pattern": "DEAD", "dir": 10, "rd": 1, "val": 2},
      {"pattern": "DEAD", "dir": 10, "rd": 0, "val": 7})"));
  const VaskFrameObj& frame = m.Frame("F1");
  ASSERT_EQ(frame.LoadFramePointNum(), 1);
  EXPECT_EQ(frame.LoadFramePointObj(1)->ItemNum, 0);
  ASSERT_EQ(m.model.LoadNodeNum(), 2);
  EXPECT_EQ(m.model.LoadNodeObj(1)->Label, "P1");
  EXPECT_EQ(m.model.LoadNodeObj(1)->F3(1), 7);
  EXPECT_EQ(m.model.LoadNodeObj(2)->Label, "P2");
  EXPECT_EQ(m.model.LoadNodeObj(2)->F3(1), 2);
}

TEST(VaskModelLoadsTest, AnEndLoadAlwaysMakesANewNodalObject) {
  LoadModel m(R"("points": [
      {"name": "P1", "x": 0, "y": 0, "z": 3,
       "forces": [{"pattern": "DEAD", "values": [0, 0, -10, 0, 0, 0]}]},
      {"name": "P2", "x": 4, "y": 0, "z": 3}],
      "frames": [{"name": "F1", "section": "FS", "i": "P1", "j": "P2",
                  "point_loads": [{"pattern": "DEAD", "dir": 10, "rd": 0, "val": 5}]}],
      )" + kPatterns);
  ASSERT_EQ(m.model.LoadNodeNum(), 2);
  EXPECT_EQ(m.model.LoadNodeObj(1)->Label, "P1");
  EXPECT_EQ(m.model.LoadNodeObj(2)->Label, "P1");
  EXPECT_EQ(m.model.LoadNodeObj(2)->F3(1), 5);
  // A look-up finds the first.
  EXPECT_EQ(m.model.LoadNodeObjGet("P1"), m.model.LoadNodeObj(1));
  EXPECT_EQ(m.F3("P1", "DEAD"), -10);
}

TEST(VaskModelLoadsTest, TwoPointLoadsOfAPatternAtOneDistanceEndAsTheirSum) {
  LoadModel m(Points(R"(
      {"pattern": "DEAD", "dir": 10, "rd": 0.4, "val": 5},
      {"pattern": "LIVE", "dir": 10, "rd": 0.4, "val": 1},
      {"pattern": "DEAD", "dir": 10, "rd": 0.4, "val": 2.5})"));
  const VaskFrameObj& frame = m.Frame("F1");
  ASSERT_EQ(frame.LoadFramePointNum(), 2);
  EXPECT_EQ(frame.LoadFramePointObj(1)->PatternLabel, "DEAD");
  EXPECT_EQ(PointsOf(*frame.LoadFramePointObj(1)), (std::vector<PointLoad>{{0.4, 7.5}}));
  EXPECT_EQ(PointsOf(*frame.LoadFramePointObj(2)), (std::vector<PointLoad>{{0.4, 1}}));
}

TEST(VaskModelLoadsTest, AFoldThatReadsTheStaleTailLosesTheLastLoad) {
  LoadModel m(Points(R"(
      {"pattern": "DEAD", "dir": 10, "rd": 0.3, "val": 5},
      {"pattern": "DEAD", "dir": 10, "rd": 0.3, "val": 2.5},
      {"pattern": "DEAD", "dir": 10, "rd": 0.7, "val": 1})"));
  const VaskFrameObj& frame = m.Frame("F1");
  ASSERT_EQ(frame.LoadFramePointNum(), 1);
  EXPECT_EQ(PointsOf(*frame.LoadFramePointObj(1)), (std::vector<PointLoad>{{0.3, 7.5}}));
}

TEST(VaskModelLoadsTest, ShortDistributedLoadsJoinThePointLoadsAndAreSortedWithThem) {
  LoadModel m(Beam(R"("distributed_loads": [
      {"pattern": "DEAD", "dir": 10, "rd1": 0.6, "rd2": 0.6, "val1": 2, "val2": 0}],
      "point_loads": [{"pattern": "DEAD", "dir": 11, "rd": 0.2, "val": 1}])"));
  const VaskFrameObj& frame = m.Frame("F1");
  ASSERT_EQ(frame.LoadFramePointNum(), 1);
  EXPECT_EQ(PointsOf(*frame.LoadFramePointObj(1)), (std::vector<PointLoad>{{0.2, 1}, {0.6, 2}}));
}

TEST(VaskModelLoadsTest, PointLoadsTheTargetCannotTakeAreDropped) {
  LoadModel m(Points(R"(
      {"pattern": "DEAD", "type": 2, "dir": 10, "rd": 0.5, "val": 1},
      {"pattern": "DEAD", "csys": "Local", "dir": 10, "rd": 0.5, "val": 1},
      {"pattern": "DEAD", "dir": 5, "rd": 0.5, "val": 1})"));
  EXPECT_EQ(m.Frame("F1").LoadFramePointNum(), 0);
  EXPECT_EQ(m.model.LoadNodeNum(), 0);
}

// ---- Area loads ----

// A 2 by 2 floor Q at z 3 on Q1 to Q4, with the given loads inside its object.
std::string Floor(const std::string& loads) {
  return R"("points": [{"name": "Q1", "x": 0, "y": 0, "z": 3}, {"name": "Q2", "x": 2, "y": 0, "z": 3},
                       {"name": "Q3", "x": 2, "y": 2, "z": 3}, {"name": "Q4", "x": 0, "y": 2, "z": 3}],
            "areas": [{"name": "Q", "section": "SH", "points": ["Q1", "Q2", "Q3", "Q4"], )" +
         loads + "}], " + kPatterns;
}

TEST(VaskModelLoadsTest, AnAreaLoadIsSpreadToTheFourCorners) {
  LoadModel m(Floor(R"("uniform_loads": [{"pattern": "DEAD", "dir": 10, "value": 3}])"));
  ASSERT_EQ(m.model.LoadAreaNum(), 1);
  const VaskLoadAreaObj& loads = *m.model.LoadAreaObj(1);
  EXPECT_EQ(loads.Label, "Q");
  ASSERT_EQ(loads.ItemNum, 1);
  EXPECT_EQ(loads.Value(1), "-3");
  EXPECT_EQ(loads.Direction(1), 10);
  EXPECT_EQ(m.model.LoadNodeNum(), 4);
  for (const char* node : {"Q1", "Q2", "Q3", "Q4"}) {
    EXPECT_DOUBLE_EQ(m.F3(node, "DEAD"), -3) << node;
  }
}

TEST(VaskModelLoadsTest, AnAreaWithOneLoadInALocalSystemLosesBoth) {
  LoadModel m(Floor(R"("uniform_loads": [
      {"pattern": "DEAD", "dir": 10, "value": 2},
      {"pattern": "LIVE", "csys": "Local", "dir": 10, "value": 1}])"));
  EXPECT_EQ(m.model.LoadAreaNum(), 0);
  EXPECT_EQ(m.model.LoadNodeNum(), 0);
}

TEST(VaskModelLoadsTest, AnAreaWithALoadInAnotherDirectionLosesAllOfThatPassOnly) {
  LoadModel m(Floor(R"("uniform_loads": [
      {"pattern": "DEAD", "dir": 10, "value": 2},
      {"pattern": "LIVE", "dir": 3, "value": 1}],
      "uniform_to_frame_loads": [{"pattern": "LIVE", "dir": 11, "value": 5, "dist_type": 1}])"));
  ASSERT_EQ(m.model.LoadAreaNum(), 1);
  const VaskLoadAreaObj& loads = *m.model.LoadAreaObj(1);
  ASSERT_EQ(loads.ItemNum, 1);
  EXPECT_EQ(loads.LoadPattern(1), "LIVE");
  EXPECT_EQ(loads.Value(1), "-5");
  EXPECT_TRUE(std::isnan(m.F3("Q1", "DEAD")));
  EXPECT_DOUBLE_EQ(m.F3("Q1", "LIVE"), -5);
}

TEST(VaskModelLoadsTest, EachAreaLoadPassMakesItsOwnObject) {
  LoadModel m(Floor(R"("uniform_loads": [{"pattern": "DEAD", "dir": 10, "value": 1}],
      "uniform_to_frame_loads": [{"pattern": "DEAD", "dir": 10, "value": 2}])"));
  ASSERT_EQ(m.model.LoadAreaNum(), 2);
  EXPECT_EQ(m.model.LoadAreaObj(1)->Value(1), "-1");
  EXPECT_EQ(m.model.LoadAreaObj(2)->Value(1), "-2");
  EXPECT_EQ(m.model.LoadNodeNum(), 4);
  EXPECT_DOUBLE_EQ(m.F3("Q3", "DEAD"), -3);
}

TEST(VaskModelLoadsTest, AreaLoadsOfOnePatternAreSummedThroughText) {
  LoadModel m(Floor(R"("uniform_loads": [
      {"pattern": "DEAD", "dir": 6, "value": 0.1},
      {"pattern": "DEAD", "dir": 6, "value": 0.2}])"));
  ASSERT_EQ(m.model.LoadAreaNum(), 1);
  ASSERT_EQ(m.model.LoadAreaObj(1)->ItemNum, 1);
  EXPECT_EQ(m.model.LoadAreaObj(1)->Value(1), "0.3");
  // 0.3 times the area 4 over 4 corners.
  EXPECT_EQ(m.F3("Q1", "DEAD"), 0.3);
}

TEST(VaskModelLoadsTest, AProjectedLoadActsOnThePlanAreaAndSoDoTheLoadsAfterIt) {
  // A ramp 2 wide rising 2 over 2: its area is 2 x sqrt(8), its plan area 4.
  LoadModel m(R"("points": [{"name": "R1", "x": 0, "y": 0, "z": 0}, {"name": "R2", "x": 2, "y": 0, "z": 0},
                           {"name": "R3", "x": 2, "y": 2, "z": 2}, {"name": "R4", "x": 0, "y": 2, "z": 2}],
      "areas": [{"name": "R", "section": "SH", "points": ["R1", "R2", "R3", "R4"],
                 "uniform_loads": [{"pattern": "A", "dir": 10, "value": 1},
                                   {"pattern": "B", "dir": 11, "value": 1},
                                   {"pattern": "C", "dir": 10, "value": 1}]}],
      "load_patterns": [{"name": "A"}, {"name": "B"}, {"name": "C"}])");
  ASSERT_EQ(m.model.LoadNodeNum(), 4);
  for (const char* node : {"R1", "R2", "R3", "R4"}) {
    EXPECT_DOUBLE_EQ(m.F3(node, "A"), -2.0 * std::sqrt(8.0) / 4.0) << node;
    EXPECT_DOUBLE_EQ(m.F3(node, "B"), -1.0) << node;
    EXPECT_DOUBLE_EQ(m.F3(node, "C"), -1.0) << node;
  }
}

TEST(VaskModelLoadsTest, CornersSharedByTwoAreasTakeBothShares) {
  LoadModel m(R"("points": [{"name": "Q1", "x": 0, "y": 0, "z": 3}, {"name": "Q2", "x": 2, "y": 0, "z": 3},
                           {"name": "Q3", "x": 2, "y": 2, "z": 3}, {"name": "Q4", "x": 0, "y": 2, "z": 3},
                           {"name": "Q5", "x": 4, "y": 0, "z": 3}, {"name": "Q6", "x": 4, "y": 2, "z": 3}],
      "areas": [{"name": "A1", "section": "SH", "points": ["Q1", "Q2", "Q3", "Q4"],
                 "uniform_loads": [{"pattern": "DEAD", "dir": 10, "value": 1}]},
                {"name": "A2", "section": "SH", "points": ["Q2", "Q5", "Q6", "Q3"],
                 "uniform_loads": [{"pattern": "DEAD", "dir": 10, "value": 1}]}],
      )" + kPatterns);
  EXPECT_EQ(m.model.LoadNodeNum(), 6);
  EXPECT_DOUBLE_EQ(m.F3("Q1", "DEAD"), -1);
  EXPECT_DOUBLE_EQ(m.F3("Q2", "DEAD"), -2);
  EXPECT_DOUBLE_EQ(m.F3("Q3", "DEAD"), -2);
  EXPECT_DOUBLE_EQ(m.F3("Q5", "DEAD"), -1);
  for (int n = 1; n <= m.model.LoadNodeNum(); ++n) EXPECT_EQ(m.model.LoadNodeObj(n)->ItemNum, 1);
}

TEST(VaskModelLoadsTest, ATrianglesLoadReachesItsNodesThreeTimes) {
  // The triangle is read as three parts of area 1.5, each taking the triangle's load, and
  // each load object is spread over all three parts.
  LoadModel m(R"("points": [{"name": "T1", "x": 0, "y": 0, "z": 0}, {"name": "T2", "x": 3, "y": 0, "z": 0},
                           {"name": "T3", "x": 0, "y": 3, "z": 0}],
      "areas": [{"name": "T", "section": "SH", "points": ["T1", "T2", "T3"],
                 "uniform_loads": [{"pattern": "DEAD", "dir": 6, "value": 2}]}],
      )" + kPatterns);
  ASSERT_EQ(m.model.AreaNum(), 3);
  ASSERT_EQ(m.model.LoadAreaNum(), 3);
  for (int k = 1; k <= 3; ++k) EXPECT_EQ(m.model.LoadAreaObj(k)->Label, "T");
  // Three times the load 2 on the area 4.5.
  EXPECT_NEAR(m.TotalF3(), 27.0, 1e-12);
  // A corner lies in one part: three load objects, each 2 x 1.5 / 4 there.
  EXPECT_NEAR(m.F3("T1", "DEAD"), 2.25, 1e-12);
  // The centre lies in all three parts.
  const VaskNodeObj* centre = m.model.FindCoincidentNodeLinear(1, 1, 0);
  ASSERT_NE(centre, nullptr);
  EXPECT_NEAR(m.F3(centre->Label, "DEAD"), 6.75, 1e-12);
}

TEST(VaskModelLoadsTest, EveryLoadObjectOfALabelReachesEveryAreaOfThatLabel) {
  // Two areas named "D" with a triangle between them. The host answers the first "D" for
  // both, its corners and its loads alike: each "D" makes a load object, and each object
  // is spread over both areas named "D" (not over the triangle's parts).
  LoadModel m(R"("points": [{"name": "Q1", "x": 0, "y": 0, "z": 3}, {"name": "Q2", "x": 2, "y": 0, "z": 3},
                           {"name": "Q3", "x": 2, "y": 2, "z": 3}, {"name": "Q4", "x": 0, "y": 2, "z": 3},
                           {"name": "Q5", "x": 0, "y": 0, "z": 6}, {"name": "Q6", "x": 1, "y": 0, "z": 6},
                           {"name": "Q7", "x": 1, "y": 1, "z": 6}, {"name": "Q8", "x": 0, "y": 1, "z": 6},
                           {"name": "T1", "x": 5, "y": 0, "z": 0}, {"name": "T2", "x": 8, "y": 0, "z": 0},
                           {"name": "T3", "x": 5, "y": 3, "z": 0}],
      "areas": [{"name": "D", "section": "SH", "points": ["Q1", "Q2", "Q3", "Q4"],
                 "uniform_loads": [{"pattern": "DEAD", "dir": 6, "value": 2}]},
                {"name": "T", "section": "SH", "points": ["T1", "T2", "T3"]},
                {"name": "D", "section": "SH", "points": ["Q5", "Q6", "Q7", "Q8"],
                 "uniform_loads": [{"pattern": "DEAD", "dir": 6, "value": 5}]}],
      )" + kPatterns);
  ASSERT_EQ(m.model.AreaNum(), 5);
  ASSERT_EQ(m.model.AreaObj(5)->Label, "D");
  ASSERT_EQ(m.model.LoadAreaNum(), 2);
  for (int k = 1; k <= 2; ++k) {
    EXPECT_EQ(m.model.LoadAreaObj(k)->Label, "D");
    EXPECT_EQ(m.model.LoadAreaObj(k)->Value(1), "2");
  }
  // A corner of Q1 to Q4: two objects on two areas, each 2 over a quarter of 4, summed in
  // one item of the pattern.
  ASSERT_NE(m.model.LoadNodeObjGet("Q1"), nullptr);
  EXPECT_EQ(m.model.LoadNodeObjGet("Q1")->ItemNum, 1);
  EXPECT_DOUBLE_EQ(m.F3("Q1", "DEAD"), 8.0);
  EXPECT_EQ(m.model.LoadNodeObjGet("Q5"), nullptr);
  EXPECT_EQ(m.model.LoadNodeObjGet("T1"), nullptr);
  EXPECT_DOUBLE_EQ(m.TotalF3(), 32.0);
}

// ---- Marks of what each pattern carries ----

TEST(VaskModelLoadsTest, NodalLoadMarkNeedsAComponentAbove1e6) {
  LoadModel m(R"("points": [
      {"name": "P1", "x": 0, "y": 0, "z": 0,
       "forces": [{"pattern": "DEAD", "values": [0, 0, 0, 0, 0, -2e-6]},
                  {"pattern": "LIVE", "values": [1e-6, -1e-6, 1e-7, 0, 0, 0]}]}],
      "load_patterns": [{"name": "DEAD"}, {"name": "LIVE"}, {"name": "WIND"}])");
  EXPECT_TRUE(m.model.LoadPatternObjGet("DEAD")->LoadNodeNotEmpty);
  EXPECT_FALSE(m.model.LoadPatternObjGet("LIVE")->LoadNodeNotEmpty);
  EXPECT_FALSE(m.model.LoadPatternObjGet("WIND")->LoadNodeNotEmpty);
}

TEST(VaskModelLoadsTest, FrameLoadMarkFollowsTheLoadsLeftOnFrames) {
  LoadModel m(R"("points": [{"name": "P1", "x": 0, "y": 0, "z": 3},
                           {"name": "P2", "x": 4, "y": 0, "z": 3}],
      "frames": [{"name": "F1", "section": "FS", "i": "P1", "j": "P2",
                  "distributed_loads": [
                    {"pattern": "DEAD", "dir": 10, "rd1": 0, "rd2": 1, "val1": 1, "val2": 1},
                    {"pattern": "WIND", "dir": 10, "rd1": 0, "rd2": 1, "val1": 1e-7, "val2": 1e-7}],
                  "point_loads": [{"pattern": "LIVE", "dir": 10, "rd": 0.5, "val": 3},
                                  {"pattern": "END", "dir": 10, "rd": 0, "val": 3}]}],
      "load_patterns": [{"name": "DEAD"}, {"name": "LIVE"}, {"name": "WIND"}, {"name": "END"}])");
  EXPECT_TRUE(m.model.LoadPatternObjGet("DEAD")->LoadElementNotEmpty);
  EXPECT_TRUE(m.model.LoadPatternObjGet("LIVE")->LoadElementNotEmpty);
  EXPECT_FALSE(m.model.LoadPatternObjGet("WIND")->LoadElementNotEmpty);
  // The end load went to the node.
  EXPECT_FALSE(m.model.LoadPatternObjGet("END")->LoadElementNotEmpty);
  EXPECT_TRUE(m.model.LoadPatternObjGet("END")->LoadNodeNotEmpty);
  EXPECT_FALSE(m.model.LoadPatternObjGet("DEAD")->LoadNodeNotEmpty);
}

const std::string kSelfWeightPatterns = R"("load_patterns": [
    {"name": "S0", "self_weight_multiplier": 0},
    {"name": "S1", "self_weight_multiplier": 1},
    {"name": "STINY", "self_weight_multiplier": 1e-7},
    {"name": "SLOW", "self_weight_multiplier": 1e-6}])";

TEST(VaskModelLoadsTest, SelfWeightNeedsAMultiplierAndAWeightedFrame) {
  LoadModel m(R"("points": [{"name": "P1", "x": 0, "y": 0, "z": 3},
                           {"name": "P2", "x": 4, "y": 0, "z": 3}],
      "frames": [{"name": "F1", "section": "FS", "i": "P1", "j": "P2"}], )" +
              kSelfWeightPatterns);
  EXPECT_FALSE(m.model.LoadPatternObjGet("S0")->SelfWeightNotEmpty);
  EXPECT_TRUE(m.model.LoadPatternObjGet("S1")->SelfWeightNotEmpty);
  EXPECT_FALSE(m.model.LoadPatternObjGet("STINY")->SelfWeightNotEmpty);
  EXPECT_TRUE(m.model.LoadPatternObjGet("SLOW")->SelfWeightNotEmpty);
}

TEST(VaskModelLoadsTest, SelfWeightOfAThinShellWithoutFrames) {
  LoadModel shells(R"("points": [{"name": "Q1", "x": 0, "y": 0, "z": 3}, {"name": "Q2", "x": 2, "y": 0, "z": 3},
                                {"name": "Q3", "x": 2, "y": 2, "z": 3}, {"name": "Q4", "x": 0, "y": 2, "z": 3}],
      "areas": [{"name": "Q", "section": "SH", "points": ["Q1", "Q2", "Q3", "Q4"]}], )" +
                   kSelfWeightPatterns);
  EXPECT_FALSE(shells.model.LoadPatternObjGet("S0")->SelfWeightNotEmpty);
  EXPECT_TRUE(shells.model.LoadPatternObjGet("S1")->SelfWeightNotEmpty);
  EXPECT_FALSE(shells.model.LoadPatternObjGet("STINY")->SelfWeightNotEmpty);
}

TEST(VaskModelLoadsTest, NoSelfWeightWithoutAWeightedMaterial) {
  LoadModel m(R"("points": [{"name": "Q1", "x": 0, "y": 0, "z": 3}, {"name": "Q2", "x": 2, "y": 0, "z": 3},
                           {"name": "Q3", "x": 2, "y": 2, "z": 3}, {"name": "Q4", "x": 0, "y": 2, "z": 3}],
      "frames": [{"name": "F1", "section": "FS", "i": "Q1", "j": "Q3"}],
      "areas": [{"name": "Q", "section": "SH", "points": ["Q1", "Q2", "Q3", "Q4"]}], )" +
                  kSelfWeightPatterns,
              "1e-6");
  EXPECT_FALSE(m.model.LoadPatternObjGet("S1")->SelfWeightNotEmpty);
}

}  // namespace
}  // namespace vtt
