// Load patterns of the structure: nodal loads with the two acceleration patterns, frame
// load subgroups with their item chains and indexes, and self-weight flags.
#include "analysis/fill_trelk_load.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <random>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "analysis/fill_trelk_nodal_mass.h"
#include "elements/fill_trelk_node.h"
#include "source/drop_note.h"
#include "source/fake_host_model_test_support.h"
#include "source/vask_model.h"
#include "store/load_records.h"
#include "store/trelk_store.h"
#include "support/expected_bytes.h"
#include "transfer/failure.h"
#include "transfer/messages.h"

namespace vtt {
namespace {

using vtt::testing::ExpectedBytes;

constexpr DofFlags kFree{};
constexpr DofFlags kHeldU1{true, false, false, false, false, false};

std::vector<std::uint8_t> Bytes(std::span<const std::uint8_t> span) {
  return {span.begin(), span.end()};
}

// The 72 bytes of a pattern record: name, two zero bytes, the code, 28 zero bytes.
std::vector<std::uint8_t> PatternBytes(const std::string& name, std::int16_t code) {
  return ExpectedBytes().Ascii(name, 40).Zeros(2).Short(code).Zeros(28).Bytes();
}

// The 32 bytes of a nodal load value.
std::vector<std::uint8_t> NodeValueBytes(float f1, float f2, float f3, float m1, float m2,
                                         float m3, float used) {
  return ExpectedBytes()
      .Single(f1).Single(f2).Single(f3).Single(m1).Single(m2).Single(m3).Single(used)
      .Zeros(4)
      .Bytes();
}

class LoadFill : public ::testing::Test {
 protected:
  LoadFill() : model(host) { store.InitTrelkStore(); }

  VaskLoadPatternObj* Pattern(const std::string& label) {
    VaskLoadPatternObj* p = model.AddLoadPattern();
    p->Label = label;
    return p;
  }

  // ---- Nodes ----
  VaskNodeObj* Node(const std::string& label, DofFlags restraints = kFree) {
    return model.AddNode(label, 0.0, 0.0, 0.0, restraints);
  }
  VaskLoadNodeObj* NodeLoad(const std::string& node, const std::string& pattern,
                            std::array<double, 6> f) {
    VaskLoadNodeObj* load = model.AddLoadNode();
    load->Label = node;
    AddNodeItem(load, pattern, f);
    return load;
  }
  static void AddNodeItem(VaskLoadNodeObj* load, const std::string& pattern,
                          std::array<double, 6> f) {
    load->SetLoadNode(load->Label, pattern, f[0], f[1], f[2], f[3], f[4], f[5]);
  }
  void FillNodesAndMass() {
    FillTrelkNodes(model, store, messages);
    FillTrelkNodalMass(model, store);
  }
  std::vector<std::uint8_t> NodeValue(std::int32_t pattern, std::int32_t node) {
    return Bytes(store.LoadNodeValue.Get({pattern, node}));
  }

  // ---- Frames ----
  // Element groups and elements in the structure, as the element step would leave them.
  void Elements(int groups, int elems) {
    for (int g = 0; g < groups; ++g) store.AddTrelkElemGroup();
    for (int e = 0; e < elems; ++e) store.AddTrelkElem();
  }
  VaskFrameObj* Frame(int group, int elem) {
    VaskFrameObj* f = model.AddFrame();
    f->Label = "F" + std::to_string(model.FrameNum());
    f->idTrelkElemGroup = group;
    f->idTrelkElem = elem;
    return f;
  }
  // A distributed object of the frame: items (RD1, RD2, Val1, Val2).
  static VaskLoadFrameDistObj* Dist(VaskFrameObj* f, const std::string& pattern,
                                    const std::vector<std::array<double, 4>>& items,
                                    const std::string& csys = "GLOBAL") {
    VaskLoadFrameDistObj* d = f->LoadFrameDistributedObj.Add();
    d->Label = f->Label;
    d->PatternLabel = pattern;
    d->CSys = csys;
    d->LoadType = 1;
    d->ItemNum = static_cast<int>(items.size());
    d->KeepItems(d->ItemNum);
    for (int i = 1; i <= d->ItemNum; ++i) {
      const auto& item = items[static_cast<std::size_t>(i - 1)];
      d->RD1(i) = item[0];
      d->RD2(i) = item[1];
      d->Val1(i) = item[2];
      d->Val2(i) = item[3];
    }
    return d;
  }
  // A point object of the frame: items (RD, Val).
  static VaskLoadFramePointObj* Point(VaskFrameObj* f, const std::string& pattern,
                                      const std::vector<std::array<double, 2>>& items) {
    VaskLoadFramePointObj* p = f->LoadFramePointObj.Add();
    p->Label = f->Label;
    p->PatternLabel = pattern;
    p->CSys = "GLOBAL";
    p->LoadType = 1;
    p->ItemNum = static_cast<int>(items.size());
    p->KeepItems(p->ItemNum);
    for (int i = 1; i <= p->ItemNum; ++i) {
      p->RD(i) = items[static_cast<std::size_t>(i - 1)][0];
      p->Val(i) = items[static_cast<std::size_t>(i - 1)][1];
    }
    return p;
  }
  std::int64_t ElemIndex(std::int32_t q, std::int32_t elem) {
    return store.LoadFrameElemIndex.Element({q, elem}).GetInt(load_frame_index::Value);
  }
  std::int64_t GroupIndex(std::int32_t q, std::int32_t g) {
    return store.LoadFrameGroupIndex.Element({q, g}).GetInt(load_frame_index::Value);
  }
  RecordRef GroupValue(std::int32_t s, std::int32_t q, std::int32_t g) {
    return store.LoadFrameGroupValue.Element({s, q, g});
  }
  RecordRef Item(std::int32_t t) { return store.LoadFrameValues.Record(t); }

  test_support::FakeHostModel host;
  VaskModelObj model;
  TrelkStore store;
  CollectedMessages messages;
};

// ---- Nodal load patterns ----

TEST_F(LoadFill, WithNoLoadsTheTwoAccelerationPatternsAreStillThere) {
  Node("A");
  FillNodesAndMass();
  FillTrelkLoadNode(model, store);
  EXPECT_EQ(store.LoadNodePatterns.Count(), 2);
  EXPECT_EQ(store.LoadNodePatterns.Capacity(), 12);
  EXPECT_EQ(Bytes(store.LoadNodePatterns.RecordBytes(1)), PatternBytes("AccelUX", 1));
  EXPECT_EQ(Bytes(store.LoadNodePatterns.RecordBytes(2)), PatternBytes("AccelUY", 2));
  // No mass, so no acceleration load either.
  EXPECT_EQ(NodeValue(1, 2), std::vector<std::uint8_t>(32, 0));
  EXPECT_EQ(NodeValue(2, 2), std::vector<std::uint8_t>(32, 0));
}

TEST_F(LoadFill, TheValueMatrixIsSizedByPatternCapacityAndNodeCapacity) {
  Pattern("DEAD")->LoadNodeNotEmpty = true;
  Node("A");
  FillNodesAndMass();
  FillTrelkLoadNode(model, store);
  EXPECT_EQ(store.LoadNodePatterns.Count(), 3);
  EXPECT_EQ(store.LoadNodePatterns.Capacity(), 13);
  ASSERT_EQ(store.LoadNodeValue.Bounds().size(), 2u);
  EXPECT_EQ(store.LoadNodeValue.Bounds()[0].low, 1);
  EXPECT_EQ(store.LoadNodeValue.Bounds()[0].high, 13);
  EXPECT_EQ(store.LoadNodeValue.Bounds()[1].low, 1);
  EXPECT_EQ(store.LoadNodeValue.Bounds()[1].high, store.Nodes.Capacity());
}

TEST_F(LoadFill, AccelerationLoadsAreTheU1MassAndARestrainedU1CarriesNone) {
  VaskNodeObj* free = Node("A");
  VaskNodeObj* held = Node("B", kHeldU1);
  for (VaskNodeObj* n : {free, held}) {
    n->PointMass(1) = 5.0;
    n->PointMass(2) = 7.0;  // the Y pattern does not read U2
  }
  model.MassSrcOption = 1;
  FillNodesAndMass();
  FillTrelkLoadNode(model, store);
  ASSERT_EQ(store.LoadNodePatterns.Count(), 2);
  EXPECT_EQ(NodeValue(1, free->id), NodeValueBytes(5, 0, 0, 0, 0, 0, 1));
  EXPECT_EQ(NodeValue(2, free->id), NodeValueBytes(0, 5, 0, 0, 0, 0, 1));
  EXPECT_EQ(NodeValue(1, held->id), NodeValueBytes(0, 0, 0, 0, 0, 0, 0));
  EXPECT_EQ(NodeValue(2, held->id), NodeValueBytes(0, 0, 0, 0, 0, 0, 0));
  // The artificial first node of the structure is no source node.
  EXPECT_EQ(NodeValue(1, 1), NodeValueBytes(0, 0, 0, 0, 0, 0, 0));
}

TEST_F(LoadFill, AMassAtTheZeroTestIsNoLoadAndJustAboveItIs) {
  VaskNodeObj* at = Node("A");
  VaskNodeObj* above = Node("B");
  FillTrelkNodes(model, store, messages);
  store.AddTrelkNodalMassPattern();
  // The f32 nearest 1e-6 lies below 1e-6; the next one up lies above.
  const float below_or_at = 1e-6f;
  ASSERT_LE(static_cast<double>(below_or_at), 1e-6);
  const float over = std::nextafter(below_or_at, 1.0f);
  ASSERT_GT(static_cast<double>(over), 1e-6);
  store.NodalMass.Element({1, at->id}).SetReal(nodal_mass_rec::Mass(1), below_or_at);
  store.NodalMass.Element({1, above->id}).SetReal(nodal_mass_rec::Mass(1), over);
  FillTrelkLoadNode(model, store);
  EXPECT_EQ(NodeValue(1, at->id), NodeValueBytes(0, 0, 0, 0, 0, 0, 0));
  EXPECT_EQ(NodeValue(1, above->id), NodeValueBytes(over, 0, 0, 0, 0, 0, 1));
  EXPECT_EQ(NodeValue(2, above->id), NodeValueBytes(0, over, 0, 0, 0, 0, 1));
}

TEST_F(LoadFill, NodalPatternsKeepModelOrderAndNameByModelPlace) {
  Pattern("EMPTY");
  VaskLoadPatternObj* dead = Pattern("  DEAD ");
  dead->LoadNodeNotEmpty = true;
  VaskLoadPatternObj* live = Pattern("LIVE");
  live->LoadNodeNotEmpty = true;
  VaskNodeObj* a = Node("A");
  VaskNodeObj* b = Node("B");
  NodeLoad("A", "  DEAD ", {1, 2, -3, 4, 5, 6});
  VaskLoadNodeObj* lb = NodeLoad("B", "LIVE", {0.1, 0, 0, 0, 0, 0});
  AddNodeItem(lb, "  DEAD ", {0, 0, 9.5, 0, 0, 0});
  FillNodesAndMass();
  FillTrelkLoadNode(model, store);

  ASSERT_EQ(store.LoadNodePatterns.Count(), 4);
  EXPECT_EQ(store.LoadNodePatterns.Capacity(), 14);
  EXPECT_EQ(Bytes(store.LoadNodePatterns.RecordBytes(1)), PatternBytes("LoadNode-DEAD", -3));
  EXPECT_EQ(Bytes(store.LoadNodePatterns.RecordBytes(2)), PatternBytes("LoadNode-LIVE", -3));
  EXPECT_EQ(Bytes(store.LoadNodePatterns.RecordBytes(3)), PatternBytes("AccelUX", 1));
  EXPECT_EQ(Bytes(store.LoadNodePatterns.RecordBytes(4)), PatternBytes("AccelUY", 2));
  EXPECT_EQ(dead->TrelkLoadPatternNodeName, "LoadNode-DEAD");
  EXPECT_EQ(live->TrelkLoadPatternNodeName, "LoadNode-LIVE");
  EXPECT_EQ(model.LoadPatternObj(1)->TrelkLoadPatternNodeName, "");

  EXPECT_EQ(NodeValue(1, a->id), NodeValueBytes(1, 2, -3, 4, 5, 6, 1));
  EXPECT_EQ(NodeValue(1, b->id), NodeValueBytes(0, 0, 9.5f, 0, 0, 0, 1));
  EXPECT_EQ(NodeValue(2, a->id), NodeValueBytes(0, 0, 0, 0, 0, 0, 0));
  EXPECT_EQ(NodeValue(2, b->id), NodeValueBytes(0.1f, 0, 0, 0, 0, 0, 1));
}

TEST_F(LoadFill, ALaterObjectOfTheSameNodeAndPatternReplacesTheEarlier) {
  Pattern("DEAD")->LoadNodeNotEmpty = true;
  VaskNodeObj* a = Node("A");
  NodeLoad("A", "DEAD", {1, 1, 1, 1, 1, 1});
  NodeLoad("A", "DEAD", {0, 0, -2, 0, 0, 0});
  FillNodesAndMass();
  FillTrelkLoadNode(model, store);
  EXPECT_EQ(NodeValue(1, a->id), NodeValueBytes(0, 0, -2, 0, 0, 0, 1));
}

// Two patterns of one label each take the nodal loads of that label; a pattern without
// nodal loads in between takes no place, and items of other labels go to their own.
TEST_F(LoadFill, PatternsOfOneLabelEachTakeItsNodalLoads) {
  Pattern("DEAD")->LoadNodeNotEmpty = true;
  Pattern("EMPTY");
  Pattern("LIVE")->LoadNodeNotEmpty = true;
  Pattern("DEAD")->LoadNodeNotEmpty = true;
  VaskNodeObj* a = Node("A");
  VaskNodeObj* b = Node("B");
  VaskLoadNodeObj* la = NodeLoad("A", "LIVE", {0, 0, -1, 0, 0, 0});
  AddNodeItem(la, "DEAD", {0, 0, -4, 0, 0, 0});
  NodeLoad("B", "DEAD", {2, 0, 0, 0, 0, 0});
  FillNodesAndMass();
  FillTrelkLoadNode(model, store);
  ASSERT_EQ(store.LoadNodePatterns.Count(), 5);
  EXPECT_EQ(NodeValue(1, a->id), NodeValueBytes(0, 0, -4, 0, 0, 0, 1));
  EXPECT_EQ(NodeValue(1, b->id), NodeValueBytes(2, 0, 0, 0, 0, 0, 1));
  EXPECT_EQ(NodeValue(2, a->id), NodeValueBytes(0, 0, -1, 0, 0, 0, 1));
  EXPECT_EQ(NodeValue(2, b->id), NodeValueBytes(0, 0, 0, 0, 0, 0, 0));
  EXPECT_EQ(NodeValue(3, a->id), NodeValueBytes(0, 0, -4, 0, 0, 0, 1));
  EXPECT_EQ(NodeValue(3, b->id), NodeValueBytes(2, 0, 0, 0, 0, 0, 1));
}

TEST_F(LoadFill, ALoadOnANodeTheModelDoesNotKnowIsSkipped) {
  Pattern("DEAD")->LoadNodeNotEmpty = true;
  VaskNodeObj* a = Node("A");
  NodeLoad("GONE", "DEAD", {3, 3, 3, 3, 3, 3});
  FillNodesAndMass();
  FillTrelkLoadNode(model, store);
  EXPECT_EQ(store.LoadNodePatterns.Count(), 3);
  EXPECT_EQ(NodeValue(1, a->id), NodeValueBytes(0, 0, 0, 0, 0, 0, 0));
  EXPECT_EQ(NodeValue(1, 1), NodeValueBytes(0, 0, 0, 0, 0, 0, 0));
}

TEST_F(LoadFill, ALoadOnANodeTheModelDoesNotKnowIsToldToTheObserver) {
  std::vector<DropNote> notes;
  model.SetDropObserver([&notes](const DropNote& note) { notes.push_back(note); });
  Pattern("DEAD")->LoadNodeNotEmpty = true;
  Node("A");
  NodeLoad("GONE", "DEAD", {3, 3, 3, 3, 3, 3});
  NodeLoad("A", "DEAD", {1, 0, 0, 0, 0, 0});
  FillNodesAndMass();
  FillTrelkLoadNode(model, store);
  ASSERT_EQ(notes.size(), 1u);
  EXPECT_EQ(notes[0].kind, "nodal load");
  EXPECT_EQ(notes[0].name, "GONE (DEAD)");
  EXPECT_EQ(notes[0].reason, "its point is not a node of the model");
}

TEST_F(LoadFill, ALabelOfFortyCharactersAtPlaceTwoGivesThePrefixAndThree) {
  const std::string forty(40, 'L');
  Pattern("FIRST");
  VaskLoadPatternObj* p = Pattern(forty);
  p->LoadNodeNotEmpty = true;
  p->LoadElementNotEmpty = true;
  p->SelfWeightNotEmpty = true;
  p->SelfWtMultiplier = 1.0;
  Node("A");
  FillNodesAndMass();
  Elements(1, 2);
  VaskFrameObj* f = Frame(1, 2);
  Dist(f, forty, {{0.0, 1.0, 2.0, 2.0}});

  FillTrelkLoadNode(model, store);
  FillTrelkLoadFrame(model, store);
  FillTrelkSelfWeight(model, store);
  EXPECT_EQ(Bytes(store.LoadNodePatterns.RecordBytes(1)), PatternBytes("LoadNode-3", -3));
  EXPECT_EQ(Bytes(store.LoadFramePatterns.RecordBytes(1)), PatternBytes("LoadFrame-3", 1));
  EXPECT_EQ(Bytes(store.SelfWeightPatterns.RecordBytes(1)), PatternBytes("SelfWeight-3", -3));
  EXPECT_EQ(p->TrelkLoadPatternNodeName, "LoadNode-3");
  EXPECT_EQ(p->TrelkLoadPatternElementName, "LoadFrame-3");
  EXPECT_EQ(p->TrelkLoadPatternSelfWeightName, "SelfWeight-3");
}

TEST_F(LoadFill, ANameOfExactlyFortyCharactersIsKept) {
  const std::string label(31, 'L');  // "LoadNode-" has 9 characters
  Pattern(label)->LoadNodeNotEmpty = true;
  Node("A");
  FillNodesAndMass();
  FillTrelkLoadNode(model, store);
  EXPECT_EQ(Bytes(store.LoadNodePatterns.RecordBytes(1)), PatternBytes("LoadNode-" + label, -3));
}

// ---- Frame load patterns ----

TEST_F(LoadFill, TwoFramesWithTheSameLoadsShareOneSubgroup) {
  VaskLoadPatternObj* dead = Pattern("DEAD");
  dead->LoadElementNotEmpty = true;
  Elements(1, 3);
  VaskFrameObj* a = Frame(1, 2);
  VaskFrameObj* b = Frame(1, 3);
  Dist(a, "DEAD", {{0.0, 0.5, 2.0, 3.0}});
  Dist(b, "DEAD", {{0.0, 0.5, 2.0, 3.0}});
  FillTrelkLoadFrame(model, store);

  ASSERT_EQ(store.LoadFramePatterns.Count(), 1);
  EXPECT_EQ(store.LoadFramePatterns.Capacity(), 11);
  EXPECT_EQ(Bytes(store.LoadFramePatterns.RecordBytes(1)), PatternBytes("LoadFrame-DEAD", 1));
  EXPECT_EQ(dead->TrelkLoadPatternElementName, "LoadFrame-DEAD");
  EXPECT_EQ(GroupIndex(1, 1), 1);
  EXPECT_EQ(ElemIndex(1, 1), 0);  // the leading element of the group
  EXPECT_EQ(ElemIndex(1, 2), 1);
  EXPECT_EQ(ElemIndex(1, 3), 1);
  EXPECT_EQ(Bytes(GroupValue(1, 1, 1).Bytes()),
            ExpectedBytes().Long(2).Long(0).Short(1).Short(1).Zeros(4).Bytes());
  ASSERT_EQ(store.LoadFrameValues.Count(), 1);
  EXPECT_EQ(store.LoadFrameValues.Capacity(), 1);
  EXPECT_EQ(Bytes(store.LoadFrameValues.RecordBytes(1)),
            ExpectedBytes()
                .Byte(1).Zeros(1).Short(0).Zeros(2)
                .Single(2.0f).Single(0.0f).Single(3.0f).Single(0.5f)
                .Zeros(8)
                .Bytes());
  EXPECT_EQ(store.LoadFrameValueSlotCapacity, 2);
  EXPECT_EQ(store.LoadFrameValueSlotCount, 1);
  // The subgroup lists of the frames are sized to the pattern count.
  EXPECT_EQ(a->idTrelkElemLoadSubGroup.Num(), 1);
}

TEST_F(LoadFill, ADifferenceOverTheToleranceMakesTwoSubgroupsAndOneAtItDoesNot) {
  Pattern("DEAD")->LoadElementNotEmpty = true;
  Elements(1, 5);
  const double over = std::nextafter(1e-6, 1.0);
  Dist(Frame(1, 2), "DEAD", {{0.0, 1.0, 0.0, 4.0}});
  Dist(Frame(1, 3), "DEAD", {{0.0, 1.0, 1e-6, 4.0}});  // exactly 1e-6 away: the same
  Dist(Frame(1, 4), "DEAD", {{0.0, 1.0, over, 4.0}});  // just over: another subgroup
  Dist(Frame(1, 5), "DEAD", {{0.0, 1.0, 2e-6, 4.0}});  // 1e-6 from the third, 2e-6 from the first
  FillTrelkLoadFrame(model, store);

  EXPECT_EQ(GroupIndex(1, 1), 2);
  EXPECT_EQ(ElemIndex(1, 2), 1);
  EXPECT_EQ(ElemIndex(1, 3), 1);
  EXPECT_EQ(ElemIndex(1, 4), 2);
  EXPECT_EQ(ElemIndex(1, 5), 2);
  EXPECT_EQ(GroupValue(1, 1, 1).GetInt(load_frame_group_value_rec::ElemCount), 2);
  EXPECT_EQ(GroupValue(2, 1, 1).GetInt(load_frame_group_value_rec::ElemCount), 2);
  EXPECT_EQ(store.LoadFrameValueSlotCapacity, 3);
  ASSERT_EQ(store.LoadFrameValues.Count(), 2);
  // Each subgroup keeps the values of the frame that made it.
  EXPECT_EQ(Item(1).GetReal(load_frame_value_rec::Value1), 0.0);
  EXPECT_EQ(Item(2).GetReal(load_frame_value_rec::Value1), static_cast<double>(static_cast<float>(over)));
}

TEST_F(LoadFill, MatchingComparesWithTheFirstFrameOfASubgroupNotTheLast) {
  Pattern("DEAD")->LoadElementNotEmpty = true;
  Elements(1, 4);
  Point(Frame(1, 2), "DEAD", {{{0.5, 10.0}}});
  Point(Frame(1, 3), "DEAD", {{{0.5, 10.0000008}}});  // within 1e-6 of the first
  Point(Frame(1, 4), "DEAD", {{{0.5, 10.0000016}}});  // within of the second, not the first
  FillTrelkLoadFrame(model, store);
  EXPECT_EQ(ElemIndex(1, 2), 1);
  EXPECT_EQ(ElemIndex(1, 3), 1);
  EXPECT_EQ(ElemIndex(1, 4), 2);
}

TEST_F(LoadFill, OnlyTheFirstDistributedObjectOfAPatternIsUsed) {
  Pattern("DEAD")->LoadElementNotEmpty = true;
  Elements(1, 3);
  VaskFrameObj* a = Frame(1, 2);
  Dist(a, "OTHER", {{0.0, 1.0, 9.0, 9.0}});
  Dist(a, "DEAD", {{0.0, 1.0, 1.0, 1.0}});
  Dist(a, "DEAD", {{0.0, 0.5, 5.0, 5.0}, {0.5, 1.0, 6.0, 6.0}}, "Local");
  VaskFrameObj* b = Frame(1, 3);
  Dist(b, "DEAD", {{0.0, 1.0, 1.0, 1.0}});
  FillTrelkLoadFrame(model, store);
  // The second object of a would make its loading differ from b's.
  EXPECT_EQ(GroupIndex(1, 1), 1);
  EXPECT_EQ(ElemIndex(1, 2), 1);
  EXPECT_EQ(ElemIndex(1, 3), 1);
  ASSERT_EQ(store.LoadFrameValues.Count(), 1);
  EXPECT_EQ(Item(1).GetReal(load_frame_value_rec::Value1), 1.0);
  EXPECT_EQ(GroupValue(1, 1, 1).GetInt(load_frame_group_value_rec::ItemCount), 1);
}

TEST_F(LoadFill, ItemsOfASubgroupFormAChainDistributedFirst) {
  Pattern("DEAD")->LoadElementNotEmpty = true;
  Elements(1, 4);
  VaskFrameObj* a = Frame(1, 2);
  Point(a, "DEAD", {{{0.25, 7.0}}});
  Dist(a, "DEAD", {{0.0, 0.4, 1.0, 2.0}, {0.4, 1.0, 2.0, 2.0}});
  VaskFrameObj* b = Frame(1, 3);
  Dist(b, "DEAD", {{0.0, 1.0, 3.0, 3.0}});
  FillTrelkLoadFrame(model, store);

  ASSERT_EQ(GroupIndex(1, 1), 2);
  // Subgroup 1: two distributed items, then the point item.
  EXPECT_EQ(Bytes(GroupValue(1, 1, 1).Bytes()),
            ExpectedBytes().Long(1).Long(0).Short(3).Short(1).Zeros(4).Bytes());
  // Subgroup 2 starts at item 4.
  EXPECT_EQ(Bytes(GroupValue(2, 1, 1).Bytes()),
            ExpectedBytes().Long(1).Long(0).Short(1).Short(4).Zeros(4).Bytes());
  ASSERT_EQ(store.LoadFrameValues.Count(), 4);
  EXPECT_EQ(store.LoadFrameValues.Capacity(), 12);
  EXPECT_EQ(Bytes(store.LoadFrameValues.RecordBytes(1)),
            ExpectedBytes().Byte(1).Zeros(1).Short(2).Zeros(2)
                .Single(1.0f).Single(0.0f).Single(2.0f).Single(0.4f).Zeros(8).Bytes());
  EXPECT_EQ(Bytes(store.LoadFrameValues.RecordBytes(2)),
            ExpectedBytes().Byte(1).Zeros(1).Short(3).Zeros(2)
                .Single(2.0f).Single(0.4f).Single(2.0f).Single(1.0f).Zeros(8).Bytes());
  EXPECT_EQ(Bytes(store.LoadFrameValues.RecordBytes(3)),
            ExpectedBytes().Byte(2).Zeros(1).Short(0).Zeros(2)
                .Single(7.0f).Single(0.25f).Single(0.0f).Single(0.0f).Zeros(8).Bytes());
  EXPECT_EQ(Bytes(store.LoadFrameValues.RecordBytes(4)),
            ExpectedBytes().Byte(1).Zeros(1).Short(0).Zeros(2)
                .Single(3.0f).Single(0.0f).Single(3.0f).Single(1.0f).Zeros(8).Bytes());
}

TEST_F(LoadFill, ASubgroupOfPointItemsOnlyCountsOneElement) {
  Pattern("DEAD")->LoadElementNotEmpty = true;
  Elements(1, 3);
  Point(Frame(1, 2), "DEAD", {{{0.5, 4.0}}});
  Point(Frame(1, 3), "DEAD", {{{0.5, 4.0}}});
  FillTrelkLoadFrame(model, store);
  EXPECT_EQ(ElemIndex(1, 2), 1);
  EXPECT_EQ(ElemIndex(1, 3), 1);
  EXPECT_EQ(GroupValue(1, 1, 1).GetInt(load_frame_group_value_rec::ElemCount), 1);
  EXPECT_EQ(GroupValue(1, 1, 1).GetInt(load_frame_group_value_rec::ItemCount), 1);
  ASSERT_EQ(store.LoadFrameValues.Count(), 1);
  EXPECT_EQ(Item(1).GetInt(load_frame_value_rec::Kind), 2);
}

TEST_F(LoadFill, SubgroupsAreNumberedByPatternAndGroupAndItemsRunOnAcrossThem) {
  Pattern("NONE");
  VaskLoadPatternObj* dead = Pattern("DEAD");
  dead->LoadElementNotEmpty = true;
  VaskLoadPatternObj* live = Pattern("LIVE");
  live->LoadElementNotEmpty = true;
  Elements(3, 8);
  VaskFrameObj* a = Frame(1, 2);
  VaskFrameObj* b = Frame(3, 7);
  VaskFrameObj* c = Frame(3, 8);
  VaskFrameObj* d = Frame(2, 5);  // no loads
  Dist(a, "DEAD", {{0.0, 1.0, 1.0, 1.0}});
  Dist(b, "DEAD", {{0.0, 1.0, 1.0, 1.0}});  // same values, but another group
  Dist(c, "DEAD", {{0.0, 1.0, 2.0, 2.0}});
  Point(c, "LIVE", {{{0.5, 3.0}}});
  Point(a, "NONE", {{{0.5, 3.0}}});  // a pattern without frame loads makes nothing
  FillTrelkLoadFrame(model, store);

  ASSERT_EQ(store.LoadFramePatterns.Count(), 2);
  EXPECT_EQ(store.LoadFramePatterns.Capacity(), 12);
  EXPECT_EQ(Bytes(store.LoadFramePatterns.RecordBytes(1)), PatternBytes("LoadFrame-DEAD", 1));
  EXPECT_EQ(Bytes(store.LoadFramePatterns.RecordBytes(2)), PatternBytes("LoadFrame-LIVE", 1));
  EXPECT_EQ(model.LoadPatternObj(1)->TrelkLoadPatternElementName, "");
  EXPECT_EQ(a->idTrelkElemLoadSubGroup.Num(), 3);
  EXPECT_EQ(d->idTrelkElemLoadSubGroup.Num(), 3);

  EXPECT_EQ(GroupIndex(1, 1), 1);
  EXPECT_EQ(GroupIndex(1, 2), 0);
  EXPECT_EQ(GroupIndex(1, 3), 2);
  EXPECT_EQ(GroupIndex(2, 1), 0);
  EXPECT_EQ(GroupIndex(2, 3), 1);
  EXPECT_EQ(ElemIndex(1, 2), 1);
  EXPECT_EQ(ElemIndex(1, 7), 1);
  EXPECT_EQ(ElemIndex(1, 8), 2);
  EXPECT_EQ(ElemIndex(1, 5), 0);
  EXPECT_EQ(ElemIndex(2, 8), 1);
  EXPECT_EQ(ElemIndex(2, 2), 0);

  // Items: DEAD group 1 (1), DEAD group 3 subgroups 1 and 2 (2, 3), LIVE group 3 (4).
  EXPECT_EQ(GroupValue(1, 1, 1).GetInt(load_frame_group_value_rec::FirstItem), 1);
  EXPECT_EQ(GroupValue(1, 1, 3).GetInt(load_frame_group_value_rec::FirstItem), 2);
  EXPECT_EQ(GroupValue(2, 1, 3).GetInt(load_frame_group_value_rec::FirstItem), 3);
  EXPECT_EQ(GroupValue(1, 2, 3).GetInt(load_frame_group_value_rec::FirstItem), 4);
  EXPECT_EQ(GroupValue(1, 2, 3).GetInt(load_frame_group_value_rec::ElemCount), 1);
  EXPECT_EQ(GroupValue(2, 2, 3).GetInt(load_frame_group_value_rec::FirstItem), 0);
  EXPECT_EQ(store.LoadFrameValues.Count(), 4);

  // The slot bound is the largest subgroup number plus one; the matrices follow the
  // capacities.
  EXPECT_EQ(store.LoadFrameValueSlotCapacity, 3);
  const auto& gv = store.LoadFrameGroupValue.Bounds();
  ASSERT_EQ(gv.size(), 3u);
  EXPECT_EQ(gv[0].high, 3);
  EXPECT_EQ(gv[1].high, 12);
  EXPECT_EQ(gv[2].high, store.ElemGroups.Capacity());
  EXPECT_EQ(store.LoadFrameGroupIndex.Bounds()[0].high, 12);
  EXPECT_EQ(store.LoadFrameGroupIndex.Bounds()[1].high, store.ElemGroups.Capacity());
  EXPECT_EQ(store.LoadFrameElemIndex.Bounds()[0].high, 12);
  EXPECT_EQ(store.LoadFrameElemIndex.Bounds()[1].high, store.Elems.Capacity());
}

TEST_F(LoadFill, WithoutFramePatternsTheFrameLoadListsStayAsTheyWere) {
  Pattern("DEAD");
  Elements(1, 2);
  Dist(Frame(1, 2), "DEAD", {{0.0, 1.0, 1.0, 1.0}});  // not marked: left alone
  FillTrelkLoadFrame(model, store);
  EXPECT_EQ(store.LoadFramePatterns.Count(), 0);
  EXPECT_EQ(store.LoadFramePatterns.Capacity(), 1);
  EXPECT_EQ(store.LoadFrameValueSlotCapacity, 1);
  EXPECT_EQ(store.LoadFrameValues.Count(), 0);
  EXPECT_EQ(model.FrameObj(1)->idTrelkElemLoadSubGroup.Num(), 1);
}

TEST_F(LoadFill, APatternWithFrameLoadsButNoLoadedFrameOfAGroupStillCounts) {
  Pattern("DEAD")->LoadElementNotEmpty = true;
  Elements(1, 2);
  Frame(1, 2);
  FillTrelkLoadFrame(model, store);
  EXPECT_EQ(store.LoadFramePatterns.Count(), 1);
  EXPECT_EQ(store.LoadFramePatterns.Capacity(), 11);
  EXPECT_EQ(store.LoadFrameValueSlotCapacity, 1);
  EXPECT_EQ(GroupIndex(1, 1), 0);
  EXPECT_EQ(store.LoadFrameValues.Count(), 0);
}

TEST_F(LoadFill, AFrameOutsideEveryElementGroupTakesNoLoad) {
  Pattern("DEAD")->LoadElementNotEmpty = true;
  Elements(1, 2);
  Dist(Frame(0, 0), "DEAD", {{0.0, 1.0, 1.0, 1.0}});
  FillTrelkLoadFrame(model, store);
  EXPECT_EQ(GroupIndex(1, 1), 0);
  EXPECT_EQ(store.LoadFrameValues.Count(), 0);
}

// Two frame patterns of one label each take the frames loaded in it, a frame holding a
// distributed and a point object of it once; a pattern of another label in between only
// its own.
TEST_F(LoadFill, FramePatternsOfOneLabelEachTakeTheFramesLoadedInIt) {
  Pattern("DEAD")->LoadElementNotEmpty = true;
  Pattern("LIVE")->LoadElementNotEmpty = true;
  Pattern("DEAD")->LoadElementNotEmpty = true;
  Elements(1, 3);
  VaskFrameObj* a = Frame(1, 2);
  Dist(a, "DEAD", {{0.0, 1.0, 1.0, 1.0}});
  Point(a, "DEAD", {{{0.5, 2.0}}});
  VaskFrameObj* b = Frame(1, 3);
  Dist(b, "LIVE", {{0.0, 1.0, 3.0, 3.0}});
  FillTrelkLoadFrame(model, store);
  ASSERT_EQ(store.LoadFramePatterns.Count(), 3);
  EXPECT_EQ(ElemIndex(1, 2), 1);
  EXPECT_EQ(ElemIndex(1, 3), 0);
  EXPECT_EQ(ElemIndex(2, 2), 0);
  EXPECT_EQ(ElemIndex(2, 3), 1);
  EXPECT_EQ(ElemIndex(3, 2), 1);
  EXPECT_EQ(ElemIndex(3, 3), 0);
  EXPECT_EQ(GroupIndex(1, 1), 1);
  EXPECT_EQ(GroupIndex(2, 1), 1);
  EXPECT_EQ(GroupIndex(3, 1), 1);
  EXPECT_EQ(GroupValue(1, 1, 1).GetInt(load_frame_group_value_rec::ElemCount), 1);
  EXPECT_EQ(GroupValue(1, 3, 1).GetInt(load_frame_group_value_rec::ElemCount), 1);
  // Distributed and point item of a in both DEAD patterns, b's item in LIVE.
  ASSERT_EQ(store.LoadFrameValues.Count(), 5);
  EXPECT_EQ(Item(1).GetReal(load_frame_value_rec::Value1), 1.0);
  EXPECT_EQ(Item(3).GetReal(load_frame_value_rec::Value1), 3.0);
  EXPECT_EQ(Item(4).GetReal(load_frame_value_rec::Value1), 1.0);
}

TEST_F(LoadFill, AnObjectWithNoItemsCountsAsNone) {
  Pattern("DEAD")->LoadElementNotEmpty = true;
  Elements(1, 3);
  VaskFrameObj* a = Frame(1, 2);
  Dist(a, "DEAD", {});
  Point(a, "DEAD", {});
  VaskFrameObj* b = Frame(1, 3);
  Dist(b, "DEAD", {});
  Point(b, "DEAD", {{{0.5, 1.0}}});
  FillTrelkLoadFrame(model, store);
  EXPECT_EQ(ElemIndex(1, 2), 0);
  EXPECT_EQ(ElemIndex(1, 3), 1);
  EXPECT_EQ(GroupIndex(1, 1), 1);
}

TEST_F(LoadFill, AValueThatIsNotANumberNeverSharesASubgroup) {
  Pattern("DEAD")->LoadElementNotEmpty = true;
  Elements(1, 3);
  const double nan = std::nan("");
  Point(Frame(1, 2), "DEAD", {{{0.5, nan}}});
  Point(Frame(1, 3), "DEAD", {{{0.5, nan}}});
  FillTrelkLoadFrame(model, store);
  EXPECT_EQ(ElemIndex(1, 2), 1);
  EXPECT_EQ(ElemIndex(1, 3), 2);
}

TEST_F(LoadFill, TheSlotBoundIsAShortCountOfTheStructure) {
  Elements(1, 2);
  store.AllocateLoadFramePatterns(1, 32767);
  EXPECT_EQ(store.LoadFrameValueSlotCapacity, 32767);
  EXPECT_THROW(store.AllocateLoadFramePatterns(1, 32768), TransferFailure);
}

TEST_F(LoadFill, MoreLoadItemsThanTheStructureHoldsEndTheTransfer) {
  Pattern("DEAD")->LoadElementNotEmpty = true;
  Elements(1, 3);
  Dist(Frame(1, 2), "DEAD", std::vector<std::array<double, 4>>(20000, {0.0, 1.0, 1.0, 1.0}));
  Dist(Frame(1, 3), "DEAD", std::vector<std::array<double, 4>>(20000, {0.0, 1.0, 2.0, 2.0}));
  EXPECT_THROW(FillTrelkLoadFrame(model, store), TransferFailure);
  // The first subgroup was written whole; the second ran out of room before its end.
  EXPECT_GT(store.LoadFrameValues.Count(), 20000);
  EXPECT_LE(store.LoadFrameValues.Count(), 32767);
}

TEST_F(LoadFill, ASubgroupOfMoreItemsThanAShortHoldsEndsTheTransferAtItsFirstItem) {
  Pattern("DEAD")->LoadElementNotEmpty = true;
  Elements(1, 2);
  Dist(Frame(1, 2), "DEAD", std::vector<std::array<double, 4>>(32768, {0.0, 1.0, 1.0, 1.0}));
  EXPECT_THROW(FillTrelkLoadFrame(model, store), TransferFailure);
  EXPECT_EQ(store.LoadFrameValues.Count(), 1);
}

// ---- The index against the literal walk ----

// Values near one another, near cell edges of the index and exactly 1e-6 apart.
class SubGroupAgreement : public LoadFill {
 protected:
  std::vector<double> Pool(std::mt19937& rng) {
    std::vector<double> bases = {0.0, 0.5, 1.0, 10.0, -3.25, 1e-6, 2e-6, 3e-6};
    std::uniform_real_distribution<double> any(-20.0, 20.0);
    for (int i = 0; i < 4; ++i) bases.push_back(any(rng));
    // Values whose scaled position lies right at a cell edge of the index.
    for (int n : {0, 1, 65536, 200000, -70000}) {
      bases.push_back((n - 0.3819660112501051) / 65536.0);
    }
    std::vector<double> pool;
    const double near[] = {0.0, 1e-6, -1e-6, 5e-7, -5e-7, std::nextafter(1e-6, 1.0),
                           -std::nextafter(1e-6, 1.0), 2e-6};
    for (double b : bases) {
      for (double d : near) pool.push_back(b + d);
    }
    return pool;
  }

  void BuildRandomModel(unsigned seed, int frames) {
    std::mt19937 rng(seed);
    const std::vector<double> pool = Pool(rng);
    std::uniform_int_distribution<std::size_t> pick(0, pool.size() - 1);
    // A small pool of loadings per pattern, so that frames share them; each frame then
    // perturbs its chosen loading now and then.
    Pattern("A")->LoadElementNotEmpty = true;
    Pattern("B");
    Pattern("C")->LoadElementNotEmpty = true;
    Elements(3, frames + 1);
    std::uniform_int_distribution<int> group(1, 3);
    std::uniform_int_distribution<int> count(0, 3);
    std::uniform_int_distribution<int> chance(0, 9);
    struct Loading {
      std::vector<std::array<double, 4>> dist;
      std::vector<std::array<double, 2>> point;
    };
    std::vector<Loading> loadings(12);
    for (Loading& l : loadings) {
      l.dist.resize(static_cast<std::size_t>(count(rng)));
      for (auto& item : l.dist) {
        for (double& v : item) v = pool[pick(rng)];
      }
      l.point.resize(static_cast<std::size_t>(count(rng)));
      for (auto& item : l.point) {
        for (double& v : item) v = pool[pick(rng)];
      }
    }
    std::uniform_int_distribution<std::size_t> which(0, loadings.size() - 1);
    for (int f = 0; f < frames; ++f) {
      VaskFrameObj* frame = Frame(group(rng), f + 2);
      for (const char* pattern : {"A", "B", "C"}) {
        if (chance(rng) < 2) continue;
        Loading l = loadings[which(rng)];
        const double steps[] = {1e-6, -1e-6, 5e-7, std::nextafter(1e-6, 1.0), 2e-6};
        if (chance(rng) < 4) {
          for (auto& item : l.dist) {
            for (double& v : item) {
              if (chance(rng) < 3) v += steps[static_cast<std::size_t>(chance(rng)) % 5];
            }
          }
          for (auto& item : l.point) {
            for (double& v : item) {
              if (chance(rng) < 3) v += steps[static_cast<std::size_t>(chance(rng)) % 5];
            }
          }
        }
        if (!l.dist.empty() || chance(rng) < 3) Dist(frame, pattern, l.dist);
        if (!l.point.empty() || chance(rng) < 3) Point(frame, pattern, l.point);
      }
    }
  }
};

void ExpectSameCatalogue(const ElemLoadSubGroupCatalogue& a, const ElemLoadSubGroupCatalogue& b) {
  ASSERT_EQ(a.Num(), b.Num());
  for (int c = 1; c <= a.Num(); ++c) {
    const TrelkElemLoadSubGroup& x = a(c);
    const TrelkElemLoadSubGroup& y = b(c);
    ASSERT_EQ(x.Pattern, y.Pattern) << "subgroup " << c;
    ASSERT_EQ(x.Group, y.Group) << "subgroup " << c;
    ASSERT_EQ(x.SubGroup, y.SubGroup) << "subgroup " << c;
    ASSERT_EQ(x.ElemCount, y.ElemCount) << "subgroup " << c;
    ASSERT_EQ(x.Elem, y.Elem) << "subgroup " << c;
    ASSERT_EQ(x.DistCount, y.DistCount) << "subgroup " << c;
    ASSERT_EQ(x.PointCount, y.PointCount) << "subgroup " << c;
    ASSERT_EQ(x.RD1, y.RD1) << "subgroup " << c;
    ASSERT_EQ(x.Val2, y.Val2) << "subgroup " << c;
    ASSERT_EQ(x.Val, y.Val) << "subgroup " << c;
  }
}

TEST_F(SubGroupAgreement, TheIndexFindsWhatTheLiteralWalkFindsOnRandomLoads) {
  for (unsigned seed = 1; seed <= 12; ++seed) {
    SCOPED_TRACE("seed " + std::to_string(seed));
    model.Dispose();
    store.InitTrelkStore();
    BuildRandomModel(seed, 400);
    const ElemLoadSubGroupCatalogue literal =
        CatalogueElemLoadSubGroups(model, store, SubGroupSearch::Literal);
    const ElemLoadSubGroupCatalogue indexed =
        CatalogueElemLoadSubGroups(model, store, SubGroupSearch::Indexed);
    ExpectSameCatalogue(literal, indexed);
    // Frames did share subgroups, and not all in one.
    int shared = 0;
    for (int c = 1; c <= literal.Num(); ++c) shared += literal(c).ElemCount > 1 ? 1 : 0;
    EXPECT_GT(shared, 0);
    EXPECT_GT(literal.Num(), 12);
  }
}

// A second set of loads of one pattern (another coordinate system text) does not reach the
// structure; whoever listens is told, once for each frame and pattern.
TEST_F(LoadFill, ASecondSetOfFrameLoadsInAPatternIsToldToTheObserver) {
  std::vector<DropNote> notes;
  model.SetDropObserver([&notes](const DropNote& note) { notes.push_back(note); });
  Pattern("LIVE")->LoadElementNotEmpty = true;
  Elements(1, 2);
  VaskFrameObj* frame = Frame(1, 2);
  Dist(frame, "LIVE", {{0.0, 1.0, 2.0, 2.0}});
  Dist(frame, "LIVE", {{0.0, 1.0, 5.0, 5.0}}, " GLOBAL");
  Point(frame, "LIVE", {{0.5, 1.0}});
  FillTrelkLoadFrame(model, store);
  ASSERT_EQ(notes.size(), 1u);
  EXPECT_EQ(notes[0].kind, "frame distributed load");
  EXPECT_EQ(notes[0].name, "F1 (LIVE)");
  EXPECT_EQ(notes[0].reason,
            "a second set of distributed loads in the pattern (coordinate system \" GLOBAL\"); "
            "only the first set is taken");
}

// Values far beyond any load, but finite: their cells lie past where a step of one cell is
// exact, and the search must still end with the literal walk's answer.
TEST_F(SubGroupAgreement, HugeFiniteValuesGetTheLiteralWalksSubGroups) {
  Pattern("A")->LoadElementNotEmpty = true;
  Elements(1, 6);
  const double huge = 1e300;
  const double other = std::nextafter(huge, 2e300);  // more than 1e-6 away
  for (int elem = 2; elem <= 6; ++elem) {
    VaskFrameObj* frame = Frame(1, elem);
    const double value = elem == 6 ? other : huge;
    Dist(frame, "A", {{0.0, 1.0, value, -value}});
    Point(frame, "A", {{0.5, 3e17}});
  }
  const ElemLoadSubGroupCatalogue literal =
      CatalogueElemLoadSubGroups(model, store, SubGroupSearch::Literal);
  const ElemLoadSubGroupCatalogue indexed =
      CatalogueElemLoadSubGroups(model, store, SubGroupSearch::Indexed);
  ExpectSameCatalogue(literal, indexed);
  ASSERT_EQ(literal.Num(), 2);
  EXPECT_EQ(literal(1).ElemCount, 4);
  EXPECT_EQ(literal(2).ElemCount, 1);
}

TEST_F(SubGroupAgreement, EveryLookUpAgreesWhileTheCatalogueGrows) {
  std::mt19937 rng(77);
  const std::vector<double> pool = Pool(rng);
  std::uniform_int_distribution<std::size_t> pick(0, pool.size() - 1);
  std::uniform_int_distribution<int> count(0, 2);
  Elements(1, 2);
  VaskFrameObj* frame = Frame(1, 2);
  ElemLoadSubGroupCatalogue catalogue;
  std::uniform_int_distribution<int> chance(0, 9);
  const double steps[] = {1e-6, -1e-6, 5e-7, std::nextafter(1e-6, 1.0), 2e-6};
  std::vector<std::pair<std::vector<std::array<double, 4>>, std::vector<std::array<double, 2>>>>
      seen;
  int found = 0;
  for (int n = 0; n < 3000; ++n) {
    frame->LoadFrameDistributedObj.Clear();
    frame->LoadFramePointObj.Clear();
    std::vector<std::array<double, 4>> dist(static_cast<std::size_t>(count(rng)));
    std::vector<std::array<double, 2>> point(static_cast<std::size_t>(count(rng)));
    if (!seen.empty() && chance(rng) < 6) {
      // An earlier loading again, some of its values moved a little.
      std::uniform_int_distribution<std::size_t> earlier(0, seen.size() - 1);
      std::tie(dist, point) = seen[earlier(rng)];
      for (auto& item : dist) {
        for (double& v : item) {
          if (chance(rng) < 3) v += steps[static_cast<std::size_t>(chance(rng)) % 5];
        }
      }
      for (auto& item : point) {
        for (double& v : item) {
          if (chance(rng) < 3) v += steps[static_cast<std::size_t>(chance(rng)) % 5];
        }
      }
    } else {
      for (auto& item : dist) {
        for (double& v : item) v = pool[pick(rng)];
      }
      for (auto& item : point) {
        for (double& v : item) v = pool[pick(rng)];
      }
    }
    seen.emplace_back(dist, point);
    const VaskLoadFrameDistObj* d = Dist(frame, "P", dist);
    const VaskLoadFramePointObj* p = Point(frame, "P", point);
    const int nd = d->ItemNum;
    const int np = p->ItemNum;
    const int g = 1 + n % 2;
    const int linear = catalogue.FindElemLoadSubGroupLinear(1, g, nd, np, d, p);
    ASSERT_EQ(catalogue.FindElemLoadSubGroup(1, g, nd, np, d, p), linear) << "look-up " << n;
    if (linear == -1) {
      if (nd + np == 0) continue;
      const int c = catalogue.AddElemLoadSubGroup();
      catalogue(c).Pattern = 1;
      catalogue(c).Group = g;
      catalogue(c).SubGroup = c;
      catalogue.AddElemToLoadSubGroup(c, 2);
      catalogue.CopyLoadsToSubGroup(c, d, p);
    } else {
      ++found;
    }
  }
  EXPECT_GT(found, 100);
  EXPECT_GT(catalogue.Num(), 100);
}

TEST_F(SubGroupAgreement, ManyValuesOnCellEdgesStillFindTheFirstMatch) {
  // Eight distributed items whose every value sits on a cell edge: too many cells to try,
  // so the look-up walks the subgroups of the same counts instead.
  Elements(1, 2);
  VaskFrameObj* frame = Frame(1, 2);
  std::vector<std::array<double, 4>> items;
  for (int i = 0; i < 8; ++i) {
    const double edge = (1000 * i + 17 - 0.3819660112501051) / 65536.0;
    items.push_back({edge, edge, edge, edge});
  }
  ElemLoadSubGroupCatalogue catalogue;
  std::vector<std::array<double, 4>> shifted = items;
  for (auto& item : shifted) {
    for (double& v : item) v += 3e-6;  // beyond the tolerance of the first
  }
  for (const auto& loading : {shifted, items}) {
    frame->LoadFrameDistributedObj.Clear();
    const VaskLoadFrameDistObj* d = Dist(frame, "P", loading);
    const int c = catalogue.AddElemLoadSubGroup();
    catalogue(c).Pattern = 1;
    catalogue(c).Group = 1;
    catalogue(c).SubGroup = c;
    catalogue.CopyLoadsToSubGroup(c, d, nullptr);
  }
  frame->LoadFrameDistributedObj.Clear();
  std::vector<std::array<double, 4>> near = items;
  for (auto& item : near) {
    for (double& v : item) v += 8e-7;
  }
  const VaskLoadFrameDistObj* d = Dist(frame, "P", near);
  EXPECT_EQ(catalogue.FindElemLoadSubGroupLinear(1, 1, 8, 0, d, nullptr), 2);
  EXPECT_EQ(catalogue.FindElemLoadSubGroup(1, 1, 8, 0, d, nullptr), 2);
  EXPECT_EQ(catalogue.FindElemLoadSubGroup(1, 2, 8, 0, d, nullptr), -1);
  EXPECT_EQ(catalogue.FindElemLoadSubGroup(1, 1, 0, 0, nullptr, nullptr), -1);
}

// ---- Self weight ----

TEST_F(LoadFill, NoSelfWeightPatternLeavesTheListsAsTheyWere) {
  Pattern("DEAD")->SelfWtMultiplier = 1.0;
  FillTrelkSelfWeight(model, store);
  EXPECT_EQ(store.SelfWeightPatterns.Count(), 0);
  EXPECT_EQ(store.SelfWeightPatterns.Capacity(), 1);
}

TEST_F(LoadFill, SelfWeightFlagsFramesAndAreasWhenTheMultiplierIsAboveOneThousandth) {
  VaskLoadPatternObj* at = Pattern("AT");
  at->SelfWeightNotEmpty = true;
  at->SelfWtMultiplier = 0.001;  // not above: a pattern, but no element flagged
  Pattern("SKIP")->SelfWtMultiplier = 5.0;
  VaskLoadPatternObj* dead = Pattern("DEAD");
  dead->SelfWeightNotEmpty = true;
  dead->SelfWtMultiplier = 0.0011;
  Elements(2, 6);
  Frame(1, 2);
  Frame(0, 0);  // no element: no flag
  VaskAreaObj* area = model.AddArea();
  area->Label = "A1";
  area->idTrelkElem = 5;
  FillTrelkSelfWeight(model, store);

  ASSERT_EQ(store.SelfWeightPatterns.Count(), 2);
  EXPECT_EQ(store.SelfWeightPatterns.Capacity(), 12);
  EXPECT_EQ(Bytes(store.SelfWeightPatterns.RecordBytes(1)), PatternBytes("SelfWeight-AT", -3));
  EXPECT_EQ(Bytes(store.SelfWeightPatterns.RecordBytes(2)), PatternBytes("SelfWeight-DEAD", -3));
  EXPECT_EQ(at->TrelkLoadPatternSelfWeightName, "SelfWeight-AT");
  EXPECT_EQ(dead->TrelkLoadPatternSelfWeightName, "SelfWeight-DEAD");
  EXPECT_EQ(model.LoadPatternObj(2)->TrelkLoadPatternSelfWeightName, "");
  const auto flag = [&](std::int32_t k, std::int32_t e) {
    return store.SelfWeightElemFlag.Element({k, e}).GetInt(self_weight_flag::Flag);
  };
  for (std::int32_t e = 1; e <= 6; ++e) EXPECT_EQ(flag(1, e), 0) << "element " << e;
  EXPECT_EQ(flag(2, 1), 0);
  EXPECT_EQ(flag(2, 2), 1);
  EXPECT_EQ(flag(2, 3), 0);
  EXPECT_EQ(flag(2, 5), 1);
  EXPECT_EQ(flag(2, 6), 0);
  ASSERT_EQ(store.SelfWeightElemFlag.Bounds().size(), 2u);
  EXPECT_EQ(store.SelfWeightElemFlag.Bounds()[0].high, 12);
  EXPECT_EQ(store.SelfWeightElemFlag.Bounds()[1].high, store.Elems.Capacity());
}

}  // namespace
}  // namespace vtt
