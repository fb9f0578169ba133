#include "store/record.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>
#include <stdexcept>

#include <fmt/format.h>

#include "store/binary_writer.h"
#include "transfer/failure.h"

namespace vtt {
namespace {

constexpr std::int64_t kI16Max = std::numeric_limits<std::int16_t>::max();
constexpr std::int64_t kI32Max = std::numeric_limits<std::int32_t>::max();

}  // namespace

std::span<std::uint8_t> RecordRef::Slot(const FieldDef& field, FieldKind expected) const {
  if (field.kind != expected) {
    throw std::logic_error(fmt::format("field {} used as another kind", field.name));
  }
  if (field.offset + field.width > bytes_.size()) {
    throw std::logic_error(fmt::format("field {} lies past the end of its record", field.name));
  }
  return bytes_.subspan(field.offset, field.width);
}

void RecordRef::SetInt(const FieldDef& field, std::int64_t value) {
  const auto fail = [&] {
    throw TransferFailure(fmt::format(
        "Overflow: the value {} does not fit the field {} of a structure record.", value,
        field.name));
  };
  BinaryWriter writer(bytes_, field.offset);
  switch (field.kind) {
    case FieldKind::I16:
      Slot(field, FieldKind::I16);
      if (value < -kI16Max - 1 || value > kI16Max) fail();
      writer.I16(static_cast<std::int16_t>(value));
      return;
    case FieldKind::I32:
      Slot(field, FieldKind::I32);
      if (value < -kI32Max - 1 || value > kI32Max) fail();
      writer.I32(static_cast<std::int32_t>(value));
      return;
    case FieldKind::U8:
      Slot(field, FieldKind::U8);
      if (value < 0 || value > 255) fail();
      writer.U8(static_cast<std::uint8_t>(value));
      return;
    default:
      throw std::logic_error(fmt::format("field {} is not an integer field", field.name));
  }
}

void RecordRef::SetReal(const FieldDef& field, double value) {
  BinaryWriter writer(bytes_, field.offset);
  if (field.kind == FieldKind::F32) {
    Slot(field, FieldKind::F32);
    if (std::isfinite(value) && std::fabs(value) > std::numeric_limits<float>::max()) {
      throw TransferFailure(fmt::format(
          "Overflow: the value {} does not fit the single-precision field {} of a structure "
          "record.",
          value, field.name));
    }
    writer.F32(static_cast<float>(value));
  } else {
    Slot(field, FieldKind::F64);
    writer.F64(value);
  }
}

void RecordRef::SetText(const FieldDef& field, std::string_view value) {
  Slot(field, FieldKind::Text);
  BinaryWriter(bytes_, field.offset).Text(field.width, value);
}

void RecordRef::SetTaggedI16(const FieldDef& field, std::int16_t value) {
  Slot(field, FieldKind::TaggedI16);
  BinaryWriter(bytes_, field.offset).TaggedI16(value);
}

void RecordRef::SetTaggedF64(const FieldDef& field, double value) {
  Slot(field, FieldKind::TaggedF64);
  BinaryWriter(bytes_, field.offset).TaggedF64(value);
}

std::int64_t RecordRef::GetInt(const FieldDef& field) const {
  switch (field.kind) {
    case FieldKind::I16:
      Slot(field, FieldKind::I16);
      return ReadI16(bytes_, field.offset);
    case FieldKind::I32:
      Slot(field, FieldKind::I32);
      return ReadI32(bytes_, field.offset);
    case FieldKind::U8:
      Slot(field, FieldKind::U8);
      return ReadU8(bytes_, field.offset);
    case FieldKind::TaggedI16:
      Slot(field, FieldKind::TaggedI16);
      return ReadI16(bytes_, field.offset + 2);
    default:
      throw std::logic_error(fmt::format("field {} is not an integer field", field.name));
  }
}

double RecordRef::GetReal(const FieldDef& field) const {
  switch (field.kind) {
    case FieldKind::F32:
      Slot(field, FieldKind::F32);
      return ReadF32(bytes_, field.offset);
    case FieldKind::F64:
      Slot(field, FieldKind::F64);
      return ReadF64(bytes_, field.offset);
    case FieldKind::TaggedF64:
      Slot(field, FieldKind::TaggedF64);
      return ReadF64(bytes_, field.offset + 2);
    default:
      throw std::logic_error(fmt::format("field {} is not a real field", field.name));
  }
}

std::string RecordRef::GetText(const FieldDef& field) const {
  const auto slot = Slot(field, FieldKind::Text);
  return std::string(reinterpret_cast<const char*>(slot.data()), slot.size());
}

std::uint8_t RecordRef::ByteAt(std::uint32_t offset) const { return ReadU8(bytes_, offset); }

RecordList::RecordList(const Shape& shape) : shape_(shape) { Reset(); }

void RecordList::Reset() {
  count_ = shape_.initial_count;
  capacity_ = shape_.initial_capacity;
  records_.clear();
  sub_records_.clear();
  Allocate();
}

void RecordList::Allocate() {
  const auto slots = static_cast<std::size_t>(capacity_ < 0 ? 0 : capacity_) + 1;
  records_.resize(slots * shape_.record_size, 0);
  sub_records_.resize(slots * shape_.sub_record_size, 0);
}

void RecordList::SetCountAndAllocate(std::int32_t count) {
  const std::int64_t limit = shape_.width == CountWidth::I16 ? kI16Max : kI32Max;
  const std::int64_t capacity = static_cast<std::int64_t>(count) + shape_.step;
  if (count < 0) throw std::logic_error(fmt::format("negative count of {}", shape_.what));
  // The capacity is a count of the same width in the file.
  if (capacity > limit) {
    throw TransferFailure(fmt::format(
        "Overflow: the structure can hold at most {} {}; this model needs more.",
        limit - shape_.step, shape_.what));
  }
  count_ = count;
  capacity_ = static_cast<std::int32_t>(capacity);
  records_.clear();
  sub_records_.clear();
  Allocate();
}

bool RecordList::Add() {
  const std::int64_t limit = shape_.width == CountWidth::I16 ? kI16Max : kI32Max;
  const std::int64_t count = static_cast<std::int64_t>(count_) + 1;
  if (count > limit) {
    throw TransferFailure(fmt::format(
        "Overflow: the structure can hold at most {} {}; this model needs more.", limit,
        shape_.what));
  }
  count_ = static_cast<std::int32_t>(count);
  if (count_ <= capacity_) return false;
  const std::int64_t capacity = shape_.growth == Growth::CountPlusStep
                                    ? count + shape_.step
                                    : static_cast<std::int64_t>(capacity_) + shape_.step;
  // The capacity is a count of the same width in the file.
  if (capacity > limit) {
    throw TransferFailure(fmt::format(
        "Overflow: the structure can hold at most {} {}; this model needs more.",
        limit - shape_.step, shape_.what));
  }
  capacity_ = static_cast<std::int32_t>(capacity);
  Allocate();
  return true;
}

void RecordList::SetCount(std::int32_t count) {
  if (count < 0 || count > capacity_) {
    throw std::logic_error(fmt::format("count {} outside the bounds of {}", count, shape_.what));
  }
  count_ = count;
}

void RecordList::CheckNumber(std::int32_t number) const {
  if (number < 0 || number > capacity_) {
    throw std::out_of_range(fmt::format("record {} outside the bounds 0..{} of {}", number,
                                        capacity_, shape_.what));
  }
}

RecordRef RecordList::Record(std::int32_t number) {
  CheckNumber(number);
  return RecordRef(std::span<std::uint8_t>(records_).subspan(
      static_cast<std::size_t>(number) * shape_.record_size, shape_.record_size));
}

RecordRef RecordList::SubRecord(std::int32_t number) {
  CheckNumber(number);
  return RecordRef(std::span<std::uint8_t>(sub_records_).subspan(
      static_cast<std::size_t>(number) * shape_.sub_record_size, shape_.sub_record_size));
}

std::span<const std::uint8_t> RecordList::RecordBytes(std::int32_t number) const {
  CheckNumber(number);
  return std::span<const std::uint8_t>(records_).subspan(
      static_cast<std::size_t>(number) * shape_.record_size, shape_.record_size);
}

std::span<const std::uint8_t> RecordList::SubRecordBytes(std::int32_t number) const {
  CheckNumber(number);
  return std::span<const std::uint8_t>(sub_records_)
      .subspan(static_cast<std::size_t>(number) * shape_.sub_record_size,
               shape_.sub_record_size);
}

ByteMatrix::ByteMatrix(std::uint32_t element_size, std::vector<Bound> bounds)
    : element_size_(element_size), bounds_(std::move(bounds)) {}

void ByteMatrix::Reshape(std::vector<Bound> bounds) {
  bounds_ = std::move(bounds);
  data_.clear();
  data_.shrink_to_fit();
  stale_ = true;
}

bool ByteMatrix::OnlyFirstHighMoves(const std::vector<Bound>& bounds) const {
  if (bounds.empty() || bounds.size() != bounds_.size()) return false;
  if (bounds[0].low != bounds_[0].low) return false;
  for (std::size_t d = 1; d < bounds.size(); ++d) {
    if (bounds[d].low != bounds_[d].low || bounds[d].high != bounds_[d].high) return false;
  }
  return true;
}

void ByteMatrix::ReshapeKeeping(std::vector<Bound> bounds) {
  if (stale_) {
    Reshape(std::move(bounds));
    return;
  }
  if (OnlyFirstHighMoves(bounds)) {
    // The first index varies slowest, so the elements of the old shape are the leading
    // bytes of the new one: rows are appended (zero) or dropped at the end and nothing
    // moves. The storage grows by half again when it must grow, so a list that gains a
    // few rows at a time (the structure frames, one per group) copies its matrix a
    // logarithmic number of times instead of once per growth.
    bounds_ = std::move(bounds);
    const std::size_t size = ElementCount() * element_size_;
    if (size > data_.capacity()) {
      data_.reserve(std::max(size, data_.capacity() + data_.capacity() / 2));
    }
    data_.resize(size, 0);
    return;
  }
  const std::vector<Bound> old_bounds = bounds_;
  std::vector<std::uint8_t> old_data;
  old_data.swap(data_);
  bounds_ = std::move(bounds);
  Materialise();
  if (bounds_.size() != old_bounds.size()) return;
  // Copy every element that lies inside both shapes, walking the old index space.
  std::vector<std::int32_t> index(old_bounds.size());
  for (std::size_t d = 0; d < index.size(); ++d) index[d] = old_bounds[d].low;
  const auto inside = [&](const std::vector<Bound>& b) {
    for (std::size_t d = 0; d < index.size(); ++d) {
      if (index[d] < b[d].low || index[d] > b[d].high) return false;
    }
    return true;
  };
  const auto flat = [&](const std::vector<Bound>& b) {
    std::size_t offset = 0;
    for (std::size_t d = 0; d < index.size(); ++d) {
      offset = offset * static_cast<std::size_t>(b[d].high - b[d].low + 1) +
               static_cast<std::size_t>(index[d] - b[d].low);
    }
    return offset * element_size_;
  };
  if (old_data.empty()) return;
  while (true) {
    if (inside(bounds_)) {
      std::memcpy(data_.data() + flat(bounds_), old_data.data() + flat(old_bounds),
                  element_size_);
    }
    std::size_t d = index.size();
    while (d > 0) {
      --d;
      if (++index[d] <= old_bounds[d].high) break;
      index[d] = old_bounds[d].low;
      if (d == 0) return;
    }
  }
}

std::size_t ByteMatrix::ElementCount() const {
  std::size_t n = 1;
  for (const Bound& b : bounds_) {
    if (b.high < b.low) return 0;
    n *= static_cast<std::size_t>(b.high - b.low + 1);
  }
  return n;
}

void ByteMatrix::Materialise() const {
  if (!stale_ && !data_.empty()) return;
  data_.assign(ElementCount() * element_size_, 0);
  stale_ = false;
}

std::size_t ByteMatrix::Offset(std::initializer_list<std::int32_t> index) const {
  if (index.size() != bounds_.size()) throw std::logic_error("matrix index of the wrong rank");
  std::size_t offset = 0;
  std::size_t d = 0;
  for (std::int32_t i : index) {
    const Bound& b = bounds_[d++];
    if (i < b.low || i > b.high) {
      throw std::out_of_range(
          fmt::format("matrix index {} outside the bounds {}..{}", i, b.low, b.high));
    }
    offset = offset * static_cast<std::size_t>(b.high - b.low + 1) +
             static_cast<std::size_t>(i - b.low);
  }
  return offset * element_size_;
}

std::span<std::uint8_t> ByteMatrix::At(std::initializer_list<std::int32_t> index) {
  const std::size_t offset = Offset(index);
  Materialise();
  return std::span<std::uint8_t>(data_).subspan(offset, element_size_);
}

std::span<const std::uint8_t> ByteMatrix::Get(std::initializer_list<std::int32_t> index) const {
  const std::size_t offset = Offset(index);
  Materialise();
  return std::span<const std::uint8_t>(data_).subspan(offset, element_size_);
}

}  // namespace vtt
