#include "source/vask_load.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <unordered_map>
#include <utility>

#include "store/units.h"

namespace vtt {
namespace {

// Coincidence and zero tests of loads and relative distances.
constexpr double kSmall = 1e-6;

// The host's direction codes whose positive sense is upward: global Z and projected Z.
bool IsUpwardDirection(int dir) { return dir == 6 || dir == 9; }

// Lengthens a work list to `num` entries when it is shorter; it is never shortened. Only
// entries up to the item count are ever read, so the length beyond that is the list's own
// affair: growing one entry at a time (the storage underneath doubles) keeps a frame with
// one load at a few bytes instead of room for a hundred items.
template <class T>
void MakeRoom(int num, OneBasedList<T>& list) {
  if (num <= list.Num()) return;
  list.Redim(num);
}

// A distance or value in a note: as many digits as it takes, up to 15.
std::string NoteNumber(double value) {
  char text[32];
  std::snprintf(text, sizeof text, "%.15g", value);
  return text;
}

// The name a frame load goes by in a note: the frame and the pattern.
std::string FrameLoadName(const std::string& frame, const std::string& pattern) {
  return frame + " (" + pattern + ")";
}

}  // namespace

// ---- VaskLoadNodeObj ----

void VaskLoadNodeObj::SetLoadNode(const std::string& label, const std::string& pattern, double f1,
                                  double f2, double f3, double m1, double m2, double m3) {
  const int i = patternItems_.Find(pattern, ItemNum,
                                   [this](int k) -> const std::string& { return LoadPattern(k); });
  if (i != 0) {
    F1(i) += f1;
    F2(i) += f2;
    F3(i) += f3;
    M1(i) += m1;
    M2(i) += m2;
    M3(i) += m3;
    return;
  }
  ++ItemNum;
  items_.Add({pattern, f1, f2, f3, m1, m2, m3});
  Label = label;
}

// ---- VaskPairObj ----

void VaskPairObj::AddFirstPair() {
  ItemNum = 2;
  MakeRoom(ItemNum, items_);
  items_(1) = {0.0, 0.0, 0.0};
  items_(2) = {1.0, 0.0, 0.0};
}

void VaskPairObj::InsertStation(int place, double d, double left, double right) {
  ++ItemNum;
  MakeRoom(ItemNum, items_);
  for (int m = ItemNum; m > place; --m) items_(m) = items_(m - 1);
  items_(place) = {d, left, right};
}

void VaskPairObj::AddPair(double d1, double left1, double right1, double d2, double left2,
                          double right2) {
  if (ItemNum == 0) AddFirstPair();

  // Where a distance falls: on station `exact`, or inside a span, where a new station
  // goes at `place` with the list's value there plus the piece's own.
  struct Located {
    int exact = 0;
    int place = 0;
    double left = 0.0;
    double right = 0.0;
  };
  const auto locate = [this](double d, double left, double right) {
    Located at;
    for (int i = 1; i <= ItemNum; ++i) {
      if (std::abs(dist(i) - d) < kSmall) {
        at.exact = i;
        break;
      }
      if (i < ItemNum && dist(i) + kSmall < d && dist(i + 1) - kSmall > d) {
        const double b = Interpolate(d, dist(i), ValRight(i), dist(i + 1), ValLeft(i + 1));
        at.place = i + 1;
        at.left = b + left;
        at.right = b + right;
        break;
      }
    }
    return at;
  };
  const Located at1 = locate(d1, left1, right1);
  const Located at2 = locate(d2, left2, right2);

  for (int i = 1; i <= ItemNum; ++i) {
    if (d1 + kSmall < dist(i) && dist(i) < d2 - kSmall) {
      const double v = Interpolate(dist(i), d1, right1, d2, left2);
      ValLeft(i) += v;
      ValRight(i) += v;
    }
  }
  if (at1.exact != 0) {
    ValLeft(at1.exact) += left1;
    ValRight(at1.exact) += right1;
  }
  if (at2.exact != 0) {
    ValLeft(at2.exact) += left2;
    ValRight(at2.exact) += right2;
  }
  // The later station first, so that the earlier one's place still holds.
  if (at2.place != 0) InsertStation(at2.place, d2, at2.left, at2.right);
  if (at1.place != 0) InsertStation(at1.place, d1, at1.left, at1.right);
}

double Interpolate(double x, double x1, double y1, double x2, double y2) {
  if (x1 == x2) return 0.0;
  if (x1 > x2) {
    std::swap(x1, x2);
    std::swap(y1, y2);
  }
  if (x < x1 || x > x2) return 0.0;
  return y1 + (x - x1) * (y2 - y1) / (x2 - x1);
}

double LoadFrameDistributedSpanTolerance(int unitLength) {
  // The millimetre entry of the single-precision table, a millionth of it, over the
  // present unit's entry; it is compared with relative distances all the same.
  const double millimetre = static_cast<double>(InchesPerUnitLength[2]);
  const double unit = static_cast<double>(InchesPerUnitLength.at(static_cast<std::size_t>(unitLength)));
  return millimetre * 0.000001 / unit;
}

// ---- VaskLoadFrameDistObj ----

void VaskLoadFrameDistObj::AppendItem(double rd1, double rd2, double val1, double val2) {
  ++ItemNum;
  MakeRoom(ItemNum, items_);
  items_(ItemNum) = {rd1, rd2, val1, val2};
}

void VaskLoadFrameDistObj::RemoveItem(int k) {
  for (int m = k; m < ItemNum; ++m) items_(m) = items_(m + 1);
  --ItemNum;
}

void VaskLoadFrameDistObj::AddLoadFrameDistributed(int dir, double rd1, double rd2, double val1,
                                                   double val2) {
  if (IsUpwardDirection(dir)) {
    val1 = -val1;
    val2 = -val2;
  }
  AppendItem(rd1, rd2, val1, val2);
}

void VaskLoadFrameDistObj::SortLoadFrameDistributed(int unitLength, const DropObserver* observer) {
  // Each piece is a trapezoid: nothing left of its start or right of its end.
  for (int i = 1; i <= ItemNum; ++i) {
    PairObj.AddPair(RD1(i), 0.0, Val1(i), RD2(i), Val2(i), 0.0);
  }
  ItemNum = 0;

  const double tolerance = LoadFrameDistributedSpanTolerance(unitLength);
  const VaskPairObj& pairs = PairObj;
  for (int s = 1; s <= pairs.ItemNum - 1; ++s) {
    const double r = pairs.ValRight(s);
    const double l = pairs.ValLeft(s + 1);
    if (std::abs(r) <= kSmall && std::abs(l) <= kSmall) continue;
    const double gap = std::abs(pairs.dist(s + 1) - pairs.dist(s));
    if (!(tolerance < gap)) {
      if (observer != nullptr && *observer) {
        (*observer)({"frame distributed load", FrameLoadName(Label, PatternLabel),
                      "the loaded piece from RD " + NoteNumber(pairs.dist(s)) + " to " +
                          NoteNumber(pairs.dist(s + 1)) + " (" + NoteNumber(r) + " to " +
                          NoteNumber(l) + ") is no longer than the length tolerance " +
                          NoteNumber(tolerance)});
      }
      continue;
    }
    AppendItem(pairs.dist(s), pairs.dist(s + 1), r, l);
  }

  // Join adjoining pieces that continue one straight line, from the last down.
  for (int k = ItemNum; k >= 2; --k) {
    const double lengthBefore = RD2(k - 1) - RD1(k - 1);
    const double length = RD2(k) - RD1(k);
    if (!(std::abs(RD2(k - 1) - RD1(k)) < kSmall) || !(std::abs(Val2(k - 1) - Val1(k)) < kSmall) ||
        !(std::abs(lengthBefore) > kSmall) || !(std::abs(length) > kSmall)) {
      continue;
    }
    const double slopeBefore = (Val2(k - 1) - Val1(k - 1)) / lengthBefore;
    const double slope = (Val2(k) - Val1(k)) / length;
    if (!(std::abs(slopeBefore - slope) < kSmall)) continue;
    RD2(k - 1) = RD2(k);
    Val2(k - 1) = Val2(k);
    RemoveItem(k);
  }
}

bool VaskLoadFrameDistObj::HasLoad() const {
  for (int i = 1; i <= ItemNum; ++i) {
    if (std::abs(Val1(i)) > kSmall || std::abs(Val2(i)) > kSmall) return true;
  }
  return false;
}

// ---- VaskLoadFramePointObj ----

void VaskLoadFramePointObj::RedimLoadFramePoint() { items_.Redim(ItemNum); }

void VaskLoadFramePointObj::AddLoadFramePoint(int dir, double rd, double val) {
  ++ItemNum;
  RedimLoadFramePoint();
  items_(ItemNum) = {rd, IsUpwardDirection(dir) ? -val : val};
}

void VaskLoadFramePointObj::RemoveLoadFramePoint(int k) {
  for (int m = k; m < ItemNum; ++m) items_(m) = items_(m + 1);
  --ItemNum;
}

void VaskLoadFramePointObj::SortLoadFramePoint(const DropObserver* observer) {
  // What the loads come to, taken before the sort when someone listens: the sort itself
  // can lose loads (see below), and the loss shows only against the loads it was given.
  std::vector<std::pair<double, double>> given;
  if (observer != nullptr && *observer) {
    for (int i = 1; i <= ItemNum; ++i) given.emplace_back(RD(i), Val(i));
  }

  // Both bounds stay those on entry. After a fold, j moves on past the item that slid into
  // its place, and the loops go on reading the entries past the shortened ItemNum, which
  // still hold copies of the items that slid down. A copy that meets its own item folds
  // into it and lowers ItemNum once more, so the last item falls off: loads at 0.3, 0.3
  // and 0.7 end as the one item at 0.3. A swap with such a copy puts a real item past
  // ItemNum in the same way.
  const int n = ItemNum;
  for (int i = 1; i <= n - 1; ++i) {
    for (int j = i + 1; j <= n; ++j) {
      if (std::abs(RD(i) - RD(j)) >= kSmall) {
        if (RD(i) > RD(j)) std::swap(items_(i), items_(j));
      } else {
        Val(i) += Val(j);
        RemoveLoadFramePoint(j);
      }
    }
  }
  if (!given.empty()) NoteSortLosses(given, *observer);
}

void VaskLoadFramePointObj::NoteSortLosses(std::vector<std::pair<double, double>> given,
                                           const DropObserver& observer) const {
  // The loads as a right sort would leave them: coincident ones summed, in RD order.
  std::stable_sort(given.begin(), given.end(),
                   [](const auto& a, const auto& b) { return a.first < b.first; });
  std::vector<std::pair<double, double>> sums;
  for (const auto& [rd, val] : given) {
    if (!sums.empty() && std::abs(rd - sums.back().first) < kSmall) {
      sums.back().second += val;
    } else {
      sums.emplace_back(rd, val);
    }
  }
  for (const auto& [rd, sum] : sums) {
    bool kept = false;
    double keptSum = 0.0;
    for (int i = 1; i <= ItemNum; ++i) {
      if (std::abs(RD(i) - rd) < kSmall) {
        kept = true;
        keptSum += Val(i);
      }
    }
    const std::string name = FrameLoadName(Label, PatternLabel);
    if (!kept) {
      observer({"frame point load", name,
                "the load of " + NoteNumber(sum) + " at RD " + NoteNumber(rd) +
                    " falls off the list while coincident loads are folded"});
    } else if (std::abs(keptSum - sum) > 1e-9 * std::max(1.0, std::abs(sum))) {
      observer({"frame point load", name,
                "the loads at RD " + NoteNumber(rd) + " come to " + NoteNumber(sum) +
                    ", but the sort keeps " + NoteNumber(keptSum)});
    }
  }
}

bool VaskLoadFramePointObj::HasLoad() const {
  for (int i = 1; i <= ItemNum; ++i) {
    if (std::abs(Val(i)) > kSmall) return true;
  }
  return false;
}

void NoteReplacedNodeLoads(const std::vector<const VaskLoadNodeObj*>& loads,
                           const DropObserver& observer) {
  if (!observer) return;
  // The last object that holds each node and pattern: the one the nodal pattern keeps.
  std::unordered_map<std::string, std::size_t> last;
  const auto key = [](const std::string& node, const std::string& pattern) {
    return node + '\n' + pattern;
  };
  for (std::size_t k = 0; k < loads.size(); ++k) {
    for (int i = 1; i <= loads[k]->ItemNum; ++i) {
      last[key(loads[k]->Label, loads[k]->LoadPattern(i))] = k;
    }
  }
  for (std::size_t k = 0; k < loads.size(); ++k) {
    const VaskLoadNodeObj& load = *loads[k];
    for (int i = 1; i <= load.ItemNum; ++i) {
      if (last[key(load.Label, load.LoadPattern(i))] == k) continue;
      const double values[] = {load.F1(i), load.F2(i), load.F3(i),
                               load.M1(i), load.M2(i), load.M3(i)};
      bool loaded = false;
      for (const double v : values) loaded = loaded || std::abs(v) > kSmall;
      if (!loaded) continue;
      observer({"nodal load", load.Label + " (" + load.LoadPattern(i) + ")",
                "a later load of the node in the same pattern (a frame's end point load moved "
                "onto it) replaces it: the structure keeps only the last"});
    }
  }
}

// ---- VaskLoadAreaObj ----

std::string LoadAreaValueText(double value) {
  char text[64];
  std::snprintf(text, sizeof text, "%.15g", value);
  return text;
}

double VaskLoadAreaObj::ValueNumber(int i) const { return std::strtod(Value(i).c_str(), nullptr); }

void VaskLoadAreaObj::SetLoadArea(const std::string& label, const std::string& pattern,
                                  std::string_view /*csys*/, int dir, double value) {
  const int i = patternItems_.Find(pattern, ItemNum,
                                   [this](int k) -> const std::string& { return LoadPattern(k); });
  if (i != 0) {
    const double stored = ValueNumber(i);
    Value(i) = LoadAreaValueText(IsUpwardDirection(dir) ? stored + value : stored - value);
    return;
  }
  ++ItemNum;
  items_.Add({LoadAreaValueText(IsUpwardDirection(dir) ? value : -value), dir, pattern});
  Label = label;
}

bool IsGlobalLoadCSys(std::string_view csys) {
  while (!csys.empty() && csys.front() == ' ') csys.remove_prefix(1);
  while (!csys.empty() && csys.back() == ' ') csys.remove_suffix(1);
  return csys == "GLOBAL";
}

bool IsAreaLoadRejected(int /*type*/, std::string_view csys, int dir) {
  if (!IsGlobalLoadCSys(csys)) return true;
  return !(dir == 6 || dir == 9 || dir == 10 || dir == 11);
}

}  // namespace vtt
