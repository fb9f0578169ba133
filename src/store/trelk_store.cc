#include "store/trelk_store.h"

#include <algorithm>
#include <limits>
#include <stdexcept>

#include <fmt/format.h>

#include "source/host_model.h"
#include "store/text_encoding.h"
#include "transfer/failure.h"

namespace vtt {
namespace {

using C = Component;
using M = MaxCountRule;
constexpr Growth kByCount = Growth::CountPlusStep;

// The component library as the S file holds it: record sizes, sub-records and the byte
// of the owner that must equal 1 for its sub-record to follow, which lists measure
// MaxComponentCount by capacity, and the lines of i16 zeros between the groups.
const std::array<ComponentListInfo, kComponentListCount> kLayout = {{
    {C::Inel01, "TrelkCompInel01Rec", "inelastic components of kind 1", 341, 50, 54, M::ByCount, 1, 10, kByCount, 0},
    {C::Inel02, "TrelkCompInel02Rec", "inelastic components of kind 2", 393, 50, 54, M::ByCount, 1, 10, kByCount, 0},
    {C::Inel03, "TrelkCompInel03Rec", "inelastic components of kind 3", 393, 50, 54, M::ByCount, 1, 10, kByCount, 0},
    {C::Inel04, "TrelkCompInel04Rec", "inelastic components of kind 4", 350, 50, 55, M::ByCount, 1, 10, kByCount, 0},
    {C::Inel05, "TrelkCompInel05Rec", "inelastic components of kind 5", 393, 50, 54, M::ByCount, 1, 10, kByCount, 0},
    {C::Inel06, "TrelkCompInel06Rec", "inelastic components of kind 6", 449, 60, 54, M::ByCount, 1, 10, kByCount, 0},
    {C::FemaBeam, "TrelkIneFemaBeamRec", "FEMA beam components", 425, 50, 54, M::ByCount, 1, 10, kByCount, 0},
    {C::Inel07, "TrelkCompInel07Rec", "inelastic components of kind 7", 250, 0, -1, M::ByCount, 1, 10, kByCount, 0},
    {C::Inel08, "TrelkCompInel08Rec", "inelastic components of kind 8", 445, 50, 54, M::ByCount, 1, 10, kByCount, 0},
    // Its 20 tagged values give it no fixed size; this program never fills it.
    {C::Inel09, "TrelkCompInel09Rec", "inelastic components of kind 9", 181, 0, -1, M::ByCount, 1, 10, kByCount, 0},
    {C::Inel10, "TrelkCompInel10Rec", "inelastic components of kind 10", 67, 0, -1, M::ByCount, 1, 10, kByCount, 0},
    {C::FemaColumn, "TrelkIneFemaColumnRec", "FEMA column components", 473, 60, 54, M::ByCount, 1, 10, kByCount, 0},
    // No array at all: its count stays 0.
    {C::Inel11, "TrelkCompInel11Rec", "inelastic components of kind 11", 267, 0, -1, M::ByCount, 0, 10, kByCount, 0},
    {C::Inel12, "TrelkCompInel12Rec", "inelastic components of kind 12", 225, 50, 49, M::ByCount, 1, 10, kByCount, 0},
    {C::Inel13, "TrelkCompInel13Rec", "inelastic components of kind 13", 437, 50, 57, M::ByCount, 1, 10, kByCount, 18},
    {C::Elastic01, "TrelkCompElastic01Rec", "elastic components of kind 1", 143, 0, -1, M::ByCount, 1, 10, kByCount, 0},
    {C::Elastic02, "TrelkCompElastic02Rec", "elastic components of kind 2", 244, 0, -1, M::ByCount, 1, 10, kByCount, 0},
    {C::EndZone, "TrelkEndZoneRec", "end zones", 109, 0, -1, M::ByCount, 1, 10, kByCount, 0},
    // Grows by five on its capacity, not by ten on its count.
    {C::Release, "TrelkReleaseRec", "release components", 89, 0, -1, M::ByCapacity, 1, 5, Growth::CapacityPlusStep, 0},
    {C::Elastic03, "TrelkCompElastic03Rec", "elastic components of kind 3", 195, 48, 48, M::ByCount, 1, 10, kByCount, 0},
    {C::Elastic04, "TrelkCompElastic04Rec", "elastic components of kind 4", 101, 0, -1, M::ByCount, 1, 10, kByCount, 0},
    {C::Elastic05, "TrelkCompElastic05Rec", "elastic components of kind 5", 255, 0, -1, M::ByCount, 1, 10, kByCount, 9},
    {C::MatInel, "TrelkMatInelRec", "inelastic materials", 329, 50, 54, M::ByCount, 1, 10, kByCount, 0},
    {C::MatOther01, "TrelkMatOther01Rec", "materials of kind 1", 252, 0, -1, M::ByCount, 1, 10, kByCount, 0},
    {C::MatElasticFiber, "TrelkMatElasticFiberRec", "elastic fibre materials", 126, 0, -1, M::ByCount, 1, 10, kByCount, 0},
    // 134 bytes plus three tagged values; as this program fills them, 152 bytes.
    {C::MatElasticShear, "TrelkMatElasticShearRec", "elastic shear materials", 152, 56, 48, M::ByCapacity, 1, 10, kByCount, 0},
    {C::MatElasticSlab, "TrelkMatElasticSlabRec", "elastic slab materials", 174, 0, -1, M::ByCapacity, 1, 10, kByCount, 0},
    // Starts with capacity 0.
    {C::MatOther02, "TrelkMatOther02Rec", "materials of kind 2", 232, 50, 49, M::ByCount, 0, 10, kByCount, 8},
    {C::XecOther01, "TrelkXecOther01Rec", "cross sections of kind 1", 225, 0, -1, M::ByCount, 1, 10, kByCount, 0},
    {C::XecBeam, "TrelkXecBeamRec", "beam sections", 424, 0, -1, M::ByCapacity, 1, 10, kByCount, 0},
    {C::XecColumn, "TrelkXecColumnRec", "column sections", 687, 0, -1, M::ByCapacity, 1, 10, kByCount, 0},
    {C::XecSlab, "TrelkXecSlabRec", "slab sections", 274, 0, -1, M::ByCount, 1, 10, kByCount, 0},
    {C::XecOther02, "TrelkXecOther02Rec", "cross sections of kind 2", 720, 0, -1, M::ByCount, 1, 10, kByCount, 0},
    {C::XecWallInel, "TrelkXecWallInelRec", "inelastic wall sections", 455, 86, 92, M::ByCount, 1, 10, kByCount, 0},
    {C::XecWallElastic, "TrelkXecWallElasticRec", "elastic wall sections", 439, 0, -1, M::ByCount, 1, 10, kByCount, 0},
    {C::XecOther03, "TrelkXecOther03Rec", "cross sections of kind 3", 653, 0, -1, M::ByCount, 1, 10, kByCount, 0},
    {C::XecOther04, "TrelkXecOther04Rec", "cross sections of kind 4", 1587, 0, -1, M::ByCount, 1, 10, kByCount, 13},
    {C::CompElement01, "TrelkCompElement01Rec", "element components of kind 1", 179, 48, 48, M::ByCount, 1, 10, kByCount, 0},
    {C::CompElement02, "TrelkCompElement02Rec", "element components of kind 2", 238, 48, 47, M::ByCount, 1, 10, kByCount, 0},
    {C::CompElement03, "TrelkCompElement03Rec", "element components of kind 3", 122, 118, 47, M::ByCount, 1, 10, kByCount, 0},
    {C::CompElement04, "TrelkCompElement04Rec", "element components of kind 4", 138, 122, 47, M::ByCount, 1, 10, kByCount, 10},
    {C::CpdFrame, "TrelkCpdFrameRec", "compound frame components", 378, 45, 48, M::ByCount, 1, 10, kByCount, 0},
    {C::CpdWall, "TrelkCpdWallRec", "compound wall components", 116, 0, -1, M::ByCount, 1, 10, kByCount, 0},
    // The general-wall list leaves MaxComponentCount alone.
    {C::CpdGWall, "TrelkCpdGWallRec", "compound general wall components", 108, 0, -1, M::Untouched, 1, 10, kByCount, 0},
    {C::Compound01, "TrelkCompCompound01Rec", "compound components of kind 1", 64, 0, -1, M::ByCount, 1, 10, kByCount, 0},
    {C::Compound02, "TrelkCompCompound02Rec", "compound components of kind 2", 70, 0, -1, M::ByCount, 1, 10, kByCount, 9},
}};

RecordList::Shape ListShape(std::string_view what, std::uint32_t size, CountWidth width,
                            std::int32_t count, std::int32_t capacity,
                            std::uint32_t sub_size = 0) {
  RecordList::Shape shape;
  shape.what = what;
  shape.record_size = size;
  shape.width = width;
  shape.initial_count = count;
  shape.initial_capacity = capacity;
  shape.sub_record_size = sub_size;
  return shape;
}

constexpr CountWidth k16 = CountWidth::I16;
constexpr CountWidth k32 = CountWidth::I32;

}  // namespace

const std::array<ComponentListInfo, kComponentListCount>& ComponentLibraryLayout() {
  return kLayout;
}

const ComponentListInfo& ComponentInfo(Component id) {
  return kLayout[static_cast<std::size_t>(id)];
}

TrelkStore::TrelkStore()
    : Nodes(ListShape("nodes", record_size::kNode, k32, 1, 200)),
      Diaphragms(ListShape("rigid diaphragms", record_size::kDiaphragm, k16, 0, 1)),
      NodalMassPatterns(
          ListShape("nodal mass patterns", record_size::kNodalMassPattern, k16, 0, 1)),
      NodalMass(record_size::kNodalMass, {{1, 1}, {1, 200}}),
      ElemGroups(ListShape("element groups", record_size::kElemGroup, k16, 0, 1)),
      Elems(ListShape("elements", record_size::kElem, k32, 0, 1)),
      Frames(ListShape("structure frames (groups)", record_size::kFrame, k16, 0, 0)),
      FrameNodeFlag(1, {{1, 0}, {1, 0}}),
      FrameElemFlag(1, {{1, 0}, {0, 0}}),
      LoadNodePatterns(
          ListShape("nodal load patterns", record_size::kLoadNodePattern, k16, 0, 1)),
      LoadNodeValue(record_size::kLoadNodeValue, {{1, 1}, {1, 200}}),
      LoadFramePatterns(
          ListShape("frame load patterns", record_size::kLoadFramePattern, k16, 0, 1)),
      LoadFrameValues(ListShape("frame load values", record_size::kLoadFrameValue, k16, 0, 1)),
      LoadFrameGroupIndex(2, {{1, 1}, {1, 1}}),
      LoadFrameGroupValue(record_size::kLoadFrameGroupValue, {{1, 1}, {1, 1}, {1, 1}}),
      LoadFrameElemIndex(2, {{1, 1}, {1, 1}}),
      SelfWeightPatterns(
          ListShape("self weight patterns", record_size::kSelfWeightPattern, k16, 0, 1)),
      SelfWeightElemFlag(1, {{1, 1}, {1, 1}}),
      SectionCuts(ListShape("section cuts", record_size::kSectionCut, k16, 0, 1,
                            record_size::kSectionCutRef)),
      CutMembers(ListShape("section cut members", record_size::kCutMember, k32, 0, 1)),
      CutGroups(ListShape("section cut groups", record_size::kCutGroup, k16, 0, 1)),
      CutGroupFlag(1, {{0, 1}, {1, 1}}),
      Drifts(ListShape("drifts", record_size::kDrift, k16, 0, 1)),
      Deflections(ListShape("deflections", record_size::kDeflection, k16, 0, 1)),
      LoadCases(ListShape("load cases", record_size::kLoadCase, k16, 0, 0)),
      LoadCaseMatrix(record_size::kLoadCaseMatrix, {{0, 0}, {0, 0}}),
      LoadCaseFactors(record_size::kLoadCaseFactor, {{0, 0}, {0, 0}}),
      LoadCaseList(ListShape("load case entries", record_size::kLoadCaseList, k16, 0, 0)),
      LoadCaseValues(record_size::kLoadCaseValue, {{0, 0}, {0, 0}}),
      GravityCases(ListShape("gravity load cases", record_size::kGravityCase, k16, 0, 0)),
      PushoverCases(ListShape("pushover load cases", record_size::kPushoverCase, k16, 0, 0)),
      PushoverDriftFlag(1, {{1, 0}, {1, 0}}),
      DynamicCases(ListShape("dynamic load cases", record_size::kDynamicCase, k16, 0, 0)) {
  components_.reserve(kLayout.size());
  for (const ComponentListInfo& info : kLayout) {
    RecordList::Shape shape = ListShape(info.what, info.record_size, k16, 0,
                                        info.initial_capacity, info.sub_record_size);
    shape.step = info.step;
    shape.growth = info.growth;
    components_.emplace_back(shape);
  }
}

void TrelkStore::SetStructureName(std::string_view name) {
  std::string encoded = ToWindows1252(name);
  encoded.resize(12, ' ');
  StructureName = FromWindows1252(encoded);
}

void TrelkStore::SetTrelkUnits(HostModel& host) { SetTrelkUnitsFromCode(host.GetPresentUnits()); }

void TrelkStore::InitTrelkStore() {
  StoreFlag1 = -1;
  StoreFlag2 = -1;
  HeaderWord1 = 0;
  HeaderWord2 = 1;
  HeaderWord3 = 0;
  HeaderLong1 = 0;
  HeaderLong2 = 0;
  HeaderLong3 = 0;
  LeadListCount = 0;
  LeadListFlag = 0;

  Nodes.Reset();
  LastNodeAdded = 0;
  Diaphragms.Reset();
  NodalMassPatterns.Reset();
  NodalMass.Reshape({{1, 1}, {1, 200}});
  ElemGroups.Reset();
  ElemGroupLast = 0;
  Elems.Reset();
  ElemLast = 0;
  Frames.Reset();
  FrameNodeFlag.Reshape({{1, 0}, {1, 0}});
  FrameElemFlag.Reshape({{1, 0}, {0, 0}});
  LoadNodePatterns.Reset();
  LoadNodeValue.Reshape({{1, 1}, {1, 200}});
  LoadFramePatterns.Reset();
  LoadFrameValues.Reset();
  LoadFrameValueSlotCount = 0;
  LoadFrameValueSlotCapacity = 1;
  LoadFrameGroupIndex.Reshape({{1, 1}, {1, 1}});
  LoadFrameGroupValue.Reshape({{1, 1}, {1, 1}, {1, 1}});
  LoadFrameElemIndex.Reshape({{1, 1}, {1, 1}});
  SelfWeightPatterns.Reset();
  SelfWeightElemFlag.Reshape({{1, 1}, {1, 1}});
  SectionCuts.Reset();
  SectionCutLast = 0;
  CutMembers.Reset();
  CutGroups.Reset();
  CutGroupFlag.Reshape({{0, 1}, {1, 1}});
  Drifts.Reset();
  Deflections.Reset();
  LimitStateCount.fill(0);
  LimitStateCapacity.fill(1);

  MaxComponentCount = 1;
  for (RecordList& list : components_) list.Reset();

  LoadCases.Reset();
  LoadCaseMatrixRows = 0;
  LoadCaseMatrixColumns = 0;
  LoadCaseMatrix.Reshape({{0, 0}, {0, 0}});
  LoadCaseFactorSlots = 0;
  LoadCaseFactors.Reshape({{0, 0}, {0, 0}});
  LoadCaseList.Reset();
  LoadCaseValues.Reshape({{0, 0}, {0, 0}});
  GravityCases.Reset();
  PushoverCases.Reset();
  PushoverDriftFlag.Reshape({{1, 0}, {1, 0}});
  DynamicCases.Reset();

  initialised_ = true;

  // The default end zone: record 1 of the end zone list, which frame compounds refer to.
  const std::int32_t zone = AddComponent(Component::EndZone);
  RecordRef rec = Components(Component::EndZone).Record(zone);
  rec.SetText(end_zone::Name, "Default End Zone");
  rec.SetInt(end_zone::Kind, 1);
  rec.SetInt(end_zone::Mode, 3);
  rec.SetReal(end_zone::Length1, 10.0);
  rec.SetReal(end_zone::Length2, 10.0);
  rec.SetReal(end_zone::Offset1, 0.0);
  rec.SetReal(end_zone::Offset2, 0.0);
  rec.SetReal(end_zone::Factor1, 0.5);
  rec.SetReal(end_zone::Factor2, 0.5);
  rec.SetReal(end_zone::Factor3, 0.5);
  rec.SetReal(end_zone::Factor4, 0.5);
}

std::int32_t TrelkStore::AddComponent(Component id) {
  if (!initialised_) throw std::logic_error("a record added before InitTrelkStore");
  const ComponentListInfo& info = ComponentInfo(id);
  RecordList& list = Components(id);
  if (info.initial_capacity == 0 && id == Component::Inel11) {
    throw std::logic_error("the list of inelastic components of kind 11 has no array");
  }
  list.Add();
  std::int32_t measure = 0;
  switch (info.max_rule) {
    case MaxCountRule::ByCount: measure = list.Count(); break;
    case MaxCountRule::ByCapacity: measure = list.Capacity(); break;
    case MaxCountRule::Untouched: return list.Count();
  }
  if (measure > MaxComponentCount) MaxComponentCount = static_cast<std::int16_t>(measure);
  return list.Count();
}

void TrelkStore::ReshapeNodeMatrices() {
  const std::int32_t nodes = Nodes.Capacity();
  NodalMass.Reshape({{1, NodalMassPatterns.Capacity()}, {1, nodes}});
  LoadNodeValue.Reshape({{1, LoadNodePatterns.Capacity()}, {1, nodes}});
  if (Frames.Capacity() > 0) FrameNodeFlag.Reshape({{1, Frames.Capacity()}, {1, nodes}});
}

void TrelkStore::ReshapeElementMatrices() {
  const std::int32_t elems = Elems.Capacity();
  LoadFrameElemIndex.Reshape({{1, LoadFramePatterns.Capacity()}, {1, elems}});
  SelfWeightElemFlag.Reshape({{1, SelfWeightPatterns.Capacity()}, {1, elems}});
  if (Frames.Capacity() > 0) FrameElemFlag.Reshape({{1, Frames.Capacity()}, {0, elems}});
}

void TrelkStore::ReshapeFrameLoadMatrices() {
  const std::int32_t patterns = LoadFramePatterns.Capacity();
  const std::int32_t groups = ElemGroups.Capacity();
  LoadFrameGroupIndex.Reshape({{1, patterns}, {1, groups}});
  LoadFrameGroupValue.Reshape({{1, LoadFrameValueSlotCapacity}, {1, patterns}, {1, groups}});
  LoadFrameElemIndex.Reshape({{1, patterns}, {1, Elems.Capacity()}});
}

std::int32_t TrelkStore::AddTrelkNode() {
  if (!initialised_) throw std::logic_error("a record added before InitTrelkStore");
  LastNodeAdded = Nodes.Count();
  if (Nodes.Add()) ReshapeNodeMatrices();
  return Nodes.Count();
}

std::int32_t TrelkStore::AddTrelkDiaphragm() {
  Diaphragms.Add();
  return Diaphragms.Count();
}

std::int32_t TrelkStore::AddTrelkNodalMassPattern() {
  if (NodalMassPatterns.Add()) {
    NodalMass.Reshape({{1, NodalMassPatterns.Capacity()}, {1, Nodes.Capacity()}});
  }
  return NodalMassPatterns.Count();
}

std::int32_t TrelkStore::AddTrelkElemGroup() {
  if (ElemGroups.Add()) ReshapeFrameLoadMatrices();
  ElemGroupLast = static_cast<std::int16_t>(ElemGroups.Count());
  return ElemGroups.Count();
}

std::int32_t TrelkStore::AddTrelkElem() {
  if (Elems.Add()) ReshapeElementMatrices();
  ElemLast = Elems.Count();
  return Elems.Count();
}

std::int32_t TrelkStore::AddTrelkFrame() {
  const bool first = Frames.Capacity() == 0;
  if (Frames.Add()) {
    const std::vector<ByteMatrix::Bound> node_bounds = {{1, Frames.Capacity()},
                                                        {1, Nodes.Capacity()}};
    const std::vector<ByteMatrix::Bound> elem_bounds = {{1, Frames.Capacity()},
                                                        {0, Elems.Capacity()}};
    // Only the frame bound grows here, which the flag matrices take in place: with one
    // frame per group and ten more rows at each growth, remaking them every time would
    // cost the square of the number of groups.
    if (first) {
      FrameNodeFlag.Reshape(node_bounds);
      FrameElemFlag.Reshape(elem_bounds);
    } else {
      FrameNodeFlag.ReshapeKeeping(node_bounds);
      FrameElemFlag.ReshapeKeeping(elem_bounds);
    }
  }
  return Frames.Count();
}

std::int32_t TrelkStore::AddTrelkLoadNodePattern() {
  if (LoadNodePatterns.Add()) {
    LoadNodeValue.Reshape({{1, LoadNodePatterns.Capacity()}, {1, Nodes.Capacity()}});
  }
  return LoadNodePatterns.Count();
}

std::int32_t TrelkStore::AddTrelkLoadFramePattern() {
  if (LoadFramePatterns.Add()) ReshapeFrameLoadMatrices();
  return LoadFramePatterns.Count();
}

std::int32_t TrelkStore::AddTrelkLoadFrameValue() {
  LoadFrameValues.Add();
  return LoadFrameValues.Count();
}

std::int32_t TrelkStore::AddTrelkSelfWeightPattern() {
  if (SelfWeightPatterns.Add()) {
    SelfWeightElemFlag.Reshape({{1, SelfWeightPatterns.Capacity()}, {1, Elems.Capacity()}});
  }
  return SelfWeightPatterns.Count();
}

void TrelkStore::AllocateLoadNodePatterns(std::int32_t count) {
  LoadNodePatterns.SetCountAndAllocate(count);
  LoadNodeValue.Reshape({{1, LoadNodePatterns.Capacity()}, {1, Nodes.Capacity()}});
}

void TrelkStore::AllocateLoadFramePatterns(std::int32_t count, std::int32_t slot_capacity) {
  // The slot bound is an i16 of the file, like the counts.
  if (slot_capacity < 1 || slot_capacity > std::numeric_limits<std::int16_t>::max()) {
    throw TransferFailure(fmt::format(
        "Overflow: the structure can hold at most {} frame load subgroups in one element "
        "group and load pattern; this model needs {}.",
        std::numeric_limits<std::int16_t>::max() - 1, slot_capacity - 1));
  }
  LoadFramePatterns.SetCountAndAllocate(count);
  LoadFrameValueSlotCapacity = static_cast<std::int16_t>(slot_capacity);
  ReshapeFrameLoadMatrices();
}

void TrelkStore::AllocateSelfWeightPatterns(std::int32_t count) {
  SelfWeightPatterns.SetCountAndAllocate(count);
  SelfWeightElemFlag.Reshape({{1, SelfWeightPatterns.Capacity()}, {1, Elems.Capacity()}});
}

std::int32_t TrelkStore::AddTrelkSectionCut() {
  if (SectionCuts.Add()) {
    CutGroupFlag.Reshape({{0, CutGroups.Capacity()}, {1, SectionCuts.Capacity()}});
  }
  return SectionCuts.Count();
}

void TrelkStore::AllocateSectionCuts(std::int32_t count) {
  SectionCuts.SetCountAndAllocate(count);
  CutGroupFlag.Reshape({{0, CutGroups.Capacity()}, {1, SectionCuts.Capacity()}});
}

std::int32_t TrelkStore::AddTrelkCutMember() {
  CutMembers.Add();
  return CutMembers.Count();
}

std::int32_t TrelkStore::AddTrelkCutGroup() {
  if (CutGroups.Add()) {
    CutGroupFlag.Reshape({{0, CutGroups.Capacity()}, {1, SectionCuts.Capacity()}});
  }
  return CutGroups.Count();
}

std::int32_t TrelkStore::AddTrelkDrift() {
  Drifts.Add();
  return Drifts.Count();
}

std::int32_t TrelkStore::AddTrelkLoadCase() {
  LoadCases.Add();
  return LoadCases.Count();
}

std::int32_t TrelkStore::AddGravityCase() {
  GravityCases.Add();
  return GravityCases.Count();
}

std::int32_t TrelkStore::AddPushoverCase() {
  // The case records are kept on growth; the drift flags are made anew.
  if (PushoverCases.Add() && Drifts.Capacity() >= 1) {
    PushoverDriftFlag.Reshape({{1, PushoverCases.Capacity()}, {1, Drifts.Capacity()}});
  }
  return PushoverCases.Count();
}

std::int32_t TrelkStore::AddDynamicCase() {
  DynamicCases.Add();
  return DynamicCases.Count();
}

std::array<std::int16_t, 20> TrelkStore::CaseListCount() const {
  std::array<std::int16_t, 20> counts{};
  counts[0] = static_cast<std::int16_t>(GravityCases.Count());
  counts[1] = static_cast<std::int16_t>(PushoverCases.Count());
  counts[2] = static_cast<std::int16_t>(DynamicCases.Count());
  return counts;
}

std::array<std::int16_t, 20> TrelkStore::CaseListCapacity() const {
  std::array<std::int16_t, 20> capacities{};
  capacities[0] = static_cast<std::int16_t>(GravityCases.Capacity());
  capacities[1] = static_cast<std::int16_t>(PushoverCases.Capacity());
  capacities[2] = static_cast<std::int16_t>(DynamicCases.Capacity());
  return capacities;
}

void TrelkStore::UpdateRecentStructures() {
  const std::string name = StructureName;
  // Folders are compared without their trailing spaces.
  const auto folder_of = [](const std::string& f) {
    std::string_view v = f;
    while (!v.empty() && v.back() == ' ') v.remove_suffix(1);
    return v;
  };
  if (Recent.count < 1) {
    Recent.count = 1;
    Recent.folders[0] = StructuresRoot;
    Recent.names[0] = name;
    return;
  }
  int found = -1;
  for (int i = 0; i < Recent.count; ++i) {
    if (folder_of(Recent.folders[i]) == folder_of(StructuresRoot) && Recent.names[i] == name) {
      found = i;
      break;
    }
  }
  if (found == 0) return;
  int last = found;
  if (found < 0) {
    Recent.count = static_cast<std::int16_t>(std::min(Recent.count + 1, RecentStructures::kMax));
    last = Recent.count - 1;
  }
  for (int i = last; i > 0; --i) {
    Recent.folders[i] = Recent.folders[i - 1];
    Recent.names[i] = Recent.names[i - 1];
  }
  Recent.folders[0] = StructuresRoot;
  Recent.names[0] = name;
}

std::string_view TrimSpaces(std::string_view text) {
  while (!text.empty() && text.front() == ' ') text.remove_prefix(1);
  while (!text.empty() && text.back() == ' ') text.remove_suffix(1);
  return text;
}

std::string NameWithSuffix(std::string_view prefix, std::string_view label,
                           std::int64_t number) {
  std::string name(prefix);
  name += TrimSpaces(label);
  // Length counts characters as the 40-character text field holds them.
  if (ToWindows1252(name).size() > 40) {
    name = std::string(prefix) + std::to_string(number + 1);
  }
  return name;
}

}  // namespace vtt
