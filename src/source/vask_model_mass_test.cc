// The mass stage of the reading: the mass source as the host gives it, and the four mass
// accumulators it leaves on the nodes from additional mass, material mass, self weight and
// loads. Each model is a small model text read through the file host, so every stage
// before the mass stage has run as in a transfer.
#include <gtest/gtest.h>

#include <array>
#include <memory>
#include <stdexcept>
#include <string>

#include "hosts/json_model_host.h"
#include "source/fake_host_model_test_support.h"
#include "source/vask_model.h"

namespace vtt {
namespace {

// Gravity of kilonewton and metre (unit code 6) and of pound and inch (code 1), in the
// single precision the structure keeps them in.
const double kG = 9.81f;
const double kGInch = 386.4f;

// A concrete, a rebar and nothing else; the reading adds a default steel.
const std::string kMaterials = R"(
  "materials": [
    {"name": "C", "type": 2, "weight_per_volume": 24, "mass_per_volume": 2.4,
     "isotropic": {"E": 30000000, "U": 0.2, "A": 1e-5, "G": 12500000},
     "concrete": {"fc": 30000}},
    {"name": "R", "type": 6, "symmetry": 3, "weight_per_volume": 77, "mass_per_volume": 7.8,
     "uniaxial": {"E": 200000000, "A": 1e-5}}
  ])";

// A rectangular beam section of area 0.5 in concrete, and one with no material.
const std::string kFrameSections = R"(,
  "frame_sections": [
    {"name": "B", "type": 8, "material": "C", "properties": {"area": 0.5}},
    {"name": "BARE", "type": 8, "properties": {"area": 0.5}}
  ])";

// A thin shell 0.2 thick in concrete; a layered wall whose concrete layer, 0.25 thick,
// makes it a fibre wall; a layered shell of concrete only, which has no wall rule; and a
// plane section, which the reading does not take.
const std::string kAreaSections = R"(,
  "area_sections": [
    {"name": "SLAB", "shell_type": 1, "material": "C", "membrane_thickness": 0.2,
     "bending_thickness": 0.2},
    {"name": "WALL", "shell_type": 6, "layers": [
      {"name": "Conc", "distance": 0, "thickness": 0.25, "type": 1, "material": "C", "S22": 2},
      {"name": "Bar", "distance": 0.1, "thickness": 0.0025, "type": 1, "material": "R",
       "material_angle": 90}]},
    {"name": "PLAIN", "shell_type": 6, "layers": [
      {"name": "Conc", "distance": 0, "thickness": 0.25, "type": 1, "material": "C"}]},
    {"name": "PLANE", "type": 2}
  ])";

// A model read by every stage, from a model text holding `body` after the top-level keys.
struct Read {
  explicit Read(const std::string& body, int units = 6) {
    host = JsonModelHost::FromText(R"({"format": "vask-model", "version": 1, "units": )" +
                                       std::to_string(units) + "," + body + "}",
                                   "model.json", "/models");
    model = std::make_unique<VaskModelObj>(*host);
  }
  VaskModelObj& Run() {
    model->ReadVaskData();
    return *model;
  }
  const VaskNodeObj& Node(const std::string& label) const {
    const VaskNodeObj* node = model->NodeObjGet(label);
    if (node == nullptr) throw std::runtime_error("no node " + label);
    return *node;
  }

  std::unique_ptr<JsonModelHost> host;
  std::unique_ptr<VaskModelObj> model;
};

using Six = std::array<double, 6>;
Six Of(const OneBasedArray<double, 6>& accumulator) {
  Six values{};
  for (int c = 1; c <= 6; ++c) values[static_cast<std::size_t>(c - 1)] = accumulator(c);
  return values;
}
// Expects `value` in U1 and U2, where frames and areas put their mass, and 0 elsewhere.
void ExpectHorizontal(const OneBasedArray<double, 6>& accumulator, double value) {
  EXPECT_DOUBLE_EQ(accumulator(1), value);
  EXPECT_DOUBLE_EQ(accumulator(2), value);
  for (int c = 3; c <= 6; ++c) EXPECT_EQ(accumulator(c), 0.0) << "component " << c;
}

std::string MassSource(int option, const std::string& loads = "") {
  return R"(, "mass_source": {"option": )" + std::to_string(option) + R"(, "loads": [)" + loads +
         "]}";
}

// ---- The mass source ----

TEST(MassStage, TheMassSourceIsKeptInItsOrder) {
  Read read(kMaterials + R"(, "load_patterns": [{"name": "D"}, {"name": "L", "type": 3}])" +
            MassSource(3, R"({"pattern": "L", "factor": 0.3}, {"pattern": "D", "factor": 1})"));
  const VaskModelObj& model = read.Run();
  EXPECT_EQ(model.MassSrcOption, 3);
  ASSERT_EQ(model.MassSrcLoadNum, 2);
  ASSERT_EQ(model.MassSrcLoadPattern.Num(), 2);
  ASSERT_EQ(model.MassSrcSF.Num(), 2);
  EXPECT_EQ(model.MassSrcLoadPattern(1), "L");
  EXPECT_EQ(model.MassSrcLoadPattern(2), "D");
  EXPECT_EQ(model.MassSrcSF(1), 0.3);
  EXPECT_EQ(model.MassSrcSF(2), 1.0);
}

TEST(MassStage, AMassSourceWithoutLoadsKeepsNoPatterns) {
  Read read(kMaterials + MassSource(2));
  const VaskModelObj& model = read.Run();
  EXPECT_EQ(model.MassSrcOption, 2);
  EXPECT_EQ(model.MassSrcLoadNum, 0);
  EXPECT_EQ(model.MassSrcLoadPattern.Num(), 0);
}

// ---- Pass A: additional mass of points ----

TEST(MassStage, PointMassIsTakenForEveryFreedomButUThree) {
  Read read(kMaterials + R"(, "points": [
    {"name": "1", "x": 0, "y": 0, "z": 0, "mass": [1, 2, 3, 4, 5, 6]},
    {"name": "2", "x": 1, "y": 0, "z": 0}])" + MassSource(1));
  read.Run();
  EXPECT_EQ(Of(read.Node("1").PointMass), (Six{1, 2, 0, 4, 5, 6}));
  EXPECT_EQ(Of(read.Node("2").PointMass), (Six{}));
}

// ---- Pass B: frames ----

const std::string kBeam = R"(, "points": [
    {"name": "1", "x": 0, "y": 0, "z": 3}, {"name": "2", "x": 4, "y": 0, "z": 3}])";

TEST(MassStage, FrameMassGoesHalfToEachEndInUOneAndUTwo) {
  // Additional 2.5 a unit of length over 4: 5 an end; the section's concrete, 0.5 x 2.4
  // over 4: 2.4 an end.
  Read read(kMaterials + kFrameSections + kBeam + R"(, "frames": [
    {"name": "B1", "section": "B", "i": "1", "j": "2", "mass_per_length": 2.5}])" +
            MassSource(1));
  read.Run();
  ExpectHorizontal(read.Node("1").PointMass, 7.4);
  ExpectHorizontal(read.Node("2").PointMass, 7.4);
}

TEST(MassStage, FrameWithoutMaterialCarriesOnlyItsAdditionalMass) {
  Read read(kMaterials + kFrameSections + kBeam + R"(, "frames": [
    {"name": "B1", "section": "BARE", "i": "1", "j": "2", "mass_per_length": 2.5}])" +
            MassSource(1));
  read.Run();
  ExpectHorizontal(read.Node("1").PointMass, 5.0);
  ExpectHorizontal(read.Node("2").PointMass, 5.0);
}

TEST(MassStage, FrameMassIsAddedToThePointsOwnMass) {
  Read read(kMaterials + kFrameSections + R"(, "points": [
    {"name": "1", "x": 0, "y": 0, "z": 3, "mass": [1, 1, 1, 1, 1, 1]},
    {"name": "2", "x": 4, "y": 0, "z": 3}], "frames": [
    {"name": "B1", "section": "BARE", "i": "1", "j": "2", "mass_per_length": 2.5}])" +
            MassSource(1));
  read.Run();
  EXPECT_EQ(Of(read.Node("1").PointMass), (Six{6, 6, 0, 1, 1, 1}));
}

// ---- Pass C: areas ----

// Four corners of a 2 by 3 floor at z = 3: area 6.
const std::string kFloorPoints = R"(, "points": [
    {"name": "a", "x": 0, "y": 0, "z": 3}, {"name": "b", "x": 2, "y": 0, "z": 3},
    {"name": "c", "x": 2, "y": 3, "z": 3}, {"name": "d", "x": 0, "y": 3, "z": 3}])";

std::string Floor(const std::string& section, double massPerArea) {
  return R"(, "areas": [{"name": "F1", "section": ")" + section +
         R"(", "points": ["a", "b", "c", "d"], "mass_per_area": )" +
         std::to_string(massPerArea) + "}]";
}

TEST(MassStage, ThinShellMassGoesAQuarterToEachCorner) {
  // Additional 1 over 6: 1.5 a corner; concrete 2.4 x 6 x 0.2: 0.72 a corner.
  Read read(kMaterials + kAreaSections + kFloorPoints + Floor("SLAB", 1.0) + MassSource(1));
  read.Run();
  for (const char* corner : {"a", "b", "c", "d"}) {
    SCOPED_TRACE(corner);
    ExpectHorizontal(read.Node(corner).PointMass, 1.5 + 0.72);
  }
}

TEST(MassStage, LayeredShellTakesTheConcreteOfItsLayers) {
  // Concrete 2.4 x 6 x 0.25: 0.9 a corner.
  Read read(kMaterials + kAreaSections + kFloorPoints + Floor("WALL", 1.0) + MassSource(1));
  read.Run();
  ASSERT_EQ(read.model->AreaObj(1)->PropAreaSectObj->LayerTrelkThick, 0.25);
  for (const char* corner : {"a", "b", "c", "d"}) {
    SCOPED_TRACE(corner);
    ExpectHorizontal(read.Node(corner).PointMass, 1.5 + 0.9);
  }
}

TEST(MassStage, LayeredShellWithoutAWallRuleCarriesOnlyItsAdditionalMass) {
  Read read(kMaterials + kAreaSections + kFloorPoints + Floor("PLAIN", 1.0) + MassSource(1));
  read.Run();
  ASSERT_EQ(read.model->AreaObj(1)->PropAreaSectObj->LayerPropMatConcObj, nullptr);
  ExpectHorizontal(read.Node("a").PointMass, 1.5);
}

TEST(MassStage, AThreeNodedAreaAddsNoMass) {
  // The reading itself only ever keeps 4-noded areas, so a 3-noded one is put in ahead of
  // it. It keeps four node labels so that the reading's node ordering can run over it; the
  // host knows its name (on a plane section, which the reading does not take), so its
  // additional mass is there to be taken.
  Read read(kMaterials + kAreaSections + kFloorPoints + R"(, "areas": [
    {"name": "T", "section": "PLANE", "points": ["a", "b", "c"], "mass_per_area": 5}],
    "load_patterns": [{"name": "D", "self_weight_multiplier": 1}])" +
            MassSource(3, R"({"pattern": "D", "factor": 1})"));
  VaskAreaObj& area = *read.model->AddArea();
  area.Label = "T";
  area.NumNodes = 4;
  area.RedimJoint();
  for (int j = 1; j <= 4; ++j) area.LabelNodes(j) = std::string(1, static_cast<char>('a' + j - 1));
  area.PropAreaSectName = "SLAB";
  area.NumNodes = 3;
  read.Run();
  ASSERT_EQ(read.model->AreaNum(), 1);
  for (const char* corner : {"a", "b", "c", "d"}) {
    SCOPED_TRACE(corner);
    EXPECT_EQ(Of(read.Node(corner).PointMass), Six{});
    EXPECT_EQ(Of(read.Node(corner).AreaLoadMass), Six{});
  }
}

TEST(MassStage, AFourNodedAreaPutInTheSameWayCarriesMass) {
  // The counterpart of the 3-noded area above: the same area with four nodes.
  Read read(kMaterials + kAreaSections + kFloorPoints + R"(, "areas": [
    {"name": "T", "section": "PLANE", "points": ["a", "b", "c"], "mass_per_area": 5}])" +
            MassSource(1));
  VaskAreaObj& area = *read.model->AddArea();
  area.Label = "T";
  area.NumNodes = 4;
  area.RedimJoint();
  for (int j = 1; j <= 4; ++j) area.LabelNodes(j) = std::string(1, static_cast<char>('a' + j - 1));
  area.PropAreaSectName = "SLAB";
  read.Run();
  ExpectHorizontal(read.Node("a").PointMass, 5.0 * 6.0 / 4.0 + 0.72);
}

TEST(MassStage, AHostTriangleCarriesItsMassThroughItsThreeParts) {
  // The reading divides the triangle into three quadrilaterals of a third of its area
  // (4.5 / 3 = 1.5) on its corners, its mid-sides and its centroid; each part takes the
  // triangle's additional mass. The new nodes have no additional mass of their own.
  Read read(kMaterials + R"(, "points": [
    {"name": "p", "x": 0, "y": 0, "z": 0}, {"name": "q", "x": 3, "y": 0, "z": 0},
    {"name": "r", "x": 0, "y": 3, "z": 0}], "area_sections": [
    {"name": "S0", "shell_type": 1, "material": "NONE", "membrane_thickness": 0.2}],
    "areas": [{"name": "T", "section": "S0", "points": ["p", "q", "r"], "mass_per_area": 2}])" +
            MassSource(1));
  const VaskModelObj& model = read.Run();
  ASSERT_EQ(model.AreaNum(), 3);
  ExpectHorizontal(read.Node("p").PointMass, 2.0 * 1.5 / 4.0);
  double total = 0.0;
  for (int i = 1; i <= model.NodeNum(); ++i) total += model.NodeObj(i)->PointMass(1);
  EXPECT_DOUBLE_EQ(total, 2.0 * 4.5);
}

// ---- Options ----

// A beam with additional and material mass, self weight, a nodal load, a frame load, and a
// floor with additional mass and self weight.
std::string Everything(int option) {
  return kMaterials + kFrameSections + kAreaSections + R"(, "points": [
    {"name": "a", "x": 0, "y": 0, "z": 3, "mass": [1, 1, 1, 1, 1, 1],
     "forces": [{"pattern": "D", "values": [0, 0, -10, 0, 0, 0]}]},
    {"name": "b", "x": 2, "y": 0, "z": 3}, {"name": "c", "x": 2, "y": 3, "z": 3},
    {"name": "d", "x": 0, "y": 3, "z": 3}],
    "frames": [{"name": "B1", "section": "B", "i": "a", "j": "b", "mass_per_length": 2,
      "distributed_loads": [{"pattern": "D", "dir": 10, "rd1": 0, "rd2": 1, "val1": 3,
                             "val2": 3}]}],
    "areas": [{"name": "F1", "section": "SLAB", "points": ["a", "b", "c", "d"],
               "mass_per_area": 1}],
    "load_patterns": [{"name": "D", "self_weight_multiplier": 1}])" +
         MassSource(option, R"({"pattern": "D", "factor": 1})");
}

TEST(MassStage, OptionOneLeavesTheThreeLoadAccumulatorsAtZero) {
  Read read(Everything(1));
  read.Run();
  for (const char* node : {"a", "b", "c", "d"}) {
    SCOPED_TRACE(node);
    EXPECT_EQ(Of(read.Node(node).LoadMass), Six{});
    EXPECT_EQ(Of(read.Node(node).FrameLoadMass), Six{});
    EXPECT_EQ(Of(read.Node(node).AreaLoadMass), Six{});
  }
  // Point 1, frame (2 + 0.5 x 2.4) x 2 / 2, floor (1 + 2.4 x 0.2) x 6 / 4.
  EXPECT_DOUBLE_EQ(read.Node("a").PointMass(1), 1.0 + 3.2 + 2.22);
}

TEST(MassStage, OptionTwoLeavesPointMassAtZero) {
  Read read(Everything(2));
  read.Run();
  for (const char* node : {"a", "b", "c", "d"}) {
    SCOPED_TRACE(node);
    EXPECT_EQ(Of(read.Node(node).PointMass), Six{});
  }
  const VaskNodeObj& a = read.Node("a");
  ExpectHorizontal(a.LoadMass, 10.0 / kG);
  // Self weight 24 x 0.5 x 2 / 2 and the load 3 x 2 / 2.
  ExpectHorizontal(a.FrameLoadMass, 24.0 * 0.5 * 2.0 / kG / 2.0 + 3.0 / kG);
  // 24 x 6 x 0.2 / 4.
  ExpectHorizontal(a.AreaLoadMass, 24.0 * 6.0 * 0.2 / kG / 4.0);
}

TEST(MassStage, OptionThreeFillsAllFour) {
  Read read(Everything(3));
  read.Run();
  const VaskNodeObj& a = read.Node("a");
  EXPECT_DOUBLE_EQ(a.PointMass(1), 1.0 + 3.2 + 2.22);
  ExpectHorizontal(a.LoadMass, 10.0 / kG);
  EXPECT_GT(a.FrameLoadMass(1), 0.0);
  EXPECT_GT(a.AreaLoadMass(1), 0.0);
}

// A host of one point with additional mass and a load, whose mass source has any option,
// also one that the model file cannot hold.
class OnePointHost : public test_support::FakeHostModel {
 public:
  explicit OnePointHost(int option) : option_(option) {}
  int GetPointNameList(int& count, Names& names) override {
    names = {"1"};
    count = 1;
    return 0;
  }
  int GetPointMass(const std::string& /*name*/, DofValues& mass) override {
    mass = {1, 2, 3, 4, 5, 6};
    return 0;
  }
  int GetMassSource(int& option, int& count, Names& loadPatterns, Reals& factors) override {
    option = option_;
    loadPatterns = {"D"};
    factors = {1.0};
    count = 1;
    return 0;
  }
  int GetLoadPatternNames(int& count, Names& names) override {
    names = {"D"};
    count = 1;
    return 0;
  }
  int GetPointForces(const std::string& name, ItemType /*itemType*/, int& count,
                     Names& pointNames, Names& loadPatterns, Ints& lcSteps, Names& csys,
                     Reals& f1, Reals& f2, Reals& f3, Reals& m1, Reals& m2,
                     Reals& m3) override {
    pointNames = {name};
    loadPatterns = {"D"};
    lcSteps = {0};
    csys = {"GLOBAL"};
    f1 = f2 = m1 = m2 = m3 = {0.0};
    f3 = {-10.0};
    count = 1;
    return 0;
  }

 private:
  int option_;
};

TEST(MassStage, AnotherOptionFillsNothing) {
  for (int option : {0, 4, -1}) {
    SCOPED_TRACE(option);
    OnePointHost host(option);
    VaskModelObj model(host);
    model.ReadVaskData();
    EXPECT_EQ(model.MassSrcOption, option);
    EXPECT_EQ(model.MassSrcLoadNum, 1);
    const VaskNodeObj& node = *model.NodeObj(1);
    EXPECT_EQ(Of(node.PointMass), Six{});
    EXPECT_EQ(Of(node.LoadMass), Six{});
  }
  // The same host with option 3 does fill both.
  OnePointHost host(3);
  VaskModelObj model(host);
  model.ReadVaskData();
  EXPECT_EQ(Of(model.NodeObj(1)->PointMass), (Six{1, 2, 0, 4, 5, 6}));
  ExpectHorizontal(model.NodeObj(1)->LoadMass, 10.0 / kG);
}

// ---- Pass D: loads ----

std::string Patterns(const std::string& source) {
  return R"(, "load_patterns": [{"name": "D", "self_weight_multiplier": 1},
    {"name": "L", "type": 3}, {"name": "W", "type": 6}])" +
         MassSource(2, source);
}

TEST(MassStage, DownwardNodalLoadMakesPositiveLoadMass) {
  Read read(kMaterials + R"(, "points": [{"name": "1", "x": 0, "y": 0, "z": 0,
    "forces": [{"pattern": "D", "values": [4, 5, -10, 1, 2, 3]}]}])" +
            Patterns(R"({"pattern": "D", "factor": 1})"));
  read.Run();
  ExpectHorizontal(read.Node("1").LoadMass, 10.0 / kG);
}

TEST(MassStage, UpwardNodalLoadMakesNegativeLoadMass) {
  Read read(kMaterials + R"(, "points": [{"name": "1", "x": 0, "y": 0, "z": 0,
    "forces": [{"pattern": "D", "values": [0, 0, 10, 0, 0, 0]}]}])" +
            Patterns(R"({"pattern": "D", "factor": 0.5})"));
  read.Run();
  ExpectHorizontal(read.Node("1").LoadMass, -10.0 * 0.5 / kG);
}

TEST(MassStage, GravityIsTheSinglePrecisionValueOfThePresentUnits) {
  Read metre(kMaterials + R"(, "points": [{"name": "1", "x": 0, "y": 0, "z": 0,
    "forces": [{"pattern": "D", "values": [0, 0, -9.81, 0, 0, 0]}]}])" +
             Patterns(R"({"pattern": "D", "factor": 1})"));
  metre.Run();
  EXPECT_DOUBLE_EQ(metre.Node("1").LoadMass(1), 9.81 / kG);
  EXPECT_NE(metre.Node("1").LoadMass(1), 1.0);

  Read inch(kMaterials + R"(, "points": [{"name": "1", "x": 0, "y": 0, "z": 0,
    "forces": [{"pattern": "D", "values": [0, 0, -386.4, 0, 0, 0]}]}])" +
                Patterns(R"({"pattern": "D", "factor": 1})"),
            1);
  inch.Run();
  EXPECT_DOUBLE_EQ(inch.Node("1").LoadMass(1), 386.4 / kGInch);
  EXPECT_NE(inch.Node("1").LoadMass(1), 1.0);
}

TEST(MassStage, APatternOutsideTheMassSourceAddsNothing) {
  Read read(kMaterials + R"(, "points": [{"name": "1", "x": 0, "y": 0, "z": 0,
    "forces": [{"pattern": "L", "values": [0, 0, -10, 0, 0, 0]},
               {"pattern": "D", "values": [0, 0, -2, 0, 0, 0]}]}])" +
            Patterns(R"({"pattern": "D", "factor": 1})"));
  read.Run();
  ExpectHorizontal(read.Node("1").LoadMass, 2.0 / kG);
}

TEST(MassStage, ThePatternsTypeDoesNotLimitTheMassSource) {
  // W is of a type other than dead or live; its load still counts.
  Read read(kMaterials + R"(, "points": [{"name": "1", "x": 0, "y": 0, "z": 0,
    "forces": [{"pattern": "W", "values": [0, 0, -7, 0, 0, 0]}]}])" +
            Patterns(R"({"pattern": "W", "factor": 1})"));
  read.Run();
  ExpectHorizontal(read.Node("1").LoadMass, 7.0 / kG);
}

TEST(MassStage, TheSamePatternListedTwiceAddsTwice) {
  Read read(kMaterials + R"(, "points": [{"name": "1", "x": 0, "y": 0, "z": 0,
    "forces": [{"pattern": "D", "values": [0, 0, -10, 0, 0, 0]}]}])" +
            Patterns(R"({"pattern": "D", "factor": 1}, {"pattern": "D", "factor": 1})"));
  read.Run();
  ExpectHorizontal(read.Node("1").LoadMass, 10.0 / kG + 10.0 / kG);
}

TEST(MassStage, FrameSelfWeightGoesHalfToEachEnd) {
  // 24 x 1 x 0.5 x 4 / g / 2 at each end, scaled by 0.5.
  Read read(kMaterials + kFrameSections + kBeam + R"(, "frames": [
    {"name": "B1", "section": "B", "i": "1", "j": "2"}])" +
            Patterns(R"({"pattern": "D", "factor": 0.5})"));
  read.Run();
  const double m = 24.0 * 1.0 * 0.5 * 4.0 * 0.5 / kG / 2.0;
  ExpectHorizontal(read.Node("1").FrameLoadMass, m);
  ExpectHorizontal(read.Node("2").FrameLoadMass, m);
}

TEST(MassStage, NoSelfWeightWithoutMultiplierOrMaterial) {
  Read read(kMaterials + kFrameSections + R"(, "points": [
    {"name": "1", "x": 0, "y": 0, "z": 3}, {"name": "2", "x": 4, "y": 0, "z": 3},
    {"name": "3", "x": 8, "y": 0, "z": 3}], "frames": [
    {"name": "B1", "section": "B", "i": "1", "j": "2"},
    {"name": "B2", "section": "BARE", "i": "2", "j": "3"}])" +
            Patterns(R"({"pattern": "L", "factor": 1})"));
  read.Run();
  EXPECT_EQ(Of(read.Node("1").FrameLoadMass), Six{});
  EXPECT_EQ(Of(read.Node("2").FrameLoadMass), Six{});
  EXPECT_EQ(Of(read.Node("3").FrameLoadMass), Six{});
}

TEST(MassStage, AreaSelfWeightGoesAQuarterToEachCorner) {
  Read thin(kMaterials + kAreaSections + kFloorPoints + Floor("SLAB", 0.0) +
            Patterns(R"({"pattern": "D", "factor": 1})"));
  thin.Run();
  Read layered(kMaterials + kAreaSections + kFloorPoints + Floor("WALL", 0.0) +
               Patterns(R"({"pattern": "D", "factor": 1})"));
  layered.Run();
  for (const char* corner : {"a", "b", "c", "d"}) {
    SCOPED_TRACE(corner);
    ExpectHorizontal(thin.Node(corner).AreaLoadMass, 24.0 * 1.0 * 6.0 * 0.2 / kG / 4.0);
    ExpectHorizontal(layered.Node(corner).AreaLoadMass, 24.0 * 1.0 * 6.0 * 0.25 / kG / 4.0);
  }
}

TEST(MassStage, LayeredShellWithoutAWallRuleHasNoSelfWeightMass) {
  Read read(kMaterials + kAreaSections + kFloorPoints + Floor("PLAIN", 0.0) +
            Patterns(R"({"pattern": "D", "factor": 1})"));
  read.Run();
  EXPECT_EQ(Of(read.Node("a").AreaLoadMass), Six{});
}

TEST(MassStage, AreaLoadReachesTheCornersAsNodalLoadMass) {
  // 2 downward over 6: 3 a corner, through the nodal loads the area load became.
  Read read(kMaterials + kAreaSections + kFloorPoints + R"(, "areas": [
    {"name": "F1", "section": "PLAIN", "points": ["a", "b", "c", "d"],
     "uniform_loads": [{"pattern": "L", "dir": 10, "value": 2}]}])" +
            Patterns(R"({"pattern": "L", "factor": 1})"));
  read.Run();
  for (const char* corner : {"a", "b", "c", "d"}) {
    SCOPED_TRACE(corner);
    ExpectHorizontal(read.Node(corner).LoadMass, 3.0 / kG);
  }
}

std::string BeamLoads(const std::string& loads, double length = 6.0) {
  return kMaterials + kFrameSections + R"(, "points": [
    {"name": "1", "x": 0, "y": 0, "z": 3}, {"name": "2", "x": )" +
         std::to_string(length) + R"(, "y": 0, "z": 3}], "frames": [
    {"name": "B1", "section": "BARE", "i": "1", "j": "2", )" +
         loads + "}]" + Patterns(R"({"pattern": "L", "factor": 1})");
}

TEST(MassStage, UniformLoadOverTheSpanGivesHalfTheLoadToEachEnd) {
  // w = 12 over L = 6: w L / 2 = 36 at each end.
  Read read(BeamLoads(R"("distributed_loads": [{"pattern": "L", "dir": 10, "rd1": 0,
    "rd2": 1, "val1": 12, "val2": 12}])"));
  read.Run();
  ExpectHorizontal(read.Node("1").FrameLoadMass, 36.0 / kG);
  ExpectHorizontal(read.Node("2").FrameLoadMass, 36.0 / kG);
}

TEST(MassStage, TrapezoidalLoadGivesTheSimplySupportedReactions) {
  // From 0.2 to 0.6 of a span of 10, rising from 2 to 6: 16 in all, of which 9 1/15 at
  // end I and 6 14/15 at end J.
  Read read(BeamLoads(R"("distributed_loads": [{"pattern": "L", "dir": 10, "rd1": 0.2,
    "rd2": 0.6, "val1": 2, "val2": 6}])",
                      10.0));
  read.Run();
  const double a = 0.2;
  const double b = 0.6;
  const double t = (b - a) * (6.0 - 2.0) / 2.0;
  const double r = (b - a) * 2.0;
  const double ri = (1.0 - a / 3.0 - 2.0 * b / 3.0) * t * 10.0 + (1.0 - (a + b) / 2.0) * r * 10.0;
  const double rj = t * (2.0 * b / 3.0 + a / 3.0) * 10.0 + r * (a + b) / 2.0 * 10.0;
  ASSERT_NEAR(ri, 136.0 / 15.0, 1e-12);
  ASSERT_NEAR(rj, 104.0 / 15.0, 1e-12);
  ExpectHorizontal(read.Node("1").FrameLoadMass, ri / kG);
  ExpectHorizontal(read.Node("2").FrameLoadMass, rj / kG);
}

TEST(MassStage, UpwardFrameLoadMakesNegativeFrameLoadMass) {
  // Direction 6 is positive upward: a value of 12 is an uplift of 12.
  Read read(BeamLoads(R"("distributed_loads": [{"pattern": "L", "dir": 6, "rd1": 0,
    "rd2": 1, "val1": 12, "val2": 12}])"));
  read.Run();
  ExpectHorizontal(read.Node("1").FrameLoadMass, -36.0 / kG);
}

TEST(MassStage, PointLoadAtMidSpanGivesHalfToEachEnd) {
  Read read(BeamLoads(R"("point_loads": [{"pattern": "L", "dir": 10, "rd": 0.5, "val": 8}])"));
  read.Run();
  ExpectHorizontal(read.Node("1").FrameLoadMass, 4.0 / kG);
  ExpectHorizontal(read.Node("2").FrameLoadMass, 4.0 / kG);
}

TEST(MassStage, PointLoadSharesByItsPlaceAlongTheFrame) {
  Read read(BeamLoads(R"("point_loads": [{"pattern": "L", "dir": 10, "rd": 0.25, "val": 8}])"));
  read.Run();
  ExpectHorizontal(read.Node("1").FrameLoadMass, 6.0 / kG);
  ExpectHorizontal(read.Node("2").FrameLoadMass, 2.0 / kG);
}

TEST(MassStage, PointLoadAtAFrameEndBecomesNegativeLoadMassAtThatNode) {
  // The end load moves to the node as F3 with its downward-positive value, so it enters
  // the load mass with the sign of an uplift.
  Read read(BeamLoads(R"("point_loads": [{"pattern": "L", "dir": 10, "rd": 0, "val": 8}])"));
  read.Run();
  ExpectHorizontal(read.Node("1").LoadMass, -8.0 / kG);
  EXPECT_EQ(Of(read.Node("1").FrameLoadMass), Six{});
  EXPECT_EQ(Of(read.Node("2").FrameLoadMass), Six{});
}

// A column 3 high from point 1 up to point 2.
std::string ColumnLoads(const std::string& loads) {
  return kMaterials + kFrameSections + R"(, "points": [
    {"name": "1", "x": 0, "y": 0, "z": 0}, {"name": "2", "x": 0, "y": 0, "z": 3}],
    "frames": [{"name": "C1", "section": "BARE", "i": "1", "j": "2", )" +
         loads + "}]" + Patterns(R"({"pattern": "L", "factor": 1})");
}

TEST(MassStage, PointLoadOnAVerticalColumnGivesNoMass) {
  Read read(ColumnLoads(R"("point_loads": [{"pattern": "L", "dir": 10, "rd": 0.5, "val": 8}])"));
  read.Run();
  ASSERT_EQ(read.model->FrameObj(1)->LoadFramePointNum(), 1);
  EXPECT_EQ(Of(read.Node("1").FrameLoadMass), Six{});
  EXPECT_EQ(Of(read.Node("2").FrameLoadMass), Six{});
}

TEST(MassStage, DistributedLoadOnAVerticalColumnGivesMass) {
  // 2 along the full length 3: 3 at each end.
  Read read(ColumnLoads(R"("distributed_loads": [{"pattern": "L", "dir": 10, "rd1": 0,
    "rd2": 1, "val1": 2, "val2": 2}])"));
  read.Run();
  ExpectHorizontal(read.Node("1").FrameLoadMass, 3.0 / kG);
  ExpectHorizontal(read.Node("2").FrameLoadMass, 3.0 / kG);
}

TEST(MassStage, ProjectedLoadOnASlopingFrameSpansTheFullLength) {
  // The projected direction is forgotten once the load is stored, so the full length 5
  // (3 in plan, 4 up) counts: 2 x 5 / 2 at each end.
  Read read(kMaterials + kFrameSections + R"(, "points": [
    {"name": "1", "x": 0, "y": 0, "z": 0}, {"name": "2", "x": 3, "y": 0, "z": 4}],
    "frames": [{"name": "K1", "section": "BARE", "i": "1", "j": "2",
      "distributed_loads": [{"pattern": "L", "dir": 11, "rd1": 0, "rd2": 1, "val1": 2,
                             "val2": 2}]}])" +
            Patterns(R"({"pattern": "L", "factor": 1})"));
  read.Run();
  ExpectHorizontal(read.Node("1").FrameLoadMass, 5.0 / kG);
}

}  // namespace
}  // namespace vtt
