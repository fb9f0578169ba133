#include "elements/fill_trelk_element.h"

#include <array>
#include <vector>

#include "source/vask_model.h"
#include "store/element_records.h"
#include "store/trelk_store.h"

namespace vtt {
namespace {

constexpr int kElemKind = 6;
constexpr int kSourceCompound = 6;
constexpr int kKindFrameCompound = 2;

// The running numbers of one FillTrelkElements: the next element number, and the last
// element of the group made before.
struct ElementNumbers {
  std::int32_t next_elem = 1;
  std::int32_t last_of_previous_group = 0;
};

using Section = VaskPropFrameSectObj;

// One frame group, in the fixed order of the groups, with the compound its frames take:
// a release compound when an end is released, else the FEMA compound when the frame has
// a hinge (never for a steel brace), else the plain compound.
struct FrameGroup {
  const char* name;
  int kind;
  int frame_type;  // 1 column, 2 beam, 3 brace
  int mat_type;    // 1 concrete, 2 steel
  int option;
  int Section::*fema;  // null: hinges are not looked at
  int Section::*plain;
};

const std::array<FrameGroup, 6> kFrameGroups = {{
    {"ElemConcCol", 3, 1, 1, 5, &Section::idTrelkCompoundFemaConcCol, &Section::idTrelkCompoundConcCol},
    {"ElemConcBeam", 2, 2, 1, 1, &Section::idTrelkCompoundFemaConcBeam, &Section::idTrelkCompoundConcBeam},
    {"ElemConcBrace", 5, 3, 1, 1, &Section::idTrelkCompoundFemaConcCol, &Section::idTrelkCompoundConcCol},
    {"ElemSteelCol", 3, 1, 2, 5, &Section::idTrelkCompoundFemaSteelCol, &Section::idTrelkCompoundSteelCol},
    {"ElemSteelBeam", 2, 2, 2, 1, &Section::idTrelkCompoundFemaSteelBeam, &Section::idTrelkCompoundSteelBeam},
    {"ElemSteelBrace", 5, 3, 2, 1, nullptr, &Section::idTrelkCompoundSteelCol},
}};

bool InGroup(const VaskFrameObj& frame, const FrameGroup& group) {
  return frame.TrelkFrameType == group.frame_type && frame.TrelkMatType == group.mat_type;
}

std::int32_t CompoundOf(const VaskFrameObj& frame, const FrameGroup& group) {
  if (frame.isIReleased() || frame.isJReleased()) return frame.idCompdRelealse;
  const Section& section = *frame.PropFrameSectObj;
  if (group.fema != nullptr && frame.IsFEMAFrame()) return section.*group.fema;
  return section.*group.plain;
}

// Opens a group of n elements: its record, then its leading element record. Returns the
// group's number.
std::int32_t OpenGroup(TrelkStore& store, ElementNumbers& numbers, const std::string& name,
                       int kind, std::int32_t n) {
  const std::int32_t group = store.AddTrelkElemGroup();
  const std::int32_t first = numbers.last_of_previous_group + 1;
  const std::int32_t last = first + n;
  FillTrelkElemGroupRecord(store, group, name, kind, 0, first, last);
  numbers.last_of_previous_group = last;
  const std::int32_t lead = store.AddTrelkElem();
  FillTrelkElemRecord(store, lead, 0, 0, numbers.next_elem + 1, 0, 0, 0, 0, 0, 0, 0, 0, 0.0);
  ++numbers.next_elem;
  return group;
}

// The positions of the objects of each group, in model order: one pass over the model
// instead of one for each group.
template <std::size_t Groups>
using MembersOfGroups = std::array<std::vector<int>, Groups>;

void FillFrameElements(const VaskModelObj& model, TrelkStore& store, ElementNumbers& numbers) {
  MembersOfGroups<kFrameGroups.size()> members;
  for (int f = 1; f <= model.FrameNum(); ++f) {
    const VaskFrameObj& frame = *model.FrameObj(f);
    for (std::size_t g = 0; g < kFrameGroups.size(); ++g) {
      if (InGroup(frame, kFrameGroups[g])) members[g].push_back(f);
    }
  }
  for (std::size_t g = 0; g < kFrameGroups.size(); ++g) {
    const auto n = static_cast<std::int32_t>(members[g].size());
    if (n == 0) continue;
    const FrameGroup& layout = kFrameGroups[g];
    const std::int32_t group = OpenGroup(store, numbers, layout.name, layout.kind, n);
    std::int32_t k = 1;
    for (const int f : members[g]) {
      VaskFrameObj& frame = *model.FrameObj(f);
      const std::int32_t elem = store.AddTrelkElem();
      const std::int32_t next = k == n ? 0 : numbers.next_elem + 1;
      FillTrelkElemRecord(store, elem, group, 0, next, kSourceCompound, kKindFrameCompound,
                          layout.option, CompoundOf(frame, layout), frame.NodeI, frame.NodeJ, 0, 0,
                          frame.Angle);
      frame.idTrelkElem = numbers.next_elem;
      frame.idTrelkElemGroup = group;
      ++numbers.next_elem;
      ++k;
    }
  }
}

// ---- Areas ----

constexpr int kSourceCrossSection = 3;
constexpr int kKindWallCompound = 3;
constexpr int kKindGeneralWallCompound = 4;
constexpr int kKindSlabSection = 8;
constexpr int kSteel = host_code::kMaterialSteel;
constexpr int kConcrete = host_code::kMaterialConcrete;
constexpr int kWall = 1;

using AreaSection = VaskPropAreaSectObj;

// One group of area elements, in the fixed order after the frame groups.
struct AreaGroup {
  const char* name;
  int kind;
  int component_source;
  int component_kind;
  int AreaSection::*component;
  bool (*selects)(const VaskAreaObj& area, const AreaSection& section);
};

int MatTypeOf(const AreaSection& section) {
  return section.PropMatObj == nullptr ? 0 : section.PropMatObj->MatType;
}
bool ThinWall(const VaskAreaObj& a, const AreaSection& s, int mat) {
  return s.ShellType == 1 && a.Orientation == kWall && MatTypeOf(s) == mat;
}
bool ThinSlab(const VaskAreaObj& a, const AreaSection& s, int mat) {
  return s.ShellType == 1 && a.Orientation != kWall && MatTypeOf(s) == mat;
}

// A layered shell is always a wall or general wall, whatever its orientation; a floor and
// a ramp are treated alike.
const std::array<AreaGroup, 6> kAreaGroups = {{
    {"ElemConcEWall", 6, kSourceCompound, kKindWallCompound, &AreaSection::idTrelkCompoundWall,
     [](const VaskAreaObj& a, const AreaSection& s) { return ThinWall(a, s, kConcrete); }},
    {"ElemConcWall", 6, kSourceCompound, kKindWallCompound, &AreaSection::idTrelkCompoundWall,
     [](const VaskAreaObj&, const AreaSection& s) { return s.ShellType == 6 && s.LayerTrelkType == 1; }},
    {"ElemConcGWall", 11, kSourceCompound, kKindGeneralWallCompound,
     &AreaSection::idTrelkCompoundGWall,
     [](const VaskAreaObj&, const AreaSection& s) {
       return s.ShellType == 6 && (s.LayerTrelkType == 2 || s.LayerTrelkType == 3);
     }},
    {"ElemSteelWall", 6, kSourceCompound, kKindWallCompound, &AreaSection::idTrelkCompoundWall,
     [](const VaskAreaObj& a, const AreaSection& s) { return ThinWall(a, s, kSteel); }},
    {"ElemSteelSlab", 12, kSourceCrossSection, kKindSlabSection, &AreaSection::idTrelkXSectSlabEla,
     [](const VaskAreaObj& a, const AreaSection& s) { return ThinSlab(a, s, kSteel); }},
    {"ElemConcSlabRamp", 12, kSourceCrossSection, kKindSlabSection,
     &AreaSection::idTrelkXSectSlabEla,
     [](const VaskAreaObj& a, const AreaSection& s) { return ThinSlab(a, s, kConcrete); }},
}};

// The section of an area that makes elements: a shell section.
const AreaSection* ShellSectionOf(const VaskAreaObj& area) {
  const AreaSection* section = area.PropAreaSectObj;
  return section != nullptr && section->PropType == 1 ? section : nullptr;
}

bool LayeredWall(const AreaSection& s) {
  return s.ShellType == 6 && s.LayerTrelkType >= 1 && s.LayerTrelkType <= 3;
}

// An embedded beam runs along an edge of a wall: the bottom edge (corners 1 and 2) and
// the top edge (corners 3 and 4). The left-to-right group takes corners 1 and 3 with the
// edge's second node first; the right-to-left group takes corners 2 and 4.
struct EmbedEdge {
  int corner;
  int node1;
  int node2;
};
constexpr std::array<EmbedEdge, 2> kLeftToRight = {{{1, 2, 1}, {3, 4, 3}}};
constexpr std::array<EmbedEdge, 2> kRightToLeft = {{{2, 1, 2}, {4, 3, 4}}};

void FillAreaElements(const VaskModelObj& model, TrelkStore& store, ElementNumbers& numbers) {
  MembersOfGroups<kAreaGroups.size()> members;
  std::int32_t left_to_right = 0;
  std::int32_t right_to_left = 0;
  const auto count_edges = [&](const VaskAreaObj& area) {
    for (int k = 1; k <= 4; ++k) {
      if (!area.IsEmbed(k)) continue;
      if (k == 1 || k == 3) {
        ++left_to_right;
      } else {
        ++right_to_left;
      }
    }
  };
  for (int a = 1; a <= model.AreaNum(); ++a) {
    const VaskAreaObj& area = *model.AreaObj(a);
    const AreaSection* section = ShellSectionOf(area);
    if (section == nullptr) continue;
    for (std::size_t g = 0; g < kAreaGroups.size(); ++g) {
      if (kAreaGroups[g].selects(area, *section)) members[g].push_back(a);
    }
    const bool thin_wall = section->ShellType == 1 && section->PropMatObj != nullptr &&
                           area.Orientation == kWall;
    if (thin_wall || LayeredWall(*section)) count_edges(area);
  }

  for (std::size_t g = 0; g < kAreaGroups.size(); ++g) {
    const auto n = static_cast<std::int32_t>(members[g].size());
    if (n == 0) continue;
    const AreaGroup& layout = kAreaGroups[g];
    const std::int32_t group = OpenGroup(store, numbers, layout.name, layout.kind, n);
    std::int32_t k = 1;
    for (const int a : members[g]) {
      VaskAreaObj& area = *model.AreaObj(a);
      const AreaSection* section = ShellSectionOf(area);
      const std::int32_t elem = store.AddTrelkElem();
      const std::int32_t next = k == n ? 0 : numbers.next_elem + 1;
      // The nodes go crosswise: the target walks the corners 1, 2, 4, 3.
      FillTrelkElemRecord(store, elem, group, 0, next, layout.component_source,
                          layout.component_kind, 1, section->*layout.component, area.idNodes(1),
                          area.idNodes(2), area.idNodes(4), area.idNodes(3), 0.0);
      area.idTrelkElem = numbers.next_elem;
      area.idTrelkElemGroup = group;
      ++numbers.next_elem;
      ++k;
    }
  }

  // Embedded beams. The counts come from the corner flags; an area counted there whose
  // embedded section is missing makes no element, and its group keeps the count.
  const auto embed_group = [&](const char* name, std::int32_t n,
                               const std::array<EmbedEdge, 2>& edges) {
    if (n == 0) return;
    const std::int32_t group = OpenGroup(store, numbers, name, 2, n);
    std::int32_t k = 1;
    for (int a = 1; a <= model.AreaNum(); ++a) {
      const VaskAreaObj& area = *model.AreaObj(a);
      const AreaSection* section = ShellSectionOf(area);
      if (section == nullptr || area.EmbedFrameObj == nullptr) continue;
      const bool thin_wall = section->ShellType == 1 && area.Orientation == kWall;
      if (!thin_wall && !LayeredWall(*section)) continue;
      for (const EmbedEdge& edge : edges) {
        if (!area.IsEmbed(edge.corner)) continue;
        const std::int32_t elem = store.AddTrelkElem();
        const std::int32_t next = k == n ? 0 : numbers.next_elem + 1;
        // The embedded section has no local axis angle of its own.
        FillTrelkElemRecord(store, elem, group, 0, next, kSourceCompound, kKindFrameCompound, 1,
                            area.EmbedFrameObj->idTrelkCompoundEmbededBeam,
                            area.idNodes(edge.node1), area.idNodes(edge.node2), 0, 0, 0.0);
        ++numbers.next_elem;
        ++k;
      }
    }
  };
  embed_group("ElemEmbedBeamLR", left_to_right, kLeftToRight);
  embed_group("ElemEmbedBeamRL", right_to_left, kRightToLeft);
}

}  // namespace

void FillTrelkElemGroupRecord(TrelkStore& store, std::int32_t group, const std::string& name,
                              int kind, int subKind, std::int32_t firstElem,
                              std::int32_t lastElem) {
  RecordRef rec = store.ElemGroups.Record(group);
  rec.SetText(elem_group_rec::Name, name);
  rec.SetInt(elem_group_rec::GroupKind, kind);
  rec.SetInt(elem_group_rec::GroupSubKind, subKind);
  rec.SetInt(elem_group_rec::FirstElem, firstElem);
  rec.SetInt(elem_group_rec::LastElem, lastElem);
  rec.SetReal(elem_group_rec::Factor, 1.0);
}

void FillTrelkElemRecord(TrelkStore& store, std::int32_t elem, std::int32_t group,
                         std::int32_t prevElem, std::int32_t nextElem, int componentSource,
                         int componentKind, int option, std::int32_t component,
                         std::int32_t node1, std::int32_t node2, std::int32_t node3,
                         std::int32_t node4, double angle) {
  RecordRef rec = store.Elems.Record(elem);
  rec.SetInt(elem_rec::GroupNumber, group);
  rec.SetInt(elem_rec::PrevElem, prevElem);
  rec.SetInt(elem_rec::Node1, node1);
  rec.SetInt(elem_rec::Node2, node2);
  rec.SetInt(elem_rec::Node3, node3);
  rec.SetInt(elem_rec::Node4, node4);
  rec.SetInt(elem_rec::NextElem, nextElem);
  rec.SetInt(elem_rec::ElemKind, kElemKind);
  rec.SetInt(elem_rec::ComponentSource, componentSource);
  rec.SetInt(elem_rec::ComponentKind, componentKind);
  rec.SetInt(elem_rec::Option1, option);
  rec.SetInt(elem_rec::Option2, option);
  rec.SetInt(elem_rec::Component, component);
  rec.SetReal(elem_rec::Angle1, angle);
  rec.SetReal(elem_rec::Angle2, angle);
}

void FillTrelkElements(const VaskModelObj& model, TrelkStore& store) {
  store.ElemGroups.SetCount(0);
  store.Elems.SetCount(0);
  ElementNumbers numbers;
  FillFrameElements(model, store, numbers);
  FillAreaElements(model, store, numbers);
}

}  // namespace vtt
