// Layout of an earthquake record file in Trelk's records folder: a 56-byte header, then
// PointCount pairs of f32 time and f32 value. Offsets are file offsets.
#pragma once

#include <cstdint>

#include "store/field_table.h"
#include "store/record.h"

namespace vtt {

namespace record_file_rec {
inline constexpr std::uint32_t kHeaderSize = 56;
inline constexpr FieldDef Title = TextField("Title", 0, 40);
inline constexpr FieldDef Version = I16Field("Version", 40);
inline constexpr FieldDef PointCount = I16Field("PointCount", 42);
inline constexpr FieldDef PeakValue = F32Field("PeakValue", 44);
inline constexpr FieldDef PeakTime = F32Field("PeakTime", 48);
inline constexpr FieldDef Duration = F32Field("Duration", 52);

// Every record file says version 1.
inline constexpr std::int16_t kVersion = 1;
// One point after the header: f32 time, then f32 value.
inline constexpr std::uint32_t kPairSize = 8;
// PointCount is an i16 and counts the leading (0, 0) pair too.
inline constexpr std::int32_t kMaxSourcePoints = 32767 - 1;

// The fields of the header.
inline constexpr auto kFields =
    field_table::List(Title, Version, PointCount, PeakValue, PeakTime, Duration);
static_assert(field_table::FitsWithoutOverlap(kFields, kHeaderSize));
}  // namespace record_file_rec

}  // namespace vtt
