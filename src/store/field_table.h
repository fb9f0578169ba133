// Field tables of record layouts: one constexpr array of FieldDef for each record kind, in
// offset order. The fill steps write through the FieldDef constants of a layout namespace
// and the structure reader names the bytes it reads through the table, so both sides use
// one description of each record. Bytes that no entry covers are reserved and hold 0.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "store/record.h"

namespace vtt::field_table {

// Joins several lists of fields into one table, sorted by offset.
template <std::size_t... Ns>
constexpr auto Join(const std::array<FieldDef, Ns>&... parts) {
  std::array<FieldDef, (Ns + ... + 0)> out{};
  std::size_t n = 0;
  ((([&] {
     for (const FieldDef& f : parts) out[n++] = f;
   })()),
   ...);
  // Insertion sort: a constexpr sort that keeps fields of equal offset in their order.
  for (std::size_t i = 1; i < out.size(); ++i) {
    const FieldDef f = out[i];
    std::size_t j = i;
    while (j > 0 && out[j - 1].offset > f.offset) {
      out[j] = out[j - 1];
      --j;
    }
    out[j] = f;
  }
  return out;
}

// The N fields that a per-entry layout function gives for the entries 1 to N.
template <std::size_t N, typename Make>
constexpr std::array<FieldDef, N> Series(Make make) {
  std::array<FieldDef, N> out{};
  for (std::size_t k = 0; k < N; ++k) out[k] = make(static_cast<int>(k + 1));
  return out;
}

// A table of explicitly listed fields.
template <typename... F>
constexpr std::array<FieldDef, sizeof...(F)> List(const F&... fields) {
  return {fields...};
}

// True when the fields lie in offset order inside `size` bytes without overlapping.
template <std::size_t N>
constexpr bool FitsWithoutOverlap(const std::array<FieldDef, N>& fields, std::uint32_t size) {
  std::uint32_t end = 0;
  for (const FieldDef& f : fields) {
    if (f.offset < end || f.offset + f.width > size || f.width == 0) return false;
    end = f.offset + f.width;
  }
  return true;
}

}  // namespace vtt::field_table
