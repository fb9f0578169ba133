#include "store/units.h"

#include <gtest/gtest.h>

namespace vtt {
namespace {

TEST(HostUnits, CodeSixTakesKilonewtonMetreThroughTheFallBack) {
  const UnitBlock u = UnitsForHostCode(6);
  EXPECT_EQ(u.UnitForce, 3);
  EXPECT_EQ(u.UnitLength, 4);
  EXPECT_EQ(u.UnitGravity, 9.81f);
}

TEST(HostUnits, CodesOutsideTheTableTakeKilonewtonMetre) {
  for (int code : {0, 17, -3, 100}) {
    const UnitBlock u = UnitsForHostCode(code);
    EXPECT_EQ(u.UnitForce, 3) << code;
    EXPECT_EQ(u.UnitLength, 4) << code;
    EXPECT_EQ(u.UnitGravity, 9.81f) << code;
  }
}

TEST(HostUnits, CodeSixteenGivesPoundCentimetre) {
  const UnitBlock u = UnitsForHostCode(16);
  EXPECT_EQ(u.UnitForce, 1);
  EXPECT_EQ(u.UnitLength, 3);
  EXPECT_EQ(u.UnitGravity, 981.4f);
}

TEST(HostUnits, CodeSevenKeepsItsOwnGravity) {
  EXPECT_EQ(UnitsForHostCode(7).UnitGravity, 9814.56f);
  EXPECT_EQ(UnitsForHostCode(5).UnitGravity, 9814.6f);
  EXPECT_EQ(UnitsForHostCode(9).UnitGravity, 9814.6f);
  EXPECT_EQ(UnitsForHostCode(11).UnitGravity, 9814.6f);
  EXPECT_NE(9814.56f, 9814.6f);
}

TEST(HostUnits, EveryRowOfTheTable) {
  struct Row {
    int code, force, length;
    float gravity;
  };
  const Row rows[] = {{1, 1, 0, 386.4f},  {2, 1, 1, 32.2f},   {3, 0, 0, 386.4f},
                      {4, 0, 1, 32.2f},   {5, 3, 2, 9814.6f}, {7, 4, 2, 9814.56f},
                      {8, 4, 4, 9.81f},   {9, 2, 2, 9814.6f}, {10, 2, 4, 9.81f},
                      {11, 5, 2, 9814.6f}, {12, 5, 4, 9.81f}, {13, 3, 3, 981.4f},
                      {14, 4, 3, 981.4f}, {15, 2, 3, 981.4f}};
  for (const Row& r : rows) {
    const UnitBlock u = UnitsForHostCode(r.code);
    EXPECT_EQ(u.UnitForce, r.force) << r.code;
    EXPECT_EQ(u.UnitLength, r.length) << r.code;
    EXPECT_EQ(u.UnitGravity, r.gravity) << r.code;
  }
}

TEST(HostUnits, InchesCarryTheSixInchDisplaySize) {
  const UnitBlock u = UnitsForHostCode(3);
  EXPECT_EQ(u.SizeValue, 6.0);
  EXPECT_EQ(u.SizeText, "6 in.");
  EXPECT_EQ(u.SizeChoice, 1);
  EXPECT_EQ(u.UnitWord3, 4);
  EXPECT_EQ(u.BeepOnFileError, 0);
}

TEST(HostUnits, MetreSizeValueIsTheSinglePrecisionValueWidened) {
  const UnitBlock u = UnitsForHostCode(6);
  EXPECT_EQ(u.SizeValue, static_cast<double>(0.15f));
  EXPECT_NE(u.SizeValue, 0.15);
  EXPECT_EQ(u.SizeText, "0.15 m.");
}

TEST(HostUnits, ConversionTables) {
  EXPECT_EQ(InchesPerUnitLength[4], 39.37f);
  EXPECT_EQ(KipsPerUnitForce[2], 0.000224809f);
  EXPECT_EQ(SizeTableText(2, 3), "1500 mm.");
  EXPECT_EQ(SizeTableValue(1, 0), 0.2f);
}

}  // namespace
}  // namespace vtt
