// Layouts of the structure node (TrelkNodeRec, 84 bytes) and the rigid diaphragm, a
// slaved group of nodes (TrelkDiaphragmRec, 80 bytes). Offsets are file offsets.
#pragma once

#include "store/field_table.h"
#include "store/record.h"

namespace vtt {

namespace node_rec {
inline constexpr std::uint32_t kSize = 84;
inline constexpr FieldDef PrevNode = I32Field("PrevNode", 0);
inline constexpr FieldDef NextNode = I32Field("NextNode", 4);
inline constexpr FieldDef X = F64Field("X", 8);
inline constexpr FieldDef Y = F64Field("Y", 16);
inline constexpr FieldDef Z = F64Field("Z", 24);
inline constexpr FieldDef Reserved1 = I16Field("Reserved1", 32);
inline constexpr FieldDef SlavedUX = I16Field("SlavedUX", 34);
inline constexpr FieldDef SlavedUY = I16Field("SlavedUY", 36);
inline constexpr FieldDef SlavedUZ = I16Field("SlavedUZ", 38);
inline constexpr FieldDef SlavedRX = I16Field("SlavedRX", 40);
inline constexpr FieldDef SlavedRY = I16Field("SlavedRY", 42);
inline constexpr FieldDef SlavedRZ = I16Field("SlavedRZ", 44);
inline constexpr FieldDef SupportKind = U8Field("SupportKind", 59);
// Six bytes each, U1, U2, U3, R1, R2, R3: Restrained(1) is at 61.
inline constexpr std::uint32_t kRestrained = 61;
inline constexpr std::uint32_t kFirstNodeMark = 73;
inline constexpr FieldDef InUse = U8Field("InUse", 79);

constexpr FieldDef Restrained(int j) {
  constexpr std::string_view names[] = {"Restrained1", "Restrained2", "Restrained3",
                                        "Restrained4", "Restrained5", "Restrained6"};
  return U8Field(names[j - 1], kRestrained + static_cast<std::uint32_t>(j - 1));
}
constexpr FieldDef FirstNodeMark(int j) {
  constexpr std::string_view names[] = {"FirstNodeMark1", "FirstNodeMark2", "FirstNodeMark3",
                                        "FirstNodeMark4", "FirstNodeMark5", "FirstNodeMark6"};
  return U8Field(names[j - 1], kFirstNodeMark + static_cast<std::uint32_t>(j - 1));
}

// Every field of the record, in offset order.
inline constexpr auto kFields = field_table::Join(
    field_table::List(PrevNode, NextNode, X, Y, Z, Reserved1, SlavedUX, SlavedUY, SlavedUZ,
                      SlavedRX, SlavedRY, SlavedRZ, SupportKind, InUse),
    field_table::Series<6>(Restrained), field_table::Series<6>(FirstNodeMark));
static_assert(field_table::FitsWithoutOverlap(kFields, kSize));
}  // namespace node_rec

namespace diaphragm_rec {
inline constexpr std::uint32_t kSize = 80;
inline constexpr FieldDef Name = TextField("Name", 0, 40);
inline constexpr auto kFields = field_table::List(Name);
static_assert(field_table::FitsWithoutOverlap(kFields, kSize));
}  // namespace diaphragm_rec

}  // namespace vtt
