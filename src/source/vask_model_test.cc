// Behaviour of the source model root: the stage sequence, the reading of nodes, the
// look-ups by label, the geometric queries, the drift pair and the release of everything.
#include "source/vask_model.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "source/fake_host_model_test_support.h"
#include "transfer/failure.h"

namespace vtt {
namespace {

// A host that holds points only.
class PointsHost : public test_support::FakeHostModel {
 public:
  struct Point {
    std::string name;
    double x;
    double y;
    double z;
    DofFlags restraints;
  };

  explicit PointsHost(std::vector<Point> points) : points_(std::move(points)) {}

  int GetPointNameList(int& count, Names& names) override {
    ++calls;
    names.clear();
    for (const Point& point : points_) names.push_back(point.name);
    count = static_cast<int>(names.size());
    return 0;
  }
  int GetPointCoordinates(const std::string& name, double& x, double& y, double& z,
                          const std::string& csys) override {
    ++calls;
    systems.push_back(csys);
    const Point* point = Find(name);
    if (point == nullptr) return FakeHostModel::GetPointCoordinates(name, x, y, z, csys);
    x = point->x;
    y = point->y;
    z = point->z;
    return 0;
  }
  int GetPointRestraints(const std::string& name, DofFlags& restraints) override {
    ++calls;
    const Point* point = Find(name);
    if (point == nullptr) return FakeHostModel::GetPointRestraints(name, restraints);
    restraints = point->restraints;
    return 0;
  }

  int calls = 0;
  std::vector<std::string> systems;

 private:
  const Point* Find(const std::string& name) const {
    for (const Point& point : points_) {
      if (point.name == name) return &point;
    }
    return nullptr;
  }

  std::vector<Point> points_;
};

// Built by appending: GCC 12 warns falsely (-Wrestrict) on a literal plus a string.
std::string Numbered(std::string prefix, int number) {
  prefix += std::to_string(number);
  return prefix;
}

constexpr DofFlags kFree{};
constexpr DofFlags kFixed{true, true, true, true, true, true};
constexpr DofFlags kU1Only{true, false, false, false, false, false};

PointsHost ThreePointHost() {
  return PointsHost({{"P1", 0, 0, 0, kFixed}, {"P2", 0, 0, 3, kFree}, {"P3", 4, 0, 3, kU1Only}});
}

const std::vector<std::string_view> kStageNames = {
    "ReadPropMaterials",
    "ReadPropFrameSections",
    "ReadPropAreaSections",
    "ReadNodes",
    "ReadConstraints",
    "ReadFrames",
    "ReadFrameReleases",
    "ReadAreas",
    "ReadLoadPatterns",
    "ReadLoadNodes",
    "ReadFramesLoadDistributed",
    "ReadFramesLoadPoint",
    "CheckLoadFramePoint",
    "ReadLoadAreas",
    "SpreadLoadAreas",
    "LinkFrameSectionMaterials",
    "LinkAreaSectionMaterials",
    "LinkFrameSections",
    "LinkAreaSections",
    "ClassifyFrames",
    "ClassifyAreas",
    "ReadMass",
    "ReadVaskTHFunc",
    "MarkLoadPatternContents",
    "ReadReserved",
    "FindDriftNodes",
    "ReadFrameHinges",
    "DetectEmbeddedBeams",
};

TEST(VaskModelObjStages, TheTableHoldsTheTwentyEightStagesInOrder) {
  const auto stages = VaskModelObj::ReadStages();
  ASSERT_EQ(stages.size(), 28u);
  for (std::size_t i = 0; i < stages.size(); ++i) {
    EXPECT_EQ(stages[i].name, kStageNames[i]) << "stage " << i + 1;
  }
}

TEST(VaskModelObjStages, ReadVaskDataRunsTheBuiltStagesInTableOrder) {
  PointsHost host = ThreePointHost();
  VaskModelObj model(host);
  std::vector<std::pair<int, std::string>> told;
  model.ReadVaskData([&](int number, std::string_view name) { told.emplace_back(number, name); });

  std::vector<std::pair<int, std::string>> expected;
  const auto stages = VaskModelObj::ReadStages();
  for (std::size_t i = 0; i < stages.size(); ++i) {
    if (stages[i].run != nullptr) expected.emplace_back(int(i) + 1, stages[i].name);
  }
  EXPECT_EQ(told, expected);
  const auto has = [&](int number, const char* name) {
    for (const auto& entry : told) {
      if (entry.first == number && entry.second == name) return true;
    }
    return false;
  };
  EXPECT_TRUE(has(4, "ReadNodes"));
  EXPECT_TRUE(has(25, "ReadReserved"));
  EXPECT_TRUE(has(26, "FindDriftNodes"));
}

TEST(VaskModelObjStages, ReadVaskDataRunsWithoutAProgressCallback) {
  PointsHost host = ThreePointHost();
  VaskModelObj model(host);
  model.ReadVaskData();
  EXPECT_EQ(model.NodeNum(), 3);
}

TEST(VaskModelObjStages, StageTwentyFiveHasNoEffect) {
  PointsHost host = ThreePointHost();
  VaskModelObj model(host);
  int callsBeforeReserved = -1;
  int callsBeforeDrift = -1;
  model.ReadVaskData([&](int number, std::string_view) {
    if (number == 25) callsBeforeReserved = host.calls;
    if (number == 26) callsBeforeDrift = host.calls;
  });
  EXPECT_EQ(callsBeforeReserved, callsBeforeDrift);

  const VaskNodeObj* top = model.NodeTopObj();
  const VaskNodeObj* bottom = model.NodeBotObj();
  const auto reserved = VaskModelObj::ReadStages()[24];
  ASSERT_EQ(reserved.name, "ReadReserved");
  (model.*reserved.run)();
  EXPECT_EQ(host.calls, callsBeforeDrift);
  EXPECT_EQ(model.NodeNum(), 3);
  EXPECT_EQ(model.NodeTopObj(), top);
  EXPECT_EQ(model.NodeBotObj(), bottom);
  EXPECT_EQ(model.NodeObj(3)->Label, "P3");
}

TEST(VaskModelObjReadNodes, ReadsEveryPointInHostOrder) {
  PointsHost host = ThreePointHost();
  VaskModelObj model(host);
  model.ReadVaskData();

  ASSERT_EQ(model.NodeNum(), 3);
  const VaskNodeObj& p1 = *model.NodeObj(1);
  const VaskNodeObj& p3 = *model.NodeObj(3);
  EXPECT_EQ(p1.Label, "P1");
  EXPECT_EQ(model.NodeObj(2)->Label, "P2");
  EXPECT_EQ(p3.Label, "P3");
  EXPECT_EQ(p3.x, 4.0);
  EXPECT_EQ(p3.y, 0.0);
  EXPECT_EQ(p3.z, 3.0);
  EXPECT_EQ(model.NodeObj(2)->z, 3.0);
}

TEST(VaskModelObjReadNodes, IdIsThePositionPlusOne) {
  PointsHost host = ThreePointHost();
  VaskModelObj model(host);
  model.ReadVaskData();
  EXPECT_EQ(model.NodeObj(1)->id, 2);
  EXPECT_EQ(model.NodeObj(2)->id, 3);
  EXPECT_EQ(model.NodeObj(3)->id, 4);
}

TEST(VaskModelObjReadNodes, RestraintsMapFromTheHostsZeroBasedFlags) {
  PointsHost host = ThreePointHost();
  VaskModelObj model(host);
  model.ReadVaskData();
  for (int dof = 1; dof <= 6; ++dof) {
    EXPECT_TRUE(model.NodeObj(1)->IsRestrained(dof));
    EXPECT_FALSE(model.NodeObj(2)->IsRestrained(dof));
    EXPECT_EQ(model.NodeObj(3)->IsRestrained(dof), dof == 1);
  }
}

TEST(VaskModelObjReadNodes, AsksForCoordinatesInTheGlobalSystem) {
  PointsHost host = ThreePointHost();
  VaskModelObj model(host);
  model.ReadVaskData();
  EXPECT_EQ(host.systems, (std::vector<std::string>{"Global", "Global", "Global"}));
}

TEST(VaskModelObjReadNodes, AFailedPointListReadsNoNode) {
  test_support::FakeHostModel host;
  VaskModelObj model(host);
  model.ReadVaskData();
  EXPECT_EQ(model.NodeNum(), 0);
  EXPECT_EQ(model.NodeTopObj(), nullptr);
  EXPECT_EQ(model.NodeBotObj(), nullptr);
}

TEST(VaskModelObjReadNodes, ReadingFindsTheDriftPair) {
  PointsHost host = ThreePointHost();
  VaskModelObj model(host);
  model.ReadVaskData();
  EXPECT_EQ(model.NodeTopObj(), model.NodeObj(2));
  EXPECT_EQ(model.NodeBotObj(), model.NodeObj(1));
}

class VaskModelObjTest : public ::testing::Test {
 protected:
  VaskNodeObj* Node(const std::string& label, double x, double y, double z) {
    return model.AddNode(label, x, y, z, kFree);
  }

  test_support::FakeHostModel host;
  VaskModelObj model{host};
};

TEST_F(VaskModelObjTest, AddNodeSetsEveryField) {
  VaskNodeObj* node = model.AddNode("N7", 1.5, -2.0, 3.25, kU1Only);
  EXPECT_EQ(model.NodeNum(), 1);
  EXPECT_EQ(model.NodeObj(1), node);
  EXPECT_EQ(node->Label, "N7");
  EXPECT_EQ(node->x, 1.5);
  EXPECT_EQ(node->y, -2.0);
  EXPECT_EQ(node->z, 3.25);
  EXPECT_EQ(node->id, 2);
  EXPECT_TRUE(node->IsRestrained(1));
  EXPECT_FALSE(node->IsRestrained(2));
}

TEST_F(VaskModelObjTest, NodeIdGetOfAnUnknownLabelIsMinusOne) {
  Node("A", 0, 0, 0);
  EXPECT_EQ(model.NodeIdGet("B"), -1);
  EXPECT_EQ(model.NodeIdGet("a"), -1);
  EXPECT_EQ(model.NodeObjGet("B"), nullptr);
  EXPECT_EQ(model.NodeIdGet("A"), 2);
}

TEST_F(VaskModelObjTest, DuplicateLabelsTheFirstWinsInEveryLookUp) {
  Node("D", 0, 0, 0);
  Node("D", 1, 0, 0);
  EXPECT_EQ(model.NodeIdGet("D"), 2);
  EXPECT_EQ(model.NodeObjGet("D"), model.NodeObj(1));

  for (int i = 0; i < 2; ++i) model.AddFrame()->Label = "D";
  EXPECT_EQ(model.FrameObjGet("D"), model.FrameObj(1));
  for (int i = 0; i < 2; ++i) model.AddPropFrameSect()->Label = "D";
  EXPECT_EQ(model.PropFrameSectObjGet("D"), model.PropFrameSectObj(1));
  for (int i = 0; i < 2; ++i) model.AddPropMaterial()->Label = "D";
  EXPECT_EQ(model.PropMaterialObjGet("D"), model.PropMatObj(1));
  for (int i = 0; i < 2; ++i) model.AddTHFuncObj()->Label = "D";
  EXPECT_EQ(model.THFuncObjGet("D"), model.THFuncObj(1));
  for (int i = 0; i < 2; ++i) model.AddLoadNode()->Label = "D";
  EXPECT_EQ(model.LoadNodeObjGet("D"), model.LoadNodeObj(1));
  for (int i = 0; i < 2; ++i) model.AddLoadPattern()->Label = "D";
  EXPECT_EQ(model.LoadPatternObjGet("D"), model.LoadPatternObj(1));
  for (int i = 0; i < 2; ++i) model.ConstraintAdd()->Label = "D";
  EXPECT_EQ(model.ConstraintFind("D"), model.ConstraintObj(1));
}

TEST_F(VaskModelObjTest, GuessedIdsAreTakenOnlyWhenTheyAreTheAnswer) {
  Node("A", 0, 0, 0);  // id 2
  Node("B", 1, 0, 0);  // id 3
  Node("A", 2, 0, 0);  // id 4, after the first A
  EXPECT_EQ(model.NodeIdFrom("B", {3}), 3);
  EXPECT_EQ(model.NodeIdFrom("B", {2, 4, 99, -1, 0}), 3);  // guesses that miss
  EXPECT_EQ(model.NodeIdFrom("A", {4}), 2);                // not the first A
  EXPECT_EQ(model.NodeIdFrom("Z", {2, 3}), -1);
  EXPECT_EQ(model.NodeObjNear("B", 3), model.NodeObj(2));
  EXPECT_EQ(model.NodeObjNear("A", 4), model.NodeObj(1));
  EXPECT_EQ(model.NodeObjNear("A", 2), model.NodeObj(1));
  EXPECT_EQ(model.NodeObjNear("Z", 2), nullptr);
  EXPECT_EQ(&model.RequiredNode("B", {"Frame", "F1"}, 3), model.NodeObj(2));
  EXPECT_THROW(model.RequiredNode("Z", {"Frame", "F1"}, 3), TransferFailure);
}

TEST_F(VaskModelObjTest, EachLookUpSearchesItsOwnList) {
  Node("X", 0, 0, 0);
  model.AddPropMaterial()->Label = "M";
  EXPECT_EQ(model.FrameObjGet("X"), nullptr);
  EXPECT_EQ(model.PropFrameSectObjGet("M"), nullptr);
  EXPECT_EQ(model.THFuncObjGet("X"), nullptr);
  EXPECT_EQ(model.LoadNodeObjGet("X"), nullptr);
  EXPECT_EQ(model.LoadPatternObjGet("M"), nullptr);
  EXPECT_EQ(model.ConstraintFind("X"), nullptr);
  EXPECT_EQ(model.PropMaterialObjGet("M"), model.PropMatObj(1));
}

TEST_F(VaskModelObjTest, PropFrameSectObjGetIgnoresEmbeddedBeamSections) {
  model.AddPropEmbedFrameSect()->Label = "S";
  EXPECT_EQ(model.PropFrameSectObjGet("S"), nullptr);
  model.AddPropFrameSect()->Label = "S";
  EXPECT_EQ(model.PropFrameSectObjGet("S"), model.PropFrameSectObj(1));
}

TEST_F(VaskModelObjTest, ALabelSetAfterTheAddIsFound) {
  VaskConstraintObj* constraint = model.ConstraintAdd();
  EXPECT_EQ(model.ConstraintFind("D1"), nullptr);
  constraint->Label = "D1";
  EXPECT_EQ(model.ConstraintFind("D1"), constraint);
}

TEST_F(VaskModelObjTest, ConstraintRemoveMovesLaterOnesDown) {
  for (const char* label : {"D1", "D2", "D3"}) model.ConstraintAdd()->Label = label;
  VaskNodeObj* node = Node("N", 0, 0, 0);
  VaskConstraintObj* removed = model.ConstraintObj(2);
  node->AddConstraintRef(removed);
  EXPECT_EQ(model.ConstraintFind("D3"), model.ConstraintObj(3));

  model.ConstraintRemove(2);

  ASSERT_EQ(model.ConstraintNum(), 2);
  EXPECT_EQ(model.ConstraintObj(2)->Label, "D3");
  EXPECT_EQ(model.ConstraintFind("D3"), model.ConstraintObj(2));
  EXPECT_EQ(model.ConstraintFind("D2"), nullptr);
  // The node still refers to the removed diaphragm, which stays a valid object.
  EXPECT_EQ(node->ConstraintObj(1)->Label, "D2");
}

TEST_F(VaskModelObjTest, ARenameIsSeenAfterLabelsChanged) {
  Node("A", 0, 0, 0);
  Node("B", 0, 0, 0);
  EXPECT_EQ(model.NodeIdGet("B"), 3);
  model.NodeObj(1)->Label = "B";
  model.LabelsChanged();
  EXPECT_EQ(model.NodeIdGet("B"), 2);
  EXPECT_EQ(model.NodeIdGet("A"), -1);
}

// The literal search that every look-up must agree with.
template <class Count, class At>
auto LinearFind(Count count, At at, const std::string& label) -> decltype(at(1)) {
  for (int i = 1; i <= count(); ++i) {
    if (at(i)->Label == label) return at(i);
  }
  return nullptr;
}

TEST_F(VaskModelObjTest, LookUpsAgreeWithTheLinearSearchOnRandomLabels) {
  const std::vector<std::string> labels = {"1", "2", "10", "A", "a", "B1", "b1", "C"};
  std::mt19937 random(99);
  std::uniform_int_distribution<int> pick(0, static_cast<int>(labels.size()) - 1);
  std::uniform_int_distribution<int> operation(0, 9);
  for (int step = 0; step < 600; ++step) {
    const std::string& label = labels[static_cast<std::size_t>(pick(random))];
    switch (operation(random)) {
      case 0:
      case 1:
        Node(label, 0, 0, 0);
        break;
      case 2:
        model.ConstraintAdd()->Label = label;
        break;
      case 3:
        if (model.ConstraintNum() > 0) {
          std::uniform_int_distribution<int> position(1, model.ConstraintNum());
          model.ConstraintRemove(position(random));
        }
        break;
      case 4:
        model.AddFrame()->Label = label;
        break;
      case 5:
        model.AddPropFrameSect()->Label = label;
        break;
      case 6:
        model.AddPropMaterial()->Label = label;
        break;
      case 7:
        model.AddLoadNode()->Label = label;
        break;
      case 8:
        model.AddLoadPattern()->Label = label;
        break;
      default:
        model.AddTHFuncObj()->Label = label;
        break;
    }
    for (const std::string& probe : labels) {
      const VaskNodeObj* node = LinearFind([&] { return model.NodeNum(); },
                                           [&](int i) { return model.NodeObj(i); }, probe);
      ASSERT_EQ(model.NodeObjGet(probe), node);
      ASSERT_EQ(model.NodeIdGet(probe), node == nullptr ? -1 : node->id);
      ASSERT_EQ(model.ConstraintFind(probe),
                LinearFind([&] { return model.ConstraintNum(); },
                           [&](int i) { return model.ConstraintObj(i); }, probe));
      ASSERT_EQ(model.FrameObjGet(probe),
                LinearFind([&] { return model.FrameNum(); },
                           [&](int i) { return model.FrameObj(i); }, probe));
      ASSERT_EQ(model.PropFrameSectObjGet(probe),
                LinearFind([&] { return model.PropFrameSectNum(); },
                           [&](int i) { return model.PropFrameSectObj(i); }, probe));
      ASSERT_EQ(model.PropMaterialObjGet(probe),
                LinearFind([&] { return model.PropMatNum(); },
                           [&](int i) { return model.PropMatObj(i); }, probe));
      ASSERT_EQ(model.LoadNodeObjGet(probe),
                LinearFind([&] { return model.LoadNodeNum(); },
                           [&](int i) { return model.LoadNodeObj(i); }, probe));
      ASSERT_EQ(model.LoadPatternObjGet(probe),
                LinearFind([&] { return model.LoadPatternNum(); },
                           [&](int i) { return model.LoadPatternObj(i); }, probe));
      ASSERT_EQ(model.THFuncObjGet(probe),
                LinearFind([&] { return model.THFuncNum(); },
                           [&](int i) { return model.THFuncObj(i); }, probe));
    }
  }
}

VaskAreaObj QuadOver(VaskModelObj& model, const std::vector<std::vector<double>>& corners) {
  VaskAreaObj area;
  area.Label = "A1";
  area.NumNodes = 4;
  area.RedimJoint();
  for (int j = 1; j <= 4; ++j) {
    const std::string label = Numbered("Q", model.NodeNum() + 1);
    const std::vector<double>& c = corners[static_cast<std::size_t>(j - 1)];
    model.AddNode(label, c[0], c[1], c[2], kFree);
    area.LabelNodes(j) = label;
  }
  return area;
}

TEST_F(VaskModelObjTest, AreaOfATwoByThreeFloorIsSixInSpaceAndInPlan) {
  const VaskAreaObj floor = QuadOver(model, {{0, 0, 5}, {2, 0, 5}, {0, 3, 5}, {2, 3, 5}});
  EXPECT_DOUBLE_EQ(model.AreaObjAreaGet(floor, false), 6.0);
  EXPECT_DOUBLE_EQ(model.AreaObjAreaGet(floor, true), 6.0);
}

TEST_F(VaskModelObjTest, AreaOfATwoByThreeWallIsSixWithNoPlanProjection) {
  const VaskAreaObj wall = QuadOver(model, {{0, 0, 0}, {2, 0, 0}, {0, 0, 3}, {2, 0, 3}});
  EXPECT_DOUBLE_EQ(model.AreaObjAreaGet(wall, false), 6.0);
  EXPECT_DOUBLE_EQ(model.AreaObjAreaGet(wall, true), 0.0);
}

TEST_F(VaskModelObjTest, AreaOfARampProjectsToItsPlan) {
  // Two wide, rising 4 over 3 in plan: 2 x 5 along the slope, 2 x 3 in plan.
  const VaskAreaObj ramp = QuadOver(model, {{0, 0, 0}, {2, 0, 0}, {0, 3, 4}, {2, 3, 4}});
  EXPECT_DOUBLE_EQ(model.AreaObjAreaGet(ramp, false), 10.0);
  EXPECT_DOUBLE_EQ(model.AreaObjAreaGet(ramp, true), 6.0);
}

TEST_F(VaskModelObjTest, AreaIsZeroUnlessTheAreaHasFourNodes) {
  VaskAreaObj triangle = QuadOver(model, {{0, 0, 0}, {2, 0, 0}, {0, 3, 0}, {2, 3, 0}});
  triangle.NumNodes = 3;
  EXPECT_EQ(model.AreaObjAreaGet(triangle, false), 0.0);
  EXPECT_EQ(model.AreaObjAreaGet(triangle, true), 0.0);
}

TEST_F(VaskModelObjTest, AreaOverAnUnknownNodeEndsTheRun) {
  VaskAreaObj area = QuadOver(model, {{0, 0, 0}, {2, 0, 0}, {0, 3, 0}, {2, 3, 0}});
  area.LabelNodes(3) = "missing";
  EXPECT_THROW(model.AreaObjAreaGet(area, false), TransferFailure);
}

TEST_F(VaskModelObjTest, FrameLengthInSpaceAndInPlan) {
  Node("I", 1, 1, 1);
  Node("J", 4, 5, 13);
  VaskFrameObj frame;
  frame.Label = "F1";
  frame.LabelNodeI = "I";
  frame.LabelNodeJ = "J";
  EXPECT_DOUBLE_EQ(model.FrameObjLengthGet(frame, false), 13.0);
  EXPECT_DOUBLE_EQ(model.FrameObjLengthGet(frame, true), 5.0);
  frame.LabelNodeJ = "K";
  EXPECT_THROW(model.FrameObjLengthGet(frame, false), TransferFailure);
}

TEST_F(VaskModelObjTest, QuadAreaUsesTheDiagonalsOfTheStoredOrder) {
  // A unit square in the normal order (lower pair, then upper pair the same way round).
  EXPECT_DOUBLE_EQ(QuadArea({0, 1, 0, 1}, {0, 0, 1, 1}, {0, 0, 0, 0}, false), 1.0);
  // The same corners in ring order: P3 - P2 and P4 - P1 are then two parallel sides, not
  // diagonals, and the result is 0. The areas are put in normal order before any use.
  EXPECT_DOUBLE_EQ(QuadArea({0, 1, 1, 0}, {0, 0, 1, 1}, {0, 0, 0, 0}, false), 0.0);
}

// ---- Drift pair in the model ----

TEST_F(VaskModelObjTest, AllNodesOnOneElevationPairTheFirstNodeWithItself) {
  Node("N1", 0, 0, 0);
  Node("N2", 5, 0, 0);
  Node("N3", 9, 0, 0);
  model.FindDriftNodes();
  EXPECT_EQ(model.NodeTopObj(), model.NodeObj(1));
  EXPECT_EQ(model.NodeBotObj(), model.NodeObj(1));
}

TEST_F(VaskModelObjTest, ASingleNodeIsTheLastNodeAndGivesNoPair) {
  Node("N1", 0, 0, 0);
  model.FindDriftNodes();
  EXPECT_EQ(model.NodeTopObj(), nullptr);
  EXPECT_EQ(model.NodeBotObj(), nullptr);
}

TEST_F(VaskModelObjTest, TheLastNodeCannotBeTheTopNode) {
  Node("B", 0, 0, 0);
  Node("T", 0, 0, 9);
  model.FindDriftNodes();
  EXPECT_EQ(model.NodeTopObj(), nullptr);
  EXPECT_EQ(model.NodeBotObj(), nullptr);
}

TEST_F(VaskModelObjTest, TheLastNodeCannotBeTheBottomNodeAndNoOtherPairIsTried) {
  Node("T", 0, 0, 9);
  Node("B far", 5, 0, 0);
  Node("B near", 0, 0, 0);
  model.FindDriftNodes();
  EXPECT_EQ(model.NodeTopObj(), nullptr);
  EXPECT_EQ(model.NodeBotObj(), nullptr);
}

TEST_F(VaskModelObjTest, APairBeforeTheLastNodeIsKept) {
  Node("T", 0, 0, 9);
  Node("B", 1, 0, 0);
  Node("M", 0, 0, 4);
  model.FindDriftNodes();
  EXPECT_EQ(model.NodeTopObj(), model.NodeObj(1));
  EXPECT_EQ(model.NodeBotObj(), model.NodeObj(2));
}

TEST_F(VaskModelObjTest, ATopNodeTenThousandUnitsFromEveryBottomNodeLeavesNoPair) {
  Node("T", 0, 0, 9);
  Node("B1", 10000, 0, 0);
  Node("B2", 0, -10000, 0);
  Node("M", 0, 0, 4);
  model.FindDriftNodes();
  EXPECT_EQ(model.NodeTopObj(), nullptr);
  EXPECT_EQ(model.NodeBotObj(), nullptr);
}

TEST_F(VaskModelObjTest, IndexedAndLiteralDriftSearchesAgreeOnRandomModels) {
  std::mt19937 random(3);
  std::uniform_int_distribution<int> small(-3, 3);
  std::uniform_int_distribution<int> level(0, 2);
  std::uniform_int_distribution<int> count(0, 12);
  for (int round = 0; round < 500; ++round) {
    model.Dispose();
    const int num = count(random);
    for (int i = 0; i < num; ++i) {
      Node(Numbered("N", i), small(random), small(random), 3.0 * level(random));
    }
    model.FindDriftNodesLiteral();
    const VaskNodeObj* top = model.NodeTopObj();
    const VaskNodeObj* bottom = model.NodeBotObj();
    model.FindDriftNodes();
    ASSERT_EQ(model.NodeTopObj(), top) << "round " << round;
    ASSERT_EQ(model.NodeBotObj(), bottom) << "round " << round;
  }
}

// ---- Dispose ----

TEST_F(VaskModelObjTest, DisposeEmptiesEveryContainer) {
  Node("N1", 0, 0, 0);
  Node("N2", 0, 0, 0);
  model.FindDriftNodes();
  ASSERT_NE(model.NodeTopObj(), nullptr);
  model.ConstraintAdd()->Label = "D1";
  model.FrameReleaseAdd();
  model.AddFrame()->Label = "F1";
  model.AddArea();
  model.AddPropMaterial()->Label = "M1";
  model.AddPropFrameSect()->Label = "S1";
  model.AddPropEmbedFrameSect();
  model.AddPropAreaSect();
  model.AddLoadPattern()->Label = "L1";
  model.AddLoadNode()->Label = "N1";
  model.AddLoadArea();
  model.AddTHFuncObj()->Label = "TH1";
  model.MassSrcOption = 3;
  model.MassSrcLoadNum = 1;
  model.MassSrcLoadPattern.Add("L1");
  model.MassSrcSF.Add(1.0);

  model.Dispose();

  EXPECT_EQ(model.NodeNum(), 0);
  EXPECT_EQ(model.ConstraintNum(), 0);
  EXPECT_EQ(model.FrameReleaseNum(), 0);
  EXPECT_EQ(model.FrameNum(), 0);
  EXPECT_EQ(model.AreaNum(), 0);
  EXPECT_EQ(model.PropMatNum(), 0);
  EXPECT_EQ(model.PropFrameSectNum(), 0);
  EXPECT_EQ(model.PropEmbedFrameSectNum(), 0);
  EXPECT_EQ(model.PropAreaSectNum(), 0);
  EXPECT_EQ(model.LoadPatternNum(), 0);
  EXPECT_EQ(model.LoadNodeNum(), 0);
  EXPECT_EQ(model.LoadAreaNum(), 0);
  EXPECT_EQ(model.THFuncNum(), 0);
  EXPECT_EQ(model.MassSrcLoadNum, 0);
  EXPECT_EQ(model.MassSrcLoadPattern.Num(), 0);
  EXPECT_EQ(model.MassSrcSF.Num(), 0);
  EXPECT_EQ(model.NodeTopObj(), nullptr);
  EXPECT_EQ(model.NodeBotObj(), nullptr);
  EXPECT_EQ(model.NodeObjGet("N1"), nullptr);
  EXPECT_EQ(model.FrameObjGet("F1"), nullptr);
  EXPECT_EQ(model.ConstraintFind("D1"), nullptr);
}

}  // namespace
}  // namespace vtt
