// BinaryWriter: the one place that turns values into the bytes of a Trelk file.
//
// Every Trelk file is a packed little-endian stream with nothing between fields. The
// writer either appends to a growing buffer (a file being built) or writes at an offset
// inside a fixed block (a record held in the store). A text[n] field is n bytes in the
// Windows-1252 code page, space-padded when assigned; a field never assigned is zero bytes,
// which is what ZeroFill and a fresh record give.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

namespace vtt {

class BinaryWriter {
 public:
  // Appends to the end of `buffer`.
  explicit BinaryWriter(std::vector<std::uint8_t>& buffer);
  // Writes inside `block`, starting at `position`; writing past its end is a logic error.
  BinaryWriter(std::span<std::uint8_t> block, std::size_t position);

  BinaryWriter& I16(std::int16_t value);
  BinaryWriter& I32(std::int32_t value);
  BinaryWriter& F32(float value);
  BinaryWriter& F64(double value);
  BinaryWriter& U8(std::uint8_t value);
  // `value` is UTF-8; it is stored in Windows-1252, cut or space-padded to `width` bytes.
  BinaryWriter& Text(std::size_t width, std::string_view value);
  BinaryWriter& ZeroFill(std::size_t count);
  BinaryWriter& Bytes(std::span<const std::uint8_t> bytes);

  // Tagged values carry a type word ahead of the value: 2 for an i16, 5 for an f64,
  // 0 for an empty value with nothing behind it.
  BinaryWriter& TaggedI16(std::int16_t value);
  BinaryWriter& TaggedF64(double value);
  BinaryWriter& TaggedEmpty();

  // Bytes written so far.
  std::size_t Position() const { return position_; }

 private:
  std::uint8_t* Reserve(std::size_t count);

  std::vector<std::uint8_t>* buffer_ = nullptr;
  std::span<std::uint8_t> block_;
  std::size_t position_ = 0;
};

// Readers of the same encoding, for records read back in the store and for tests.
std::int16_t ReadI16(std::span<const std::uint8_t> bytes, std::size_t offset);
std::int32_t ReadI32(std::span<const std::uint8_t> bytes, std::size_t offset);
float ReadF32(std::span<const std::uint8_t> bytes, std::size_t offset);
double ReadF64(std::span<const std::uint8_t> bytes, std::size_t offset);
std::uint8_t ReadU8(std::span<const std::uint8_t> bytes, std::size_t offset);

}  // namespace vtt
