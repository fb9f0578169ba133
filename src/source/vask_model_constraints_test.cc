#include <gtest/gtest.h>

#include <map>
#include <random>

#include "source/diaphragm_merge.h"
#include "source/fake_host_model_test_support.h"
#include "source/vask_model.h"

namespace vtt {
namespace {

// A host with points and constraints; assignments are listed point by point.
class ConstraintHost : public test_support::FakeHostModel {
 public:
  struct Point {
    std::string name;
    DofFlags restraints{};
    std::vector<std::string> constraints;
  };
  struct Constraint {
    std::string name;
    int type = 2;
    int axis = 3;
    std::string csys = "Global";
  };
  std::vector<Point> points;
  std::vector<Constraint> constraints;

  int GetPointCount() override { return static_cast<int>(points.size()); }
  int GetPointNameList(int& count, Names& names) override {
    names.clear();
    for (const Point& p : points) names.push_back(p.name);
    count = static_cast<int>(names.size());
    return 0;
  }
  int GetPointCoordinates(const std::string&, double& x, double& y, double& z,
                          const std::string&) override {
    x = y = z = 0;
    return 0;
  }
  int GetPointRestraints(const std::string& name, DofFlags& restraints) override {
    for (const Point& p : points) {
      if (p.name == name) {
        restraints = p.restraints;
        return 0;
      }
    }
    return 1;
  }
  int GetPointConstraints(const std::string& name, ItemType item, int& count, Names& pointNames,
                          Names& constraintNames) override {
    pointNames.clear();
    constraintNames.clear();
    for (const Point& p : points) {
      if (item == ItemType::Object && p.name != name) continue;
      for (const std::string& c : p.constraints) {
        pointNames.push_back(p.name);
        constraintNames.push_back(c);
      }
    }
    count = static_cast<int>(pointNames.size());
    return 0;
  }
  int GetConstraintNameList(int& count, Names& names) override {
    names.clear();
    for (const Constraint& c : constraints) names.push_back(c.name);
    count = static_cast<int>(names.size());
    return 0;
  }
  int GetConstraintType(const std::string& name, int& type) override {
    for (const Constraint& c : constraints) {
      if (c.name == name) {
        type = c.type;
        return 0;
      }
    }
    type = 0;
    return 1;
  }
  int GetDiaphragmData(const std::string& name, int& axis, std::string& csys) override {
    for (const Constraint& c : constraints) {
      if (c.name == name && c.type == 2) {
        axis = c.axis;
        csys = c.csys;
        return 0;
      }
    }
    axis = 0;
    csys.clear();
    return 1;
  }
};

// Labels of the constraints in order, each with the labels of its members.
std::vector<std::pair<std::string, std::vector<std::string>>> Diaphragms(const VaskModelObj& m) {
  std::vector<std::pair<std::string, std::vector<std::string>>> out;
  for (int i = 1; i <= m.ConstraintNum(); ++i) {
    std::vector<std::string> members;
    for (const VaskNodeObj* n : m.ConstraintObj(i)->NodeObj) members.push_back(n->Label);
    out.emplace_back(m.ConstraintObj(i)->Label, members);
  }
  return out;
}

using Listing = std::vector<std::pair<std::string, std::vector<std::string>>>;

class ReadConstraints : public ::testing::Test {
 protected:
  void Point(const std::string& name, std::vector<std::string> constraints,
             DofFlags restraints = {}) {
    host.points.push_back({name, restraints, std::move(constraints)});
  }
  void Constraint(const std::string& name, int type = 2, int axis = 3,
                  const std::string& csys = "Global") {
    host.constraints.push_back({name, type, axis, csys});
  }
  Listing Read() {
    model.ReadVaskData();
    return Diaphragms(model);
  }
  ConstraintHost host;
  VaskModelObj model{host};
};

TEST_F(ReadConstraints, ADiaphragmIsReadWithItsNodesInAssignmentOrder) {
  Constraint("D1");
  Point("A", {"D1"});
  Point("B", {"D1"});
  EXPECT_EQ(Read(), (Listing{{"D1", {"A", "B"}}}));
  EXPECT_EQ(model.ConstraintObj(1)->id, 1);
  EXPECT_EQ(model.NodeObj(1)->ConstraintNum(), 1);
}

TEST_F(ReadConstraints, DiaphragmsWithAnXOrYNormalAreNotRead) {
  Constraint("DX", 2, 1);
  Constraint("DY", 2, 2);
  Constraint("DAuto", 2, 4);
  Point("A", {"DX", "DY", "DAuto"});
  EXPECT_EQ(Read(), (Listing{{"DAuto", {"A"}}}));
}

TEST_F(ReadConstraints, OtherConstraintTypesAreNotRead) {
  for (int type : {1, 3, 4, 5, 6, 7, 8, 9}) Constraint("K" + std::to_string(type), type);
  Point("A", {"K1", "K3", "K4", "K5", "K6", "K7", "K8", "K9"});
  EXPECT_TRUE(Read().empty());
}

TEST_F(ReadConstraints, AVerticalSupportKeepsTheDiaphragm) {
  Constraint("D1");
  Point("A", {"D1"}, {false, false, true, false, false, false});
  Point("B", {"D1"});
  EXPECT_EQ(Read(), (Listing{{"D1", {"A", "B"}}}));
}

TEST_F(ReadConstraints, ASupportInTheDiaphragmPlaneDropsItWhole) {
  for (int dof : {0, 1, 5}) {
    ConstraintHost h;
    h.constraints.push_back({"D1", 2, 3, "Global"});
    DofFlags r{};
    r[static_cast<std::size_t>(dof)] = true;
    h.points.push_back({"A", r, {"D1"}});
    h.points.push_back({"B", {}, {"D1"}});
    VaskModelObj m(h);
    m.ReadVaskData();
    EXPECT_EQ(m.ConstraintNum(), 0) << "restrained dof " << dof + 1;
  }
}

TEST_F(ReadConstraints, RotationSupportsAboutXOrYKeepTheDiaphragm) {
  Constraint("D1");
  Point("A", {"D1"}, {false, false, false, true, false, false});
  Point("B", {"D1"}, {false, false, false, false, true, false});
  EXPECT_EQ(Read(), (Listing{{"D1", {"A", "B"}}}));
}

TEST_F(ReadConstraints, TwoDiaphragmsSharingANodeMergeIntoTheFirst) {
  Constraint("D1");
  Constraint("D2");
  Point("A", {"D1"});
  Point("S", {"D1", "D2"});
  Point("B", {"D2"});
  EXPECT_EQ(Read(), (Listing{{"D1", {"A", "S", "B"}}}));
}

TEST_F(ReadConstraints, ADiaphragmInAnotherSystemStillPasses) {
  Constraint("D1", 2, 3, "Local7");
  Point("A", {"D1"});
  EXPECT_EQ(Read(), (Listing{{"D1", {"A"}}}));
}

TEST_F(ReadConstraints, AConstraintWithoutAssignmentsIsGone) {
  Constraint("Empty");
  Constraint("D1");
  Point("A", {"D1"});
  EXPECT_EQ(Read(), (Listing{{"D1", {"A"}}}));
}

TEST_F(ReadConstraints, AChainThroughThreeDiaphragmsMergesOnlyTheFirstPair) {
  Constraint("D1");
  Constraint("D2");
  Constraint("D3");
  Point("A", {"D1"});
  Point("B", {"D1", "D2"});
  Point("C", {"D2", "D3"});
  Point("E", {"D3"});
  // Sort keys: D1 1, D2 1 (second at B), D3 2 (second at C, whose first is D2).
  EXPECT_EQ(Read(), (Listing{{"D1", {"A", "B", "C"}}, {"D3", {"C", "E"}}}));
  EXPECT_EQ(model.ConstraintObj(2)->idSort, 2);
  // The ids are no longer the positions after a merge.
  EXPECT_EQ(model.ConstraintObj(2)->id, 3);
}

TEST_F(ReadConstraints, LaterDiaphragmsOfOneKeyJoinFromTheLastToTheFirst) {
  Constraint("D1");
  Constraint("D2");
  Constraint("D3");
  Point("H", {"D1", "D3", "D2"});
  Point("X2", {"D2"});
  Point("X3", {"D3"});
  EXPECT_EQ(Read(), (Listing{{"D1", {"H", "X3", "X2"}}}));
}

// Random diaphragm sets: the linear merge leaves exactly what the nested loops leave.
TEST(MergeDiaphragms, LinearMergeAgreesWithTheNestedLoops) {
  std::mt19937 random(12345);
  for (int round = 0; round < 300; ++round) {
    test_support::FakeHostModel host;
    VaskModelObj a(host);
    VaskModelObj b(host);
    const int nodes = 1 + static_cast<int>(random() % 30);
    for (int n = 0; n < nodes; ++n) {
      a.AddNode("N" + std::to_string(n), 0, 0, n, {});
      b.AddNode("N" + std::to_string(n), 0, 0, n, {});
    }
    const int constraints = 1 + static_cast<int>(random() % 12);
    for (int c = 1; c <= constraints; ++c) {
      const int key = 1 + static_cast<int>(random() % static_cast<unsigned>(c));
      const int members = static_cast<int>(random() % 6);
      std::vector<int> picks;
      for (int m = 0; m < members; ++m) picks.push_back(1 + static_cast<int>(random() % nodes));
      for (VaskModelObj* model : {&a, &b}) {
        VaskConstraintObj* k = model->ConstraintAdd();
        k->Label = "D" + std::to_string(c);
        k->id = c;
        k->idSort = key;
        for (int p : picks) k->NodeAdd(model->NodeObj(p));
      }
    }
    MergeDiaphragmsBySortKey(a);
    MergeDiaphragmsBySortKeyLiteral(b);
    ASSERT_EQ(Diaphragms(a), Diaphragms(b)) << "round " << round;
  }
}

}  // namespace
}  // namespace vtt
