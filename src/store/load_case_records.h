// Layouts of the load cases of the L file, the gravity case (TrelkGravityCaseRec, 1024
// bytes), the pushover case (TrelkPushoverCaseRec, 1042 bytes) and the dynamic earthquake
// case (TrelkDynamicCaseRec, 348 bytes), and of the analysis series entry of the A file
// (TrelkLoadCaseRec, 194 bytes). Offsets are file offsets.
//
// The entry tables of a case are indexed from 1; the three record slots of a dynamic case
// stand for the directions U1, U2 and U3, in that order.
#pragma once

#include "store/field_table.h"
#include "store/record.h"

namespace vtt {

namespace case_rec {
// Entry and slot tables: the offset of entry `index` (from 1) in a table of `width`-byte
// entries starting at `table`.
constexpr std::uint32_t EntryOffset(std::uint32_t table, std::uint32_t width, int index) {
  return table + width * static_cast<std::uint32_t>(index - 1);
}
}  // namespace case_rec

namespace gravity_case_rec {
inline constexpr std::uint32_t kSize = 1024;
inline constexpr int kMaxLoads = 20;
inline constexpr FieldDef Name = TextField("Name", 0, 40);
inline constexpr FieldDef Kind = U8Field("Kind", 40);
// Never assigned: its forty zero bytes reach the file.
inline constexpr FieldDef Text = TextField("Text", 44, 40);
inline constexpr FieldDef LoadCount = I16Field("LoadCount", 88);

inline constexpr std::uint32_t kLoadKind = 90;
inline constexpr std::uint32_t kLoadName = 130;
inline constexpr std::uint32_t kLoadFactor = 930;

// 1 nodal pattern, 2 frame-load pattern, 3 self-weight pattern.
constexpr FieldDef LoadKind(int entry) {
  return I16Field("LoadKind", case_rec::EntryOffset(kLoadKind, 2, entry));
}
constexpr FieldDef LoadName(int entry) {
  return TextField("LoadName", case_rec::EntryOffset(kLoadName, 40, entry), 40);
}
constexpr FieldDef LoadFactor(int entry) {
  return F32Field("LoadFactor", case_rec::EntryOffset(kLoadFactor, 4, entry));
}

inline constexpr auto kFields = field_table::Join(
    field_table::List(Name, Kind, Text, LoadCount), field_table::Series<kMaxLoads>(LoadKind),
    field_table::Series<kMaxLoads>(LoadName), field_table::Series<kMaxLoads>(LoadFactor));
static_assert(field_table::FitsWithoutOverlap(kFields, kSize));
}  // namespace gravity_case_rec

namespace pushover_case_rec {
inline constexpr std::uint32_t kSize = 1042;
inline constexpr int kMaxLoads = 20;
inline constexpr int kModeSlots = 12;
inline constexpr FieldDef Name = TextField("Name", 0, 40);
inline constexpr FieldDef Kind = U8Field("Kind", 40);
// 0: the entries are load patterns; 1: they are modes.
inline constexpr FieldDef Mode = U8Field("Mode", 41);
inline constexpr FieldDef Criterion = TextField("Criterion", 44, 40);
inline constexpr FieldDef Value1 = I16Field("Value1", 84);
inline constexpr FieldDef Value2 = I16Field("Value2", 86);
inline constexpr FieldDef Value3 = F32Field("Value3", 88);
inline constexpr FieldDef LoadCount = I16Field("LoadCount", 92);
inline constexpr FieldDef DriftName = TextField("DriftName", 1008, 20);

inline constexpr std::uint32_t kLoadKind = 94;
inline constexpr std::uint32_t kLoadName = 114;
inline constexpr std::uint32_t kLoadFactor = 914;
inline constexpr std::uint32_t kModeNumber = 995;

constexpr FieldDef LoadKind(int entry) {
  return U8Field("LoadKind", case_rec::EntryOffset(kLoadKind, 1, entry));
}
constexpr FieldDef LoadName(int entry) {
  return TextField("LoadName", case_rec::EntryOffset(kLoadName, 40, entry), 40);
}
constexpr FieldDef LoadFactor(int entry) {
  return F32Field("LoadFactor", case_rec::EntryOffset(kLoadFactor, 4, entry));
}
constexpr FieldDef ModeNumber(int entry) {
  return U8Field("ModeNumber", case_rec::EntryOffset(kModeNumber, 1, entry));
}

inline constexpr auto kFields = field_table::Join(
    field_table::List(Name, Kind, Mode, Criterion, Value1, Value2, Value3, LoadCount, DriftName),
    field_table::Series<kMaxLoads>(LoadKind), field_table::Series<kMaxLoads>(LoadName),
    field_table::Series<kMaxLoads>(LoadFactor), field_table::Series<kModeSlots>(ModeNumber));
static_assert(field_table::FitsWithoutOverlap(kFields, kSize));
}  // namespace pushover_case_rec

namespace dynamic_case_rec {
inline constexpr std::uint32_t kSize = 348;
inline constexpr FieldDef Name = TextField("Name", 0, 40);
inline constexpr FieldDef Kind = U8Field("Kind", 40);
inline constexpr FieldDef Criterion = TextField("Criterion", 42, 40);
inline constexpr FieldDef Duration = F32Field("Duration", 82);
inline constexpr FieldDef TimeStep = F32Field("TimeStep", 86);
inline constexpr FieldDef Value1 = I16Field("Value1", 90);
inline constexpr FieldDef DriftName = TextField("DriftName", 314, 20);
inline constexpr FieldDef Value2 = I16Field("Value2", 336);

inline constexpr std::uint32_t kRecordFolder = 92;
inline constexpr std::uint32_t kRecordName = 128;
inline constexpr std::uint32_t kRecordTitle = 164;
inline constexpr std::uint32_t kRecordPoints = 284;
inline constexpr std::uint32_t kFactor = 290;
inline constexpr std::uint32_t kTimeFactor = 302;

// Slots 1, 2 and 3: the directions U1, U2 and U3.
constexpr FieldDef RecordFolder(int slot) {
  return TextField("RecordFolder", case_rec::EntryOffset(kRecordFolder, 12, slot), 12);
}
constexpr FieldDef RecordName(int slot) {
  return TextField("RecordName", case_rec::EntryOffset(kRecordName, 12, slot), 12);
}
constexpr FieldDef RecordTitle(int slot) {
  return TextField("RecordTitle", case_rec::EntryOffset(kRecordTitle, 40, slot), 40);
}
constexpr FieldDef RecordPoints(int slot) {
  return I16Field("RecordPoints", case_rec::EntryOffset(kRecordPoints, 2, slot));
}
constexpr FieldDef Factor(int slot) {
  return F32Field("Factor", case_rec::EntryOffset(kFactor, 4, slot));
}
constexpr FieldDef TimeFactor(int slot) {
  return F32Field("TimeFactor", case_rec::EntryOffset(kTimeFactor, 4, slot));
}

inline constexpr auto kFields = field_table::Join(
    field_table::List(Name, Kind, Criterion, Duration, TimeStep, Value1, DriftName, Value2),
    field_table::Series<3>(RecordFolder), field_table::Series<3>(RecordName),
    field_table::Series<3>(RecordTitle), field_table::Series<3>(RecordPoints),
    field_table::Series<3>(Factor), field_table::Series<3>(TimeFactor));
static_assert(field_table::FitsWithoutOverlap(kFields, kSize));
}  // namespace dynamic_case_rec

// The analysis series entry of the A file.
namespace load_case_rec {
inline constexpr std::uint32_t kSize = 194;
inline constexpr FieldDef Name = TextField("Name", 0, 12);
inline constexpr FieldDef Title = TextField("Title", 12, 60);
inline constexpr FieldDef Text = TextField("Text", 72, 40);
inline constexpr FieldDef Flag1 = U8Field("Flag1", 112);
inline constexpr FieldDef Flag2 = U8Field("Flag2", 113);
inline constexpr FieldDef Value1 = I16Field("Value1", 114);
inline constexpr FieldDef Value2 = I16Field("Value2", 116);
inline constexpr FieldDef Value3 = F32Field("Value3", 122);
inline constexpr FieldDef DampPeriod1 = F32Field("DampPeriod1", 146);
inline constexpr FieldDef DampPeriod2 = F32Field("DampPeriod2", 150);
inline constexpr FieldDef DampRatio1 = F32Field("DampRatio1", 154);
inline constexpr FieldDef DampRatio2 = F32Field("DampRatio2", 158);
// 1 would put a detail record behind the entry; the series entry never has one.
inline constexpr FieldDef HasDetail = U8Field("HasDetail", 190);
inline constexpr auto kFields = field_table::List(Name, Title, Text, Flag1, Flag2, Value1, Value2,
                                                  Value3, DampPeriod1, DampPeriod2, DampRatio1,
                                                  DampRatio2, HasDetail);
static_assert(field_table::FitsWithoutOverlap(kFields, kSize));
}  // namespace load_case_rec

}  // namespace vtt
