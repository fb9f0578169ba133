// The search for a present node at a point, behind AddNewNode.
//
// Two points coincide when each of their coordinates differs by less than 0.000001
// (strictly). The answer must be the one a linear search from the first point gives: the
// first point, in the order the points were added, that coincides with the query. Dividing
// the triangles of a model asks this four times a triangle, so `CoincidentPointIndex`
// answers through a hash grid instead of a scan, and gives the same point.
//
// The grid: a coordinate v lies in cell floor(v / kCell), clamped to +-2^62 so that a huge
// or overflowing quotient still gives a key. A query looks at every cell from that of
// fl(v - kReach) to that of fl(v + kReach) in each coordinate. Why no coincident point is
// missed: a stored v' with |fl(v' - v)| < 0.000001 lies strictly between v - kReach and
// v + kReach (kReach is four times the tolerance, far more than the rounding of the
// difference), so, v' being a double itself, fl(v - kReach) <= v' <= fl(v + kReach); and
// division by a positive cell, floor and clamping never reverse an order. Of all the points
// in those cells that pass the same strict test as the linear search, the one added first
// wins. A point with a coordinate that is not finite coincides with nothing and is not
// entered in the grid; it still takes its position.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace vtt {

// The test both searches apply: each coordinate differs by less than 0.000001.
bool PointsCoincide(double ax, double ay, double az, double bx, double by, double bz);

class CoincidentPointIndex {
 public:
  static constexpr double kTolerance = 0.000001;
  // Many times the tolerance, so that a query nearly always looks at one cell only.
  static constexpr double kCell = 0.0001;
  static constexpr double kReach = 4.0 * kTolerance;

  // Number of points entered; they hold the positions 1 to Num() in the order entered.
  int Num() const { return static_cast<int>(points_.size()); }
  // Enters the next point, at position Num() + 1.
  void Add(double x, double y, double z);
  // Makes room for `more` points beyond those entered, so that entering them does not
  // remake the table on the way.
  void Reserve(int more);
  // The smallest position whose point coincides with (x, y, z), or 0.
  int Find(double x, double y, double z) const;
  void Clear();

  // The grid cell of a coordinate.
  static std::int64_t CellOf(double v);

 private:
  struct Point {
    double x;
    double y;
    double z;
  };
  struct CellKey {
    std::int64_t i;
    std::int64_t j;
    std::int64_t k;
    friend bool operator==(const CellKey&, const CellKey&) = default;
  };
  struct CellKeyHash {
    std::size_t operator()(const CellKey& key) const;
  };
  // The positions in one cell form a chain in ascending order: `first` and `last` here,
  // the links in next_.
  struct Chain {
    int first;
    int last;
  };

  // A cell of the table; an empty slot has no first position.
  struct Slot {
    CellKey key;
    Chain chain{0, 0};
  };

  // The chain of a cell, or null: one flat table with linear probing, a power of two in
  // size and at most half full, since a node-per-cell map costs a memory block per cell.
  const Chain* CellChain(const CellKey& key) const;
  // The chain of a cell, made empty when the cell has none yet.
  Chain& CellChainToFill(const CellKey& key);
  std::size_t Home(const CellKey& key) const;
  // Doubles the table, or makes it at least `size` slots (a power of two).
  void Grow(std::size_t size = 0);

  std::vector<Point> points_;
  // next_[position - 1]: the next position in the same cell, or 0.
  std::vector<int> next_;
  std::vector<Slot> slots_;
  std::size_t cells_ = 0;  // slots in use
};

}  // namespace vtt
