// Reading the host's materials: the default materials made when a kind is missing, which
// materials are kept, their strengths with the stress-strain curve rules, their property
// sets by symmetry, and the derived members.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "source/fake_host_model_test_support.h"
#include "source/vask_model.h"
#include "source/vask_prop_material.h"

namespace vtt {
namespace {

constexpr int kSteel = 1;
constexpr int kConcrete = 2;
constexpr int kRebar = 6;

constexpr int kIsotropic = 0;
constexpr int kOrthotropic = 1;
constexpr int kAnisotropic = 2;
constexpr int kUniaxial = 3;

// One material as the host holds it. The strengths are those of its type: fy, fu, efy and
// efu for steel and rebar, fc for concrete.
struct HostMaterial {
  std::string name;
  int type = 0;
  int symmetry = kIsotropic;
  double weight = 0.0;
  double mass = 0.0;
  double isoE = 0.0;
  double isoU = 0.0;
  double isoA = 0.0;
  double isoG = 0.0;
  Reals e;
  Reals u;
  Reals a;
  Reals g;
  double uniE = 0.0;
  double uniA = 0.0;
  double fy = 0.0;
  double fu = 0.0;
  double efy = 0.0;
  double efu = 0.0;
  double fc = 0.0;
  // The curve's stresses; a material without a curve answers with a failed status.
  bool hasCurve = false;
  int curveStatus = 0;
  Reals curveStresses;
  // Property calls of this material fail, leaving their results at zero.
  bool propertiesFail = false;
};

HostMaterial Concrete(std::string name, double fc) {
  HostMaterial m;
  m.name = std::move(name);
  m.type = kConcrete;
  m.fc = fc;
  return m;
}

HostMaterial Steel(std::string name) {
  HostMaterial m;
  m.name = std::move(name);
  m.type = kSteel;
  return m;
}

HostMaterial Rebar(std::string name) {
  HostMaterial m;
  m.name = std::move(name);
  m.type = kRebar;
  return m;
}

HostMaterial OfType(std::string name, int type) {
  HostMaterial m;
  m.name = std::move(name);
  m.type = type;
  return m;
}

HostMaterial WithCurve(HostMaterial m, Reals stresses, int status = 0) {
  m.hasCurve = true;
  m.curveStatus = status;
  m.curveStresses = std::move(stresses);
  return m;
}

// A host that holds materials only, logs every material call, and makes a default
// material from a per-type template when asked.
class MaterialsHost : public test_support::FakeHostModel {
 public:
  explicit MaterialsHost(std::vector<HostMaterial> held) : materials(std::move(held)) {}

  int GetMaterialNameList(int typeFilter, int& count, Names& names) override {
    calls.push_back("GetMaterialNameList " + std::to_string(typeFilter));
    names.clear();
    for (const HostMaterial& m : materials) {
      if (typeFilter == 0 || m.type == typeFilter) names.push_back(m.name);
    }
    count = static_cast<int>(names.size());
    const auto status = listStatus.find(typeFilter);
    return status == listStatus.end() ? 0 : status->second;
  }
  int AddDefaultMaterial(const std::string& name, int type, int region,
                         const std::string& standard, const std::string& grade,
                         std::string& createdName) override {
    calls.push_back("AddDefaultMaterial " + name + " " + std::to_string(type) + " " +
                    std::to_string(region) + " [" + standard + "] [" + grade + "]");
    HostMaterial made = defaults.count(type) != 0 ? defaults.at(type) : OfType("", type);
    made.name = name;
    made.type = type;
    materials.push_back(made);
    createdName = name;
    return 0;
  }
  int GetMaterialType(const std::string& name, int& type, int& symmetry) override {
    calls.push_back("GetMaterialType " + name);
    const HostMaterial* m = Find(name);
    if (m == nullptr) return FakeHostModel::GetMaterialType(name, type, symmetry);
    type = m->type;
    symmetry = m->symmetry;
    return 0;
  }
  int GetMaterialWeightAndMass(const std::string& name, double& weight, double& mass) override {
    calls.push_back("GetMaterialWeightAndMass " + name);
    const HostMaterial* m = Readable(name);
    if (m == nullptr) return FakeHostModel::GetMaterialWeightAndMass(name, weight, mass);
    weight = m->weight;
    mass = m->mass;
    return 0;
  }
  int GetIsotropicData(const std::string& name, double& e, double& u, double& a,
                       double& g) override {
    calls.push_back("GetIsotropicData " + name);
    const HostMaterial* m = Readable(name);
    if (m == nullptr) return FakeHostModel::GetIsotropicData(name, e, u, a, g);
    e = m->isoE;
    u = m->isoU;
    a = m->isoA;
    g = m->isoG;
    return 0;
  }
  int GetOrthotropicData(const std::string& name, Reals& e, Reals& u, Reals& a,
                         Reals& g) override {
    calls.push_back("GetOrthotropicData " + name);
    const HostMaterial* m = Readable(name);
    if (m == nullptr) return FakeHostModel::GetOrthotropicData(name, e, u, a, g);
    e = m->e;
    u = m->u;
    a = m->a;
    g = m->g;
    return 0;
  }
  int GetAnisotropicData(const std::string& name, Reals& e, Reals& u, Reals& a,
                         Reals& g) override {
    calls.push_back("GetAnisotropicData " + name);
    const HostMaterial* m = Readable(name);
    if (m == nullptr) return FakeHostModel::GetAnisotropicData(name, e, u, a, g);
    e = m->e;
    u = m->u;
    a = m->a;
    g = m->g;
    return 0;
  }
  int GetUniaxialData(const std::string& name, double& e, double& a) override {
    calls.push_back("GetUniaxialData " + name);
    const HostMaterial* m = Readable(name);
    if (m == nullptr) return FakeHostModel::GetUniaxialData(name, e, a);
    e = m->uniE;
    a = m->uniA;
    return 0;
  }
  int GetSteelData(const std::string& name, double& fy, double& fu, double& efy,
                   double& efu) override {
    calls.push_back("GetSteelData " + name);
    const HostMaterial* m = Readable(name);
    if (m == nullptr) return FakeHostModel::GetSteelData(name, fy, fu, efy, efu);
    fy = m->fy;
    fu = m->fu;
    efy = m->efy;
    efu = m->efu;
    return 0;
  }
  int GetRebarData(const std::string& name, double& fy, double& fu, double& efy,
                   double& efu) override {
    calls.push_back("GetRebarData " + name);
    const HostMaterial* m = Readable(name);
    if (m == nullptr) return FakeHostModel::GetRebarData(name, fy, fu, efy, efu);
    fy = m->fy;
    fu = m->fu;
    efy = m->efy;
    efu = m->efu;
    return 0;
  }
  int GetConcreteData(const std::string& name, double& fc) override {
    calls.push_back("GetConcreteData " + name);
    const HostMaterial* m = Readable(name);
    if (m == nullptr) return FakeHostModel::GetConcreteData(name, fc);
    fc = m->fc;
    return 0;
  }
  int GetStressStrainCurve(const std::string& name, int& count, Ints& pointIds, Reals& strains,
                           Reals& stresses) override {
    calls.push_back("GetStressStrainCurve " + name);
    const HostMaterial* m = Find(name);
    if (m == nullptr || !m->hasCurve) {
      return FakeHostModel::GetStressStrainCurve(name, count, pointIds, strains, stresses);
    }
    // Points are handed over even with a failed status, so that only the status can
    // keep the reader from using them.
    stresses = m->curveStresses;
    count = static_cast<int>(stresses.size());
    pointIds.clear();
    strains.clear();
    for (int i = 0; i < count; ++i) {
      pointIds.push_back(i);
      strains.push_back(0.001 * i);
    }
    return m->curveStatus;
  }

  // Calls whose text starts with `prefix`, in order.
  std::vector<std::string> CallsStartingWith(const std::string& prefix) const {
    std::vector<std::string> found;
    for (const std::string& call : calls) {
      if (call.rfind(prefix, 0) == 0) found.push_back(call);
    }
    return found;
  }
  // Position of the first call equal to `call`, or -1.
  int PositionOf(const std::string& call) const {
    const auto it = std::find(calls.begin(), calls.end(), call);
    return it == calls.end() ? -1 : static_cast<int>(it - calls.begin());
  }

  std::vector<HostMaterial> materials;
  std::map<int, HostMaterial> defaults;
  std::map<int, int> listStatus;
  std::vector<std::string> calls;

 private:
  const HostMaterial* Find(const std::string& name) const {
    for (const HostMaterial& m : materials) {
      if (m.name == name) return &m;
    }
    return nullptr;
  }
  const HostMaterial* Readable(const std::string& name) const {
    const HostMaterial* m = Find(name);
    return m == nullptr || m->propertiesFail ? nullptr : m;
  }
};

// One material of each required kind, so that no default is made.
std::vector<HostMaterial> OneOfEach() {
  return {Concrete("C1", 30.0), Steel("S1"), Rebar("R1")};
}

class MaterialReading : public ::testing::Test {
 protected:
  // Reads the host's materials into a fresh model.
  void Read(MaterialsHost& host) {
    model = std::make_unique<VaskModelObj>(host);
    model->ReadVaskData();
  }
  const VaskPropMaterialObj& Mat(const std::string& label) const {
    static const VaskPropMaterialObj kMissing;
    const VaskPropMaterialObj* m = model->PropMaterialObjGet(label);
    if (m == nullptr) {
      ADD_FAILURE() << "no material " << label;
      return kMissing;
    }
    return *m;
  }
  std::vector<std::string> Labels() const {
    std::vector<std::string> labels;
    for (int i = 1; i <= model->PropMatNum(); ++i) labels.push_back(model->PropMatObj(i)->Label);
    return labels;
  }

  std::unique_ptr<VaskModelObj> model;
};

const std::string kAddConc = "AddDefaultMaterial Conc 2 -1 [] []";
const std::string kAddSteel = "AddDefaultMaterial Steel 1 -1 [] []";
const std::string kAddRebar = "AddDefaultMaterial Rebar 6 -1 [] []";

TEST_F(MaterialReading, AHostWithNoConcreteGetsConcBeforeAnythingIsReadAndReadsIt) {
  MaterialsHost host({Steel("S1"), Rebar("R1")});
  HostMaterial conc = Concrete("", 27.5);
  conc.isoE = 24855.578;
  conc.isoU = 0.2;
  conc.isoA = 0.0000099;
  conc.isoG = 10356.49;
  conc.weight = 23.5631;
  conc.mass = 2.4028;
  host.defaults[kConcrete] = conc;
  Read(host);

  EXPECT_EQ(host.CallsStartingWith("AddDefaultMaterial"), std::vector<std::string>{kAddConc});
  const int added = host.PositionOf(kAddConc);
  ASSERT_GE(added, 0);
  EXPECT_LT(added, host.PositionOf("GetMaterialNameList 0"));
  EXPECT_LT(added, host.PositionOf("GetMaterialType S1"));

  EXPECT_EQ(Labels(), (std::vector<std::string>{"S1", "R1", "Conc"}));
  const VaskPropMaterialObj& m = Mat("Conc");
  EXPECT_EQ(m.MatType, kConcrete);
  EXPECT_EQ(m.SymType, kIsotropic);
  EXPECT_EQ(m.ConcFc, 27.5);
  EXPECT_EQ(m.IsoE, 24855.578);
  EXPECT_EQ(m.IsoU, 0.2);
  EXPECT_EQ(m.IsoA, 0.0000099);
  EXPECT_EQ(m.IsoG, 10356.49);
  EXPECT_EQ(m.UnitWeight, 23.5631);
  EXPECT_EQ(m.UnitMass, 2.4028);
}

TEST_F(MaterialReading, AnEmptyHostGetsConcSteelAndRebarInThatOrder) {
  MaterialsHost host({});
  Read(host);
  EXPECT_EQ(host.CallsStartingWith("AddDefaultMaterial"),
            (std::vector<std::string>{kAddConc, kAddSteel, kAddRebar}));
  EXPECT_EQ(host.CallsStartingWith("GetMaterialNameList"),
            (std::vector<std::string>{"GetMaterialNameList 2", "GetMaterialNameList 1",
                                      "GetMaterialNameList 6", "GetMaterialNameList 0"}));
  EXPECT_EQ(Labels(), (std::vector<std::string>{"Conc", "Steel", "Rebar"}));
  EXPECT_EQ(Mat("Conc").MatType, kConcrete);
  EXPECT_EQ(Mat("Steel").MatType, kSteel);
  EXPECT_EQ(Mat("Rebar").MatType, kRebar);
}

TEST_F(MaterialReading, NoDefaultIsMadeWhenEveryKindIsPresent) {
  MaterialsHost host(OneOfEach());
  Read(host);
  EXPECT_TRUE(host.CallsStartingWith("AddDefaultMaterial").empty());
  EXPECT_EQ(Labels(), (std::vector<std::string>{"C1", "S1", "R1"}));
}

TEST_F(MaterialReading, OnlyTheMissingKindGetsADefault) {
  MaterialsHost host({Concrete("C1", 30.0), Rebar("R1")});
  Read(host);
  EXPECT_EQ(host.CallsStartingWith("AddDefaultMaterial"), std::vector<std::string>{kAddSteel});
  EXPECT_EQ(Labels(), (std::vector<std::string>{"C1", "R1", "Steel"}));
}

TEST_F(MaterialReading, AFailedFilteredListMakesTheDefaultEvenWithMaterialsOfThatKind) {
  MaterialsHost host(OneOfEach());
  host.listStatus[kRebar] = 1;
  Read(host);
  EXPECT_EQ(host.CallsStartingWith("AddDefaultMaterial"), std::vector<std::string>{kAddRebar});
  EXPECT_EQ(Labels(), (std::vector<std::string>{"C1", "S1", "R1", "Rebar"}));
}

TEST_F(MaterialReading, TypesOtherThanSteelConcreteAndRebarAreSkipped) {
  MaterialsHost host({OfType("Alu", 3), Concrete("C1", 30.0), OfType("CF", 4), Steel("S1"),
                      OfType("Tendon", 5), Rebar("R1"), OfType("Other", 7)});
  Read(host);
  EXPECT_EQ(Labels(), (std::vector<std::string>{"C1", "S1", "R1"}));
  EXPECT_EQ(model->PropMaterialObjGet("Alu"), nullptr);
  EXPECT_EQ(model->PropMaterialObjGet("Other"), nullptr);
  // A skipped material is not read beyond its type.
  EXPECT_EQ(host.PositionOf("GetMaterialWeightAndMass Tendon"), -1);
  EXPECT_EQ(host.PositionOf("GetIsotropicData CF"), -1);
}

TEST_F(MaterialReading, IdentityWeightAndMassAreKept) {
  HostMaterial steel = Steel("S355");
  steel.symmetry = kIsotropic;
  steel.weight = 76.9729;
  steel.mass = 7.849;
  MaterialsHost host({Concrete("C1", 30.0), steel, Rebar("R1")});
  Read(host);
  const VaskPropMaterialObj& m = Mat("S355");
  EXPECT_EQ(m.Label, "S355");
  EXPECT_EQ(m.MatType, kSteel);
  EXPECT_EQ(m.SymType, kIsotropic);
  EXPECT_EQ(m.UnitWeight, 76.9729);
  EXPECT_EQ(m.UnitMass, 7.849);
  EXPECT_EQ(m.idTrelkInelastic, 0);
  EXPECT_EQ(m.idTrelkElasticShear, 0);
  EXPECT_EQ(m.idTrelkInelasticShear, 0);
  EXPECT_EQ(m.idTrelkElasticSlab, 0);
  EXPECT_EQ(m.idTrelkElasticFiber, 0);
}

TEST_F(MaterialReading, SteelStrengthsComeFromTheSteelDataAndItsCurveIsNotRead) {
  HostMaterial steel = WithCurve(Steel("S1"), {0.0, 900.0});
  steel.fy = 345.0;
  steel.fu = 450.0;
  steel.efy = 379.5;
  steel.efu = 495.0;
  MaterialsHost host({Concrete("C1", 30.0), steel, Rebar("R1")});
  Read(host);
  const VaskPropMaterialObj& m = Mat("S1");
  EXPECT_EQ(m.SteelFy, 345.0);
  EXPECT_EQ(m.SteelFu, 450.0);
  EXPECT_EQ(m.SteeleFy, 379.5);
  EXPECT_EQ(m.SteeleFu, 495.0);
  EXPECT_EQ(host.PositionOf("GetStressStrainCurve S1"), -1);
  EXPECT_DOUBLE_EQ(m.Fy(), 0.9 * 345.0);
  EXPECT_EQ(m.Fu(), 450.0);
}

TEST_F(MaterialReading, RebarStrengthsComeFromTheRebarData) {
  HostMaterial rebar = Rebar("A615");
  rebar.fy = 413.69;
  rebar.fu = 620.53;
  rebar.efy = 455.05;
  rebar.efu = 682.58;
  MaterialsHost host({Concrete("C1", 30.0), Steel("S1"), rebar});
  Read(host);
  const VaskPropMaterialObj& m = Mat("A615");
  EXPECT_EQ(m.RebarFy, 413.69);
  EXPECT_EQ(m.RebarFu, 620.53);
  EXPECT_EQ(m.RebareFy, 455.05);
  EXPECT_EQ(m.RebareFu, 682.58);
  EXPECT_DOUBLE_EQ(m.Fy(), 0.9 * 413.69);
  EXPECT_EQ(m.Fu(), 620.53);
}

TEST_F(MaterialReading, TheRebarCurvesPeakTensionReplacesTheExpectedUltimateStrength) {
  HostMaterial rebar = WithCurve(Rebar("R1"), {-500.0, -420.0, 0.0, 420.0, 610.5, 600.0});
  rebar.fu = 620.0;
  rebar.efu = 682.0;
  MaterialsHost host({Concrete("C1", 30.0), Steel("S1"), rebar});
  Read(host);
  EXPECT_EQ(Mat("R1").RebareFu, 610.5);
  EXPECT_EQ(Mat("R1").RebarFu, 620.0);
}

TEST_F(MaterialReading, ARebarCurveWithTensionOfAtMostOneMillionthKeepsTheStatedValue) {
  HostMaterial rebar = WithCurve(Rebar("R1"), {-400.0, 0.0, 0.000001});
  rebar.efu = 682.0;
  MaterialsHost host({Concrete("C1", 30.0), Steel("S1"), rebar});
  Read(host);
  EXPECT_EQ(Mat("R1").RebareFu, 682.0);
}

TEST_F(MaterialReading, TheConcreteCurvesPeakCompressionReplacesTheStatedStrength) {
  MaterialsHost host({WithCurve(Concrete("C1", 30.0), {-20.0, -34.5, -28.0, 0.0, 2.9}),
                      Steel("S1"), Rebar("R1")});
  Read(host);
  EXPECT_EQ(Mat("C1").ConcFc, 34.5);
}

TEST_F(MaterialReading, AConcreteWhoseCurveIsOnlyTensileKeepsTheStatedStrength) {
  MaterialsHost host(
      {WithCurve(Concrete("C1", 30.0), {0.0, 1.5, 2.9}), Steel("S1"), Rebar("R1")});
  Read(host);
  EXPECT_EQ(Mat("C1").ConcFc, 30.0);
}

TEST_F(MaterialReading, ConcreteCompressionOfAtMostOneMillionthKeepsTheStatedStrength) {
  MaterialsHost host({WithCurve(Concrete("C1", 30.0), {0.0, -0.000001, -0.0000005, 2.0}),
                      Steel("S1"), Rebar("R1")});
  Read(host);
  EXPECT_EQ(Mat("C1").ConcFc, 30.0);
}

TEST_F(MaterialReading, ConcreteCompressionJustAboveOneMillionthReplacesTheStatedStrength) {
  MaterialsHost host(
      {WithCurve(Concrete("C1", 30.0), {0.0, -0.000002}), Steel("S1"), Rebar("R1")});
  Read(host);
  EXPECT_EQ(Mat("C1").ConcFc, 0.000002);
}

TEST_F(MaterialReading, ACurveWithAFailedStatusIsNotUsed) {
  MaterialsHost host({WithCurve(Concrete("C1", 30.0), {-45.0}, 1),
                      Steel("S1"), WithCurve(Rebar("R1"), {900.0}, 1)});
  host.materials[2].efu = 682.0;
  Read(host);
  EXPECT_EQ(Mat("C1").ConcFc, 30.0);
  EXPECT_EQ(Mat("R1").RebareFu, 682.0);
}

TEST_F(MaterialReading, FyOfAConcreteIsNineTenthsOfItsStrength) {
  MaterialsHost host({Concrete("C1", 40.0), Steel("S1"), Rebar("R1")});
  Read(host);
  EXPECT_DOUBLE_EQ(Mat("C1").Fy(), 36.0);
  EXPECT_EQ(Mat("C1").Fu(), 40.0);
}

TEST_F(MaterialReading, AnIsotropicMaterialGivesItsOwnEnuAndG) {
  HostMaterial steel = Steel("S1");
  steel.isoE = 199947.98;
  steel.isoU = 0.3;
  steel.isoA = 0.0000117;
  steel.isoG = 76903.07;
  MaterialsHost host({Concrete("C1", 30.0), steel, Rebar("R1")});
  Read(host);
  const VaskPropMaterialObj& m = Mat("S1");
  EXPECT_EQ(m.IsoA, 0.0000117);
  EXPECT_EQ(m.E(), 199947.98);
  EXPECT_EQ(m.Nu(), 0.3);
  EXPECT_EQ(m.G(), 76903.07);
}

TEST_F(MaterialReading, AUniaxialRebarHasNuOneTwentiethAndHalfItsModulusAsG) {
  HostMaterial rebar = Rebar("R1");
  rebar.symmetry = kUniaxial;
  rebar.uniE = 199947.0;
  rebar.uniA = 0.0000117;
  MaterialsHost host({Concrete("C1", 30.0), Steel("S1"), rebar});
  Read(host);
  const VaskPropMaterialObj& m = Mat("R1");
  EXPECT_EQ(m.SymType, kUniaxial);
  EXPECT_EQ(m.UniE, 199947.0);
  EXPECT_EQ(m.UniA, 0.0000117);
  EXPECT_EQ(m.E(), 199947.0);
  EXPECT_EQ(m.Nu(), 0.05);
  EXPECT_EQ(m.G(), 99973.5);
  EXPECT_EQ(host.PositionOf("GetIsotropicData R1"), -1);
}

TEST_F(MaterialReading, AnAnisotropicMaterialStandsForAnIsotropicOneByItsFirstValues) {
  HostMaterial conc = Concrete("C1", 30.0);
  conc.symmetry = kAnisotropic;
  conc.e = {25000.0, 26000.0, 27000.0};
  conc.g = {10400.0, 10500.0, 10600.0};
  for (int i = 0; i < 15; ++i) conc.u.push_back(0.15 + 0.01 * i);
  conc.a = {0.00001, 0.00002, 0.00003, 0.00004, 0.00005};
  MaterialsHost host({conc, Steel("S1"), Rebar("R1")});
  Read(host);
  const VaskPropMaterialObj& m = Mat("C1");
  EXPECT_EQ(m.AniE, (std::array<double, 3>{25000.0, 26000.0, 27000.0}));
  EXPECT_EQ(m.AniG, (std::array<double, 3>{10400.0, 10500.0, 10600.0}));
  EXPECT_EQ(m.AniU[0], 0.15);
  EXPECT_EQ(m.AniU[14], 0.15 + 0.01 * 14);
  EXPECT_EQ(m.AniA, (std::array<double, 5>{0.00001, 0.00002, 0.00003, 0.00004, 0.00005}));
  EXPECT_EQ(m.E(), 25000.0);
  EXPECT_EQ(m.Nu(), 0.15);
  EXPECT_EQ(m.G(), 10400.0);
}

TEST_F(MaterialReading, AnOrthotropicMaterialKeepsOnlyItsModuliSoNuAndGAreZero) {
  HostMaterial steel = Steel("S1");
  steel.symmetry = kOrthotropic;
  steel.e = {200000.0, 190000.0, 180000.0};
  steel.u = {0.3, 0.3, 0.3};
  steel.a = {0.0000117, 0.0000117, 0.0000117};
  steel.g = {76900.0, 76900.0, 76900.0};
  MaterialsHost host({Concrete("C1", 30.0), steel, Rebar("R1")});
  Read(host);
  const VaskPropMaterialObj& m = Mat("S1");
  EXPECT_EQ(m.OrtE, (std::array<double, 3>{200000.0, 190000.0, 180000.0}));
  EXPECT_EQ(m.OrtU, (std::array<double, 3>{}));
  EXPECT_EQ(m.OrtA, (std::array<double, 3>{}));
  EXPECT_EQ(m.OrtG, (std::array<double, 3>{}));
  EXPECT_EQ(m.E(), 200000.0);
  EXPECT_EQ(m.Nu(), 0.0);
  EXPECT_EQ(m.G(), 0.0);
}

TEST_F(MaterialReading, FailedPropertyCallsLeaveTheFieldsAtZero) {
  HostMaterial conc = WithCurve(Concrete("C1", 30.0), {-45.0});
  conc.isoE = 25000.0;
  conc.weight = 23.5;
  conc.propertiesFail = true;
  MaterialsHost host({conc, Steel("S1"), Rebar("R1")});
  Read(host);
  const VaskPropMaterialObj& m = Mat("C1");
  EXPECT_EQ(m.MatType, kConcrete);
  EXPECT_EQ(m.UnitWeight, 0.0);
  EXPECT_EQ(m.IsoE, 0.0);
  // The curve still answers, and its compression stands in for the lost strength.
  EXPECT_EQ(m.ConcFc, 45.0);
}

TEST(MaterialDerivedMembers, AnUnknownMaterialTypeGivesTheFallbackStrengths) {
  VaskPropMaterialObj m;
  m.MatType = 4;
  m.SteelFy = 345.0;
  m.ConcFc = 30.0;
  m.RebarFy = 420.0;
  EXPECT_EQ(m.Fy(), 211500.0);
  EXPECT_EQ(m.Fu(), 235000.0);
}

TEST(MaterialDerivedMembers, AnUnknownSymmetryGivesTheFallbackElasticValues) {
  VaskPropMaterialObj m;
  m.SymType = 4;
  m.IsoE = 25000.0;
  m.IsoU = 0.2;
  m.IsoG = 10400.0;
  m.UniE = 200000.0;
  EXPECT_EQ(m.E(), 5400.0);
  EXPECT_EQ(m.Nu(), 0.05);
  EXPECT_EQ(m.G(), 2700.0);
}

TEST(MaterialDerivedMembers, EachKnownTypeTakesItsOwnStrengths) {
  VaskPropMaterialObj m;
  m.SteelFy = 300.0;
  m.SteelFu = 450.0;
  m.ConcFc = 50.0;
  m.RebarFy = 500.0;
  m.RebarFu = 650.0;
  m.MatType = kSteel;
  EXPECT_DOUBLE_EQ(m.Fy(), 270.0);
  EXPECT_EQ(m.Fu(), 450.0);
  m.MatType = kConcrete;
  EXPECT_DOUBLE_EQ(m.Fy(), 45.0);
  EXPECT_EQ(m.Fu(), 50.0);
  m.MatType = kRebar;
  EXPECT_DOUBLE_EQ(m.Fy(), 450.0);
  EXPECT_EQ(m.Fu(), 650.0);
}

}  // namespace
}  // namespace vtt
