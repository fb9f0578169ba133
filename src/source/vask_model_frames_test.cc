// Behaviour of the frames of the source model: which frames are read, their shared release
// patterns, the link to their section, their classification as column, beam or brace and
// by section and material, and their end hinges.
#include <gtest/gtest.h>

#include <cmath>
#include <numbers>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "source/fake_host_model_test_support.h"
#include "source/vask_model.h"
#include "transfer/failure.h"

namespace vtt {
namespace {

constexpr int kSteel = 1;
constexpr int kConcrete = 2;
constexpr int kRebar = 6;
constexpr int kIShape = 1;
constexpr int kChannel = 2;
constexpr int kRectangular = 8;

constexpr DofFlags kNoRelease{};
constexpr DofFlags kMomentsReleased{false, false, false, false, true, true};
constexpr DofFlags kTorsionReleased{false, false, false, true, false, false};

// A host with materials, frame sections, points and frames.
class FrameHost : public test_support::FakeHostModel {
 public:
  struct Material {
    std::string name;
    int type;
  };
  struct Section {
    std::string name;
    int type;
    std::string material;
    int designType = 0;
  };
  struct Point {
    std::string name;
    double x;
    double y;
    double z;
  };
  struct Hinge {
    int dof;
    double relativeDistance;
  };
  struct Frame {
    std::string name;
    std::string section;
    std::string pointI;
    std::string pointJ;
    double angle = 0.0;
    DofFlags releaseI{};
    DofFlags releaseJ{};
    std::vector<Hinge> hinges;
    int hingeStatus = 0;
  };

  std::vector<Material> materials;
  std::vector<Section> sections;
  std::vector<Point> points;
  std::vector<Frame> frames;
  // Section names GetRebarDesignType was asked about, in order.
  std::vector<std::string> designTypeAsked;

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

  int GetFrameSectionNameList(int& count, Names& names) override {
    names.clear();
    for (const Section& s : sections) names.push_back(s.name);
    count = static_cast<int>(names.size());
    return 0;
  }
  int GetFrameSectionType(const std::string& name, int& type) override {
    const Section* s = FindSection(name);
    if (s == nullptr) return FakeHostModel::GetFrameSectionType(name, type);
    type = s->type;
    return 0;
  }
  int GetFrameSectionMaterial(const std::string& name, std::string& material) override {
    const Section* s = FindSection(name);
    if (s == nullptr) return FakeHostModel::GetFrameSectionMaterial(name, material);
    material = s->material;
    return 0;
  }
  int GetRebarDesignType(const std::string& sectionName, int& designType) override {
    designTypeAsked.push_back(sectionName);
    const Section* s = FindSection(sectionName);
    if (s == nullptr) return FakeHostModel::GetRebarDesignType(sectionName, designType);
    designType = s->designType;
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

  int GetFrameNameList(int& count, Names& names) override {
    names.clear();
    for (const Frame& f : frames) names.push_back(f.name);
    count = static_cast<int>(names.size());
    return 0;
  }
  int GetFrameSection(const std::string& name, std::string& section,
                      std::string& autoSelect) override {
    const Frame* f = FindFrame(name);
    if (f == nullptr) return FakeHostModel::GetFrameSection(name, section, autoSelect);
    section = f->section;
    autoSelect.clear();
    return 0;
  }
  int GetFramePoints(const std::string& name, std::string& pointI, std::string& pointJ) override {
    const Frame* f = FindFrame(name);
    if (f == nullptr) return FakeHostModel::GetFramePoints(name, pointI, pointJ);
    pointI = f->pointI;
    pointJ = f->pointJ;
    return 0;
  }
  int GetFrameLocalAngle(const std::string& name, double& angle, bool& advanced) override {
    const Frame* f = FindFrame(name);
    if (f == nullptr) return FakeHostModel::GetFrameLocalAngle(name, angle, advanced);
    angle = f->angle;
    advanced = false;
    return 0;
  }
  int GetFrameReleases(const std::string& name, DofFlags& releaseI, DofFlags& releaseJ,
                       DofValues& startValues, DofValues& endValues) override {
    const Frame* f = FindFrame(name);
    if (f == nullptr) {
      return FakeHostModel::GetFrameReleases(name, releaseI, releaseJ, startValues, endValues);
    }
    releaseI = f->releaseI;
    releaseJ = f->releaseJ;
    startValues = {};
    endValues = {};
    return 0;
  }
  int GetFrameHinges(const std::string& name, int& count, Ints& a1, Ints& a2, Ints& dofs, Reals& a4,
                     Reals& a5, Reals& relativeDistances) override {
    const Frame* f = FindFrame(name);
    if (f == nullptr) {
      return FakeHostModel::GetFrameHinges(name, count, a1, a2, dofs, a4, a5, relativeDistances);
    }
    count = static_cast<int>(f->hinges.size());
    a1.assign(f->hinges.size(), 0);
    a2.assign(f->hinges.size(), 0);
    a4.assign(f->hinges.size(), 0.0);
    a5.assign(f->hinges.size(), 0.0);
    dofs.clear();
    relativeDistances.clear();
    for (const Hinge& h : f->hinges) {
      dofs.push_back(h.dof);
      relativeDistances.push_back(h.relativeDistance);
    }
    return f->hingeStatus;
  }

 private:
  const Section* FindSection(const std::string& name) const {
    for (const Section& s : sections) {
      if (s.name == name) return &s;
    }
    return nullptr;
  }
  const Frame* FindFrame(const std::string& name) const {
    for (const Frame& f : frames) {
      if (f.name == name) return &f;
    }
    return nullptr;
  }
};

// A model with a steel and a concrete material, an I-shaped steel section "W" and a
// rectangular concrete section "R", and a point at the origin; each test adds the rest.
class FrameReading : public ::testing::Test {
 protected:
  FrameReading() {
    host.materials = {{"Conc", kConcrete}, {"Steel", kSteel}, {"Rebar", kRebar}};
    host.sections = {{"W", kIShape, "Steel", 0}, {"R", kRectangular, "Conc", 0}};
    host.points = {{"O", 0.0, 0.0, 0.0}};
  }

  void Point(const std::string& name, double x, double y, double z) {
    host.points.push_back({name, x, y, z});
  }
  FrameHost::Frame& Frame(const std::string& name, const std::string& pointI,
                          const std::string& pointJ, const std::string& section = "W") {
    FrameHost::Frame& frame = host.frames.emplace_back();
    frame.name = name;
    frame.section = section;
    frame.pointI = pointI;
    frame.pointJ = pointJ;
    return frame;
  }
  // A frame of length 3 from the origin, `degrees` away from the vertical, its plan
  // direction 30 degrees from X; angles are taken with the true pi.
  void FrameFromVertical(const std::string& name, double degrees) {
    const double a = degrees * std::numbers::pi / 180.0;
    const double b = 30.0 * std::numbers::pi / 180.0;
    const double length = 3.0;
    Point(name + "-J", length * std::sin(a) * std::cos(b), length * std::sin(a) * std::sin(b),
          length * std::cos(a));
    Frame(name, "O", name + "-J");
  }
  // A short horizontal frame from the origin to a new point, for tests of ends, sections
  // and hinges.
  FrameHost::Frame& BeamFrame(const std::string& name, const std::string& section = "W") {
    Point(name + "-J", 4.0, 0.0, 0.0);
    return Frame(name, "O", name + "-J", section);
  }
  void Read() { model.ReadVaskData(); }
  const VaskFrameObj& Read(std::string_view frameLabel) {
    Read();
    const VaskFrameObj* frame = model.FrameObjGet(frameLabel);
    if (frame == nullptr) throw std::runtime_error("frame not read: " + std::string(frameLabel));
    return *frame;
  }

  FrameHost host;
  VaskModelObj model{host};
};

// ---- ReadFrames ----

TEST_F(FrameReading, FramesAreReadInHostOrderWithTheirEndsSectionAndAngle) {
  Point("A", 0.0, 0.0, 3.0);
  Point("B", 5.0, 0.0, 3.0);
  Frame("C1", "O", "A", "R").angle = 90.0;
  Frame("B1", "A", "B").angle = 30.0;
  Read();
  ASSERT_EQ(model.FrameNum(), 2);
  const VaskFrameObj& column = *model.FrameObj(1);
  EXPECT_EQ(column.Label, "C1");
  EXPECT_EQ(column.PropFrameSectName, "R");
  EXPECT_EQ(column.LabelNodeI, "O");
  EXPECT_EQ(column.LabelNodeJ, "A");
  // Node ids are the node's position + 1.
  EXPECT_EQ(column.NodeI, 2);
  EXPECT_EQ(column.NodeJ, 3);
  EXPECT_EQ(column.Angle, 90.0);
  const VaskFrameObj& beam = *model.FrameObj(2);
  EXPECT_EQ(beam.Label, "B1");
  EXPECT_EQ(beam.PropFrameSectName, "W");
  EXPECT_EQ(beam.NodeI, 3);
  EXPECT_EQ(beam.NodeJ, 4);
  EXPECT_EQ(beam.Angle, 30.0);
}

TEST_F(FrameReading, AFrameWhoseSectionWasNotReadIsNotRead) {
  // Section type 0 is left out of the frame sections, and "Ghost" is no section at all.
  host.sections.push_back({"Zero", 0, "Steel", 0});
  BeamFrame("F1");
  BeamFrame("F2", "Zero");
  BeamFrame("F3", "Ghost");
  BeamFrame("F4", "R");
  Read();
  ASSERT_EQ(model.FrameNum(), 2);
  EXPECT_EQ(model.FrameObj(1)->Label, "F1");
  EXPECT_EQ(model.FrameObj(2)->Label, "F4");
  EXPECT_EQ(model.FrameObjGet("F2"), nullptr);
  EXPECT_EQ(model.FrameObjGet("F3"), nullptr);
}

TEST_F(FrameReading, AnUnknownEndNodeKeepsMinusOneAndEndsTheRunAtClassification) {
  Point("A", 0.0, 0.0, 3.0);
  Frame("F1", "A", "Nowhere");
  std::string lastStage;
  try {
    model.ReadVaskData([&](int, std::string_view name) { lastStage = name; });
    FAIL() << "the run went on past a frame with an unknown end node";
  } catch (const TransferFailure& failure) {
    const std::string message = failure.what();
    EXPECT_NE(message.find("F1"), std::string::npos) << message;
    EXPECT_NE(message.find("Nowhere"), std::string::npos) << message;
  }
  EXPECT_EQ(lastStage, "ClassifyFrames");
  ASSERT_EQ(model.FrameNum(), 1);
  EXPECT_EQ(model.FrameObj(1)->NodeI, 3);
  EXPECT_EQ(model.FrameObj(1)->NodeJ, -1);
}

// ---- ReadFrameReleases ----

TEST_F(FrameReading, TwoFramesWithTheSameFlagsAtTheirIEndsShareOneReleaseObject) {
  BeamFrame("F1").releaseI = kMomentsReleased;
  BeamFrame("F2").releaseI = kMomentsReleased;
  Read();
  ASSERT_EQ(model.FrameReleaseNum(), 1);
  const VaskFrameReleaseObj* shared = model.FrameReleaseObj(1);
  EXPECT_EQ(model.FrameObj(1)->ReleaseIObj, shared);
  EXPECT_EQ(model.FrameObj(2)->ReleaseIObj, shared);
  EXPECT_EQ(model.FrameObj(1)->ReleaseJObj, nullptr);
  for (int dof = 1; dof <= 6; ++dof) {
    EXPECT_EQ(shared->Release(dof), dof == 5 || dof == 6) << "dof " << dof;
  }
}

TEST_F(FrameReading, IAndJEndsWithEqualFlagsShareOneObject) {
  FrameHost::Frame& frame = BeamFrame("F1");
  frame.releaseI = kMomentsReleased;
  frame.releaseJ = kMomentsReleased;
  const VaskFrameObj& read = Read("F1");
  ASSERT_EQ(model.FrameReleaseNum(), 1);
  EXPECT_EQ(read.ReleaseIObj, model.FrameReleaseObj(1));
  EXPECT_EQ(read.ReleaseJObj, model.FrameReleaseObj(1));
  EXPECT_TRUE(read.isIReleased());
  EXPECT_TRUE(read.isJReleased());
}

TEST_F(FrameReading, AFrameWithNoReleaseKeepsBothReferencesEmpty) {
  FrameHost::Frame& frame = BeamFrame("F1");
  frame.releaseI = kNoRelease;
  frame.releaseJ = kNoRelease;
  const VaskFrameObj& read = Read("F1");
  EXPECT_EQ(read.ReleaseIObj, nullptr);
  EXPECT_EQ(read.ReleaseJObj, nullptr);
  EXPECT_FALSE(read.isIReleased());
  EXPECT_FALSE(read.isJReleased());
  EXPECT_EQ(model.FrameReleaseNum(), 0);
}

TEST_F(FrameReading, EachDistinctPatternIsStoredOnceInTheOrderMet) {
  // One flag is enough to release a side.
  FrameHost::Frame& first = BeamFrame("F1");
  first.releaseJ = kTorsionReleased;
  FrameHost::Frame& second = BeamFrame("F2");
  second.releaseI = kMomentsReleased;
  second.releaseJ = kTorsionReleased;
  Read();
  ASSERT_EQ(model.FrameReleaseNum(), 2);
  const VaskFrameReleaseObj* torsion = model.FrameReleaseObj(1);
  const VaskFrameReleaseObj* moments = model.FrameReleaseObj(2);
  EXPECT_EQ(model.FrameObj(1)->ReleaseIObj, nullptr);
  EXPECT_EQ(model.FrameObj(1)->ReleaseJObj, torsion);
  EXPECT_EQ(model.FrameObj(2)->ReleaseIObj, moments);
  EXPECT_EQ(model.FrameObj(2)->ReleaseJObj, torsion);
  EXPECT_TRUE(torsion->Release(4));
  EXPECT_FALSE(torsion->Release(5));
  EXPECT_TRUE(moments->Release(6));
  EXPECT_FALSE(moments->Release(4));
}

TEST(FrameReleaseFind, ReturnsTheFirstStoredPatternWithEqualFlagsOrNone) {
  test_support::FakeHostModel host;
  VaskModelObj model(host);
  EXPECT_EQ(model.FrameReleaseFind(kMomentsReleased), nullptr);
  VaskFrameReleaseObj* torsion = model.FrameReleaseAdd();
  torsion->Release(4) = true;
  VaskFrameReleaseObj* first = model.FrameReleaseAdd();
  first->Release(5) = true;
  first->Release(6) = true;
  VaskFrameReleaseObj* second = model.FrameReleaseAdd();
  second->Release(5) = true;
  second->Release(6) = true;
  EXPECT_EQ(model.FrameReleaseFind(kMomentsReleased), first);
  EXPECT_EQ(model.FrameReleaseFind(kTorsionReleased), torsion);
  EXPECT_EQ(model.FrameReleaseFind({true, false, false, false, false, false}), nullptr);
  EXPECT_EQ(model.FrameReleaseFind({false, false, false, true, true, true}), nullptr);
}

// ---- LinkFrameSections ----

TEST_F(FrameReading, AFrameLinksToTheFirstSectionWithItsSectionName) {
  // Two sections labelled alike: the rectangular one comes first.
  host.sections = {
      {"S", kRectangular, "Conc", 0}, {"S", kIShape, "Steel", 0}, {"W", kIShape, "Steel", 0}};
  BeamFrame("F1", "S");
  BeamFrame("F2", "W");
  Read();
  EXPECT_EQ(model.FrameObj(1)->PropFrameSectObj, model.PropFrameSectObj(1));
  EXPECT_EQ(model.FrameObj(1)->TrelkSectType, 1);
  EXPECT_EQ(model.FrameObj(2)->PropFrameSectObj, model.PropFrameSectObj(3));
}

// ---- FrameOrientationGet and the frame type ----

TEST_F(FrameReading, AFrameAt4Point9DegreesFromVerticalIsAColumn) {
  FrameFromVertical("F", 4.9);
  EXPECT_EQ(Read("F").TrelkFrameType, 1);
}

TEST_F(FrameReading, AFrameAt5Point1DegreesFromVerticalIsABrace) {
  FrameFromVertical("F", 5.1);
  EXPECT_EQ(Read("F").TrelkFrameType, 3);
}

TEST_F(FrameReading, AFrameAt85Point1DegreesFromVerticalIsABeam) {
  FrameFromVertical("F", 85.1);
  EXPECT_EQ(Read("F").TrelkFrameType, 2);
}

TEST_F(FrameReading, TheColumnBoundIsFiveDegreesWithPiTakenAs3Point14) {
  // 4.999 degrees lies within 5 true degrees, but outside the bound 15.7 / 180 radians.
  FrameFromVertical("F", 4.999);
  EXPECT_EQ(Read("F").TrelkFrameType, 3);
}

TEST_F(FrameReading, TheBeamBoundIs85DegreesWithPiTakenAs3Point14) {
  // 84.97 degrees lies within 85 true degrees of the vertical, but beyond 266.9 / 180
  // radians.
  FrameFromVertical("F", 84.97);
  FrameFromVertical("G", 84.9);
  Read();
  EXPECT_EQ(model.FrameObjGet("F")->TrelkFrameType, 2);
  EXPECT_EQ(model.FrameObjGet("G")->TrelkFrameType, 3);
}

TEST_F(FrameReading, OrientationIgnoresWhichEndIsAbove) {
  Point("Top", 0.0, 0.0, 3.0);
  Point("Far", 6.0, 0.0, 0.0);
  Frame("Down", "Top", "O");
  Frame("Diagonal", "Far", "Top");
  Read();
  EXPECT_EQ(model.FrameObjGet("Down")->TrelkFrameType, 1);
  EXPECT_EQ(model.FrameObjGet("Diagonal")->TrelkFrameType, 3);
  EXPECT_EQ(model.FrameOrientationGet(*model.FrameObjGet("Down")), 1);
  EXPECT_EQ(model.FrameOrientationGet(*model.FrameObjGet("Diagonal")), 3);
}

TEST(FrameOrientationGet, AZeroLengthFrameFailsWithAMessageNamingIt) {
  test_support::FakeHostModel host;
  VaskModelObj model(host);
  model.AddNode("A", 1.0, 2.0, 3.0, {});
  model.AddNode("B", 1.0, 2.0, 3.0, {});
  VaskFrameObj& frame = *model.AddFrame();
  frame.Label = "Stub";
  frame.LabelNodeI = "A";
  frame.LabelNodeJ = "B";
  try {
    model.FrameOrientationGet(frame);
    FAIL() << "a zero-length frame was given an orientation";
  } catch (const TransferFailure& failure) {
    const std::string message = failure.what();
    EXPECT_NE(message.find("Frame \"Stub\""), std::string::npos) << message;
    EXPECT_NE(message.find("zero length"), std::string::npos) << message;
  }
}

TEST(FrameOrientationGet, AnUnknownEndNodeFailsWithAMessageNamingFrameAndNode) {
  test_support::FakeHostModel host;
  VaskModelObj model(host);
  model.AddNode("A", 0.0, 0.0, 0.0, {});
  VaskFrameObj& frame = *model.AddFrame();
  frame.Label = "F9";
  frame.LabelNodeI = "Lost";
  frame.LabelNodeJ = "A";
  try {
    model.FrameOrientationGet(frame);
    FAIL() << "a frame with an unknown end node was given an orientation";
  } catch (const TransferFailure& failure) {
    const std::string message = failure.what();
    EXPECT_NE(message.find("F9"), std::string::npos) << message;
    EXPECT_NE(message.find("Lost"), std::string::npos) << message;
  }
}

TEST_F(FrameReading, AZeroLengthFrameEndsTheRunNamingTheFrame) {
  Point("Twin", 0.0, 0.0, 0.0);
  BeamFrame("Good");
  Frame("Stub", "O", "Twin");
  try {
    Read();
    FAIL() << "the run went on past a zero-length frame";
  } catch (const TransferFailure& failure) {
    EXPECT_NE(std::string(failure.what()).find("Frame \"Stub\""), std::string::npos)
        << failure.what();
  }
  // What was done before the failure stays.
  EXPECT_EQ(model.FrameObjGet("Good")->TrelkFrameType, 2);
}

// ---- ClassifyFrames: section and material ----

TEST_F(FrameReading, SteelChannelGetsMaterialTypeTwoAndSectionTypeThree) {
  host.sections.push_back({"C", kChannel, "Steel", 0});
  BeamFrame("F", "C");
  const VaskFrameObj& frame = Read("F");
  EXPECT_EQ(frame.TrelkMatType, 2);
  EXPECT_EQ(frame.TrelkSectType, 3);
  EXPECT_EQ(frame.TrelkConcType, 3);
  EXPECT_TRUE(host.designTypeAsked.empty());
}

TEST_F(FrameReading, SteelIShapeGetsSectionTypeTwo) {
  BeamFrame("F", "W");
  const VaskFrameObj& frame = Read("F");
  EXPECT_EQ(frame.TrelkMatType, 2);
  EXPECT_EQ(frame.TrelkSectType, 2);
}

TEST_F(FrameReading, ConcreteRectangularWithDesignTypeOneIsAConcreteColumn) {
  host.sections[1].designType = 1;
  BeamFrame("F", "R");
  const VaskFrameObj& frame = Read("F");
  EXPECT_EQ(frame.TrelkMatType, 1);
  EXPECT_EQ(frame.TrelkSectType, 1);
  EXPECT_EQ(frame.TrelkConcType, 2);
  EXPECT_EQ(host.designTypeAsked, std::vector<std::string>{"R"});
}

TEST_F(FrameReading, ConcreteRectangularWithDesignTypeTwoIsAConcreteBeam) {
  host.sections[1].designType = 2;
  BeamFrame("F", "R");
  EXPECT_EQ(Read("F").TrelkConcType, 1);
}

TEST_F(FrameReading, AnotherDesignTypeLeavesTheConcreteType) {
  host.sections[1].designType = 3;
  BeamFrame("F", "R");
  const VaskFrameObj& frame = Read("F");
  EXPECT_EQ(frame.TrelkMatType, 1);
  EXPECT_EQ(frame.TrelkConcType, 3);
  EXPECT_EQ(host.designTypeAsked, std::vector<std::string>{"R"});
}

TEST_F(FrameReading, TheDesignTypeIsAskedOnlyOfConcreteRectangularSections) {
  host.sections.push_back({"CI", kIShape, "Conc", 1});
  host.sections.push_back({"SR", kRectangular, "Steel", 1});
  BeamFrame("F1", "CI");
  BeamFrame("F2", "SR");
  Read();
  EXPECT_TRUE(host.designTypeAsked.empty());
  const VaskFrameObj& concreteI = *model.FrameObjGet("F1");
  EXPECT_EQ(concreteI.TrelkMatType, 1);
  EXPECT_EQ(concreteI.TrelkSectType, 2);
  EXPECT_EQ(concreteI.TrelkConcType, 3);
  const VaskFrameObj& steelRectangle = *model.FrameObjGet("F2");
  EXPECT_EQ(steelRectangle.TrelkMatType, 2);
  EXPECT_EQ(steelRectangle.TrelkSectType, 1);
  EXPECT_EQ(steelRectangle.TrelkConcType, 3);
}

TEST_F(FrameReading, AFrameWhoseSectionHasNoMaterialKeepsItsMaterialAndConcreteTypes) {
  host.sections.push_back({"Bare", kRectangular, "Aluminium", 1});
  BeamFrame("F", "Bare");
  const VaskFrameObj& frame = Read("F");
  EXPECT_EQ(frame.PropFrameSectObj->PropMatObj, nullptr);
  EXPECT_EQ(frame.TrelkMatType, 3);
  EXPECT_EQ(frame.TrelkConcType, 3);
  // Frame and section types are set all the same.
  EXPECT_EQ(frame.TrelkFrameType, 2);
  EXPECT_EQ(frame.TrelkSectType, 1);
  EXPECT_TRUE(host.designTypeAsked.empty());
}

TEST_F(FrameReading, ARebarMaterialIsOfOtherMaterialType) {
  host.sections.push_back({"Bar", kRectangular, "Rebar", 1});
  BeamFrame("F", "Bar");
  const VaskFrameObj& frame = Read("F");
  ASSERT_NE(frame.PropFrameSectObj->PropMatObj, nullptr);
  EXPECT_EQ(frame.TrelkMatType, 3);
  EXPECT_EQ(frame.TrelkConcType, 3);
  EXPECT_TRUE(host.designTypeAsked.empty());
}

// ---- ReadFrameHinges ----

TEST_F(FrameReading, AHingeAtRelativeDistancePoint1CountsAtI) {
  BeamFrame("F").hinges = {{6, 0.1}};
  const VaskFrameObj& frame = Read("F");
  EXPECT_TRUE(frame.HingeI);
  EXPECT_EQ(frame.HingeTypeI, 1);
  EXPECT_FALSE(frame.HingeJ);
  EXPECT_EQ(frame.HingeTypeJ, -1);
  EXPECT_TRUE(frame.IsFEMAFrame());
}

TEST_F(FrameReading, AHingeAtRelativeDistancePoint9CountsAtJ) {
  BeamFrame("F").hinges = {{8, 0.9}};
  const VaskFrameObj& frame = Read("F");
  EXPECT_FALSE(frame.HingeI);
  EXPECT_EQ(frame.HingeTypeI, -1);
  EXPECT_TRUE(frame.HingeJ);
  EXPECT_EQ(frame.HingeTypeJ, 2);
  EXPECT_TRUE(frame.IsFEMAFrame());
}

TEST_F(FrameReading, AHingeAtMidLengthIsDropped) {
  BeamFrame("F").hinges = {{6, 0.5}};
  const VaskFrameObj& frame = Read("F");
  EXPECT_FALSE(frame.HingeI);
  EXPECT_FALSE(frame.HingeJ);
  EXPECT_EQ(frame.HingeTypeI, -1);
  EXPECT_EQ(frame.HingeTypeJ, -1);
  EXPECT_FALSE(frame.IsFEMAFrame());
}

TEST_F(FrameReading, TheEndBoundsAreJustPastATenthFromEachEnd) {
  BeamFrame("PastI").hinges = {{6, 0.10001}};
  BeamFrame("AtJ").hinges = {{6, 0.89999}};
  BeamFrame("BeforeJ").hinges = {{6, 0.89998}};
  Read();
  EXPECT_FALSE(model.FrameObjGet("PastI")->IsFEMAFrame());
  EXPECT_TRUE(model.FrameObjGet("AtJ")->HingeJ);
  EXPECT_FALSE(model.FrameObjGet("AtJ")->HingeI);
  EXPECT_FALSE(model.FrameObjGet("BeforeJ")->IsFEMAFrame());
}

TEST_F(FrameReading, HingeCodesNineIsKindOneAndEightTenElevenAreKindTwo) {
  BeamFrame("Nine").hinges = {{9, 0.0}};
  BeamFrame("Eight").hinges = {{8, 0.0}};
  BeamFrame("Ten").hinges = {{10, 1.0}};
  BeamFrame("Eleven").hinges = {{11, 1.0}};
  Read();
  EXPECT_EQ(model.FrameObjGet("Nine")->HingeTypeI, 1);
  EXPECT_EQ(model.FrameObjGet("Eight")->HingeTypeI, 2);
  EXPECT_EQ(model.FrameObjGet("Ten")->HingeTypeJ, 2);
  EXPECT_EQ(model.FrameObjGet("Eleven")->HingeTypeJ, 2);
  EXPECT_TRUE(model.FrameObjGet("Ten")->HingeJ);
  EXPECT_FALSE(model.FrameObjGet("Ten")->HingeI);
}

TEST_F(FrameReading, AHingeOfAnotherCodeIsIgnored) {
  BeamFrame("Seven").hinges = {{7, 0.0}};
  BeamFrame("AfterSix").hinges = {{6, 0.0}, {7, 0.0}, {12, 1.0}};
  Read();
  const VaskFrameObj& seven = *model.FrameObjGet("Seven");
  EXPECT_FALSE(seven.HingeI);
  EXPECT_EQ(seven.HingeTypeI, -1);
  const VaskFrameObj& afterSix = *model.FrameObjGet("AfterSix");
  EXPECT_TRUE(afterSix.HingeI);
  EXPECT_EQ(afterSix.HingeTypeI, 1);
  EXPECT_FALSE(afterSix.HingeJ);
  EXPECT_EQ(afterSix.HingeTypeJ, -1);
}

TEST_F(FrameReading, ALaterHingeAtTheSameEndOverwritesTheKind) {
  BeamFrame("ToTwo").hinges = {{6, 0.0}, {10, 0.05}};
  BeamFrame("ToOne").hinges = {{11, 0.95}, {9, 1.0}};
  Read();
  EXPECT_EQ(model.FrameObjGet("ToTwo")->HingeTypeI, 2);
  EXPECT_EQ(model.FrameObjGet("ToOne")->HingeTypeJ, 1);
}

TEST_F(FrameReading, HingesAtBothEndsAreBothKept) {
  BeamFrame("F").hinges = {{6, 0.0}, {0, 0.5}, {8, 1.0}};
  const VaskFrameObj& frame = Read("F");
  EXPECT_TRUE(frame.HingeI);
  EXPECT_EQ(frame.HingeTypeI, 1);
  EXPECT_TRUE(frame.HingeJ);
  EXPECT_EQ(frame.HingeTypeJ, 2);
}

TEST_F(FrameReading, HingesAreNotReadWhenTheHostCallFails) {
  FrameHost::Frame& frame = BeamFrame("F");
  frame.hinges = {{6, 0.0}, {8, 1.0}};
  frame.hingeStatus = 1;
  EXPECT_FALSE(Read("F").IsFEMAFrame());
}

TEST_F(FrameReading, AHingeFrameTakesItsRoleFromGeometry) {
  // A hinged concrete rectangular frame designed as a column but lying flat is a beam.
  host.sections[1].designType = 1;
  BeamFrame("F", "R").hinges = {{6, 0.0}};
  const VaskFrameObj& frame = Read("F");
  EXPECT_TRUE(frame.IsFEMAFrame());
  EXPECT_EQ(frame.TrelkFrameType, 2);
  EXPECT_EQ(frame.TrelkConcType, 2);
}

}  // namespace
}  // namespace vtt
