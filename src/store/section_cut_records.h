// Layouts of the base section cut (TrelkSectionCutRec, 78 bytes), a member of a cut
// (TrelkCutMemberRec, 10 bytes) and the group of cuts (TrelkCutGroupRec, 56 bytes).
// Offsets are file offsets.
#pragma once

#include "store/field_table.h"
#include "store/record.h"

namespace vtt {

namespace section_cut_rec {
inline constexpr std::uint32_t kSize = 78;
inline constexpr FieldDef Name = TextField("Name", 0, 40);
inline constexpr FieldDef FirstMember = I32Field("FirstMember", 40);
inline constexpr FieldDef LastMember = I32Field("LastMember", 44);
inline constexpr FieldDef Flag = U8Field("Flag", 52);
inline constexpr FieldDef Value1 = F32Field("Value1", 54);
inline constexpr FieldDef Value2 = F32Field("Value2", 58);
inline constexpr FieldDef Value3 = F32Field("Value3", 62);
inline constexpr auto kFields =
    field_table::List(Name, FirstMember, LastMember, Flag, Value1, Value2, Value3);
static_assert(field_table::FitsWithoutOverlap(kFields, kSize));
}  // namespace section_cut_rec

namespace cut_member_rec {
inline constexpr std::uint32_t kSize = 10;
// For a frame, 0 when the cut passes at end I and 1 at end J.
inline constexpr FieldDef End = I16Field("End", 0);
inline constexpr FieldDef Elem = I32Field("Elem", 2);
inline constexpr FieldDef Next = I32Field("Next", 6);
inline constexpr auto kFields = field_table::List(End, Elem, Next);
static_assert(field_table::FitsWithoutOverlap(kFields, kSize));
}  // namespace cut_member_rec

namespace cut_group_rec {
inline constexpr std::uint32_t kSize = 56;
inline constexpr FieldDef Name = TextField("Name", 0, 40);
inline constexpr FieldDef Kind = I16Field("Kind", 40);
inline constexpr FieldDef CutCount = I16Field("CutCount", 42);
inline constexpr auto kFields = field_table::List(Name, Kind, CutCount);
static_assert(field_table::FitsWithoutOverlap(kFields, kSize));
}  // namespace cut_group_rec

}  // namespace vtt
