#include "analysis/fill_trelk_load.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <stdexcept>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "analysis/fill_trelk_nodal_mass.h"
#include "source/vask_model.h"
#include "store/load_records.h"
#include "store/trelk_store.h"

namespace vtt {
namespace {

// A nodal mass at or below this carries no acceleration load.
constexpr double kMassZero = 1e-6;
// A pattern whose multiplier is at or below this flags no element for self weight.
constexpr double kSelfWeightMultiplierMin = 0.001;

// ---- The subgroup index ----

// Cells of a load value: 2^16 to the unit, so one cell is about fifteen times the
// tolerance, shifted off the round numbers (0, 0.5, 1, 10) that loads and distances
// often take, so that such values sit inside a cell rather than on its edge.
constexpr double kCellsPerUnit = 65536.0;
constexpr double kCellShift = 0.3819660112501051;
// How far a matching value can lie from a frame's value: the tolerance, and a margin for
// the rounding of the difference that the exact test computes.
constexpr double kReach = kLoadSubGroupTolerance * (1.0 + 1e-7);
// A look-up tries at most this many cell combinations before it walks the class instead.
constexpr std::size_t kMaxProbes = 64;

// Monotone in v: a value that is not below another has a cell that is not below its cell.
double CellOf(double v) { return std::floor(v * kCellsPerUnit + kCellShift) + 0.0; }

std::uint64_t Mix(std::uint64_t x) {
  x += 0x9e3779b97f4a7c15ULL;
  x = (x ^ (x >> 30)) * 0xbf58476d1ce4e5b9ULL;
  x = (x ^ (x >> 27)) * 0x94d049bb133111ebULL;
  return x ^ (x >> 31);
}

std::uint64_t Combine(std::uint64_t seed, std::uint64_t value) {
  return Mix(seed ^ Mix(value));
}

std::uint64_t ClassKey(std::int32_t q, std::int32_t g, int nd, int np) {
  std::uint64_t h = Mix(static_cast<std::uint32_t>(q));
  h = Combine(h, static_cast<std::uint32_t>(g));
  h = Combine(h, static_cast<std::uint32_t>(nd));
  return Combine(h, static_cast<std::uint32_t>(np));
}

// The values of a loading in a fixed order: RD1, RD2, Val1, Val2 of each distributed item,
// then RD, Val of each point item.
void GatherValues(int nd, int np, const VaskLoadFrameDistObj* dist,
                  const VaskLoadFramePointObj* point, std::vector<double>& out) {
  out.clear();
  for (int i = 1; i <= nd; ++i) {
    out.push_back(dist->RD1(i));
    out.push_back(dist->RD2(i));
    out.push_back(dist->Val1(i));
    out.push_back(dist->Val2(i));
  }
  for (int i = 1; i <= np; ++i) {
    out.push_back(point->RD(i));
    out.push_back(point->Val(i));
  }
}

void GatherValues(const TrelkElemLoadSubGroup& entry, std::vector<double>& out) {
  out.clear();
  for (int i = 1; i <= entry.DistCount; ++i) {
    out.push_back(entry.RD1(i));
    out.push_back(entry.RD2(i));
    out.push_back(entry.Val1(i));
    out.push_back(entry.Val2(i));
  }
  for (int i = 1; i <= entry.PointCount; ++i) {
    out.push_back(entry.RD(i));
    out.push_back(entry.Val(i));
  }
}

bool AllFinite(const std::vector<double>& values) {
  return std::all_of(values.begin(), values.end(), [](double v) { return std::isfinite(v); });
}

bool Within(double a, double b) { return std::fabs(a - b) <= kLoadSubGroupTolerance; }

// ---- Frame load writing ----

// Only the first distributed and the first point object of a pattern reach the structure;
// a frame holds a second one when its loads of one pattern name coordinate systems whose
// texts differ (" GLOBAL" and "GLOBAL"). Told to whoever listens for what is left out.
void NoteLaterLoadSets(const VaskModelObj& model, const VaskFrameObj& frame,
                       const std::string& pattern) {
  int seen = 0;
  for (int i = 1; i <= frame.LoadFrameDistributedNum(); ++i) {
    const VaskLoadFrameDistObj& dist = *frame.LoadFrameDistributedObj(i);
    if (dist.PatternLabel != pattern || ++seen == 1 || dist.ItemNum < 1) continue;
    model.NoteDrop("frame distributed load", frame.Label + " (" + pattern + ")",
                   "a second set of distributed loads in the pattern (coordinate system \"" +
                       dist.CSys + "\"); only the first set is taken");
  }
  seen = 0;
  for (int i = 1; i <= frame.LoadFramePointNum(); ++i) {
    const VaskLoadFramePointObj& point = *frame.LoadFramePointObj(i);
    if (point.PatternLabel != pattern || ++seen == 1 || point.ItemNum < 1) continue;
    model.NoteDrop("frame point load", frame.Label + " (" + pattern + ")",
                   "a second set of point loads in the pattern (coordinate system \"" +
                       point.CSys + "\"); only the first set is taken");
  }
}

void WritePatternRecord(RecordRef rec, const std::string& name, int code) {
  rec.SetText(load_pattern_rec::Name, name);
  rec.SetInt(load_pattern_rec::PatternCode, code);
}

void WriteItem(TrelkStore& store, std::int32_t item, int kind, std::int32_t next, double value1,
               double position1, double value2, double position2) {
  RecordRef rec = store.LoadFrameValues.Record(item);
  rec.SetInt(load_frame_value_rec::Kind, kind);
  rec.SetInt(load_frame_value_rec::NextItem, next);
  rec.SetReal(load_frame_value_rec::Value1, value1);
  rec.SetReal(load_frame_value_rec::Position1, position1);
  rec.SetReal(load_frame_value_rec::Value2, value2);
  rec.SetReal(load_frame_value_rec::Position2, position2);
}

// Writes the items of one subgroup as a chain from the running item number t on, and its
// group value record at (subgroup, q, g).
void WriteSubGroup(TrelkStore& store, const TrelkElemLoadSubGroup& entry, std::int32_t q,
                   std::int32_t g, std::int32_t& t) {
  const int total = entry.DistCount + entry.PointCount;
  int u = 0;
  const auto raise = [&](bool distributed) {
    ++t;
    ++u;
    const std::int32_t item = store.AddTrelkLoadFrameValue();
    if (u == 1) {
      RecordRef rec = store.LoadFrameGroupValue.Element({entry.SubGroup, q, g});
      rec.SetInt(load_frame_group_value_rec::Reserved1, 0);
      rec.SetInt(load_frame_group_value_rec::FirstItem, t);
      rec.SetInt(load_frame_group_value_rec::ItemCount, total);
      rec.SetInt(load_frame_group_value_rec::ElemCount, distributed ? entry.ElemCount : 1);
    }
    return std::pair<std::int32_t, std::int32_t>(item, u == total ? 0 : t + 1);
  };
  for (int i = 1; i <= entry.DistCount; ++i) {
    const auto [item, next] = raise(true);
    WriteItem(store, item, load_frame_value_rec::kKindDistributed, next, entry.Val1(i),
              entry.RD1(i), entry.Val2(i), entry.RD2(i));
  }
  for (int i = 1; i <= entry.PointCount; ++i) {
    const auto [item, next] = raise(false);
    WriteItem(store, item, load_frame_value_rec::kKindPoint, next, entry.Val(i), entry.RD(i),
              0.0, 0.0);
  }
}

}  // namespace

// ---- ElemLoadSubGroupCatalogue ----

const TrelkElemLoadSubGroup& ElemLoadSubGroupCatalogue::operator()(int c) const {
  if (c < 1 || c > Num()) throw std::out_of_range("subgroup " + std::to_string(c));
  return entries_[static_cast<std::size_t>(c - 1)];
}

TrelkElemLoadSubGroup& ElemLoadSubGroupCatalogue::operator()(int c) {
  if (c < 1 || c > Num()) throw std::out_of_range("subgroup " + std::to_string(c));
  return entries_[static_cast<std::size_t>(c - 1)];
}

void ElemLoadSubGroupCatalogue::Clear() {
  entries_.clear();
  classes_.clear();
  cells_.clear();
}

int ElemLoadSubGroupCatalogue::AddElemLoadSubGroup() {
  entries_.emplace_back();
  return Num();
}

void ElemLoadSubGroupCatalogue::AddElemToLoadSubGroup(int c, std::int32_t elem) {
  TrelkElemLoadSubGroup& entry = (*this)(c);
  ++entry.ElemCount;
  entry.Elem.Add(elem);
}

void ElemLoadSubGroupCatalogue::CopyLoadsToSubGroup(int c, const VaskLoadFrameDistObj* dist,
                                                    const VaskLoadFramePointObj* point) {
  TrelkElemLoadSubGroup& entry = (*this)(c);
  const int nd = dist == nullptr ? 0 : dist->ItemNum;
  const int np = point == nullptr ? 0 : point->ItemNum;
  entry.DistCount = nd;
  entry.PointCount = np;
  entry.RD1.Redim(nd);
  entry.RD2.Redim(nd);
  entry.Val1.Redim(nd);
  entry.Val2.Redim(nd);
  for (int i = 1; i <= nd; ++i) {
    entry.RD1(i) = dist->RD1(i);
    entry.RD2(i) = dist->RD2(i);
    entry.Val1(i) = dist->Val1(i);
    entry.Val2(i) = dist->Val2(i);
  }
  entry.RD.Redim(np);
  entry.Val.Redim(np);
  for (int i = 1; i <= np; ++i) {
    entry.RD(i) = point->RD(i);
    entry.Val(i) = point->Val(i);
  }

  const std::uint64_t class_key = ClassKey(entry.Pattern, entry.Group, nd, np);
  classes_[class_key].push_back(c);
  GatherValues(entry, values_);
  // A value that is not a number, or infinite, is never within the tolerance of anything:
  // such a subgroup can take no second element and stays out of the cells.
  if (!AllFinite(values_)) return;
  std::uint64_t key = class_key;
  for (std::size_t j = 0; j < values_.size(); ++j) {
    key = Combine(key, std::bit_cast<std::uint64_t>(CellOf(values_[j])));
  }
  cells_[key].push_back(c);
}

bool ElemLoadSubGroupCatalogue::Matches(const TrelkElemLoadSubGroup& entry, std::int32_t q,
                                        std::int32_t g, int nd, int np,
                                        const VaskLoadFrameDistObj* dist,
                                        const VaskLoadFramePointObj* point) const {
  if (entry.Pattern != q || entry.Group != g || entry.DistCount != nd ||
      entry.PointCount != np) {
    return false;
  }
  for (int i = 1; i <= nd; ++i) {
    if (!Within(entry.RD1(i), dist->RD1(i)) || !Within(entry.RD2(i), dist->RD2(i)) ||
        !Within(entry.Val1(i), dist->Val1(i)) || !Within(entry.Val2(i), dist->Val2(i))) {
      return false;
    }
  }
  for (int i = 1; i <= np; ++i) {
    if (!Within(entry.RD(i), point->RD(i)) || !Within(entry.Val(i), point->Val(i))) {
      return false;
    }
  }
  return true;
}

int ElemLoadSubGroupCatalogue::FindElemLoadSubGroupLinear(
    std::int32_t q, std::int32_t g, int nd, int np, const VaskLoadFrameDistObj* dist,
    const VaskLoadFramePointObj* point) const {
  if (nd == 0 && np == 0) return -1;
  for (int c = 1; c <= Num(); ++c) {
    if (Matches((*this)(c), q, g, nd, np, dist, point)) return c;
  }
  return -1;
}

int ElemLoadSubGroupCatalogue::FindInClass(std::uint64_t class_key, std::int32_t q,
                                           std::int32_t g, int nd, int np,
                                           const VaskLoadFrameDistObj* dist,
                                           const VaskLoadFramePointObj* point) const {
  const auto found = classes_.find(class_key);
  if (found == classes_.end()) return -1;
  for (const int c : found->second) {
    if (Matches((*this)(c), q, g, nd, np, dist, point)) return c;
  }
  return -1;
}

int ElemLoadSubGroupCatalogue::FindElemLoadSubGroup(std::int32_t q, std::int32_t g, int nd,
                                                    int np, const VaskLoadFrameDistObj* dist,
                                                    const VaskLoadFramePointObj* point) const {
  if (nd == 0 && np == 0) return -1;
  const std::uint64_t class_key = ClassKey(q, g, nd, np);
  if (classes_.find(class_key) == classes_.end()) return -1;
  GatherValues(nd, np, dist, point, values_);
  if (!AllFinite(values_)) return -1;

  // The cells each value can meet: those of the value moved down and up by the reach, and
  // every cell between.
  const std::size_t d = values_.size();
  options_.clear();
  option_start_.assign(d + 1, 0);
  std::size_t probes = 1;
  bool too_many = false;
  for (std::size_t j = 0; j < d; ++j) {
    option_start_[j] = static_cast<int>(options_.size());
    const double v = values_[j];
    const double low = CellOf(v - kReach);
    const double high = CellOf(v + kReach);
    // Past 2^52 cells apart from 0, a step of one cell is lost in rounding: such values
    // (finite, but far beyond any load) are searched for in their class instead.
    constexpr double kExactCells = 4503599627370496.0;
    if (high - low > 2.0 || std::fabs(low) >= kExactCells || std::fabs(high) >= kExactCells) {
      too_many = true;
      break;
    }
    for (double cell = low; cell <= high; cell += 1.0) options_.push_back(cell + 0.0);
    probes *= static_cast<std::size_t>(high - low) + 1;
    if (probes > kMaxProbes) {
      too_many = true;
      break;
    }
  }
  if (too_many) return FindInClass(class_key, q, g, nd, np, dist, point);
  option_start_[d] = static_cast<int>(options_.size());

  // Every combination of the cells, as a counter with one digit for each value.
  int best = -1;
  std::vector<int> digit(d, 0);
  for (std::size_t probe = 0; probe < probes; ++probe) {
    std::uint64_t key = class_key;
    for (std::size_t j = 0; j < d; ++j) {
      const double cell = options_[static_cast<std::size_t>(option_start_[j] + digit[j])];
      key = Combine(key, std::bit_cast<std::uint64_t>(cell));
    }
    const auto found = cells_.find(key);
    if (found != cells_.end()) {
      for (const int c : found->second) {
        if (best != -1 && c >= best) break;
        if (Matches((*this)(c), q, g, nd, np, dist, point)) {
          best = c;
          break;
        }
      }
    }
    for (std::size_t j = 0; j < d; ++j) {
      if (++digit[j] < option_start_[j + 1] - option_start_[j]) break;
      digit[j] = 0;
    }
  }
  return best;
}

// ---- The fill steps ----

void FillTrelkLoadNode(VaskModelObj& model, TrelkStore& store) {
  std::int32_t n = 0;
  for (int i = 1; i <= model.LoadPatternNum(); ++i) {
    if (model.LoadPatternObj(i)->LoadNodeNotEmpty) ++n;
  }
  store.AllocateLoadNodePatterns(n + 2);

  // The items of each pattern that carries nodal loads, in the order of the load objects
  // and of their items: one pass over the nodal loads instead of one for each pattern.
  // Patterns may share a label; each of them takes the items of that label.
  struct Item {
    int load;
    int item;
  };
  std::unordered_map<std::string_view, std::vector<int>> patterns_named;
  std::vector<std::vector<Item>> items_of(static_cast<std::size_t>(model.LoadPatternNum()) + 1);
  for (int i = 1; i <= model.LoadPatternNum(); ++i) {
    const VaskLoadPatternObj& pattern = *model.LoadPatternObj(i);
    if (pattern.LoadNodeNotEmpty) patterns_named[pattern.Label].push_back(i);
  }
  for (int l = 1; l <= model.LoadNodeNum(); ++l) {
    const VaskLoadNodeObj& load = *model.LoadNodeObj(l);
    for (int j = 1; j <= load.ItemNum; ++j) {
      const auto named = patterns_named.find(load.LoadPattern(j));
      if (named == patterns_named.end()) continue;
      for (const int i : named->second) items_of[static_cast<std::size_t>(i)].push_back({l, j});
    }
  }

  // The node of each nodal load object, looked up once rather than once for each pattern
  // (nodes do not change while the structure is filled); 0 until needed.
  std::vector<int> node_of(static_cast<std::size_t>(model.LoadNodeNum()) + 1, 0);
  std::int32_t k = 0;
  for (int i = 1; i <= model.LoadPatternNum(); ++i) {
    VaskLoadPatternObj& pattern = *model.LoadPatternObj(i);
    if (!pattern.LoadNodeNotEmpty) continue;
    ++k;
    const std::string name = NameWithSuffix("LoadNode-", pattern.Label, i);
    WritePatternRecord(store.LoadNodePatterns.Record(k), name, load_pattern_rec::kCodeLoadNode);
    pattern.TrelkLoadPatternNodeName = name;
    for (const auto [l, j] : items_of[static_cast<std::size_t>(i)]) {
      const VaskLoadNodeObj& load = *model.LoadNodeObj(l);
      int& known = node_of[static_cast<std::size_t>(l)];
      if (known == 0) known = model.NodeIdGet(load.Label);
      const int id = known;
      if (id == -1) {
        model.NoteDrop("nodal load", load.Label + " (" + pattern.Label + ")",
                       "its point is not a node of the model");
        continue;
      }
      RecordRef rec = store.LoadNodeValue.Element({k, id});
      rec.SetReal(load_node_value_rec::F1, load.F1(j));
      rec.SetReal(load_node_value_rec::F2, load.F2(j));
      rec.SetReal(load_node_value_rec::F3, load.F3(j));
      rec.SetReal(load_node_value_rec::M1, load.M1(j));
      rec.SetReal(load_node_value_rec::M2, load.M2(j));
      rec.SetReal(load_node_value_rec::M3, load.M3(j));
      rec.SetReal(load_node_value_rec::Used, 1.0);
    }
  }

  // The acceleration patterns: the load on a node is its mass in U1. The Y pattern takes
  // the U1 mass too.
  WritePatternRecord(store.LoadNodePatterns.Record(k + 1), "AccelUX",
                     load_pattern_rec::kCodeAccelUX);
  WritePatternRecord(store.LoadNodePatterns.Record(k + 2), "AccelUY",
                     load_pattern_rec::kCodeAccelUY);
  for (int i = 1; i <= model.NodeNum(); ++i) {
    const int id = model.NodeObj(i)->id;
    if (id <= 0) continue;
    const double m = store.NodalMass.Element({1, id}).GetReal(nodal_mass_rec::Mass(1));
    if (!(m > kMassZero)) continue;
    RecordRef ux = store.LoadNodeValue.Element({k + 1, id});
    ux.SetReal(load_node_value_rec::F1, m);
    ux.SetReal(load_node_value_rec::Used, 1.0);
    RecordRef uy = store.LoadNodeValue.Element({k + 2, id});
    uy.SetReal(load_node_value_rec::F2, m);
    uy.SetReal(load_node_value_rec::Used, 1.0);
  }
}

ElemLoadSubGroupCatalogue CatalogueElemLoadSubGroups(VaskModelObj& model,
                                                     const TrelkStore& store,
                                                     SubGroupSearch search) {
  for (int f = 1; f <= model.FrameNum(); ++f) {
    model.FrameObj(f)->Redim_TrelkSubGroup(model.LoadPatternNum());
  }
  ElemLoadSubGroupCatalogue catalogue;

  // The frames of each element group, in model order.
  const std::int32_t groups = store.ElemGroups.Count();
  std::vector<std::vector<const VaskFrameObj*>> frames_of(static_cast<std::size_t>(groups) + 1);
  for (int f = 1; f <= model.FrameNum(); ++f) {
    const VaskFrameObj* frame = model.FrameObj(f);
    if (frame->idTrelkElemGroup >= 1 && frame->idTrelkElemGroup <= groups) {
      frames_of[static_cast<std::size_t>(frame->idTrelkElemGroup)].push_back(frame);
    }
  }

  // The frames of each group that hold a load object of each pattern's label, in model
  // order, gathered in one pass over the frames: a frame without one takes no subgroup
  // and has nothing to tell. Patterns may share a label.
  std::unordered_map<std::string_view, std::vector<std::int32_t>> patterns_named;
  std::int32_t patterns = 0;
  for (int i = 1; i <= model.LoadPatternNum(); ++i) {
    const VaskLoadPatternObj& pattern = *model.LoadPatternObj(i);
    if (pattern.LoadElementNotEmpty) patterns_named[pattern.Label].push_back(++patterns);
  }
  const auto slot = [groups](std::int32_t q, std::int32_t g) {
    return static_cast<std::size_t>(q - 1) * static_cast<std::size_t>(groups) +
           static_cast<std::size_t>(g - 1);
  };
  // Each with the frame's first distributed and first point load object of the label,
  // found in the same pass.
  struct Loaded {
    const VaskFrameObj* frame;
    const VaskLoadFrameDistObj* dist;
    const VaskLoadFramePointObj* point;
  };
  std::vector<std::vector<Loaded>> loaded(static_cast<std::size_t>(patterns) *
                                          static_cast<std::size_t>(groups));
  struct FirstOfLabel {
    std::string_view label;
    const VaskLoadFrameDistObj* dist;
    const VaskLoadFramePointObj* point;
  };
  std::vector<FirstOfLabel> labels_seen;  // of one frame, in the order first met
  const auto seen = [&labels_seen](std::string_view label) {
    return std::find_if(labels_seen.begin(), labels_seen.end(),
                        [label](const FirstOfLabel& first) { return first.label == label; });
  };
  for (std::int32_t g = 1; g <= groups; ++g) {
    for (const VaskFrameObj* frame : frames_of[static_cast<std::size_t>(g)]) {
      labels_seen.clear();
      for (int k = 1; k <= frame->LoadFrameDistributedNum(); ++k) {
        const VaskLoadFrameDistObj* dist = frame->LoadFrameDistributedObj(k);
        if (seen(dist->PatternLabel) == labels_seen.end()) {
          labels_seen.push_back({dist->PatternLabel, dist, nullptr});
        }
      }
      for (int k = 1; k <= frame->LoadFramePointNum(); ++k) {
        const VaskLoadFramePointObj* point = frame->LoadFramePointObj(k);
        const auto first = seen(point->PatternLabel);
        if (first == labels_seen.end()) {
          labels_seen.push_back({point->PatternLabel, nullptr, point});
        } else if (first->point == nullptr) {
          first->point = point;
        }
      }
      for (const FirstOfLabel& first : labels_seen) {
        const auto named = patterns_named.find(first.label);
        if (named == patterns_named.end()) continue;
        for (const std::int32_t q : named->second) {
          loaded[slot(q, g)].push_back({frame, first.dist, first.point});
        }
      }
    }
  }

  std::int32_t q = 0;
  for (int i = 1; i <= model.LoadPatternNum(); ++i) {
    const VaskLoadPatternObj& pattern = *model.LoadPatternObj(i);
    if (!pattern.LoadElementNotEmpty) continue;
    ++q;
    for (std::int32_t g = 1; g <= groups; ++g) {
      std::int32_t s = 0;
      for (const auto& [frame, dist, point] : loaded[slot(q, g)]) {
        if (model.DropObserverIfAny() != nullptr) NoteLaterLoadSets(model, *frame, pattern.Label);
        const int nd = dist == nullptr ? 0 : dist->ItemNum;
        const int np = point == nullptr ? 0 : point->ItemNum;
        if (nd < 1 && np < 1) continue;
        int c = search == SubGroupSearch::Indexed
                    ? catalogue.FindElemLoadSubGroup(q, g, nd, np, dist, point)
                    : catalogue.FindElemLoadSubGroupLinear(q, g, nd, np, dist, point);
        if (c == -1) {
          c = catalogue.AddElemLoadSubGroup();
          ++s;
          TrelkElemLoadSubGroup& entry = catalogue(c);
          entry.Pattern = q;
          entry.Group = g;
          entry.SubGroup = s;
          catalogue.AddElemToLoadSubGroup(c, frame->idTrelkElem);
          catalogue.CopyLoadsToSubGroup(c, dist, point);
        } else {
          catalogue.AddElemToLoadSubGroup(c, frame->idTrelkElem);
        }
      }
    }
  }
  return catalogue;
}

void FillTrelkLoadFrame(VaskModelObj& model, TrelkStore& store) {
  const ElemLoadSubGroupCatalogue catalogue = CatalogueElemLoadSubGroups(model, store);

  std::int32_t m = 0;
  for (int c = 1; c <= catalogue.Num(); ++c) m = std::max(m, catalogue(c).SubGroup);
  std::int32_t patterns = 0;
  for (int i = 1; i <= model.LoadPatternNum(); ++i) {
    if (model.LoadPatternObj(i)->LoadElementNotEmpty) ++patterns;
  }
  if (patterns == 0) return;
  store.AllocateLoadFramePatterns(patterns, m + 1);
  store.LoadFrameValueSlotCount = static_cast<std::int16_t>(m);

  // The subgroups of each pattern and group, by subgroup number.
  const std::int32_t groups = store.ElemGroups.Count();
  const auto slot = [groups](std::int32_t q, std::int32_t g) {
    return static_cast<std::size_t>(q - 1) * static_cast<std::size_t>(groups) +
           static_cast<std::size_t>(g - 1);
  };
  std::vector<std::vector<int>> subgroups(static_cast<std::size_t>(patterns) *
                                          static_cast<std::size_t>(groups));
  for (int c = 1; c <= catalogue.Num(); ++c) {
    const TrelkElemLoadSubGroup& entry = catalogue(c);
    std::vector<int>& list = subgroups[slot(entry.Pattern, entry.Group)];
    if (static_cast<std::int32_t>(list.size()) < entry.SubGroup) {
      list.resize(static_cast<std::size_t>(entry.SubGroup), 0);
    }
    list[static_cast<std::size_t>(entry.SubGroup - 1)] = c;
  }

  std::int32_t t = 0;
  std::int32_t q = 0;
  for (int i = 1; i <= model.LoadPatternNum(); ++i) {
    VaskLoadPatternObj& pattern = *model.LoadPatternObj(i);
    if (!pattern.LoadElementNotEmpty) continue;
    ++q;
    const std::string name = NameWithSuffix("LoadFrame-", pattern.Label, i);
    WritePatternRecord(store.LoadFramePatterns.Record(q), name, load_pattern_rec::kCodeLoadFrame);
    pattern.TrelkLoadPatternElementName = name;
    for (std::int32_t g = 1; g <= groups; ++g) {
      const std::vector<int>& list = subgroups[slot(q, g)];
      const auto count = static_cast<std::int32_t>(list.size());
      for (const int c : list) {
        const TrelkElemLoadSubGroup& entry = catalogue(c);
        for (const std::int32_t elem : entry.Elem) {
          store.LoadFrameElemIndex.Element({q, elem}).SetInt(load_frame_index::Value,
                                                             entry.SubGroup);
        }
      }
      store.LoadFrameGroupIndex.Element({q, g}).SetInt(load_frame_index::Value, count);
      for (const int c : list) WriteSubGroup(store, catalogue(c), q, g, t);
    }
  }
}

void FillTrelkSelfWeight(VaskModelObj& model, TrelkStore& store) {
  std::int32_t n = 0;
  for (int i = 1; i <= model.LoadPatternNum(); ++i) {
    if (model.LoadPatternObj(i)->SelfWeightNotEmpty) ++n;
  }
  if (n == 0) return;
  store.AllocateSelfWeightPatterns(n);

  std::int32_t k = 0;
  for (int i = 1; i <= model.LoadPatternNum(); ++i) {
    VaskLoadPatternObj& pattern = *model.LoadPatternObj(i);
    if (!pattern.SelfWeightNotEmpty) continue;
    ++k;
    const std::string name = NameWithSuffix("SelfWeight-", pattern.Label, i);
    WritePatternRecord(store.SelfWeightPatterns.Record(k), name,
                       load_pattern_rec::kCodeSelfWeight);
    pattern.TrelkLoadPatternSelfWeightName = name;
    // Only whether the element takes its weight reaches the structure, not the multiplier.
    if (!(pattern.SelfWtMultiplier > kSelfWeightMultiplierMin)) continue;
    for (int f = 1; f <= model.FrameNum(); ++f) {
      const int elem = model.FrameObj(f)->idTrelkElem;
      if (elem >= 1) store.SelfWeightElemFlag.Element({k, elem}).SetInt(self_weight_flag::Flag, 1);
    }
    for (int a = 1; a <= model.AreaNum(); ++a) {
      const int elem = model.AreaObj(a)->idTrelkElem;
      if (elem >= 1) store.SelfWeightElemFlag.Element({k, elem}).SetInt(self_weight_flag::Flag, 1);
    }
  }
}

}  // namespace vtt
