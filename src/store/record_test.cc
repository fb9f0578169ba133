#include "store/record.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <stdexcept>
#include <vector>

namespace vtt {
namespace {

using Bounds = std::vector<ByteMatrix::Bound>;

// Marks element (i, j) of a matrix of two-byte elements with a value made from its index.
void Mark(ByteMatrix& m, std::int32_t i, std::int32_t j) {
  const auto bytes = m.At({i, j});
  bytes[0] = static_cast<std::uint8_t>(i);
  bytes[1] = static_cast<std::uint8_t>(j + 100);
}

bool Marked(const ByteMatrix& m, std::int32_t i, std::int32_t j) {
  const auto bytes = m.Get({i, j});
  return bytes[0] == static_cast<std::uint8_t>(i) &&
         bytes[1] == static_cast<std::uint8_t>(j + 100);
}

bool Zero(const ByteMatrix& m, std::int32_t i, std::int32_t j) {
  const auto bytes = m.Get({i, j});
  return bytes[0] == 0 && bytes[1] == 0;
}

TEST(ByteMatrix, GrowingTheFirstBoundKeepsEveryElementAndZeroesTheNewRows) {
  ByteMatrix m(2, {{1, 3}, {0, 4}});
  for (int i = 1; i <= 3; ++i) {
    for (int j = 0; j <= 4; ++j) Mark(m, i, j);
  }
  m.ReshapeKeeping({{1, 5}, {0, 4}});
  EXPECT_EQ(m.Bounds()[0].high, 5);
  for (int i = 1; i <= 3; ++i) {
    for (int j = 0; j <= 4; ++j) EXPECT_TRUE(Marked(m, i, j)) << i << "," << j;
  }
  for (int i = 4; i <= 5; ++i) {
    for (int j = 0; j <= 4; ++j) EXPECT_TRUE(Zero(m, i, j)) << i << "," << j;
  }
  EXPECT_THROW(m.Get({6, 0}), std::out_of_range);
}

TEST(ByteMatrix, ASecondAndThirdGrowthKeepTheRowsOfEachEarlierShape) {
  ByteMatrix m(2, {{1, 11}, {1, 7}});
  Mark(m, 1, 1);
  Mark(m, 11, 7);
  m.ReshapeKeeping({{1, 22}, {1, 7}});
  EXPECT_TRUE(Zero(m, 12, 1));
  Mark(m, 12, 1);
  Mark(m, 22, 7);
  m.ReshapeKeeping({{1, 33}, {1, 7}});
  EXPECT_TRUE(Marked(m, 1, 1));
  EXPECT_TRUE(Marked(m, 11, 7));
  EXPECT_TRUE(Marked(m, 12, 1));
  EXPECT_TRUE(Marked(m, 22, 7));
  EXPECT_TRUE(Zero(m, 23, 1));
  EXPECT_TRUE(Zero(m, 33, 7));
  EXPECT_TRUE(Zero(m, 22, 6));
}

TEST(ByteMatrix, RowsCutOffAndGrownAgainComeBackZero) {
  ByteMatrix m(2, {{0, 4}, {1, 2}});
  for (int i = 0; i <= 4; ++i) Mark(m, i, 2);
  m.ReshapeKeeping({{0, 2}, {1, 2}});
  EXPECT_THROW(m.Get({3, 2}), std::out_of_range);
  m.ReshapeKeeping({{0, 4}, {1, 2}});
  EXPECT_TRUE(Marked(m, 2, 2));
  EXPECT_TRUE(Zero(m, 3, 2));
  EXPECT_TRUE(Zero(m, 4, 2));
}

TEST(ByteMatrix, GrowingOneRowAtATimeMovesTheStorageOnlyAFewTimes) {
  ByteMatrix m(2, {{1, 1}, {1, 50}});
  Mark(m, 1, 1);
  const std::uint8_t* where = m.Get({1, 1}).data();
  int moves = 0;
  for (int rows = 2; rows <= 1000; ++rows) {
    m.ReshapeKeeping({{1, rows}, {1, 50}});
    Mark(m, rows, rows % 50 + 1);
    if (m.Get({1, 1}).data() != where) ++moves;
    where = m.Get({1, 1}).data();
  }
  // Storage that grows by half again each time it must move is moved fewer than 20
  // times on the way from 1 to 1000 rows; remaking it at every growth would move it 999.
  EXPECT_LT(moves, 20);
  EXPECT_TRUE(Marked(m, 1, 1));
  for (int rows = 2; rows <= 1000; ++rows) {
    EXPECT_TRUE(Marked(m, rows, rows % 50 + 1)) << rows;
    EXPECT_TRUE(Zero(m, rows, (rows + 1) % 50 + 1)) << rows;
  }
}

TEST(ByteMatrix, GrowingALaterBoundKeepsElementsAtTheirIndices) {
  ByteMatrix m(2, {{1, 2}, {1, 3}});
  Mark(m, 1, 3);
  Mark(m, 2, 1);
  m.ReshapeKeeping({{1, 2}, {1, 5}});
  EXPECT_TRUE(Marked(m, 1, 3));
  EXPECT_TRUE(Marked(m, 2, 1));
  EXPECT_TRUE(Zero(m, 1, 4));
  EXPECT_TRUE(Zero(m, 1, 5));
  EXPECT_TRUE(Zero(m, 2, 3));
}

TEST(ByteMatrix, MovingTheFirstLowerBoundKeepsElementsAtTheirIndices) {
  ByteMatrix m(2, {{1, 3}, {1, 2}});
  Mark(m, 1, 1);
  Mark(m, 3, 2);
  m.ReshapeKeeping({{0, 4}, {1, 2}});
  EXPECT_TRUE(Zero(m, 0, 1));
  EXPECT_TRUE(Marked(m, 1, 1));
  EXPECT_TRUE(Marked(m, 3, 2));
  EXPECT_TRUE(Zero(m, 4, 2));
  m.ReshapeKeeping({{2, 6}, {1, 2}});
  EXPECT_THROW(m.Get({1, 1}), std::out_of_range);
  EXPECT_TRUE(Marked(m, 3, 2));
  EXPECT_TRUE(Zero(m, 2, 1));
  EXPECT_TRUE(Zero(m, 6, 2));
}

TEST(ByteMatrix, AThreeIndexMatrixGrowsInItsFirstIndex) {
  ByteMatrix m(1, {{1, 2}, {1, 2}, {0, 1}});
  m.At({2, 2, 1})[0] = 9;
  m.At({1, 1, 0})[0] = 4;
  m.ReshapeKeeping({{1, 4}, {1, 2}, {0, 1}});
  EXPECT_EQ(m.Get({2, 2, 1})[0], 9);
  EXPECT_EQ(m.Get({1, 1, 0})[0], 4);
  EXPECT_EQ(m.Get({3, 1, 0})[0], 0);
  EXPECT_EQ(m.Get({4, 2, 1})[0], 0);
}

TEST(ByteMatrix, KeepingTheContentsOfAnUntouchedMatrixGivesZeros) {
  ByteMatrix m(2, {{1, 2}, {1, 2}});
  m.ReshapeKeeping({{1, 4}, {1, 2}});
  EXPECT_TRUE(Zero(m, 4, 2));
  EXPECT_TRUE(Zero(m, 1, 1));
}

TEST(ByteMatrix, AMatrixWithNoRowsGrowsIntoZeros) {
  ByteMatrix m(2, {{1, 0}, {1, 3}});
  EXPECT_THROW(m.Get({1, 1}), std::out_of_range);
  m.ReshapeKeeping({{1, 2}, {1, 3}});
  EXPECT_TRUE(Zero(m, 1, 1));
  Mark(m, 2, 3);
  m.ReshapeKeeping({{1, 3}, {1, 3}});
  EXPECT_TRUE(Marked(m, 2, 3));
  EXPECT_TRUE(Zero(m, 3, 3));
}

TEST(ByteMatrix, ReshapingWithoutKeepingClearsEveryElement) {
  ByteMatrix m(2, {{1, 2}, {1, 2}});
  Mark(m, 1, 1);
  m.Reshape({{1, 3}, {1, 2}});
  EXPECT_TRUE(Zero(m, 1, 1));
  EXPECT_TRUE(Zero(m, 3, 2));
}

}  // namespace
}  // namespace vtt
