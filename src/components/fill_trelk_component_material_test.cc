// Materials into the component library: which records each material type gives, in what
// order and with what numbers, the names, the values, and the bytes of each record kind.
#include "components/fill_trelk_component_material.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "source/fake_host_model_test_support.h"
#include "source/vask_model.h"
#include "store/material_records.h"
#include "store/trelk_store.h"
#include "support/expected_bytes.h"

namespace vtt {
namespace {

using vtt::testing::ExpectedBytes;

constexpr int kSteel = 1;
constexpr int kConcrete = 2;
constexpr int kRebar = 6;

std::vector<std::uint8_t> AsVector(std::span<const std::uint8_t> bytes) {
  return {bytes.begin(), bytes.end()};
}

// The 40-byte name field as the record holds it.
std::string Name40(const std::string& name) { return name + std::string(40 - name.size(), ' '); }

class MaterialComponents : public ::testing::Test {
 protected:
  MaterialComponents() : model(host) {
    // Host code 5: kilonewton (3) and millimetre (2), two different codes for the bytes.
    store.SetTrelkUnitsFromCode(5);
    store.InitTrelkStore();
  }

  VaskPropMaterialObj* Concrete(const std::string& label, double e, double nu, double g,
                                double fc) {
    VaskPropMaterialObj* m = Isotropic(label, kConcrete, e, nu, g);
    m->ConcFc = fc;
    return m;
  }
  VaskPropMaterialObj* Steel(const std::string& label, double e, double nu, double g,
                             double fy, double fu) {
    VaskPropMaterialObj* m = Isotropic(label, kSteel, e, nu, g);
    m->SteelFy = fy;
    m->SteelFu = fu;
    return m;
  }
  // A uniaxial rebar, as the host usually defines one.
  VaskPropMaterialObj* Rebar(const std::string& label, double e, double efy, double efu) {
    VaskPropMaterialObj* m = model.AddPropMaterial();
    m->Label = label;
    m->MatType = kRebar;
    m->SymType = 3;
    m->UniE = e;
    m->RebarFy = 0.8 * efy;
    m->RebarFu = 0.8 * efu;
    m->RebareFy = efy;
    m->RebareFu = efu;
    return m;
  }
  VaskPropMaterialObj* Isotropic(const std::string& label, int type, double e, double nu,
                                 double g) {
    VaskPropMaterialObj* m = model.AddPropMaterial();
    m->Label = label;
    m->MatType = type;
    m->SymType = 0;
    m->IsoE = e;
    m->IsoU = nu;
    m->IsoG = g;
    return m;
  }

  RecordList& List(Component id) { return store.Components(id); }
  RecordRef Inel(int n) { return List(Component::MatInel).Record(n); }
  RecordRef Fiber(int n) { return List(Component::MatElasticFiber).Record(n); }
  RecordRef Shear(int n) { return List(Component::MatElasticShear).Record(n); }
  RecordRef Slab(int n) { return List(Component::MatElasticSlab).Record(n); }

  test_support::FakeHostModel host;
  VaskModelObj model;
  TrelkStore store;
};

TEST_F(MaterialComponents, OneConcreteAndNoRebarGiveAFibreAndAShearInelasticRecord) {
  VaskPropMaterialObj* conc = Concrete("C30", 25000.0, 0.2, 10416.0, 30.0);
  FillTrelkMaterials(model, store);

  ASSERT_EQ(List(Component::MatInel).Count(), 2);
  EXPECT_EQ(Inel(1).GetInt(mat_inel_rec::RecordNumber), 1);
  EXPECT_EQ(Inel(1).GetInt(mat_inel_rec::Kind), 1);
  EXPECT_EQ(Inel(1).GetText(mat_inel_rec::Name), Name40("MatIneFibConc-C30"));
  EXPECT_EQ(Inel(2).GetInt(mat_inel_rec::RecordNumber), 2);
  EXPECT_EQ(Inel(2).GetInt(mat_inel_rec::Kind), 2);
  EXPECT_EQ(Inel(2).GetText(mat_inel_rec::Name), Name40("MatIneShearConc-C30"));
  EXPECT_EQ(List(Component::MatElasticFiber).Count(), 1);
  EXPECT_EQ(List(Component::MatElasticShear).Count(), 1);
  EXPECT_EQ(List(Component::MatElasticSlab).Count(), 1);
  EXPECT_EQ(Fiber(1).GetText(mat_elastic_fiber_rec::Name), Name40("MatElaFiberConc-C30"));
  EXPECT_EQ(Shear(1).GetText(mat_elastic_shear_rec::Name), Name40("MatElaShearConc-C30"));
  EXPECT_EQ(Slab(1).GetText(mat_elastic_slab_rec::Name), Name40("MatElaSlabConc-C30"));

  EXPECT_EQ(conc->idTrelkInelastic, 1);
  EXPECT_EQ(conc->idTrelkInelasticShear, 2);
  EXPECT_EQ(conc->idTrelkElasticFiber, 1);
  EXPECT_EQ(conc->idTrelkElasticShear, 1);
  EXPECT_EQ(conc->idTrelkElasticSlab, 1);
  // The inelastic list counts for the largest list; shear and slab by their capacity 1.
  EXPECT_EQ(store.MaxComponentCount, 2);
}

TEST_F(MaterialComponents, SteelThenConcreteKeepsTheMaterialOrderInTheElasticLists) {
  VaskPropMaterialObj* steel = Steel("S355", 210000.0, 0.3, 80769.0, 355.0, 510.0);
  VaskPropMaterialObj* conc = Concrete("C30", 25000.0, 0.2, 10416.0, 30.0);
  FillTrelkMaterials(model, store);

  ASSERT_EQ(List(Component::MatElasticFiber).Count(), 2);
  EXPECT_EQ(Fiber(1).GetText(mat_elastic_fiber_rec::Name), Name40("MatElaFiberSteel-S355"));
  EXPECT_EQ(Fiber(2).GetText(mat_elastic_fiber_rec::Name), Name40("MatElaFiberConc-C30"));
  EXPECT_EQ(Shear(1).GetText(mat_elastic_shear_rec::Name), Name40("MatElaShearSteel-S355"));
  EXPECT_EQ(Shear(2).GetText(mat_elastic_shear_rec::Name), Name40("MatElaShearConc-C30"));
  EXPECT_EQ(Slab(1).GetText(mat_elastic_slab_rec::Name), Name40("MatElaSlabSteel-S355"));
  EXPECT_EQ(Slab(2).GetText(mat_elastic_slab_rec::Name), Name40("MatElaSlabConc-C30"));
  EXPECT_EQ(Fiber(1).GetReal(mat_elastic_fiber_rec::Modulus), 210000.0);
  EXPECT_EQ(Fiber(2).GetReal(mat_elastic_fiber_rec::Modulus), 25000.0);

  EXPECT_EQ(steel->idTrelkElasticFiber, 1);
  EXPECT_EQ(steel->idTrelkElasticShear, 1);
  EXPECT_EQ(steel->idTrelkElasticSlab, 1);
  EXPECT_EQ(steel->idTrelkInelastic, 0);
  EXPECT_EQ(steel->idTrelkInelasticShear, 0);
  EXPECT_EQ(conc->idTrelkElasticFiber, 2);
  EXPECT_EQ(conc->idTrelkElasticShear, 2);
  EXPECT_EQ(conc->idTrelkElasticSlab, 2);
  // Steel takes no inelastic record: the concrete's are 1 and 2.
  EXPECT_EQ(List(Component::MatInel).Count(), 2);
  EXPECT_EQ(conc->idTrelkInelastic, 1);
  EXPECT_EQ(conc->idTrelkInelasticShear, 2);
}

TEST_F(MaterialComponents, TheInelasticPassesShareOneRunningNumber) {
  VaskPropMaterialObj* c1 = Concrete("C1", 25000.0, 0.2, 10416.0, 30.0);
  VaskPropMaterialObj* r1 = Rebar("R1", 200000.0, 455.0, 620.0);
  VaskPropMaterialObj* c2 = Concrete("C2", 30000.0, 0.2, 12500.0, 40.0);
  VaskPropMaterialObj* r2 = Rebar("R2", 200000.0, 500.0, 650.0);
  FillTrelkMaterials(model, store);

  ASSERT_EQ(List(Component::MatInel).Count(), 6);
  const std::vector<std::string> names = {
      "MatIneFibRebar-R1",  "MatIneFibRebar-R2",  "MatIneFibConc-C1",
      "MatIneFibConc-C2",   "MatIneShearConc-C1", "MatIneShearConc-C2"};
  const std::vector<int> kinds = {0, 0, 1, 1, 2, 2};
  for (int n = 1; n <= 6; ++n) {
    EXPECT_EQ(Inel(n).GetText(mat_inel_rec::Name), Name40(names[n - 1])) << n;
    EXPECT_EQ(Inel(n).GetInt(mat_inel_rec::Kind), kinds[n - 1]) << n;
    EXPECT_EQ(Inel(n).GetInt(mat_inel_rec::RecordNumber), n);
    EXPECT_EQ(Inel(n).GetInt(mat_inel_rec::RecordNumberAgain), n);
  }
  EXPECT_EQ(r1->idTrelkInelastic, 1);
  EXPECT_EQ(r2->idTrelkInelastic, 2);
  EXPECT_EQ(c1->idTrelkInelastic, 3);
  EXPECT_EQ(c2->idTrelkInelastic, 4);
  EXPECT_EQ(c1->idTrelkInelasticShear, 5);
  EXPECT_EQ(c2->idTrelkInelasticShear, 6);
  // A rebar takes nothing but its inelastic fibre.
  EXPECT_EQ(r1->idTrelkElasticFiber, 0);
  EXPECT_EQ(r1->idTrelkElasticShear, 0);
  EXPECT_EQ(r1->idTrelkElasticSlab, 0);
  EXPECT_EQ(r1->idTrelkInelasticShear, 0);
  EXPECT_EQ(List(Component::MatElasticFiber).Count(), 2);
  EXPECT_EQ(c2->idTrelkElasticFiber, 2);
  // Six inelastic records (capacity 12) and two shear records (capacity 12).
  EXPECT_EQ(store.MaxComponentCount, 12);
}

TEST_F(MaterialComponents, LabelsLoseTheirLeadingAndTrailingSpacesInTheName) {
  Concrete("  C30 ", 25000.0, 0.2, 10416.0, 30.0);
  Steel(" S355  ", 210000.0, 0.3, 80769.0, 355.0, 510.0);
  Rebar("   R1", 200000.0, 455.0, 620.0);
  FillTrelkMaterials(model, store);
  EXPECT_EQ(Inel(1).GetText(mat_inel_rec::Name), Name40("MatIneFibRebar-R1"));
  EXPECT_EQ(Inel(2).GetText(mat_inel_rec::Name), Name40("MatIneFibConc-C30"));
  EXPECT_EQ(Inel(3).GetText(mat_inel_rec::Name), Name40("MatIneShearConc-C30"));
  EXPECT_EQ(Fiber(2).GetText(mat_elastic_fiber_rec::Name), Name40("MatElaFiberSteel-S355"));
  EXPECT_EQ(Slab(1).GetText(mat_elastic_slab_rec::Name), Name40("MatElaSlabConc-C30"));
}

TEST_F(MaterialComponents, TheInelasticShearUsesGAsStiffnessAndHalfOfFuAsSecondValue) {
  Concrete("C35", 29000.0, 0.2, 12083.5, 35.3);
  FillTrelkMaterials(model, store);
  RecordRef shear = Inel(2);
  ASSERT_EQ(shear.GetInt(mat_inel_rec::Kind), 2);
  EXPECT_EQ(shear.GetReal(mat_inel_rec::Stiffness), static_cast<double>(12083.5f));
  EXPECT_EQ(shear.GetReal(mat_inel_rec::SideAValue1), 0.0);
  EXPECT_EQ(shear.GetReal(mat_inel_rec::SideAValue2), static_cast<double>(17.65f));
  EXPECT_EQ(shear.GetReal(mat_inel_rec::SideAValue3), 0.0);
  EXPECT_EQ(shear.GetReal(mat_inel_rec::SideAValue4), 2.0);
  EXPECT_EQ(shear.GetReal(mat_inel_rec::SideBValue1), 0.0);
  EXPECT_EQ(shear.GetReal(mat_inel_rec::SideBValue2), 0.0);
  EXPECT_EQ(shear.GetReal(mat_inel_rec::SideBValue3), 0.0);
  EXPECT_EQ(shear.GetReal(mat_inel_rec::SideBValue4), 0.0);
}

TEST_F(MaterialComponents, ALabelTooLongForTheNameFallsBackToThePrefixAndTheMaterialIndex) {
  // 30 characters: every prefix plus this label passes 40 characters.
  const std::string longLabel = "Concrete of the transfer floor";
  ASSERT_EQ(longLabel.size(), 30u);
  Steel("S1", 210000.0, 0.3, 80769.0, 355.0, 510.0);
  Steel("S2", 210000.0, 0.3, 80769.0, 235.0, 360.0);
  Rebar("Reinforcement of the transfer floor", 200000.0, 455.0, 620.0);
  Concrete(longLabel, 25000.0, 0.2, 10416.0, 30.0);
  FillTrelkMaterials(model, store);

  // The rebar is material 3 and the concrete material 4; their record numbers differ.
  EXPECT_EQ(Inel(1).GetText(mat_inel_rec::Name), Name40("MatIneFibRebar-4"));
  EXPECT_EQ(Inel(2).GetText(mat_inel_rec::Name), Name40("MatIneFibConc-5"));
  EXPECT_EQ(Inel(3).GetText(mat_inel_rec::Name), Name40("MatIneShearConc-5"));
  EXPECT_EQ(Fiber(1).GetText(mat_elastic_fiber_rec::Name), Name40("MatElaFiberSteel-S1"));
  EXPECT_EQ(Fiber(3).GetText(mat_elastic_fiber_rec::Name), Name40("MatElaFiberConc-5"));
  EXPECT_EQ(Shear(3).GetText(mat_elastic_shear_rec::Name), Name40("MatElaShearConc-5"));
  EXPECT_EQ(Slab(3).GetText(mat_elastic_slab_rec::Name), Name40("MatElaSlabConc-5"));
}

TEST_F(MaterialComponents, MaterialsOfOtherTypesKeepTheirIdsAndGiveNoRecord) {
  VaskPropMaterialObj* alu = Isotropic("Alu", 3, 70000.0, 0.33, 26300.0);
  VaskPropMaterialObj* tendon = Isotropic("Tendon", 5, 195000.0, 0.3, 75000.0);
  Concrete("C30", 25000.0, 0.2, 10416.0, 30.0);
  FillTrelkMaterials(model, store);

  for (const VaskPropMaterialObj* m : {alu, tendon}) {
    EXPECT_EQ(m->idTrelkInelastic, 0) << m->Label;
    EXPECT_EQ(m->idTrelkElasticShear, 0) << m->Label;
    EXPECT_EQ(m->idTrelkInelasticShear, 0) << m->Label;
    EXPECT_EQ(m->idTrelkElasticSlab, 0) << m->Label;
    EXPECT_EQ(m->idTrelkElasticFiber, 0) << m->Label;
  }
  EXPECT_EQ(List(Component::MatInel).Count(), 2);
  EXPECT_EQ(List(Component::MatElasticFiber).Count(), 1);
  EXPECT_EQ(List(Component::MatElasticShear).Count(), 1);
  EXPECT_EQ(List(Component::MatElasticSlab).Count(), 1);
  EXPECT_EQ(Fiber(1).GetText(mat_elastic_fiber_rec::Name), Name40("MatElaFiberConc-C30"));
}

TEST_F(MaterialComponents, AModelWithoutMaterialsLeavesTheListsEmpty) {
  FillTrelkMaterials(model, store);
  EXPECT_EQ(List(Component::MatInel).Count(), 0);
  EXPECT_EQ(List(Component::MatElasticFiber).Count(), 0);
  EXPECT_EQ(List(Component::MatElasticShear).Count(), 0);
  EXPECT_EQ(List(Component::MatElasticSlab).Count(), 0);
  EXPECT_EQ(store.MaxComponentCount, 1);
}

TEST_F(MaterialComponents, TheInelasticFibreAndShearCountsStartAgainButTheSlabCountRunsOn) {
  for (Component id : {Component::MatInel, Component::MatElasticFiber,
                       Component::MatElasticShear, Component::MatElasticSlab}) {
    store.AddComponent(id);
    store.AddComponent(id);
  }
  VaskPropMaterialObj* conc = Concrete("C30", 25000.0, 0.2, 10416.0, 30.0);
  FillTrelkMaterials(model, store);

  EXPECT_EQ(List(Component::MatInel).Count(), 2);
  EXPECT_EQ(List(Component::MatElasticFiber).Count(), 1);
  EXPECT_EQ(List(Component::MatElasticShear).Count(), 1);
  EXPECT_EQ(List(Component::MatElasticSlab).Count(), 3);
  // The slab record is still written as number 1, the pass's own running number.
  EXPECT_EQ(conc->idTrelkElasticSlab, 1);
  EXPECT_EQ(Slab(1).GetText(mat_elastic_slab_rec::Name), Name40("MatElaSlabConc-C30"));
  EXPECT_EQ(Slab(1).GetInt(mat_elastic_slab_rec::RecordNumber), 1);
  EXPECT_EQ(Slab(3).GetInt(mat_elastic_slab_rec::Kind), 0);
}

// ---- Whole records, byte for byte ----

class MaterialComponentBytes : public MaterialComponents {
 protected:
  MaterialComponentBytes() {
    Rebar("A615", 199947.98, 455.05, 682.58);
    Concrete("C30", 24855.578, 0.2, 10356.49, 30.0);
    Steel("S355", 199947.98, 0.3, 76903.07, 355.0, 510.3);
    FillTrelkMaterials(model, store);
  }

  // The strength-loss record behind every inelastic record, and the sub-record behind
  // every shear record: 1, then zeros.
  static std::vector<std::uint8_t> LeadingOne(std::size_t size) {
    ExpectedBytes b;
    b.Byte(1).Zeros(size - 1);
    return b.Bytes();
  }

  // The common head of the inelastic records, up to the Stiffness field at 65.
  static ExpectedBytes InelHead(const std::string& name, std::int16_t number, std::uint8_t kind) {
    ExpectedBytes b;
    b.Ascii(name, 40)
        .Short(number)
        .Byte(kind)
        .Byte(2)    // UnitLength: millimetre
        .Byte(3)    // UnitForce: kilonewton
        .Byte(0)    // Option1
        .Byte(1)    // Option2
        .Byte(0)    // Option3
        .Byte(1)    // Option4
        .Byte(1)    // Option5
        .Zeros(3)   // Option6 to Option8
        .Byte(10)   // Option9
        .Byte(1)    // HasStrengthLoss
        .Zeros(2)
        .Short(0)   // Word1
        .Short(number)
        .Zeros(4);
    return b;
  }
};

TEST_F(MaterialComponentBytes, RebarFibreRecordUsesSideA) {
  ExpectedBytes b = InelHead("MatIneFibRebar-A615", 1, 0);
  b.Single(199947.98f)  // Stiffness: E
      .Single(0.0f)     // Word2
      .Zeros(8)
      .Single(455.05f)  // SideAValue1: RebareFy
      .Single(682.58f)  // SideAValue2: RebareFu
      .Single(0.0f)     // SideBValue1
      .Single(0.0f)     // SideBValue2
      .Single(0.0f)     // SideAValue3
      .Single(0.2f)     // SideAValue4
      .Single(0.0f)     // SideBValue3
      .Single(0.0f)     // SideBValue4
      .Zeros(216);
  ASSERT_EQ(b.Size(), 329u);
  EXPECT_EQ(AsVector(List(Component::MatInel).RecordBytes(1)), b.Bytes());
  EXPECT_EQ(AsVector(List(Component::MatInel).SubRecordBytes(1)), LeadingOne(50));
}

TEST_F(MaterialComponentBytes, ConcreteFibreRecordUsesSideB) {
  ExpectedBytes b = InelHead("MatIneFibConc-C30", 2, 1);
  b.Single(24855.578f)  // Stiffness: E
      .Single(0.0f)
      .Zeros(8)
      .Single(0.0f)     // SideAValue1
      .Single(0.0f)     // SideAValue2
      .Single(27.0f)    // SideBValue1: Fy, 0.9 x 30
      .Single(30.0f)    // SideBValue2: Fu
      .Single(0.0f)     // SideAValue3
      .Single(0.0f)     // SideAValue4
      .Single(0.04f)    // SideBValue3
      .Single(0.02f)    // SideBValue4
      .Zeros(216);
  ASSERT_EQ(b.Size(), 329u);
  EXPECT_EQ(AsVector(List(Component::MatInel).RecordBytes(2)), b.Bytes());
  EXPECT_EQ(AsVector(List(Component::MatInel).SubRecordBytes(2)), LeadingOne(50));
}

TEST_F(MaterialComponentBytes, ConcreteShearRecordUsesSideA) {
  ExpectedBytes b = InelHead("MatIneShearConc-C30", 3, 2);
  b.Single(10356.49f)  // Stiffness: G
      .Single(0.0f)
      .Zeros(8)
      .Single(0.0f)    // SideAValue1
      .Single(15.0f)   // SideAValue2: Fu / 2
      .Single(0.0f)
      .Single(0.0f)
      .Single(0.0f)    // SideAValue3
      .Single(2.0f)    // SideAValue4
      .Single(0.0f)
      .Single(0.0f)
      .Zeros(216);
  ASSERT_EQ(b.Size(), 329u);
  EXPECT_EQ(AsVector(List(Component::MatInel).RecordBytes(3)), b.Bytes());
  EXPECT_EQ(AsVector(List(Component::MatInel).SubRecordBytes(3)), LeadingOne(50));
}

TEST_F(MaterialComponentBytes, ElasticFibreRecord) {
  ExpectedBytes b;
  b.Ascii("MatElaFiberConc-C30", 40)
      .Short(1)             // RecordNumber
      .Byte(4)              // Kind
      .Byte(2)              // UnitLength
      .Byte(3)              // UnitForce
      .Byte(0)              // Option1
      .Byte(1)              // Option2
      .Zeros(3)
      .Short(0)             // Word1
      .Short(0)             // Word2
      .Zeros(4)
      .Single(24855.578f)   // Modulus: E
      .Zeros(64);
  ASSERT_EQ(b.Size(), 126u);
  EXPECT_EQ(AsVector(List(Component::MatElasticFiber).RecordBytes(1)), b.Bytes());
}

TEST_F(MaterialComponentBytes, ElasticShearRecordWithItsTaggedValuesAndSubRecord) {
  ExpectedBytes b;
  b.Ascii("MatElaShearSteel-S355", 40)
      .Short(2)             // RecordNumber
      .Byte(5)              // Kind
      .Byte(2)              // UnitLength
      .Byte(3)              // UnitForce
      .Byte(1)              // Option1
      .Byte(0)              // Option2
      .Byte(0)              // Option3
      .Byte(1)              // HasSubRecord
      .Byte(0)
      .Short(1)             // Word1
      .Short(2)             // RecordNumberAgain
      .Zeros(4)
      .Single(76903.07f)    // Modulus: G
      .Short(5)             // Tagged1: f64
      .Double(0.95)
      .Short(2)             // Tagged2: i16
      .Short(0)
      .Short(2)             // Tagged3: i16
      .Short(0)
      .Single(0.0f)         // Word2
      .Single(0.0f)         // Word3
      .Zeros(8)
      .Single(0.8f)         // Factor
      .Single(0.0f)         // Word4 to Word7
      .Single(0.0f)
      .Single(0.0f)
      .Single(0.0f)
      .Zeros(36);
  ASSERT_EQ(b.Size(), 152u);
  EXPECT_EQ(AsVector(List(Component::MatElasticShear).RecordBytes(2)), b.Bytes());
  EXPECT_EQ(AsVector(List(Component::MatElasticShear).SubRecordBytes(2)), LeadingOne(56));
}

TEST_F(MaterialComponentBytes, ElasticSlabRecord) {
  ExpectedBytes b;
  b.Ascii("MatElaSlabSteel-S355", 40)
      .Short(2)             // RecordNumber
      .Byte(6)              // Kind
      .Byte(2)              // UnitLength
      .Byte(3)              // UnitForce
      .Byte(0)              // Option1
      .Byte(1)              // Option2
      .Zeros(5)
      .Short(0)             // Word1
      .Zeros(4)
      .Single(199947.98f)   // Modulus: E
      .Zeros(16)
      .Single(0.3f)         // Poisson: Nu
      .Zeros(92);
  ASSERT_EQ(b.Size(), 174u);
  EXPECT_EQ(AsVector(List(Component::MatElasticSlab).RecordBytes(2)), b.Bytes());
}

TEST_F(MaterialComponentBytes, EachElasticRecordTakesItsOwnMaterialsValues) {
  EXPECT_EQ(Shear(1).GetReal(mat_elastic_shear_rec::Modulus), static_cast<double>(10356.49f));
  EXPECT_EQ(Shear(2).GetReal(mat_elastic_shear_rec::Modulus), static_cast<double>(76903.07f));
  EXPECT_EQ(Slab(1).GetReal(mat_elastic_slab_rec::Poisson), static_cast<double>(0.2f));
}

}  // namespace
}  // namespace vtt
