// Layouts of the cross-section components of the component library. Offsets are file
// offsets; bytes that no field names hold 0.
//
// Every cross-section record starts with the same head: Name text[40] at 0, RecordNumber
// i16 at 40, then two texts, text[20] at 42 and text[24] at 62. The beam, column and
// inelastic wall fillers assign the two texts the empty text (spaces); the elastic wall and
// slab fillers leave them alone (zero bytes).
//
// - TrelkXecBeamRec (424 bytes): beam sections, steel, concrete and embedded.
// - TrelkXecColumnRec (687 bytes): column sections; the beam's fields at other offsets.
// - TrelkXecWallElasticRec (439 bytes): elastic shear walls and general walls.
// - TrelkXecWallInelRec (455 bytes): fibre walls and inelastic general walls, with a
//   16-slot fibre table. HasSubRecord stays 0, so its 86-byte TrelkXecWallInelSubRec is
//   never written.
// - TrelkXecSlabRec (274 bytes).
#pragma once

#include <cstdint>
#include <stdexcept>
#include <string_view>

#include "store/field_table.h"
#include "store/record.h"

namespace vtt {

namespace xsect_head {
inline constexpr FieldDef Name = TextField("Name", 0, 40);
inline constexpr FieldDef RecordNumber = I16Field("RecordNumber", 40);
inline constexpr FieldDef Text1 = TextField("Text1", 42, 20);
inline constexpr FieldDef Text2 = TextField("Text2", 62, 24);
}  // namespace xsect_head

namespace xsect_beam_rec {
inline constexpr std::uint32_t kSize = 424;
using xsect_head::Name;
using xsect_head::RecordNumber;
using xsect_head::Text1;
using xsect_head::Text2;
inline constexpr FieldDef Option1 = U8Field("Option1", 86);
inline constexpr FieldDef UnitLength = U8Field("UnitLength", 87);
inline constexpr FieldDef UnitForce = U8Field("UnitForce", 88);
// 4 steel, 3 concrete or embedded.
inline constexpr FieldDef Kind = U8Field("Kind", 89);
// 1 steel I-shape, 2 concrete rectangle or embedded, 0 any other.
inline constexpr FieldDef Shape = U8Field("Shape", 90);
inline constexpr FieldDef Option2 = U8Field("Option2", 91);
inline constexpr FieldDef Area = F32Field("Area", 104);
inline constexpr FieldDef TorsionConstant = F32Field("TorsionConstant", 108);
inline constexpr FieldDef Inertia22 = F32Field("Inertia22", 112);
inline constexpr FieldDef Inertia33 = F32Field("Inertia33", 116);
inline constexpr FieldDef ShearArea2 = F32Field("ShearArea2", 120);
inline constexpr FieldDef ShearArea3 = F32Field("ShearArea3", 124);
inline constexpr FieldDef Factor1 = F32Field("Factor1", 128);
inline constexpr FieldDef Factor2 = F32Field("Factor2", 132);
inline constexpr FieldDef Modulus = F32Field("Modulus", 144);
inline constexpr FieldDef Poisson = F32Field("Poisson", 148);
inline constexpr FieldDef ShearModulus = F32Field("ShearModulus", 152);
inline constexpr FieldDef Depth2 = F32Field("Depth2", 156);
inline constexpr FieldDef Depth3 = F32Field("Depth3", 160);
inline constexpr FieldDef FlangeThickness = F32Field("FlangeThickness", 164);
inline constexpr FieldDef WebThickness = F32Field("WebThickness", 168);
inline constexpr FieldDef RecordNumberAgain = I16Field("RecordNumberAgain", 400);
inline constexpr auto kFields = field_table::List(
    Name, RecordNumber, Text1, Text2, Option1, UnitLength, UnitForce, Kind, Shape, Option2, Area,
    TorsionConstant, Inertia22, Inertia33, ShearArea2, ShearArea3, Factor1, Factor2, Modulus,
    Poisson, ShearModulus, Depth2, Depth3, FlangeThickness, WebThickness, RecordNumberAgain);
static_assert(field_table::FitsWithoutOverlap(kFields, kSize));
}  // namespace xsect_beam_rec

namespace xsect_column_rec {
inline constexpr std::uint32_t kSize = 687;
using xsect_head::Name;
using xsect_head::RecordNumber;
using xsect_head::Text1;
using xsect_head::Text2;
inline constexpr FieldDef Option1 = U8Field("Option1", 86);
inline constexpr FieldDef UnitLength = U8Field("UnitLength", 87);
inline constexpr FieldDef UnitForce = U8Field("UnitForce", 88);
// 7 steel, 6 concrete.
inline constexpr FieldDef Kind = U8Field("Kind", 89);
inline constexpr FieldDef Shape = U8Field("Shape", 90);
inline constexpr FieldDef Option2 = U8Field("Option2", 91);
inline constexpr FieldDef Area = F32Field("Area", 103);
inline constexpr FieldDef TorsionConstant = F32Field("TorsionConstant", 107);
inline constexpr FieldDef Inertia22 = F32Field("Inertia22", 111);
inline constexpr FieldDef Inertia33 = F32Field("Inertia33", 115);
inline constexpr FieldDef ShearArea2 = F32Field("ShearArea2", 119);
inline constexpr FieldDef ShearArea3 = F32Field("ShearArea3", 123);
inline constexpr FieldDef Factor1 = F32Field("Factor1", 127);
inline constexpr FieldDef Factor2 = F32Field("Factor2", 131);
inline constexpr FieldDef Modulus = F32Field("Modulus", 151);
inline constexpr FieldDef Poisson = F32Field("Poisson", 155);
inline constexpr FieldDef ShearModulus = F32Field("ShearModulus", 159);
inline constexpr FieldDef Depth2 = F32Field("Depth2", 163);
inline constexpr FieldDef Depth3 = F32Field("Depth3", 167);
inline constexpr FieldDef FlangeThickness = F32Field("FlangeThickness", 171);
inline constexpr FieldDef WebThickness = F32Field("WebThickness", 175);
inline constexpr FieldDef RecordNumberAgain = I16Field("RecordNumberAgain", 663);
inline constexpr auto kFields = field_table::List(
    Name, RecordNumber, Text1, Text2, Option1, UnitLength, UnitForce, Kind, Shape, Option2, Area,
    TorsionConstant, Inertia22, Inertia33, ShearArea2, ShearArea3, Factor1, Factor2, Modulus,
    Poisson, ShearModulus, Depth2, Depth3, FlangeThickness, WebThickness, RecordNumberAgain);
static_assert(field_table::FitsWithoutOverlap(kFields, kSize));
}  // namespace xsect_column_rec

namespace xsect_wall_elastic_rec {
inline constexpr std::uint32_t kSize = 439;
using xsect_head::Name;
using xsect_head::RecordNumber;
using xsect_head::Text1;
using xsect_head::Text2;
// 11 shear wall, 13 general wall.
inline constexpr FieldDef Kind = U8Field("Kind", 86);
inline constexpr FieldDef UnitLength = U8Field("UnitLength", 87);
inline constexpr FieldDef UnitForce = U8Field("UnitForce", 88);
inline constexpr FieldDef Option1 = U8Field("Option1", 89);
inline constexpr FieldDef Option2 = U8Field("Option2", 90);
inline constexpr FieldDef Word1 = I16Field("Word1", 95);
inline constexpr FieldDef Thickness = F32Field("Thickness", 103);
inline constexpr FieldDef BendingThickness = F32Field("BendingThickness", 119);
inline constexpr FieldDef Modulus = F32Field("Modulus", 123);
inline constexpr FieldDef BendingThicknessAgain = F32Field("BendingThicknessAgain", 127);
inline constexpr FieldDef Poisson = F32Field("Poisson", 131);
inline constexpr FieldDef Word2 = I16Field("Word2", 187);
// The elastic fibre material of the wall's material.
inline constexpr FieldDef MaterialId = I16Field("MaterialId", 219);
inline constexpr auto kFields = field_table::List(
    Name, RecordNumber, Text1, Text2, Kind, UnitLength, UnitForce, Option1, Option2, Word1,
    Thickness, BendingThickness, Modulus, BendingThicknessAgain, Poisson, Word2, MaterialId);
static_assert(field_table::FitsWithoutOverlap(kFields, kSize));
}  // namespace xsect_wall_elastic_rec

namespace xsect_wall_inel_rec {
inline constexpr std::uint32_t kSize = 455;
inline constexpr std::uint32_t kSubRecordSize = 86;
// Slots of the fibre table; a wall uses the first ConcreteFibreCount + RebarFibreCount.
inline constexpr int kFibreSlots = 16;
using xsect_head::Name;
using xsect_head::RecordNumber;
using xsect_head::Text1;
using xsect_head::Text2;
// 10 shear (fibre) wall, 12 general wall.
inline constexpr FieldDef Kind = U8Field("Kind", 86);
inline constexpr FieldDef UnitLength = U8Field("UnitLength", 87);
inline constexpr FieldDef UnitForce = U8Field("UnitForce", 88);
inline constexpr FieldDef Option1 = U8Field("Option1", 89);
// Concrete plus rebar fibres.
inline constexpr FieldDef FibreCount = U8Field("FibreCount", 90);
inline constexpr FieldDef Option2 = U8Field("Option2", 91);
inline constexpr FieldDef HasSubRecord = U8Field("HasSubRecord", 92);
inline constexpr FieldDef RebarFibreCount = I16Field("RebarFibreCount", 95);
inline constexpr FieldDef ConcreteFibreCount = I16Field("ConcreteFibreCount", 97);
inline constexpr FieldDef Word1 = I16Field("Word1", 99);
inline constexpr FieldDef Word2 = I16Field("Word2", 101);
inline constexpr FieldDef RecordNumberAgain = I16Field("RecordNumberAgain", 103);
inline constexpr FieldDef RebarPercent = F32Field("RebarPercent", 111);
inline constexpr FieldDef Factor1 = F32Field("Factor1", 115);
inline constexpr FieldDef Word3 = F32Field("Word3", 119);
inline constexpr FieldDef Thickness = F32Field("Thickness", 123);
inline constexpr FieldDef Word4 = F32Field("Word4", 127);
inline constexpr FieldDef Word5 = F32Field("Word5", 131);
inline constexpr FieldDef BendingThickness = F32Field("BendingThickness", 155);
inline constexpr FieldDef Modulus = F32Field("Modulus", 159);
inline constexpr FieldDef BendingThicknessAgain = F32Field("BendingThicknessAgain", 163);
inline constexpr FieldDef Poisson = F32Field("Poisson", 167);

// The fibre table: six parallel arrays of 16 slots, slot k from 1. Positions are
// fractions of the wall length from -0.5 to 0.5; areas are stored negative.
inline constexpr std::uint32_t kFibreGroup = 171;       // u8[16]
inline constexpr std::uint32_t kFibreFlag = 187;        // u8[16]
inline constexpr std::uint32_t kFibreIsConcrete = 203;  // i16[16]
inline constexpr std::uint32_t kFibreMaterial = 235;    // i16[16]
inline constexpr std::uint32_t kFibreArea = 267;        // f32[16]
inline constexpr std::uint32_t kFibrePosition = 331;    // f32[16]

constexpr std::uint32_t FibreSlotOffset(std::uint32_t table, std::uint32_t width, int k) {
  if (k < 1 || k > kFibreSlots) throw std::out_of_range("a wall fibre slot outside 1 to 16");
  return table + width * static_cast<std::uint32_t>(k - 1);
}
constexpr FieldDef FibreGroup(int k) {
  return U8Field("FibreGroup", FibreSlotOffset(kFibreGroup, 1, k));
}
constexpr FieldDef FibreFlag(int k) {
  return U8Field("FibreFlag", FibreSlotOffset(kFibreFlag, 1, k));
}
constexpr FieldDef FibreIsConcrete(int k) {
  return I16Field("FibreIsConcrete", FibreSlotOffset(kFibreIsConcrete, 2, k));
}
constexpr FieldDef FibreMaterial(int k) {
  return I16Field("FibreMaterial", FibreSlotOffset(kFibreMaterial, 2, k));
}
constexpr FieldDef FibreArea(int k) {
  return F32Field("FibreArea", FibreSlotOffset(kFibreArea, 4, k));
}
constexpr FieldDef FibrePosition(int k) {
  return F32Field("FibrePosition", FibreSlotOffset(kFibrePosition, 4, k));
}

// Every field of the record, the fibre table slot by slot, in offset order.
inline constexpr auto kFields = field_table::Join(
    field_table::List(Name, RecordNumber, Text1, Text2, Kind, UnitLength, UnitForce, Option1,
                      FibreCount, Option2, HasSubRecord, RebarFibreCount, ConcreteFibreCount,
                      Word1, Word2, RecordNumberAgain, RebarPercent, Factor1, Word3, Thickness,
                      Word4, Word5, BendingThickness, Modulus, BendingThicknessAgain, Poisson),
    field_table::Series<kFibreSlots>(FibreGroup), field_table::Series<kFibreSlots>(FibreFlag),
    field_table::Series<kFibreSlots>(FibreIsConcrete),
    field_table::Series<kFibreSlots>(FibreMaterial), field_table::Series<kFibreSlots>(FibreArea),
    field_table::Series<kFibreSlots>(FibrePosition));
static_assert(field_table::FitsWithoutOverlap(kFields, kSize));
}  // namespace xsect_wall_inel_rec

namespace xsect_slab_rec {
inline constexpr std::uint32_t kSize = 274;
using xsect_head::Name;
using xsect_head::RecordNumber;
using xsect_head::Text1;
using xsect_head::Text2;
inline constexpr FieldDef Kind = U8Field("Kind", 86);
inline constexpr FieldDef UnitLength = U8Field("UnitLength", 87);
inline constexpr FieldDef UnitForce = U8Field("UnitForce", 88);
inline constexpr FieldDef Option1 = U8Field("Option1", 89);
inline constexpr FieldDef Word1 = I16Field("Word1", 92);
inline constexpr FieldDef Word2 = I16Field("Word2", 94);
inline constexpr FieldDef Thickness = F32Field("Thickness", 102);
inline constexpr FieldDef BendingThickness = F32Field("BendingThickness", 106);
inline constexpr FieldDef ThicknessAgain = F32Field("ThicknessAgain", 122);
inline constexpr FieldDef UnitWeight = F32Field("UnitWeight", 126);
inline constexpr FieldDef Option2 = U8Field("Option2", 262);
inline constexpr FieldDef Option3 = U8Field("Option3", 263);
inline constexpr FieldDef Word3 = I16Field("Word3", 264);
// The elastic slab material of the slab's material, twice.
inline constexpr FieldDef MaterialId = I16Field("MaterialId", 266);
inline constexpr FieldDef Option4 = U8Field("Option4", 268);
inline constexpr FieldDef Option5 = U8Field("Option5", 269);
inline constexpr FieldDef Word4 = I16Field("Word4", 270);
inline constexpr FieldDef MaterialIdAgain = I16Field("MaterialIdAgain", 272);
inline constexpr auto kFields = field_table::List(
    Name, RecordNumber, Text1, Text2, Kind, UnitLength, UnitForce, Option1, Word1, Word2,
    Thickness, BendingThickness, ThicknessAgain, UnitWeight, Option2, Option3, Word3, MaterialId,
    Option4, Option5, Word4, MaterialIdAgain);
static_assert(field_table::FitsWithoutOverlap(kFields, kSize));
}  // namespace xsect_slab_rec

}  // namespace vtt
