#include "analysis/fill_trelk_section_cut.h"

#include <gtest/gtest.h>

#include "source/fake_host_model_test_support.h"
#include "source/vask_model.h"
#include "store/section_cut_records.h"
#include "store/trelk_store.h"
#include "transfer/failure.h"

namespace vtt {
namespace {

constexpr DofFlags kFixed = {true, true, true, true, true, true};
constexpr DofFlags kPinned = {true, true, true, false, false, false};
constexpr DofFlags kFree = {};

class SectionCuts : public ::testing::Test {
 protected:
  SectionCuts() { store.InitTrelkStore(); }

  void Node(const std::string& label, double z, const DofFlags& restraints) {
    model.AddNode(label, 0.0, 0.0, z, restraints);
  }
  VaskFrameObj* Frame(const std::string& i, const std::string& j, int elem) {
    VaskFrameObj* f = model.AddFrame();
    f->Label = "F" + std::to_string(model.FrameNum());
    f->LabelNodeI = i;
    f->LabelNodeJ = j;
    f->idTrelkElem = elem;
    return f;
  }
  VaskAreaObj* Area(std::initializer_list<std::string> nodes, int elem) {
    VaskAreaObj* a = model.AddArea();
    a->Label = "A" + std::to_string(model.AreaNum());
    a->NumNodes = static_cast<int>(nodes.size());
    a->RedimJoint();
    int k = 0;
    for (const std::string& n : nodes) a->LabelNodes(++k) = n;
    a->idTrelkElem = elem;
    return a;
  }
  struct Member {
    std::int64_t end, elem, next;
    bool operator==(const Member&) const = default;
  };
  Member MemberAt(int entry) {
    RecordRef r = store.CutMembers.Record(entry);
    return {r.GetInt(cut_member_rec::End), r.GetInt(cut_member_rec::Elem),
            r.GetInt(cut_member_rec::Next)};
  }
  std::string CutName(int cut) {
    return std::string(TrimSpaces(store.SectionCuts.Record(cut).GetText(section_cut_rec::Name)));
  }

  test_support::FakeHostModel host;
  VaskModelObj model{host};
  TrelkStore store;
};

TEST_F(SectionCuts, ColumnsWithBothEndsOrNoEndSupportedAreNotCut) {
  Node("B1", 0, kFixed);
  Node("B2", 0, kPinned);
  Node("T1", 3, kFree);
  Node("T2", 3, kFree);
  Frame("B1", "B2", 7);  // both ends supported
  Frame("T1", "T2", 8);  // neither
  FillTrelkSectionCuts(model, store);
  EXPECT_EQ(store.SectionCuts.Count(), 0);
  EXPECT_EQ(store.CutMembers.Count(), 0);
  EXPECT_EQ(store.CutGroups.Count(), 0);
}

TEST_F(SectionCuts, NoSupportsMakeNeitherCutsNorGroup) {
  Node("N1", 0, kFree);
  Node("N2", 3, kFree);
  Node("N3", 3, kFree);
  Node("N4", 0, kFree);
  Frame("N1", "N2", 2);
  Area({"N1", "N4", "N3", "N2"}, 5);
  FillTrelkSectionCuts(model, store);
  EXPECT_EQ(store.SectionCuts.Count(), 0);
  EXPECT_EQ(store.SectionCuts.Capacity(), 1);
  EXPECT_EQ(store.CutMembers.Count(), 0);
  EXPECT_EQ(store.CutMembers.Capacity(), 1);
  EXPECT_EQ(store.CutGroups.Count(), 0);
}

TEST_F(SectionCuts, FramesWithoutSupportedAreaGiveOneCutAndOneGroup) {
  Node("B1", 0, kFixed);
  Node("T1", 3, kFree);
  Node("B2", 0, kPinned);
  Node("T2", 3, kFree);
  Frame("B1", "T1", 11);  // supported at I
  Frame("T1", "T2", 12);  // beam, not cut
  Frame("T2", "B2", 13);  // supported at J
  Area({"T1", "T2", "B2", "B1"}, 20);  // first two nodes free: not cut
  FillTrelkSectionCuts(model, store);

  ASSERT_EQ(store.SectionCuts.Count(), 1);
  EXPECT_EQ(store.SectionCuts.Capacity(), 11);
  EXPECT_EQ(CutName(1), "Frame Base Cut");
  RecordRef cut = store.SectionCuts.Record(1);
  EXPECT_EQ(cut.GetInt(section_cut_rec::FirstMember), 1);
  EXPECT_EQ(cut.GetInt(section_cut_rec::LastMember), 3);
  EXPECT_EQ(cut.GetInt(section_cut_rec::Flag), 0);
  EXPECT_EQ(cut.GetReal(section_cut_rec::Value1), 1.0);
  EXPECT_EQ(cut.GetReal(section_cut_rec::Value2), 2.0);
  EXPECT_EQ(cut.GetReal(section_cut_rec::Value3), 3.0);
  // The reference record stays zero.
  for (std::uint8_t b : store.SectionCuts.SubRecordBytes(1)) EXPECT_EQ(b, 0);
  EXPECT_EQ(store.SectionCutLast, 0);

  // nf + 1 + na + 1 entries: the area cut's head is counted though there is no area cut.
  EXPECT_EQ(store.CutMembers.Count(), 4);
  EXPECT_EQ(store.CutMembers.Capacity(), 14);
  EXPECT_EQ(MemberAt(1), (Member{0, 0, 2}));
  EXPECT_EQ(MemberAt(2), (Member{0, 11, 3}));
  EXPECT_EQ(MemberAt(3), (Member{1, 13, 0}));
  EXPECT_EQ(MemberAt(4), (Member{0, 0, 0}));

  ASSERT_EQ(store.CutGroups.Count(), 1);
  RecordRef group = store.CutGroups.Record(1);
  EXPECT_EQ(TrimSpaces(group.GetText(cut_group_rec::Name)), "Support Sect Group");
  EXPECT_EQ(group.GetText(cut_group_rec::Name).size(), 40u);
  EXPECT_EQ(group.GetInt(cut_group_rec::Kind), 1);
  EXPECT_EQ(group.GetInt(cut_group_rec::CutCount), 1);
  EXPECT_EQ(store.CutGroupFlag.Get({1, 1})[0], 1);
}

TEST_F(SectionCuts, FramesAndWallsMakeTwoCutsInOneMemberList) {
  Node("B1", 0, kFixed);
  Node("B2", 0, kFixed);
  Node("T1", 3, kFree);
  Node("T2", 3, kFree);
  Frame("T1", "B1", 4);                // supported at J
  Area({"B1", "B2", "T2", "T1"}, 30);  // bottom edge on supports
  Area({"T1", "T2", "B2", "B1"}, 31);  // not
  Area({"B2", "B1", "T1", "T2"}, 32);
  FillTrelkSectionCuts(model, store);

  ASSERT_EQ(store.SectionCuts.Count(), 2);
  EXPECT_EQ(CutName(1), "Frame Base Cut");
  EXPECT_EQ(CutName(2), "Area Base Cut");
  EXPECT_EQ(store.SectionCuts.Record(1).GetInt(section_cut_rec::LastMember), 2);
  EXPECT_EQ(store.SectionCuts.Record(2).GetInt(section_cut_rec::FirstMember), 3);
  EXPECT_EQ(store.SectionCuts.Record(2).GetInt(section_cut_rec::LastMember), 5);
  EXPECT_EQ(store.CutMembers.Count(), 5);
  EXPECT_EQ(MemberAt(1), (Member{0, 0, 2}));
  EXPECT_EQ(MemberAt(2), (Member{1, 4, 0}));
  EXPECT_EQ(MemberAt(3), (Member{0, 0, 4}));
  EXPECT_EQ(MemberAt(4), (Member{0, 30, 5}));
  EXPECT_EQ(MemberAt(5), (Member{0, 32, 0}));
  EXPECT_EQ(store.CutGroups.Record(1).GetInt(cut_group_rec::CutCount), 2);
  EXPECT_EQ(store.CutGroupFlag.Get({1, 1})[0], 1);
  EXPECT_EQ(store.CutGroupFlag.Get({1, 2})[0], 1);
}

TEST_F(SectionCuts, WallsAloneStartTheirCutAtEntryOne) {
  Node("B1", 0, kPinned);
  Node("B2", 0, kPinned);
  Node("T1", 3, kFree);
  Node("T2", 3, kFree);
  Area({"B1", "B2", "T2", "T1"}, 9);
  FillTrelkSectionCuts(model, store);
  ASSERT_EQ(store.SectionCuts.Count(), 1);
  EXPECT_EQ(CutName(1), "Area Base Cut");
  EXPECT_EQ(store.SectionCuts.Record(1).GetInt(section_cut_rec::FirstMember), 1);
  EXPECT_EQ(store.SectionCuts.Record(1).GetInt(section_cut_rec::LastMember), 2);
  // 0 + 1 + 1 + 1 entries: the frame cut's head is counted though there is no frame cut.
  EXPECT_EQ(store.CutMembers.Count(), 3);
  EXPECT_EQ(MemberAt(1), (Member{0, 0, 2}));
  EXPECT_EQ(MemberAt(2), (Member{0, 9, 0}));
  EXPECT_EQ(MemberAt(3), (Member{0, 0, 0}));
}

TEST_F(SectionCuts, SupportsAtSeveralElevationsAreAllCut) {
  Node("G1", 0, kFixed);
  Node("G2", 3, kFree);
  Node("P1", 1.5, kFixed);  // a support on a podium
  Node("P2", 4.5, kFree);
  Frame("G1", "G2", 2);
  Frame("P1", "P2", 3);
  FillTrelkSectionCuts(model, store);
  ASSERT_EQ(store.SectionCuts.Count(), 1);
  EXPECT_EQ(MemberAt(2), (Member{0, 2, 3}));
  EXPECT_EQ(MemberAt(3), (Member{0, 3, 0}));
}

TEST_F(SectionCuts, AFlatAreaOnTwoSupportsIsCutAsWell) {
  Node("S1", 0, kPinned);
  Node("S2", 0, kPinned);
  Node("S3", 0, kFree);
  Node("S4", 0, kFree);
  Area({"S1", "S2", "S3", "S4"}, 6);
  FillTrelkSectionCuts(model, store);
  ASSERT_EQ(store.SectionCuts.Count(), 1);
  EXPECT_EQ(MemberAt(2), (Member{0, 6, 0}));
}

TEST_F(SectionCuts, AFrameOnAnUnknownNodeStopsTheTransferNamingIt) {
  Node("B1", 0, kFixed);
  Frame("B1", "Ghost", 1);
  try {
    FillTrelkSectionCuts(model, store);
    FAIL() << "expected a failure";
  } catch (const TransferFailure& failure) {
    EXPECT_NE(std::string(failure.what()).find("F1"), std::string::npos);
    EXPECT_NE(std::string(failure.what()).find("Ghost"), std::string::npos);
  }
}

}  // namespace
}  // namespace vtt
