#include "analysis/fill_drift_and_deflection.h"

#include <gtest/gtest.h>

#include "source/fake_host_model_test_support.h"
#include "source/vask_model.h"
#include "store/drift_records.h"
#include "store/trelk_store.h"

namespace vtt {
namespace {

class Drifts : public ::testing::Test {
 protected:
  Drifts() { store.InitTrelkStore(); }
  void Node(const std::string& label, double x, double y, double z) {
    model.AddNode(label, x, y, z, DofFlags{});
  }
  std::string Name(int d) {
    return std::string(TrimSpaces(store.Drifts.Record(d).GetText(drift_rec::Name)));
  }

  test_support::FakeHostModel host;
  VaskModelObj model{host};
  TrelkStore store;
};

TEST_F(Drifts, AModelOfOneNodeHasNoDrift) {
  Node("1", 0, 0, 0);
  model.FindDriftNodes();
  FillTrelkDrift(model, store);
  EXPECT_EQ(store.Drifts.Count(), 0);
  EXPECT_EQ(store.Drifts.Capacity(), 1);
}

TEST_F(Drifts, NodesAllAtOneElevationGiveTheFirstNodeTwice) {
  Node("1", 0, 0, 0);
  Node("2", 5, 0, 0);
  Node("3", 5, 5, 0);
  model.FindDriftNodes();
  FillTrelkDrift(model, store);
  ASSERT_EQ(store.Drifts.Count(), 2);
  EXPECT_EQ(store.Drifts.Record(1).GetInt(drift_rec::TopNode), 2);  // node 1 is record 2
  EXPECT_EQ(store.Drifts.Record(1).GetInt(drift_rec::BottomNode), 2);
}

TEST_F(Drifts, TheColumnNearestToVerticalIsTakenAndBothRecordsDifferOnlyInNameAndAxis) {
  // A leaning column (top 0.2 off in plan) and a vertical one; the last node of the model
  // can be neither end of the pair, so a spare node closes the list.
  Node("B1", 0, 0, 0);
  Node("B2", 6, 0, 0);
  Node("T1", 0.2, 0, 3);
  Node("T2", 6, 0, 3);
  Node("spare", 20, 20, 1.5);
  model.FindDriftNodes();
  FillTrelkDrift(model, store);
  ASSERT_EQ(store.Drifts.Count(), 2);
  EXPECT_EQ(store.Drifts.Capacity(), 12);
  EXPECT_EQ(Name(1), "H1 Drift");
  EXPECT_EQ(Name(2), "H2 Drift");
  for (int d = 1; d <= 2; ++d) {
    RecordRef rec = store.Drifts.Record(d);
    EXPECT_EQ(rec.GetText(drift_rec::Name).size(), 20u);
    EXPECT_EQ(rec.GetInt(drift_rec::Flag), 1);
    EXPECT_EQ(rec.GetInt(drift_rec::Axis), d - 1);
    EXPECT_EQ(rec.GetInt(drift_rec::TopNode), 5);     // T2, the fourth node
    EXPECT_EQ(rec.GetInt(drift_rec::BottomNode), 3);  // B2
  }
  // Apart from the name and the axis the two records are the same bytes.
  auto first = store.Drifts.RecordBytes(1);
  auto second = store.Drifts.RecordBytes(2);
  for (std::size_t i = 22; i < drift_rec::kSize; ++i) EXPECT_EQ(first[i], second[i]) << i;
}

TEST_F(Drifts, OfTwoVerticalColumnsTheFirstInNodeOrderIsTaken) {
  Node("B1", 0, 0, 0);
  Node("B2", 6, 0, 0);
  Node("T1", 0, 0, 3);
  Node("T2", 6, 0, 3);
  Node("spare", 20, 20, 1.5);
  model.FindDriftNodes();
  FillTrelkDrift(model, store);
  ASSERT_EQ(store.Drifts.Count(), 2);
  EXPECT_EQ(store.Drifts.Record(1).GetInt(drift_rec::TopNode), 4);
  EXPECT_EQ(store.Drifts.Record(1).GetInt(drift_rec::BottomNode), 2);
}

}  // namespace
}  // namespace vtt
