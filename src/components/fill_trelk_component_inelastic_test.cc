// FEMA beam and column components: which sections give them and in what order, names,
// numbers written back, the placeholder capacities in several unit systems, the column's
// single limit-state field, the sub-records and the bytes of each record kind.
#include "components/fill_trelk_component_inelastic.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "source/fake_host_model_test_support.h"
#include "source/vask_model.h"
#include "store/fema_records.h"
#include "store/material_records.h"
#include "store/trelk_store.h"
#include "support/expected_bytes.h"

namespace vtt {
namespace {

using vtt::testing::ExpectedBytes;

constexpr int kSteel = 1;
constexpr int kConcrete = 2;
constexpr int kRebar = 6;

// Host unit codes.
constexpr int kKipInch = 3;
constexpr int kKilonewtonMetre = 6;

std::vector<std::uint8_t> AsVector(std::span<const std::uint8_t> bytes) {
  return {bytes.begin(), bytes.end()};
}

std::string Name40(const std::string& name) { return name + std::string(40 - name.size(), ' '); }

std::vector<std::uint8_t> LeadingOne(std::size_t size) {
  ExpectedBytes b;
  b.Byte(1).Zeros(size - 1);
  return b.Bytes();
}

class FemaComponents : public ::testing::Test {
 protected:
  explicit FemaComponents(int unitCode = kKipInch) : model(host) {
    store.SetTrelkUnitsFromCode(unitCode);
    store.InitTrelkStore();
  }

  VaskPropMaterialObj* Material(const std::string& label, int type, double e, double nu,
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
  VaskPropMaterialObj* Steel(const std::string& label, double fu) {
    VaskPropMaterialObj* m = Material(label, kSteel, 29000.0, 0.3, 11153.85);
    m->SteelFy = 0.8 * fu;
    m->SteelFu = fu;
    return m;
  }
  VaskPropMaterialObj* Concrete(const std::string& label, double fc) {
    VaskPropMaterialObj* m = Material(label, kConcrete, 3605.0, 0.2, 1502.08);
    m->ConcFc = fc;
    return m;
  }
  VaskPropFrameSectObj* Section(const std::string& label, VaskPropMaterialObj* mat,
                                double area) {
    VaskPropFrameSectObj* s = model.AddPropFrameSect();
    s->Label = label;
    s->PropMatObj = mat;
    s->PropMatName = mat != nullptr ? mat->Label : std::string();
    s->area = area;
    s->As2 = area / 2.0;
    s->As3 = area / 3.0;
    s->TorsionConst = area * 4.0;
    s->I22 = area * 5.0;
    s->I33 = area * 6.0;
    return s;
  }

  RecordList& Beams() { return store.Components(Component::FemaBeam); }
  RecordList& Columns() { return store.Components(Component::FemaColumn); }
  RecordRef Beam(int n) { return Beams().Record(n); }
  RecordRef Column(int n) { return Columns().Record(n); }

  test_support::FakeHostModel host;
  VaskModelObj model;
  TrelkStore store;
};

TEST_F(FemaComponents, TheRecordLayoutsAreThoseOfTheLists) {
  EXPECT_EQ(Beams().RecordSize(), fema_beam_rec::kSize);
  EXPECT_EQ(Beams().SubRecordSize(), strength_loss_rec::kSize);
  EXPECT_EQ(Columns().RecordSize(), fema_column_rec::kSize);
  EXPECT_EQ(Columns().SubRecordSize(), fema_column_sub_rec::kSize);
}

TEST_F(FemaComponents, SteelComponentsComeFirstInBothLists) {
  VaskPropFrameSectObj* c1 = Section("C1", Concrete("Conc", 4.0), 144.0);
  VaskPropFrameSectObj* s1 = Section("S1", Steel("A992", 65.0), 10.0);
  VaskPropFrameSectObj* c2 = Section("C2", Concrete("Conc2", 5.0), 256.0);
  VaskPropFrameSectObj* s2 = Section("S2", Steel("A36", 58.0), 20.0);
  FillTrelkFemaComponents(model, store);

  ASSERT_EQ(Beams().Count(), 4);
  ASSERT_EQ(Columns().Count(), 4);
  const std::vector<std::string> beams = {"IneFemaBmS-S1", "IneFemaBmS-S2", "IneFemaBmC-C1",
                                          "IneFemaBmC-C2"};
  const std::vector<std::string> columns = {"IneFemaColS-S1", "IneFemaColS-S2",
                                            "IneFemaColC-C1", "IneFemaColC-C2"};
  const std::vector<int> beamKinds = {1, 1, 2, 2};
  const std::vector<int> columnKinds = {14, 14, 15, 15};
  const std::vector<int> beamSubKinds = {4, 4, 3, 3};
  const std::vector<int> columnSubKinds = {7, 7, 6, 6};
  for (int n = 1; n <= 4; ++n) {
    const auto k = static_cast<std::size_t>(n - 1);
    EXPECT_EQ(Beam(n).GetText(fema_beam_rec::Name), Name40(beams[k])) << n;
    EXPECT_EQ(Beam(n).GetInt(fema_beam_rec::ComponentKind), beamKinds[k]) << n;
    EXPECT_EQ(Beam(n).GetInt(fema_beam_rec::SectionSubKind), beamSubKinds[k]) << n;
    EXPECT_EQ(Beam(n).GetInt(fema_beam_rec::ComponentNumber), n);
    EXPECT_EQ(Beam(n).GetInt(fema_beam_rec::ComponentNumberCopy), n);
    EXPECT_EQ(Column(n).GetText(fema_column_rec::Name), Name40(columns[k])) << n;
    EXPECT_EQ(Column(n).GetInt(fema_column_rec::ComponentKind), columnKinds[k]) << n;
    EXPECT_EQ(Column(n).GetInt(fema_column_rec::SectionSubKind), columnSubKinds[k]) << n;
    EXPECT_EQ(Column(n).GetInt(fema_column_rec::ComponentNumber), n);
    EXPECT_EQ(Column(n).GetInt(fema_column_rec::ComponentNumberCopy), n);
  }
  EXPECT_EQ(s1->idTrelkInelasFemaSteelBeam, 1);
  EXPECT_EQ(s2->idTrelkInelasFemaSteelBeam, 2);
  EXPECT_EQ(c1->idTrelkInelasFemaConcBeam, 3);
  EXPECT_EQ(c2->idTrelkInelasFemaConcBeam, 4);
  EXPECT_EQ(s1->idTrelkInelasFemaSteelCol, 1);
  EXPECT_EQ(s2->idTrelkInelasFemaSteelCol, 2);
  EXPECT_EQ(c1->idTrelkInelasFemaConcCol, 3);
  EXPECT_EQ(c2->idTrelkInelasFemaConcCol, 4);
  // A section takes only the numbers of its own material.
  EXPECT_EQ(s1->idTrelkInelasFemaConcBeam, 0);
  EXPECT_EQ(s1->idTrelkInelasFemaConcCol, 0);
  EXPECT_EQ(c1->idTrelkInelasFemaSteelBeam, 0);
  EXPECT_EQ(c1->idTrelkInelasFemaSteelCol, 0);
  EXPECT_EQ(store.MaxComponentCount, 4);
}

TEST_F(FemaComponents, SectionsOfOtherMaterialsOrWithoutMaterialGetNoComponent) {
  VaskPropFrameSectObj* rebar = Section("Bar", Material("R60", kRebar, 29000.0, 0.3, 0.0), 1.0);
  VaskPropFrameSectObj* other = Section("Alu", Material("Alu", 3, 10000.0, 0.33, 3760.0), 2.0);
  VaskPropFrameSectObj* none = Section("Bare", nullptr, 3.0);
  VaskPropFrameSectObj* steel = Section("W8", Steel("A992", 65.0), 4.0);
  FillTrelkFemaComponents(model, store);

  for (const VaskPropFrameSectObj* s : {rebar, other, none}) {
    EXPECT_EQ(s->idTrelkInelasFemaSteelBeam, 0) << s->Label;
    EXPECT_EQ(s->idTrelkInelasFemaSteelCol, 0) << s->Label;
    EXPECT_EQ(s->idTrelkInelasFemaConcBeam, 0) << s->Label;
    EXPECT_EQ(s->idTrelkInelasFemaConcCol, 0) << s->Label;
  }
  ASSERT_EQ(Beams().Count(), 1);
  ASSERT_EQ(Columns().Count(), 1);
  EXPECT_EQ(steel->idTrelkInelasFemaSteelBeam, 1);
  EXPECT_EQ(steel->idTrelkInelasFemaSteelCol, 1);
  EXPECT_EQ(Beam(1).GetText(fema_beam_rec::Name), Name40("IneFemaBmS-W8"));
}

TEST_F(FemaComponents, AModelWithoutSteelOrConcreteSectionsLeavesBothListsEmpty) {
  Section("Bar", Material("R60", kRebar, 29000.0, 0.3, 0.0), 1.0);
  FillTrelkFemaComponents(model, store);
  EXPECT_EQ(Beams().Count(), 0);
  EXPECT_EQ(Columns().Count(), 0);
  EXPECT_EQ(store.MaxComponentCount, 1);
}

TEST_F(FemaComponents, ANameTooLongFallsBackToThePrefixAndTheSectionPlacePlusOne) {
  VaskPropMaterialObj* steel = Steel("A992", 65.0);
  for (int k = 1; k <= 11; ++k) Section("S" + std::to_string(k), steel, 10.0);
  // 29 characters: "IneFemaBmC-" makes 40 of it, "IneFemaColC-" 41.
  const std::string label = "Transfer girder level 3 north";
  ASSERT_EQ(label.size(), 29u);
  VaskPropFrameSectObj* twelfth = Section(label, Concrete("Conc", 4.0), 100.0);
  FillTrelkFemaComponents(model, store);

  ASSERT_EQ(Beams().Count(), 12);
  EXPECT_EQ(Beam(12).GetText(fema_beam_rec::Name), "IneFemaBmC-" + label);
  EXPECT_EQ(Column(12).GetText(fema_column_rec::Name), Name40("IneFemaColC-13"));
  EXPECT_EQ(twelfth->idTrelkInelasFemaConcCol, 12);
  EXPECT_EQ(store.MaxComponentCount, 12);
}

TEST_F(FemaComponents, TheFallbackNameCountsSectionsWithoutComponents) {
  Section("Bare", nullptr, 1.0);
  Section("Bar", Material("R60", kRebar, 29000.0, 0.3, 0.0), 1.0);
  // 30 characters: too long for every prefix.
  Section("Built-up box girder of the roof", Steel("A992", 65.0), 4.0);
  FillTrelkFemaComponents(model, store);
  ASSERT_EQ(Beams().Count(), 1);
  EXPECT_EQ(Beam(1).GetText(fema_beam_rec::Name), Name40("IneFemaBmS-4"));
  EXPECT_EQ(Column(1).GetText(fema_column_rec::Name), Name40("IneFemaColS-4"));
}

TEST_F(FemaComponents, KipInchSteelBeamMomentCapacityIsOneHundredTimesTheRootOfTheArea) {
  Section("W1", Steel("A992", 65.0), 49.0);
  Section("W2", Steel("A992", 65.0), 2.0);
  FillTrelkFemaComponents(model, store);
  EXPECT_EQ(Beam(1).GetReal(fema_beam_rec::MomentCapacity), 700.0);
  // 100 x sqrt(2) = 141.42135623730951, narrowed.
  EXPECT_EQ(Beam(2).GetReal(fema_beam_rec::MomentCapacity), 0x1.1ad7bcp+7);
  EXPECT_EQ(Beam(1).GetReal(fema_beam_rec::ReferenceLength), 0.0);
}

TEST_F(FemaComponents, KipInchConcreteColumnOfArea100AndFc4) {
  Section("C20", Concrete("Conc", 4.0), 100.0);
  FillTrelkFemaComponents(model, store);
  RecordRef col = Column(1);
  EXPECT_EQ(col.GetReal(fema_column_rec::AxialCapacity1), 80.0);
  EXPECT_EQ(col.GetReal(fema_column_rec::AxialCapacity2), 480.0);
  EXPECT_EQ(col.GetReal(fema_column_rec::MomentCapacity2), 300.0);
  EXPECT_EQ(col.GetReal(fema_column_rec::MomentCapacity3), 300.0);
  EXPECT_EQ(col.GetReal(fema_column_rec::ReferenceLength), static_cast<double>(196.85f));
  // The concrete beam of the same section: 100 x 100 x 0.004 x sqrt(100).
  EXPECT_EQ(Beam(1).GetReal(fema_beam_rec::MomentCapacity), 400.0);
  EXPECT_EQ(Beam(1).GetReal(fema_beam_rec::ReferenceLength), static_cast<double>(196.85f));
}

TEST_F(FemaComponents, KipInchSteelColumnUsesTheUltimateStrength) {
  Section("W7", Steel("A36", 58.0), 49.0);
  FillTrelkFemaComponents(model, store);
  RecordRef col = Column(1);
  EXPECT_EQ(col.GetReal(fema_column_rec::AxialCapacity1), 2842.0);
  EXPECT_EQ(col.GetReal(fema_column_rec::AxialCapacity2), 2842.0);
  EXPECT_EQ(col.GetReal(fema_column_rec::MomentCapacity2), 9947.0);
  EXPECT_EQ(col.GetReal(fema_column_rec::MomentCapacity3), 9947.0);
  EXPECT_EQ(col.GetReal(fema_column_rec::ReferenceLength), 0.0);
}

TEST_F(FemaComponents, ZeroAreaGivesZeroCapacitiesAndNoFailure) {
  Section("S0", Steel("A992", 65.0), 0.0);
  Section("C0", Concrete("Conc", 4.0), 0.0);
  ASSERT_NO_THROW(FillTrelkFemaComponents(model, store));
  for (int n = 1; n <= 2; ++n) {
    EXPECT_EQ(Beam(n).GetReal(fema_beam_rec::MomentCapacity), 0.0) << n;
    EXPECT_EQ(Column(n).GetReal(fema_column_rec::AxialCapacity1), 0.0) << n;
    EXPECT_EQ(Column(n).GetReal(fema_column_rec::AxialCapacity2), 0.0) << n;
    EXPECT_EQ(Column(n).GetReal(fema_column_rec::MomentCapacity2), 0.0) << n;
    EXPECT_EQ(Column(n).GetReal(fema_column_rec::MomentCapacity3), 0.0) << n;
  }
  // The rest of the record is filled as for any section.
  EXPECT_EQ(Beam(2).GetReal(fema_beam_rec::ReferenceLength), static_cast<double>(196.85f));
  EXPECT_EQ(Column(2).GetReal(fema_column_rec::Deformation4), static_cast<double>(0.02f));
}

TEST_F(FemaComponents, OnlyTheLastLimitStateSurvivesInTheColumnRecord) {
  Section("S1", Steel("A992", 65.0), 10.0);
  FillTrelkFemaComponents(model, store);
  const std::vector<std::uint8_t> col = AsVector(Columns().RecordBytes(1));
  ExpectedBytes around;
  around.Zeros(4).Single(9.0f).Zeros(4);
  EXPECT_EQ(std::vector<std::uint8_t>(col.begin() + 301, col.begin() + 313), around.Bytes());
  // The beam keeps its three limit states side by side.
  const std::vector<std::uint8_t> beam = AsVector(Beams().RecordBytes(1));
  ExpectedBytes three;
  three.Single(2.0f).Single(7.0f).Single(9.0f);
  EXPECT_EQ(std::vector<std::uint8_t>(beam.begin() + 241, beam.begin() + 253), three.Bytes());
}

TEST_F(FemaComponents, BothCountsStartAgainAndTheRecordsAreWrittenFromNumberOne) {
  for (int k = 0; k < 3; ++k) AddTrelkFemaBeam(store);
  for (int k = 0; k < 5; ++k) AddTrelkFemaColumn(store);
  ASSERT_EQ(store.MaxComponentCount, 5);
  VaskPropFrameSectObj* s = Section("S1", Steel("A992", 65.0), 10.0);
  VaskPropFrameSectObj* c = Section("C1", Concrete("Conc", 4.0), 100.0);
  FillTrelkFemaComponents(model, store);

  EXPECT_EQ(Beams().Count(), 2);
  EXPECT_EQ(Columns().Count(), 2);
  EXPECT_EQ(s->idTrelkInelasFemaSteelBeam, 1);
  EXPECT_EQ(c->idTrelkInelasFemaConcBeam, 2);
  EXPECT_EQ(s->idTrelkInelasFemaSteelCol, 1);
  EXPECT_EQ(c->idTrelkInelasFemaConcCol, 2);
  EXPECT_EQ(Column(2).GetText(fema_column_rec::Name), Name40("IneFemaColC-C1"));
  // MaxComponentCount keeps what the earlier records gave it.
  EXPECT_EQ(store.MaxComponentCount, 5);
}

TEST_F(FemaComponents, MaxComponentCountFollowsTheCountOfTheLists) {
  VaskPropMaterialObj* steel = Steel("A992", 65.0);
  VaskPropMaterialObj* conc = Concrete("Conc", 4.0);
  for (int k = 1; k <= 8; ++k) Section("S" + std::to_string(k), steel, 10.0);
  for (int k = 1; k <= 6; ++k) Section("C" + std::to_string(k), conc, 100.0);
  FillTrelkFemaComponents(model, store);
  EXPECT_EQ(Beams().Count(), 14);
  EXPECT_EQ(Beams().Capacity(), 23);
  EXPECT_EQ(Columns().Count(), 14);
  EXPECT_EQ(store.MaxComponentCount, 14);
}

TEST_F(FemaComponents, EveryRecordKeepsItsSubRecordWithAFirstByteOfOne) {
  Section("S1", Steel("A992", 65.0), 10.0);
  Section("C1", Concrete("Conc", 4.0), 100.0);
  FillTrelkFemaComponents(model, store);
  for (int n = 1; n <= 2; ++n) {
    EXPECT_EQ(AsVector(Beams().SubRecordBytes(n)), LeadingOne(50)) << n;
    EXPECT_EQ(AsVector(Columns().SubRecordBytes(n)), LeadingOne(60)) << n;
    EXPECT_EQ(Beam(n).GetInt(fema_beam_rec::HasStrengthLoss), 0) << n;
    EXPECT_EQ(Column(n).GetInt(fema_column_rec::HasStrengthLoss), 1) << n;
  }
}

// ---- Whole records, byte for byte, in kilonewton and metre ----
//
// L = 39.37f = 39.369998931884766 inches and F = 0.224809f = 0.22480900585651398 kips, so
// S = F / L / L = 1.450383662410761e-4 ksi. Capacities below were worked out from these in
// double precision and narrowed; they are given as exact single-precision values.

class FemaComponentBytes : public FemaComponents {
 protected:
  FemaComponentBytes() : FemaComponents(kKilonewtonMetre) {
    VaskPropMaterialObj* conc = Material("4000Psi", kConcrete, 24855578.0, 0.2, 10356491.0);
    conc->ConcFc = 27579.0;
    VaskPropMaterialObj* steel = Material("A992Fy50", kSteel, 199947980.0, 0.3, 76903069.0);
    steel->SteelFy = 344738.0;
    steel->SteelFu = 448159.0;

    concrete = model.AddPropFrameSect();
    concrete->Label = "C45";
    concrete->PropMatObj = conc;
    concrete->area = 0.45;
    concrete->As2 = 0.375;
    concrete->As3 = 0.375;
    concrete->TorsionConst = 0.0288;
    concrete->I22 = 0.0171;
    concrete->I33 = 0.0172;
    concrete->idTrelkXsectSteelBeam = 11;
    concrete->idTrelkXsectSteelCol = 12;
    concrete->idTrelkXsectConcBeam = 13;
    concrete->idTrelkXsectConcCol = 14;

    wideFlange = model.AddPropFrameSect();
    wideFlange->Label = "W14X90";
    wideFlange->PropMatObj = steel;
    wideFlange->area = 0.0171;
    wideFlange->As2 = 0.00559;
    wideFlange->As3 = 0.0114;
    wideFlange->TorsionConst = 1.6e-06;
    wideFlange->I22 = 1.516e-04;
    wideFlange->I33 = 4.162e-04;
    wideFlange->idTrelkXsectSteelBeam = 21;
    wideFlange->idTrelkXsectSteelCol = 22;
    wideFlange->idTrelkXsectConcBeam = 23;
    wideFlange->idTrelkXsectConcCol = 24;

    FillTrelkFemaComponents(model, store);
  }

  // Name to ComponentNumberCopy, then the nine elastic properties from 93 to 128.
  static ExpectedBytes Head(const std::string& name, std::int16_t number, std::uint8_t kind,
                            std::uint8_t option2, std::uint8_t option3,
                            std::uint8_t hasStrengthLoss, std::int16_t subKind,
                            std::int16_t crossSection, const std::array<float, 9>& elastic) {
    ExpectedBytes b;
    b.Ascii(name, 40)
        .Short(number)
        .Byte(kind)
        .Byte(4)   // UnitLength: metre
        .Byte(3)   // UnitForce: kilonewton
        .Zeros(3)
        .Byte(1)   // Option1
        .Byte(option2)
        .Zeros(3)
        .Byte(option3)
        .Byte(hasStrengthLoss)
        .Zeros(2)
        .Short(3)  // SectionKind
        .Short(subKind)
        .Short(crossSection)
        .Short(number)  // ComponentNumberCopy
        .Zeros(28);
    for (float v : elastic) b.Single(v);
    return b;
  }

  static constexpr std::array<float, 9> kConcreteElastic = {
      24855578.0f, 0.2f, 10356491.0f, 0.45f, 0.375f, 0.375f, 0.0288f, 0.0171f, 0.0172f};
  static constexpr std::array<float, 9> kSteelElastic = {
      199947980.0f, 0.3f, 76903069.0f, 0.0171f, 0.00559f, 0.0114f, 1.6e-06f, 1.516e-04f,
      4.162e-04f};

  // Behind the head, from 129: everything but the reference length, the capacity and the
  // deformations is the same for steel and concrete.
  static void BeamTail(ExpectedBytes& b, float referenceLength, float momentCapacity,
                       float d1, float d2, float d3) {
    b.Zeros(8)
        .Single(1.0f)            // StiffnessFactor
        .Single(referenceLength)
        .Single(0.0f)            // Param1
        .Single(momentCapacity)
        .Zeros(8)
        .Single(0.0f)            // Param2
        .Single(d1)              // Deformation1
        .Zeros(16)
        .Single(d2)              // Deformation2
        .Single(d3)              // Deformation3
        .Zeros(24)
        .Single(0.4f)            // ResidualStrength
        .Zeros(20)
        .Single(2.0f)            // LimitState1
        .Single(7.0f)            // LimitState2
        .Single(9.0f)            // LimitState3
        .Zeros(172);
  }

  static void ColumnTail(ExpectedBytes& b, float referenceLength, float axial1, float axial2,
                         float moment, const std::array<float, 4>& deformations) {
    b.Zeros(4)
        .Single(1.0f)  // StiffnessFactor
        .Single(referenceLength)
        .Single(axial1)
        .Single(axial2)
        .Single(moment)  // MomentCapacity2
        .Single(moment)  // MomentCapacity3
        .Zeros(16);
    for (float d : deformations) b.Single(d);
    b.Zeros(8)
        .Single(0.15f)  // Param1 to Param9
        .Single(0.8f)
        .Single(0.8f)
        .Single(1.1f)
        .Single(2.0f)
        .Single(2.0f)
        .Single(2.0f)
        .Single(2.0f)
        .Single(1.4f)
        .Zeros(72)
        .Single(9.0f)  // LimitState3
        .Zeros(164);
  }

  VaskPropFrameSectObj* concrete = nullptr;
  VaskPropFrameSectObj* wideFlange = nullptr;
};

TEST_F(FemaComponentBytes, SteelBeamRecord) {
  ExpectedBytes b = Head("IneFemaBmS-W14X90", 1, 1, 0, 10, 0, 4, 21, kSteelElastic);
  // MomentCapacity: 100 / S x sqrt(0.0171) = 90160.2578125.
  BeamTail(b, 0.0f, 0x1.603042p+16f, 20.0f, 11.0f, 13.0f);
  ASSERT_EQ(b.Size(), 425u);
  EXPECT_EQ(AsVector(Beams().RecordBytes(1)), b.Bytes());
  EXPECT_EQ(wideFlange->idTrelkInelasFemaSteelBeam, 1);
}

TEST_F(FemaComponentBytes, ConcreteBeamRecord) {
  ExpectedBytes b = Head("IneFemaBmC-C45", 2, 2, 0, 10, 0, 3, 13, kConcreteElastic);
  // ReferenceLength: 196.85 / L = 5 metres. MomentCapacity: 0.45 x 100 x 0.004 / S x
  // sqrt(0.45) = 832.5222778320312.
  BeamTail(b, 5.0f, 0x1.a042dap+9f, 0.1f, 0.04f, 0.08f);
  ASSERT_EQ(b.Size(), 425u);
  EXPECT_EQ(AsVector(Beams().RecordBytes(2)), b.Bytes());
  EXPECT_EQ(concrete->idTrelkInelasFemaConcBeam, 2);
}

TEST_F(FemaComponentBytes, SteelColumnRecordAndItsSubRecord) {
  ExpectedBytes b = Head("IneFemaColS-W14X90", 1, 14, 1, 0, 1, 7, 22, kSteelElastic);
  // 0.0171 x Fu 448159 = 7663.51904296875; x sqrt(0.0171) / 2 = 501.06756591796875.
  ColumnTail(b, 0.0f, 0x1.def84ep+12f, 0x1.def84ep+12f, 0x1.f5114cp+8f,
             {20.0f, 20.0f, 20.0f, 20.0f});
  ASSERT_EQ(b.Size(), 473u);
  EXPECT_EQ(AsVector(Columns().RecordBytes(1)), b.Bytes());
  EXPECT_EQ(AsVector(Columns().SubRecordBytes(1)), LeadingOne(60));
  EXPECT_EQ(wideFlange->idTrelkInelasFemaSteelCol, 1);
}

TEST_F(FemaComponentBytes, ConcreteColumnRecordAndItsSubRecord) {
  ExpectedBytes b = Head("IneFemaColC-C45", 2, 15, 1, 0, 1, 6, 14, kConcreteElastic);
  // AxialCapacity1: 0.45 x 100 x 0.008 / S = 2482.101806640625 as stored.
  // AxialCapacity2: 0.45 x 27579 + that single = 14892.6513671875.
  // MomentCapacity2 and 3: that single x sqrt(0.45) / 2 x 3 / 4 = 624.3916625976562.
  ColumnTail(b, 5.0f, 0x1.364342p+11f, 0x1.d16536p+13f, 0x1.383222p+9f,
             {0.003f, 0.005f, 0.017f, 0.02f});
  ASSERT_EQ(b.Size(), 473u);
  EXPECT_EQ(AsVector(Columns().RecordBytes(2)), b.Bytes());
  EXPECT_EQ(AsVector(Columns().SubRecordBytes(2)), LeadingOne(60));
  EXPECT_EQ(concrete->idTrelkInelasFemaConcCol, 2);
}

TEST_F(FemaComponentBytes, TheConcreteCapacitiesBuildOnTheStoredSingleAxialCapacity) {
  // Worked through in double precision alone, the two would be 14892.65234375 and
  // 624.3917236328125.
  EXPECT_EQ(Column(2).GetReal(fema_column_rec::AxialCapacity2), 0x1.d16536p+13);
  EXPECT_NE(Column(2).GetReal(fema_column_rec::AxialCapacity2), 14892.65234375);
  EXPECT_EQ(Column(2).GetReal(fema_column_rec::MomentCapacity2), 0x1.383222p+9);
  EXPECT_NE(Column(2).GetReal(fema_column_rec::MomentCapacity2), 624.3917236328125);
}

TEST_F(FemaComponentBytes, TheBeamStrengthLossRecordsAreKeptButMarkedAbsent) {
  EXPECT_EQ(AsVector(Beams().SubRecordBytes(1)), LeadingOne(50));
  EXPECT_EQ(AsVector(Beams().SubRecordBytes(2)), LeadingOne(50));
  EXPECT_EQ(Beam(1).GetInt(fema_beam_rec::HasStrengthLoss), 0);
}

}  // namespace
}  // namespace vtt
