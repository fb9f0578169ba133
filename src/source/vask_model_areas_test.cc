// Behaviour of the areas of the source model: which shells are read, the division of a
// triangle and its new nodes, the normal order of the nodes, the wall, floor and ramp
// classification, and the embedded-beam sections where frames join shells.
#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <map>
#include <numbers>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "source/fake_host_model_test_support.h"
#include "source/vask_model.h"
#include "transfer/failure.h"

namespace vtt {
namespace {

constexpr int kConcrete = 2;
constexpr int kRebar = 6;
constexpr int kFrame = 2;
constexpr int kArea = 5;

// A host with materials, shell sections, points, areas and the objects joined at points.
class AreaHost : public test_support::FakeHostModel {
 public:
  struct Material {
    std::string name;
    int type;
  };
  struct Layer {
    std::string material;
    double thickness;
    int type;
    double angle;
    int s11;
    int s22;
  };
  struct Section {
    std::string name;
    int type = 1;
    int shellType = 1;
    std::string material;
    double thickness = 0.0;
    std::vector<Layer> layers;
  };
  struct Point {
    std::string name;
    double x;
    double y;
    double z;
  };
  struct Area {
    std::string name;
    std::string section;
    std::vector<std::string> points;
  };

  std::vector<Material> materials;
  std::vector<Section> sections;
  std::vector<Point> points;
  std::vector<Area> areas;
  // Object types joined at a point; a point not listed has none.
  std::map<std::string, std::vector<int>> joined;

  int GetMaterialNameList(int typeFilter, int& count, Names& names) override {
    names.clear();
    for (const Material& m : materials) {
      if (typeFilter == 0 || m.type == typeFilter) names.push_back(m.name);
    }
    count = static_cast<int>(names.size());
    return 0;
  }
  int GetMaterialType(const std::string& name, int& type, int& symmetry) override {
    for (const Material& m : materials) {
      if (m.name == name) {
        type = m.type;
        symmetry = 0;
        return 0;
      }
    }
    return FakeHostModel::GetMaterialType(name, type, symmetry);
  }

  int GetAreaSectionNameList(int& count, Names& names) override {
    names.clear();
    for (const Section& s : sections) names.push_back(s.name);
    count = static_cast<int>(names.size());
    return 0;
  }
  int GetAreaSectionType(const std::string& name, int& type) override {
    const Section* s = FindSection(name);
    if (s == nullptr) return FakeHostModel::GetAreaSectionType(name, type);
    type = s->type;
    return 0;
  }
  int GetShellSection(const std::string& name, int& shellType, bool& drillingDof,
                      std::string& material, double& materialAngle, double& membraneThickness,
                      double& bendingThickness) override {
    const Section* s = FindSection(name);
    if (s == nullptr) {
      return FakeHostModel::GetShellSection(name, shellType, drillingDof, material, materialAngle,
                                            membraneThickness, bendingThickness);
    }
    shellType = s->shellType;
    drillingDof = false;
    material = s->material;
    materialAngle = 0.0;
    membraneThickness = s->thickness;
    bendingThickness = s->thickness;
    return 0;
  }
  int GetShellLayers(const std::string& name, int& count, Names& layerNames, Reals& distances,
                     Reals& thicknesses, Ints& types, Ints& integrationPoints, Names& layerMats,
                     Reals& materialAngles, Ints& s11Types, Ints& s22Types,
                     Ints& s12Types) override {
    const Section* s = FindSection(name);
    FakeHostModel::GetShellLayers(name, count, layerNames, distances, thicknesses, types,
                                  integrationPoints, layerMats, materialAngles, s11Types,
                                  s22Types, s12Types);
    if (s == nullptr) return kFailed;
    count = static_cast<int>(s->layers.size());
    for (const Layer& layer : s->layers) {
      layerNames.push_back("L" + std::to_string(layerNames.size() + 1));
      distances.push_back(0.0);
      thicknesses.push_back(layer.thickness);
      types.push_back(layer.type);
      integrationPoints.push_back(1);
      layerMats.push_back(layer.material);
      materialAngles.push_back(layer.angle);
      s11Types.push_back(layer.s11);
      s22Types.push_back(layer.s22);
      s12Types.push_back(1);
    }
    return 0;
  }

  int GetPointNameList(int& count, Names& names) override {
    names.clear();
    for (const Point& p : points) names.push_back(p.name);
    count = static_cast<int>(names.size());
    return 0;
  }
  int GetPointCoordinates(const std::string& name, double& x, double& y, double& z,
                          const std::string& csys) override {
    for (const Point& p : points) {
      if (p.name == name) {
        x = p.x;
        y = p.y;
        z = p.z;
        return 0;
      }
    }
    return FakeHostModel::GetPointCoordinates(name, x, y, z, csys);
  }
  int GetPointConnectivity(const std::string& name, int& count, Ints& objectTypes,
                           Names& objectNames, Ints& pointNumbers) override {
    connectivityAsked.push_back(name);
    FakeHostModel::GetPointConnectivity(name, count, objectTypes, objectNames, pointNumbers);
    const auto found = joined.find(name);
    if (found == joined.end()) return 0;
    for (const int type : found->second) {
      objectTypes.push_back(type);
      objectNames.push_back("Obj" + std::to_string(objectNames.size() + 1));
      pointNumbers.push_back(1);
    }
    count = static_cast<int>(objectTypes.size());
    return 0;
  }

  int GetAreaNameList(int& count, Names& names) override {
    names.clear();
    for (const Area& a : areas) names.push_back(a.name);
    count = static_cast<int>(names.size());
    return 0;
  }
  int GetAreaSection(const std::string& name, std::string& section) override {
    for (const Area& a : areas) {
      if (a.name == name) {
        section = a.section;
        return 0;
      }
    }
    return FakeHostModel::GetAreaSection(name, section);
  }
  int GetAreaPoints(const std::string& name, int& count, Names& names) override {
    for (const Area& a : areas) {
      if (a.name == name) {
        names = a.points;
        count = static_cast<int>(names.size());
        return 0;
      }
    }
    return FakeHostModel::GetAreaPoints(name, count, names);
  }

  // Point names GetPointConnectivity was asked about, in order.
  std::vector<std::string> connectivityAsked;

 private:
  const Section* FindSection(const std::string& name) const {
    for (const Section& s : sections) {
      if (s.name == name) return &s;
    }
    return nullptr;
  }
};

class AreaReading : public ::testing::Test {
 protected:
  AreaReading() {
    host.materials = {{"C30", kConcrete}, {"R500", kRebar}};
    // "Thin": elastic shell 0.2 thick of C30. "Fiber": layered fiber wall, 0.25 of concrete.
    host.sections.push_back({"Thin", 1, 1, "C30", 0.2, {}});
    host.sections.push_back(
        {"Fiber", 1, 6, "", 0.0, {{"C30", 0.25, 1, 0.0, 1, 2}, {"R500", 0.002, 1, 90.0, 1, 1}}});
  }
  void Point(const std::string& name, double x, double y, double z) {
    host.points.push_back({name, x, y, z});
  }
  void Area(const std::string& name, std::vector<std::string> points,
            const std::string& section = "Thin") {
    host.areas.push_back({name, section, std::move(points)});
  }
  // A vertical wall of 4 by `height` in the plane y = `y`, its corners "<name>a" to
  // "<name>d" given bottom first.
  void Wall(const std::string& name, double y, double height,
            const std::string& section = "Thin") {
    Point(name + "a", 0.0, y, 0.0);
    Point(name + "b", 4.0, y, 0.0);
    Point(name + "c", 4.0, y, height);
    Point(name + "d", 0.0, y, height);
    Area(name, {name + "a", name + "b", name + "c", name + "d"}, section);
  }
  std::vector<std::string> Labels(const VaskAreaObj& area) const {
    std::vector<std::string> labels;
    for (const std::string& label : area.LabelNodes) labels.push_back(label);
    return labels;
  }
  std::vector<int> Ids(const VaskAreaObj& area) const {
    std::vector<int> ids;
    for (const int id : area.idNodes) ids.push_back(id);
    return ids;
  }
  void Read() { model.ReadVaskData(); }

  AreaHost host;
  VaskModelObj model{host};
};

// ---- ReadAreas ----

TEST_F(AreaReading, AQuadrilateralIsStoredWithItsSectionAndNodesInHostOrder) {
  Wall("W", 0.0, 3.0);
  Read();
  ASSERT_EQ(model.AreaNum(), 1);
  const VaskAreaObj& area = *model.AreaObj(1);
  EXPECT_EQ(area.Label, "W");
  EXPECT_EQ(area.NumNodes, 4);
  EXPECT_EQ(area.PropAreaSectName, "Thin");
  EXPECT_EQ(Labels(area), (std::vector<std::string>{"Wa", "Wb", "Wd", "Wc"}));
  EXPECT_EQ(Ids(area), (std::vector<int>{2, 3, 5, 4}));
  EXPECT_EQ(model.NodeNum(), 4);
}

TEST_F(AreaReading, AFiveNodedAreaIsDroppedWithoutAWord) {
  Wall("W", 0.0, 3.0);
  Point("E", 2.0, 0.0, 4.0);
  Area("Five", {"Wa", "Wb", "Wc", "E", "Wd"});
  Area("Two", {"Wa", "Wb"});
  Read();
  ASSERT_EQ(model.AreaNum(), 1);
  EXPECT_EQ(model.AreaObj(1)->Label, "W");
  EXPECT_EQ(model.NodeNum(), 5);
}

TEST_F(AreaReading, OnlyShellSectionsOfThinOrLayeredShellsAreRead) {
  host.sections.push_back({"Deck", 2, 1, "C30", 0.2, {}});
  host.sections.push_back({"Thick", 1, 2, "C30", 0.2, {}});
  Wall("A", 0.0, 3.0, "Deck");
  Wall("B", 1.0, 3.0, "Thick");
  Wall("C", 2.0, 3.0, "Unknown");
  Wall("D", 3.0, 3.0, "Fiber");
  Wall("E", 4.0, 3.0, "Thin");
  Read();
  ASSERT_EQ(model.AreaNum(), 2);
  EXPECT_EQ(model.AreaObj(1)->Label, "D");
  EXPECT_EQ(model.AreaObj(2)->Label, "E");
}

TEST_F(AreaReading, ATriangleBecomesThreeAreasOnItsCentroidAndMidSideNodes) {
  Point("P1", 0.0, 0.0, 0.0);
  Point("P2", 6.0, 0.0, 0.0);
  Point("P3", 0.0, 6.0, 0.0);
  Area("T", {"P1", "P2", "P3"});
  Read();
  ASSERT_EQ(model.NodeNum(), 7);
  const auto expectNode = [&](int position, const char* label, double x, double y, double z) {
    const VaskNodeObj& node = *model.NodeObj(position);
    EXPECT_EQ(node.Label, label);
    EXPECT_EQ(node.id, position + 1);
    EXPECT_EQ(node.x, x);
    EXPECT_EQ(node.y, y);
    EXPECT_EQ(node.z, z);
    for (int dof = 1; dof <= 6; ++dof) EXPECT_FALSE(node.IsRestrained(dof)) << label;
  };
  expectNode(4, "NewNode2", 2.0, 2.0, 0.0);
  expectNode(5, "NewNode3", 3.0, 0.0, 0.0);
  expectNode(6, "NewNode4", 3.0, 3.0, 0.0);
  expectNode(7, "NewNode5", 0.0, 3.0, 0.0);

  // P1 M12 C M31, P2 M23 C M12, P3 M31 C M23; on a flat triangle the plan test then turns
  // each upper pair.
  ASSERT_EQ(model.AreaNum(), 3);
  for (int i = 1; i <= 3; ++i) {
    EXPECT_EQ(model.AreaObj(i)->Label, "T");
    EXPECT_EQ(model.AreaObj(i)->PropAreaSectName, "Thin");
    EXPECT_EQ(model.AreaObj(i)->NumNodes, 4);
  }
  EXPECT_EQ(Labels(*model.AreaObj(1)),
            (std::vector<std::string>{"P1", "NewNode3", "NewNode5", "NewNode2"}));
  EXPECT_EQ(Ids(*model.AreaObj(1)), (std::vector<int>{2, 6, 8, 5}));
  EXPECT_EQ(Labels(*model.AreaObj(2)),
            (std::vector<std::string>{"P2", "NewNode4", "NewNode3", "NewNode2"}));
  EXPECT_EQ(Ids(*model.AreaObj(2)), (std::vector<int>{3, 7, 6, 5}));
  EXPECT_EQ(Labels(*model.AreaObj(3)),
            (std::vector<std::string>{"P3", "NewNode5", "NewNode4", "NewNode2"}));
  EXPECT_EQ(Ids(*model.AreaObj(3)), (std::vector<int>{4, 8, 7, 5}));
}

TEST_F(AreaReading, TheCentroidIsTheMeanOfTheMidSideOfTheFirstTwoCornersAndTheThird) {
  Point("P1", 0.1, 1.1, 0.7);
  Point("P2", 0.2, 2.2, 0.1);
  Point("P3", 0.3, 3.3, 0.3);
  Area("T", {"P1", "P2", "P3"});
  Read();
  const VaskNodeObj* centroid = model.NodeObjGet("NewNode2");
  ASSERT_NE(centroid, nullptr);
  EXPECT_EQ(centroid->x, 0.20000000000000004);
  EXPECT_EQ(centroid->y, 2.1999999999999997);
  EXPECT_EQ(centroid->z, 0.36666666666666664);
  const VaskNodeObj* m12 = model.NodeObjGet("NewNode3");
  ASSERT_NE(m12, nullptr);
  EXPECT_EQ(m12->x, (0.1 + 0.2) / 2.0);
  EXPECT_EQ(m12->y, (1.1 + 2.2) / 2.0);
  EXPECT_EQ(m12->z, (0.7 + 0.1) / 2.0);
}

TEST_F(AreaReading, NewNodeNumbersRiseByFiveATriangleLeavingGapsForSharedNodes) {
  // T1 and T2 share the side P2-P3; T3 stands apart.
  Point("P1", 0.0, 0.0, 0.0);
  Point("P2", 6.0, 0.0, 0.0);
  Point("P3", 0.0, 6.0, 0.0);
  Point("P4", 6.0, 6.0, 0.0);
  Point("Q1", 20.0, 0.0, 0.0);
  Point("Q2", 26.0, 0.0, 0.0);
  Point("Q3", 20.0, 6.0, 0.0);
  Area("T1", {"P1", "P2", "P3"});
  Area("T2", {"P2", "P4", "P3"});
  Area("T3", {"Q1", "Q2", "Q3"});
  Read();
  std::vector<std::string> added;
  for (int i = 8; i <= model.NodeNum(); ++i) added.push_back(model.NodeObj(i)->Label);
  EXPECT_EQ(added, (std::vector<std::string>{"NewNode2", "NewNode3", "NewNode4", "NewNode5",
                                             "NewNode7", "NewNode8", "NewNode9", "NewNode12",
                                             "NewNode13", "NewNode14", "NewNode15"}));
  // The mid-side of P3-P2 in T2 is the mid-side of P2-P3 made for T1.
  ASSERT_EQ(model.AreaNum(), 9);
  const VaskNodeObj* shared = model.NodeObjGet("NewNode4");
  ASSERT_NE(shared, nullptr);
  EXPECT_EQ(shared->x, 3.0);
  EXPECT_EQ(shared->y, 3.0);
  int areasOnShared = 0;
  for (int i = 1; i <= model.AreaNum(); ++i) {
    for (const std::string& label : model.AreaObj(i)->LabelNodes) {
      if (label == "NewNode4") ++areasOnShared;
    }
  }
  EXPECT_EQ(areasOnShared, 4);
}

TEST_F(AreaReading, ACentroidWithinTheToleranceOfANodeReusesTheFirstSuchNode) {
  // The triangle's centroid is the origin. "Off" is exactly 0.000001 away in x, which is
  // not below the tolerance; "Near" and then "Exact" are both within it.
  Point("P1", -3.0, -1.0, 0.0);
  Point("P2", 3.0, -1.0, 0.0);
  Point("P3", 0.0, 2.0, 0.0);
  Point("Off", 0.000001, 0.0, 0.0);
  Point("Near", 0.0000009, -0.0000009, 0.0000005);
  Point("Exact", 0.0, 0.0, 0.0);
  Area("T", {"P1", "P2", "P3"});
  Read();
  EXPECT_EQ(model.NodeObjGet("NewNode2"), nullptr);
  EXPECT_EQ(model.NodeNum(), 9);
  EXPECT_EQ(model.NodeObj(7)->Label, "NewNode3");
  for (int i = 1; i <= 3; ++i) {
    EXPECT_EQ(model.AreaObj(i)->LabelNodes(4), "Near") << "area " << i;
    EXPECT_EQ(model.AreaObj(i)->idNodes(4), 6) << "area " << i;
  }
}

TEST_F(AreaReading, AMidSideOnAJointUsesTheJoint) {
  Point("P1", 0.0, 0.0, 0.0);
  Point("P2", 6.0, 0.0, 0.0);
  Point("P3", 0.0, 6.0, 0.0);
  Point("J", 3.0, 0.0, 0.0);
  Area("T", {"P1", "P2", "P3"});
  Read();
  EXPECT_EQ(model.NodeObjGet("NewNode3"), nullptr);
  EXPECT_EQ(model.NodeObj(5)->Label, "NewNode2");
  EXPECT_EQ(model.NodeObj(6)->Label, "NewNode4");
  EXPECT_EQ(model.NodeObj(7)->Label, "NewNode5");
  EXPECT_EQ(model.AreaObj(1)->LabelNodes(2), "J");
}

TEST_F(AreaReading, AHostPointLabelledNewNode2MakesTheNextFreeNumberBeUsed) {
  Point("NewNode2", 50.0, 50.0, 50.0);
  Point("P1", 0.0, 0.0, 0.0);
  Point("P2", 6.0, 0.0, 0.0);
  Point("P3", 0.0, 6.0, 0.0);
  Area("T", {"P1", "P2", "P3"});
  Read();
  ASSERT_EQ(model.NodeNum(), 8);
  EXPECT_EQ(model.NodeObj(5)->Label, "NewNode3");
  EXPECT_EQ(model.NodeObj(5)->x, 2.0);
  EXPECT_EQ(model.NodeObj(6)->Label, "NewNode4");
  EXPECT_EQ(model.NodeObj(7)->Label, "NewNode5");
  EXPECT_EQ(model.NodeObj(8)->Label, "NewNode6");
  EXPECT_EQ(model.NodeObj(1)->x, 50.0);
}

TEST_F(AreaReading, AnAreaOnAnUnknownNodeEndsTheRunWithAMessageNamingIt) {
  Wall("W", 0.0, 3.0);
  Area("Lost", {"Wa", "Wb", "Ghost", "Wd"});
  std::string lastStage;
  try {
    model.ReadVaskData([&](int, std::string_view name) { lastStage = name; });
    FAIL() << "the run went on past an area with an unknown node";
  } catch (const TransferFailure& failure) {
    const std::string message = failure.what();
    EXPECT_NE(message.find("Lost"), std::string::npos) << message;
    EXPECT_NE(message.find("Ghost"), std::string::npos) << message;
  }
  EXPECT_EQ(lastStage, "ReadAreas");
  ASSERT_EQ(model.AreaNum(), 2);
  EXPECT_EQ(model.AreaObj(2)->idNodes(3), -1);
}

TEST_F(AreaReading, ATriangleOnAnUnknownNodeEndsTheRunWithAMessageNamingIt) {
  Point("P1", 0.0, 0.0, 0.0);
  Point("P2", 6.0, 0.0, 0.0);
  Area("Tri", {"P1", "P2", "Nowhere"});
  try {
    Read();
    FAIL() << "the run went on past a triangle with an unknown node";
  } catch (const TransferFailure& failure) {
    const std::string message = failure.what();
    EXPECT_NE(message.find("Tri"), std::string::npos) << message;
    EXPECT_NE(message.find("Nowhere"), std::string::npos) << message;
  }
  EXPECT_EQ(model.AreaNum(), 0);
}

// ---- LinkAreaSections ----

TEST_F(AreaReading, EachAreaLinksToTheFirstSectionOfItsName) {
  host.sections.push_back({"Thin", 1, 1, "C30", 0.3, {}});
  Wall("W", 0.0, 3.0);
  Wall("F", 1.0, 3.0, "Fiber");
  Read();
  ASSERT_EQ(model.PropAreaSectNum(), 3);
  ASSERT_EQ(model.AreaNum(), 2);
  EXPECT_EQ(model.AreaObj(1)->PropAreaSectObj, model.PropAreaSectObj(1));
  EXPECT_EQ(model.AreaObj(1)->PropAreaSectObj->Thick, 0.2);
  EXPECT_EQ(model.AreaObj(2)->PropAreaSectObj, model.PropAreaSectObj(2));
}

// ---- NormaliseAreaNodes ----

class AreaGeometry : public ::testing::Test {
 protected:
  // An area on new nodes "<name>1" to "<name>4" at the given corners, in that order.
  VaskAreaObj& Quad(const std::string& name, const std::vector<std::array<double, 3>>& corners) {
    VaskAreaObj& area = *model.AddArea();
    area.Label = name;
    area.NumNodes = 4;
    area.RedimJoint();
    for (int j = 1; j <= 4; ++j) {
      const auto& c = corners[static_cast<std::size_t>(j - 1)];
      const VaskNodeObj* node =
          model.AddNode(name + std::to_string(j), c[0], c[1], c[2], DofFlags{});
      area.LabelNodes(j) = node->Label;
      area.idNodes(j) = node->id;
    }
    return area;
  }
  std::vector<std::string> Labels(const VaskAreaObj& area) const {
    std::vector<std::string> labels;
    for (const std::string& label : area.LabelNodes) labels.push_back(label);
    return labels;
  }
  // A 4 by 3 rectangle through the X axis, `degrees` from the vertical plane about it.
  VaskAreaObj& Tilted(const std::string& name, double degrees) {
    const double a = degrees * std::numbers::pi / 180.0;
    const double dy = 3.0 * std::sin(a);
    const double dz = 3.0 * std::cos(a);
    return Quad(name, {{0, 0, 0}, {4, 0, 0}, {4, dy, dz}, {0, dy, dz}});
  }

  test_support::FakeHostModel host;
  VaskModelObj model{host};
};

TEST_F(AreaGeometry, TheLowerPairComesFirstAndTheUpperPairRunsTheSameWay) {
  VaskAreaObj& area = Quad("A", {{0, 0, 3}, {0, 0, 0}, {4, 0, 0}, {4, 0, 3}});
  model.NormaliseAreaNodes(area);
  EXPECT_EQ(Labels(area), (std::vector<std::string>{"A2", "A3", "A1", "A4"}));
  EXPECT_EQ(area.idNodes(1), 3);
  EXPECT_EQ(area.idNodes(2), 4);
  EXPECT_EQ(area.idNodes(3), 2);
  EXPECT_EQ(area.idNodes(4), 5);

  VaskAreaObj& turned = Quad("B", {{0, 0, 0}, {4, 0, 0}, {0, 0, 3}, {4, 0, 3}});
  model.NormaliseAreaNodes(turned);
  EXPECT_EQ(Labels(turned), (std::vector<std::string>{"B1", "B2", "B3", "B4"}));

  VaskAreaObj& crossed = Quad("C", {{0, 0, 3}, {0, 0, 0}, {4, 0, 3}, {4, 0, 0}});
  model.NormaliseAreaNodes(crossed);
  // Sorted C2 C4 C3 C1 by the exchanges; the upper pair runs back, so it is turned.
  EXPECT_EQ(Labels(crossed), (std::vector<std::string>{"C2", "C4", "C1", "C3"}));
}

TEST_F(AreaGeometry, TheExchangeSortMayReorderEqualLevels) {
  // z 1, 1, 0, 2: exchanging the first and third corner puts the two at level 1 in the
  // order b, a, which a stable sort would not.
  VaskAreaObj& area = Quad("S", {{0, 0, 1}, {4, 0, 1}, {0, 0, 0}, {4, 0, 2}});
  model.NormaliseAreaNodes(area);
  EXPECT_EQ(Labels(area), (std::vector<std::string>{"S3", "S2", "S1", "S4"}));
}

TEST_F(AreaGeometry, AFlatFloorKeepsTheExchangeOrderAndStillRunsThePlanTest) {
  VaskAreaObj& around = Quad("F", {{0, 0, 5}, {4, 0, 5}, {4, 3, 5}, {0, 3, 5}});
  model.NormaliseAreaNodes(around);
  EXPECT_EQ(Labels(around), (std::vector<std::string>{"F1", "F2", "F4", "F3"}));
  EXPECT_EQ(around.idNodes(3), 5);
  EXPECT_EQ(around.idNodes(4), 4);

  VaskAreaObj& parallel = Quad("G", {{0, 0, 5}, {4, 0, 5}, {0, 3, 5}, {4, 3, 5}});
  model.NormaliseAreaNodes(parallel);
  EXPECT_EQ(Labels(parallel), (std::vector<std::string>{"G1", "G2", "G3", "G4"}));
}

TEST_F(AreaGeometry, NormalisingTwiceChangesNothingMore) {
  VaskAreaObj& area = Quad("A", {{4, 0, 3}, {0, 0, 0}, {0, 0, 3}, {4, 0, 0}});
  model.NormaliseAreaNodes(area);
  const std::vector<std::string> once = Labels(area);
  model.NormaliseAreaNodes(area);
  EXPECT_EQ(Labels(area), once);
}

// ---- AreaOrientationGet ----

TEST_F(AreaGeometry, AWallAt4Point9DegreesFromVerticalIsAWallAndAt5Point1ARamp) {
  EXPECT_EQ(model.AreaOrientationGet(Tilted("V0", 0.0)), 1);
  EXPECT_EQ(model.AreaOrientationGet(Tilted("V49", 4.9)), 1);
  EXPECT_EQ(model.AreaOrientationGet(Tilted("V51", 5.1)), 3);
}

TEST_F(AreaGeometry, AFloorTilted4Point9DegreesIsAFloorAnd5Point1ARamp) {
  EXPECT_EQ(model.AreaOrientationGet(Tilted("H0", 90.0)), 2);
  EXPECT_EQ(model.AreaOrientationGet(Tilted("H49", 90.0 - 4.9)), 2);
  EXPECT_EQ(model.AreaOrientationGet(Tilted("H51", 90.0 - 5.1)), 3);
  EXPECT_EQ(model.AreaOrientationGet(Tilted("R45", 45.0)), 3);
}

TEST_F(AreaGeometry, AShortTopOrBottomEdgeMakesAFloorWhateverTheInclination) {
  EXPECT_EQ(model.AreaOrientationGet(Quad("T", {{0, 0, 0}, {4, 0, 0}, {2, 0, 3}, {2.09, 0, 3}})),
            2);
  EXPECT_EQ(model.AreaOrientationGet(Quad("B", {{0, 0, 0}, {0.09, 0, 0}, {4, 0, 3}, {0, 0, 3}})),
            2);
  // Just over 0.1 the wall is a wall; the constant does not follow the units.
  EXPECT_EQ(model.AreaOrientationGet(Quad("U", {{0, 0, 0}, {4, 0, 0}, {2, 0, 3}, {2.11, 0, 3}})),
            1);
}

TEST_F(AreaGeometry, AnAreaWithoutANormalCountsAsAWall) {
  // Four corners on one line: the normal is zero, its length is taken as 0.001, and the
  // vertical part of the normal is then 0.
  EXPECT_EQ(model.AreaOrientationGet(Quad("L", {{0, 0, 0}, {1, 0, 0}, {2, 0, 0}, {3, 0, 0}})),
            1);
}

TEST_F(AreaGeometry, TheClassificationDoesNotChangeTheStoredOrder) {
  VaskAreaObj& area = Quad("A", {{0, 0, 3}, {0, 0, 0}, {4, 0, 0}, {4, 0, 3}});
  EXPECT_EQ(model.AreaOrientationGet(area), 1);
  EXPECT_EQ(Labels(area), (std::vector<std::string>{"A1", "A2", "A3", "A4"}));
}

TEST_F(AreaReading, ClassifyAreasSetsTheOrientationOfEveryArea) {
  Wall("W", 0.0, 3.0);
  Point("F1", 0.0, 0.0, 3.0);
  Point("F2", 4.0, 0.0, 3.0);
  Point("F3", 4.0, 5.0, 3.0);
  Point("F4", 0.0, 5.0, 3.0);
  Area("Floor", {"F1", "F2", "F3", "F4"});
  Point("R3", 4.0, 5.0, 6.0);
  Point("R4", 0.0, 5.0, 6.0);
  Area("Ramp", {"F1", "F2", "R3", "R4"});
  Read();
  ASSERT_EQ(model.AreaNum(), 3);
  EXPECT_EQ(model.AreaObj(1)->Orientation, 1);
  EXPECT_EQ(model.AreaObj(2)->Orientation, 2);
  EXPECT_EQ(model.AreaObj(3)->Orientation, 3);
}

// ---- AddNewNode and the coincidence search ----

TEST_F(AreaGeometry, AddNewNodeReturnsAPresentNodeOrAddsAnUnsupportedOne) {
  model.AddNode("A", 1.0, 2.0, 3.0, DofFlags{true, true, true, true, true, true});
  EXPECT_EQ(model.AddNewNode(7, 1.0000005, 1.9999995, 3.0), model.NodeObj(1));
  VaskNodeObj* added = model.AddNewNode(7, 1.0000011, 2.0, 3.0);
  ASSERT_EQ(model.NodeNum(), 2);
  EXPECT_EQ(added, model.NodeObj(2));
  EXPECT_EQ(added->Label, "NewNode7");
  EXPECT_EQ(added->id, 3);
  EXPECT_FALSE(added->IsSupport());
  // A node added by the reading after the grid was built is found too.
  model.AddNode("B", 9.0, 9.0, 9.0, DofFlags{});
  EXPECT_EQ(model.AddNewNode(7, 9.0, 9.0, 9.0), model.NodeObj(3));
  EXPECT_EQ(model.AddNewNode(7, 5.0, 5.0, 5.0)->Label, "NewNode8");
}

TEST_F(AreaGeometry, TheCoincidenceGridAgreesWithTheLinearSearchOnRandomPoints) {
  std::mt19937_64 random(20240611);
  constexpr double cell = CoincidentPointIndex::kCell;
  constexpr double tolerance = CoincidentPointIndex::kTolerance;
  std::uniform_int_distribution<int> cellOf(-40, 40);
  std::uniform_real_distribution<double> unit(0.0, 1.0);
  std::uniform_int_distribution<int> kind(0, 5);
  // A coordinate: inside a cell, on or just beside a cell border, or on a coarse lattice.
  const auto coordinate = [&]() {
    const double border = cellOf(random) * cell;
    switch (kind(random)) {
      case 0:
        return border;
      case 1:
        return border + (unit(random) - 0.5) * 4.0 * tolerance;
      case 2:
        return std::nextafter(border, 1.0);
      case 3:
        return std::nextafter(border, -1.0);
      case 4:
        return cellOf(random) * 0.5 * tolerance;
      default:
        return (unit(random) - 0.5) * 80.0 * cell;
    }
  };
  for (int i = 0; i < 3000; ++i) {
    model.AddNode("N" + std::to_string(i), coordinate(), coordinate(), coordinate(), DofFlags{});
  }
  // Queries at random places, at nodes moved by up to twice the tolerance, and at nodes
  // moved by exactly the tolerance; now and then a new node joins the model meanwhile.
  const std::array<double, 7> offsets{0.0,        tolerance,        -tolerance,
                                      0.999 * tolerance, -0.999 * tolerance, 1.001 * tolerance,
                                      0.5 * tolerance};
  std::uniform_int_distribution<int> offsetOf(0, static_cast<int>(offsets.size()) - 1);
  int found = 0;
  int notFound = 0;
  for (int q = 0; q < 20000; ++q) {
    double x = coordinate();
    double y = coordinate();
    double z = coordinate();
    if (q % 2 == 0) {
      std::uniform_int_distribution<int> nodeOf(1, model.NodeNum());
      const VaskNodeObj& node = *model.NodeObj(nodeOf(random));
      x = node.x + offsets[static_cast<std::size_t>(offsetOf(random))];
      y = node.y + offsets[static_cast<std::size_t>(offsetOf(random))];
      z = node.z + (unit(random) - 0.5) * 2.0 * tolerance;
    }
    const VaskNodeObj* linear = model.FindCoincidentNodeLinear(x, y, z);
    ASSERT_EQ(model.FindCoincidentNode(x, y, z), linear) << "query " << q;
    (linear == nullptr ? notFound : found) += 1;
    if (q % 50 == 0) model.AddNewNode(q, x, y, z);
  }
  EXPECT_GT(found, 2000);
  EXPECT_GT(notFound, 2000);
}

TEST_F(AreaGeometry, TheCoincidenceSearchMatchesStrictlyBelowTheTolerance) {
  model.AddNode("A", 0.0, 0.0, 0.0, DofFlags{});
  EXPECT_EQ(model.FindCoincidentNode(0.000001, 0.0, 0.0), nullptr);
  EXPECT_EQ(model.FindCoincidentNode(0.0, -0.000001, 0.0), nullptr);
  EXPECT_EQ(model.FindCoincidentNode(0.0, 0.0, 0.00000099), model.NodeObj(1));
  // Huge and non-finite coordinates find exactly what the linear search finds.
  model.AddNode("Far", 1e300, -1e300, 1e12, DofFlags{});
  EXPECT_EQ(model.FindCoincidentNode(1e300, -1e300, 1e12), model.NodeObj(2));
  EXPECT_EQ(model.FindCoincidentNode(std::nan(""), 0.0, 0.0), nullptr);
  model.AddNode("Inf", INFINITY, 0.0, 0.0, DofFlags{});
  EXPECT_EQ(model.FindCoincidentNode(INFINITY, 0.0, 0.0), nullptr);
  EXPECT_EQ(model.FindCoincidentNodeLinear(INFINITY, 0.0, 0.0), nullptr);
}

// ---- DetectEmbeddedBeams ----

TEST_F(AreaReading, AnElasticWallGetsAnEmbeddedSectionWhereAFrameJoinsButAnElasticSlabNot) {
  Wall("W", 0.0, 3.0);
  Point("S3", 4.0, 5.0, 3.0);
  Point("S4", 0.0, 5.0, 3.0);
  Area("Slab", {"Wd", "Wc", "S3", "S4"});
  host.joined["Wc"] = {kArea, kFrame};
  Read();
  ASSERT_EQ(model.AreaNum(), 2);
  const VaskAreaObj& wall = *model.AreaObj(1);
  const VaskAreaObj& slab = *model.AreaObj(2);
  ASSERT_EQ(wall.Orientation, 1);
  ASSERT_EQ(slab.Orientation, 2);
  ASSERT_EQ(model.PropEmbedFrameSectNum(), 1);
  const VaskPropFrameSectObj& section = *model.PropEmbedFrameSectObj(1);
  EXPECT_EQ(wall.EmbedFrameObj, &section);
  EXPECT_EQ(slab.EmbedFrameObj, nullptr);
  EXPECT_EQ(section.area, 0.001);
  EXPECT_EQ(section.As2, 0.0);
  EXPECT_EQ(section.As3, 0.0);
  EXPECT_EQ(section.I22, 0.001);
  EXPECT_EQ(section.I33, (1.0 / 12.0) * 0.2 * 1.5 * 1.5 * 1.5);
  EXPECT_EQ(section.Label, "1");
  EXPECT_EQ(section.PropType, 8);
  EXPECT_EQ(section.t2, 0.2);
  EXPECT_EQ(section.t3, 1.5);
  EXPECT_EQ(section.TorsionConst, 0.0001);
  EXPECT_EQ(section.PropMatName, "C30");
  EXPECT_EQ(section.PropMatObj, model.PropMaterialObjGet("C30"));
}

TEST_F(AreaReading, IsEmbedIsComputedForEveryAreaAtEachNodeAFrameJoins) {
  Wall("W", 0.0, 3.0);
  Point("S3", 4.0, 5.0, 3.0);
  Point("S4", 0.0, 5.0, 3.0);
  Area("Slab", {"Wd", "Wc", "S3", "S4"});
  host.sections.push_back({"Plate", 1, 6, "", 0.0, {{"Nope", 0.1, 1, 0.0, 1, 2}}});
  Wall("P", 8.0, 3.0, "Plate");
  host.joined["Wc"] = {kFrame};
  host.joined["S4"] = {kArea, kArea, kFrame};
  host.joined["Wa"] = {kArea};
  host.joined["Pb"] = {kFrame};
  Read();
  ASSERT_EQ(model.AreaNum(), 3);
  const auto flags = [&](int i) {
    std::vector<bool> f;
    for (const bool embed : model.AreaObj(i)->IsEmbed) f.push_back(embed);
    return f;
  };
  // The wall is stored Wa Wb Wd Wc, the slab Wd Wc S4 S3, the plate wall Pa Pb Pd Pc.
  EXPECT_EQ(flags(1), (std::vector<bool>{false, false, false, true}));
  EXPECT_EQ(flags(2), (std::vector<bool>{false, true, true, false}));
  EXPECT_EQ(flags(3), (std::vector<bool>{false, true, false, false}));
  EXPECT_EQ(host.connectivityAsked.size(), 12u);
  // Neither the slab nor the plate wall (a layered shell of no known material) gets a
  // section.
  EXPECT_EQ(model.AreaObj(2)->EmbedFrameObj, nullptr);
  EXPECT_EQ(model.AreaObj(3)->EmbedFrameObj, nullptr);
  EXPECT_EQ(model.PropEmbedFrameSectNum(), 1);
}

TEST_F(AreaReading, AnAreaWithNoFrameGetsNoSection) {
  Wall("W", 0.0, 3.0);
  host.joined["Wa"] = {kArea};
  Read();
  EXPECT_EQ(model.PropEmbedFrameSectNum(), 0);
  EXPECT_EQ(model.AreaObj(1)->EmbedFrameObj, nullptr);
}

TEST_F(AreaReading, AnElasticWallWithoutAKnownMaterialGetsNoSection) {
  host.sections.push_back({"Odd", 1, 1, "Unobtainium", 0.2, {}});
  Wall("W", 0.0, 3.0, "Odd");
  host.joined["Wa"] = {kFrame};
  Read();
  EXPECT_EQ(model.PropEmbedFrameSectNum(), 0);
  EXPECT_EQ(model.AreaObj(1)->EmbedFrameObj, nullptr);
}

TEST_F(AreaReading, EqualWallsShareOneSectionThatTakesTheLabelOfTheLatest) {
  Wall("A", 0.0, 3.0);
  Wall("B", 1.0, 3.0);
  Wall("C", 2.0, 4.0);
  Wall("D", 3.0, 3.0);
  Wall("E", 4.0, 3.0, "Fiber");
  for (const char* point : {"Aa", "Ba", "Ca", "Da", "Ea"}) host.joined[point] = {kFrame};
  Read();
  ASSERT_EQ(model.AreaNum(), 5);
  ASSERT_EQ(model.PropEmbedFrameSectNum(), 3);
  const VaskPropFrameSectObj* shared = model.PropEmbedFrameSectObj(1);
  EXPECT_EQ(model.AreaObj(1)->EmbedFrameObj, shared);
  EXPECT_EQ(model.AreaObj(2)->EmbedFrameObj, shared);
  EXPECT_EQ(model.AreaObj(4)->EmbedFrameObj, shared);
  EXPECT_EQ(shared->Label, "4");
  const VaskPropFrameSectObj* taller = model.PropEmbedFrameSectObj(2);
  EXPECT_EQ(model.AreaObj(3)->EmbedFrameObj, taller);
  EXPECT_EQ(taller->Label, "3");
  EXPECT_EQ(taller->t3, 2.0);
  EXPECT_EQ(taller->I33, (1.0 / 12.0) * 0.2 * 2.0 * 2.0 * 2.0);
  // The layered fiber wall: its concrete layer material and concrete thickness.
  const VaskPropFrameSectObj* layered = model.PropEmbedFrameSectObj(3);
  EXPECT_EQ(model.AreaObj(5)->EmbedFrameObj, layered);
  EXPECT_EQ(layered->Label, "5");
  EXPECT_EQ(layered->t2, 0.25);
  EXPECT_EQ(layered->t3, 1.5);
  EXPECT_EQ(layered->PropMatName, "C30");
  EXPECT_EQ(layered->PropMatObj, model.PropMaterialObjGet("C30"));
}

TEST_F(AreaReading, SectionsMatchWithinTheToleranceOfTheLatestValuesAndTheSameMaterial) {
  host.materials.push_back({"C40", kConcrete});
  host.sections.push_back({"Thin2", 1, 1, "C30", 0.2000005, {}});
  host.sections.push_back({"Thin3", 1, 1, "C40", 0.2, {}});
  host.sections.push_back({"Thin4", 1, 1, "C30", 0.2000012, {}});
  host.sections.push_back({"Thin5", 1, 1, "C30", 0.2000025, {}});
  Wall("A", 0.0, 3.0);
  Wall("B", 1.0, 3.0, "Thin2");
  Wall("C", 2.0, 3.0, "Thin3");
  Wall("D", 3.0, 3.0, "Thin4");
  Wall("E", 4.0, 3.0, "Thin5");
  for (const char* point : {"Aa", "Ba", "Ca", "Da", "Ea"}) host.joined[point] = {kFrame};
  Read();
  ASSERT_EQ(model.PropEmbedFrameSectNum(), 3);
  const VaskPropFrameSectObj* first = model.PropEmbedFrameSectObj(1);
  EXPECT_EQ(model.AreaObj(1)->EmbedFrameObj, first);
  EXPECT_EQ(model.AreaObj(2)->EmbedFrameObj, first);
  // Another material name never matches, however equal the sizes.
  EXPECT_EQ(model.AreaObj(3)->EmbedFrameObj, model.PropEmbedFrameSectObj(2));
  EXPECT_EQ(model.PropEmbedFrameSectObj(2)->PropMatName, "C40");
  EXPECT_EQ(model.PropEmbedFrameSectObj(2)->Label, "3");
  // B moved the section's thickness to 0.2000005, so D, 0.0000012 from A but 0.0000007
  // from B, still matches; E, 0.0000013 from D, does not.
  EXPECT_EQ(model.AreaObj(4)->EmbedFrameObj, first);
  EXPECT_EQ(first->t2, 0.2000012);
  EXPECT_EQ(first->I33, (1.0 / 12.0) * 0.2000012 * 1.5 * 1.5 * 1.5);
  EXPECT_EQ(first->Label, "4");
  EXPECT_EQ(model.AreaObj(5)->EmbedFrameObj, model.PropEmbedFrameSectObj(3));
  EXPECT_EQ(model.PropEmbedFrameSectObj(3)->Label, "5");
}

TEST_F(AreaReading, ALayeredFloorGetsASectionWithTheHeightFloored) {
  Point("F1", 0.0, 0.0, 3.0);
  Point("F2", 4.0, 0.0, 3.0);
  Point("F3", 4.0, 5.0, 3.0);
  Point("F4", 0.0, 5.0, 3.0);
  Area("Floor", {"F1", "F2", "F3", "F4"}, "Fiber");
  host.joined["F3"] = {kFrame};
  Read();
  ASSERT_EQ(model.AreaObj(1)->Orientation, 2);
  ASSERT_EQ(model.PropEmbedFrameSectNum(), 1);
  const VaskPropFrameSectObj& section = *model.PropEmbedFrameSectObj(1);
  EXPECT_EQ(section.t3, 0.001);
  EXPECT_EQ(section.I33, (1.0 / 12.0) * 0.25 * 0.001 * 0.001 * 0.001);
}

}  // namespace
}  // namespace vtt
