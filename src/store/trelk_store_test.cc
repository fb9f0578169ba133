#include "store/trelk_store.h"

#include <gtest/gtest.h>

#include "support/expected_bytes.h"
#include "transfer/failure.h"

namespace vtt {
namespace {

TrelkStore FreshStore() {
  TrelkStore store;
  store.InitTrelkStore();
  return store;
}

TEST(TrelkStore, FreshStoreHoldsOnlyTheDefaultEndZone) {
  TrelkStore store = FreshStore();
  EXPECT_EQ(store.Components(Component::EndZone).Count(), 1);
  EXPECT_EQ(store.Components(Component::EndZone).Capacity(), 1);
  EXPECT_EQ(store.MaxComponentCount, 1);
  for (const ComponentListInfo& info : ComponentLibraryLayout()) {
    if (info.id == Component::EndZone) continue;
    EXPECT_EQ(store.Components(info.id).Count(), 0) << info.record;
  }
  EXPECT_EQ(store.Nodes.Capacity(), 200);
  EXPECT_EQ(store.Nodes.Count(), 1);
}

TEST(TrelkStore, InitialCapacitiesFollowTheFormat) {
  TrelkStore store = FreshStore();
  EXPECT_EQ(store.Components(Component::MatOther02).Capacity(), 0);
  EXPECT_EQ(store.Components(Component::Inel11).Capacity(), 0);
  EXPECT_EQ(store.Components(Component::XecBeam).Capacity(), 1);
  EXPECT_EQ(store.Frames.Capacity(), 0);
  EXPECT_EQ(store.Diaphragms.Capacity(), 1);
  EXPECT_EQ(store.LoadFrameValueSlotCapacity, 1);
  EXPECT_EQ(store.LoadCases.Capacity(), 0);
  EXPECT_EQ(store.GravityCases.Capacity(), 0);
  EXPECT_EQ(store.StoreFlag1, -1);
  EXPECT_EQ(store.StoreFlag2, -1);
  EXPECT_EQ(store.HeaderWord2, 1);
  for (int i = 0; i < 10; ++i) {
    EXPECT_EQ(store.LimitStateCount[i], 0);
    EXPECT_EQ(store.LimitStateCapacity[i], 1);
  }
}

TEST(TrelkStore, DefaultEndZoneBytes) {
  TrelkStore store = FreshStore();
  testing::ExpectedBytes expected;
  expected.Ascii("Default End Zone", 40).Short(1).Byte(3).Zeros(5).Zeros(13);
  expected.Single(10.0f).Single(10.0f).Single(0.0f).Single(0.0f);
  expected.Single(0.5f).Single(0.5f).Single(0.5f).Single(0.5f).Zeros(16);
  ASSERT_EQ(expected.Size(), 109u);
  const auto bytes = store.Components(Component::EndZone).RecordBytes(1);
  EXPECT_EQ(std::vector<std::uint8_t>(bytes.begin(), bytes.end()), expected.Bytes());
}

TEST(TrelkStore, CapacityGrowsToCountPlusTen) {
  TrelkStore store = FreshStore();
  RecordList& drifts = store.Drifts;
  ASSERT_EQ(drifts.Capacity(), 1);
  store.AddTrelkDrift();
  EXPECT_EQ(drifts.Capacity(), 1);
  store.AddTrelkDrift();
  EXPECT_EQ(drifts.Count(), 2);
  EXPECT_EQ(drifts.Capacity(), 12);
  for (int i = 3; i <= 12; ++i) store.AddTrelkDrift();
  EXPECT_EQ(drifts.Capacity(), 12);
  store.AddTrelkDrift();
  EXPECT_EQ(drifts.Count(), 13);
  EXPECT_EQ(drifts.Capacity(), 23);
}

TEST(TrelkStore, GrowthKeepsRecords) {
  TrelkStore store = FreshStore();
  const FieldDef mark = I32Field("Mark", 0);
  for (int i = 1; i <= 30; ++i) store.Diaphragms.Record(store.AddTrelkDiaphragm()).SetInt(mark, i);
  for (int i = 1; i <= 30; ++i) EXPECT_EQ(store.Diaphragms.Record(i).GetInt(mark), i);
}

TEST(TrelkStore, NodeListRemembersTheCountBeforeEachAdd) {
  TrelkStore store = FreshStore();
  store.Nodes.SetCount(0);
  store.AddTrelkNode();
  EXPECT_EQ(store.LastNodeAdded, 0);
  store.AddTrelkNode();
  EXPECT_EQ(store.LastNodeAdded, 1);
  EXPECT_EQ(store.Nodes.Count(), 2);
  for (int i = 3; i <= 201; ++i) store.AddTrelkNode();
  EXPECT_EQ(store.Nodes.Capacity(), 211);
  EXPECT_EQ(store.LastNodeAdded, 200);
}

TEST(TrelkStore, ReleaseListGrowsByFiveOnItsCapacity) {
  TrelkStore store = FreshStore();
  RecordList& releases = store.Components(Component::Release);
  store.AddTrelkRelease();
  EXPECT_EQ(releases.Capacity(), 1);
  store.AddTrelkRelease();
  EXPECT_EQ(releases.Capacity(), 6);
  for (int i = 3; i <= 7; ++i) store.AddTrelkRelease();
  EXPECT_EQ(releases.Count(), 7);
  EXPECT_EQ(releases.Capacity(), 11);
  // The release list measures MaxComponentCount by its capacity.
  EXPECT_EQ(store.MaxComponentCount, 11);
}

TEST(TrelkStore, MaxComponentCountMixesCapacitiesAndCounts) {
  TrelkStore store = FreshStore();
  store.AddComponent(Component::MatInel);
  store.AddComponent(Component::MatInel);
  EXPECT_EQ(store.Components(Component::MatInel).Capacity(), 12);
  EXPECT_EQ(store.MaxComponentCount, 2);  // by count
  store.AddComponent(Component::XecBeam);
  EXPECT_EQ(store.MaxComponentCount, 2);
  store.AddComponent(Component::XecBeam);
  EXPECT_EQ(store.MaxComponentCount, 12);  // by capacity
  for (Component c : {Component::MatElasticShear, Component::MatElasticSlab,
                      Component::XecColumn}) {
    TrelkStore s = FreshStore();
    s.AddComponent(c);
    s.AddComponent(c);
    EXPECT_EQ(s.MaxComponentCount, 12) << ComponentInfo(c).record;
  }
}

TEST(TrelkStore, GeneralWallCompoundsLeaveMaxComponentCountAlone) {
  TrelkStore store = FreshStore();
  for (int i = 0; i < 5; ++i) store.AddComponent(Component::CpdGWall);
  EXPECT_EQ(store.Components(Component::CpdGWall).Count(), 5);
  EXPECT_EQ(store.MaxComponentCount, 1);
  for (int i = 0; i < 3; ++i) store.AddComponent(Component::CpdWall);
  EXPECT_EQ(store.MaxComponentCount, 3);
}

TEST(TrelkStore, AShortCountPassingItsLimitStopsTheTransfer) {
  // A list already near its limit, so the test need not add 32,000 records one by one.
  RecordList list(RecordList::Shape{"rigid diaphragms", 80, CountWidth::I16, 32766, 32767});
  list.Add();
  EXPECT_EQ(list.Count(), 32767);
  try {
    list.Add();
    FAIL() << "expected an overflow";
  } catch (const TransferFailure& failure) {
    EXPECT_NE(std::string(failure.what()).find("rigid diaphragms"), std::string::npos);
    EXPECT_NE(std::string(failure.what()).find("Overflow"), std::string::npos);
  }
  EXPECT_EQ(list.Count(), 32767);
}

TEST(TrelkStore, AShortCapacityPassingItsLimitStopsTheTransfer) {
  // Count 32758 would need a capacity of 32768.
  RecordList list(RecordList::Shape{"element groups", 76, CountWidth::I16, 32757, 32757});
  EXPECT_THROW(list.Add(), TransferFailure);
}

TEST(TrelkStore, ALongCountTakesPastTheShortLimit) {
  RecordList elements(RecordList::Shape{"elements", 4, CountWidth::I32, 32767, 32767});
  elements.Add();
  EXPECT_EQ(elements.Count(), 32768);
  EXPECT_EQ(elements.Capacity(), 32778);
}

TEST(TrelkStore, SettingACountAllocatesTenMoreAndClearsTheRecords) {
  RecordList cuts(RecordList::Shape{"section cuts", 78, CountWidth::I16, 0, 1, 34});
  cuts.Add();
  cuts.Record(1).SetText(TextField("Name", 0, 40), "old");
  cuts.SetCountAndAllocate(2);
  EXPECT_EQ(cuts.Count(), 2);
  EXPECT_EQ(cuts.Capacity(), 12);
  for (std::int32_t r = 0; r <= 12; ++r) {
    for (std::uint8_t b : cuts.RecordBytes(r)) ASSERT_EQ(b, 0) << "record " << r;
    EXPECT_EQ(cuts.SubRecordBytes(r).size(), 34u);
  }
  // Capacity 32767 is the last an i16 can hold.
  RecordList members(RecordList::Shape{"section cuts", 78});
  members.SetCountAndAllocate(32757);
  EXPECT_EQ(members.Capacity(), 32767);
  EXPECT_THROW(members.SetCountAndAllocate(32758), TransferFailure);
}

TEST(TrelkStore, ShortFieldOverflowNamesTheField) {
  std::vector<std::uint8_t> bytes(4, 0);
  RecordRef rec(bytes);
  const FieldDef count = I16Field("ItemCount", 0);
  rec.SetInt(count, 32767);
  EXPECT_THROW(rec.SetInt(count, 32768), TransferFailure);
}

TEST(TrelkStore, SecondInitialisationForgetsTheEarlierTransfer) {
  TrelkStore store = FreshStore();
  for (int i = 0; i < 20; ++i) store.AddTrelkElem();
  store.AddComponent(Component::XecBeam);
  store.AddComponent(Component::XecBeam);
  store.InitTrelkStore();
  EXPECT_EQ(store.Elems.Count(), 0);
  EXPECT_EQ(store.Elems.Capacity(), 1);
  EXPECT_EQ(store.Components(Component::XecBeam).Count(), 0);
  EXPECT_EQ(store.MaxComponentCount, 1);
  EXPECT_EQ(store.Components(Component::EndZone).Count(), 1);
}

TEST(TrelkStore, NothingIsAddedBeforeInitialisation) {
  TrelkStore store;
  EXPECT_THROW(store.AddComponent(Component::MatInel), std::logic_error);
}

TEST(TrelkStore, MatrixReshapedWithoutKeepingItsContents) {
  TrelkStore store = FreshStore();
  store.NodalMassPatterns.Add();
  store.NodalMass.At({1, 5})[0] = 7;
  store.Nodes.SetCount(200);
  store.AddTrelkNode();  // the node list grows: the mass matrix is made anew
  EXPECT_EQ(store.NodalMass.Bounds()[1].high, 211);
  EXPECT_EQ(store.NodalMass.Get({1, 5})[0], 0);
}

TEST(TrelkStore, FrameFlagsKeepTheirContentsAfterTheFirstGrowth) {
  TrelkStore store = FreshStore();
  store.AddTrelkFrame();
  EXPECT_EQ(store.Frames.Capacity(), 11);
  EXPECT_EQ(store.FrameElemFlag.Bounds()[1].low, 0);
  store.FrameNodeFlag.At({1, 3})[0] = 1;
  store.FrameElemFlag.At({1, 0})[0] = 1;
  for (int i = 2; i <= 12; ++i) store.AddTrelkFrame();
  EXPECT_EQ(store.Frames.Capacity(), 22);
  EXPECT_EQ(store.FrameNodeFlag.Get({1, 3})[0], 1);
  EXPECT_EQ(store.FrameElemFlag.Get({1, 0})[0], 1);
}

TEST(TrelkStore, FrameFlagsOfEveryFrameSurviveManyGrowths) {
  TrelkStore store = FreshStore();
  for (int n = 1; n <= 60; ++n) store.AddTrelkNode();
  const std::int32_t nodes = store.Nodes.Capacity();
  const std::int32_t elems = store.Elems.Capacity();
  for (std::int32_t t = 1; t <= 45; ++t) {
    EXPECT_EQ(store.AddTrelkFrame(), t);
    store.FrameNodeFlag.At({t, t})[0] = 1;
    store.FrameElemFlag.At({t, t % 2})[0] = 1;
  }
  // Capacities 11, 22, 33, 44 and 55: four growths after the first.
  EXPECT_EQ(store.Frames.Capacity(), 55);
  EXPECT_EQ(store.FrameNodeFlag.Bounds()[0].high, 55);
  EXPECT_EQ(store.FrameNodeFlag.Bounds()[1].high, nodes);
  EXPECT_EQ(store.FrameElemFlag.Bounds()[0].high, 55);
  EXPECT_EQ(store.FrameElemFlag.Bounds()[1].low, 0);
  EXPECT_EQ(store.FrameElemFlag.Bounds()[1].high, elems);
  for (std::int32_t t = 1; t <= 45; ++t) {
    EXPECT_EQ(store.FrameNodeFlag.Get({t, t})[0], 1) << t;
    EXPECT_EQ(store.FrameNodeFlag.Get({t, t + 1})[0], 0) << t;
    EXPECT_EQ(store.FrameElemFlag.Get({t, t % 2})[0], 1) << t;
    EXPECT_EQ(store.FrameElemFlag.Get({t, 1 - t % 2})[0], 0) << t;
  }
  for (std::int32_t t = 46; t <= 55; ++t) {
    EXPECT_EQ(store.FrameNodeFlag.Get({t, t})[0], 0) << t;
    EXPECT_EQ(store.FrameElemFlag.Get({t, 0})[0], 0) << t;
  }
}

TEST(NameWithSuffix, PrefixAndTrimmedLabel) {
  EXPECT_EQ(NameWithSuffix("XecBmS-", "  W14X90 ", 0), "XecBmS-W14X90");
}

TEST(NameWithSuffix, LongNameGivesWayToTheNumberPlusOne) {
  const std::string label(41, 'L');
  EXPECT_EQ(NameWithSuffix("XecBmS-", label, 7), "XecBmS-8");
}

TEST(NameWithSuffix, FortyCharactersAreKept) {
  const std::string prefix = "MatIne8-";
  ASSERT_EQ(prefix.size(), 8u);
  const std::string label(32, 'x');
  EXPECT_EQ(NameWithSuffix(prefix, label, 3), prefix + label);
  EXPECT_EQ(NameWithSuffix(prefix, label + "y", 3), prefix + "4");
}

TEST(NameWithSuffix, LeadingSpacesGoBeforeTheLengthTest) {
  const std::string label = "   " + std::string(33, 'a');  // 33 characters after trimming
  EXPECT_EQ(NameWithSuffix("XecBmS-", label, 0), "XecBmS-" + std::string(33, 'a'));
}

TEST(NameWithSuffix, OnlySpacesAreTrimmed) {
  EXPECT_EQ(NameWithSuffix("", "\tA ", 0), "\tA");
}

TEST(StructureName, CutOrPaddedToTwelveCharacters) {
  TrelkStore store;
  store.SetStructureName("ThirteenChars");
  EXPECT_EQ(store.StructureName, "ThirteenChar");
  store.SetStructureName("Demo");
  EXPECT_EQ(store.StructureName, "Demo        ");
}

TEST(RecentStructures, MostRecentFirstAndAtMostTen) {
  TrelkStore store;
  store.StructureName = "A           ";
  store.StructuresRoot = "/s";
  store.UpdateRecentStructures();
  EXPECT_EQ(store.Recent.count, 1);
  store.StructureName = "B           ";
  store.UpdateRecentStructures();
  EXPECT_EQ(store.Recent.count, 2);
  EXPECT_EQ(store.Recent.names[0], "B           ");
  EXPECT_EQ(store.Recent.names[1], "A           ");
  store.StructureName = "A           ";
  store.StructuresRoot = "/s  ";  // trailing spaces do not count
  store.UpdateRecentStructures();
  EXPECT_EQ(store.Recent.count, 2);
  EXPECT_EQ(store.Recent.names[0], "A           ");
  EXPECT_EQ(store.Recent.names[1], "B           ");
  for (int i = 0; i < 12; ++i) {
    store.StructureName = "N" + std::to_string(i);
    store.UpdateRecentStructures();
  }
  EXPECT_EQ(store.Recent.count, 10);
  EXPECT_EQ(store.Recent.names[0], "N11");
  EXPECT_EQ(store.Recent.names[9], "N2");
}

}  // namespace
}  // namespace vtt
