#include "elements/fill_trelk_node.h"

#include <gtest/gtest.h>

#include "source/fake_host_model_test_support.h"
#include "source/vask_model.h"
#include "store/node_records.h"
#include "store/trelk_store.h"
#include "transfer/messages.h"

namespace vtt {
namespace {

class NodeTranslation : public ::testing::Test {
 protected:
  NodeTranslation() : model(host) { store.InitTrelkStore(); }

  VaskNodeObj* Node(const std::string& label, double x, double y, double z,
                    DofFlags restraints = {}) {
    return model.AddNode(label, x, y, z, restraints);
  }
  VaskConstraintObj* Diaphragm(const std::string& label, std::initializer_list<VaskNodeObj*> nodes) {
    VaskConstraintObj* c = model.ConstraintAdd();
    c->Label = label;
    for (VaskNodeObj* n : nodes) c->NodeAdd(n);
    return c;
  }
  RecordRef Rec(int n) { return store.Nodes.Record(n); }

  test_support::FakeHostModel host;
  VaskModelObj model;
  TrelkStore store;
  CollectedMessages messages;
};

TEST_F(NodeTranslation, NoJointsShowsTheMessageAndLeavesTheInitialRecord) {
  FillTrelkNodes(model, store, messages);
  ASSERT_EQ(messages.messages.size(), 1u);
  EXPECT_EQ(messages.messages[0].text, "No nodes exist. No transfer performed.");
  EXPECT_EQ(messages.messages[0].title, "");
  EXPECT_EQ(store.Nodes.Count(), 1);
  for (std::uint8_t b : store.Nodes.RecordBytes(1)) ASSERT_EQ(b, 0);
}

TEST_F(NodeTranslation, OneJointGivesTwoLinkedRecords) {
  Node("A", 1.5, -2.0, 3.25);
  FillTrelkNodes(model, store, messages);
  EXPECT_TRUE(messages.messages.empty());
  ASSERT_EQ(store.Nodes.Count(), 2);
  EXPECT_EQ(store.LastNodeAdded, 1);
  EXPECT_EQ(Rec(1).GetInt(node_rec::PrevNode), 0);
  EXPECT_EQ(Rec(1).GetInt(node_rec::NextNode), 2);
  EXPECT_EQ(Rec(1).GetReal(node_rec::X), 0.0);
  EXPECT_EQ(Rec(1).GetInt(node_rec::InUse), 1);
  EXPECT_EQ(Rec(2).GetInt(node_rec::PrevNode), 1);
  EXPECT_EQ(Rec(2).GetInt(node_rec::NextNode), 0);
  EXPECT_EQ(Rec(2).GetReal(node_rec::X), 1.5);
  EXPECT_EQ(Rec(2).GetReal(node_rec::Y), -2.0);
  EXPECT_EQ(Rec(2).GetReal(node_rec::Z), 3.25);
  EXPECT_EQ(Rec(2).GetInt(node_rec::InUse), 1);
}

TEST_F(NodeTranslation, MiddleRecordsLinkBothWays) {
  Node("A", 0, 0, 0);
  Node("B", 0, 0, 1);
  Node("C", 0, 0, 2);
  FillTrelkNodes(model, store, messages);
  EXPECT_EQ(Rec(3).GetInt(node_rec::PrevNode), 2);
  EXPECT_EQ(Rec(3).GetInt(node_rec::NextNode), 4);
  EXPECT_EQ(Rec(4).GetInt(node_rec::NextNode), 0);
  EXPECT_EQ(model.NodeObj(2)->id, 3);
}

TEST_F(NodeTranslation, SupportKinds) {
  Node("fixed", 0, 0, 0, {true, true, true, true, true, true});
  Node("pinned", 0, 0, 0, {true, true, true, false, false, false});
  Node("pinnedRz", 0, 0, 0, {true, true, true, false, false, true});
  Node("roller", 0, 0, 0, {true, false, false, false, false, false});
  Node("free", 0, 0, 0);
  FillTrelkNodes(model, store, messages);
  EXPECT_EQ(Rec(2).GetInt(node_rec::SupportKind), 1);
  EXPECT_EQ(Rec(3).GetInt(node_rec::SupportKind), 2);
  EXPECT_EQ(Rec(4).GetInt(node_rec::SupportKind), 3);
  EXPECT_EQ(Rec(5).GetInt(node_rec::SupportKind), 9);
  EXPECT_EQ(Rec(6).GetInt(node_rec::SupportKind), 0);
  EXPECT_EQ(Rec(5).GetInt(node_rec::Restrained(1)), 1);
  EXPECT_EQ(Rec(5).GetInt(node_rec::Restrained(2)), 0);
}

TEST_F(NodeTranslation, FirstNodeMarkOnlyOnTheArtificialRecord) {
  Node("fixed", 0, 0, 0, {true, true, true, true, true, true});
  FillTrelkNodes(model, store, messages);
  for (int j = 1; j <= 6; ++j) {
    EXPECT_EQ(Rec(1).GetInt(node_rec::FirstNodeMark(j)), 1);
    EXPECT_EQ(Rec(1).GetInt(node_rec::Restrained(j)), 0);
    EXPECT_EQ(Rec(2).GetInt(node_rec::FirstNodeMark(j)), 0);
  }
}

TEST_F(NodeTranslation, DiaphragmNodesCarryTheirGroupInThreeSlots) {
  VaskNodeObj* a = Node("A", 0, 0, 3, {false, false, true, false, false, false});
  VaskNodeObj* b = Node("B", 5, 0, 3);
  Diaphragm("D1", {a, b});
  FillTrelkNodes(model, store, messages);
  FillTrelkDiaphragmConstraints(model, store);
  ASSERT_EQ(store.Diaphragms.Count(), 1);
  EXPECT_EQ(store.Diaphragms.Record(1).GetText(diaphragm_rec::Name), "D1" + std::string(38, ' '));
  for (int n : {2, 3}) {
    EXPECT_EQ(Rec(n).GetInt(node_rec::SlavedUX), 1);
    EXPECT_EQ(Rec(n).GetInt(node_rec::SlavedUY), 1);
    EXPECT_EQ(Rec(n).GetInt(node_rec::SlavedRZ), 1);
    EXPECT_EQ(Rec(n).GetInt(node_rec::SlavedUZ), 0);
    EXPECT_EQ(Rec(n).GetInt(node_rec::SlavedRX), 0);
    EXPECT_EQ(Rec(n).GetInt(node_rec::SlavedRY), 0);
  }
  // Slaving leaves the restraints as read.
  EXPECT_EQ(Rec(2).GetInt(node_rec::Restrained(3)), 1);
  EXPECT_EQ(Rec(2).GetInt(node_rec::SupportKind), 9);
}

TEST_F(NodeTranslation, AnEmptiedConstraintTakesNoGroupNumber) {
  VaskNodeObj* a = Node("A", 0, 0, 3);
  VaskNodeObj* b = Node("B", 0, 0, 6);
  Diaphragm("D1", {a});
  Diaphragm("Gone", {});
  Diaphragm("D3", {b});
  FillTrelkNodes(model, store, messages);
  FillTrelkDiaphragmConstraints(model, store);
  ASSERT_EQ(store.Diaphragms.Count(), 2);
  EXPECT_EQ(TrimSpaces(store.Diaphragms.Record(2).GetText(diaphragm_rec::Name)), "D3");
  EXPECT_EQ(Rec(3).GetInt(node_rec::SlavedUX), 2);
}

TEST_F(NodeTranslation, ALongLabelGivesTheGroupNumberPlusOne) {
  VaskNodeObj* a = Node("A", 0, 0, 3);
  Diaphragm("D1", {a});
  Diaphragm("D2", {a});
  Diaphragm(std::string(41, 'L'), {a});
  FillTrelkNodes(model, store, messages);
  FillTrelkDiaphragmConstraints(model, store);
  EXPECT_EQ(store.Diaphragms.Record(3).GetText(diaphragm_rec::Name), "4" + std::string(39, ' '));
  // A node that several groups name keeps the last.
  EXPECT_EQ(Rec(2).GetInt(node_rec::SlavedUX), 3);
}

TEST_F(NodeTranslation, AnUnknownMemberStopsTheTransferNamingTheDiaphragm) {
  Node("A", 0, 0, 3);
  Diaphragm("Floor 2", {nullptr});
  FillTrelkNodes(model, store, messages);
  try {
    FillTrelkDiaphragmConstraints(model, store);
    FAIL() << "expected a failure";
  } catch (const std::exception& e) {
    EXPECT_NE(std::string(e.what()).find("Floor 2"), std::string::npos);
  }
}

}  // namespace
}  // namespace vtt
