#include "components/fill_trelk_component_xsect.h"

#include <gtest/gtest.h>

#include <bit>
#include <cstdint>
#include <string>
#include <vector>

#include "source/fake_host_model_test_support.h"
#include "source/vask_model.h"
#include "store/trelk_store.h"
#include "store/xsect_records.h"
#include "support/expected_bytes.h"
#include "transfer/failure.h"

namespace vtt {
namespace {

using vtt::testing::ExpectedBytes;

constexpr int kSteel = 1;
constexpr int kConcrete = 2;
constexpr int kRebar = 6;

// Host code 5: kilonewton (UnitForce 3) and millimetre (UnitLength 2).
constexpr std::uint8_t kUnitLength = 2;
constexpr std::uint8_t kUnitForce = 3;

float FromBits(std::uint32_t bits) { return std::bit_cast<float>(bits); }

class CrossSectionTranslation : public ::testing::Test {
 protected:
  CrossSectionTranslation() : model(host) {
    store.InitTrelkStore();
    store.SetTrelkUnitsFromCode(5);
  }

  VaskPropMaterialObj* Material(const std::string& label, int mat_type, double e, double nu,
                                double g) {
    VaskPropMaterialObj* mat = model.AddPropMaterial();
    mat->Label = label;
    mat->MatType = mat_type;
    mat->SymType = 0;
    mat->IsoE = e;
    mat->IsoU = nu;
    mat->IsoG = g;
    return mat;
  }
  VaskPropMaterialObj* Steel(const std::string& label = "A992") {
    VaskPropMaterialObj* mat = Material(label, kSteel, 200000.0, 0.3, 80000.0);
    mat->UnitWeight = 77.0;
    mat->idTrelkElasticFiber = 4;
    mat->idTrelkElasticSlab = 6;
    return mat;
  }
  VaskPropMaterialObj* Concrete(const std::string& label = "C30") {
    VaskPropMaterialObj* mat = Material(label, kConcrete, 25000.0, 0.2, 10000.0);
    mat->UnitWeight = 23.5616;
    mat->idTrelkInelastic = 2;
    mat->idTrelkElasticFiber = 3;
    mat->idTrelkElasticSlab = 5;
    return mat;
  }
  VaskPropMaterialObj* Rebar(const std::string& label = "A615", int inelastic_id = 1) {
    VaskPropMaterialObj* mat = Material(label, kRebar, 199950.0, 0.3, 76903.0);
    mat->idTrelkInelastic = inelastic_id;
    return mat;
  }

  VaskPropFrameSectObj* Frame(const std::string& label, int prop_type, VaskPropMaterialObj* mat) {
    VaskPropFrameSectObj* section = model.AddPropFrameSect();
    section->Label = label;
    section->PropType = prop_type;
    section->PropMatObj = mat;
    return section;
  }
  VaskPropFrameSectObj* Embedded(const std::string& label, VaskPropMaterialObj* mat) {
    VaskPropFrameSectObj* section = model.AddPropEmbedFrameSect();
    section->Label = label;
    section->PropType = 8;
    section->PropMatObj = mat;
    return section;
  }
  VaskPropAreaSectObj* ThinShell(const std::string& label, VaskPropMaterialObj* mat,
                                 double thick = 0.35, double bending = 0.3) {
    VaskPropAreaSectObj* section = model.AddPropAreaSect();
    section->Label = label;
    section->PropType = 1;
    section->ShellType = 1;
    section->PropMatObj = mat;
    section->Thick = thick;
    section->Bending = bending;
    return section;
  }
  VaskPropAreaSectObj* Layered(const std::string& label, int layer_type,
                               VaskPropMaterialObj* concrete, double thick = 0.25,
                               double bend = 0.2, double rebar_v = 0.0025,
                               double rebar_h = 0.001) {
    VaskPropAreaSectObj* section = model.AddPropAreaSect();
    section->Label = label;
    section->PropType = 1;
    section->ShellType = 6;
    section->LayerTrelkType = layer_type;
    section->LayerPropMatConcObj = concrete;
    section->LayerTrelkThick = thick;
    section->LayerTrelkThickBend = bend;
    section->LayerTrelkThickRebarV = rebar_v;
    section->LayerTrelkThickRebarH = rebar_h;
    return section;
  }

  RecordList& List(Component c) { return store.Components(c); }
  RecordRef Rec(Component c, int n) { return store.Components(c).Record(n); }
  std::vector<std::uint8_t> Bytes(Component c, int n) {
    const auto bytes = store.Components(c).RecordBytes(n);
    return {bytes.begin(), bytes.end()};
  }
  std::string NameOf(Component c, int n) {
    std::string name = Rec(c, n).GetText(xsect_head::Name);
    return name.substr(0, name.find_last_not_of(' ') + 1);
  }
  void Fill() { FillTrelkCrossSections(model, store); }

  test_support::FakeHostModel host;
  VaskModelObj model;
  TrelkStore store;
};

// ---- Layouts ----

TEST_F(CrossSectionTranslation, LayoutSizesAreThoseOfTheStoreLists) {
  EXPECT_EQ(xsect_beam_rec::kSize, ComponentInfo(Component::XecBeam).record_size);
  EXPECT_EQ(xsect_column_rec::kSize, ComponentInfo(Component::XecColumn).record_size);
  EXPECT_EQ(xsect_wall_elastic_rec::kSize, ComponentInfo(Component::XecWallElastic).record_size);
  EXPECT_EQ(xsect_wall_inel_rec::kSize, ComponentInfo(Component::XecWallInel).record_size);
  EXPECT_EQ(xsect_wall_inel_rec::kSubRecordSize,
            ComponentInfo(Component::XecWallInel).sub_record_size);
  EXPECT_EQ(xsect_slab_rec::kSize, ComponentInfo(Component::XecSlab).record_size);
}

TEST(CrossSectionLayout, FibreSlotsRunOneToSixteen) {
  namespace f = xsect_wall_inel_rec;
  EXPECT_EQ(f::FibreGroup(1).offset, 171u);
  EXPECT_EQ(f::FibreGroup(16).offset, 186u);
  EXPECT_EQ(f::FibreFlag(16).offset, 202u);
  EXPECT_EQ(f::FibreIsConcrete(16).offset, 233u);
  EXPECT_EQ(f::FibreMaterial(16).offset, 265u);
  EXPECT_EQ(f::FibreArea(16).offset, 327u);
  EXPECT_EQ(f::FibrePosition(16).offset, 391u);
  EXPECT_THROW(f::FibreArea(17), std::out_of_range);
  EXPECT_THROW(f::FibrePosition(0), std::out_of_range);
}

// ---- Full records, byte for byte ----

TEST_F(CrossSectionTranslation, SteelBeamRecordBytes) {
  VaskPropFrameSectObj* w = Frame("W14", 1, Steel());
  w->area = 12.5;
  w->TorsionConst = 0.75;
  w->I22 = 40.0;
  w->I33 = 300.0;
  w->As2 = 5.0;
  w->As3 = 6.25;
  w->t2 = 0.2;
  w->t3 = 0.4;
  w->tf = 0.01;
  w->tw = 0.008;
  Fill();
  ASSERT_EQ(List(Component::XecBeam).Count(), 1);
  ExpectedBytes e;
  e.Ascii("XecBmS-W14", 40).Short(1).Ascii("", 20).Ascii("", 24);
  e.Byte(0).Byte(kUnitLength).Byte(kUnitForce).Byte(4).Byte(1).Byte(0);  // 86 to 91
  e.Zeros(12);                                                           // 92 to 103
  e.Single(12.5f).Single(0.75f).Single(40.0f).Single(300.0f).Single(5.0f).Single(6.25f);
  e.Single(1.0f).Single(1.0f);  // 128, 132
  e.Zeros(8);                   // 136 to 143
  e.Single(200000.0f).Single(static_cast<float>(0.3)).Single(80000.0f);
  e.Single(static_cast<float>(0.2)).Single(static_cast<float>(0.4));
  e.Single(static_cast<float>(0.01)).Single(static_cast<float>(0.008));  // ends at 172
  e.Zeros(400 - 172).Short(1).Zeros(424 - 402);
  ASSERT_EQ(e.Size(), 424u);
  EXPECT_EQ(Bytes(Component::XecBeam, 1), e.Bytes());
}

TEST_F(CrossSectionTranslation, ConcreteColumnRecordBytes) {
  Frame("W14", 1, Steel());
  VaskPropFrameSectObj* c = Frame("C600", 8, Concrete());
  c->area = 0.36;
  c->TorsionConst = 0.0182;
  c->I22 = 0.0108;
  c->I33 = 0.0108;
  c->As2 = 0.3;
  c->As3 = 0.3;
  Fill();
  ASSERT_EQ(List(Component::XecColumn).Count(), 2);
  ExpectedBytes e;
  e.Ascii("XecColC-C600", 40).Short(2).Ascii("", 20).Ascii("", 24);
  e.Byte(0).Byte(kUnitLength).Byte(kUnitForce).Byte(6).Byte(2).Byte(0);  // 86 to 91
  e.Zeros(11);                                                           // 92 to 102
  e.Single(static_cast<float>(0.36)).Single(static_cast<float>(0.0182));
  e.Single(static_cast<float>(0.0108)).Single(static_cast<float>(0.0108));
  e.Single(static_cast<float>(0.3)).Single(static_cast<float>(0.3));
  e.Single(1.0f).Single(1.0f);  // 127, 131
  e.Zeros(16);                  // 135 to 150
  e.Single(25000.0f).Single(static_cast<float>(0.2)).Single(10000.0f);
  e.Zeros(16);  // Depth2 to WebThickness: a host section carries no dimensions
  e.Zeros(663 - 179).Short(2).Zeros(687 - 665);
  ASSERT_EQ(e.Size(), 687u);
  EXPECT_EQ(Bytes(Component::XecColumn, 2), e.Bytes());
}

TEST_F(CrossSectionTranslation, ElasticWallRecordBytes) {
  ThinShell("S1", Concrete());
  Fill();
  ASSERT_EQ(List(Component::XecWallElastic).Count(), 1);
  ExpectedBytes e;
  e.Ascii("XecWallElaC-S1", 40).Short(1).Zeros(20).Zeros(24);
  e.Byte(11).Byte(kUnitLength).Byte(kUnitForce).Byte(1).Byte(0);  // 86 to 90
  e.Zeros(4).Short(0);                                            // Word1 at 95
  e.Zeros(6).Single(static_cast<float>(0.35));                    // Thickness at 103
  e.Zeros(12);                                                    // 107 to 118
  e.Single(static_cast<float>(0.3)).Single(25000.0f).Single(static_cast<float>(0.3));
  e.Single(static_cast<float>(0.2));  // Poisson at 131
  e.Zeros(187 - 135).Short(4);
  e.Zeros(219 - 189).Short(3);  // the concrete's elastic fibre material
  e.Zeros(439 - 221);
  ASSERT_EQ(e.Size(), 439u);
  EXPECT_EQ(Bytes(Component::XecWallElastic, 1), e.Bytes());
}

// The thin-shell fibre wall of a 0.35 concrete shell with the rebar material's fibre 1.
// Rebar area: 0.4 narrowed to single is 0.4000000059604645; x 0.35 / 200 in double gives
// 7.000000104e-4, which rounds to the single 0x3A378035. (Taking 0.4 in double would give
// 0x3A378034, as would doing it all in single.) Concrete positions step from the single
// 0.5 / 6 - 0.5 by the single 1 / 6, each sum rounded to single.
TEST_F(CrossSectionTranslation, InelasticWallRecordBytes) {
  Rebar();
  ThinShell("S1", Concrete());
  Fill();
  ASSERT_EQ(List(Component::XecWallInel).Count(), 1);
  const float concrete_area = static_cast<float>(0.35 / 6);
  ExpectedBytes e;
  e.Ascii("Notused-XSecWallCIne-S1", 40).Short(1).Ascii("", 20).Ascii("", 24);
  e.Byte(10).Byte(kUnitLength).Byte(kUnitForce).Byte(1).Byte(8).Byte(0).Byte(0);  // 86 to 92
  e.Zeros(2);                                                  // 93, 94
  e.Short(2).Short(6).Short(0).Short(0).Short(1);              // 95 to 104
  e.Zeros(6);                                                  // 105 to 110
  e.Single(static_cast<float>(0.4)).Single(static_cast<float>(0.3)).Single(0.0f);
  e.Single(static_cast<float>(0.35)).Single(0.0f).Single(0.0f);  // 123, 127, 131
  e.Zeros(20);                                                   // 135 to 154
  e.Single(static_cast<float>(0.3)).Single(25000.0f).Single(static_cast<float>(0.3));
  e.Single(static_cast<float>(0.2));  // Poisson at 167
  for (int k = 0; k < 16; ++k) e.Byte(k < 8 ? 4 : 0);                        // FibreGroup
  for (int k = 0; k < 16; ++k) e.Byte(k < 8 ? 1 : 0);                        // FibreFlag
  for (int k = 0; k < 16; ++k) e.Short(k < 6 ? 1 : 0);                       // FibreIsConcrete
  for (int k = 0; k < 16; ++k) e.Short(k < 6 ? 2 : (k < 8 ? 1 : 0));         // FibreMaterial
  for (int k = 0; k < 6; ++k) e.Single(-concrete_area);                      // FibreArea
  e.Single(FromBits(0xBA378035u)).Single(FromBits(0xBA378035u)).Zeros(32);
  e.Single(FromBits(0xBED55555u)).Single(FromBits(0xBE7FFFFFu));             // FibrePosition
  e.Single(FromBits(0xBDAAAAA8u)).Single(FromBits(0x3DAAAAAEu));
  e.Single(FromBits(0x3E800001u)).Single(FromBits(0x3ED55556u));
  e.Single(-0.25f).Single(0.25f).Zeros(32);  // ends at 395
  e.Zeros(455 - 395);
  ASSERT_EQ(e.Size(), 455u);
  EXPECT_EQ(Bytes(Component::XecWallInel, 1), e.Bytes());
  // HasSubRecord 0: the sub-record stays all zero.
  for (std::uint8_t b : List(Component::XecWallInel).SubRecordBytes(1)) ASSERT_EQ(b, 0);
}

TEST_F(CrossSectionTranslation, SlabRecordBytes) {
  ThinShell("S1", Concrete());
  Fill();
  ASSERT_EQ(List(Component::XecSlab).Count(), 1);
  ExpectedBytes e;
  e.Ascii("XecElaSlabC-S1", 40).Short(1).Zeros(20).Zeros(24);
  e.Byte(8).Byte(kUnitLength).Byte(kUnitForce).Byte(0);                  // 86 to 89
  e.Zeros(2).Short(0).Short(0);                                          // Word1 92, Word2 94
  e.Zeros(6).Single(static_cast<float>(0.35)).Single(static_cast<float>(0.3));  // 102, 106
  e.Zeros(12).Single(static_cast<float>(0.35)).Single(static_cast<float>(23.5616));  // 122
  e.Zeros(262 - 130);
  e.Byte(4).Byte(4).Short(6).Short(5).Byte(4).Byte(4).Short(6).Short(5);  // 262 to 273
  ASSERT_EQ(e.Size(), 274u);
  EXPECT_EQ(Bytes(Component::XecSlab, 1), e.Bytes());
}

// ---- Frame passes ----

TEST_F(CrossSectionTranslation, ShapeIsOneForSteelIShapeTwoForConcreteRectangleElseZero) {
  VaskPropMaterialObj* steel = Steel();
  VaskPropMaterialObj* concrete = Concrete();
  Frame("SteelI", 1, steel);
  Frame("SteelBox", 8, steel);
  Frame("ConcRect", 8, concrete);
  Frame("ConcI", 1, concrete);
  Frame("ConcTaper", 14, concrete);
  Fill();
  namespace b = xsect_beam_rec;
  namespace c = xsect_column_rec;
  ASSERT_EQ(List(Component::XecBeam).Count(), 5);
  ASSERT_EQ(List(Component::XecColumn).Count(), 5);
  const std::vector<std::string> names = {"SteelI", "SteelBox", "ConcRect", "ConcI", "ConcTaper"};
  const std::vector<int> shapes = {1, 0, 2, 0, 0};
  const std::vector<int> beam_kinds = {4, 4, 3, 3, 3};
  const std::vector<int> column_kinds = {7, 7, 6, 6, 6};
  for (int n = 1; n <= 5; ++n) {
    const std::string steel_or_conc = n <= 2 ? "S-" : "C-";
    EXPECT_EQ(NameOf(Component::XecBeam, n), "XecBm" + steel_or_conc + names[n - 1]);
    EXPECT_EQ(NameOf(Component::XecColumn, n), "XecCol" + steel_or_conc + names[n - 1]);
    EXPECT_EQ(Rec(Component::XecBeam, n).GetInt(b::Shape), shapes[n - 1]) << n;
    EXPECT_EQ(Rec(Component::XecColumn, n).GetInt(c::Shape), shapes[n - 1]) << n;
    EXPECT_EQ(Rec(Component::XecBeam, n).GetInt(b::Kind), beam_kinds[n - 1]) << n;
    EXPECT_EQ(Rec(Component::XecColumn, n).GetInt(c::Kind), column_kinds[n - 1]) << n;
  }
}

TEST_F(CrossSectionTranslation, SteelSectionEndsWithBeamIdEqualToColumnRecordNumber) {
  VaskPropFrameSectObj* conc = Frame("C1", 8, Concrete());
  VaskPropFrameSectObj* s1 = Frame("S1", 1, Steel());
  VaskPropFrameSectObj* s2 = Frame("S2", 1, Steel("S355"));
  Fill();
  EXPECT_EQ(s1->idTrelkXsectSteelCol, 1);
  EXPECT_EQ(s1->idTrelkXsectSteelBeam, 1);
  EXPECT_EQ(s2->idTrelkXsectSteelCol, 2);
  EXPECT_EQ(s2->idTrelkXsectSteelBeam, 2);
  EXPECT_EQ(NameOf(Component::XecColumn, s2->idTrelkXsectSteelBeam), "XecColS-S2");
  EXPECT_EQ(Rec(Component::XecColumn, 2).GetInt(xsect_column_rec::RecordNumber), 2);
  // The concrete section comes after every steel one in both lists.
  EXPECT_EQ(conc->idTrelkXsectConcBeam, 3);
  EXPECT_EQ(conc->idTrelkXsectConcCol, 3);
  EXPECT_EQ(NameOf(Component::XecBeam, 3), "XecBmC-C1");
  EXPECT_EQ(NameOf(Component::XecColumn, 3), "XecColC-C1");
  EXPECT_EQ(s1->idTrelkXsectConcBeam, 0);
  EXPECT_EQ(conc->idTrelkXsectSteelBeam, 0);
}

TEST_F(CrossSectionTranslation, EmbeddedSectionIsNamedByItsIndexAlone) {
  VaskPropMaterialObj* concrete = Concrete();
  Frame("Girder", 8, concrete);
  VaskPropFrameSectObj* e1 = Embedded("EmbeddedBeamOfSlabS1", concrete);
  VaskPropFrameSectObj* e2 =
      Embedded("A label long enough that it would never fit in forty characters", concrete);
  e2->t2 = 0.3;
  e2->t3 = 0.5;
  Fill();
  ASSERT_EQ(List(Component::XecBeam).Count(), 3);
  EXPECT_EQ(NameOf(Component::XecBeam, 1), "XecBmC-Girder");
  EXPECT_EQ(NameOf(Component::XecBeam, 2), "XecEmbed-1");
  EXPECT_EQ(NameOf(Component::XecBeam, 3), "XecEmbed-2");
  EXPECT_EQ(e1->idTrelkXsectEmbedBeam, 2);
  EXPECT_EQ(e2->idTrelkXsectEmbedBeam, 3);
  RecordRef rec = Rec(Component::XecBeam, 3);
  EXPECT_EQ(rec.GetInt(xsect_beam_rec::Kind), 3);
  EXPECT_EQ(rec.GetInt(xsect_beam_rec::Shape), 2);
  EXPECT_EQ(rec.GetReal(xsect_beam_rec::Depth2), static_cast<float>(0.3));
  EXPECT_EQ(rec.GetReal(xsect_beam_rec::Depth3), static_cast<float>(0.5));
  EXPECT_EQ(rec.GetInt(xsect_beam_rec::RecordNumberAgain), 3);
  // Embedded sections make beams only.
  EXPECT_EQ(List(Component::XecColumn).Count(), 1);
  EXPECT_EQ(e1->idTrelkXsectConcBeam, 0);
  EXPECT_EQ(e1->idTrelkXsectConcCol, 0);
}

TEST_F(CrossSectionTranslation, SectionsWithoutMaterialAreSkippedButKeepTheirIndex) {
  VaskPropMaterialObj* concrete = Concrete();
  VaskPropFrameSectObj* none = Frame("NoMat", 8, nullptr);
  Frame("A label of forty-one characters, exactly.", 8, concrete);
  VaskPropFrameSectObj* e_none = Embedded("E1", nullptr);
  Embedded("E2", concrete);
  VaskPropAreaSectObj* shell = ThinShell("Bare", nullptr);
  Fill();
  ASSERT_EQ(List(Component::XecBeam).Count(), 2);
  ASSERT_EQ(List(Component::XecColumn).Count(), 1);
  // The fallback name uses the source index 2 plus 1, not the record number.
  EXPECT_EQ(NameOf(Component::XecBeam, 1), "XecBmC-3");
  EXPECT_EQ(NameOf(Component::XecColumn, 1), "XecColC-3");
  EXPECT_EQ(NameOf(Component::XecBeam, 2), "XecEmbed-2");
  EXPECT_EQ(none->idTrelkXsectConcBeam, 0);
  EXPECT_EQ(none->idTrelkXsectConcCol, 0);
  EXPECT_EQ(e_none->idTrelkXsectEmbedBeam, 0);
  EXPECT_EQ(List(Component::XecWallElastic).Count(), 0);
  EXPECT_EQ(List(Component::XecWallInel).Count(), 0);
  EXPECT_EQ(List(Component::XecSlab).Count(), 0);
  EXPECT_EQ(shell->idTrelkXSectWallEla, 0);
  EXPECT_EQ(shell->idTrelkXSectSlabEla, 0);
}

TEST_F(CrossSectionTranslation, MaterialsOfOtherTypesMakeNoFrameSection) {
  VaskPropMaterialObj* rebar = Rebar();
  VaskPropFrameSectObj* section = Frame("Bar", 8, rebar);
  Fill();
  EXPECT_EQ(List(Component::XecBeam).Count(), 0);
  EXPECT_EQ(List(Component::XecColumn).Count(), 0);
  EXPECT_EQ(section->idTrelkXsectConcBeam, 0);
  EXPECT_EQ(section->idTrelkXsectSteelBeam, 0);
}

TEST_F(CrossSectionTranslation, BeamAndColumnListsRaiseMaxComponentCountByCapacity) {
  VaskPropMaterialObj* steel = Steel();
  Frame("S1", 1, steel);
  Fill();
  EXPECT_EQ(store.MaxComponentCount, 1);

  store.InitTrelkStore();
  Frame("S2", 1, steel);
  Fill();
  // Two beams: the beam list's capacity becomes 2 + 10.
  EXPECT_EQ(List(Component::XecBeam).Count(), 2);
  EXPECT_EQ(List(Component::XecBeam).Capacity(), 12);
  EXPECT_EQ(store.MaxComponentCount, 12);

  store.InitTrelkStore();
  for (int i = 3; i <= 13; ++i) Frame("S" + std::to_string(i), 1, steel);
  Fill();
  EXPECT_EQ(List(Component::XecColumn).Count(), 13);
  EXPECT_EQ(List(Component::XecColumn).Capacity(), 23);
  EXPECT_EQ(store.MaxComponentCount, 23);
}

TEST_F(CrossSectionTranslation, WallAndSlabListsRaiseMaxComponentCountByCount) {
  VaskPropMaterialObj* concrete = Concrete();
  for (int i = 1; i <= 3; ++i) ThinShell("S" + std::to_string(i), concrete);
  Fill();
  EXPECT_EQ(List(Component::XecWallElastic).Capacity(), 12);
  EXPECT_EQ(List(Component::XecSlab).Capacity(), 12);
  EXPECT_EQ(store.MaxComponentCount, 3);
}

// ---- Area passes ----

TEST_F(CrossSectionTranslation, ThinConcreteShellGivesElasticWallNotusedFibreWallAndSlab) {
  VaskPropAreaSectObj* shell = ThinShell("Wall200", Concrete());
  Fill();
  ASSERT_EQ(List(Component::XecWallElastic).Count(), 1);
  ASSERT_EQ(List(Component::XecWallInel).Count(), 1);
  ASSERT_EQ(List(Component::XecSlab).Count(), 1);
  EXPECT_EQ(NameOf(Component::XecWallElastic, 1), "XecWallElaC-Wall200");
  EXPECT_EQ(NameOf(Component::XecWallInel, 1), "Notused-XSecWallCIne-Wall200");
  EXPECT_EQ(NameOf(Component::XecSlab, 1), "XecElaSlabC-Wall200");
  EXPECT_EQ(Rec(Component::XecWallElastic, 1).GetInt(xsect_wall_elastic_rec::Kind), 11);
  EXPECT_EQ(Rec(Component::XecWallInel, 1).GetInt(xsect_wall_inel_rec::Kind), 10);
  EXPECT_EQ(Rec(Component::XecSlab, 1).GetInt(xsect_slab_rec::Kind), 8);
  EXPECT_EQ(shell->idTrelkXSectWallEla, 1);
  EXPECT_EQ(shell->idTrelkXSectWallIne, 1);
  EXPECT_EQ(shell->idTrelkXSectSlabEla, 1);
  EXPECT_EQ(shell->idTrelkXSectGWallEla, 0);
  EXPECT_EQ(shell->idTrelkXSectGWallIneH, 0);
  EXPECT_EQ(shell->idTrelkXSectGWallIneV, 0);
}

TEST_F(CrossSectionTranslation, ThinSteelShellGivesElasticWallAndSlabOnly) {
  VaskPropAreaSectObj* shell = ThinShell("Plate", Steel(), 0.02, 0.02);
  Fill();
  ASSERT_EQ(List(Component::XecWallElastic).Count(), 1);
  ASSERT_EQ(List(Component::XecSlab).Count(), 1);
  EXPECT_EQ(List(Component::XecWallInel).Count(), 0);
  EXPECT_EQ(NameOf(Component::XecWallElastic, 1), "XecWallElaS-Plate");
  EXPECT_EQ(NameOf(Component::XecSlab, 1), "XecElaSlabS-Plate");
  EXPECT_EQ(Rec(Component::XecWallElastic, 1).GetInt(xsect_wall_elastic_rec::MaterialId), 4);
  EXPECT_EQ(Rec(Component::XecSlab, 1).GetInt(xsect_slab_rec::MaterialId), 6);
  EXPECT_EQ(Rec(Component::XecSlab, 1).GetInt(xsect_slab_rec::MaterialIdAgain), 6);
  EXPECT_EQ(Rec(Component::XecSlab, 1).GetReal(xsect_slab_rec::UnitWeight), 77.0);
  EXPECT_EQ(shell->idTrelkXSectWallIne, 0);
}

TEST_F(CrossSectionTranslation, OnlyShellSectionsTakePart) {
  VaskPropAreaSectObj* membrane = ThinShell("Membrane", Concrete());
  membrane->PropType = 2;
  VaskPropAreaSectObj* layered = Layered("Deck", 3, Concrete("C40"));
  layered->PropType = 3;
  Fill();
  EXPECT_EQ(List(Component::XecWallElastic).Count(), 0);
  EXPECT_EQ(List(Component::XecWallInel).Count(), 0);
  EXPECT_EQ(List(Component::XecSlab).Count(), 0);
}

TEST_F(CrossSectionTranslation, LayeredTypeZeroGivesNoWallRecord) {
  VaskPropAreaSectObj* section = Layered("Transformed", 0, Concrete());
  section->idTrelkXSectWallEla = -7;
  section->idTrelkXSectWallIne = -7;
  section->idTrelkXSectGWallIneH = -7;
  Fill();
  EXPECT_EQ(List(Component::XecWallElastic).Count(), 0);
  EXPECT_EQ(List(Component::XecWallInel).Count(), 0);
  EXPECT_EQ(List(Component::XecSlab).Count(), 0);
  // Members no pass set keep what they held.
  EXPECT_EQ(section->idTrelkXSectWallEla, -7);
  EXPECT_EQ(section->idTrelkXSectWallIne, -7);
  EXPECT_EQ(section->idTrelkXSectGWallIneH, -7);
  EXPECT_EQ(section->idTrelkXSectGWallEla, 0);
}

TEST_F(CrossSectionTranslation, LayeredWithoutGoverningConcreteGivesNoWallRecord) {
  Layered("NoConc", 3, nullptr);
  Layered("NoConcFibre", 1, nullptr);
  Fill();
  EXPECT_EQ(List(Component::XecWallElastic).Count(), 0);
  EXPECT_EQ(List(Component::XecWallInel).Count(), 0);
}

TEST_F(CrossSectionTranslation, LayeredTypeOneGivesOneVerticalFibreWall) {
  Rebar("A615", 9);
  VaskPropAreaSectObj* section = Layered("Fibre", 1, Concrete(), 0.25, 0.2, 0.0025, 0.001);
  Fill();
  EXPECT_EQ(List(Component::XecWallElastic).Count(), 0);
  ASSERT_EQ(List(Component::XecWallInel).Count(), 1);
  EXPECT_EQ(NameOf(Component::XecWallInel, 1), "XecWallCIneV-Fibre");
  EXPECT_EQ(section->idTrelkXSectWallIne, 1);
  namespace f = xsect_wall_inel_rec;
  RecordRef rec = Rec(Component::XecWallInel, 1);
  EXPECT_EQ(rec.GetInt(f::Kind), 10);
  EXPECT_EQ(rec.GetReal(f::Thickness), static_cast<float>(0.25));
  EXPECT_EQ(rec.GetReal(f::BendingThickness), static_cast<float>(0.2));
  EXPECT_EQ(rec.GetReal(f::BendingThicknessAgain), static_cast<float>(0.2));
  // 100 x 0.0025 / 0.25, the vertical rebar.
  EXPECT_EQ(rec.GetReal(f::RebarPercent), static_cast<float>(100 * 0.0025 / 0.25));
  EXPECT_EQ(rec.GetInt(f::FibreMaterial(1)), 2);
  EXPECT_EQ(rec.GetInt(f::FibreMaterial(7)), 9);
}

TEST_F(CrossSectionTranslation, LayeredTypeTwoGivesElasticGeneralWallAndHorizontalRecordOnly) {
  VaskPropAreaSectObj* section = Layered("GWall", 2, Concrete(), 0.3, 0.25, 0.004, 0.003);
  Fill();
  ASSERT_EQ(List(Component::XecWallElastic).Count(), 1);
  EXPECT_EQ(NameOf(Component::XecWallElastic, 1), "XecGWallElaH-GWall");
  namespace el = xsect_wall_elastic_rec;
  RecordRef ela = Rec(Component::XecWallElastic, 1);
  EXPECT_EQ(ela.GetInt(el::Kind), 13);
  EXPECT_EQ(ela.GetInt(el::MaterialId), 3);
  EXPECT_EQ(ela.GetReal(el::Thickness), static_cast<float>(0.3));
  EXPECT_EQ(ela.GetReal(el::BendingThickness), static_cast<float>(0.25));
  EXPECT_EQ(section->idTrelkXSectGWallEla, 1);
  ASSERT_EQ(List(Component::XecWallInel).Count(), 1);
  EXPECT_EQ(NameOf(Component::XecWallInel, 1), "XecGWallCIneH-GWall");
  RecordRef ine = Rec(Component::XecWallInel, 1);
  EXPECT_EQ(ine.GetInt(xsect_wall_inel_rec::Kind), 12);
  EXPECT_EQ(ine.GetReal(xsect_wall_inel_rec::RebarPercent), static_cast<float>(100 * 0.003 / 0.3));
  EXPECT_EQ(section->idTrelkXSectGWallIneH, 1);
  EXPECT_EQ(section->idTrelkXSectGWallIneV, 0);
  EXPECT_EQ(section->idTrelkXSectWallIne, 0);
  EXPECT_EQ(List(Component::XecSlab).Count(), 0);
}

TEST_F(CrossSectionTranslation, LayeredTypeThreeGivesNoElasticWallAndHorizontalThenVertical) {
  VaskPropMaterialObj* concrete = Concrete();
  VaskPropAreaSectObj* a = Layered("Core", 3, concrete, 0.4, 0.4, 0.006, 0.002);
  VaskPropAreaSectObj* b = Layered("Core2", 3, concrete, 0.2, 0.2, 0.001, 0.002);
  Fill();
  EXPECT_EQ(List(Component::XecWallElastic).Count(), 0);
  EXPECT_EQ(a->idTrelkXSectGWallEla, 0);
  ASSERT_EQ(List(Component::XecWallInel).Count(), 4);
  EXPECT_EQ(NameOf(Component::XecWallInel, 1), "XecGWallCIneH-Core");
  EXPECT_EQ(NameOf(Component::XecWallInel, 2), "XecGWallCIneV-Core");
  EXPECT_EQ(NameOf(Component::XecWallInel, 3), "XecGWallCIneH-Core2");
  EXPECT_EQ(NameOf(Component::XecWallInel, 4), "XecGWallCIneV-Core2");
  EXPECT_EQ(a->idTrelkXSectGWallIneH, 1);
  EXPECT_EQ(a->idTrelkXSectGWallIneV, 2);
  EXPECT_EQ(b->idTrelkXSectGWallIneH, 3);
  EXPECT_EQ(b->idTrelkXSectGWallIneV, 4);
  namespace f = xsect_wall_inel_rec;
  EXPECT_EQ(Rec(Component::XecWallInel, 1).GetReal(f::RebarPercent),
            static_cast<float>(100 * 0.002 / 0.4));
  EXPECT_EQ(Rec(Component::XecWallInel, 2).GetReal(f::RebarPercent),
            static_cast<float>(100 * 0.006 / 0.4));
  for (int n = 1; n <= 4; ++n) {
    EXPECT_EQ(Rec(Component::XecWallInel, n).GetInt(f::Kind), 12);
    EXPECT_EQ(Rec(Component::XecWallInel, n).GetInt(f::RecordNumberAgain), n);
  }
}

TEST_F(CrossSectionTranslation, NumbersRunOnAcrossThePassesOfOneList) {
  VaskPropMaterialObj* concrete = Concrete();
  VaskPropAreaSectObj* general = Layered("G", 2, concrete);
  VaskPropAreaSectObj* fibre = Layered("F", 1, concrete);
  VaskPropAreaSectObj* thin = ThinShell("T", concrete);
  Fill();
  // Elastic walls: the thin-shell pass before the general-wall pass.
  EXPECT_EQ(thin->idTrelkXSectWallEla, 1);
  EXPECT_EQ(general->idTrelkXSectGWallEla, 2);
  // Inelastic walls: the fibre-wall pass in section order, then the general-wall pass.
  EXPECT_EQ(fibre->idTrelkXSectWallIne, 1);
  EXPECT_EQ(thin->idTrelkXSectWallIne, 2);
  EXPECT_EQ(general->idTrelkXSectGWallIneH, 3);
  EXPECT_EQ(NameOf(Component::XecWallInel, 1), "XecWallCIneV-F");
  EXPECT_EQ(NameOf(Component::XecWallInel, 2), "Notused-XSecWallCIne-T");
  EXPECT_EQ(NameOf(Component::XecWallInel, 3), "XecGWallCIneH-G");
  EXPECT_EQ(Rec(Component::XecWallInel, 3).GetInt(xsect_wall_inel_rec::RecordNumber), 3);
}

TEST_F(CrossSectionTranslation, ListsStartAgainFromOneOnASecondRun) {
  VaskPropMaterialObj* concrete = Concrete();
  Frame("C1", 8, concrete);
  VaskPropAreaSectObj* thin = ThinShell("T", concrete);
  Fill();
  Fill();
  EXPECT_EQ(List(Component::XecBeam).Count(), 1);
  EXPECT_EQ(List(Component::XecColumn).Count(), 1);
  EXPECT_EQ(List(Component::XecWallElastic).Count(), 1);
  EXPECT_EQ(List(Component::XecWallInel).Count(), 1);
  EXPECT_EQ(thin->idTrelkXSectWallIne, 1);
  // The slab list alone is not set back: its second record is added, yet the slab is
  // numbered and written as record 1.
  EXPECT_EQ(List(Component::XecSlab).Count(), 2);
  EXPECT_EQ(thin->idTrelkXSectSlabEla, 1);
  for (std::uint8_t b : List(Component::XecSlab).RecordBytes(2)) ASSERT_EQ(b, 0);
}

TEST_F(CrossSectionTranslation, ThinShellRebarPercentIsAlwaysPointFour) {
  VaskPropAreaSectObj* shell = ThinShell("S", Concrete(), 0.5, 0.5);
  shell->LayerTrelkThick = 0.5;
  shell->LayerTrelkThickRebarV = 0.01;
  shell->LayerTrelkThickRebarH = 0.02;
  Fill();
  RecordRef rec = Rec(Component::XecWallInel, 1);
  EXPECT_EQ(rec.GetReal(xsect_wall_inel_rec::RebarPercent), static_cast<float>(0.4));
  EXPECT_EQ(rec.ByteAt(111), 0xCD);
  EXPECT_EQ(rec.ByteAt(112), 0xCC);
  EXPECT_EQ(rec.ByteAt(113), 0xCC);
  EXPECT_EQ(rec.ByteAt(114), 0x3E);
}

TEST_F(CrossSectionTranslation, ZeroVerticalRebarGivesNegativeZeroAreaAndKeepsTheFibres) {
  Rebar("A615", 1);
  Layered("Plain", 1, Concrete(), 0.25, 0.25, 0.0, 0.001);
  Fill();
  namespace f = xsect_wall_inel_rec;
  RecordRef rec = Rec(Component::XecWallInel, 1);
  EXPECT_EQ(rec.GetInt(f::FibreCount), 8);
  EXPECT_EQ(rec.GetInt(f::RebarFibreCount), 2);
  EXPECT_EQ(rec.GetReal(f::RebarPercent), 0.0);
  for (int k = 7; k <= 8; ++k) {
    const std::uint32_t at = f::FibreArea(k).offset;
    EXPECT_EQ(rec.ByteAt(at), 0x00) << k;
    EXPECT_EQ(rec.ByteAt(at + 1), 0x00) << k;
    EXPECT_EQ(rec.ByteAt(at + 2), 0x00) << k;
    EXPECT_EQ(rec.ByteAt(at + 3), 0x80) << k;
    EXPECT_EQ(rec.GetInt(f::FibreGroup(k)), 4);
    EXPECT_EQ(rec.GetInt(f::FibreFlag(k)), 1);
    EXPECT_EQ(rec.GetInt(f::FibreIsConcrete(k)), 0);
    EXPECT_EQ(rec.GetInt(f::FibreMaterial(k)), 1);
  }
  EXPECT_EQ(rec.GetReal(f::FibrePosition(7)), -0.25);
  EXPECT_EQ(rec.GetReal(f::FibrePosition(8)), 0.25);
}

TEST_F(CrossSectionTranslation, ZeroConcreteThicknessStopsTheTransferNamingTheSection) {
  Layered("Hollow", 1, Concrete(), 0.0, 0.0, 0.002, 0.0);
  try {
    Fill();
    FAIL() << "no failure";
  } catch (const TransferFailure& failure) {
    EXPECT_NE(std::string(failure.what()).find("\"Hollow\""), std::string::npos)
        << failure.what();
  }
}

TEST_F(CrossSectionTranslation, ZeroConcreteThicknessOfAGeneralWallFailsToo) {
  Layered("Hollow", 2, Concrete(), 0.0, 0.0, 0.0, 0.0);
  EXPECT_THROW(Fill(), TransferFailure);
}

TEST_F(CrossSectionTranslation, HeadTextsHoldSpacesOrZeroBytesByRecordKind) {
  Frame("S", 1, Steel());
  ThinShell("T", Concrete());
  Fill();
  const auto check = [&](Component c, std::uint8_t expected) {
    RecordRef rec = Rec(c, 1);
    for (std::uint32_t at = 42; at < 86; ++at) {
      ASSERT_EQ(rec.ByteAt(at), expected) << "offset " << at;
    }
  };
  check(Component::XecBeam, 0x20);
  check(Component::XecColumn, 0x20);
  check(Component::XecWallInel, 0x20);
  check(Component::XecWallElastic, 0x00);
  check(Component::XecSlab, 0x00);
}

TEST_F(CrossSectionTranslation, NamesFallBackToPrefixAndIndexPlusOne) {
  VaskPropMaterialObj* concrete = Concrete();
  const std::string long_label = "A very long wall section label that overflows";
  ThinShell("  Short  ", concrete);
  ThinShell(long_label, concrete);
  Layered(long_label, 3, concrete);
  Fill();
  EXPECT_EQ(NameOf(Component::XecWallElastic, 1), "XecWallElaC-Short");
  EXPECT_EQ(NameOf(Component::XecWallElastic, 2), "XecWallElaC-3");
  EXPECT_EQ(NameOf(Component::XecWallInel, 2), "Notused-XSecWallCIne-3");
  EXPECT_EQ(NameOf(Component::XecWallInel, 3), "XecGWallCIneH-4");
  EXPECT_EQ(NameOf(Component::XecWallInel, 4), "XecGWallCIneV-4");
  EXPECT_EQ(NameOf(Component::XecSlab, 2), "XecElaSlabC-3");
}

// ---- The rebar fibre material ----

TEST_F(CrossSectionTranslation, RebarFibresTakeNoMaterialWhenThereIsNoSteelOrRebar) {
  Layered("W", 1, Concrete());
  Fill();
  RecordRef rec = Rec(Component::XecWallInel, 1);
  EXPECT_EQ(rec.GetInt(xsect_wall_inel_rec::FibreMaterial(7)), 0);
  EXPECT_EQ(rec.GetInt(xsect_wall_inel_rec::FibreMaterial(8)), 0);
}

TEST_F(CrossSectionTranslation, RebarFibresTakeTheLastSteelsElasticFibreWithoutRebar) {
  Steel("S1")->idTrelkElasticFiber = 3;
  Layered("W", 1, Concrete());
  Steel("S2")->idTrelkElasticFiber = 7;
  Fill();
  EXPECT_EQ(Rec(Component::XecWallInel, 1).GetInt(xsect_wall_inel_rec::FibreMaterial(8)), 7);
}

TEST_F(CrossSectionTranslation, RebarFibresTakeTheLastRebarEvenWhenSteelComesAfterIt) {
  Rebar("R1", 1);
  Rebar("R2", 2);
  Steel("S1")->idTrelkElasticFiber = 9;
  Layered("W", 1, Concrete());
  Fill();
  RecordRef rec = Rec(Component::XecWallInel, 1);
  EXPECT_EQ(rec.GetInt(xsect_wall_inel_rec::FibreMaterial(7)), 2);
  EXPECT_EQ(rec.GetInt(xsect_wall_inel_rec::FibreMaterial(8)), 2);
}

// ---- The fibre table ----

class FibreLayout : public ::testing::Test {
 protected:
  FibreLayout() {
    store.InitTrelkStore();
    AddTrelkXecWallInel(store);
  }
  RecordRef Rec() { return store.Components(Component::XecWallInel).Record(1); }
  TrelkStore store;
};

// Each concrete position is the single-precision sum of the one before and the single
// 1/6 (0x3E2AAAAB), from the single 0.5/6 - 0.5 (0xBED55555).
TEST_F(FibreLayout, SixConcreteFibresStepInSinglePrecision) {
  LayOutTrelkWallFibres(store, 1, 6, 2, 11, 12, 0.3, 0.5);
  namespace f = xsect_wall_inel_rec;
  const std::uint32_t expected[] = {0xBED55555u, 0xBE7FFFFFu, 0xBDAAAAA8u,
                                    0x3DAAAAAEu, 0x3E800001u, 0x3ED55556u};
  for (int k = 1; k <= 6; ++k) {
    EXPECT_EQ(std::bit_cast<std::uint32_t>(static_cast<float>(Rec().GetReal(f::FibrePosition(k)))),
              expected[k - 1])
        << k;
    EXPECT_EQ(Rec().GetReal(f::FibreArea(k)), -static_cast<float>(0.3 / 6)) << k;
    EXPECT_EQ(Rec().GetInt(f::FibreMaterial(k)), 11);
    EXPECT_EQ(Rec().GetInt(f::FibreIsConcrete(k)), 1);
  }
  EXPECT_NEAR(Rec().GetReal(f::FibrePosition(1)), -0.41667, 1e-5);
  EXPECT_NEAR(Rec().GetReal(f::FibrePosition(6)), 0.41667, 1e-5);
}

TEST_F(FibreLayout, TwoRebarFibresSitAtMinusAndPlusAQuarter) {
  LayOutTrelkWallFibres(store, 1, 6, 2, 11, 12, 0.3, 0.5);
  namespace f = xsect_wall_inel_rec;
  EXPECT_EQ(Rec().GetReal(f::FibrePosition(7)), -0.25);
  EXPECT_EQ(Rec().GetReal(f::FibrePosition(8)), 0.25);
  // 0.5 x 0.3 / 200, stored negative.
  EXPECT_EQ(Rec().GetReal(f::FibreArea(7)), -static_cast<float>(0.5 * 0.3 / 200));
  EXPECT_EQ(Rec().GetInt(f::FibreMaterial(8)), 12);
  EXPECT_EQ(Rec().GetInt(f::FibreCount), 8);
  EXPECT_EQ(Rec().GetInt(f::RebarFibreCount), 2);
  // Slots past the eighth stay empty.
  for (int k = 9; k <= 16; ++k) {
    EXPECT_EQ(Rec().GetInt(f::FibreGroup(k)), 0);
    EXPECT_EQ(Rec().GetReal(f::FibreArea(k)), 0.0);
  }
}

TEST_F(FibreLayout, NoConcreteFibresPutsTheRebarFirst) {
  LayOutTrelkWallFibres(store, 1, 0, 4, 11, 12, 0.3, 1.0);
  namespace f = xsect_wall_inel_rec;
  EXPECT_EQ(Rec().GetInt(f::FibreCount), 4);
  EXPECT_EQ(Rec().GetInt(f::FibreMaterial(1)), 12);
  EXPECT_EQ(Rec().GetReal(f::FibrePosition(1)), -0.375);
  EXPECT_EQ(Rec().GetReal(f::FibrePosition(4)), 0.375);
  EXPECT_EQ(Rec().GetInt(f::FibreGroup(5)), 0);
}

}  // namespace
}  // namespace vtt
