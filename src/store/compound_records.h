// Layouts of the compound components: the frame compound (TrelkCpdFrameRec, 378 bytes,
// with its 45-byte sub-record), the wall compound (TrelkCpdWallRec, 116 bytes) and the
// general-wall compound (TrelkCpdGWallRec, 108 bytes). Offsets are file offsets.
//
// A frame compound strings up to 13 parts along a member; each part table holds one entry
// a part, part 1 first.
#pragma once

#include <array>
#include <string>

#include "store/field_table.h"
#include "store/record.h"

namespace vtt {

namespace cpd_frame_rec {
inline constexpr std::uint32_t kSize = 378;
inline constexpr std::uint32_t kSubRecordSize = 45;
inline constexpr int kMaxParts = 13;
inline constexpr FieldDef Name = TextField("Name", 0, 40);
inline constexpr FieldDef ComponentNumber = I16Field("ComponentNumber", 40);
inline constexpr FieldDef ComponentKind = U8Field("ComponentKind", 42);
inline constexpr FieldDef UnitForce = U8Field("UnitForce", 43);
inline constexpr FieldDef UnitLength = U8Field("UnitLength", 44);
inline constexpr FieldDef PartCount = U8Field("PartCount", 45);
inline constexpr FieldDef Option1 = U8Field("Option1", 47);
inline constexpr FieldDef HasSubRecord = U8Field("HasSubRecord", 48);
inline constexpr FieldDef ComponentNumberCopy = I16Field("ComponentNumberCopy", 354);
inline constexpr FieldDef WeightPerLength = F32Field("WeightPerLength", 362);

// The part tables, indexed by the part from 1 to 13.
inline constexpr std::uint32_t kPartSource = 66;
inline constexpr std::uint32_t kPartShape = 79;
inline constexpr std::uint32_t kPartFlag = 92;
inline constexpr std::uint32_t kPartMode = 105;
inline constexpr std::uint32_t kPartKind = 118;
inline constexpr std::uint32_t kPartComponent = 144;
inline constexpr std::uint32_t kPartLengthI = 170;
inline constexpr std::uint32_t kPartLengthJ = 222;

constexpr std::uint32_t PartOffset(std::uint32_t table, std::uint32_t width, int part) {
  return table + width * static_cast<std::uint32_t>(part - 1);
}
constexpr FieldDef PartSource(int part) { return U8Field("PartSource", PartOffset(kPartSource, 1, part)); }
constexpr FieldDef PartShape(int part) { return U8Field("PartShape", PartOffset(kPartShape, 1, part)); }
constexpr FieldDef PartFlag(int part) { return U8Field("PartFlag", PartOffset(kPartFlag, 1, part)); }
constexpr FieldDef PartMode(int part) { return U8Field("PartMode", PartOffset(kPartMode, 1, part)); }
constexpr FieldDef PartKind(int part) { return I16Field("PartKind", PartOffset(kPartKind, 2, part)); }
constexpr FieldDef PartComponent(int part) {
  return I16Field("PartComponent", PartOffset(kPartComponent, 2, part));
}
constexpr FieldDef PartLengthI(int part) {
  return F32Field("PartLengthI", PartOffset(kPartLengthI, 4, part));
}
constexpr FieldDef PartLengthJ(int part) {
  return F32Field("PartLengthJ", PartOffset(kPartLengthJ, 4, part));
}

// Every field of the record, the part tables entry by entry, in offset order.
inline constexpr auto kFields = field_table::Join(
    field_table::List(Name, ComponentNumber, ComponentKind, UnitForce, UnitLength, PartCount,
                      Option1, HasSubRecord, ComponentNumberCopy, WeightPerLength),
    field_table::Series<kMaxParts>(PartSource), field_table::Series<kMaxParts>(PartShape),
    field_table::Series<kMaxParts>(PartFlag), field_table::Series<kMaxParts>(PartMode),
    field_table::Series<kMaxParts>(PartKind), field_table::Series<kMaxParts>(PartComponent),
    field_table::Series<kMaxParts>(PartLengthI), field_table::Series<kMaxParts>(PartLengthJ));
static_assert(field_table::FitsWithoutOverlap(kFields, kSize));
}  // namespace cpd_frame_rec

namespace cpd_wall_rec {
inline constexpr std::uint32_t kSize = 116;
inline constexpr FieldDef Name = TextField("Name", 0, 40);
inline constexpr FieldDef ComponentNumber = I16Field("ComponentNumber", 40);
inline constexpr FieldDef ComponentKind = U8Field("ComponentKind", 42);
inline constexpr FieldDef UnitForce = U8Field("UnitForce", 43);
inline constexpr FieldDef UnitLength = U8Field("UnitLength", 44);
inline constexpr FieldDef WallSectionKind = I16Field("WallSectionKind", 48);
inline constexpr FieldDef WallSection = I16Field("WallSection", 50);
inline constexpr FieldDef ShearMaterialKind = I16Field("ShearMaterialKind", 52);
inline constexpr FieldDef ShearMaterial = I16Field("ShearMaterial", 54);
inline constexpr FieldDef Thickness1 = F32Field("Thickness1", 56);
inline constexpr FieldDef E = F32Field("E", 60);
inline constexpr FieldDef Thickness2 = F32Field("Thickness2", 64);
inline constexpr FieldDef ComponentNumberCopy = I16Field("ComponentNumberCopy", 68);
inline constexpr FieldDef Thickness3 = F32Field("Thickness3", 76);
inline constexpr FieldDef UnitWeight = F32Field("UnitWeight", 80);
inline constexpr auto kFields = field_table::List(
    Name, ComponentNumber, ComponentKind, UnitForce, UnitLength, WallSectionKind, WallSection,
    ShearMaterialKind, ShearMaterial, Thickness1, E, Thickness2, ComponentNumberCopy,
    Thickness3, UnitWeight);
static_assert(field_table::FitsWithoutOverlap(kFields, kSize));
}  // namespace cpd_wall_rec

namespace cpd_gwall_rec {
inline constexpr std::uint32_t kSize = 108;
inline constexpr FieldDef Name = TextField("Name", 0, 40);
inline constexpr FieldDef ComponentNumber = I16Field("ComponentNumber", 40);
inline constexpr FieldDef ComponentKind = U8Field("ComponentKind", 42);
inline constexpr FieldDef UnitForce = U8Field("UnitForce", 43);
inline constexpr FieldDef UnitLength = U8Field("UnitLength", 44);
inline constexpr FieldDef VerticalSectionKind = I16Field("VerticalSectionKind", 48);
inline constexpr FieldDef VerticalSection = I16Field("VerticalSection", 50);
inline constexpr FieldDef HorizontalSectionKind = I16Field("HorizontalSectionKind", 52);
inline constexpr FieldDef HorizontalSection = I16Field("HorizontalSection", 54);
inline constexpr FieldDef ShearMaterialKind = I16Field("ShearMaterialKind", 56);
inline constexpr FieldDef ShearMaterial = I16Field("ShearMaterial", 58);
inline constexpr FieldDef DiagonalKind = I16Field("DiagonalKind", 60);
inline constexpr FieldDef Thickness1 = F32Field("Thickness1", 64);
inline constexpr FieldDef Angle1 = F32Field("Angle1", 72);
inline constexpr FieldDef Angle2 = F32Field("Angle2", 76);
inline constexpr FieldDef DiagonalComponent = I16Field("DiagonalComponent", 80);
inline constexpr FieldDef Thickness2 = F32Field("Thickness2", 88);
inline constexpr FieldDef UnitWeight = F32Field("UnitWeight", 92);
inline constexpr auto kFields = field_table::List(
    Name, ComponentNumber, ComponentKind, UnitForce, UnitLength, VerticalSectionKind,
    VerticalSection, HorizontalSectionKind, HorizontalSection, ShearMaterialKind, ShearMaterial,
    DiagonalKind, Thickness1, Angle1, Angle2, DiagonalComponent, Thickness2, UnitWeight);
static_assert(field_table::FitsWithoutOverlap(kFields, kSize));
}  // namespace cpd_gwall_rec

}  // namespace vtt
