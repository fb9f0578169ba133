// Layout of a structure frame (TrelkFrameRec, 28 bytes): a named set of nodes and
// elements, as the host's groups give them. Offsets are file offsets.
#pragma once

#include "store/record.h"

namespace vtt::frame_rec {
inline constexpr std::uint32_t kSize = 28;
inline constexpr FieldDef Name = TextField("Name", 0, 20);
}  // namespace vtt::frame_rec
