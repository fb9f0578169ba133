// Load patterns of the structure: nodal loads, frame loads and self weight.
//
// Every source pattern with nodal loads becomes a "LoadNode-" pattern, and two patterns of
// acceleration loads, "AccelUX" and "AccelUY", always follow them: their load on a node is
// the node's mass in U1 from "Nodal Mass", which the nodal mass step leaves before this one
// runs. Every pattern with frame loads becomes a "LoadFrame-" pattern, in which the frames
// of each element group are gathered into subgroups of identical loading, so that one set
// of load items serves all elements of a subgroup. Every pattern with self weight becomes a
// "SelfWeight-" pattern that flags the elements taking their weight. The names given go
// back on the source patterns for the load cases.
#pragma once

#include <cstdint>
#include <unordered_map>
#include <vector>

#include "source/vask_one_based.h"

namespace vtt {

class TrelkStore;
class VaskLoadFrameDistObj;
class VaskLoadFramePointObj;
class VaskModelObj;

// The nodal load patterns, then "AccelUX" and "AccelUY". A later item of the same node and
// pattern replaces an earlier one: the values are assigned, not added.
void FillTrelkLoadNode(VaskModelObj& model, TrelkStore& store);

// The frame load patterns: subgroups of identical loading by pattern and element group,
// their load items, and the element and group indexes.
void FillTrelkLoadFrame(VaskModelObj& model, TrelkStore& store);

// The self-weight patterns and the flags of the elements that take their weight.
void FillTrelkSelfWeight(VaskModelObj& model, TrelkStore& store);

// Two load values are the same loading when they differ by at most this much.
inline constexpr double kLoadSubGroupTolerance = 1e-6;

// One subgroup of the frame load step: the frames of one element group that carry the same
// loads in one pattern, and those loads, copied from the first frame that made it.
struct TrelkElemLoadSubGroup {
  std::int32_t Pattern = 0;   // number among the frame load patterns
  std::int32_t Group = 0;     // element group
  std::int32_t SubGroup = 0;  // number within the pattern and group, from 1
  std::int32_t ElemCount = 0;
  OneBasedList<std::int32_t> Elem;
  std::int32_t DistCount = 0;
  std::int32_t PointCount = 0;
  OneBasedList<double> RD1;
  OneBasedList<double> RD2;
  OneBasedList<double> Val1;
  OneBasedList<double> Val2;
  OneBasedList<double> RD;
  OneBasedList<double> Val;
};

// The work catalogue of subgroups; it lives only during FillTrelkLoadFrame. Subgroups are
// numbered from 1 in the order they are added.
//
// FindElemLoadSubGroup answers exactly what the literal walk FindElemLoadSubGroupLinear
// answers, the first subgroup in catalogue order that matches, but through an index, so
// that grouping stays fast whether the frames share one loading or all differ. The index
// buckets each subgroup by pattern, group, item counts and every load value cut into cells
// much wider than the tolerance; a frame's values can match only subgroups in the cells
// that its values, moved by up to the tolerance, fall in, so a look-up tries those few
// cells and checks their subgroups with the exact test. Should a frame's values lie near
// the cell edges in too many places, the look-up walks the subgroups of the same pattern,
// group and counts instead, still in catalogue order.
class ElemLoadSubGroupCatalogue {
 public:
  int Num() const { return static_cast<int>(entries_.size()); }
  const TrelkElemLoadSubGroup& operator()(int c) const;
  TrelkElemLoadSubGroup& operator()(int c);

  void Clear();
  // Appends an empty subgroup and returns its number.
  int AddElemLoadSubGroup();
  // Appends element `elem` to subgroup c.
  void AddElemToLoadSubGroup(int c, std::int32_t elem);
  // Copies every item of `dist` and `point` (either may be null: no items) into subgroup c,
  // whose Pattern and Group are set, and enters it in the index.
  void CopyLoadsToSubGroup(int c, const VaskLoadFrameDistObj* dist,
                           const VaskLoadFramePointObj* point);

  // The first subgroup of pattern q and group g with nd distributed and np point items
  // whose every RD1, RD2, Val1, Val2 and RD, Val lies within the tolerance of the frame's,
  // or -1; -1 also when nd and np are both 0.
  int FindElemLoadSubGroup(std::int32_t q, std::int32_t g, int nd, int np,
                           const VaskLoadFrameDistObj* dist,
                           const VaskLoadFramePointObj* point) const;
  // The same answer by walking the whole catalogue from the first subgroup.
  int FindElemLoadSubGroupLinear(std::int32_t q, std::int32_t g, int nd, int np,
                                 const VaskLoadFrameDistObj* dist,
                                 const VaskLoadFramePointObj* point) const;

 private:
  bool Matches(const TrelkElemLoadSubGroup& entry, std::int32_t q, std::int32_t g, int nd,
               int np, const VaskLoadFrameDistObj* dist,
               const VaskLoadFramePointObj* point) const;
  int FindInClass(std::uint64_t class_key, std::int32_t q, std::int32_t g, int nd, int np,
                  const VaskLoadFrameDistObj* dist, const VaskLoadFramePointObj* point) const;

  std::vector<TrelkElemLoadSubGroup> entries_;
  // Subgroup numbers, ascending, by the hash of their pattern, group and counts; and by the
  // hash of those and the cells of all their values.
  std::unordered_map<std::uint64_t, std::vector<int>> classes_;
  std::unordered_map<std::uint64_t, std::vector<int>> cells_;
  // Scratch of the look-up.
  mutable std::vector<double> values_;
  mutable std::vector<double> options_;
  mutable std::vector<int> option_start_;
};

// How the catalogue pass finds a frame's subgroup: through the index, or by the literal
// walk that the index must agree with.
enum class SubGroupSearch { Indexed, Literal };

// The catalogue pass of FillTrelkLoadFrame: sizes every frame's subgroup list to the
// pattern count, then, for each pattern with frame loads and each element group, puts
// every frame of the group that carries loads of the pattern into its subgroup.
ElemLoadSubGroupCatalogue CatalogueElemLoadSubGroups(
    VaskModelObj& model, const TrelkStore& store,
    SubGroupSearch search = SubGroupSearch::Indexed);

}  // namespace vtt
