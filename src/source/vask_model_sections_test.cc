// Reading frame and shell sections (stages 2 and 3), linking sections to materials
// (stages 16 and 17), and the layer rule that tells a fiber wall from a general wall.
#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "source/fake_host_model_test_support.h"
#include "source/vask_model.h"
#include "source/vask_section_links.h"
#include "transfer/failure.h"

namespace vtt {
namespace {

constexpr int kSteel = 1;
constexpr int kConcrete = 2;
constexpr int kRebar = 6;

constexpr int kIShape = 1;
constexpr int kRectangular = 8;
constexpr int kNonprismatic = 14;

constexpr int kLayerShell = 1;
constexpr int kLayerMembrane = 2;
constexpr int kLayerPlate = 3;
constexpr int kLinear = 1;
constexpr int kNonlinear = 2;

// ---- A host with materials and sections ----

struct HostMaterial {
  std::string name;
  int type = 0;
  double e = 0.0;
};

struct HostFrameSection {
  std::string name;
  int type = kRectangular;
  int typeStatus = 0;
  // area, As2, As3, torsion, I22, I33, S22, S33, the two plastic moduli, R22, R33.
  std::array<double, 12> constants{};
  std::string material;
  int materialStatus = 0;
  // Segments of a non-prismatic section.
  int nonprismaticStatus = 0;
  Names startSections;
  Names endSections;
};

struct HostLayer {
  std::string name;
  double distance = 0.0;
  double thickness = 0.0;
  int type = kLayerShell;
  int integrationPoints = 0;
  std::string material;
  double angle = 0.0;
  int s11 = kLinear;
  int s22 = kLinear;
  int s12 = kLinear;
};

struct HostAreaSection {
  std::string name;
  int type = 1;
  int shellType = 1;
  bool drillingDof = false;
  std::string material;
  double angle = 0.0;
  double thickness = 0.0;
  double bending = 0.0;
  int layersStatus = 0;
  std::vector<HostLayer> layers;
};

class SectionHost : public test_support::FakeHostModel {
 public:
  std::vector<HostMaterial> materials;
  std::vector<HostFrameSection> frameSections;
  // Sections the host knows by name without listing them (start sections of segments).
  std::vector<HostFrameSection> unlistedFrameSections;
  std::vector<HostAreaSection> areaSections;
  // Names passed to GetFrameSectionType and GetFrameSectionMaterial, in call order.
  Names typeCalls;
  Names materialCalls;

  int GetMaterialNameList(int typeFilter, int& count, Names& names) override {
    names.clear();
    for (const HostMaterial& m : materials) {
      if (typeFilter == 0 || m.type == typeFilter) names.push_back(m.name);
    }
    count = static_cast<int>(names.size());
    return 0;
  }
  int GetMaterialType(const std::string& name, int& type, int& symmetry) override {
    for (const HostMaterial& m : materials) {
      if (m.name == name) {
        type = m.type;
        symmetry = 0;
        return 0;
      }
    }
    return FakeHostModel::GetMaterialType(name, type, symmetry);
  }
  int GetIsotropicData(const std::string& name, double& e, double& u, double& a,
                       double& g) override {
    for (const HostMaterial& m : materials) {
      if (m.name == name) {
        e = m.e;
        u = 0.2;
        a = 0.0;
        g = m.e / 2.4;
        return 0;
      }
    }
    return FakeHostModel::GetIsotropicData(name, e, u, a, g);
  }

  int GetFrameSectionNameList(int& count, Names& names) override {
    names.clear();
    for (const HostFrameSection& s : frameSections) names.push_back(s.name);
    count = static_cast<int>(names.size());
    return 0;
  }
  int GetFrameSectionProperties(const std::string& name, double& area, double& as2, double& as3,
                                double& torsion, double& i22, double& i33, double& s22, double& s33,
                                double& z22, double& z33, double& r22, double& r33) override {
    const HostFrameSection* s = FrameSection(name);
    if (s == nullptr) {
      return FakeHostModel::GetFrameSectionProperties(name, area, as2, as3, torsion, i22, i33, s22,
                                                      s33, z22, z33, r22, r33);
    }
    const std::array<double, 12>& c = s->constants;
    area = c[0];
    as2 = c[1];
    as3 = c[2];
    torsion = c[3];
    i22 = c[4];
    i33 = c[5];
    s22 = c[6];
    s33 = c[7];
    z22 = c[8];
    z33 = c[9];
    r22 = c[10];
    r33 = c[11];
    return 0;
  }
  int GetFrameSectionType(const std::string& name, int& type) override {
    typeCalls.push_back(name);
    const HostFrameSection* s = FrameSection(name);
    if (s == nullptr) return FakeHostModel::GetFrameSectionType(name, type);
    type = s->type;
    return s->typeStatus;
  }
  int GetNonprismaticSection(const std::string& name, int& count, Names& startSections,
                             Names& endSections) override {
    const HostFrameSection* s = FrameSection(name);
    if (s == nullptr || s->nonprismaticStatus != 0) {
      return FakeHostModel::GetNonprismaticSection(name, count, startSections, endSections);
    }
    startSections = s->startSections;
    endSections = s->endSections;
    count = static_cast<int>(startSections.size());
    return 0;
  }
  int GetFrameSectionMaterial(const std::string& name, std::string& material) override {
    materialCalls.push_back(name);
    const HostFrameSection* s = FrameSection(name);
    if (s == nullptr) return FakeHostModel::GetFrameSectionMaterial(name, material);
    // A failing host may leave its answer half-written; the reader must not take it.
    material = s->material;
    return s->materialStatus;
  }

  int GetAreaSectionNameList(int& count, Names& names) override {
    names.clear();
    for (const HostAreaSection& s : areaSections) names.push_back(s.name);
    count = static_cast<int>(names.size());
    return 0;
  }
  int GetAreaSectionType(const std::string& name, int& type) override {
    const HostAreaSection* s = AreaSection(name);
    if (s == nullptr) return FakeHostModel::GetAreaSectionType(name, type);
    type = s->type;
    return 0;
  }
  int GetShellSection(const std::string& name, int& shellType, bool& drillingDof,
                      std::string& material, double& materialAngle, double& membraneThickness,
                      double& bendingThickness) override {
    const HostAreaSection* s = AreaSection(name);
    if (s == nullptr) {
      return FakeHostModel::GetShellSection(name, shellType, drillingDof, material, materialAngle,
                                            membraneThickness, bendingThickness);
    }
    shellType = s->shellType;
    drillingDof = s->drillingDof;
    material = s->material;
    materialAngle = s->angle;
    membraneThickness = s->thickness;
    bendingThickness = s->bending;
    return 0;
  }
  int GetShellLayers(const std::string& name, int& count, Names& layerNames, Reals& distances,
                     Reals& thicknesses, Ints& types, Ints& integrationPoints, Names& layerMats,
                     Reals& materialAngles, Ints& s11Types, Ints& s22Types,
                     Ints& s12Types) override {
    const HostAreaSection* s = AreaSection(name);
    if (s == nullptr || s->layersStatus != 0) {
      return FakeHostModel::GetShellLayers(name, count, layerNames, distances, thicknesses, types,
                                           integrationPoints, layerMats, materialAngles, s11Types,
                                           s22Types, s12Types);
    }
    count = static_cast<int>(s->layers.size());
    layerNames.clear();
    distances.clear();
    thicknesses.clear();
    types.clear();
    integrationPoints.clear();
    layerMats.clear();
    materialAngles.clear();
    s11Types.clear();
    s22Types.clear();
    s12Types.clear();
    for (const HostLayer& layer : s->layers) {
      layerNames.push_back(layer.name);
      distances.push_back(layer.distance);
      thicknesses.push_back(layer.thickness);
      types.push_back(layer.type);
      integrationPoints.push_back(layer.integrationPoints);
      layerMats.push_back(layer.material);
      materialAngles.push_back(layer.angle);
      s11Types.push_back(layer.s11);
      s22Types.push_back(layer.s22);
      s12Types.push_back(layer.s12);
    }
    return 0;
  }

 private:
  const HostFrameSection* FrameSection(const std::string& name) const {
    for (const HostFrameSection& s : frameSections) {
      if (s.name == name) return &s;
    }
    for (const HostFrameSection& s : unlistedFrameSections) {
      if (s.name == name) return &s;
    }
    return nullptr;
  }
  const HostAreaSection* AreaSection(const std::string& name) const {
    for (const HostAreaSection& s : areaSections) {
      if (s.name == name) return &s;
    }
    return nullptr;
  }
};

HostFrameSection Frame(std::string name, int type, std::string material) {
  HostFrameSection s;
  s.name = std::move(name);
  s.type = type;
  s.material = std::move(material);
  return s;
}

HostAreaSection ThinShell(std::string name, std::string material, double thickness,
                          double bending) {
  HostAreaSection s;
  s.name = std::move(name);
  s.shellType = 1;
  s.material = std::move(material);
  s.thickness = thickness;
  s.bending = bending;
  return s;
}

template <class T>
std::vector<T> Entries(const OneBasedList<T>& list) {
  return std::vector<T>(list.begin(), list.end());
}

// ---- Stage 2: frame sections ----

TEST(ReadPropFrameSections, KeepsTheConstantsWithTheSecondPlasticModulusAsZ22) {
  SectionHost host;
  HostFrameSection beam = Frame("B300", kIShape, "A992");
  beam.constants = {1.5, 2.5, 3.5, 4.5, 5.5, 6.5, 7.5, 8.5, 9.5, 10.5, 11.5, 12.5};
  host.frameSections = {beam};
  VaskModelObj model(host);
  model.ReadVaskData();

  ASSERT_EQ(model.PropFrameSectNum(), 1);
  const VaskPropFrameSectObj& section = *model.PropFrameSectObj(1);
  EXPECT_EQ(section.Label, "B300");
  EXPECT_EQ(section.area, 1.5);
  EXPECT_EQ(section.As2, 2.5);
  EXPECT_EQ(section.As3, 3.5);
  EXPECT_EQ(section.TorsionConst, 4.5);
  EXPECT_EQ(section.I22, 5.5);
  EXPECT_EQ(section.I33, 6.5);
  EXPECT_EQ(section.S22, 7.5);
  EXPECT_EQ(section.S33, 8.5);
  EXPECT_EQ(section.Z22, 10.5);
  EXPECT_EQ(section.Z33, 0.0);
  EXPECT_EQ(section.R22, 11.5);
  EXPECT_EQ(section.R33, 12.5);
  EXPECT_EQ(section.PropType, kIShape);
  EXPECT_EQ(section.PropMatName, "A992");
  EXPECT_EQ(section.PropMatObj, nullptr);
  EXPECT_EQ(section.id, 0);
}

TEST(ReadPropFrameSections, EverySectionHasZeroDimensionsAndZ33) {
  SectionHost host;
  for (const char* name : {"C1", "C2", "W1"}) {
    HostFrameSection s = Frame(name, kRectangular, "Conc");
    s.constants = {0.25, 0.2, 0.2, 0.01, 0.005, 0.005, 0.04, 0.04, 0.06, 0.07, 0.14, 0.15};
    host.frameSections.push_back(s);
  }
  VaskModelObj model(host);
  model.ReadVaskData();

  ASSERT_EQ(model.PropFrameSectNum(), 3);
  for (int i = 1; i <= model.PropFrameSectNum(); ++i) {
    const VaskPropFrameSectObj& section = *model.PropFrameSectObj(i);
    EXPECT_EQ(section.t2, 0.0) << section.Label;
    EXPECT_EQ(section.t3, 0.0) << section.Label;
    EXPECT_EQ(section.tf, 0.0) << section.Label;
    EXPECT_EQ(section.tw, 0.0) << section.Label;
    EXPECT_EQ(section.t2b, 0.0) << section.Label;
    EXPECT_EQ(section.tfb, 0.0) << section.Label;
    EXPECT_EQ(section.Z33, 0.0) << section.Label;
    EXPECT_EQ(section.Z22, 0.07) << section.Label;
    EXPECT_EQ(section.area, 0.25) << section.Label;
  }
}

TEST(ReadPropFrameSections, KeepsHostOrder) {
  SectionHost host;
  host.frameSections = {Frame("Z", kRectangular, "Conc"), Frame("A", kIShape, "Steel"),
                        Frame("M", 5, "Steel")};
  VaskModelObj model(host);
  model.ReadVaskData();

  ASSERT_EQ(model.PropFrameSectNum(), 3);
  EXPECT_EQ(model.PropFrameSectObj(1)->Label, "Z");
  EXPECT_EQ(model.PropFrameSectObj(2)->Label, "A");
  EXPECT_EQ(model.PropFrameSectObj(3)->Label, "M");
  EXPECT_EQ(model.PropFrameSectObj(3)->PropType, 5);
}

TEST(ReadPropFrameSections, NonprismaticSectionTakesTheMaterialOfItsFirstStartSection) {
  SectionHost host;
  HostFrameSection tapered = Frame("TAPER", kNonprismatic, "OwnMaterial");
  tapered.startSections = {"START1", "START2"};
  tapered.endSections = {"END1", "END2"};
  host.frameSections = {tapered};
  host.unlistedFrameSections = {Frame("START1", kIShape, "A36"), Frame("START2", kIShape, "A572"),
                                Frame("END1", kIShape, "A992")};
  VaskModelObj model(host);
  model.ReadVaskData();

  ASSERT_EQ(model.PropFrameSectNum(), 1);
  const VaskPropFrameSectObj& section = *model.PropFrameSectObj(1);
  EXPECT_EQ(section.PropType, kNonprismatic);
  EXPECT_EQ(section.PropMatName, "A36");
  EXPECT_EQ(host.typeCalls, (Names{"TAPER", "START1"}));
  EXPECT_EQ(host.materialCalls, (Names{"START1"}));
}

TEST(ReadPropFrameSections, NonprismaticSectionWithoutSegmentsHasNoMaterialName) {
  SectionHost host;
  HostFrameSection tapered = Frame("TAPER", kNonprismatic, "OwnMaterial");
  tapered.nonprismaticStatus = 1;
  host.frameSections = {tapered};
  VaskModelObj model(host);
  model.ReadVaskData();

  ASSERT_EQ(model.PropFrameSectNum(), 1);
  EXPECT_EQ(model.PropFrameSectObj(1)->PropMatName, "");
  EXPECT_TRUE(host.materialCalls.empty());
}

TEST(ReadPropFrameSections, FailedMaterialCallGivesTheEmptyText) {
  SectionHost host;
  HostFrameSection s = Frame("S1", kRectangular, "HalfWritten");
  s.materialStatus = 1;
  host.frameSections = {s, Frame("S2", kRectangular, "Conc")};
  VaskModelObj model(host);
  model.ReadVaskData();

  ASSERT_EQ(model.PropFrameSectNum(), 2);
  EXPECT_EQ(model.PropFrameSectObj(1)->PropMatName, "");
  EXPECT_EQ(model.PropFrameSectObj(2)->PropMatName, "Conc");
}

TEST(ReadPropFrameSections, SectionOfTypeBelowOneOrFailedTypeIsNotRead) {
  SectionHost host;
  HostFrameSection failedType = Frame("FAILED", kRectangular, "Conc");
  failedType.typeStatus = 1;
  host.frameSections = {Frame("ZERO", 0, "Conc"), Frame("NEGATIVE", -1, "Conc"), failedType,
                        Frame("KEPT", kRectangular, "Conc")};
  VaskModelObj model(host);
  model.ReadVaskData();

  ASSERT_EQ(model.PropFrameSectNum(), 1);
  EXPECT_EQ(model.PropFrameSectObj(1)->Label, "KEPT");
  // Frames are joined to their sections by this look-up, so a frame that names a skipped
  // section finds none and is not read.
  EXPECT_EQ(model.PropFrameSectObjGet("ZERO"), nullptr);
  EXPECT_EQ(model.PropFrameSectObjGet("NEGATIVE"), nullptr);
  EXPECT_EQ(model.PropFrameSectObjGet("FAILED"), nullptr);
  EXPECT_EQ(model.PropFrameSectObjGet("KEPT"), model.PropFrameSectObj(1));
}

TEST(ReadPropFrameSections, ReadSectionHasNoReleasePairs) {
  SectionHost host;
  host.frameSections = {Frame("C1", kRectangular, "Conc")};
  VaskModelObj model(host);
  model.ReadVaskData();
  model.FrameReleaseAdd();

  ASSERT_EQ(model.PropFrameSectNum(), 1);
  const VaskPropFrameSectObj& section = *model.PropFrameSectObj(1);
  EXPECT_EQ(section.ReleaseNum(), 0);
  EXPECT_EQ(section.GetIdxRelease(model.FrameReleaseObj(1), model.FrameReleaseObj(1)), -1);
  EXPECT_EQ(section.GetIdxRelease(nullptr, nullptr), -1);
}

// ---- Stage 3: shell sections ----

TEST(ReadPropAreaSections, ThinShellKeepsTheSectionData) {
  SectionHost host;
  HostAreaSection wall = ThinShell("WALL250", "C30", 0.25, 0.3);
  wall.drillingDof = true;
  wall.angle = 15.0;
  host.areaSections = {wall};
  VaskModelObj model(host);
  model.ReadVaskData();

  ASSERT_EQ(model.PropAreaSectNum(), 1);
  const VaskPropAreaSectObj& section = *model.PropAreaSectObj(1);
  EXPECT_EQ(section.Label, "WALL250");
  EXPECT_EQ(section.PropType, 1);
  EXPECT_EQ(section.ShellType, 1);
  EXPECT_TRUE(section.IncludeDrillingDOF);
  EXPECT_EQ(section.PropMat, "C30");
  EXPECT_EQ(section.MatAng, 15.0);
  EXPECT_EQ(section.Thick, 0.25);
  EXPECT_EQ(section.Bending, 0.3);
  EXPECT_EQ(section.LayerNum, 0);
  EXPECT_EQ(section.LabelMat, "");
}

TEST(ReadPropAreaSections, ThinShellThicknessBelowTheToleranceBecomesOneThousandth) {
  SectionHost host;
  host.areaSections = {ThinShell("ZERO", "C30", 0.0, 0.2),
                       ThinShell("TINY_BENDING", "C30", 0.2, 0.0000009),
                       ThinShell("NEGATIVE", "C30", -0.5, -0.5),
                       ThinShell("AT_TOLERANCE", "C30", 0.000001, 0.000001)};
  VaskModelObj model(host);
  model.ReadVaskData();

  ASSERT_EQ(model.PropAreaSectNum(), 4);
  EXPECT_EQ(model.PropAreaSectObj(1)->Thick, 0.001);
  EXPECT_EQ(model.PropAreaSectObj(1)->Bending, 0.2);
  EXPECT_EQ(model.PropAreaSectObj(2)->Thick, 0.2);
  EXPECT_EQ(model.PropAreaSectObj(2)->Bending, 0.001);
  EXPECT_EQ(model.PropAreaSectObj(3)->Thick, 0.001);
  EXPECT_EQ(model.PropAreaSectObj(3)->Bending, 0.001);
  EXPECT_EQ(model.PropAreaSectObj(4)->Thick, 0.000001);
  EXPECT_EQ(model.PropAreaSectObj(4)->Bending, 0.000001);
}

TEST(ReadPropAreaSections, LayeredShellKeepsItsLayersAndNoSectionMaterial) {
  SectionHost host;
  HostAreaSection layered;
  layered.name = "LAYERED";
  layered.shellType = 6;
  // What the host reports for the section as a whole is not kept for a layered shell.
  layered.material = "C30";
  layered.thickness = 0.3;
  layered.bending = 0.3;
  layered.drillingDof = true;
  layered.angle = 30.0;
  layered.layers = {
      {"Concrete", -0.05, 0.2, kLayerShell, 5, "C30", 0.0, kNonlinear, kNonlinear, kLinear},
      {"BarsV", 0.08, 0.0015, kLayerMembrane, 1, "A615", 90.0, kNonlinear, 0, 3},
  };
  host.areaSections = {layered};
  VaskModelObj model(host);
  model.ReadVaskData();

  ASSERT_EQ(model.PropAreaSectNum(), 1);
  const VaskPropAreaSectObj& section = *model.PropAreaSectObj(1);
  EXPECT_EQ(section.Label, "LAYERED");
  EXPECT_EQ(section.PropType, 1);
  EXPECT_EQ(section.ShellType, 6);
  EXPECT_EQ(section.PropMat, "");
  EXPECT_EQ(section.Thick, 0.0);
  EXPECT_EQ(section.Bending, 0.0);
  EXPECT_FALSE(section.IncludeDrillingDOF);
  EXPECT_EQ(section.MatAng, 0.0);
  ASSERT_EQ(section.LayerNum, 2);
  EXPECT_EQ(Entries(section.LayerNames), (std::vector<std::string>{"Concrete", "BarsV"}));
  EXPECT_EQ(Entries(section.LayerDists), (std::vector<double>{-0.05, 0.08}));
  EXPECT_EQ(Entries(section.LayerThick), (std::vector<double>{0.2, 0.0015}));
  EXPECT_EQ(Entries(section.LayerType), (std::vector<int>{kLayerShell, kLayerMembrane}));
  EXPECT_EQ(Entries(section.LayerNumIntPts), (std::vector<int>{5, 1}));
  EXPECT_EQ(Entries(section.LayerMatProp), (std::vector<std::string>{"C30", "A615"}));
  EXPECT_EQ(Entries(section.LayerMatAng), (std::vector<double>{0.0, 90.0}));
  EXPECT_EQ(Entries(section.LayerS11Type), (std::vector<int>{kNonlinear, kNonlinear}));
  EXPECT_EQ(Entries(section.LayerS22Type), (std::vector<int>{kNonlinear, 0}));
  EXPECT_EQ(Entries(section.LayerS12Type), (std::vector<int>{kLinear, 3}));
}

TEST(ReadPropAreaSections, LayeredShellWhoseLayersFailHasNone) {
  SectionHost host;
  HostAreaSection layered;
  layered.name = "LAYERED";
  layered.shellType = 6;
  layered.layersStatus = 1;
  layered.layers = {
      {"Concrete", 0.0, 0.2, kLayerShell, 5, "C30", 0.0, kNonlinear, kNonlinear, kLinear}};
  host.areaSections = {layered};
  VaskModelObj model(host);
  model.ReadVaskData();

  ASSERT_EQ(model.PropAreaSectNum(), 1);
  const VaskPropAreaSectObj& section = *model.PropAreaSectObj(1);
  EXPECT_EQ(section.LayerNum, 0);
  EXPECT_EQ(section.LayerNames.Num(), 0);
  EXPECT_EQ(section.LayerS12Type.Num(), 0);
}

TEST(ReadPropAreaSections, OnlyShellSectionsOfShellTypeOneOrSixAreRead) {
  SectionHost host;
  HostAreaSection plank = ThinShell("PLANK", "C30", 0.2, 0.2);
  plank.type = 2;
  HostAreaSection unknown = ThinShell("UNKNOWN", "C30", 0.2, 0.2);
  unknown.type = 0;
  host.areaSections = {plank, unknown};
  for (int shellType : {0, 2, 3, 4, 5, 7}) {
    HostAreaSection other = ThinShell("SHELL" + std::to_string(shellType), "C30", 0.2, 0.2);
    other.shellType = shellType;
    host.areaSections.push_back(other);
  }
  HostAreaSection layered;
  layered.name = "LAYERED";
  layered.shellType = 6;
  host.areaSections.push_back(layered);
  host.areaSections.push_back(ThinShell("THIN", "C30", 0.2, 0.2));
  VaskModelObj model(host);
  model.ReadVaskData();

  ASSERT_EQ(model.PropAreaSectNum(), 2);
  EXPECT_EQ(model.PropAreaSectObj(1)->Label, "LAYERED");
  EXPECT_EQ(model.PropAreaSectObj(2)->Label, "THIN");
}

// ---- Stage 16: frame and embedded sections to materials ----

VaskPropMaterialObj* AddMaterial(VaskModelObj& model, const std::string& label, int type,
                                 double e) {
  VaskPropMaterialObj* material = model.AddPropMaterial();
  material->Label = label;
  material->MatType = type;
  material->SymType = 0;
  material->IsoE = e;
  return material;
}

VaskPropFrameSectObj* AddFrameSection(VaskModelObj& model, const std::string& label,
                                      const std::string& material) {
  VaskPropFrameSectObj* section = model.AddPropFrameSect();
  section->Label = label;
  section->PropMatName = material;
  return section;
}

VaskPropFrameSectObj* AddEmbeddedSection(VaskModelObj& model, const std::string& label,
                                         const std::string& material) {
  VaskPropFrameSectObj* section = model.AddPropEmbedFrameSect();
  section->Label = label;
  section->PropMatName = material;
  return section;
}

TEST(LinkFrameSectionMaterials, FrameSectionsIgnoreCaseWhileEmbeddedSectionsCompareExactly) {
  test_support::FakeHostModel host;
  VaskModelObj model(host);
  VaskPropMaterialObj* concrete = AddMaterial(model, "Concrete", kConcrete, 25000.0);
  VaskPropFrameSectObj* upper = AddFrameSection(model, "C1", "CONCRETE");
  VaskPropFrameSectObj* lower = AddFrameSection(model, "C2", "concrete");
  VaskPropFrameSectObj* same = AddFrameSection(model, "C3", "Concrete");
  VaskPropFrameSectObj* other = AddFrameSection(model, "C4", "Concrete ");
  VaskPropFrameSectObj* embeddedUpper = AddEmbeddedSection(model, "1", "CONCRETE");
  VaskPropFrameSectObj* embeddedSame = AddEmbeddedSection(model, "2", "Concrete");

  LinkFrameSectionsToMaterials(model);

  EXPECT_EQ(upper->PropMatObj, concrete);
  EXPECT_EQ(lower->PropMatObj, concrete);
  EXPECT_EQ(same->PropMatObj, concrete);
  EXPECT_EQ(other->PropMatObj, nullptr);
  EXPECT_EQ(embeddedUpper->PropMatObj, nullptr);
  EXPECT_EQ(embeddedSame->PropMatObj, concrete);
}

TEST(LinkFrameSectionMaterials, TheLastMatchingMaterialWins) {
  test_support::FakeHostModel host;
  VaskModelObj model(host);
  AddMaterial(model, "C30", kConcrete, 25000.0);
  VaskPropMaterialObj* lowerCase = AddMaterial(model, "c30", kConcrete, 26000.0);
  VaskPropMaterialObj* last = AddMaterial(model, "C30", kConcrete, 27000.0);
  AddMaterial(model, "C35", kConcrete, 28000.0);
  VaskPropFrameSectObj* exact = AddFrameSection(model, "B1", "C30");
  VaskPropFrameSectObj* folded = AddFrameSection(model, "B2", "c30");
  VaskPropFrameSectObj* embeddedExact = AddEmbeddedSection(model, "1", "C30");
  VaskPropFrameSectObj* embeddedLower = AddEmbeddedSection(model, "2", "c30");

  LinkFrameSectionsToMaterials(model);

  // Every one of the three matches a frame section's name without regard to case.
  EXPECT_EQ(exact->PropMatObj, last);
  EXPECT_EQ(folded->PropMatObj, last);
  EXPECT_EQ(embeddedExact->PropMatObj, last);
  EXPECT_EQ(embeddedLower->PropMatObj, lowerCase);
  // The look-up by label of the model answers the first, unlike the link.
  EXPECT_EQ(model.PropMaterialObjGet("C30"), model.PropMatObj(1));
}

TEST(LinkFrameSectionMaterials, SectionWithoutAMatchKeepsItsMaterial) {
  test_support::FakeHostModel host;
  VaskModelObj model(host);
  VaskPropMaterialObj* concrete = AddMaterial(model, "Conc", kConcrete, 25000.0);
  VaskPropFrameSectObj* unknown = AddFrameSection(model, "B1", "Aluminium");
  VaskPropFrameSectObj* embedded = AddEmbeddedSection(model, "1", "CONC");
  embedded->PropMatObj = concrete;

  LinkFrameSectionsToMaterials(model);

  EXPECT_EQ(unknown->PropMatObj, nullptr);
  EXPECT_EQ(embedded->PropMatObj, concrete);
}

TEST(LinkFrameSectionMaterials, CaseFoldingIsAsciiOnly) {
  test_support::FakeHostModel host;
  VaskModelObj model(host);
  VaskPropMaterialObj* beton = AddMaterial(model, "B\xC3\x89TON", kConcrete, 25000.0);
  VaskPropFrameSectObj* asciiDiffers = AddFrameSection(model, "B1", "b\xC3\x89ton");
  VaskPropFrameSectObj* accentDiffers = AddFrameSection(model, "B2", "B\xC3\xA9TON");

  LinkFrameSectionsToMaterials(model);

  EXPECT_EQ(asciiDiffers->PropMatObj, beton);
  EXPECT_EQ(accentDiffers->PropMatObj, nullptr);
}

TEST(SectionMaterialText, AsciiLowerFoldsOnlyAsciiCapitals) {
  EXPECT_EQ(AsciiLower("AZaz09 @[`{-"), "azaz09 @[`{-");
  EXPECT_EQ(AsciiLower("\xC3\x89T\xC3\xA9"), "\xC3\x89t\xC3\xA9");
  EXPECT_TRUE(EqualsIgnoringAsciiCase("Rebar", "rEBAR"));
  EXPECT_FALSE(EqualsIgnoringAsciiCase("Rebar", "Rebars"));
  EXPECT_FALSE(EqualsIgnoringAsciiCase("@", "`"));
  EXPECT_FALSE(EqualsIgnoringAsciiCase("[", "{"));
  EXPECT_TRUE(EqualsIgnoringAsciiCase("", ""));
}

// A model of random labels drawn from few letters, so that exact, case-only and missing
// matches, and equal labels, all occur. Both models of one seed are alike.
void FillRandomLinkModel(VaskModelObj& model, unsigned seed) {
  std::mt19937 random(seed);
  const std::array<std::string, 6> pieces = {"a", "A", "b", "B", "\xC3\xA9", "\xC3\x89"};
  const auto label = [&] {
    std::string text;
    const int length = std::uniform_int_distribution<int>(0, 2)(random);
    for (int i = 0; i < length; ++i) {
      text += pieces[std::uniform_int_distribution<std::size_t>(0, pieces.size() - 1)(random)];
    }
    return text;
  };
  const int materials = std::uniform_int_distribution<int>(0, 30)(random);
  for (int i = 0; i < materials; ++i) AddMaterial(model, label(), kConcrete, 1.0 + i);
  for (int i = 0; i < 60; ++i) AddFrameSection(model, std::to_string(i), label());
  for (int i = 0; i < 60; ++i) {
    VaskPropFrameSectObj* section = AddEmbeddedSection(model, std::to_string(i), label());
    const int preset = std::uniform_int_distribution<int>(0, materials)(random);
    if (preset > 0) section->PropMatObj = model.PropMatObj(preset);
  }
}

// The position of a section's material in the model's list, 0 for none.
int MaterialPosition(const VaskModelObj& model, const VaskPropFrameSectObj& section) {
  for (int i = 1; i <= model.PropMatNum(); ++i) {
    if (model.PropMatObj(i) == section.PropMatObj) return i;
  }
  return 0;
}

bool HasNoMaterialLabelled(const VaskModelObj& model, const std::string& label) {
  for (int i = 1; i <= model.PropMatNum(); ++i) {
    if (model.PropMatObj(i)->Label == label) return false;
  }
  return true;
}

TEST(LinkFrameSectionMaterials, IndexAgreesWithTheNestedLoops) {
  int caseOnlyLinks = 0;
  int embeddedKept = 0;
  for (unsigned seed = 1; seed <= 40; ++seed) {
    test_support::FakeHostModel host;
    VaskModelObj literal(host);
    VaskModelObj indexed(host);
    FillRandomLinkModel(literal, seed);
    FillRandomLinkModel(indexed, seed);
    std::vector<int> before;
    for (int i = 1; i <= literal.PropEmbedFrameSectNum(); ++i) {
      before.push_back(MaterialPosition(literal, *literal.PropEmbedFrameSectObj(i)));
    }

    LinkFrameSectionsToMaterialsLiteral(literal);
    LinkFrameSectionsToMaterials(indexed);

    ASSERT_EQ(literal.PropFrameSectNum(), indexed.PropFrameSectNum());
    for (int i = 1; i <= literal.PropFrameSectNum(); ++i) {
      const int position = MaterialPosition(literal, *literal.PropFrameSectObj(i));
      EXPECT_EQ(position, MaterialPosition(indexed, *indexed.PropFrameSectObj(i)))
          << "seed " << seed << " frame section " << i;
      if (position > 0 &&
          literal.PropMatObj(position)->Label != literal.PropFrameSectObj(i)->PropMatName) {
        ++caseOnlyLinks;
      }
    }
    ASSERT_EQ(literal.PropEmbedFrameSectNum(), indexed.PropEmbedFrameSectNum());
    for (int i = 1; i <= literal.PropEmbedFrameSectNum(); ++i) {
      const VaskPropFrameSectObj& section = *literal.PropEmbedFrameSectObj(i);
      const int position = MaterialPosition(literal, section);
      EXPECT_EQ(position, MaterialPosition(indexed, *indexed.PropEmbedFrameSectObj(i)))
          << "seed " << seed << " embedded section " << i;
      if (HasNoMaterialLabelled(literal, section.PropMatName) && position > 0) {
        EXPECT_EQ(position, before[static_cast<std::size_t>(i - 1)]);
        ++embeddedKept;
      }
    }
  }
  // The random models do exercise case-only matches and kept links.
  EXPECT_GT(caseOnlyLinks, 0);
  EXPECT_GT(embeddedKept, 0);
}

// ---- Stage 17: area sections to materials ----

VaskPropAreaSectObj* AddAreaSection(VaskModelObj& model, const std::string& label,
                                    const std::string& material, int shellType = 1,
                                    int propType = 1) {
  VaskPropAreaSectObj* section = model.AddPropAreaSect();
  section->Label = label;
  section->PropMat = material;
  section->ShellType = shellType;
  section->PropType = propType;
  return section;
}

struct Layer {
  std::string material;
  double thickness = 0.0;
  int type = kLayerShell;
  double angle = 0.0;
  int s11 = kLinear;
  int s22 = kLinear;
};

VaskPropAreaSectObj* AddLayeredSection(VaskModelObj& model, const std::string& label,
                                       const std::vector<Layer>& layers) {
  VaskPropAreaSectObj* section = AddAreaSection(model, label, "", 6, 1);
  section->LayerNum = static_cast<int>(layers.size());
  section->RedimLayer();
  for (int i = 1; i <= section->LayerNum; ++i) {
    const Layer& layer = layers[static_cast<std::size_t>(i - 1)];
    section->LayerNames(i) = "L" + std::to_string(i);
    section->LayerThick(i) = layer.thickness;
    section->LayerType(i) = layer.type;
    section->LayerMatProp(i) = layer.material;
    section->LayerMatAng(i) = layer.angle;
    section->LayerS11Type(i) = layer.s11;
    section->LayerS22Type(i) = layer.s22;
  }
  return section;
}

TEST(LinkAreaSectionMaterials, ComparesExactlyAndTheLastMatchWins) {
  test_support::FakeHostModel host;
  VaskModelObj model(host);
  AddMaterial(model, "C30", kConcrete, 25000.0);
  VaskPropMaterialObj* second = AddMaterial(model, "C30", kConcrete, 26000.0);
  VaskPropMaterialObj* lower = AddMaterial(model, "c30", kConcrete, 27000.0);
  VaskPropAreaSectObj* exact = AddAreaSection(model, "W1", "C30");
  VaskPropAreaSectObj* lowerName = AddAreaSection(model, "W2", "c30");
  VaskPropAreaSectObj* upperName = AddAreaSection(model, "W3", "C30 ");
  VaskPropAreaSectObj* kept = AddAreaSection(model, "W4", "Unknown");
  kept->PropMatObj = lower;

  LinkAreaSectionsToMaterials(model);

  EXPECT_EQ(exact->PropMatObj, second);
  EXPECT_EQ(lowerName->PropMatObj, lower);
  EXPECT_EQ(upperName->PropMatObj, nullptr);
  EXPECT_EQ(kept->PropMatObj, lower);
  // Thin shells are not classified: their sums stay as read.
  EXPECT_EQ(exact->LayerTrelkType, 0);
  EXPECT_EQ(exact->LayerTrelkThick, 0.0);
}

TEST(LinkAreaSectionMaterials, ClassifiesLayeredShellsOnly) {
  test_support::FakeHostModel host;
  VaskModelObj model(host);
  AddMaterial(model, "Conc", kConcrete, 25000.0);
  AddMaterial(model, "Rebar", kRebar, 200000.0);
  const std::vector<Layer> wall = {{"Conc", 0.2, kLayerShell, 0.0, kLinear, kNonlinear},
                                   {"Rebar", 0.002, kLayerMembrane, 90.0}};
  VaskPropAreaSectObj* layered = AddLayeredSection(model, "LAYERED", wall);
  VaskPropAreaSectObj* notShell = AddLayeredSection(model, "NOT_SHELL", wall);
  notShell->PropType = 2;
  VaskPropAreaSectObj* thin = AddLayeredSection(model, "THIN", wall);
  thin->ShellType = 1;

  LinkAreaSectionsToMaterials(model);

  EXPECT_EQ(layered->LayerTrelkType, 1);
  EXPECT_EQ(layered->LayerTrelkThick, 0.2);
  EXPECT_EQ(layered->LayerTrelkThickRebarV, 0.002);
  EXPECT_EQ(notShell->LayerTrelkType, 0);
  EXPECT_EQ(notShell->LayerTrelkThick, 0.0);
  EXPECT_EQ(notShell->LayerTrelkThickBend, 0.0);
  EXPECT_EQ(thin->LayerTrelkType, 0);
  EXPECT_EQ(thin->LayerTrelkThick, 0.0);
}

TEST(SectionMaterialLinks, ReadVaskDataLinksSectionsToTheMaterialsItRead) {
  SectionHost host;
  host.materials = {{"Conc", kConcrete, 25000.0},
                    {"A615", kRebar, 200000.0},
                    {"A992", kSteel, 200000.0},
                    {"CONC", kConcrete, 30000.0}};
  host.frameSections = {Frame("COLUMN", kRectangular, "conc"), Frame("BEAM", kIShape, "A992")};
  HostAreaSection layered;
  layered.name = "WALL";
  layered.shellType = 6;
  layered.layers = {
      {"Concrete", 0.0, 0.25, kLayerShell, 5, "Conc", 90.0, kNonlinear, kLinear, kLinear},
      {"BarsV", 0.1, 0.0025, kLayerMembrane, 1, "A615", -90.0, kNonlinear, 0, 0},
      {"BarsH", 0.1, 0.0015, kLayerMembrane, 1, "A615", 0.0, kNonlinear, 0, 0},
  };
  host.areaSections = {ThinShell("SLAB", "CONC", 0.2, 0.2), layered};
  VaskModelObj model(host);
  model.ReadVaskData();

  ASSERT_EQ(model.PropMatNum(), 4);
  ASSERT_EQ(model.PropFrameSectNum(), 2);
  // "conc" matches both concretes without regard to case; the later one is taken.
  EXPECT_EQ(model.PropFrameSectObj(1)->PropMatObj, model.PropMatObj(4));
  EXPECT_EQ(model.PropFrameSectObj(2)->PropMatObj, model.PropMatObj(3));
  ASSERT_EQ(model.PropAreaSectNum(), 2);
  EXPECT_EQ(model.PropAreaSectObj(1)->PropMatObj, model.PropMatObj(4));
  const VaskPropAreaSectObj& wall = *model.PropAreaSectObj(2);
  EXPECT_EQ(wall.PropMatObj, nullptr);
  EXPECT_EQ(wall.LayerTrelkType, 1);
  EXPECT_EQ(wall.LayerPropMatConcObj, model.PropMatObj(1));
  EXPECT_EQ(wall.LayerPropMatRebarObj, model.PropMatObj(2));
  EXPECT_EQ(wall.LayerTrelkThick, 0.25);
  EXPECT_EQ(wall.LayerTrelkThickBend, 0.25);
  EXPECT_EQ(wall.LayerTrelkThickRebarV, 0.0025);
  EXPECT_EQ(wall.LayerTrelkThickRebarH, 0.0015);
}

// ---- The layer rule ----

// A model with one material of each kind and a second concrete of another modulus.
class LayerTrelkTypeTest : public ::testing::Test {
 protected:
  LayerTrelkTypeTest() : model_(host_) {
    conc_ = AddMaterial(model_, "Conc", kConcrete, 25000.0);
    conc2_ = AddMaterial(model_, "Conc2", kConcrete, 30000.0);
    rebar_ = AddMaterial(model_, "Rebar", kRebar, 200000.0);
    steel_ = AddMaterial(model_, "Steel", kSteel, 210000.0);
  }

  VaskPropAreaSectObj& Classify(const std::vector<Layer>& layers) {
    VaskPropAreaSectObj& section = *AddLayeredSection(model_, "S", layers);
    GenerateLayerTrelkType(model_, section);
    return section;
  }

  test_support::FakeHostModel host_;
  VaskModelObj model_;
  VaskPropMaterialObj* conc_ = nullptr;
  VaskPropMaterialObj* conc2_ = nullptr;
  VaskPropMaterialObj* rebar_ = nullptr;
  VaskPropMaterialObj* steel_ = nullptr;
};

TEST_F(LayerTrelkTypeTest, ConcreteAtZeroWithS22NonlinearIsAFiberWallWithItsSums) {
  const VaskPropAreaSectObj& s = Classify({
      {"Conc", 0.2, kLayerShell, 0.0, kLinear, kNonlinear},
      {"Conc", 0.05, kLayerPlate, 0.0, kLinear, kNonlinear},
      {"Conc2", 0.1, kLayerMembrane, 0.0, kLinear, kLinear},
      {"Rebar", 0.002, kLayerMembrane, 90.0},
      {"Rebar", 0.003, kLayerShell, 0.0},
      {"Rebar", 0.004, kLayerShell, 45.0},
      {"Rebar", 0.005, kLayerPlate, 90.0},
      {"Unknown", 1.0, kLayerShell, 90.0},
      {"Steel", 0.5, kLayerShell, 90.0},
  });
  EXPECT_EQ(s.LayerTrelkType, 1);
  EXPECT_EQ(s.LayerPropMatConcObj, conc_);
  EXPECT_EQ(s.LayerPropMatRebarObj, rebar_);
  EXPECT_EQ(s.LayerPropMatObj, nullptr);
  // Concrete shell and membrane layers; concrete shell and plate layers for bending.
  EXPECT_DOUBLE_EQ(s.LayerTrelkThick, 0.3);
  EXPECT_DOUBLE_EQ(s.LayerTrelkThickBend, 0.25);
  // Rebar in shell or membrane layers, by direction; the one at 45 counts in neither.
  EXPECT_EQ(s.LayerTrelkThickRebarV, 0.002);
  EXPECT_EQ(s.LayerTrelkThickRebarH, 0.003);
}

TEST_F(LayerTrelkTypeTest, ConcreteAtNinetyWithS11NonlinearIsAFiberWall) {
  const VaskPropAreaSectObj& s = Classify(
      {{"Rebar", 0.001, kLayerMembrane, 0.0}, {"Conc2", 0.3, kLayerMembrane, 90.0, kNonlinear}});
  EXPECT_EQ(s.LayerTrelkType, 1);
  EXPECT_EQ(s.LayerPropMatConcObj, conc2_);
  EXPECT_EQ(s.LayerTrelkThick, 0.3);
  EXPECT_EQ(s.LayerTrelkThickBend, 0.001);  // a membrane layer has no bending: the floor
  EXPECT_EQ(s.LayerTrelkThickRebarV, 0.001);
  EXPECT_EQ(s.LayerTrelkThickRebarH, 0.001);
}

TEST_F(LayerTrelkTypeTest, ConcreteAtZeroWithS11NonlinearIsAHorizontalGeneralWall) {
  const VaskPropAreaSectObj& s = Classify({{"Conc", 0.24, kLayerShell, 0.0, kNonlinear},
                                           {"Rebar", 0.0012, kLayerMembrane, 0.0},
                                           {"Rebar", 0.0018, kLayerMembrane, 90.0}});
  EXPECT_EQ(s.LayerTrelkType, 2);
  EXPECT_EQ(s.LayerPropMatConcObj, conc_);
  EXPECT_EQ(s.LayerPropMatRebarObj, rebar_);
  EXPECT_EQ(s.LayerTrelkThick, 0.24);
  EXPECT_EQ(s.LayerTrelkThickBend, 0.24);
  EXPECT_EQ(s.LayerTrelkThickRebarH, 0.0012);
  EXPECT_EQ(s.LayerTrelkThickRebarV, 0.0018);
}

TEST_F(LayerTrelkTypeTest, ConcreteAtNinetyWithS22NonlinearIsAHorizontalGeneralWall) {
  const VaskPropAreaSectObj& s = Classify({{"Conc", 0.24, kLayerShell, 90.0, kLinear, kNonlinear},
                                           {"Rebar", 0.0012, kLayerShell, 0.0}});
  EXPECT_EQ(s.LayerTrelkType, 2);
  EXPECT_EQ(s.LayerTrelkThick, 0.24);
  EXPECT_EQ(s.LayerTrelkThickRebarH, 0.0012);
}

TEST_F(LayerTrelkTypeTest, ConcreteWithBothNonlinearAtNinetyIsAGeneralWallInBothDirections) {
  const VaskPropAreaSectObj& s =
      Classify({{"Conc", 0.15, kLayerMembrane, 90.0, kNonlinear, kNonlinear},
                {"Conc2", 0.1, kLayerShell, 0.0, kLinear, kNonlinear},
                {"Rebar", 0.0025, kLayerMembrane, 90.0},
                {"Rebar", 0.0015, kLayerMembrane, 0.0}});
  EXPECT_EQ(s.LayerTrelkType, 3);
  EXPECT_EQ(s.LayerPropMatConcObj, conc_);
  EXPECT_DOUBLE_EQ(s.LayerTrelkThick, 0.25);
  EXPECT_EQ(s.LayerTrelkThickBend, 0.1);
  EXPECT_EQ(s.LayerTrelkThickRebarV, 0.0025);
  EXPECT_EQ(s.LayerTrelkThickRebarH, 0.0015);
}

TEST_F(LayerTrelkTypeTest, LayerAt45WithBothNonlinearMatchesNoRuleAndTheNextIsTried) {
  const VaskPropAreaSectObj& s = Classify({{"Conc", 0.1, kLayerShell, 45.0, kNonlinear, kNonlinear},
                                           {"Conc2", 0.2, kLayerShell, 0.0, kLinear, kNonlinear},
                                           {"Rebar", 0.002, kLayerMembrane, 90.0}});
  EXPECT_EQ(s.LayerTrelkType, 1);
  EXPECT_EQ(s.LayerPropMatConcObj, conc2_);
  EXPECT_DOUBLE_EQ(s.LayerTrelkThick, 0.3);
}

TEST_F(LayerTrelkTypeTest, ConcreteAtFiveHundredthsOfADegreeCountsAsNearZero) {
  const VaskPropAreaSectObj& s = Classify({{"Conc", 0.2, kLayerShell, 0.05, kLinear, kNonlinear},
                                           {"Rebar", 0.002, kLayerMembrane, 90.0}});
  EXPECT_EQ(s.LayerTrelkType, 1);
  EXPECT_EQ(s.LayerPropMatConcObj, conc_);
}

TEST_F(LayerTrelkTypeTest, ConcreteAtATenthOfADegreeIsNotNearZero) {
  const VaskPropAreaSectObj& s = Classify({{"Conc", 0.2, kLayerShell, 0.1, kLinear, kNonlinear},
                                           {"Rebar", 0.002, kLayerMembrane, 90.0}});
  EXPECT_EQ(s.LayerTrelkType, 0);
  EXPECT_EQ(s.LayerPropMatConcObj, nullptr);
}

TEST_F(LayerTrelkTypeTest, RebarAt87CountsAsVerticalThoughConcreteAt87IsNotNearNinety) {
  const VaskPropAreaSectObj& wall = Classify({{"Conc", 0.2, kLayerShell, 0.0, kLinear, kNonlinear},
                                              {"Rebar", 0.002, kLayerMembrane, 87.0}});
  EXPECT_EQ(wall.LayerTrelkType, 1);
  EXPECT_EQ(wall.LayerTrelkThickRebarV, 0.002);
  EXPECT_EQ(wall.LayerTrelkThickRebarH, 0.001);

  const VaskPropAreaSectObj& tilted =
      Classify({{"Conc", 0.2, kLayerShell, 87.0, kNonlinear, kLinear},
                {"Rebar", 0.002, kLayerMembrane, 87.0}});
  EXPECT_EQ(tilted.LayerTrelkType, 0);
  EXPECT_EQ(tilted.LayerPropMatConcObj, nullptr);
}

TEST_F(LayerTrelkTypeTest, RebarAtMinusNinetyCountsAsVertical) {
  const VaskPropAreaSectObj& s = Classify({{"Conc", 0.2, kLayerShell, 0.0, kLinear, kNonlinear},
                                           {"Rebar", 0.002, kLayerMembrane, -90.0},
                                           {"Rebar", 0.001, kLayerMembrane, -3.0}});
  EXPECT_EQ(s.LayerTrelkType, 1);
  EXPECT_EQ(s.LayerTrelkThickRebarV, 0.002);
  EXPECT_EQ(s.LayerTrelkThickRebarH, 0.001);
}

TEST_F(LayerTrelkTypeTest, PlateLayersOnlyLeaveTheConcreteCountAtZero) {
  const VaskPropAreaSectObj& s = Classify({{"Conc", 0.2, kLayerPlate, 0.0, kNonlinear, kNonlinear},
                                           {"Rebar", 0.001, kLayerShell, 90.0}});
  // No structural concrete layer: no classification, and no rebar layer is chosen.
  EXPECT_EQ(s.LayerTrelkType, 0);
  EXPECT_EQ(s.LayerPropMatConcObj, nullptr);
  EXPECT_EQ(s.LayerPropMatRebarObj, nullptr);
  EXPECT_EQ(s.LayerPropMatObj, conc_);
  // 0.2 + 0.001 x 200000 / 25000
  EXPECT_DOUBLE_EQ(s.LayerTrelkThick, 0.208);
}

TEST_F(LayerTrelkTypeTest, WithoutARuleTheThicknessIsTransformedToTheFirstLayerMaterial) {
  const VaskPropAreaSectObj& s = Classify(
      {{"Unknown", 5.0, kLayerShell}, {"Conc", 0.2, kLayerShell}, {"Conc2", 0.1, kLayerPlate}});
  EXPECT_EQ(s.LayerTrelkType, 0);
  EXPECT_EQ(s.LayerPropMatObj, conc_);
  EXPECT_EQ(s.LayerPropMatConcObj, nullptr);
  EXPECT_EQ(s.LayerPropMatRebarObj, nullptr);
  // 0.2 + 0.1 x 30000 / 25000
  EXPECT_DOUBLE_EQ(s.LayerTrelkThick, 0.32);
  EXPECT_EQ(s.LayerTrelkThickBend, 0.001);
  EXPECT_EQ(s.LayerTrelkThickRebarV, 0.001);
  EXPECT_EQ(s.LayerTrelkThickRebarH, 0.001);
}

TEST_F(LayerTrelkTypeTest, TransformationTakesTheFirstSteelOrConcreteLayerWhateverItsType) {
  const VaskPropAreaSectObj& s = Classify({{"Rebar", 0.004, kLayerMembrane, 90.0},
                                           {"Steel", 0.01, kLayerPlate},
                                           {"Conc", 0.21, kLayerShell}});
  EXPECT_EQ(s.LayerTrelkType, 0);
  EXPECT_EQ(s.LayerPropMatObj, steel_);
  // 0.004 x 200000 / 210000 + 0.01 + 0.21 x 25000 / 210000
  EXPECT_DOUBLE_EQ(s.LayerTrelkThick,
                   0.004 * 200000.0 / 210000.0 + 0.01 + 0.21 * 25000.0 / 210000.0);
}

TEST_F(LayerTrelkTypeTest, ConcreteAndRebarWithoutARuleStillChooseTheRebar) {
  const VaskPropAreaSectObj& s = Classify({{"Conc", 0.2, kLayerShell, 30.0, kNonlinear},
                                           {"Rebar", 0.002, kLayerMembrane, 90.0},
                                           {"Rebar", 0.003, kLayerMembrane, 0.0}});
  EXPECT_EQ(s.LayerTrelkType, 0);
  EXPECT_EQ(s.LayerPropMatConcObj, nullptr);
  EXPECT_EQ(s.LayerPropMatRebarObj, rebar_);
  EXPECT_EQ(s.LayerPropMatObj, conc_);
  // 0.2 + 0.002 x 8 + 0.003 x 8
  EXPECT_DOUBLE_EQ(s.LayerTrelkThick, 0.24);
  EXPECT_EQ(s.LayerTrelkThickRebarV, 0.001);
}

TEST_F(LayerTrelkTypeTest, NoSteelOrConcreteLayerGivesMinusOneAndTheFloors) {
  const VaskPropAreaSectObj& rebarOnly =
      Classify({{"Rebar", 0.002, kLayerMembrane, 90.0}, {"Unknown", 0.3, kLayerShell}});
  EXPECT_EQ(rebarOnly.LayerTrelkType, -1);
  EXPECT_EQ(rebarOnly.LayerPropMatObj, nullptr);
  EXPECT_EQ(rebarOnly.LayerTrelkThick, 0.001);
  EXPECT_EQ(rebarOnly.LayerTrelkThickBend, 0.001);
  EXPECT_EQ(rebarOnly.LayerTrelkThickRebarV, 0.001);
  EXPECT_EQ(rebarOnly.LayerTrelkThickRebarH, 0.001);

  const VaskPropAreaSectObj& empty = Classify({});
  EXPECT_EQ(empty.LayerTrelkType, -1);
  EXPECT_EQ(empty.LayerTrelkThick, 0.001);
}

TEST_F(LayerTrelkTypeTest, ZeroConcreteThicknessGetsTheFloor) {
  const VaskPropAreaSectObj& s = Classify({{"Conc", 0.0, kLayerShell, 0.0, kLinear, kNonlinear},
                                           {"Rebar", 0.0000005, kLayerMembrane, 90.0}});
  EXPECT_EQ(s.LayerTrelkType, 1);
  EXPECT_EQ(s.LayerTrelkThick, 0.001);
  EXPECT_EQ(s.LayerTrelkThickBend, 0.001);
  EXPECT_EQ(s.LayerTrelkThickRebarV, 0.001);
}

TEST_F(LayerTrelkTypeTest, LayerMaterialIsTheFirstMaterialOfItsLabel) {
  // The first "Dup" is concrete, the second rebar: the layer is concrete.
  VaskPropMaterialObj* dup = AddMaterial(model_, "Dup", kConcrete, 25000.0);
  AddMaterial(model_, "Dup", kRebar, 200000.0);
  const VaskPropAreaSectObj& s = Classify({{"Dup", 0.2, kLayerShell, 0.0, kLinear, kNonlinear},
                                           {"Rebar", 0.002, kLayerMembrane, 90.0}});
  EXPECT_EQ(s.LayerTrelkType, 1);
  EXPECT_EQ(s.LayerPropMatConcObj, dup);
}

TEST_F(LayerTrelkTypeTest, ModulusOfZeroInTheTransformationEndsTheTransfer) {
  AddMaterial(model_, "Soft", kConcrete, 0.0);
  VaskPropAreaSectObj& section =
      *AddLayeredSection(model_, "SOFT_WALL", {{"Soft", 0.2, kLayerShell}, {"Conc", 0.1}});
  try {
    GenerateLayerTrelkType(model_, section);
    FAIL() << "expected a TransferFailure";
  } catch (const TransferFailure& failure) {
    const std::string message = failure.what();
    EXPECT_NE(message.find("SOFT_WALL"), std::string::npos) << message;
    EXPECT_NE(message.find("Soft"), std::string::npos) << message;
  }
}

}  // namespace
}  // namespace vtt
