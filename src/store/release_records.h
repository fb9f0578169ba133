// Layout of the end-release component of the component library, TrelkReleaseRec (89
// bytes). Offsets are file offsets. The record has no gap: every byte belongs to a named
// field, and the reserved spans stay 0.
//
// Name text[40] | ComponentNumber i16 | ComponentKind u8 | Reserved1 (2) |
// Released u8[6] | Reserved2 (2) | ComponentNumberCopy i16 | Reserved3 (2) |
// ReleaseStiffness f32[6] | Reserved4 (8)
//
// Released and ReleaseStiffness run over the target's directions in the order A, V2, V3,
// M2, M3, T.
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

#include "store/field_table.h"
#include "store/record.h"

namespace vtt {

namespace release_rec {
inline constexpr std::uint32_t kSize = 89;

// The target's member directions, in the order of the Released and ReleaseStiffness
// arrays.
enum class Direction : std::uint8_t { A = 0, V2, V3, M2, M3, T };
inline constexpr int kDirectionCount = 6;

// A span of bytes that nothing writes; it reaches the file as zeros.
struct ReservedSpan {
  std::string_view name;
  std::uint32_t offset;
  std::uint32_t width;
};

inline constexpr FieldDef Name = TextField("Name", 0, 40);
inline constexpr FieldDef ComponentNumber = I16Field("ComponentNumber", 40);
inline constexpr FieldDef ComponentKind = U8Field("ComponentKind", 42);
inline constexpr ReservedSpan Reserved1{"Reserved1", 43, 2};
inline constexpr std::uint32_t kReleased = 45;
inline constexpr ReservedSpan Reserved2{"Reserved2", 51, 2};
inline constexpr FieldDef ComponentNumberCopy = I16Field("ComponentNumberCopy", 53);
inline constexpr ReservedSpan Reserved3{"Reserved3", 55, 2};
inline constexpr std::uint32_t kReleaseStiffness = 57;
inline constexpr ReservedSpan Reserved4{"Reserved4", 81, 8};

constexpr FieldDef Released(Direction d) {
  constexpr std::array<std::string_view, kDirectionCount> names = {
      "Released(A)", "Released(V2)", "Released(V3)",
      "Released(M2)", "Released(M3)", "Released(T)"};
  const auto k = static_cast<std::uint32_t>(d);
  return U8Field(names[k], kReleased + k);
}
constexpr FieldDef ReleaseStiffness(Direction d) {
  constexpr std::array<std::string_view, kDirectionCount> names = {
      "ReleaseStiffness(A)",  "ReleaseStiffness(V2)", "ReleaseStiffness(V3)",
      "ReleaseStiffness(M2)", "ReleaseStiffness(M3)", "ReleaseStiffness(T)"};
  const auto k = static_cast<std::uint32_t>(d);
  return F32Field(names[k], kReleaseStiffness + 4 * k);
}

// The fields follow one another without a gap up to the record's end.
static_assert(ComponentNumber.offset == Name.offset + Name.width);
static_assert(ComponentKind.offset == ComponentNumber.offset + ComponentNumber.width);
static_assert(Reserved1.offset == ComponentKind.offset + ComponentKind.width);
static_assert(kReleased == Reserved1.offset + Reserved1.width);
static_assert(Reserved2.offset == Released(Direction::T).offset + 1);
static_assert(ComponentNumberCopy.offset == Reserved2.offset + Reserved2.width);
static_assert(Reserved3.offset == ComponentNumberCopy.offset + ComponentNumberCopy.width);
static_assert(kReleaseStiffness == Reserved3.offset + Reserved3.width);
static_assert(Reserved4.offset == ReleaseStiffness(Direction::T).offset + 4);
static_assert(kSize == Reserved4.offset + Reserved4.width);

// Every field of the record, in offset order; the reserved spans hold 0.
inline constexpr auto kFields = field_table::Join(
    field_table::List(Name, ComponentNumber, ComponentKind, ComponentNumberCopy),
    field_table::Series<kDirectionCount>([](int k) { return Released(static_cast<Direction>(k - 1)); }),
    field_table::Series<kDirectionCount>(
        [](int k) { return ReleaseStiffness(static_cast<Direction>(k - 1)); }));
static_assert(field_table::FitsWithoutOverlap(kFields, kSize));
}  // namespace release_rec

}  // namespace vtt
