// Behaviour of the source object classes: their initial values and the data operations
// the readers and the translation build on.
#include <gtest/gtest.h>

#include <stdexcept>

#include "source/vask_area.h"
#include "source/vask_frame.h"
#include "source/vask_node.h"
#include "source/vask_one_based.h"
#include "source/vask_prop_area_sect.h"
#include "source/vask_prop_frame_sect.h"
#include "source/vask_prop_material.h"
#include "source/vask_th_func.h"

namespace vtt {
namespace {

VaskNodeObj MakeNode(int id) {
  VaskNodeObj node;
  node.id = id;
  return node;
}

TEST(VaskOneBasedList, IndexOneIsTheFirstEntryAndOutOfRangeThrows) {
  OneBasedList<int> list;
  list.Add(10);
  list.Add(20);
  EXPECT_EQ(list.Num(), 2);
  EXPECT_EQ(list(1), 10);
  EXPECT_EQ(list(2), 20);
  EXPECT_THROW(list(0), std::out_of_range);
  EXPECT_THROW(list(3), std::out_of_range);
}

TEST(VaskOneBasedList, RedimKeepsEntriesAndZeroesNewOnes) {
  OneBasedList<int> list;
  list.Add(7);
  list.Redim(3);
  EXPECT_EQ(list.Num(), 3);
  EXPECT_EQ(list(1), 7);
  EXPECT_EQ(list(3), 0);
  list.Redim(1);
  EXPECT_EQ(list.Num(), 1);
  EXPECT_EQ(list(1), 7);
}

TEST(VaskOneBasedList, RemoveAtClosesTheGap) {
  OneBasedList<int> list;
  for (int value : {1, 2, 3, 4}) list.Add(value);
  list.RemoveAt(2);
  ASSERT_EQ(list.Num(), 3);
  EXPECT_EQ(list(1), 1);
  EXPECT_EQ(list(2), 3);
  EXPECT_EQ(list(3), 4);
}

TEST(VaskNodeObj, StartsWithoutRestraintMassOrConstraint) {
  const VaskNodeObj node;
  EXPECT_EQ(node.id, 0);
  EXPECT_FALSE(node.IsSupport());
  EXPECT_FALSE(node.MassExist());
  EXPECT_EQ(node.ConstraintNum(), 0);
  for (int dof = 1; dof <= 6; ++dof) {
    EXPECT_FALSE(node.IsRestrained(dof));
    EXPECT_EQ(node.PointMass(dof), 0.0);
    EXPECT_EQ(node.LoadMass(dof), 0.0);
    EXPECT_EQ(node.FrameLoadMass(dof), 0.0);
    EXPECT_EQ(node.AreaLoadMass(dof), 0.0);
  }
}

TEST(VaskNodeObj, AnyRestraintMakesASupport) {
  for (int dof = 1; dof <= 6; ++dof) {
    VaskNodeObj node;
    node.IsRestrained(dof) = true;
    EXPECT_TRUE(node.IsSupport()) << "dof " << dof;
  }
}

TEST(VaskNodeObj, OnlyU1U2AndR3MakeAHorizontalSupport) {
  const bool expected[] = {true, true, false, false, false, true};
  for (int dof = 1; dof <= 6; ++dof) {
    VaskNodeObj node;
    node.IsRestrained(dof) = true;
    EXPECT_EQ(node.IsSupportXY(), expected[dof - 1]) << "dof " << dof;
  }
}

TEST(VaskNodeObj, MassExistsAboveTheToleranceInMagnitude) {
  VaskNodeObj node;
  node.Mass(3) = 0.000001;
  EXPECT_FALSE(node.MassExist());
  node.Mass(3) = 0.0000011;
  EXPECT_TRUE(node.MassExist());
  node.Mass(3) = 0.0;
  node.Mass(6) = -0.5;
  EXPECT_TRUE(node.MassExist());
}

TEST(VaskNodeObj, AddConstraintRefAppends) {
  VaskNodeObj node;
  VaskConstraintObj first;
  VaskConstraintObj second;
  node.AddConstraintRef(&first);
  node.AddConstraintRef(&second);
  ASSERT_EQ(node.ConstraintNum(), 2);
  EXPECT_EQ(node.ConstraintObj(1), &first);
  EXPECT_EQ(node.ConstraintObj(2), &second);
}

TEST(VaskConstraintObj, FindNodeComparesIds) {
  VaskNodeObj member = MakeNode(5);
  const VaskNodeObj sameId = MakeNode(5);
  const VaskNodeObj otherId = MakeNode(6);
  VaskConstraintObj constraint;
  constraint.NodeAdd(&member);
  EXPECT_TRUE(constraint.FindNode(&sameId));
  EXPECT_FALSE(constraint.FindNode(&otherId));
  EXPECT_FALSE(constraint.FindNode(nullptr));
}

TEST(VaskConstraintObj, NodeAddAppendsWithoutACheck) {
  VaskNodeObj node = MakeNode(2);
  VaskConstraintObj constraint;
  constraint.NodeAdd(&node);
  constraint.NodeAdd(&node);
  EXPECT_EQ(constraint.NodeNum(), 2);
}

TEST(VaskConstraintObj, ExistCommonNodeFindsASharedId) {
  VaskNodeObj n1 = MakeNode(2);
  VaskNodeObj n2 = MakeNode(3);
  VaskNodeObj n3 = MakeNode(4);
  VaskConstraintObj a;
  VaskConstraintObj b;
  a.NodeAdd(&n1);
  a.NodeAdd(&n2);
  b.NodeAdd(&n3);
  EXPECT_FALSE(a.ExistCommonNode(b));
  b.NodeAdd(&n2);
  EXPECT_TRUE(a.ExistCommonNode(b));
  EXPECT_TRUE(b.ExistCommonNode(a));
}

TEST(VaskConstraintObj, UnionAppendsTheMissingNodesOnceAndEmptiesTheOther) {
  VaskNodeObj n1 = MakeNode(2);
  VaskNodeObj n2 = MakeNode(3);
  VaskNodeObj n3 = MakeNode(4);
  VaskConstraintObj a;
  VaskConstraintObj b;
  a.NodeAdd(&n1);
  a.NodeAdd(&n2);
  b.NodeAdd(&n2);
  b.NodeAdd(&n3);
  b.NodeAdd(&n3);
  a.UnionConstraint(b);
  ASSERT_EQ(a.NodeNum(), 3);
  EXPECT_EQ(a.NodeObj(1), &n1);
  EXPECT_EQ(a.NodeObj(2), &n2);
  EXPECT_EQ(a.NodeObj(3), &n3);
  EXPECT_EQ(b.NodeNum(), 0);
}

TEST(VaskConstraintObj, UnionWithDisjointConstraintStillMerges) {
  VaskNodeObj n1 = MakeNode(2);
  VaskNodeObj n2 = MakeNode(3);
  VaskConstraintObj a;
  VaskConstraintObj b;
  a.NodeAdd(&n1);
  b.NodeAdd(&n2);
  a.UnionConstraint(b);
  EXPECT_EQ(a.NodeNum(), 2);
  EXPECT_EQ(b.NodeNum(), 0);
}

TEST(VaskConstraintObj, UnionWithItselfEmptiesIt) {
  VaskNodeObj n1 = MakeNode(2);
  VaskConstraintObj a;
  a.NodeAdd(&n1);
  a.UnionConstraint(a);
  EXPECT_EQ(a.NodeNum(), 0);
}

TEST(VaskConstraintObj, MergeOnlyWhenANodeIsShared) {
  VaskNodeObj n1 = MakeNode(2);
  VaskNodeObj n2 = MakeNode(3);
  VaskNodeObj n3 = MakeNode(4);
  VaskConstraintObj a;
  VaskConstraintObj b;
  a.NodeAdd(&n1);
  b.NodeAdd(&n2);
  a.MergeConstraintObj(b);
  EXPECT_EQ(a.NodeNum(), 1);
  EXPECT_EQ(b.NodeNum(), 1);

  b.NodeAdd(&n1);
  b.NodeAdd(&n3);
  a.MergeConstraintObj(b);
  ASSERT_EQ(a.NodeNum(), 3);
  EXPECT_EQ(a.NodeObj(2), &n2);
  EXPECT_EQ(a.NodeObj(3), &n3);
  EXPECT_EQ(b.NodeNum(), 0);
}

TEST(VaskConstraintObj, RemoveSupportNodeDropsHorizontalSupportsKeepingOrder) {
  VaskNodeObj u3Only = MakeNode(2);
  u3Only.IsRestrained(3) = true;
  VaskNodeObj u1 = MakeNode(3);
  u1.IsRestrained(1) = true;
  VaskNodeObj r3 = MakeNode(4);
  r3.IsRestrained(6) = true;
  VaskNodeObj r1Only = MakeNode(5);
  r1Only.IsRestrained(4) = true;
  VaskNodeObj free = MakeNode(6);
  VaskNodeObj u2 = MakeNode(7);
  u2.IsRestrained(2) = true;
  VaskConstraintObj constraint;
  for (VaskNodeObj* node : {&u3Only, &u1, &r3, &r1Only, &free, &u2}) constraint.NodeAdd(node);

  constraint.RemoveSupportNode();

  ASSERT_EQ(constraint.NodeNum(), 3);
  EXPECT_EQ(constraint.NodeObj(1), &u3Only);
  EXPECT_EQ(constraint.NodeObj(2), &r1Only);
  EXPECT_EQ(constraint.NodeObj(3), &free);
}

TEST(VaskFrameObj, StartsWithItsRequiredInitialValues) {
  const VaskFrameObj frame;
  EXPECT_EQ(frame.TrelkMatType, 3);
  EXPECT_EQ(frame.TrelkFrameType, 0);
  EXPECT_EQ(frame.TrelkConcType, 3);
  EXPECT_EQ(frame.TrelkSectType, 3);
  EXPECT_EQ(frame.HingeTypeI, -1);
  EXPECT_EQ(frame.HingeTypeJ, -1);
  EXPECT_FALSE(frame.HingeI);
  EXPECT_FALSE(frame.HingeJ);
  EXPECT_EQ(frame.NodeI, 0);
  EXPECT_EQ(frame.NodeJ, 0);
  EXPECT_EQ(frame.PropFrameSectObj, nullptr);
  EXPECT_EQ(frame.LoadFrameDistributedNum(), 0);
  EXPECT_EQ(frame.LoadFramePointNum(), 0);
}

TEST(VaskFrameObj, AHingeAtEitherEndMakesAFemaFrame) {
  VaskFrameObj frame;
  EXPECT_FALSE(frame.IsFEMAFrame());
  frame.HingeJ = true;
  EXPECT_TRUE(frame.IsFEMAFrame());
  frame.HingeJ = false;
  frame.HingeI = true;
  EXPECT_TRUE(frame.IsFEMAFrame());
}

TEST(VaskFrameObj, AnEndIsReleasedWhenItRefersToAReleasePattern) {
  VaskFrameReleaseObj pattern;
  VaskFrameObj frame;
  EXPECT_FALSE(frame.isIReleased());
  EXPECT_FALSE(frame.isJReleased());
  frame.ReleaseJObj = &pattern;
  EXPECT_FALSE(frame.isIReleased());
  EXPECT_TRUE(frame.isJReleased());
}

TEST(VaskFrameObj, RedimSubGroupKeepsExistingEntries) {
  VaskFrameObj frame;
  frame.Redim_TrelkSubGroup(2);
  frame.idTrelkElemLoadSubGroup(1) = 11;
  frame.idTrelkElemLoadSubGroup(2) = 12;
  frame.Redim_TrelkSubGroup(4);
  ASSERT_EQ(frame.idTrelkElemLoadSubGroup.Num(), 4);
  EXPECT_EQ(frame.idTrelkElemLoadSubGroup(1), 11);
  EXPECT_EQ(frame.idTrelkElemLoadSubGroup(2), 12);
  EXPECT_EQ(frame.idTrelkElemLoadSubGroup(4), 0);
}

TEST(VaskFrameObj, OwnsItsLoadObjects) {
  VaskFrameObj frame;
  frame.LoadFramePointObj.Add()->PatternLabel = "DEAD";
  frame.LoadFrameDistributedObj.Add();
  EXPECT_EQ(frame.LoadFramePointNum(), 1);
  EXPECT_EQ(frame.LoadFrameDistributedNum(), 1);
  EXPECT_EQ(frame.LoadFramePointObj(1)->PatternLabel, "DEAD");
}

TEST(VaskPropFrameSectObj, GetIdxReleaseWithoutPairsIsMinusOne) {
  const VaskPropFrameSectObj section;
  VaskFrameReleaseObj pattern;
  EXPECT_EQ(section.ReleaseNum(), 0);
  EXPECT_EQ(section.GetIdxRelease(&pattern, &pattern), -1);
  EXPECT_EQ(section.GetIdxRelease(nullptr, nullptr), -1);
}

TEST(VaskPropFrameSectObj, GetIdxReleaseComparesTheIPatternOnly) {
  VaskFrameReleaseObj a;
  VaskFrameReleaseObj b;
  VaskFrameReleaseObj c;
  VaskPropFrameSectObj section;
  section.AddRelease(&a, &b, 7);
  section.AddRelease(&c, &b, 8);

  EXPECT_EQ(section.GetIdxRelease(&a, &c), 1);  // J differs, still the first pair
  EXPECT_EQ(section.GetIdxRelease(&c, &a), 2);
  EXPECT_EQ(section.GetIdxRelease(&b, &b), -1);  // J of pair 1 matches, I does not
  EXPECT_EQ(section.GetIdxRelease(nullptr, &a), -1);
}

TEST(VaskPropFrameSectObj, AddReleaseAppendsThePairAndItsNumber) {
  VaskFrameReleaseObj a;
  VaskPropFrameSectObj section;
  section.AddRelease(nullptr, &a, 9);
  ASSERT_EQ(section.ReleaseNum(), 1);
  EXPECT_EQ(section.ReleaseIObj(1), nullptr);
  EXPECT_EQ(section.ReleaseJObj(1), &a);
  EXPECT_EQ(section.idTrelkRelease(1), 9);
  EXPECT_EQ(section.GetIdxRelease(nullptr, nullptr), 1);
}

TEST(VaskPropFrameSectObj, StartsWithZeroConstantsAndNoMaterial) {
  const VaskPropFrameSectObj section;
  EXPECT_EQ(section.t2, 0.0);
  EXPECT_EQ(section.t3, 0.0);
  EXPECT_EQ(section.Z33, 0.0);
  EXPECT_EQ(section.PropMatObj, nullptr);
}

VaskPropMaterialObj MaterialWithAllSets() {
  VaskPropMaterialObj material;
  material.IsoE = 1000.0;
  material.IsoU = 0.2;
  material.IsoG = 400.0;
  material.UniE = 3000.0;
  material.AniE = {31.0, 32.0, 33.0};
  material.AniU[0] = 0.31;
  material.AniG = {11.0, 12.0, 13.0};
  material.OrtE = {21.0, 22.0, 23.0};
  material.SteelFy = 50.0;
  material.SteelFu = 65.0;
  material.RebarFy = 60.0;
  material.RebarFu = 90.0;
  material.ConcFc = 4.0;
  return material;
}

TEST(VaskPropMaterialObj, IsotropicTakesTheIsotropicSet) {
  VaskPropMaterialObj material = MaterialWithAllSets();
  material.SymType = 0;
  EXPECT_EQ(material.E(), 1000.0);
  EXPECT_EQ(material.Nu(), 0.2);
  EXPECT_EQ(material.G(), 400.0);
}

TEST(VaskPropMaterialObj, OrthotropicHasNuAndGZero) {
  VaskPropMaterialObj material = MaterialWithAllSets();
  material.SymType = 1;
  EXPECT_EQ(material.E(), 21.0);
  EXPECT_EQ(material.Nu(), 0.0);
  EXPECT_EQ(material.G(), 0.0);
}

TEST(VaskPropMaterialObj, AnisotropicTakesTheFirstValueOfEachSet) {
  VaskPropMaterialObj material = MaterialWithAllSets();
  material.SymType = 2;
  EXPECT_EQ(material.E(), 31.0);
  EXPECT_EQ(material.Nu(), 0.31);
  EXPECT_EQ(material.G(), 11.0);
}

TEST(VaskPropMaterialObj, UniaxialHasNuPointZeroFiveAndGHalfOfE) {
  VaskPropMaterialObj material = MaterialWithAllSets();
  material.SymType = 3;
  EXPECT_EQ(material.E(), 3000.0);
  EXPECT_EQ(material.Nu(), 0.05);
  EXPECT_EQ(material.G(), 1500.0);
}

TEST(VaskPropMaterialObj, UnknownSymmetryFallsBack) {
  for (const int symmetry : {-1, 4, 99}) {
    VaskPropMaterialObj material = MaterialWithAllSets();
    material.SymType = symmetry;
    EXPECT_EQ(material.E(), 5400.0);
    EXPECT_EQ(material.Nu(), 0.05);
    EXPECT_EQ(material.G(), 2700.0);
  }
}

TEST(VaskPropMaterialObj, StrengthsFollowTheMaterialType) {
  VaskPropMaterialObj material = MaterialWithAllSets();
  material.MatType = 1;
  EXPECT_EQ(material.Fy(), 0.9 * 50.0);
  EXPECT_EQ(material.Fu(), 65.0);
  material.MatType = 2;
  EXPECT_EQ(material.Fy(), 0.9 * 4.0);
  EXPECT_DOUBLE_EQ(material.Fy(), 3.6);
  EXPECT_EQ(material.Fu(), 4.0);
  material.MatType = 6;
  EXPECT_EQ(material.Fy(), 0.9 * 60.0);
  EXPECT_EQ(material.Fu(), 90.0);
}

TEST(VaskPropMaterialObj, OtherMaterialTypesFallBack) {
  for (const int type : {0, 3, 4, 5, 7}) {
    VaskPropMaterialObj material = MaterialWithAllSets();
    material.MatType = type;
    EXPECT_EQ(material.Fy(), 211500.0);
    EXPECT_EQ(material.Fu(), 235000.0);
  }
}

TEST(VaskAreaObj, RedimJointSizesTheNodeListsKeepingContent) {
  VaskAreaObj area;
  area.NumNodes = 2;
  area.RedimJoint();
  area.LabelNodes(1) = "P1";
  area.idNodes(1) = 2;
  area.NumNodes = 4;
  area.RedimJoint();
  ASSERT_EQ(area.LabelNodes.Num(), 4);
  ASSERT_EQ(area.idNodes.Num(), 4);
  EXPECT_EQ(area.LabelNodes(1), "P1");
  EXPECT_EQ(area.idNodes(1), 2);
  EXPECT_EQ(area.LabelNodes(4), "");
}

TEST(VaskAreaObj, RedimJointWithoutNodesChangesNothing) {
  VaskAreaObj area;
  area.NumNodes = 4;
  area.RedimJoint();
  area.NumNodes = 0;
  area.RedimJoint();
  EXPECT_EQ(area.idNodes.Num(), 4);
  for (int corner = 1; corner <= 4; ++corner) EXPECT_FALSE(area.IsEmbed(corner));
}

TEST(VaskPropAreaSectObj, RedimLayerSizesEveryLayerList) {
  VaskPropAreaSectObj section;
  section.LayerNum = 3;
  section.RedimLayer();
  EXPECT_EQ(section.LayerNames.Num(), 3);
  EXPECT_EQ(section.LayerDists.Num(), 3);
  EXPECT_EQ(section.LayerThick.Num(), 3);
  EXPECT_EQ(section.LayerType.Num(), 3);
  EXPECT_EQ(section.LayerNumIntPts.Num(), 3);
  EXPECT_EQ(section.LayerMatProp.Num(), 3);
  EXPECT_EQ(section.LayerMatAng.Num(), 3);
  EXPECT_EQ(section.LayerS11Type.Num(), 3);
  EXPECT_EQ(section.LayerS22Type.Num(), 3);
  EXPECT_EQ(section.LayerS12Type.Num(), 3);
  EXPECT_EQ(section.LayerTrelkType, 0);
}

TEST(VaskTHFuncObj, AddTHFuncAppendsPointsInOrder) {
  VaskTHFuncObj function;
  function.AddTHFunc(0.0, 0.0);
  function.AddTHFunc(1.5, 0.02);
  function.AddTHFunc(-2.0, 0.04);
  ASSERT_EQ(function.ValueNum, 3);
  EXPECT_EQ(function.Value(2), 1.5);
  EXPECT_EQ(function.Time(2), 0.02);
  EXPECT_EQ(function.Value(3), -2.0);
  EXPECT_EQ(function.Time(3), 0.04);
}

}  // namespace
}  // namespace vtt
