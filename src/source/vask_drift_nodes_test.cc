// The choice of the drift pair: the rules of the search, and the indexed search giving
// the very pair of the literal double loop on all kinds of point sets.
#include "source/vask_drift_nodes.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>
#include <vector>

namespace vtt {
namespace {

DriftPair BothSearches(const std::vector<DriftPoint>& points) {
  const DriftPair literal = FindDriftPairLiteral(points);
  const DriftPair indexed = FindDriftPairIndexed(points);
  EXPECT_EQ(indexed, literal);
  return literal;
}

TEST(FindDriftNodesPair, NoPointsNoPair) { EXPECT_FALSE(BothSearches({}).Found()); }

TEST(FindDriftNodesPair, AllOnOneElevationPairsTheFirstNodeWithItself) {
  const DriftPair pair = BothSearches({{0, 0, 0}, {5, 0, 0}, {9, 0, 0}});
  EXPECT_EQ(pair, (DriftPair{1, 1}));
}

TEST(FindDriftNodesPair, TakesTheLeastPlanOffset) {
  const DriftPair pair = BothSearches({
      {0, 0, 0},      // bottom
      {3, 0, 0},      // bottom
      {0, 0, 5},      // middle
      {2.5, 0.1, 9},  // top
      {9, 9, 9},      // top
  });
  EXPECT_EQ(pair, (DriftPair{4, 2}));
}

TEST(FindDriftNodesPair, EqualOffsetsKeepTheFirstBottomNode) {
  const DriftPair pair = BothSearches({{0, 0, 9}, {1, 0, 0}, {-1, 0, 0}, {0, 1, 0}});
  EXPECT_EQ(pair, (DriftPair{1, 2}));
}

TEST(FindDriftNodesPair, EqualOffsetsKeepTheFirstTopNode) {
  const DriftPair pair = BothSearches({{0, 0, 0}, {0, 2, 9}, {2, 0, 9}, {0, -2, 9}});
  EXPECT_EQ(pair, (DriftPair{2, 1}));
}

TEST(FindDriftNodesPair, ElevationsWithinTheToleranceShareALevel) {
  EXPECT_EQ(BothSearches({{0, 0, 9}, {5, 0, 9.0000005}, {0, 0, 0}}), (DriftPair{1, 3}));
  EXPECT_EQ(BothSearches({{0, 0, 9}, {5, 0, 9.000002}, {0, 0, 0}}), (DriftPair{2, 3}));
}

TEST(FindDriftNodesPair, TenThousandUnitsApartInPlanIsNeverTaken) {
  EXPECT_FALSE(BothSearches({{0, 0, 9}, {10000, 0, 0}}).Found());
  EXPECT_FALSE(BothSearches({{0, 0, 9}, {6000, 8000, 0}}).Found());
  EXPECT_EQ(BothSearches({{0, 0, 9}, {9999.999, 0, 0}}), (DriftPair{1, 2}));
}

TEST(FindDriftNodesPair, AModelBelowTheTopStartHasNoTopNode) {
  EXPECT_FALSE(BothSearches({{0, 0, -2000000}, {0, 0, -3000000}}).Found());
}

TEST(FindDriftNodesPair, ANodeAboveTheBottomStartIsNoBottomNode) {
  EXPECT_FALSE(BothSearches({{0, 0, 20000000}}).Found());
}

TEST(FindDriftNodesPair, NodesWithoutFinitePlanCoordinatesAreNeverTaken) {
  const double inf = std::numeric_limits<double>::infinity();
  const double nan = std::numeric_limits<double>::quiet_NaN();
  EXPECT_EQ(BothSearches({{inf, 0, 9}, {0, nan, 9}, {0, 0, 0}, {3, 0, 9}}), (DriftPair{4, 3}));
  EXPECT_FALSE(BothSearches({{0, 0, 9}, {inf, 0, 0}}).Found());
  EXPECT_FALSE(BothSearches({{1e308, 0, 9}, {-1e308, 0, 0}}).Found());
}

// Point sets of the kinds that make the search hard: many ties on small integer grids,
// levels within the tolerance, everything on one level or one line, offsets around the
// 10000-unit limit, huge and tiny extents, and non-finite coordinates.
std::vector<DriftPoint> RandomPoints(std::mt19937& random, int kind) {
  std::uniform_int_distribution<int> countOf(0, kind == 7 ? 3000 : 60);
  const int count = countOf(random);
  std::uniform_int_distribution<int> small(-4, 4);
  std::uniform_int_distribution<int> level(0, 2);
  std::uniform_real_distribution<double> wide(-20000.0, 20000.0);
  std::uniform_real_distribution<double> jitter(-4e-7, 4e-7);
  std::uniform_real_distribution<double> unit(0.0, 1.0);
  std::vector<DriftPoint> points;
  for (int i = 0; i < count; ++i) {
    DriftPoint point;
    switch (kind) {
      case 0:  // ties everywhere
        point = {double(small(random)), double(small(random)), 3.0 * level(random)};
        break;
      case 1:  // all on one level
        point = {double(small(random)), double(small(random)), 0.0};
        break;
      case 2:  // levels blurred within the tolerance
        point = {double(small(random)), double(small(random)),
                 3.0 * level(random) + jitter(random)};
        break;
      case 3:  // far apart, around the plan limit
        point = {wide(random), wide(random), 3.0 * level(random)};
        break;
      case 4:  // on one vertical plane
        point = {5.0, double(small(random)) * 2500.0, 3.0 * level(random)};
        break;
      case 5: {  // exactly on the limit: offsets of 10000 along an axis
        const double step = (unit(random) < 0.5) ? 10000.0 : 9999.9999;
        point = {step * small(random), 0.0, 3.0 * level(random)};
        break;
      }
      case 6:  // tiny extents
        point = {1e-9 * small(random), 1e-9 * small(random), 3.0 * level(random)};
        break;
      case 7:  // many nodes on a storey grid
        point = {double(small(random)) * 7.5 + 0.25 * level(random), double(small(random)) * 6.0,
                 3.0 * level(random)};
        break;
      default: {  // mixed, with non-finite and huge coordinates
        const double r = unit(random);
        const double odd = r < 0.1   ? std::numeric_limits<double>::infinity()
                           : r < 0.2 ? std::numeric_limits<double>::quiet_NaN()
                           : r < 0.3 ? 1e300
                           : r < 0.4 ? -1e300
                                     : double(small(random));
        point = {odd, double(small(random)), r < 0.05 ? std::nan("") : 3.0 * level(random)};
        break;
      }
    }
    points.push_back(point);
  }
  return points;
}

TEST(FindDriftNodesPair, IndexedSearchGivesTheLiteralPairOnRandomPointSets) {
  std::mt19937 random(7);
  for (int kind = 0; kind <= 8; ++kind) {
    const int rounds = kind == 7 ? 20 : 400;
    for (int round = 0; round < rounds; ++round) {
      const std::vector<DriftPoint> points = RandomPoints(random, kind);
      ASSERT_EQ(FindDriftPairIndexed(points), FindDriftPairLiteral(points))
          << "kind " << kind << ", round " << round << ", " << points.size() << " points";
    }
  }
}

TEST(FindDriftNodesPair, IndexedSearchHandlesManyNodesOnOneLevel) {
  std::vector<DriftPoint> points;
  for (int i = 0; i < 200000; ++i) points.push_back({double(i % 500), double(i / 500), 0.0});
  EXPECT_EQ(FindDriftPairIndexed(points), (DriftPair{1, 1}));
}

}  // namespace
}  // namespace vtt
