// TrelkStore: the whole target structure of one transfer, held in memory.
//
// It is a catalogue of everything the Trelk structure files can hold: the identification
// block, the unit block, the header words, and every list of records with its Count and
// Capacity. Fill steps add records through the AddTrelk... operations and write their
// fields through the record number; the structure file writer serialises the store and
// nothing else reads it. Lists are one-based; record 0 exists only where a list's bounds
// start at 0.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "store/record.h"
#include "store/units.h"

namespace vtt {

class HostModel;

// The component library, in file order. Between some groups the file holds lines of i16
// zeros (see ComponentLibraryGap).
enum class Component : int {
  Inel01, Inel02, Inel03, Inel04, Inel05, Inel06, FemaBeam, Inel07, Inel08, Inel09, Inel10,
  FemaColumn, Inel11, Inel12, Inel13,
  Elastic01, Elastic02, EndZone, Release, Elastic03, Elastic04, Elastic05,
  MatInel, MatOther01, MatElasticFiber, MatElasticShear, MatElasticSlab, MatOther02,
  XecOther01, XecBeam, XecColumn, XecSlab, XecOther02, XecWallInel, XecWallElastic,
  XecOther03, XecOther04,
  CompElement01, CompElement02, CompElement03, CompElement04,
  CpdFrame, CpdWall, CpdGWall, Compound01, Compound02,
};
inline constexpr int kComponentListCount = 46;

// What a component list's Add compares with MaxComponentCount.
enum class MaxCountRule : std::uint8_t { ByCount, ByCapacity, Untouched };

struct ComponentListInfo {
  Component id;
  std::string_view record;        // record name, for messages and dumps
  std::string_view what;          // plural noun for messages
  std::uint32_t record_size;
  std::uint32_t sub_record_size;  // 0: no sub-record
  std::int32_t flag_offset;       // owner byte that must equal 1 for the sub-record; -1 none
  MaxCountRule max_rule;
  std::int32_t initial_capacity;
  std::int32_t step;
  Growth growth;
  std::int32_t zeros_after;       // i16 zero words that follow this list in the file
};

const std::array<ComponentListInfo, kComponentListCount>& ComponentLibraryLayout();
const ComponentListInfo& ComponentInfo(Component id);

// The default end zone that every structure carries as end zone record 1.
namespace end_zone {
inline constexpr std::uint32_t kSize = 109;
inline constexpr FieldDef Name = TextField("Name", 0, 40);
inline constexpr FieldDef Kind = I16Field("Kind", 40);
inline constexpr FieldDef Mode = U8Field("Mode", 42);
inline constexpr FieldDef Length1 = F32Field("Length1", 61);
inline constexpr FieldDef Length2 = F32Field("Length2", 65);
inline constexpr FieldDef Offset1 = F32Field("Offset1", 69);
inline constexpr FieldDef Offset2 = F32Field("Offset2", 73);
inline constexpr FieldDef Factor1 = F32Field("Factor1", 77);
inline constexpr FieldDef Factor2 = F32Field("Factor2", 81);
inline constexpr FieldDef Factor3 = F32Field("Factor3", 85);
inline constexpr FieldDef Factor4 = F32Field("Factor4", 89);
}  // namespace end_zone

// Record sizes of the lists outside the component library.
namespace record_size {
inline constexpr std::uint32_t kLeadList = 112;
inline constexpr std::uint32_t kNode = 84;
inline constexpr std::uint32_t kDiaphragm = 80;
inline constexpr std::uint32_t kNodalMassPattern = 64;
inline constexpr std::uint32_t kNodalMass = 24;
inline constexpr std::uint32_t kElemGroup = 76;
inline constexpr std::uint32_t kElem = 92;
inline constexpr std::uint32_t kFrame = 28;
inline constexpr std::uint32_t kLoadNodePattern = 72;
inline constexpr std::uint32_t kLoadNodeValue = 32;
inline constexpr std::uint32_t kLoadFramePattern = 72;
inline constexpr std::uint32_t kLoadFrameGroupValue = 16;
inline constexpr std::uint32_t kLoadFrameValue = 30;
inline constexpr std::uint32_t kSelfWeightPattern = 72;
inline constexpr std::uint32_t kSectionCut = 78;
inline constexpr std::uint32_t kSectionCutRef = 34;
inline constexpr std::uint32_t kCutMember = 10;
inline constexpr std::uint32_t kCutGroup = 56;
inline constexpr std::uint32_t kDrift = 46;
inline constexpr std::uint32_t kDeflection = 38;
inline constexpr std::uint32_t kTailListA = 40;
inline constexpr std::uint32_t kTailListB = 8;
inline constexpr std::uint32_t kLoadCase = 194;
inline constexpr std::uint32_t kLoadCaseMatrix = 96;
inline constexpr std::uint32_t kLoadCaseFactor = 6;
inline constexpr std::uint32_t kLoadCaseList = 7;
inline constexpr std::uint32_t kLoadCaseValue = 24;
inline constexpr std::uint32_t kGravityCase = 1024;
inline constexpr std::uint32_t kPushoverCase = 1042;
inline constexpr std::uint32_t kDynamicCase = 348;
}  // namespace record_size

// Ten folders and names of structures written in this process, most recent first. The
// list lives only in memory: the format keeps no file for it.
struct RecentStructures {
  static constexpr int kMax = 10;
  std::int16_t count = 0;
  std::array<std::string, kMax> folders;  // text[200]
  std::array<std::string, kMax> names;    // text[12]
};

class TrelkStore {
 public:
  TrelkStore();

  // ---- Identification block (set by the driver before InitTrelkStore) ----
  std::string VersionText;       // text[8]
  std::int16_t VersionNumber = 0;
  std::string FileIdText;        // text[4]
  std::uint8_t ToolCode = 0;
  std::string ProductTag;
  std::string ProductName;
  std::string StructureNote;
  std::string StructureName;     // text[12], held cut and padded to 12 characters
  std::string StructureTitle;    // text[60]
  std::string StructuresRoot;
  std::string StructureFolder;   // set by WriteTrelkStructure

  // Cuts or pads `name` to the 12 characters of the StructureName field.
  void SetStructureName(std::string_view name);

  // ---- Unit and display block ----
  UnitBlock Units;
  // Reads the host's present units and fills the unit block.
  void SetTrelkUnits(HostModel& host);
  void SetTrelkUnitsFromCode(int host_code) { Units = UnitsForHostCode(host_code); }

  // ---- Header words ----
  std::int16_t StoreFlag1 = 0;
  std::int16_t StoreFlag2 = 0;
  std::int16_t HeaderWord1 = 0;
  std::int16_t HeaderWord2 = 0;
  std::int16_t HeaderWord3 = 0;
  std::int32_t HeaderLong1 = 0;
  std::int32_t HeaderLong2 = 0;
  std::int32_t HeaderLong3 = 0;
  std::int16_t LeadListCount = 0;
  std::int16_t LeadListFlag = 0;
  std::int16_t WriteOkFlag = 0;

  // Brings every list, matrix and header word to its initial state and builds the default
  // end zone. Nothing may be added to a list before it has run.
  void InitTrelkStore();
  bool Initialised() const { return initialised_; }

  // ---- Structure lists ----
  RecordList Nodes;
  std::int32_t LastNodeAdded = 0;
  RecordList Diaphragms;
  RecordList NodalMassPatterns;  // its count and capacity are tagged values in the file
  ByteMatrix NodalMass;          // mass pattern, node
  RecordList ElemGroups;
  std::int16_t ElemGroupLast = 0;
  RecordList Elems;
  std::int32_t ElemLast = 0;
  RecordList Frames;
  ByteMatrix FrameNodeFlag;      // frame, node
  ByteMatrix FrameElemFlag;      // frame, element from 0
  RecordList LoadNodePatterns;
  ByteMatrix LoadNodeValue;      // nodal load pattern, node
  RecordList LoadFramePatterns;
  RecordList LoadFrameValues;
  std::int16_t LoadFrameValueSlotCount = 0;
  std::int16_t LoadFrameValueSlotCapacity = 1;
  ByteMatrix LoadFrameGroupIndex;  // frame load pattern, element group (i16)
  ByteMatrix LoadFrameGroupValue;  // slot, frame load pattern, element group
  ByteMatrix LoadFrameElemIndex;   // frame load pattern, element (i16)
  RecordList SelfWeightPatterns;
  ByteMatrix SelfWeightElemFlag;   // self weight pattern, element
  RecordList SectionCuts;          // with its reference record as the sub-record
  std::int16_t SectionCutLast = 0;
  RecordList CutMembers;
  RecordList CutGroups;
  ByteMatrix CutGroupFlag;         // cut group from 0, section cut
  RecordList Drifts;
  RecordList Deflections;
  std::array<std::int16_t, 10> LimitStateCount{};
  std::array<std::int16_t, 10> LimitStateCapacity{};

  // ---- Component library ----
  std::int16_t MaxComponentCount = 1;
  RecordList& Components(Component id) { return components_[static_cast<std::size_t>(id)]; }
  const RecordList& Components(Component id) const {
    return components_[static_cast<std::size_t>(id)];
  }
  // Adds a record to a component list and keeps MaxComponentCount; returns its number.
  std::int32_t AddComponent(Component id);

  // ---- Analysis lists (A file) ----
  RecordList LoadCases;            // with its detail record as the sub-record
  std::int16_t LoadCaseMatrixRows = 0;
  std::int16_t LoadCaseMatrixColumns = 0;
  ByteMatrix LoadCaseMatrix;       // row, column
  std::int16_t LoadCaseFactorSlots = 0;
  ByteMatrix LoadCaseFactors;      // load case, slot
  RecordList LoadCaseList;
  ByteMatrix LoadCaseValues;       // entry, load case

  // ---- Case lists (L file): slot 1 gravity, 2 pushover, 3 dynamic ----
  RecordList GravityCases;
  RecordList PushoverCases;
  ByteMatrix PushoverDriftFlag;    // pushover case, drift
  RecordList DynamicCases;
  // Counts and capacities of the twenty case-list slots as the L file holds them.
  std::array<std::int16_t, 20> CaseListCount() const;
  std::array<std::int16_t, 20> CaseListCapacity() const;

  // ---- AddTrelk... operations: each returns the new record's number ----
  std::int32_t AddTrelkNode();
  std::int32_t AddTrelkDiaphragm();
  std::int32_t AddTrelkNodalMassPattern();
  std::int32_t AddTrelkElemGroup();
  std::int32_t AddTrelkElem();
  std::int32_t AddTrelkFrame();
  std::int32_t AddTrelkLoadNodePattern();
  std::int32_t AddTrelkLoadFramePattern();
  std::int32_t AddTrelkLoadFrameValue();
  std::int32_t AddTrelkSelfWeightPattern();
  // The load steps know their pattern counts before they fill a pattern: each sets the
  // count outright with room for ten more, and makes the matrices tied to the patterns
  // anew, zero, for the new capacity. The frame load patterns also take the bound of the
  // subgroup slot of their value matrix.
  void AllocateLoadNodePatterns(std::int32_t count);
  void AllocateLoadFramePatterns(std::int32_t count, std::int32_t slot_capacity);
  void AllocateSelfWeightPatterns(std::int32_t count);
  std::int32_t AddTrelkSectionCut();
  // Sets the section cut count to `count` with room for ten more, and sizes the cut
  // group flags to the new capacity.
  void AllocateSectionCuts(std::int32_t count);
  std::int32_t AddTrelkCutMember();
  std::int32_t AddTrelkCutGroup();
  std::int32_t AddTrelkDrift();
  std::int32_t AddTrelkLoadCase();
  std::int32_t AddGravityCase();
  std::int32_t AddPushoverCase();
  std::int32_t AddDynamicCase();
  std::int32_t AddTrelkRelease() { return AddComponent(Component::Release); }

  // ---- Recent structures ----
  RecentStructures Recent;
  void UpdateRecentStructures();

 private:
  void ReshapeNodeMatrices();
  void ReshapeElementMatrices();
  void ReshapeFrameLoadMatrices();

  std::vector<RecordList> components_;
  bool initialised_ = false;
};

// The one rule for component names: Prefix plus the trimmed label, or Prefix plus
// Number + 1 when that would pass 40 characters.
std::string NameWithSuffix(std::string_view prefix, std::string_view label, std::int64_t number);

// Removes spaces (only spaces) at both ends.
std::string_view TrimSpaces(std::string_view text);

}  // namespace vtt
