#include "elements/fill_trelk_element.h"

#include <gtest/gtest.h>

#include "source/fake_host_model_test_support.h"
#include "source/vask_model.h"
#include "store/element_records.h"
#include "store/trelk_store.h"
#include "support/expected_bytes.h"

namespace vtt {
namespace {

class FrameElements : public ::testing::Test {
 protected:
  FrameElements() {
    store.InitTrelkStore();
    section = model.AddPropFrameSect();
    section->Label = "S";
    section->idTrelkCompoundConcCol = 101;
    section->idTrelkCompoundConcBeam = 102;
    section->idTrelkCompoundFemaConcCol = 103;
    section->idTrelkCompoundFemaConcBeam = 104;
    section->idTrelkCompoundSteelCol = 201;
    section->idTrelkCompoundSteelBeam = 202;
    section->idTrelkCompoundFemaSteelCol = 203;
    section->idTrelkCompoundFemaSteelBeam = 204;
  }
  VaskFrameObj* Frame(int mat_type, int frame_type, int node_i = 2, int node_j = 3) {
    VaskFrameObj* f = model.AddFrame();
    f->Label = "F" + std::to_string(model.FrameNum());
    f->PropFrameSectObj = section;
    f->TrelkMatType = mat_type;
    f->TrelkFrameType = frame_type;
    f->NodeI = node_i;
    f->NodeJ = node_j;
    return f;
  }
  RecordRef Elem(int e) { return store.Elems.Record(e); }
  RecordRef Group(int g) { return store.ElemGroups.Record(g); }
  std::string GroupName(int g) { return std::string(TrimSpaces(Group(g).GetText(elem_group_rec::Name))); }

  test_support::FakeHostModel host;
  VaskModelObj model{host};
  TrelkStore store;
  VaskPropFrameSectObj* section = nullptr;
  VaskFrameReleaseObj release;
};

TEST_F(FrameElements, NoFramesMakeNoGroup) {
  FillTrelkElements(model, store);
  EXPECT_EQ(store.ElemGroups.Count(), 0);
  EXPECT_EQ(store.Elems.Count(), 0);
}

TEST_F(FrameElements, GroupsFollowTheFixedOrderAndSkipEmptyOnes) {
  Frame(2, 3);  // steel brace
  Frame(1, 2);  // concrete beam
  Frame(1, 2);
  Frame(2, 1);  // steel column
  FillTrelkElements(model, store);
  ASSERT_EQ(store.ElemGroups.Count(), 3);
  EXPECT_EQ(GroupName(1), "ElemConcBeam");
  EXPECT_EQ(GroupName(2), "ElemSteelCol");
  EXPECT_EQ(GroupName(3), "ElemSteelBrace");
  EXPECT_EQ(Group(1).GetInt(elem_group_rec::GroupKind), 2);
  EXPECT_EQ(Group(2).GetInt(elem_group_rec::GroupKind), 3);
  EXPECT_EQ(Group(3).GetInt(elem_group_rec::GroupKind), 5);
  EXPECT_EQ(store.ElemGroupLast, 3);
  EXPECT_EQ(store.Elems.Count(), 7);  // three leading records and four frames
  EXPECT_EQ(store.ElemLast, 7);
}

TEST_F(FrameElements, GroupBoundsCountTheLeadingRecord) {
  Frame(1, 1);
  Frame(1, 1);
  Frame(1, 1);
  Frame(1, 2);
  FillTrelkElements(model, store);
  EXPECT_EQ(Group(1).GetInt(elem_group_rec::FirstElem), 1);
  EXPECT_EQ(Group(1).GetInt(elem_group_rec::LastElem), 4);
  EXPECT_EQ(Group(2).GetInt(elem_group_rec::FirstElem), 5);
  EXPECT_EQ(Group(2).GetInt(elem_group_rec::LastElem), 6);
  EXPECT_EQ(Group(1).GetReal(elem_group_rec::Factor), 1.0);
}

TEST_F(FrameElements, LeadingRecordsAndElementChains) {
  VaskFrameObj* a = Frame(1, 1, 5, 9);
  a->Angle = 30.0;
  VaskFrameObj* b = Frame(1, 1, 9, 13);
  FillTrelkElements(model, store);
  // Leading record: group 0, next 2, element kind 6, nothing else.
  testing::ExpectedBytes lead;
  lead.Short(0).Long(0).Long(0).Long(0).Long(0).Long(0).Long(2).Byte(6).Zeros(92 - 27);
  const auto lead_bytes = store.Elems.RecordBytes(1);
  EXPECT_EQ(std::vector<std::uint8_t>(lead_bytes.begin(), lead_bytes.end()), lead.Bytes());
  // The first column: every field.
  testing::ExpectedBytes first;
  first.Short(1).Long(0).Long(5).Long(9).Long(0).Long(0).Long(3).Byte(6).Byte(0);
  first.Byte(6).Byte(2).Byte(5).Byte(5).Zeros(10).Short(101).Zeros(20);
  first.Single(30.0f).Single(30.0f).Zeros(20);
  ASSERT_EQ(first.Size(), 92u);
  const auto first_bytes = store.Elems.RecordBytes(2);
  EXPECT_EQ(std::vector<std::uint8_t>(first_bytes.begin(), first_bytes.end()), first.Bytes());
  EXPECT_EQ(Elem(3).GetInt(elem_rec::NextElem), 0);
  EXPECT_EQ(a->idTrelkElem, 2);
  EXPECT_EQ(b->idTrelkElem, 3);
  EXPECT_EQ(a->idTrelkElemGroup, 1);
}

TEST_F(FrameElements, AHingeAtOneEndIsEnoughForTheFemaCompound) {
  VaskFrameObj* i_only = Frame(1, 2);
  i_only->HingeI = true;
  VaskFrameObj* both = Frame(1, 2);
  both->HingeI = true;
  both->HingeJ = true;
  FillTrelkElements(model, store);
  EXPECT_EQ(Elem(2).GetInt(elem_rec::Component), 104);
  EXPECT_EQ(Elem(3).GetInt(elem_rec::Component), 104);
}

TEST_F(FrameElements, AReleaseBeatsAHinge) {
  VaskFrameObj* column = Frame(2, 1);
  column->ReleaseIObj = &release;
  column->HingeJ = true;
  column->idCompdRelealse = 77;
  FillTrelkElements(model, store);
  EXPECT_EQ(Elem(2).GetInt(elem_rec::Component), 77);
  EXPECT_EQ(Elem(2).GetInt(elem_rec::Option1), 5);
}

TEST_F(FrameElements, HingedConcreteBracesTakeTheFemaColumnButSteelBracesStayElastic) {
  VaskFrameObj* concrete = Frame(1, 3);
  concrete->HingeI = true;
  VaskFrameObj* steel = Frame(2, 3);
  steel->HingeI = true;
  VaskFrameObj* plain = Frame(1, 3);
  FillTrelkElements(model, store);
  EXPECT_EQ(GroupName(1), "ElemConcBrace");
  EXPECT_EQ(Elem(concrete->idTrelkElem).GetInt(elem_rec::Component), 103);
  EXPECT_EQ(Elem(plain->idTrelkElem).GetInt(elem_rec::Component), 101);
  EXPECT_EQ(GroupName(2), "ElemSteelBrace");
  EXPECT_EQ(Elem(steel->idTrelkElem).GetInt(elem_rec::Component), 201);
  EXPECT_EQ(Elem(steel->idTrelkElem).GetInt(elem_rec::Option1), 1);
}

TEST_F(FrameElements, FramesOfOtherMaterialsVanish) {
  VaskFrameObj* other = Frame(3, 1);
  Frame(1, 2);
  FillTrelkElements(model, store);
  EXPECT_EQ(store.ElemGroups.Count(), 1);
  EXPECT_EQ(store.Elems.Count(), 2);
  EXPECT_EQ(other->idTrelkElem, 0);
  EXPECT_EQ(other->idTrelkElemGroup, 0);
}

TEST_F(FrameElements, EndsAreKeptAsTheSourceHoldsThem) {
  Frame(1, 1, 9, 4);
  FillTrelkElements(model, store);
  EXPECT_EQ(Elem(2).GetInt(elem_rec::Node1), 9);
  EXPECT_EQ(Elem(2).GetInt(elem_rec::Node2), 4);
}

}  // namespace
}  // namespace vtt

namespace vtt {
namespace {

class ShellElements : public ::testing::Test {
 protected:
  ShellElements() {
    store.InitTrelkStore();
    concrete = model.AddPropMaterial();
    concrete->MatType = 2;
    steel = model.AddPropMaterial();
    steel->MatType = 1;
  }
  VaskPropAreaSectObj* Thin(VaskPropMaterialObj* material) {
    VaskPropAreaSectObj* s = model.AddPropAreaSect();
    s->PropType = 1;
    s->ShellType = 1;
    s->PropMatObj = material;
    s->idTrelkCompoundWall = 40 + model.PropAreaSectNum();
    s->idTrelkXSectSlabEla = 60 + model.PropAreaSectNum();
    return s;
  }
  VaskPropAreaSectObj* Layered(int layer_type) {
    VaskPropAreaSectObj* s = model.AddPropAreaSect();
    s->PropType = 1;
    s->ShellType = 6;
    s->LayerTrelkType = layer_type;
    s->idTrelkCompoundWall = 40 + model.PropAreaSectNum();
    s->idTrelkCompoundGWall = 80 + model.PropAreaSectNum();
    return s;
  }
  VaskAreaObj* Area(VaskPropAreaSectObj* section, int orientation, int first_node = 10) {
    VaskAreaObj* a = model.AddArea();
    a->Label = "A" + std::to_string(model.AreaNum());
    a->NumNodes = 4;
    a->RedimJoint();
    for (int k = 1; k <= 4; ++k) a->idNodes(k) = first_node + k;
    a->PropAreaSectObj = section;
    a->Orientation = orientation;
    return a;
  }
  std::string GroupName(int g) {
    return std::string(TrimSpaces(store.ElemGroups.Record(g).GetText(elem_group_rec::Name)));
  }
  RecordRef Elem(int e) { return store.Elems.Record(e); }

  test_support::FakeHostModel host;
  VaskModelObj model{host};
  TrelkStore store;
  VaskPropMaterialObj* concrete = nullptr;
  VaskPropMaterialObj* steel = nullptr;
};

TEST_F(ShellElements, NodesAreTakenCrosswise) {
  VaskAreaObj* wall = Area(Thin(concrete), 1);
  FillTrelkElements(model, store);
  ASSERT_EQ(GroupName(1), "ElemConcEWall");
  EXPECT_EQ(store.ElemGroups.Record(1).GetInt(elem_group_rec::GroupKind), 6);
  RecordRef e = Elem(2);
  EXPECT_EQ(e.GetInt(elem_rec::Node1), 11);
  EXPECT_EQ(e.GetInt(elem_rec::Node2), 12);
  EXPECT_EQ(e.GetInt(elem_rec::Node3), 14);
  EXPECT_EQ(e.GetInt(elem_rec::Node4), 13);
  EXPECT_EQ(e.GetInt(elem_rec::ComponentSource), 6);
  EXPECT_EQ(e.GetInt(elem_rec::ComponentKind), 3);
  EXPECT_EQ(e.GetInt(elem_rec::Component), 41);
  EXPECT_EQ(e.GetInt(elem_rec::Option1), 1);
  EXPECT_EQ(e.GetReal(elem_rec::Angle1), 0.0);
  EXPECT_EQ(wall->idTrelkElem, 2);
  EXPECT_EQ(wall->idTrelkElemGroup, 1);
}

TEST_F(ShellElements, AreaGroupsFollowTheFrameGroupsAndTheirNumbers) {
  VaskPropFrameSectObj* frame_section = model.AddPropFrameSect();
  VaskFrameObj* column = model.AddFrame();
  column->PropFrameSectObj = frame_section;
  column->TrelkMatType = 1;
  column->TrelkFrameType = 1;
  Area(Thin(concrete), 1);
  Area(Thin(concrete), 1);
  FillTrelkElements(model, store);
  ASSERT_EQ(store.ElemGroups.Count(), 2);
  EXPECT_EQ(GroupName(2), "ElemConcEWall");
  EXPECT_EQ(store.ElemGroups.Record(2).GetInt(elem_group_rec::FirstElem), 3);
  EXPECT_EQ(store.ElemGroups.Record(2).GetInt(elem_group_rec::LastElem), 5);
  // The first real element of the group is its FirstElem plus 1.
  EXPECT_EQ(model.AreaObj(1)->idTrelkElem, 4);
  EXPECT_EQ(model.AreaObj(2)->idTrelkElem, 5);
  EXPECT_EQ(Elem(5).GetInt(elem_rec::NextElem), 0);
}

TEST_F(ShellElements, FloorsAndRampsShareTheSlabGroups) {
  Area(Thin(concrete), 2);
  Area(Thin(concrete), 3);
  Area(Thin(steel), 3);
  FillTrelkElements(model, store);
  ASSERT_EQ(store.ElemGroups.Count(), 2);
  EXPECT_EQ(GroupName(1), "ElemSteelSlab");
  EXPECT_EQ(GroupName(2), "ElemConcSlabRamp");
  EXPECT_EQ(store.ElemGroups.Record(2).GetInt(elem_group_rec::GroupKind), 12);
  EXPECT_EQ(model.AreaObj(3)->idTrelkElemGroup, 1);
  EXPECT_EQ(model.AreaObj(1)->idTrelkElemGroup, 2);
  EXPECT_EQ(model.AreaObj(2)->idTrelkElemGroup, 2);
  RecordRef slab = Elem(model.AreaObj(1)->idTrelkElem);
  EXPECT_EQ(slab.GetInt(elem_rec::ComponentSource), 3);
  EXPECT_EQ(slab.GetInt(elem_rec::ComponentKind), 8);
  EXPECT_EQ(slab.GetInt(elem_rec::Component), 61);
}

TEST_F(ShellElements, LayeredShellsAreWallsWhateverTheirOrientation) {
  Area(Layered(1), 2);
  Area(Layered(3), 1);
  Area(Layered(0), 1);
  FillTrelkElements(model, store);
  ASSERT_EQ(store.ElemGroups.Count(), 2);
  EXPECT_EQ(GroupName(1), "ElemConcWall");
  EXPECT_EQ(GroupName(2), "ElemConcGWall");
  EXPECT_EQ(store.ElemGroups.Record(2).GetInt(elem_group_rec::GroupKind), 11);
  EXPECT_EQ(Elem(model.AreaObj(2)->idTrelkElem).GetInt(elem_rec::ComponentKind), 4);
  EXPECT_EQ(Elem(model.AreaObj(2)->idTrelkElem).GetInt(elem_rec::Component), 82);
  EXPECT_EQ(model.AreaObj(3)->idTrelkElem, 0);
}

TEST_F(ShellElements, MembranesAndShellsWithoutMaterialMakeNoElement) {
  VaskPropAreaSectObj* membrane = Thin(concrete);
  membrane->ShellType = 5;
  VaskAreaObj* m = Area(membrane, 1);
  VaskAreaObj* bare = Area(Thin(nullptr), 1);
  FillTrelkElements(model, store);
  EXPECT_EQ(store.ElemGroups.Count(), 0);
  EXPECT_EQ(m->idTrelkElem, 0);
  EXPECT_EQ(bare->idTrelkElem, 0);
}

TEST_F(ShellElements, NoEmbeddedSectionNoEmbedGroup) {
  Area(Thin(concrete), 1);
  FillTrelkElements(model, store);
  EXPECT_EQ(store.ElemGroups.Count(), 1);
}

TEST_F(ShellElements, CornersOneAndTwoGiveOneElementInEachEmbedGroup) {
  VaskPropFrameSectObj* embed = model.AddPropEmbedFrameSect();
  embed->idTrelkCompoundEmbededBeam = 9;
  VaskAreaObj* wall = Area(Thin(concrete), 1);
  wall->IsEmbed(1) = true;
  wall->IsEmbed(2) = true;
  wall->EmbedFrameObj = embed;
  FillTrelkElements(model, store);
  ASSERT_EQ(store.ElemGroups.Count(), 3);
  EXPECT_EQ(GroupName(2), "ElemEmbedBeamLR");
  EXPECT_EQ(GroupName(3), "ElemEmbedBeamRL");
  EXPECT_EQ(store.ElemGroups.Record(2).GetInt(elem_group_rec::GroupKind), 2);
  // Wall group: lead 1, wall 2; LR: lead 3, beam 4; RL: lead 5, beam 6.
  RecordRef lr = Elem(4);
  EXPECT_EQ(lr.GetInt(elem_rec::Node1), 12);
  EXPECT_EQ(lr.GetInt(elem_rec::Node2), 11);
  EXPECT_EQ(lr.GetInt(elem_rec::Node3), 0);
  EXPECT_EQ(lr.GetInt(elem_rec::ComponentKind), 2);
  EXPECT_EQ(lr.GetInt(elem_rec::Component), 9);
  EXPECT_EQ(lr.GetInt(elem_rec::NextElem), 0);
  RecordRef rl = Elem(6);
  EXPECT_EQ(rl.GetInt(elem_rec::Node1), 11);
  EXPECT_EQ(rl.GetInt(elem_rec::Node2), 12);
  EXPECT_EQ(rl.GetReal(elem_rec::Angle1), 0.0);
  // The embedded beams are not written back on the area.
  EXPECT_EQ(wall->idTrelkElem, 2);
}

TEST_F(ShellElements, TopCornersGiveTheTopEdge) {
  VaskPropFrameSectObj* embed = model.AddPropEmbedFrameSect();
  VaskAreaObj* wall = Area(Layered(1), 2);
  wall->IsEmbed(3) = true;
  wall->IsEmbed(4) = true;
  wall->EmbedFrameObj = embed;
  FillTrelkElements(model, store);
  EXPECT_EQ(Elem(4).GetInt(elem_rec::Node1), 14);
  EXPECT_EQ(Elem(4).GetInt(elem_rec::Node2), 13);
  EXPECT_EQ(Elem(6).GetInt(elem_rec::Node1), 13);
  EXPECT_EQ(Elem(6).GetInt(elem_rec::Node2), 14);
}

TEST_F(ShellElements, ACountedEdgeWithoutEmbeddedSectionLeavesTheGroupAsCounted) {
  VaskPropFrameSectObj* embed = model.AddPropEmbedFrameSect();
  VaskAreaObj* with = Area(Thin(concrete), 1);
  with->IsEmbed(1) = true;
  with->EmbedFrameObj = embed;
  VaskAreaObj* without = Area(Thin(concrete), 1);
  without->IsEmbed(1) = true;
  FillTrelkElements(model, store);
  ASSERT_EQ(GroupName(2), "ElemEmbedBeamLR");
  // Counted two, made one: LastElem stays at first + 2 and the one element points on.
  const std::int64_t first = store.ElemGroups.Record(2).GetInt(elem_group_rec::FirstElem);
  EXPECT_EQ(store.ElemGroups.Record(2).GetInt(elem_group_rec::LastElem), first + 2);
  EXPECT_EQ(store.Elems.Count(), first + 1);
  EXPECT_NE(Elem(static_cast<int>(first) + 1).GetInt(elem_rec::NextElem), 0);
}

}  // namespace
}  // namespace vtt
