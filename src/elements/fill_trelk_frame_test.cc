#include "elements/fill_trelk_frame.h"

#include <gtest/gtest.h>

#include <map>

#include "source/fake_host_model_test_support.h"
#include "source/vask_model.h"
#include "store/frame_set_records.h"
#include "store/trelk_store.h"

namespace vtt {
namespace {

struct Assignment {
  int type;
  std::string name;
};

class GroupHost : public test_support::FakeHostModel {
 public:
  std::vector<std::string> order;
  std::map<std::string, std::vector<Assignment>> groups;

  void Group(const std::string& name, std::vector<Assignment> members) {
    order.push_back(name);
    groups[name] = std::move(members);
  }
  int GetGroupNames(int& count, Names& names) override {
    names = order;
    count = static_cast<int>(order.size());
    return 0;
  }
  int GetGroupAssignments(const std::string& name, int& count, Ints& types,
                          Names& objects) override {
    types.clear();
    objects.clear();
    for (const Assignment& a : groups.at(name)) {
      types.push_back(a.type);
      objects.push_back(a.name);
    }
    count = static_cast<int>(types.size());
    return 0;
  }
};

class StructureFrames : public ::testing::Test {
 protected:
  StructureFrames() {
    store.InitTrelkStore();
    for (int i = 1; i <= 4; ++i) {
      model.AddNode("N" + std::to_string(i), i, 0, 0, DofFlags{});
      store.Nodes.Add();
    }
    for (int e = 0; e < 8; ++e) store.AddTrelkElem();
  }
  VaskFrameObj* Frame(const std::string& label, int elem) {
    VaskFrameObj* f = model.AddFrame();
    f->Label = label;
    f->idTrelkElem = elem;
    return f;
  }
  VaskAreaObj* Area(const std::string& label, int elem) {
    VaskAreaObj* a = model.AddArea();
    a->Label = label;
    a->idTrelkElem = elem;
    return a;
  }
  std::string Name(int t) { return store.Frames.Record(t).GetText(frame_rec::Name); }
  int NodeFlag(int t, int n) { return store.FrameNodeFlag.Get({t, n})[0]; }
  int ElemFlag(int t, int e) { return store.FrameElemFlag.Get({t, e})[0]; }
  int ElemFlagsSet(int t) {
    int set = 0;
    for (int e = 0; e <= store.Elems.Capacity(); ++e) set += ElemFlag(t, e);
    return set;
  }

  GroupHost host;
  VaskModelObj model{host};
  TrelkStore store;
};

TEST_F(StructureFrames, OnlyTheGroupAllMakesNoFrame) {
  host.Group("ALL", {{1, "N1"}, {2, "B1"}});
  FillTrelkFrames(host, model, store);
  EXPECT_EQ(store.Frames.Count(), 0);
  EXPECT_EQ(store.Frames.Capacity(), 0);
}

TEST_F(StructureFrames, AGroupNamedInLowerCaseAllIsAFrame) {
  Frame("B1", 3);
  host.Group("ALL", {{2, "B1"}});
  host.Group("all", {{2, "B1"}});
  FillTrelkFrames(host, model, store);
  ASSERT_EQ(store.Frames.Count(), 1);
  EXPECT_EQ(store.Frames.Capacity(), 11);
  EXPECT_EQ(Name(1), "all                 ");
  EXPECT_EQ(ElemFlag(1, 3), 1);
}

TEST_F(StructureFrames, AnEmptyGroupIsAFrameWithNoFlag) {
  host.Group("Empty", {});
  FillTrelkFrames(host, model, store);
  ASSERT_EQ(store.Frames.Count(), 1);
  for (int n = 1; n <= store.Nodes.Capacity(); ++n) EXPECT_EQ(NodeFlag(1, n), 0);
  EXPECT_EQ(ElemFlagsSet(1), 0);
}

TEST_F(StructureFrames, AFrameWithoutElementIsFlaggedAtElementZero) {
  Frame("Timber", 0);  // its material is neither steel nor concrete
  Frame("B2", 4);
  host.Group("Mixed", {{2, "Timber"}, {2, "B2"}});
  FillTrelkFrames(host, model, store);
  EXPECT_EQ(ElemFlag(1, 0), 1);
  EXPECT_EQ(ElemFlag(1, 4), 1);
  EXPECT_EQ(ElemFlagsSet(1), 2);
}

TEST_F(StructureFrames, ObjectsOfOtherTypesAreLeftOut) {
  Frame("B1", 2);
  host.Group("G", {{3, "Cable1"}, {4, "Tendon1"}, {7, "Link1"}, {6, "Solid1"}, {2, "B1"}});
  FillTrelkFrames(host, model, store);
  EXPECT_EQ(ElemFlagsSet(1), 1);
  EXPECT_EQ(ElemFlag(1, 2), 1);
}

TEST_F(StructureFrames, PointsFramesAndEveryPartOfALabelAreFlagged) {
  Frame("B1", 2);
  Frame("B1", 5);  // a second frame of that label
  Area("W1", 6);   // the three parts of a divided triangle
  Area("W1", 7);
  Area("W1", 8);
  Area("W2", 1);
  host.Group("Core", {{1, "N3"}, {1, "Nowhere"}, {2, "B1"}, {5, "W1"}});
  host.Group("ALL", {{1, "N1"}});
  host.Group("Roof", {{1, "N1"}, {5, "W2"}});
  FillTrelkFrames(host, model, store);
  ASSERT_EQ(store.Frames.Count(), 2);
  EXPECT_EQ(Name(2), "Roof                ");
  EXPECT_EQ(NodeFlag(1, 4), 1);  // N3: a node's record is its place plus 1
  int nodeFlags = 0;
  for (int n = 1; n <= store.Nodes.Capacity(); ++n) nodeFlags += NodeFlag(1, n);
  EXPECT_EQ(nodeFlags, 1);
  EXPECT_EQ(ElemFlagsSet(1), 5);
  for (int e : {2, 5, 6, 7, 8}) EXPECT_EQ(ElemFlag(1, e), 1) << e;
  EXPECT_EQ(NodeFlag(2, 2), 1);  // N1
  EXPECT_EQ(ElemFlag(2, 1), 1);
  EXPECT_EQ(ElemFlagsSet(2), 1);
}

TEST_F(StructureFrames, AnObjectAfterTheLastOneFoundIsTakenOnlyWhenItIsTheFirstOfItsLabel) {
  model.AddNode("N1", 9, 0, 0, DofFlags{});  // a second node N1, after N4
  store.Nodes.Add();
  Frame("B1", 2);
  Frame("B2", 3);
  Frame("B1", 5);  // follows B2, but B1 is frame 1
  Area("W1", 6);
  Area("W2", 7);
  // In model order, then back to the start; B1 and N1 just after the last object found.
  host.Group("G", {{1, "N4"}, {1, "N1"}, {2, "B2"}, {2, "B1"}, {5, "W2"}, {5, "W1"}, {2, "B2"}});
  FillTrelkFrames(host, model, store);
  ASSERT_EQ(store.Frames.Count(), 1);
  EXPECT_EQ(NodeFlag(1, 5), 1);  // N4
  EXPECT_EQ(NodeFlag(1, 2), 1);  // the first N1, not the one after N4
  EXPECT_EQ(NodeFlag(1, 6), 0);
  for (int e : {2, 3, 5, 6, 7}) EXPECT_EQ(ElemFlag(1, e), 1) << e;
  EXPECT_EQ(ElemFlagsSet(1), 5);
}

TEST_F(StructureFrames, NamesAreCutAtTwentyUpToFortyThenNumbered) {
  const std::string thirty(30, 'g');
  const std::string fortyOne(41, 'h');
  host.Group(thirty, {});
  host.Group("ALL", {});
  host.Group(fortyOne, {});
  host.Group("  Padded  ", {});
  FillTrelkFrames(host, model, store);
  ASSERT_EQ(store.Frames.Count(), 3);
  EXPECT_EQ(Name(1), std::string(20, 'g'));
  // Frame 2: "ALL" was skipped without taking a number.
  EXPECT_EQ(Name(2), "3                   ");
  EXPECT_EQ(Name(3), "Padded              ");
}

}  // namespace
}  // namespace vtt
