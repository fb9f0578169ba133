#include "source/vask_drift_nodes.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <vector>

namespace vtt {

namespace {

constexpr double kTopStart = -1000000.0;
constexpr double kBottomStart = 10000000.0;
constexpr double kLevelTolerance = 0.000001;
// The squared plan offset that no pair reaches: 10000 length units.
constexpr double kBestStart = 100000000.0;

// Both searches compute the offset through this one expression, so that they compare the
// very same numbers.
double SquaredPlanOffset(double dx, double dy) { return dy * dy + dx * dx; }

// Steps 1 and 2: one-based positions of the top and bottom nodes, in node order.
struct DriftLevels {
  std::vector<int> top;
  std::vector<int> bottom;
};

DriftLevels FindLevels(std::span<const DriftPoint> points) {
  double top = kTopStart;
  double bottom = kBottomStart;
  for (const DriftPoint& point : points) {
    if (point.z > top) top = point.z;
    if (point.z < bottom) bottom = point.z;
  }
  DriftLevels levels;
  for (std::size_t i = 0; i < points.size(); ++i) {
    const int position = static_cast<int>(i) + 1;
    if (std::fabs(points[i].z - top) < kLevelTolerance) levels.top.push_back(position);
    if (std::fabs(points[i].z - bottom) < kLevelTolerance) levels.bottom.push_back(position);
  }
  return levels;
}

// The best bottom node found so far for one top node. A candidate replaces it when its
// offset is lower, or equal with an earlier position; before the first candidate only a
// strictly lower offset counts, since an equal offset was already reached by an earlier
// top node, whose pair comes first.
struct Nearest {
  double offset = kBestStart;
  int position = 0;

  bool Improves(double candidateOffset, int candidatePosition) const {
    return candidateOffset < offset ||
           (candidateOffset == offset && position != 0 && candidatePosition < position);
  }
  // Whether a candidate whose offset is at least `lowerBound` could replace it.
  bool MayImprove(double lowerBound) const {
    return lowerBound < offset || (lowerBound == offset && position != 0);
  }
};

// A uniform grid in plan over the bottom nodes. Each cell holds its nodes in list order,
// with the bounding box of their own coordinates.
class BottomGrid {
 public:
  BottomGrid(std::span<const DriftPoint> points, const std::vector<int>& bottom);

  // Improves `nearest` with the bottom nodes near (x, y); finite coordinates only.
  void Search(double x, double y, Nearest& nearest) const;

 private:
  struct Member {
    int position;
    double x;
    double y;
  };
  struct Box {
    double minX;
    double maxX;
    double minY;
    double maxY;
  };

  // An exact lower bound of the offset from (x, y) to any node inside the box: rounding
  // is monotone, so the gap to the box never rounds to more than the gap to a node in it.
  static double LowerBound(const Box& box, double x, double y);

  int CellOf(double coordinate, double origin, int lowest, int highest) const;
  void SearchCell(int cellX, int cellY, double x, double y, Nearest& nearest) const;

  Box bounds_{};
  double cellSize_ = 1.0;
  int numX_ = 1;
  int numY_ = 1;
  std::vector<Member> members_;     // by cell, and by position within a cell
  std::vector<std::size_t> start_;  // members of cell c: [start_[c], start_[c + 1])
  std::vector<Box> boxes_;
};

BottomGrid::BottomGrid(std::span<const DriftPoint> points, const std::vector<int>& bottom) {
  // A node without finite plan coordinates has an offset that is infinite or not a
  // number, and so is never below the best: it cannot be taken and is left out.
  std::vector<Member> found;
  for (const int position : bottom) {
    const DriftPoint& point = points[static_cast<std::size_t>(position - 1)];
    if (std::isfinite(point.x) && std::isfinite(point.y)) {
      found.push_back({position, point.x, point.y});
    }
  }
  if (found.empty()) return;

  bounds_ = {found.front().x, found.front().x, found.front().y, found.front().y};
  for (const Member& member : found) {
    bounds_.minX = std::min(bounds_.minX, member.x);
    bounds_.maxX = std::max(bounds_.maxX, member.x);
    bounds_.minY = std::min(bounds_.minY, member.y);
    bounds_.maxY = std::max(bounds_.maxY, member.y);
  }

  // About one node a cell: cells of side sqrt(area / n), but no more than n along the
  // longer side, so that nodes on a line do not make a needlessly fine grid. Extents that
  // overflow, or none at all, leave one cell.
  const double widthX = bounds_.maxX - bounds_.minX;
  const double widthY = bounds_.maxY - bounds_.minY;
  const double count = static_cast<double>(found.size());
  if (std::isfinite(widthX) && std::isfinite(widthY)) {
    const double size =
        std::max(std::sqrt(widthX) * std::sqrt(widthY / count), std::max(widthX, widthY) / count);
    if (size > 0.0 && std::isfinite(size)) {
      cellSize_ = size;
      numX_ = static_cast<int>(std::min(std::floor(widthX / size), count)) + 1;
      numY_ = static_cast<int>(std::min(std::floor(widthY / size), count)) + 1;
    }
  }

  const std::size_t numCells = static_cast<std::size_t>(numX_) * static_cast<std::size_t>(numY_);
  std::vector<std::size_t> cellOfMember(found.size());
  start_.assign(numCells + 1, 0);
  for (std::size_t i = 0; i < found.size(); ++i) {
    const int cellX = CellOf(found[i].x, bounds_.minX, 0, numX_ - 1);
    const int cellY = CellOf(found[i].y, bounds_.minY, 0, numY_ - 1);
    cellOfMember[i] = static_cast<std::size_t>(cellY) * static_cast<std::size_t>(numX_) +
                      static_cast<std::size_t>(cellX);
    ++start_[cellOfMember[i] + 1];
  }
  for (std::size_t cell = 0; cell < numCells; ++cell) start_[cell + 1] += start_[cell];

  // A stable placement keeps each cell's nodes in list order.
  members_.resize(found.size());
  std::vector<std::size_t> next(start_.begin(), start_.end() - 1);
  for (std::size_t i = 0; i < found.size(); ++i) members_[next[cellOfMember[i]]++] = found[i];

  boxes_.resize(numCells);
  for (std::size_t cell = 0; cell < numCells; ++cell) {
    if (start_[cell] == start_[cell + 1]) continue;
    const Member& first = members_[start_[cell]];
    Box box{first.x, first.x, first.y, first.y};
    for (std::size_t i = start_[cell]; i < start_[cell + 1]; ++i) {
      box.minX = std::min(box.minX, members_[i].x);
      box.maxX = std::max(box.maxX, members_[i].x);
      box.minY = std::min(box.minY, members_[i].y);
      box.maxY = std::max(box.maxY, members_[i].y);
    }
    boxes_[cell] = box;
  }
}

double BottomGrid::LowerBound(const Box& box, double x, double y) {
  const double gapX = x < box.minX ? box.minX - x : (x > box.maxX ? x - box.maxX : 0.0);
  const double gapY = y < box.minY ? box.minY - y : (y > box.maxY ? y - box.maxY : 0.0);
  return SquaredPlanOffset(gapX, gapY);
}

int BottomGrid::CellOf(double coordinate, double origin, int lowest, int highest) const {
  const double cell = std::floor((coordinate - origin) / cellSize_);
  return static_cast<int>(
      std::clamp(cell, static_cast<double>(lowest), static_cast<double>(highest)));
}

void BottomGrid::SearchCell(int cellX, int cellY, double x, double y, Nearest& nearest) const {
  const std::size_t cell = static_cast<std::size_t>(cellY) * static_cast<std::size_t>(numX_) +
                           static_cast<std::size_t>(cellX);
  if (start_[cell] == start_[cell + 1]) return;
  if (!nearest.MayImprove(LowerBound(boxes_[cell], x, y))) return;
  for (std::size_t i = start_[cell]; i < start_[cell + 1]; ++i) {
    const Member& member = members_[i];
    const double offset = SquaredPlanOffset(x - member.x, y - member.y);
    if (nearest.Improves(offset, member.position)) {
      nearest.offset = offset;
      nearest.position = member.position;
    }
  }
}

void BottomGrid::Search(double x, double y, Nearest& nearest) const {
  if (members_.empty() || !nearest.MayImprove(LowerBound(bounds_, x, y))) return;

  // Rings of cells around the query's cell, nearest first. A query outside the grid is
  // put just beside it, which only brings every cell nearer in ring count, so the ring
  // bound below stays a lower bound.
  const int queryX = CellOf(x, bounds_.minX, -1, numX_);
  const int queryY = CellOf(y, bounds_.minY, -1, numY_);
  const int lastRing = std::max({queryX, numX_ - 1 - queryX, queryY, numY_ - 1 - queryY});
  for (int ring = 0; ring <= lastRing; ++ring) {
    // A node in ring r is more than (r - 1) cells away in plan, less the rounding of its
    // cell index and the query's; (r - 2) cells leave a whole cell for that rounding.
    if (ring >= 3) {
      const double gap = static_cast<double>(ring - 2) * cellSize_;
      if (gap * gap >= nearest.offset) return;
    }
    const int lowX = queryX - ring;
    const int highX = queryX + ring;
    const int lowY = queryY - ring;
    const int highY = queryY + ring;
    const int fromX = std::max(lowX, 0);
    const int toX = std::min(highX, numX_ - 1);
    for (const int rowY : {lowY, highY}) {
      if (rowY < 0 || rowY >= numY_) continue;
      for (int cellX = fromX; cellX <= toX; ++cellX) SearchCell(cellX, rowY, x, y, nearest);
      if (ring == 0) break;
    }
    if (ring == 0) continue;
    const int fromY = std::max(lowY + 1, 0);
    const int toY = std::min(highY - 1, numY_ - 1);
    for (const int columnX : {lowX, highX}) {
      if (columnX < 0 || columnX >= numX_) continue;
      for (int cellY = fromY; cellY <= toY; ++cellY) SearchCell(columnX, cellY, x, y, nearest);
    }
  }
}

}  // namespace

DriftPair FindDriftPairLiteral(std::span<const DriftPoint> points) {
  const DriftLevels levels = FindLevels(points);
  double best = kBestStart;
  DriftPair pair;
  for (const int top : levels.top) {
    const DriftPoint& a = points[static_cast<std::size_t>(top - 1)];
    for (const int bottom : levels.bottom) {
      const DriftPoint& b = points[static_cast<std::size_t>(bottom - 1)];
      const double offset = SquaredPlanOffset(a.x - b.x, a.y - b.y);
      if (offset < best) {
        best = offset;
        pair = {top, bottom};
      }
    }
  }
  return pair;
}

DriftPair FindDriftPairIndexed(std::span<const DriftPoint> points) {
  const DriftLevels levels = FindLevels(points);
  const BottomGrid grid(points, levels.bottom);
  // Top nodes in list order, each improving on the best of the earlier ones only by a
  // strictly lower offset: the first pair in the double loop's order wins every tie.
  double best = kBestStart;
  DriftPair pair;
  for (const int top : levels.top) {
    const DriftPoint& a = points[static_cast<std::size_t>(top - 1)];
    if (!std::isfinite(a.x) || !std::isfinite(a.y)) continue;
    Nearest nearest{best, 0};
    grid.Search(a.x, a.y, nearest);
    if (nearest.position != 0) {
      best = nearest.offset;
      pair = {top, nearest.position};
    }
  }
  return pair;
}

}  // namespace vtt
