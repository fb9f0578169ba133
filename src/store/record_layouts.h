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

// The display name of each field of a table: a name that occurs more than once in the
// table (the entries of a part or slot table) is followed by its entry number, "PartKind(2)".
std::string FieldDisplayName(std::span<const FieldDef> fields, std::size_t index);

}  // namespace vtt
