// Layout of a structure frame (TrelkFrameRec, 28 bytes): a named set of nodes and
// elements, as the host's groups give them. Offsets are file offsets.
#pragma once

#include "store/field_table.h"
#include "store/record.h"

namespace vtt::frame_rec {
inline constexpr std::uint32_t kSize = 28;
inline constexpr FieldDef Name = TextField("Name", 0, 20);
inline constexpr auto kFields = field_table::List(Name);
static_assert(field_table::FitsWithoutOverlap(kFields, kSize));
}  // namespace vtt::frame_rec
