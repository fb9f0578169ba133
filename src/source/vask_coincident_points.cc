#include "source/vask_coincident_points.h"

#include <cmath>
#include <cstddef>

namespace vtt {

bool PointsCoincide(double ax, double ay, double az, double bx, double by, double bz) {
  constexpr double tolerance = CoincidentPointIndex::kTolerance;
  return std::abs(ax - bx) < tolerance && std::abs(ay - by) < tolerance &&
         std::abs(az - bz) < tolerance;
}

std::int64_t CoincidentPointIndex::CellOf(double v) {
  // 2^62 leaves room to step one cell past the bound without overflow.
  constexpr double bound = 4611686018427387904.0;
  double cell = std::floor(v / kCell);
  if (cell > bound) cell = bound;
  if (cell < -bound) cell = -bound;
  return static_cast<std::int64_t>(cell);
}

std::size_t CoincidentPointIndex::CellKeyHash::operator()(const CellKey& key) const {
  auto h = static_cast<std::uint64_t>(key.i) * 0x9E3779B97F4A7C15ULL;
  h ^= static_cast<std::uint64_t>(key.j) * 0xC2B2AE3D27D4EB4FULL + (h << 6) + (h >> 2);
  h ^= static_cast<std::uint64_t>(key.k) * 0x165667B19E3779F9ULL + (h << 6) + (h >> 2);
  h ^= h >> 29;
  return static_cast<std::size_t>(h);
}

void CoincidentPointIndex::Add(double x, double y, double z) {
  points_.push_back({x, y, z});
  next_.push_back(0);
  if (!std::isfinite(x) || !std::isfinite(y) || !std::isfinite(z)) return;
  const int position = Num();
  Chain& chain = CellChainToFill(CellKey{CellOf(x), CellOf(y), CellOf(z)});
  if (chain.first == 0) {
    chain = Chain{position, position};
  } else {
    next_[static_cast<std::size_t>(chain.last - 1)] = position;
    chain.last = position;
  }
}

std::size_t CoincidentPointIndex::Home(const CellKey& key) const {
  const std::uint64_t spread =
      static_cast<std::uint64_t>(CellKeyHash{}(key)) * 0x9E3779B97F4A7C15ULL;
  return static_cast<std::size_t>(spread >> 32) & (slots_.size() - 1);
}

const CoincidentPointIndex::Chain* CoincidentPointIndex::CellChain(const CellKey& key) const {
  if (slots_.empty()) return nullptr;
  const std::size_t mask = slots_.size() - 1;
  for (std::size_t at = Home(key);; at = (at + 1) & mask) {
    const Slot& slot = slots_[at];
    if (slot.chain.first == 0) return nullptr;
    if (slot.key == key) return &slot.chain;
  }
}

CoincidentPointIndex::Chain& CoincidentPointIndex::CellChainToFill(const CellKey& key) {
  if (2 * (cells_ + 1) > slots_.size()) Grow();
  const std::size_t mask = slots_.size() - 1;
  for (std::size_t at = Home(key);; at = (at + 1) & mask) {
    Slot& slot = slots_[at];
    if (slot.chain.first == 0) {
      slot.key = key;
      ++cells_;
      return slot.chain;
    }
    if (slot.key == key) return slot.chain;
  }
}

void CoincidentPointIndex::Reserve(int more) {
  if (more <= 0) return;
  std::size_t size = slots_.empty() ? 64 : slots_.size();
  while (size < 2 * (cells_ + static_cast<std::size_t>(more))) size *= 2;
  if (size > slots_.size()) Grow(size);
}

void CoincidentPointIndex::Grow(std::size_t size) {
  std::vector<Slot> old = std::move(slots_);
  if (size == 0) size = old.empty() ? 64 : 2 * old.size();
  slots_.assign(size, Slot{});
  const std::size_t mask = slots_.size() - 1;
  for (const Slot& slot : old) {
    if (slot.chain.first == 0) continue;
    std::size_t at = Home(slot.key);
    while (slots_[at].chain.first != 0) at = (at + 1) & mask;
    slots_[at] = slot;
  }
}

int CoincidentPointIndex::Find(double x, double y, double z) const {
  if (!std::isfinite(x) || !std::isfinite(y) || !std::isfinite(z)) return 0;
  const std::int64_t i0 = CellOf(x - kReach);
  const std::int64_t i1 = CellOf(x + kReach);
  const std::int64_t j0 = CellOf(y - kReach);
  const std::int64_t j1 = CellOf(y + kReach);
  const std::int64_t k0 = CellOf(z - kReach);
  const std::int64_t k1 = CellOf(z + kReach);
  int best = 0;
  for (std::int64_t i = i0; i <= i1; ++i) {
    for (std::int64_t j = j0; j <= j1; ++j) {
      for (std::int64_t k = k0; k <= k1; ++k) {
        const Chain* cell = CellChain(CellKey{i, j, k});
        if (cell == nullptr) continue;
        // The chain ascends, so its first coincident point is the cell's candidate.
        for (int position = cell->first; position != 0;
             position = next_[static_cast<std::size_t>(position - 1)]) {
          if (best != 0 && position > best) break;
          const Point& p = points_[static_cast<std::size_t>(position - 1)];
          if (PointsCoincide(p.x, p.y, p.z, x, y, z)) {
            best = position;
            break;
          }
        }
      }
    }
  }
  return best;
}

void CoincidentPointIndex::Clear() {
  points_.clear();
  next_.clear();
  slots_.clear();
  cells_ = 0;
}

}  // namespace vtt
