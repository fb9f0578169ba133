// The operations of the load objects: nodal load items, the station list that superposes
// distributed pieces, the sorting of distributed and point loads of a frame, area load
// values kept as text, and the tests that decide which loads are carried.
#include <gtest/gtest.h>

#include <cstddef>
#include <ostream>
#include <string>
#include <vector>

#include "source/vask_frame.h"
#include "source/vask_load.h"

namespace vtt {
namespace {

// Program length codes.
constexpr int kInch = 0;
constexpr int kFoot = 1;
constexpr int kMillimetre = 2;
constexpr int kMetre = 4;

// Host direction codes.
constexpr int kGlobalZ = 6;
constexpr int kProjectedZ = 9;
constexpr int kGravity = 10;
constexpr int kProjectedGravity = 11;

struct Station {
  double dist;
  double left;
  double right;
  friend bool operator==(const Station&, const Station&) = default;
};

std::vector<Station> StationsOf(const VaskPairObj& pairs) {
  std::vector<Station> stations;
  for (int i = 1; i <= pairs.ItemNum; ++i) {
    stations.push_back({pairs.dist(i), pairs.ValLeft(i), pairs.ValRight(i)});
  }
  return stations;
}

struct Piece {
  double rd1;
  double rd2;
  double val1;
  double val2;
  friend bool operator==(const Piece&, const Piece&) = default;
};

std::vector<Piece> PiecesOf(const VaskLoadFrameDistObj& load) {
  std::vector<Piece> pieces;
  for (int i = 1; i <= load.ItemNum; ++i) {
    pieces.push_back({load.RD1(i), load.RD2(i), load.Val1(i), load.Val2(i)});
  }
  return pieces;
}

struct PointLoad {
  double rd;
  double val;
  friend bool operator==(const PointLoad&, const PointLoad&) = default;
};

std::vector<PointLoad> PointsOf(const VaskLoadFramePointObj& load) {
  std::vector<PointLoad> points;
  for (int i = 1; i <= load.ItemNum; ++i) points.push_back({load.RD(i), load.Val(i)});
  return points;
}

void PrintTo(const Station& s, std::ostream* os) {
  *os << "(" << s.dist << ", " << s.left << ", " << s.right << ")";
}
void PrintTo(const Piece& p, std::ostream* os) {
  *os << "(" << p.rd1 << "-" << p.rd2 << ": " << p.val1 << ", " << p.val2 << ")";
}
void PrintTo(const PointLoad& p, std::ostream* os) { *os << "(" << p.rd << ", " << p.val << ")"; }

// ---- VaskLoadNodeObj ----

TEST(VaskLoadNodeObjTest, SetLoadNodeAppendsAnItemPerPatternAndAddsWithinOne) {
  VaskLoadNodeObj loads;
  loads.SetLoadNode("N1", "DEAD", 1, 2, 3, 4, 5, 6);
  loads.SetLoadNode("N1", "DEAD", 10, 20, 30, 40, 50, 60);
  loads.SetLoadNode("N1", "LIVE", 0, 0, -7, 0, 0, 0);

  ASSERT_EQ(loads.ItemNum, 2);
  EXPECT_EQ(loads.Label, "N1");
  EXPECT_EQ(loads.LoadPattern(1), "DEAD");
  EXPECT_EQ(loads.F1(1), 11);
  EXPECT_EQ(loads.F2(1), 22);
  EXPECT_EQ(loads.F3(1), 33);
  EXPECT_EQ(loads.M1(1), 44);
  EXPECT_EQ(loads.M2(1), 55);
  EXPECT_EQ(loads.M3(1), 66);
  EXPECT_EQ(loads.LoadPattern(2), "LIVE");
  EXPECT_EQ(loads.F3(2), -7);
  EXPECT_EQ(loads.F1(2), 0);
  // Exactly the items are kept.
  EXPECT_EQ(loads.ItemsKept(), 2);
}

TEST(VaskLoadNodeObjTest, AddingToAnItemLeavesTheLabelANewItemSetsIt) {
  VaskLoadNodeObj loads;
  loads.SetLoadNode("N1", "DEAD", 0, 0, 1, 0, 0, 0);
  loads.SetLoadNode("OTHER", "DEAD", 0, 0, 1, 0, 0, 0);
  EXPECT_EQ(loads.Label, "N1");
  EXPECT_EQ(loads.F3(1), 2);
  loads.SetLoadNode("N2", "LIVE", 0, 0, 1, 0, 0, 0);
  EXPECT_EQ(loads.Label, "N2");
}

// A point loaded in many patterns: past the first few items its patterns are found through
// a table, which must give each pattern its own item as the search from the first does,
// however the loads of the patterns come.
TEST(VaskLoadNodeObjTest, APointOfManyPatternsKeepsOneItemForEach) {
  VaskLoadNodeObj loads;
  for (int round = 1; round <= 3; ++round) {
    for (int p = 1; p <= 40; ++p) {
      loads.SetLoadNode("N1", "P" + std::to_string(p), p, 0, 0, 0, 0, round);
    }
  }
  loads.SetLoadNode("N1", "P7", 0, 1000, 0, 0, 0, 0);
  ASSERT_EQ(loads.ItemNum, 40);
  EXPECT_EQ(loads.ItemsKept(), 40);
  for (int i = 1; i <= 40; ++i) {
    EXPECT_EQ(loads.LoadPattern(i), "P" + std::to_string(i));
    EXPECT_EQ(loads.F1(i), 3 * i) << i;
    EXPECT_EQ(loads.M3(i), 6) << i;
  }
  EXPECT_EQ(loads.F2(7), 1000);
  EXPECT_EQ(loads.F2(8), 0);
  loads.SetLoadNode("N2", "P41", 0, 0, 1, 0, 0, 0);
  EXPECT_EQ(loads.ItemNum, 41);
  EXPECT_EQ(loads.Label, "N2");
}

// ---- VaskPairObj and Interpolate ----

TEST(VaskPairObjTest, FirstPairIsTheTwoEndsCarryingNothing) {
  VaskPairObj pairs;
  pairs.AddFirstPair();
  EXPECT_EQ(StationsOf(pairs), (std::vector<Station>{{0, 0, 0}, {1, 0, 0}}));
  EXPECT_EQ(pairs.ItemsKept(), 2);
}

TEST(VaskPairObjTest, APieceInsideTheFrameAddsTwoStations) {
  VaskPairObj pairs;
  pairs.AddPair(0.2, 0, 3, 0.6, 5, 0);
  EXPECT_EQ(StationsOf(pairs),
            (std::vector<Station>{{0, 0, 0}, {0.2, 0, 3}, {0.6, 5, 0}, {1, 0, 0}}));
}

TEST(VaskPairObjTest, StationsBetweenTheEndsTakeTheStraightLine) {
  VaskPairObj pairs;
  pairs.AddPair(0.2, 0, 1, 0.6, 1, 0);
  pairs.AddPair(0, 0, 0, 1, 10, 0);
  EXPECT_EQ(StationsOf(pairs),
            (std::vector<Station>{{0, 0, 0}, {0.2, 2, 3}, {0.6, 7, 6}, {1, 10, 0}}));
}

TEST(VaskPairObjTest, ANewStationInsideALoadedSpanStartsFromTheValueThere) {
  VaskPairObj pairs;
  pairs.AddPair(0, 0, 0, 1, 10, 0);
  pairs.AddPair(0.5, 0, 1, 0.75, 1, 0);
  EXPECT_EQ(StationsOf(pairs), (std::vector<Station>{
                                   {0, 0, 0}, {0.5, 5, 6}, {0.75, 8.5, 7.5}, {1, 10, 0}}));
}

TEST(VaskPairObjTest, ADistanceWithin1e6OfAStationIsThatStation) {
  VaskPairObj pairs;
  pairs.AddPair(0, 0, 1, 0.5, 1, 0);
  pairs.AddPair(0.5000005, 0, 2, 0.9999995, 2, 0);
  EXPECT_EQ(StationsOf(pairs), (std::vector<Station>{{0, 0, 1}, {0.5, 1, 2}, {1, 2, 0}}));
  // 2e-6 away is a station of its own.
  pairs.AddPair(0.500002, 0, 4, 0.7, 4, 0);
  ASSERT_EQ(pairs.ItemNum, 5);
  EXPECT_EQ(pairs.dist(3), 0.500002);
}

TEST(VaskPairObjTest, TheListStartsEmptyAndGrowsAsStationsArrive) {
  VaskPairObj pairs;
  EXPECT_EQ(pairs.ItemsKept(), 0);
  for (int i = 1; i <= 60; ++i) pairs.AddPair(i / 100.0, 0, 1, i / 100.0 + 0.005, 1, 0);
  EXPECT_EQ(pairs.ItemNum, 122);
  EXPECT_EQ(pairs.ItemsKept(), 122);
  EXPECT_EQ(pairs.dist(1), 0);
  EXPECT_EQ(pairs.dist(2), 0.01);
  EXPECT_EQ(pairs.ValRight(2), 1);
  EXPECT_EQ(pairs.dist(121), 0.605);
  EXPECT_EQ(pairs.ValLeft(121), 1);
  EXPECT_EQ(pairs.dist(122), 1);
}

TEST(VaskLoadInterpolateTest, StraightLineBetweenThePoints) {
  EXPECT_DOUBLE_EQ(Interpolate(0.25, 0, 2, 1, 6), 3);
  EXPECT_DOUBLE_EQ(Interpolate(0, 0, 2, 1, 6), 2);
  EXPECT_DOUBLE_EQ(Interpolate(1, 0, 2, 1, 6), 6);
}

TEST(VaskLoadInterpolateTest, PointsInEitherOrder) {
  EXPECT_DOUBLE_EQ(Interpolate(0.25, 1, 6, 0, 2), 3);
}

TEST(VaskLoadInterpolateTest, ZeroOutsideThePointsOrWhenTheyCoincide) {
  EXPECT_EQ(Interpolate(1.5, 0, 2, 1, 6), 0);
  EXPECT_EQ(Interpolate(-0.5, 0, 2, 1, 6), 0);
  EXPECT_EQ(Interpolate(-0.5, 1, 6, 0, 2), 0);
  EXPECT_EQ(Interpolate(0.5, 0.5, 2, 0.5, 6), 0);
}

// ---- VaskLoadFrameDistObj ----

TEST(VaskLoadFrameDistTest, UpwardDirectionsAreStoredNegated) {
  VaskLoadFrameDistObj load;
  load.AddLoadFrameDistributed(kGlobalZ, 0, 0.5, 1, 2);
  load.AddLoadFrameDistributed(kProjectedZ, 0, 0.5, -3, 4);
  load.AddLoadFrameDistributed(kGravity, 0, 0.5, 5, 6);
  load.AddLoadFrameDistributed(kProjectedGravity, 0, 0.5, 7, -8);
  EXPECT_EQ(PiecesOf(load), (std::vector<Piece>{
                                {0, 0.5, -1, -2}, {0, 0.5, 3, -4}, {0, 0.5, 5, 6}, {0, 0.5, 7, -8}}));
}

TEST(VaskLoadFrameDistTest, TheItemListStartsEmptyAndGrowsAsItemsArrive) {
  VaskLoadFrameDistObj load;
  EXPECT_EQ(load.ItemsKept(), 0);
  EXPECT_EQ(load.PairObj.ItemsKept(), 0);
  load.AddLoadFrameDistributed(kGravity, 0, 1, 2, 2);
  EXPECT_EQ(load.ItemsKept(), 1);
  for (int i = 0; i < 100; ++i) load.AddLoadFrameDistributed(kGravity, 0, 1, 1, 1);
  EXPECT_EQ(load.ItemNum, 101);
  EXPECT_EQ(load.ItemsKept(), 101);
  EXPECT_EQ(load.Val1(1), 2);
  EXPECT_EQ(load.Val1(101), 1);
}

TEST(VaskLoadFrameDistTest, ASortThatJoinsPiecesKeepsTheListsAndReadsOnlyTheItems) {
  VaskLoadFrameDistObj load;
  load.AddLoadFrameDistributed(kGravity, 0, 0.5, 1, 2);
  load.AddLoadFrameDistributed(kGravity, 0.5, 1, 2, 3);
  load.AddLoadFrameDistributed(kGravity, 0.25, 0.75, 4, 4);
  load.SortLoadFrameDistributed(kMetre);
  // Three stations inside the frame: four pieces, the middle two joined again.
  EXPECT_EQ(PiecesOf(load), (std::vector<Piece>{
                                {0, 0.25, 1, 1.5}, {0.25, 0.75, 5.5, 6.5}, {0.75, 1, 2.5, 3}}));
  // The lists keep their longest length; the entry past the items is not read.
  EXPECT_EQ(load.ItemsKept(), 4);
  EXPECT_EQ(load.PairObj.ItemsKept(), 5);
  // A second sort adds the items again onto the stations of the first.
  load.SortLoadFrameDistributed(kMetre);
  EXPECT_EQ(PiecesOf(load), (std::vector<Piece>{
                                {0, 0.25, 2, 3}, {0.25, 0.75, 11, 13}, {0.75, 1, 5, 6}}));
  EXPECT_EQ(load.ItemsKept(), 4);
}

TEST(VaskLoadFrameDistTest, OverlappingUniformLoadsBecomeThreePieces) {
  VaskLoadFrameDistObj load;
  load.AddLoadFrameDistributed(kGravity, 0, 0.6, 1, 1);
  load.AddLoadFrameDistributed(kGravity, 0.4, 1, 1, 1);
  load.SortLoadFrameDistributed(kMetre);
  EXPECT_EQ(PiecesOf(load),
            (std::vector<Piece>{{0, 0.4, 1, 1}, {0.4, 0.6, 2, 2}, {0.6, 1, 1, 1}}));
}

TEST(VaskLoadFrameDistTest, AdjoiningEqualLoadsBecomeOnePiece) {
  VaskLoadFrameDistObj load;
  load.AddLoadFrameDistributed(kGravity, 0, 0.5, 1, 1);
  load.AddLoadFrameDistributed(kGravity, 0.5, 1, 1, 1);
  load.SortLoadFrameDistributed(kMetre);
  EXPECT_EQ(PiecesOf(load), (std::vector<Piece>{{0, 1, 1, 1}}));
}

TEST(VaskLoadFrameDistTest, AdjoiningPiecesOnOneSlopeAreJoined) {
  VaskLoadFrameDistObj load;
  load.AddLoadFrameDistributed(kGravity, 0.5, 1, 5, 10);
  load.AddLoadFrameDistributed(kGravity, 0, 0.5, 0, 5);
  load.SortLoadFrameDistributed(kMetre);
  EXPECT_EQ(PiecesOf(load), (std::vector<Piece>{{0, 1, 0, 10}}));
}

TEST(VaskLoadFrameDistTest, AdjoiningPiecesWithAKinkStayApart) {
  VaskLoadFrameDistObj load;
  load.AddLoadFrameDistributed(kGravity, 0, 0.5, 0, 5);
  load.AddLoadFrameDistributed(kGravity, 0.5, 1, 5, 5);
  load.SortLoadFrameDistributed(kMetre);
  EXPECT_EQ(PiecesOf(load), (std::vector<Piece>{{0, 0.5, 0, 5}, {0.5, 1, 5, 5}}));
}

TEST(VaskLoadFrameDistTest, SpansCarryingNothingAreLeftOut) {
  VaskLoadFrameDistObj load;
  load.AddLoadFrameDistributed(kGravity, 0.7, 0.9, 3, 3);
  load.AddLoadFrameDistributed(kGravity, 0.2, 0.4, 2, 4);
  load.SortLoadFrameDistributed(kMetre);
  EXPECT_EQ(PiecesOf(load), (std::vector<Piece>{{0.2, 0.4, 2, 4}, {0.7, 0.9, 3, 3}}));
}

TEST(VaskLoadFrameDistTest, LoadsThatCancelLeaveNoPiece) {
  VaskLoadFrameDistObj load;
  load.AddLoadFrameDistributed(kGravity, 0, 1, 2, 2);
  load.AddLoadFrameDistributed(kGlobalZ, 0, 1, 2, 2);
  load.SortLoadFrameDistributed(kMetre);
  EXPECT_EQ(load.ItemNum, 0);
}

TEST(VaskLoadFrameDistTest, SortingASecondTimeAddsTheItemsOnceMore) {
  // The station list is kept: a second sort superposes the sorted items on it again.
  VaskLoadFrameDistObj load;
  load.AddLoadFrameDistributed(kGravity, 0, 1, 1, 1);
  load.SortLoadFrameDistributed(kMetre);
  load.SortLoadFrameDistributed(kMetre);
  EXPECT_EQ(PiecesOf(load), (std::vector<Piece>{{0, 1, 2, 2}}));
}

TEST(VaskLoadFrameDistTest, SpanToleranceFollowsTheLengthUnit) {
  EXPECT_NEAR(LoadFrameDistributedSpanTolerance(kMillimetre), 1e-6, 1e-18);
  EXPECT_NEAR(LoadFrameDistributedSpanTolerance(3), 1e-7, 1e-19);
  EXPECT_NEAR(LoadFrameDistributedSpanTolerance(kMetre), 1e-9, 1e-15);
  EXPECT_NEAR(LoadFrameDistributedSpanTolerance(kInch), 3.937e-8, 1e-14);
  EXPECT_NEAR(LoadFrameDistributedSpanTolerance(kFoot), 3.2808333e-9, 1e-15);
}

// Stations already on the list (a sort that ran before) with a loaded span 5e-7 long.
VaskLoadFrameDistObj WithNarrowLoadedSpan() {
  VaskLoadFrameDistObj load;
  VaskPairObj& pairs = load.PairObj;
  pairs.AddFirstPair();
  pairs.ItemNum = 4;
  pairs.KeepItems(4);
  const std::vector<Station> stations = {{0, 0, 0}, {0.5, 0, 3}, {0.5000005, 3, 0}, {1, 0, 0}};
  for (int i = 1; i <= 4; ++i) {
    const Station& s = stations[static_cast<std::size_t>(i - 1)];
    pairs.dist(i) = s.dist;
    pairs.ValLeft(i) = s.left;
    pairs.ValRight(i) = s.right;
  }
  return load;
}

TEST(VaskLoadFrameDistTest, ASpanNoLongerThanTheToleranceIsLeftOut) {
  VaskLoadFrameDistObj millimetres = WithNarrowLoadedSpan();
  millimetres.SortLoadFrameDistributed(kMillimetre);
  EXPECT_EQ(millimetres.ItemNum, 0);

  VaskLoadFrameDistObj metres = WithNarrowLoadedSpan();
  metres.SortLoadFrameDistributed(kMetre);
  EXPECT_EQ(PiecesOf(metres), (std::vector<Piece>{{0.5, 0.5000005, 3, 3}}));
}

TEST(VaskLoadFrameDistTest, ASpanLeftOutForItsLengthIsTold) {
  std::vector<DropNote> notes;
  const DropObserver observer = [&notes](const DropNote& note) { notes.push_back(note); };
  VaskLoadFrameDistObj millimetres = WithNarrowLoadedSpan();
  millimetres.Label = "B7";
  millimetres.PatternLabel = "DEAD";
  millimetres.SortLoadFrameDistributed(kMillimetre, &observer);
  EXPECT_EQ(millimetres.ItemNum, 0);
  ASSERT_EQ(notes.size(), 1u);
  EXPECT_EQ(notes[0].kind, "frame distributed load");
  EXPECT_EQ(notes[0].name, "B7 (DEAD)");
  EXPECT_EQ(notes[0].reason.rfind("the loaded piece from RD 0.5 to 0.5000005 (3 to 3) is no "
                                  "longer than the length tolerance ",
                                  0),
            0u)
      << notes[0].reason;

  // In metres the span is long enough: nothing is told.
  VaskLoadFrameDistObj metres = WithNarrowLoadedSpan();
  metres.SortLoadFrameDistributed(kMetre, &observer);
  EXPECT_EQ(notes.size(), 1u);
}

// ---- VaskLoadFramePointObj ----

TEST(VaskLoadFramePointTest, UpwardDirectionsAreStoredNegatedAndTheListFitsTheItems) {
  VaskLoadFramePointObj load;
  load.AddLoadFramePoint(kGlobalZ, 0.1, 1);
  load.AddLoadFramePoint(kProjectedZ, 0.2, 2);
  load.AddLoadFramePoint(kGravity, 0.3, 3);
  load.AddLoadFramePoint(kProjectedGravity, 0.4, -4);
  EXPECT_EQ(PointsOf(load),
            (std::vector<PointLoad>{{0.1, -1}, {0.2, -2}, {0.3, 3}, {0.4, -4}}));
  EXPECT_EQ(load.ItemsKept(), 4);
}

TEST(VaskLoadFramePointTest, SortOrdersByDistance) {
  VaskLoadFramePointObj load;
  load.AddLoadFramePoint(kGravity, 0.7, 1);
  load.AddLoadFramePoint(kGravity, 0.2, 2);
  load.AddLoadFramePoint(kGravity, 0.5, 3);
  load.SortLoadFramePoint();
  EXPECT_EQ(PointsOf(load), (std::vector<PointLoad>{{0.2, 2}, {0.5, 3}, {0.7, 1}}));
}

TEST(VaskLoadFramePointTest, TwoLoadsAtOneDistanceBecomeTheirSum) {
  VaskLoadFramePointObj load;
  load.AddLoadFramePoint(kGravity, 0.4, 5);
  load.AddLoadFramePoint(kGravity, 0.4000005, 2.5);
  load.SortLoadFramePoint();
  EXPECT_EQ(PointsOf(load), (std::vector<PointLoad>{{0.4, 7.5}}));
}

TEST(VaskLoadFramePointTest, AFoldReadsTheStaleTailAndDropsTheLastLoad) {
  VaskLoadFramePointObj load;
  load.AddLoadFramePoint(kGravity, 0.3, 5);
  load.AddLoadFramePoint(kGravity, 0.3, 2.5);
  load.AddLoadFramePoint(kGravity, 0.7, 1);
  load.SortLoadFramePoint();
  EXPECT_EQ(PointsOf(load), (std::vector<PointLoad>{{0.3, 7.5}}));
  // The list keeps its length; what stands past ItemNum is what the fold left there.
  ASSERT_EQ(load.ItemsKept(), 3);
  EXPECT_EQ(load.RD(2), 0.7);
  EXPECT_EQ(load.Val(2), 2);
}

// Records the notes of a sort.
struct NoteList {
  std::vector<DropNote> notes;
  DropObserver observer = [this](const DropNote& note) { notes.push_back(note); };
};

TEST(VaskLoadFramePointTest, TheLoadThatFallsOffDuringAFoldIsTold) {
  NoteList told;
  VaskLoadFramePointObj load;
  load.Label = "B1";
  load.PatternLabel = "LIVE";
  load.AddLoadFramePoint(kGravity, 0.3, 5);
  load.AddLoadFramePoint(kGravity, 0.3, 2.5);
  load.AddLoadFramePoint(kGravity, 0.7, 1);
  load.SortLoadFramePoint(&told.observer);
  EXPECT_EQ(PointsOf(load), (std::vector<PointLoad>{{0.3, 7.5}}));
  ASSERT_EQ(told.notes.size(), 1u);
  EXPECT_EQ(told.notes[0].kind, "frame point load");
  EXPECT_EQ(told.notes[0].name, "B1 (LIVE)");
  EXPECT_EQ(told.notes[0].reason,
            "the load of 1 at RD 0.7 falls off the list while coincident loads are folded");
}

TEST(VaskLoadFramePointTest, ThreeLoadsAtOneDistanceAllFallOffAndAreToldOnce) {
  NoteList told;
  VaskLoadFramePointObj load;
  load.Label = "B2";
  load.PatternLabel = "DEAD";
  load.AddLoadFramePoint(kGravity, 0.3, 1);
  load.AddLoadFramePoint(kGravity, 0.3, 1);
  load.AddLoadFramePoint(kGravity, 0.3, 1);
  load.SortLoadFramePoint(&told.observer);
  // The first fold with a stale copy only moves the third load into the first; the second
  // takes the whole sum off the list.
  EXPECT_EQ(load.ItemNum, 0);
  ASSERT_EQ(told.notes.size(), 1u);
  EXPECT_EQ(told.notes[0].reason,
            "the load of 3 at RD 0.3 falls off the list while coincident loads are folded");
}

TEST(VaskLoadFramePointTest, FoldsWithinTheListAreNotTold) {
  NoteList told;
  VaskLoadFramePointObj load;
  load.AddLoadFramePoint(kGravity, 0.1, 3);
  load.AddLoadFramePoint(kGravity, 0.2, 1);
  load.AddLoadFramePoint(kGravity, 0.4, 5);
  load.AddLoadFramePoint(kGravity, 0.4000005, 2.5);
  load.SortLoadFramePoint(&told.observer);
  EXPECT_EQ(PointsOf(load), (std::vector<PointLoad>{{0.1, 3}, {0.2, 1}, {0.4, 7.5}}));
  EXPECT_TRUE(told.notes.empty());
}

TEST(VaskLoadFramePointTest, ASwapWithTheStaleTailLosesALoadAndDoublesAnother) {
  // After the fold at 0.4 the stale copy of the load at 0.2 trades places with the sum:
  // the sum goes past ItemNum and the load at 0.2 stands twice.
  NoteList told;
  VaskLoadFramePointObj load;
  load.Label = "B3";
  load.PatternLabel = "DEAD";
  load.AddLoadFramePoint(kGravity, 0.4, 5);
  load.AddLoadFramePoint(kGravity, 0.4000005, 2.5);
  load.AddLoadFramePoint(kGravity, 0.2, 1);
  load.SortLoadFramePoint(&told.observer);
  EXPECT_EQ(PointsOf(load), (std::vector<PointLoad>{{0.2, 1}, {0.2, 1}}));
  ASSERT_EQ(told.notes.size(), 2u);
  EXPECT_EQ(told.notes[0].name, "B3 (DEAD)");
  EXPECT_EQ(told.notes[0].reason, "the loads at RD 0.2 come to 1, but the sort keeps 2");
  EXPECT_EQ(told.notes[1].reason,
            "the load of 7.5 at RD 0.4 falls off the list while coincident loads are folded");
}

TEST(VaskLoadNodeTest, AnEarlierObjectOfANodeAndPatternIsToldAsReplaced) {
  VaskLoadNodeObj own;
  own.SetLoadNode("N2", "DEAD", 0, 0, -5, 0, 0, 0);
  own.SetLoadNode("N2", "LIVE", 0, 0, -2, 0, 0, 0);
  own.SetLoadNode("N2", "WIND", 0, 0, 0, 0, 0, 0);
  VaskLoadNodeObj endLoad;
  endLoad.SetLoadNode("N2", "DEAD", 0, 0, 4, 0, 0, 0);
  VaskLoadNodeObj zeroEnd;
  zeroEnd.SetLoadNode("N2", "WIND", 0, 0, 1, 0, 0, 0);
  VaskLoadNodeObj other;
  other.SetLoadNode("N3", "DEAD", 0, 0, 1, 0, 0, 0);
  NoteList told;
  NoteReplacedNodeLoads({&own, &endLoad, &zeroEnd, &other}, told.observer);
  // LIVE has one object; WIND's replaced item carries nothing.
  ASSERT_EQ(told.notes.size(), 1u);
  EXPECT_EQ(told.notes[0].kind, "nodal load");
  EXPECT_EQ(told.notes[0].name, "N2 (DEAD)");
  EXPECT_EQ(told.notes[0].reason,
            "a later load of the node in the same pattern (a frame's end point load moved onto "
            "it) replaces it: the structure keeps only the last");
}

TEST(VaskLoadFramePointTest, RemoveMovesTheLaterItemsDownAndKeepsTheListLength) {
  VaskLoadFramePointObj load;
  load.AddLoadFramePoint(kGravity, 0.1, 1);
  load.AddLoadFramePoint(kGravity, 0.2, 2);
  load.AddLoadFramePoint(kGravity, 0.3, 3);
  load.RemoveLoadFramePoint(1);
  EXPECT_EQ(PointsOf(load), (std::vector<PointLoad>{{0.2, 2}, {0.3, 3}}));
  ASSERT_EQ(load.ItemsKept(), 3);
  EXPECT_EQ(load.RD(3), 0.3);
  load.RedimLoadFramePoint();
  EXPECT_EQ(load.ItemsKept(), 2);
}

// ---- VaskFrameObj ----

TEST(VaskFrameLoadTest, DistributedNotEmptyLooksAtTheItemsOfThePattern) {
  VaskFrameObj frame;
  VaskLoadFrameDistObj& dead = *frame.LoadFrameDistributedObj.Add();
  dead.PatternLabel = "DEAD";
  dead.AddLoadFrameDistributed(kGravity, 0, 1, 0, 2e-6);
  VaskLoadFrameDistObj& live = *frame.LoadFrameDistributedObj.Add();
  live.PatternLabel = "LIVE";
  live.AddLoadFrameDistributed(kGravity, 0, 1, 1e-6, -1e-6);
  EXPECT_TRUE(frame.LoadFrameDistributedNotEmpty("DEAD"));
  EXPECT_FALSE(frame.LoadFrameDistributedNotEmpty("LIVE"));
  EXPECT_FALSE(frame.LoadFrameDistributedNotEmpty("WIND"));
  EXPECT_FALSE(frame.LoadFramePointNotEmpty("DEAD"));
}

TEST(VaskFrameLoadTest, PointNotEmptyLooksAtTheItemsWithinItemNum) {
  VaskFrameObj frame;
  VaskLoadFramePointObj& dead = *frame.LoadFramePointObj.Add();
  dead.PatternLabel = "DEAD";
  dead.AddLoadFramePoint(kGravity, 0.5, 1e-6);
  dead.AddLoadFramePoint(kGlobalZ, 0.6, 3e-6);
  EXPECT_TRUE(frame.LoadFramePointNotEmpty("DEAD"));
  dead.RemoveLoadFramePoint(2);
  // The removed load still stands past ItemNum; it does not count.
  EXPECT_FALSE(frame.LoadFramePointNotEmpty("DEAD"));
  EXPECT_FALSE(frame.LoadFrameDistributedNotEmpty("DEAD"));
}

// ---- VaskLoadAreaObj ----

TEST(VaskLoadAreaTest, ValuesAreStoredPositiveUpwardAsText) {
  VaskLoadAreaObj loads;
  loads.SetLoadArea("A1", "DEAD", "GLOBAL", kGravity, -2.5);
  loads.SetLoadArea("A1", "LIVE", "GLOBAL", kGlobalZ, 3);
  loads.SetLoadArea("A1", "SDL", "GLOBAL", kProjectedGravity, 4);
  loads.SetLoadArea("A1", "UP", "GLOBAL", kProjectedZ, 1.0 / 3.0);
  ASSERT_EQ(loads.ItemNum, 4);
  EXPECT_EQ(loads.Label, "A1");
  EXPECT_EQ(loads.Value(1), "2.5");
  EXPECT_EQ(loads.Value(2), "3");
  EXPECT_EQ(loads.Value(3), "-4");
  EXPECT_EQ(loads.Value(4), "0.333333333333333");
  EXPECT_EQ(loads.ValueNumber(4), 0.333333333333333);
  EXPECT_EQ(loads.Direction(3), kProjectedGravity);
  EXPECT_EQ(loads.LoadPattern(3), "SDL");
  EXPECT_EQ(loads.ItemsKept(), 4);
}

TEST(VaskLoadAreaTest, ASumIsRoundedThroughTheText) {
  VaskLoadAreaObj loads;
  loads.SetLoadArea("A1", "DEAD", "GLOBAL", kGlobalZ, 0.1);
  loads.SetLoadArea("A1", "DEAD", "GLOBAL", kGlobalZ, 0.2);
  ASSERT_EQ(loads.ItemNum, 1);
  EXPECT_EQ(loads.Value(1), "0.3");
  // The number sum would be 0.30000000000000004.
  EXPECT_NE(0.1 + 0.2, 0.3);
  EXPECT_EQ(loads.ValueNumber(1), 0.3);
}

TEST(VaskLoadAreaTest, LaterLoadsOfThePatternAddOrSubtractByTheirOwnDirection) {
  VaskLoadAreaObj loads;
  loads.SetLoadArea("A1", "DEAD", "GLOBAL", kGlobalZ, 2);
  loads.SetLoadArea("A1", "DEAD", "GLOBAL", kGravity, 5);
  loads.SetLoadArea("A1", "DEAD", "GLOBAL", kProjectedZ, 0.5);
  ASSERT_EQ(loads.ItemNum, 1);
  EXPECT_EQ(loads.Value(1), "-2.5");
  // The item keeps the direction of its first load.
  EXPECT_EQ(loads.Direction(1), kGlobalZ);
}

TEST(VaskLoadAreaTest, AnAreaOfManyPatternsKeepsOneItemForEach) {
  VaskLoadAreaObj loads;
  for (int round = 1; round <= 2; ++round) {
    for (int p = 1; p <= 30; ++p) {
      loads.SetLoadArea("A1", "P" + std::to_string(p), "GLOBAL", kGlobalZ, p);
    }
  }
  loads.SetLoadArea("A1", "P20", "GLOBAL", kGravity, 1);
  ASSERT_EQ(loads.ItemNum, 30);
  EXPECT_EQ(loads.ItemsKept(), 30);
  for (int i = 1; i <= 30; ++i) {
    EXPECT_EQ(loads.LoadPattern(i), "P" + std::to_string(i));
    EXPECT_EQ(loads.ValueNumber(i), i == 20 ? 39 : 2 * i) << i;
  }
}

TEST(VaskLoadAreaTest, RejectionLooksAtSystemAndDirectionOnly) {
  for (const int dir : {kGlobalZ, kProjectedZ, kGravity, kProjectedGravity}) {
    EXPECT_FALSE(IsAreaLoadRejected(1, "GLOBAL", dir)) << dir;
    EXPECT_FALSE(IsAreaLoadRejected(99, "  GLOBAL ", dir)) << dir;
    EXPECT_TRUE(IsAreaLoadRejected(1, "Global", dir)) << dir;
    EXPECT_TRUE(IsAreaLoadRejected(1, "Local", dir)) << dir;
  }
  for (const int dir : {1, 2, 3, 4, 5, 7, 8, 12}) {
    EXPECT_TRUE(IsAreaLoadRejected(1, "GLOBAL", dir)) << dir;
  }
}

TEST(VaskLoadAreaTest, OnlySpacesAreTrimmedFromTheSystemName) {
  EXPECT_TRUE(IsGlobalLoadCSys("GLOBAL"));
  EXPECT_TRUE(IsGlobalLoadCSys(" GLOBAL  "));
  EXPECT_FALSE(IsGlobalLoadCSys("\tGLOBAL"));
  EXPECT_FALSE(IsGlobalLoadCSys("GLOBAL\n"));
  EXPECT_FALSE(IsGlobalLoadCSys("global"));
  EXPECT_FALSE(IsGlobalLoadCSys(""));
}

}  // namespace
}  // namespace vtt
