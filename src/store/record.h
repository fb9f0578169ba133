// Records, record lists and matrices of the structure store.
//
// A record is held as its file image: a block of bytes of the record's size, all zero
// when it is made, whose fields are set at their file offsets through BinaryWriter. So a
// field that no step assigns is written as zero bytes, and a text field assigned once is
// space-padded, exactly as the files need them.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace vtt {

enum class FieldKind : std::uint8_t { I16, I32, F32, F64, U8, Text, TaggedI16, TaggedF64 };

// One field of a record layout: its name, file offset, kind and width in bytes.
struct FieldDef {
  std::string_view name;
  std::uint32_t offset;
  FieldKind kind;
  std::uint32_t width;
};

constexpr FieldDef I16Field(std::string_view name, std::uint32_t offset) {
  return {name, offset, FieldKind::I16, 2};
}
constexpr FieldDef I32Field(std::string_view name, std::uint32_t offset) {
  return {name, offset, FieldKind::I32, 4};
}
constexpr FieldDef F32Field(std::string_view name, std::uint32_t offset) {
  return {name, offset, FieldKind::F32, 4};
}
constexpr FieldDef F64Field(std::string_view name, std::uint32_t offset) {
  return {name, offset, FieldKind::F64, 8};
}
constexpr FieldDef U8Field(std::string_view name, std::uint32_t offset) {
  return {name, offset, FieldKind::U8, 1};
}
constexpr FieldDef TextField(std::string_view name, std::uint32_t offset, std::uint32_t width) {
  return {name, offset, FieldKind::Text, width};
}
constexpr FieldDef TaggedI16Field(std::string_view name, std::uint32_t offset) {
  return {name, offset, FieldKind::TaggedI16, 4};
}
constexpr FieldDef TaggedF64Field(std::string_view name, std::uint32_t offset) {
  return {name, offset, FieldKind::TaggedF64, 10};
}

// A view of one record's bytes with typed access by field.
class RecordRef {
 public:
  explicit RecordRef(std::span<std::uint8_t> bytes) : bytes_(bytes) {}

  // I16, I32 and U8 fields; a value that the field cannot hold is an overflow failure.
  void SetInt(const FieldDef& field, std::int64_t value);
  // F32 fields narrow the value here, F64 fields keep it.
  void SetReal(const FieldDef& field, double value);
  void SetText(const FieldDef& field, std::string_view value);
  // Tagged fields: type word 2 and an i16, or type word 5 and an f64.
  void SetTaggedI16(const FieldDef& field, std::int16_t value);
  void SetTaggedF64(const FieldDef& field, double value);

  std::int64_t GetInt(const FieldDef& field) const;
  double GetReal(const FieldDef& field) const;
  // The raw field bytes, spaces and zero bytes included.
  std::string GetText(const FieldDef& field) const;
  std::uint8_t ByteAt(std::uint32_t offset) const;

  std::span<const std::uint8_t> Bytes() const { return bytes_; }

 private:
  std::span<std::uint8_t> Slot(const FieldDef& field, FieldKind expected) const;
  std::span<std::uint8_t> bytes_;
};

enum class CountWidth : std::uint8_t { I16, I32 };

// How a list makes room when its count passes its capacity.
enum class Growth : std::uint8_t {
  CountPlusStep,     // capacity = count + step
  CapacityPlusStep,  // capacity = capacity + step
};

// A one-based growable array of fixed-size records with a Count and a Capacity, and an
// optional sub-record array of the same bounds.
class RecordList {
 public:
  struct Shape {
    std::string_view what;  // plural noun for messages, "element groups"
    std::uint32_t record_size;
    CountWidth width = CountWidth::I16;
    std::int32_t initial_count = 0;
    std::int32_t initial_capacity = 1;
    std::uint32_t sub_record_size = 0;
    std::int32_t step = 10;
    Growth growth = Growth::CountPlusStep;
  };

  explicit RecordList(const Shape& shape);

  // Back to the initial count and capacity, all records zero.
  void Reset();

  // Makes room for one more record and leaves its number in Count. Returns true when the
  // capacity changed. Passing the count's width is an overflow failure.
  bool Add();

  std::int32_t Count() const { return count_; }
  std::int32_t Capacity() const { return capacity_; }
  void SetCount(std::int32_t count);
  // For the fill steps that set a list's count outright: Count = `count`, Capacity =
  // `count` plus the step, every record zero. A count past the width is an overflow failure.
  void SetCountAndAllocate(std::int32_t count);

  RecordRef Record(std::int32_t number);
  RecordRef SubRecord(std::int32_t number);
  std::span<const std::uint8_t> RecordBytes(std::int32_t number) const;
  std::span<const std::uint8_t> SubRecordBytes(std::int32_t number) const;

  std::uint32_t RecordSize() const { return shape_.record_size; }
  std::uint32_t SubRecordSize() const { return shape_.sub_record_size; }
  const Shape& GetShape() const { return shape_; }

 private:
  void CheckNumber(std::int32_t number) const;
  void Allocate();

  Shape shape_;
  std::int32_t count_ = 0;
  std::int32_t capacity_ = 0;
  std::vector<std::uint8_t> records_;  // slots 0..capacity
  std::vector<std::uint8_t> sub_records_;
};

// A matrix of fixed-size elements sized from the capacities of other lists, each index
// running from its own lower bound. Reshaping without keeping contents is lazy: the new
// zeroed storage is made on the next access, so a list that grows many times in a row
// costs nothing here until the matrix is used.
class ByteMatrix {
 public:
  struct Bound {
    std::int32_t low;
    std::int32_t high;
  };

  ByteMatrix(std::uint32_t element_size, std::vector<Bound> bounds);

  // New bounds; every element becomes zero.
  void Reshape(std::vector<Bound> bounds);
  // New bounds; elements inside both the old and the new bounds keep their values and
  // every other element is zero. When only the upper bound of the first index changes,
  // the storage is extended or cut in place (and grows geometrically), so repeated growth
  // by a few rows costs time linear in the final size.
  void ReshapeKeeping(std::vector<Bound> bounds);

  std::span<std::uint8_t> At(std::initializer_list<std::int32_t> index);
  RecordRef Element(std::initializer_list<std::int32_t> index) { return RecordRef(At(index)); }
  std::span<const std::uint8_t> Get(std::initializer_list<std::int32_t> index) const;

  const std::vector<Bound>& Bounds() const { return bounds_; }
  std::uint32_t ElementSize() const { return element_size_; }

 private:
  std::size_t Offset(std::initializer_list<std::int32_t> index) const;
  std::size_t ElementCount() const;
  bool OnlyFirstHighMoves(const std::vector<Bound>& bounds) const;
  void Materialise() const;

  std::uint32_t element_size_;
  std::vector<Bound> bounds_;
  mutable std::vector<std::uint8_t> data_;
  mutable bool stale_ = true;
};

}  // namespace vtt
