// The structure's mass pattern: its one record, which accumulators go in under each mass
// source option, restrained freedoms, uplift, and the single-precision sums.
#include "analysis/fill_trelk_nodal_mass.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <string>

#include "elements/fill_trelk_node.h"
#include "source/fake_host_model_test_support.h"
#include "source/vask_model.h"
#include "store/node_records.h"
#include "store/trelk_store.h"
#include "transfer/messages.h"

namespace vtt {
namespace {

constexpr DofFlags kFree{};
constexpr DofFlags kFixed{true, true, true, true, true, true};

class NodalMassFill : public ::testing::Test {
 protected:
  NodalMassFill() : model(host) { store.InitTrelkStore(); }

  VaskNodeObj* Node(const std::string& label, DofFlags restraints = kFree) {
    return model.AddNode(label, 0.0, 0.0, 0.0, restraints);
  }
  // Puts the nodes into the structure, then fills the mass pattern.
  void Fill(int option) {
    model.MassSrcOption = option;
    FillTrelkNodes(model, store, messages);
    FillTrelkNodalMass(model, store);
  }
  // The mass of freedom `dof` at structure node `n`, as the field holds it.
  float Mass(std::int32_t n, int dof) {
    return static_cast<float>(store.NodalMass.Element({1, n}).GetReal(nodal_mass_rec::Mass(dof)));
  }
  std::array<float, 6> Masses(std::int32_t n) {
    std::array<float, 6> m{};
    for (int c = 1; c <= 6; ++c) m[static_cast<std::size_t>(c - 1)] = Mass(n, c);
    return m;
  }
  static void SetAll(OneBasedArray<double, 6>& accumulator, double value) {
    for (int c = 1; c <= 6; ++c) accumulator(c) = value;
  }

  test_support::FakeHostModel host;
  VaskModelObj model;
  TrelkStore store;
  CollectedMessages messages;
};

TEST_F(NodalMassFill, TheStructureHasTheOnePatternNodalMass) {
  Node("1");
  Fill(1);
  EXPECT_EQ(store.NodalMassPatterns.Count(), 1);
  EXPECT_EQ(store.NodalMassPatterns.Capacity(), 1);
  const RecordRef rec = store.NodalMassPatterns.Record(1);
  EXPECT_EQ(rec.GetText(nodal_mass_pattern_rec::Name),
            "Nodal Mass" + std::string(30, ' '));
  ASSERT_EQ(rec.Bytes().size(), nodal_mass_pattern_rec::kSize);
  for (std::uint32_t b = 40; b < nodal_mass_pattern_rec::kSize; ++b) {
    EXPECT_EQ(rec.ByteAt(b), 0) << "byte " << b;
  }
}

TEST_F(NodalMassFill, FillingTwiceStillLeavesOnePatternAndFreshMasses) {
  VaskNodeObj* node = Node("1");
  node->PointMass(1) = 2.0;
  Fill(1);
  FillTrelkNodalMass(model, store);
  EXPECT_EQ(store.NodalMassPatterns.Count(), 1);
  EXPECT_EQ(store.NodalMassPatterns.Capacity(), 1);
  EXPECT_EQ(Mass(2, 1), 2.0f);
}

TEST_F(NodalMassFill, SourceNodeGoesToTheRecordAfterTheStructuresOwnNode) {
  Node("A")->PointMass(1) = 1.5;
  Node("B")->PointMass(2) = 2.5;
  Fill(1);
  EXPECT_EQ(Masses(1), (std::array<float, 6>{}));
  EXPECT_EQ(Masses(2), (std::array<float, 6>{1.5f, 0, 0, 0, 0, 0}));
  EXPECT_EQ(Masses(3), (std::array<float, 6>{0, 2.5f, 0, 0, 0, 0}));
}

TEST_F(NodalMassFill, FullyFixedNodeHasAllSixComponentsZero) {
  VaskNodeObj* fixed = Node("F", kFixed);
  VaskNodeObj* free = Node("G");
  for (VaskNodeObj* node : {fixed, free}) {
    SetAll(node->PointMass, 4.0);
    SetAll(node->LoadMass, 1.0);
    SetAll(node->FrameLoadMass, 2.0);
    SetAll(node->AreaLoadMass, 3.0);
  }
  Fill(3);
  EXPECT_EQ(Masses(2), (std::array<float, 6>{}));
  EXPECT_EQ(Masses(3), (std::array<float, 6>{10, 10, 10, 10, 10, 10}));
}

TEST_F(NodalMassFill, EachRestrainedFreedomIsDroppedAlone) {
  VaskNodeObj* node = Node("P", {true, false, true, false, false, true});
  SetAll(node->PointMass, 1.0);
  SetAll(node->LoadMass, 2.0);
  Fill(3);
  EXPECT_EQ(Masses(2), (std::array<float, 6>{0, 3, 0, 3, 3, 0}));
}

TEST_F(NodalMassFill, RestraintsAreThoseOfTheStructuresNodeRecord) {
  VaskNodeObj* node = Node("P");
  SetAll(node->PointMass, 1.0);
  model.MassSrcOption = 1;
  FillTrelkNodes(model, store, messages);
  store.Nodes.Record(2).SetInt(node_rec::Restrained(2), 1);
  FillTrelkNodalMass(model, store);
  EXPECT_EQ(Masses(2), (std::array<float, 6>{1, 0, 1, 1, 1, 1}));
}

TEST_F(NodalMassFill, NegativeLoadMassIsIgnoredAndPositiveFrameLoadMassKept) {
  VaskNodeObj* node = Node("N");
  node->LoadMass(1) = -5.0;
  node->FrameLoadMass(1) = 3.0;
  node->LoadMass(2) = 4.0;
  node->FrameLoadMass(2) = -1.0;
  node->AreaLoadMass(2) = -2.0;
  Fill(2);
  EXPECT_EQ(Mass(2, 1), 3.0f);
  EXPECT_EQ(Mass(2, 2), 4.0f);
}

TEST_F(NodalMassFill, ZeroAccumulatorsAddNothing) {
  VaskNodeObj* node = Node("N");
  node->AreaLoadMass(1) = 0.0;
  node->LoadMass(1) = -0.0;
  Fill(2);
  EXPECT_EQ(Masses(2), (std::array<float, 6>{}));
}

TEST_F(NodalMassFill, NegativePointMassIsAddedAsItStands) {
  VaskNodeObj* node = Node("N");
  node->PointMass(1) = -2.0;
  node->LoadMass(1) = 5.0;
  Fill(3);
  EXPECT_EQ(Mass(2, 1), 3.0f);
}

TEST_F(NodalMassFill, OptionOneTakesOnlyPointMass) {
  VaskNodeObj* node = Node("N");
  node->PointMass(1) = 1.0;
  node->LoadMass(1) = 10.0;
  node->FrameLoadMass(2) = 20.0;
  node->AreaLoadMass(4) = 30.0;
  Fill(1);
  EXPECT_EQ(Masses(2), (std::array<float, 6>{1, 0, 0, 0, 0, 0}));
}

TEST_F(NodalMassFill, OptionTwoTakesOnlyTheThreeLoadAccumulators) {
  VaskNodeObj* node = Node("N");
  node->PointMass(1) = 1.0;
  node->LoadMass(1) = 10.0;
  node->FrameLoadMass(2) = 20.0;
  node->AreaLoadMass(4) = 30.0;
  Fill(2);
  EXPECT_EQ(Masses(2), (std::array<float, 6>{10, 20, 0, 30, 0, 0}));
}

TEST_F(NodalMassFill, OptionThreeTakesAllFour) {
  VaskNodeObj* node = Node("N");
  node->PointMass(1) = 1.0;
  node->LoadMass(1) = 10.0;
  node->FrameLoadMass(1) = 20.0;
  node->AreaLoadMass(1) = 30.0;
  Fill(3);
  EXPECT_EQ(Mass(2, 1), 61.0f);
}

TEST_F(NodalMassFill, AnotherOptionLeavesTheMassesZero) {
  VaskNodeObj* node = Node("N");
  SetAll(node->PointMass, 1.0);
  SetAll(node->LoadMass, 1.0);
  Fill(0);
  EXPECT_EQ(store.NodalMassPatterns.Count(), 1);
  EXPECT_EQ(Masses(2), (std::array<float, 6>{}));
}

TEST_F(NodalMassFill, UThreeStaysZeroUnlessTheSourceNodeHasAUThreeValue) {
  VaskNodeObj* without = Node("A");
  without->PointMass(1) = 1.0;
  without->PointMass(2) = 1.0;
  without->LoadMass(1) = 1.0;
  VaskNodeObj* with = Node("B");
  with->PointMass(3) = 7.0;
  with->LoadMass(3) = 0.5;
  Fill(3);
  EXPECT_EQ(Mass(2, 3), 0.0f);
  EXPECT_EQ(Mass(3, 3), 7.5f);
}

TEST_F(NodalMassFill, EachAdditionIsRoundedToSinglePrecision) {
  // 4e-8 is below half a unit in the last place of 1.0f (about 5.96e-8), so each addition
  // rounds back to 1; the same two added in double would reach 1 + 2^-23.
  VaskNodeObj* node = Node("N");
  node->PointMass(1) = 1.0;
  node->LoadMass(1) = 4e-8;
  node->FrameLoadMass(1) = 4e-8;
  Fill(3);
  EXPECT_EQ(Mass(2, 1), 1.0f);
  EXPECT_NE(static_cast<float>(1.0 + 4e-8 + 4e-8), 1.0f);
}

TEST_F(NodalMassFill, MassIsNarrowedToSinglePrecision) {
  Node("N")->PointMass(1) = 0.1;
  Fill(1);
  EXPECT_EQ(Mass(2, 1), 0.1f);
  EXPECT_NE(store.NodalMass.Element({1, 2}).GetReal(nodal_mass_rec::Mass(1)), 0.1);
}

TEST_F(NodalMassFill, MassesFollowTheGrownNodeMatrix) {
  // Past 200 nodes the node list grows; the masses must land in the grown matrix.
  for (int i = 1; i <= 250; ++i) Node("N" + std::to_string(i))->PointMass(2) = i;
  Fill(1);
  EXPECT_EQ(store.NodalMass.Bounds()[1].high, store.Nodes.Capacity());
  EXPECT_EQ(Mass(251, 2), 250.0f);
  EXPECT_EQ(Mass(2, 2), 1.0f);
}

}  // namespace
}  // namespace vtt
