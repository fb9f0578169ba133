// Layout of the drift definition (TrelkDriftRec, 46 bytes). Offsets are file offsets.
#pragma once

#include "store/field_table.h"
#include "store/record.h"

namespace vtt::drift_rec {
inline constexpr std::uint32_t kSize = 46;
inline constexpr FieldDef Name = TextField("Name", 0, 20);
inline constexpr FieldDef Flag = U8Field("Flag", 20);
// 0 for drift along the first horizontal axis, 1 along the second.
inline constexpr FieldDef Axis = U8Field("Axis", 21);
inline constexpr FieldDef TopNode = I32Field("TopNode", 22);
inline constexpr FieldDef BottomNode = I32Field("BottomNode", 26);
inline constexpr auto kFields = field_table::List(Name, Flag, Axis, TopNode, BottomNode);
static_assert(field_table::FitsWithoutOverlap(kFields, kSize));
}  // namespace vtt::drift_rec
