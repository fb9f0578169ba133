// The label index of VaskObjList answers exactly what the linear search answers, however
// labels are given, duplicated, changed and removed within the rule of the list.
#include "source/vask_obj_list.h"

#include <gtest/gtest.h>

#include <random>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace vtt {
namespace {

struct Labelled {
  std::string Label;
};

// Labels are moved in: GCC 12 warns falsely (-Wrestrict) on a literal assigned to the
// label of an object it has just seen created.
Labelled* GiveLabel(Labelled* object, std::string label) {
  object->Label = std::move(label);
  return object;
}

Labelled* AddLabelled(VaskObjList<Labelled>& list, std::string label) {
  return GiveLabel(list.Add(), std::move(label));
}

const std::vector<std::string> kLabels = {"A", "a", "B", "B ", "C1", "10", "1", "N"};

void ExpectIndexAgreesWithLinear(const VaskObjList<Labelled>& list) {
  for (const std::string& label : kLabels) {
    ASSERT_EQ(list.Find(label), list.FindLinear(label)) << "label \"" << label << "\"";
  }
  ASSERT_EQ(list.Find(""), list.FindLinear(""));
  ASSERT_EQ(list.Find("absent"), 0);
  for (int position = 1; position <= list.Num(); ++position) {
    ASSERT_EQ(list.FirstOfLabelAt(position), list.FindLinear(list(position)->Label))
        << "position " << position;
  }
}

// A long list is indexed some objects ahead of each entry; every label still finds its
// first object, repeated labels included, whether the list is indexed at once or as it
// grows.
TEST(VaskObjList, ALongListFindsTheFirstObjectOfEveryLabel) {
  VaskObjList<Labelled> atOnce;
  VaskObjList<Labelled> asItGrows;
  for (int i = 1; i <= 1000; ++i) {
    const std::string label = "L" + std::to_string(i % 7 == 0 ? i / 7 : i);
    AddLabelled(atOnce, label);
    AddLabelled(asItGrows, label);
    if (i % 37 == 0) {
      ASSERT_EQ(asItGrows.Find(label), asItGrows.FindLinear(label));
    }
  }
  for (int i = 1; i <= 1000; ++i) {
    const std::string label = "L" + std::to_string(i);
    ASSERT_EQ(atOnce.Find(label), atOnce.FindLinear(label)) << label;
    ASSERT_EQ(asItGrows.Find(label), asItGrows.FindLinear(label)) << label;
  }
  // "L2" is the label of objects 2 and 14; the first answers for both.
  EXPECT_EQ(atOnce.Find("L2"), 2);
  EXPECT_EQ(atOnce.FirstOfLabelAt(14), 2);
  EXPECT_EQ(atOnce.FirstOfLabelAt(2), 2);
  EXPECT_EQ(atOnce.Find("L7"), 49);
}

TEST(VaskObjList, FindOfAnUnknownLabelIsZero) {
  VaskObjList<Labelled> list;
  EXPECT_EQ(list.Find("X"), 0);
  EXPECT_EQ(list.Get("X"), nullptr);
  AddLabelled(list, "Y");
  EXPECT_EQ(list.Find("X"), 0);
}

TEST(VaskObjList, TheFirstOfDuplicateLabelsWins) {
  VaskObjList<Labelled> list;
  AddLabelled(list, "X");
  AddLabelled(list, "Y");
  AddLabelled(list, "X");
  EXPECT_EQ(list.Find("X"), 1);
  EXPECT_EQ(list.Get("X"), list(1));
}

TEST(VaskObjList, LabelsAreComparedExactly) {
  VaskObjList<Labelled> list;
  AddLabelled(list, "Beam");
  EXPECT_EQ(list.Find("beam"), 0);
  EXPECT_EQ(list.Find("Beam "), 0);
  EXPECT_EQ(list.Find("Beam"), 1);
}

TEST(VaskObjList, ALabelSetAfterALookUpIsStillFound) {
  VaskObjList<Labelled> list;
  AddLabelled(list, "X");
  Labelled* late = list.Add();
  EXPECT_EQ(list.Find("X"), 1);
  GiveLabel(late, "Y");
  EXPECT_EQ(list.Find("Y"), 2);
}

TEST(VaskObjList, AnEarlierObjectLabelledLateTakesPrecedence) {
  VaskObjList<Labelled> list;
  Labelled* first = list.Add();
  AddLabelled(list, "X");
  EXPECT_EQ(list.Find("X"), 2);
  EXPECT_EQ(list.Find(""), 1);
  GiveLabel(first, "X");
  EXPECT_EQ(list.Find("X"), 1);
  EXPECT_EQ(list.Find(""), 0);
}

TEST(VaskObjList, RemovalMovesLaterObjectsDownAndKeepsTheRemovedOneAlive) {
  VaskObjList<Labelled> list;
  AddLabelled(list, "X");
  Labelled* removed = AddLabelled(list, "Y");
  AddLabelled(list, "Y");
  EXPECT_EQ(list.Find("Y"), 2);
  list.Remove(2);
  EXPECT_EQ(list.Num(), 2);
  EXPECT_EQ(list.Find("Y"), 2);
  EXPECT_NE(list.Get("Y"), removed);
  EXPECT_EQ(removed->Label, "Y");  // still a valid object for whoever refers to it
}

TEST(VaskObjList, ARenameIsSeenAfterLabelsChanged) {
  VaskObjList<Labelled> list;
  AddLabelled(list, "X");
  AddLabelled(list, "Y");
  EXPECT_EQ(list.Find("Y"), 2);
  GiveLabel(list(1), "Y");
  list.LabelsChanged();
  EXPECT_EQ(list.Find("Y"), 1);
  EXPECT_EQ(list.Find("X"), 0);
}

TEST(VaskObjList, ClearEmptiesTheListAndItsIndex) {
  VaskObjList<Labelled> list;
  AddLabelled(list, "X");
  EXPECT_EQ(list.Find("X"), 1);
  list.Clear();
  EXPECT_EQ(list.Num(), 0);
  EXPECT_EQ(list.Find("X"), 0);
  AddLabelled(list, "Z");
  EXPECT_EQ(list.Find("Z"), 1);
}

TEST(VaskObjList, LookUpsSettleOnlyWhenEveryObjectHasALabel) {
  VaskObjList<Labelled> list;
  EXPECT_TRUE(list.SettleLookUps());  // nothing to look up
  AddLabelled(list, "X");
  Labelled* late = list.Add();
  AddLabelled(list, "X");
  EXPECT_FALSE(list.SettleLookUps());  // object 2 is examined again at every look-up
  GiveLabel(late, "Y");
  EXPECT_TRUE(list.SettleLookUps());
  EXPECT_EQ(list.Find("Y"), 2);
  EXPECT_EQ(list.FindNear("X", 3), 1);
  // A removal and a rename are taken in when the look-ups settle again.
  list.Remove(1);
  EXPECT_TRUE(list.SettleLookUps());
  EXPECT_EQ(list.Find("X"), 2);
  GiveLabel(list(1), "X");
  list.LabelsChanged();
  EXPECT_TRUE(list.SettleLookUps());
  EXPECT_EQ(list.FindNear("X", 2), 1);
}

TEST(VaskObjList, AnswersAtOnlyThePositionFindAnswers) {
  VaskObjList<Labelled> list;
  AddLabelled(list, "X");
  AddLabelled(list, "Y");
  AddLabelled(list, "X");
  EXPECT_FALSE(list.AnswersAt("X", 1));  // no index yet: not told without the table
  EXPECT_EQ(list.Find("X"), 1);
  EXPECT_TRUE(list.AnswersAt("X", 1));
  EXPECT_TRUE(list.AnswersAt("Y", 2));
  EXPECT_FALSE(list.AnswersAt("X", 3));  // a later X
  EXPECT_FALSE(list.AnswersAt("Y", 1));
  EXPECT_FALSE(list.AnswersAt("X", 0));
  EXPECT_FALSE(list.AnswersAt("X", 4));
  EXPECT_FALSE(list.AnswersAt("", 1));
  EXPECT_EQ(list.FindNear("X", 3), 1);
  EXPECT_EQ(list.FindNear("Y", 3), 2);
}

TEST(VaskObjList, OutOfRangePositionsThrow) {
  VaskObjList<Labelled> list;
  list.Add();
  EXPECT_THROW(list(0), std::out_of_range);
  EXPECT_THROW(list(2), std::out_of_range);
  EXPECT_THROW(list.Remove(2), std::out_of_range);
}

// Random sequences of the operations the readers use: add and label at once, add and
// label later (with look-ups between), remove, rename through LabelsChanged, clear.
TEST(VaskObjList, IndexAgreesWithLinearSearchOnRandomLabelSets) {
  std::mt19937 random(20240611);
  for (int round = 0; round < 200; ++round) {
    VaskObjList<Labelled> list;
    std::vector<Labelled*> unlabelled;
    std::uniform_int_distribution<int> pickLabel(0, static_cast<int>(kLabels.size()) - 1);
    std::uniform_int_distribution<int> pickOperation(0, 99);
    for (int step = 0; step < 120; ++step) {
      const int operation = pickOperation(random);
      if (operation < 45) {
        list.Add()->Label = kLabels[static_cast<std::size_t>(pickLabel(random))];
      } else if (operation < 60) {
        unlabelled.push_back(list.Add());
      } else if (operation < 72 && !unlabelled.empty()) {
        // Only a label not yet given; one given since goes through LabelsChanged below.
        if (unlabelled.back()->Label.empty()) {
          unlabelled.back()->Label = kLabels[static_cast<std::size_t>(pickLabel(random))];
        }
        unlabelled.pop_back();
      } else if (operation < 85 && list.Num() > 0) {
        std::uniform_int_distribution<int> pickPosition(1, list.Num());
        list.Remove(pickPosition(random));
      } else if (operation < 95 && list.Num() > 0) {
        std::uniform_int_distribution<int> pickPosition(1, list.Num());
        list(pickPosition(random))->Label = kLabels[static_cast<std::size_t>(pickLabel(random))];
        list.LabelsChanged();
      } else if (operation == 99) {
        list.Clear();
        unlabelled.clear();
      }
      ExpectIndexAgreesWithLinear(list);
    }
  }
}

}  // namespace
}  // namespace vtt
