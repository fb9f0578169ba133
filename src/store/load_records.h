// Layouts of the load patterns and their values: the pattern record that nodal, frame
// and self-weight patterns share (72 bytes), the nodal load value (32 bytes), the frame
// load item (30 bytes), the value of a frame load subgroup (16 bytes), and the i16 and
// byte elements of the frame load and self-weight matrices. Offsets are file offsets.
#pragma once

#include "store/field_table.h"
#include "store/record.h"

namespace vtt {

// TrelkLoadNodePatternRec, TrelkLoadFramePatternRec and TrelkSelfWeightPatternRec.
namespace load_pattern_rec {
inline constexpr std::uint32_t kSize = 72;
inline constexpr FieldDef Name = TextField("Name", 0, 40);
inline constexpr FieldDef PatternCode = I16Field("PatternCode", 42);

// Pattern codes: a "LoadNode-", "LoadFrame-" or "SelfWeight-" pattern, and the two
// acceleration patterns.
inline constexpr int kCodeLoadNode = -3;
inline constexpr int kCodeAccelUX = 1;
inline constexpr int kCodeAccelUY = 2;
inline constexpr int kCodeLoadFrame = 1;
inline constexpr int kCodeSelfWeight = -3;

inline constexpr auto kFields = field_table::List(Name, PatternCode);
static_assert(field_table::FitsWithoutOverlap(kFields, kSize));
}  // namespace load_pattern_rec

// TrelkLoadNodeValueRec: one element of the matrix nodal load pattern by node. F3 is
// positive upward; Used is 1.0 where the node is loaded.
namespace load_node_value_rec {
inline constexpr std::uint32_t kSize = 32;
inline constexpr FieldDef F1 = F32Field("F1", 0);
inline constexpr FieldDef F2 = F32Field("F2", 4);
inline constexpr FieldDef F3 = F32Field("F3", 8);
inline constexpr FieldDef M1 = F32Field("M1", 12);
inline constexpr FieldDef M2 = F32Field("M2", 16);
inline constexpr FieldDef M3 = F32Field("M3", 20);
inline constexpr FieldDef Used = F32Field("Used", 24);
inline constexpr auto kFields = field_table::List(F1, F2, F3, M1, M2, M3, Used);
static_assert(field_table::FitsWithoutOverlap(kFields, kSize));
}  // namespace load_node_value_rec

// TrelkLoadFrameValueRec: one load item of a subgroup. The items of a subgroup form a
// chain through NextItem, 0 on the last.
namespace load_frame_value_rec {
inline constexpr std::uint32_t kSize = 30;
inline constexpr FieldDef Kind = U8Field("Kind", 0);
inline constexpr FieldDef NextItem = I16Field("NextItem", 2);
inline constexpr FieldDef Value1 = F32Field("Value1", 6);
inline constexpr FieldDef Position1 = F32Field("Position1", 10);
inline constexpr FieldDef Value2 = F32Field("Value2", 14);
inline constexpr FieldDef Position2 = F32Field("Position2", 18);

inline constexpr int kKindDistributed = 1;
inline constexpr int kKindPoint = 2;

inline constexpr auto kFields =
    field_table::List(Kind, NextItem, Value1, Position1, Value2, Position2);
static_assert(field_table::FitsWithoutOverlap(kFields, kSize));
}  // namespace load_frame_value_rec

// TrelkLoadFrameGroupValueRec: one element of the matrix subgroup by frame load pattern
// by element group.
namespace load_frame_group_value_rec {
inline constexpr std::uint32_t kSize = 16;
inline constexpr FieldDef ElemCount = I32Field("ElemCount", 0);
inline constexpr FieldDef Reserved1 = I32Field("Reserved1", 4);
inline constexpr FieldDef ItemCount = I16Field("ItemCount", 8);
inline constexpr FieldDef FirstItem = I16Field("FirstItem", 10);
inline constexpr auto kFields = field_table::List(ElemCount, Reserved1, ItemCount, FirstItem);
static_assert(field_table::FitsWithoutOverlap(kFields, kSize));
}  // namespace load_frame_group_value_rec

// TrelkLoadFrameGroupIndex (frame load pattern by element group: the number of subgroups)
// and TrelkLoadFrameElemIndex (frame load pattern by element: the element's subgroup).
namespace load_frame_index {
inline constexpr std::uint32_t kSize = 2;
inline constexpr FieldDef Value = I16Field("Value", 0);
inline constexpr auto kFields = field_table::List(Value);
static_assert(field_table::FitsWithoutOverlap(kFields, kSize));
}  // namespace load_frame_index

// TrelkSelfWeightElemFlag: self-weight pattern by element, 1 where the element takes its
// weight.
namespace self_weight_flag {
inline constexpr std::uint32_t kSize = 1;
inline constexpr FieldDef Flag = U8Field("Flag", 0);
inline constexpr auto kFields = field_table::List(Flag);
static_assert(field_table::FitsWithoutOverlap(kFields, kSize));
}  // namespace self_weight_flag

}  // namespace vtt
