#include "elements/fill_trelk_element.h"

#include <array>

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

void FillFrameElements(const VaskModelObj& model, TrelkStore& store, ElementNumbers& numbers) {
  std::array<std::int32_t, kFrameGroups.size()> counts{};
  for (int f = 1; f <= model.FrameNum(); ++f) {
    const VaskFrameObj& frame = *model.FrameObj(f);
    for (std::size_t g = 0; g < kFrameGroups.size(); ++g) {
      if (InGroup(frame, kFrameGroups[g])) ++counts[g];
    }
  }
  for (std::size_t g = 0; g < kFrameGroups.size(); ++g) {
    const std::int32_t n = counts[g];
    if (n == 0) continue;
    const FrameGroup& spec = kFrameGroups[g];
    const std::int32_t group = OpenGroup(store, numbers, spec.name, spec.kind, n);
    std::int32_t k = 1;
    for (int f = 1; f <= model.FrameNum(); ++f) {
      VaskFrameObj& frame = *model.FrameObj(f);
      if (!InGroup(frame, spec)) continue;
      const std::int32_t elem = store.AddTrelkElem();
      const std::int32_t next = k == n ? 0 : numbers.next_elem + 1;
      FillTrelkElemRecord(store, elem, group, 0, next, kSourceCompound, kKindFrameCompound,
                          spec.option, CompoundOf(frame, spec), frame.NodeI, frame.NodeJ, 0, 0,
                          frame.Angle);
      frame.idTrelkElem = numbers.next_elem;
      frame.idTrelkElemGroup = group;
      ++numbers.next_elem;
      ++k;
    }
  }
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
}

}  // namespace vtt
