// The record layouts by record name: the size of each record kind of the structure files
// and its field table. The structure reader names the bytes it reads through these tables;
// they are the same tables that the fill steps' field constants are checked against, so a
// reader and a writer cannot disagree on where a field stands.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>

#include "store/record.h"

namespace vtt {

struct RecordLayout {
  std::string_view record;  // TrelkNodeRec and the like
  std::uint32_t size;
  std::span<const FieldDef> fields;  // in offset order; empty: no field is named
};

// Every record kind that has a field table.
std::span<const RecordLayout> RecordLayouts();

// The layout of a record kind; nullptr for a kind without a field table.
const RecordLayout* FindRecordLayout(std::string_view record);

// ---- The sections of the structure files ----
//
// Each file of a structure is a run of sections in a fixed order. The writer lays a file out
// by walking its section list below, and the reader walks the same list to read it back, so
// the two cannot come to disagree on the order.
enum class FileSection : std::uint8_t {
  // TRKDA
  AHeader,
  LoadCases,
  LoadCaseMatrix,
  LoadCaseFactors,
  LoadCaseList,
  LoadCaseValues,
  // TRKDULS
  UlsHeader,
  // TRKDPO, TRKDPOA, TRKDPOF
  PoHeader,
  PoRecord,
  PoaHeader,
  PoaRecords,
  PofHeader,
  PofRecord,
  // TRKDL
  LHeader,
  GravityCases,
  PushoverCases,
  PushoverDriftFlags,
  DynamicCases,
  OtherCaseLists,
  // TRKDS
  SHeader,
  Nodes,
  Diaphragms,
  NodalMass,
  ElemGroups,
  Elems,
  StructureFrames,
  NodalLoads,
  FrameLoads,
  SelfWeight,
  ZeroWords,
  SectionCuts,
  CutMembers,
  CutGroups,
  Drifts,
  LimitStates,
  ComponentLibrary,
  Tail,
};

struct SectionDescriptor {
  FileSection id;
  std::string_view name;  // as the reader names the section: "nodes", "frame loads", ...
};

struct StructureFileLayout {
  std::string_view suffix;  // "A", "ULS", "PO", "POA", "POF", "L" or "S"
  std::span<const SectionDescriptor> sections;  // in file order
};

// The seven files in the order in which they are written: A, ULS, PO, POA, POF, L, S.
std::span<const StructureFileLayout> StructureFileLayouts();

// The sections of one file; nullptr for a suffix that is not one of the seven.
const StructureFileLayout* FindStructureFileLayout(std::string_view suffix);

// The display name of each field of a table: a name that occurs more than once in the
// table (the entries of a part or slot table) is followed by its entry number, "PartKind(2)".
std::string FieldDisplayName(std::span<const FieldDef> fields, std::size_t index);

}  // namespace vtt
