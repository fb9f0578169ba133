#include "store/binary_writer.h"

#include <bit>
#include <cstring>
#include <limits>
#include <stdexcept>

#include "store/text_encoding.h"

namespace vtt {
namespace {

static_assert(std::numeric_limits<float>::is_iec559 && std::numeric_limits<double>::is_iec559,
              "Trelk files hold IEEE 754 floats");

template <typename U>
void EncodeLittleEndian(std::uint8_t* dst, U value) {
  for (std::size_t i = 0; i < sizeof(U); ++i) {
    dst[i] = static_cast<std::uint8_t>(value >> (8 * i));
  }
}

template <typename U>
U DecodeLittleEndian(std::span<const std::uint8_t> bytes, std::size_t offset) {
  if (offset + sizeof(U) > bytes.size()) {
    throw std::out_of_range("read past the end of a record");
  }
  U value = 0;
  for (std::size_t i = 0; i < sizeof(U); ++i) {
    value = static_cast<U>(value | (static_cast<U>(bytes[offset + i]) << (8 * i)));
  }
  return value;
}

}  // namespace

BinaryWriter::BinaryWriter(std::vector<std::uint8_t>& buffer) : buffer_(&buffer) {}

BinaryWriter::BinaryWriter(std::span<std::uint8_t> block, std::size_t position)
    : block_(block), position_(position) {}

std::uint8_t* BinaryWriter::Reserve(std::size_t count) {
  std::uint8_t* dst = nullptr;
  if (buffer_ != nullptr) {
    // Appends at the buffer's end, so the owner may empty the buffer between writes.
    const std::size_t at = buffer_->size();
    buffer_->resize(at + count);
    dst = buffer_->data() + at;
  } else {
    if (position_ + count > block_.size()) {
      throw std::logic_error("field written past the end of its record");
    }
    dst = block_.data() + position_;
  }
  position_ += count;
  return dst;
}

BinaryWriter& BinaryWriter::I16(std::int16_t value) {
  EncodeLittleEndian(Reserve(2), static_cast<std::uint16_t>(value));
  return *this;
}

BinaryWriter& BinaryWriter::I32(std::int32_t value) {
  EncodeLittleEndian(Reserve(4), static_cast<std::uint32_t>(value));
  return *this;
}

BinaryWriter& BinaryWriter::F32(float value) {
  EncodeLittleEndian(Reserve(4), std::bit_cast<std::uint32_t>(value));
  return *this;
}

BinaryWriter& BinaryWriter::F64(double value) {
  EncodeLittleEndian(Reserve(8), std::bit_cast<std::uint64_t>(value));
  return *this;
}

BinaryWriter& BinaryWriter::U8(std::uint8_t value) {
  *Reserve(1) = value;
  return *this;
}

BinaryWriter& BinaryWriter::Text(std::size_t width, std::string_view value) {
  const std::string encoded = ToWindows1252(value);
  std::uint8_t* dst = Reserve(width);
  const std::size_t n = encoded.size() < width ? encoded.size() : width;
  std::memcpy(dst, encoded.data(), n);
  std::memset(dst + n, ' ', width - n);
  return *this;
}

BinaryWriter& BinaryWriter::ZeroFill(std::size_t count) {
  if (count > 0) std::memset(Reserve(count), 0, count);
  return *this;
}

BinaryWriter& BinaryWriter::Bytes(std::span<const std::uint8_t> bytes) {
  if (!bytes.empty()) std::memcpy(Reserve(bytes.size()), bytes.data(), bytes.size());
  return *this;
}

BinaryWriter& BinaryWriter::TaggedI16(std::int16_t value) { return I16(2).I16(value); }

BinaryWriter& BinaryWriter::TaggedF64(double value) { return I16(5).F64(value); }

BinaryWriter& BinaryWriter::TaggedEmpty() { return I16(0); }

std::int16_t ReadI16(std::span<const std::uint8_t> bytes, std::size_t offset) {
  return static_cast<std::int16_t>(DecodeLittleEndian<std::uint16_t>(bytes, offset));
}

std::int32_t ReadI32(std::span<const std::uint8_t> bytes, std::size_t offset) {
  return static_cast<std::int32_t>(DecodeLittleEndian<std::uint32_t>(bytes, offset));
}

float ReadF32(std::span<const std::uint8_t> bytes, std::size_t offset) {
  return std::bit_cast<float>(DecodeLittleEndian<std::uint32_t>(bytes, offset));
}

double ReadF64(std::span<const std::uint8_t> bytes, std::size_t offset) {
  return std::bit_cast<double>(DecodeLittleEndian<std::uint64_t>(bytes, offset));
}

std::uint8_t ReadU8(std::span<const std::uint8_t> bytes, std::size_t offset) {
  return DecodeLittleEndian<std::uint8_t>(bytes, offset);
}

}  // namespace vtt
