// The pair of nodes on which the drifts of the structure are measured.
//
// The top node is a node at the highest elevation and the bottom node one at the lowest,
// chosen as the pair with the least offset in plan:
//
//   1. top starts at -1000000.0 and bottom at 10000000.0; over the nodes in order, a z
//      strictly above top becomes top, one strictly below bottom becomes bottom.
//   2. The top list holds, in node order, the nodes with |z - top| under 0.000001; the
//      bottom list those with |z - bottom| under 0.000001.
//   3. Over each top node a, in list order, and each bottom node b, in list order, the
//      squared plan offset d = (ya - yb)(ya - yb) + (xa - xb)(xa - xb) is taken when it is
//      strictly below the best so far, which starts at 100000000.0: a pair 10000 units or
//      more apart in plan is never taken, and of equal offsets the first pair wins.
//
// `FindDriftPairLiteral` is that double loop. `FindDriftPairIndexed` gives the same pair
// without trying every pair: the model uses it, so that a model whose nodes all share one
// elevation is not quadratic. Whether the pair is then kept (neither node may be the last
// of the model) is the model's decision.
#pragma once

#include <span>

namespace vtt {

struct DriftPoint {
  double x = 0.0;
  double y = 0.0;
  double z = 0.0;
};

// One-based positions in the point list; both 0 when no pair was taken.
struct DriftPair {
  int top = 0;
  int bottom = 0;

  bool Found() const { return top != 0; }
  friend bool operator==(const DriftPair&, const DriftPair&) = default;
};

DriftPair FindDriftPairLiteral(std::span<const DriftPoint> points);
DriftPair FindDriftPairIndexed(std::span<const DriftPoint> points);

}  // namespace vtt
