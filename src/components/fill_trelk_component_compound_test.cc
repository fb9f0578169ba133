#include "components/fill_trelk_component_compound.h"

#include <gtest/gtest.h>

#include "source/fake_host_model_test_support.h"
#include "source/vask_model.h"
#include "store/compound_records.h"
#include "store/trelk_store.h"
#include "support/expected_bytes.h"

namespace vtt {
namespace {

using namespace cpd_frame_rec;

class CompoundComponents : public ::testing::Test {
 protected:
  CompoundComponents() {
    store.SetTrelkUnitsFromCode(6);
    store.InitTrelkStore();
  }
  VaskPropMaterialObj* Material(int mat_type, double unit_weight = 0.0) {
    VaskPropMaterialObj* m = model.AddPropMaterial();
    m->Label = "M" + std::to_string(model.PropMatNum());
    m->MatType = mat_type;
    m->UnitWeight = unit_weight;
    return m;
  }
  // A section with the cross-section and FEMA numbers the earlier steps would give it.
  VaskPropFrameSectObj* Section(const std::string& label, VaskPropMaterialObj* material,
                                double area = 0.0) {
    VaskPropFrameSectObj* s = model.AddPropFrameSect();
    s->Label = label;
    s->PropMatObj = material;
    s->area = area;
    s->idTrelkXsectSteelBeam = 21;
    s->idTrelkXsectSteelCol = 22;
    s->idTrelkXsectConcBeam = 23;
    s->idTrelkXsectConcCol = 24;
    s->idTrelkInelasFemaSteelBeam = 31;
    s->idTrelkInelasFemaSteelCol = 32;
    s->idTrelkInelasFemaConcBeam = 33;
    s->idTrelkInelasFemaConcCol = 34;
    return s;
  }
  VaskFrameReleaseObj* Pattern(int component) {
    VaskFrameReleaseObj* r = model.FrameReleaseAdd();
    r->idTrelkXecElaRelease = component;
    return r;
  }
  VaskFrameObj* Frame(VaskPropFrameSectObj* section, int mat_type, int frame_type,
                      VaskFrameReleaseObj* release_i, VaskFrameReleaseObj* release_j) {
    VaskFrameObj* f = model.AddFrame();
    f->Label = "F" + std::to_string(model.FrameNum());
    f->PropFrameSectObj = section;
    f->TrelkMatType = mat_type;
    f->TrelkFrameType = frame_type;
    f->ReleaseIObj = release_i;
    f->ReleaseJObj = release_j;
    return f;
  }
  RecordRef Cpd(int n) { return store.Components(Component::CpdFrame).Record(n); }
  int Count(Component c) { return store.Components(c).Count(); }

  test_support::FakeHostModel host;
  VaskModelObj model{host};
  TrelkStore store;
};

TEST_F(CompoundComponents, SteelSectionGetsItsFourMemberCompoundsInPassOrder) {
  VaskPropFrameSectObj* s = Section("W14", Material(1, 77.0), 0.01);
  FillTrelkCompoundComponents(model, store);
  ASSERT_EQ(Count(Component::CpdFrame), 4);
  EXPECT_EQ(TrimSpaces(Cpd(1).GetText(Name)), "CpdBmS-W14");
  EXPECT_EQ(TrimSpaces(Cpd(2).GetText(Name)), "CpdFemaBmS-W14");
  EXPECT_EQ(TrimSpaces(Cpd(3).GetText(Name)), "CpdColS-W14");
  EXPECT_EQ(TrimSpaces(Cpd(4).GetText(Name)), "CpdFemaColS-W14");
  EXPECT_EQ(s->idTrelkCompoundSteelBeam, 1);
  EXPECT_EQ(s->idTrelkCompoundFemaSteelBeam, 2);
  EXPECT_EQ(s->idTrelkCompoundSteelCol, 3);
  EXPECT_EQ(s->idTrelkCompoundFemaSteelCol, 4);
  // Braces use the column compounds: no brace compound is made.
  EXPECT_EQ(s->idTrelkCompoundSteelBrace, 0);
  EXPECT_EQ(s->idTrelkCompoundFemaSteelBrace, 0);
}

TEST_F(CompoundComponents, OnePartAndTwoPartMemberCompounds) {
  Section("C1", Material(2, 24.0), 0.25);
  FillTrelkCompoundComponents(model, store);
  ASSERT_EQ(Count(Component::CpdFrame), 4);
  // CpdBmC-: one part on the concrete beam section.
  EXPECT_EQ(Cpd(1).GetInt(PartCount), 1);
  EXPECT_EQ(Cpd(1).GetInt(PartSource(1)), 3);
  EXPECT_EQ(Cpd(1).GetInt(PartKind(1)), 3);
  EXPECT_EQ(Cpd(1).GetInt(PartComponent(1)), 23);
  EXPECT_EQ(Cpd(1).GetInt(PartShape(1)), 2);
  EXPECT_EQ(Cpd(1).GetReal(PartLengthI(1)), 1.0);
  EXPECT_EQ(Cpd(1).GetReal(PartLengthJ(1)), 1.0);
  // CpdFemaColC-: two identical halves on the FEMA column.
  EXPECT_EQ(Cpd(4).GetInt(PartCount), 2);
  for (int p : {1, 2}) {
    EXPECT_EQ(Cpd(4).GetInt(PartSource(p)), 1);
    EXPECT_EQ(Cpd(4).GetInt(PartKind(p)), 15);
    EXPECT_EQ(Cpd(4).GetInt(PartComponent(p)), 34);
    EXPECT_EQ(Cpd(4).GetInt(PartShape(p)), 7);
    EXPECT_EQ(Cpd(4).GetReal(PartLengthI(p)), 0.5);
    EXPECT_EQ(Cpd(4).GetReal(PartLengthJ(p)), 0.5);
  }
  EXPECT_EQ(Cpd(4).GetReal(WeightPerLength), static_cast<double>(static_cast<float>(0.25 * 24.0)));
}

TEST_F(CompoundComponents, OnePartCompoundBytes) {
  Section("B", Material(2, 25.0), 0.18);
  FillTrelkCompoundComponents(model, store);
  testing::ExpectedBytes e;
  e.Ascii("CpdBmC-B", 40).Short(1).Byte(2).Byte(3).Byte(4).Byte(1).Byte(0).Byte(1).Byte(1);
  e.Zeros(1).Zeros(16);                          // 49, then the four reserved reals
  e.Byte(3).Zeros(12).Byte(2).Zeros(12).Byte(1).Zeros(12).Zeros(13);  // source, shape, flag, mode
  e.Short(3).Zeros(24).Short(23).Zeros(24);      // kinds, components
  e.Single(1.0f).Zeros(48).Single(1.0f).Zeros(48);  // lengths from I, from J
  e.Zeros(354 - 274).Short(1).Zeros(6).Single(static_cast<float>(0.18 * 25.0)).Zeros(12);
  ASSERT_EQ(e.Size(), 378u);
  const auto bytes = store.Components(Component::CpdFrame).RecordBytes(1);
  EXPECT_EQ(std::vector<std::uint8_t>(bytes.begin(), bytes.end()), e.Bytes());
  // The sub-record follows the compound in the file, all zero.
  for (std::uint8_t b : store.Components(Component::CpdFrame).SubRecordBytes(1)) EXPECT_EQ(b, 0);
}

TEST_F(CompoundComponents, OtherMaterialsGetNoCompound) {
  VaskPropFrameSectObj* s = Section("AL", Material(3));
  VaskFrameReleaseObj* r = Pattern(2);
  Frame(s, 3, 2, r, nullptr);
  FillTrelkCompoundComponents(model, store);
  EXPECT_EQ(Count(Component::CpdFrame), 0);
  EXPECT_EQ(s->idTrelkCompoundSteelBeam, 0);
  EXPECT_EQ(s->idTrelkCompoundConcBeam, 0);
}

TEST_F(CompoundComponents, AFrameWhoseMaterialTypeSaysSteelFitsEvenOnAnotherMaterial) {
  VaskPropFrameSectObj* s = Section("AL", Material(3));
  Frame(s, 2, 2, Pattern(2), nullptr);
  FillTrelkCompoundComponents(model, store);
  ASSERT_EQ(Count(Component::CpdFrame), 1);
  EXPECT_EQ(TrimSpaces(Cpd(1).GetText(Name)), "CpdRelBmSteel-AL");
}

TEST_F(CompoundComponents, ReleasePartsStandAtTheReleasedEnds) {
  VaskPropFrameSectObj* a = Section("A", Material(1));
  VaskPropFrameSectObj* b = Section("B", a->PropMatObj);
  VaskPropFrameSectObj* c = Section("C", a->PropMatObj);
  VaskFrameReleaseObj* r2 = Pattern(2);
  VaskFrameReleaseObj* r3 = Pattern(3);
  VaskFrameObj* only_i = Frame(a, 2, 2, r2, nullptr);
  VaskFrameObj* only_j = Frame(b, 2, 1, nullptr, r3);
  VaskFrameObj* both = Frame(c, 2, 3, r2, r3);
  FillTrelkCompoundComponents(model, store);
  // Twelve member compounds first (four for each steel section), then the release ones.
  ASSERT_EQ(Count(Component::CpdFrame), 15);
  EXPECT_EQ(only_i->idCompdRelealse, 13);
  EXPECT_EQ(only_j->idCompdRelealse, 14);
  EXPECT_EQ(both->idCompdRelealse, 15);
  RecordRef i = Cpd(13);
  EXPECT_EQ(TrimSpaces(i.GetText(Name)), "CpdRelBmSteel-A");
  EXPECT_EQ(i.GetInt(PartCount), 2);
  EXPECT_EQ(i.GetInt(PartFlag(1)), 12);
  EXPECT_EQ(i.GetInt(PartSource(1)), 2);
  EXPECT_EQ(i.GetInt(PartShape(1)), 4);
  EXPECT_EQ(i.GetInt(PartKind(1)), 4);
  EXPECT_EQ(i.GetInt(PartComponent(1)), 2);
  EXPECT_EQ(i.GetReal(PartLengthI(1)), 0.0);
  EXPECT_EQ(i.GetInt(PartFlag(2)), 1);
  EXPECT_EQ(i.GetInt(PartComponent(2)), 21);
  RecordRef j = Cpd(14);
  EXPECT_EQ(TrimSpaces(j.GetText(Name)), "CpdRelColS-B");
  EXPECT_EQ(j.GetInt(PartCount), 2);
  EXPECT_EQ(j.GetInt(PartFlag(1)), 1);
  EXPECT_EQ(j.GetInt(PartComponent(1)), 22);
  EXPECT_EQ(j.GetInt(PartShape(1)), 3);
  EXPECT_EQ(j.GetInt(PartFlag(2)), 12);
  EXPECT_EQ(j.GetInt(PartComponent(2)), 3);
  RecordRef b3 = Cpd(15);
  EXPECT_EQ(b3.GetInt(PartCount), 3);
  EXPECT_EQ(b3.GetInt(PartComponent(1)), 2);
  EXPECT_EQ(b3.GetInt(PartComponent(2)), 22);
  EXPECT_EQ(b3.GetInt(PartComponent(3)), 3);
}

TEST_F(CompoundComponents, AReleasedEndWithoutAReleaseComponentGetsNoPart) {
  FillTrelkCpdReleaseRecord(store, 1, "X", 1, 3, 4, 21, 0, 5, 2, 0.0, true, true);
  // The record is written over the list's first slot without adding; it is enough here.
  EXPECT_EQ(Cpd(1).GetInt(PartCount), 2);
  EXPECT_EQ(Cpd(1).GetInt(PartFlag(1)), 1);
  EXPECT_EQ(Cpd(1).GetInt(PartComponent(2)), 5);
}

TEST_F(CompoundComponents, SameIPatternSharesTheFirstCompoundWhateverTheJEnd) {
  VaskPropFrameSectObj* s = Section("S", Material(1));
  VaskFrameReleaseObj* ri = Pattern(2);
  VaskFrameObj* first = Frame(s, 2, 2, ri, Pattern(3));
  VaskFrameObj* second = Frame(s, 2, 2, ri, Pattern(4));
  FillTrelkCompoundComponents(model, store);
  EXPECT_EQ(Count(Component::CpdFrame), 5);
  EXPECT_EQ(first->idCompdRelealse, 5);
  EXPECT_EQ(second->idCompdRelealse, 5);
  EXPECT_EQ(s->ReleaseNum(), 1);
}

TEST_F(CompoundComponents, BeamsReleasedAtJOnlyShareOneCompound) {
  VaskPropFrameSectObj* s = Section("S", Material(1));
  VaskFrameObj* first = Frame(s, 2, 2, nullptr, Pattern(3));
  VaskFrameObj* second = Frame(s, 2, 2, nullptr, Pattern(4));
  FillTrelkCompoundComponents(model, store);
  EXPECT_EQ(Count(Component::CpdFrame), 5);
  EXPECT_EQ(first->idCompdRelealse, 5);
  EXPECT_EQ(second->idCompdRelealse, 5);
}

TEST_F(CompoundComponents, NoEmbeddedSectionsMakeNoEmbedCompound) {
  Section("S", Material(2));
  FillTrelkCompoundComponents(model, store);
  for (int n = 1; n <= Count(Component::CpdFrame); ++n) {
    EXPECT_EQ(Cpd(n).GetText(Name).rfind("CpdEmbed-", 0), std::string::npos);
  }
}

TEST_F(CompoundComponents, EmbeddedBeamsGetAReleaseAndTheirSection) {
  Section("S", Material(2));
  VaskPropFrameSectObj* embed = model.AddPropEmbedFrameSect();
  embed->Label = "7";
  embed->idTrelkXsectEmbedBeam = 9;
  embed->area = 5.0;
  FillTrelkCompoundComponents(model, store);
  ASSERT_EQ(Count(Component::CpdFrame), 5);
  RecordRef e = Cpd(5);
  EXPECT_EQ(TrimSpaces(e.GetText(Name)), "CpdEmbed-1");
  EXPECT_EQ(e.GetInt(PartCount), 2);
  EXPECT_EQ(e.GetInt(PartFlag(1)), 12);
  EXPECT_EQ(e.GetInt(PartComponent(1)), 1);
  EXPECT_EQ(e.GetInt(PartKind(2)), 3);
  EXPECT_EQ(e.GetInt(PartComponent(2)), 9);
  EXPECT_EQ(e.GetReal(PartLengthI(2)), 1.0);
  EXPECT_EQ(e.GetReal(WeightPerLength), 0.0);
  EXPECT_EQ(embed->idTrelkCompoundEmbededBeam, 5);
}

TEST_F(CompoundComponents, WallAndGeneralWallCompounds) {
  VaskPropMaterialObj* concrete = Material(2, 24.0);
  concrete->idTrelkElasticShear = 3;
  concrete->idTrelkInelasticShear = 6;
  concrete->IsoE = 3e7;
  VaskPropAreaSectObj* thin = model.AddPropAreaSect();
  thin->Label = "Thin";
  thin->PropType = 1;
  thin->ShellType = 1;
  thin->PropMatObj = concrete;
  thin->Thick = 0.2;
  thin->idTrelkXSectWallEla = 4;
  VaskPropAreaSectObj* fibre = model.AddPropAreaSect();
  fibre->Label = "Fibre";
  fibre->PropType = 1;
  fibre->ShellType = 6;
  fibre->LayerTrelkType = 1;
  fibre->LayerPropMatConcObj = concrete;
  fibre->LayerTrelkThick = 0.3;
  fibre->idTrelkXSectWallIne = 8;
  VaskPropAreaSectObj* both = model.AddPropAreaSect();
  both->Label = "Both";
  both->PropType = 1;
  both->ShellType = 6;
  both->LayerTrelkType = 3;
  both->LayerPropMatConcObj = concrete;
  both->LayerTrelkThick = 0.35;
  both->idTrelkXSectGWallIneH = 11;
  both->idTrelkXSectGWallIneV = 12;
  FillTrelkCompoundComponents(model, store);

  ASSERT_EQ(Count(Component::CpdWall), 2);
  RecordRef w1 = store.Components(Component::CpdWall).Record(1);
  EXPECT_EQ(TrimSpaces(w1.GetText(cpd_wall_rec::Name)), "CpdWallConcEla-Thin");
  EXPECT_EQ(w1.GetInt(cpd_wall_rec::WallSectionKind), 11);
  EXPECT_EQ(w1.GetInt(cpd_wall_rec::WallSection), 4);
  EXPECT_EQ(w1.GetInt(cpd_wall_rec::ShearMaterialKind), 5);
  EXPECT_EQ(w1.GetInt(cpd_wall_rec::ShearMaterial), 3);
  EXPECT_EQ(w1.GetReal(cpd_wall_rec::E), 3e7);
  EXPECT_EQ(w1.GetReal(cpd_wall_rec::Thickness3), static_cast<double>(0.2f));
  EXPECT_EQ(w1.GetReal(cpd_wall_rec::UnitWeight), 24.0);
  RecordRef w2 = store.Components(Component::CpdWall).Record(2);
  EXPECT_EQ(TrimSpaces(w2.GetText(cpd_wall_rec::Name)), "CpdWallConcV-Fibre");
  EXPECT_EQ(w2.GetInt(cpd_wall_rec::WallSectionKind), 10);
  EXPECT_EQ(w2.GetInt(cpd_wall_rec::WallSection), 8);
  EXPECT_EQ(thin->idTrelkCompoundWall, 1);
  EXPECT_EQ(fibre->idTrelkCompoundWall, 2);

  ASSERT_EQ(Count(Component::CpdGWall), 1);
  RecordRef g = store.Components(Component::CpdGWall).Record(1);
  EXPECT_EQ(TrimSpaces(g.GetText(cpd_gwall_rec::Name)), "CpdGWallConcHV-Both");
  EXPECT_EQ(g.GetInt(cpd_gwall_rec::VerticalSectionKind), 12);
  EXPECT_EQ(g.GetInt(cpd_gwall_rec::VerticalSection), 12);
  EXPECT_EQ(g.GetInt(cpd_gwall_rec::HorizontalSectionKind), 12);
  EXPECT_EQ(g.GetInt(cpd_gwall_rec::HorizontalSection), 11);
  EXPECT_EQ(g.GetInt(cpd_gwall_rec::ShearMaterialKind), 2);
  EXPECT_EQ(g.GetInt(cpd_gwall_rec::ShearMaterial), 6);
  EXPECT_EQ(g.GetInt(cpd_gwall_rec::DiagonalKind), 3);
  EXPECT_EQ(g.GetReal(cpd_gwall_rec::Angle1), 45.0);
  EXPECT_EQ(g.GetReal(cpd_gwall_rec::Angle2), 45.0);
  EXPECT_EQ(g.GetReal(cpd_gwall_rec::Thickness2), static_cast<double>(0.35f));
  EXPECT_EQ(both->idTrelkCompoundGWall, 1);
  // The general-wall list leaves MaxComponentCount alone.
  EXPECT_EQ(store.MaxComponentCount, 2);
}

}  // namespace
}  // namespace vtt
