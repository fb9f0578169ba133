// Layouts of the element group (TrelkElemGroupRec, 76 bytes) and the element
// (TrelkElemRec, 92 bytes). Offsets are file offsets.
#pragma once

#include "store/field_table.h"
#include "store/record.h"

namespace vtt {

namespace elem_group_rec {
inline constexpr std::uint32_t kSize = 76;
inline constexpr FieldDef Name = TextField("Name", 0, 40);
inline constexpr FieldDef GroupKind = I16Field("GroupKind", 40);
inline constexpr FieldDef GroupSubKind = I16Field("GroupSubKind", 42);
inline constexpr FieldDef FirstElem = I32Field("FirstElem", 44);
inline constexpr FieldDef LastElem = I32Field("LastElem", 48);
inline constexpr FieldDef Factor = F32Field("Factor", 60);
inline constexpr auto kFields =
    field_table::List(Name, GroupKind, GroupSubKind, FirstElem, LastElem, Factor);
static_assert(field_table::FitsWithoutOverlap(kFields, kSize));
}  // namespace elem_group_rec

namespace elem_rec {
inline constexpr std::uint32_t kSize = 92;
inline constexpr FieldDef GroupNumber = I16Field("GroupNumber", 0);
inline constexpr FieldDef PrevElem = I32Field("PrevElem", 2);
inline constexpr FieldDef Node1 = I32Field("Node1", 6);
inline constexpr FieldDef Node2 = I32Field("Node2", 10);
inline constexpr FieldDef Node3 = I32Field("Node3", 14);
inline constexpr FieldDef Node4 = I32Field("Node4", 18);
inline constexpr FieldDef NextElem = I32Field("NextElem", 22);
inline constexpr FieldDef ElemKind = U8Field("ElemKind", 26);
inline constexpr FieldDef ComponentSource = U8Field("ComponentSource", 28);
inline constexpr FieldDef ComponentKind = U8Field("ComponentKind", 29);
inline constexpr FieldDef Option1 = U8Field("Option1", 30);
inline constexpr FieldDef Option2 = U8Field("Option2", 31);
inline constexpr FieldDef Component = I16Field("Component", 42);
inline constexpr FieldDef Angle1 = F32Field("Angle1", 64);
inline constexpr FieldDef Angle2 = F32Field("Angle2", 68);
inline constexpr auto kFields =
    field_table::List(GroupNumber, PrevElem, Node1, Node2, Node3, Node4, NextElem, ElemKind,
                      ComponentSource, ComponentKind, Option1, Option2, Component, Angle1, Angle2);
static_assert(field_table::FitsWithoutOverlap(kFields, kSize));
}  // namespace elem_rec

}  // namespace vtt
