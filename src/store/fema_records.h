// Layouts of the FEMA beam and FEMA column components of the component library. Offsets
// are file offsets; bytes that no field names hold 0.
//
// - TrelkIneFemaBeamRec (425 bytes). Its list keeps a TrelkStrengthLossRec (50 bytes, see
//   material_records.h) for each record, but HasStrengthLoss is 0, so the file never
//   holds one behind a FEMA beam.
// - TrelkIneFemaColumnRec (473 bytes). HasStrengthLoss 1 puts a TrelkIneFemaColumnSubRec
//   (60 bytes) behind it in the file.
//
// The two records share their head up to ComponentNumberCopy at 63 and the section's
// elastic properties from 93 to 125; behind those their fields stand at other offsets.
// Option, Param, Deformation and LimitState fields are named by position: their meaning
// belongs to the target application.
#pragma once

#include <cstdint>

#include "store/field_table.h"
#include "store/record.h"

namespace vtt {

namespace fema_head {
inline constexpr FieldDef Name = TextField("Name", 0, 40);
inline constexpr FieldDef ComponentNumber = I16Field("ComponentNumber", 40);
inline constexpr FieldDef ComponentKind = U8Field("ComponentKind", 42);
inline constexpr FieldDef UnitLength = U8Field("UnitLength", 43);
inline constexpr FieldDef UnitForce = U8Field("UnitForce", 44);
inline constexpr FieldDef Option1 = U8Field("Option1", 48);
inline constexpr FieldDef Option2 = U8Field("Option2", 49);
inline constexpr FieldDef HasStrengthLoss = U8Field("HasStrengthLoss", 54);
inline constexpr FieldDef SectionKind = I16Field("SectionKind", 57);
inline constexpr FieldDef SectionSubKind = I16Field("SectionSubKind", 59);
inline constexpr FieldDef CrossSectionNumber = I16Field("CrossSectionNumber", 61);
inline constexpr FieldDef ComponentNumberCopy = I16Field("ComponentNumberCopy", 63);
inline constexpr FieldDef E = F32Field("E", 93);
inline constexpr FieldDef Nu = F32Field("Nu", 97);
inline constexpr FieldDef G = F32Field("G", 101);
inline constexpr FieldDef Area = F32Field("Area", 105);
inline constexpr FieldDef As2 = F32Field("As2", 109);
inline constexpr FieldDef As3 = F32Field("As3", 113);
inline constexpr FieldDef TorsionConst = F32Field("TorsionConst", 117);
inline constexpr FieldDef I22 = F32Field("I22", 121);
inline constexpr FieldDef I33 = F32Field("I33", 125);
}  // namespace fema_head

namespace fema_beam_rec {
inline constexpr std::uint32_t kSize = 425;
using namespace fema_head;
inline constexpr FieldDef Option3 = U8Field("Option3", 53);
inline constexpr FieldDef StiffnessFactor = F32Field("StiffnessFactor", 137);
inline constexpr FieldDef ReferenceLength = F32Field("ReferenceLength", 141);
inline constexpr FieldDef Param1 = F32Field("Param1", 145);
inline constexpr FieldDef MomentCapacity = F32Field("MomentCapacity", 149);
inline constexpr FieldDef Param2 = F32Field("Param2", 161);
inline constexpr FieldDef Deformation1 = F32Field("Deformation1", 165);
inline constexpr FieldDef Deformation2 = F32Field("Deformation2", 185);
inline constexpr FieldDef Deformation3 = F32Field("Deformation3", 189);
inline constexpr FieldDef ResidualStrength = F32Field("ResidualStrength", 217);
inline constexpr FieldDef LimitState1 = F32Field("LimitState1", 241);
inline constexpr FieldDef LimitState2 = F32Field("LimitState2", 245);
inline constexpr FieldDef LimitState3 = F32Field("LimitState3", 249);
inline constexpr auto kFields = field_table::List(
    Name, ComponentNumber, ComponentKind, UnitLength, UnitForce, Option1, Option2, Option3,
    HasStrengthLoss, SectionKind, SectionSubKind, CrossSectionNumber, ComponentNumberCopy, E, Nu,
    G, Area, As2, As3, TorsionConst, I22, I33, StiffnessFactor, ReferenceLength, Param1,
    MomentCapacity, Param2, Deformation1, Deformation2, Deformation3, ResidualStrength,
    LimitState1, LimitState2, LimitState3);
static_assert(field_table::FitsWithoutOverlap(kFields, kSize));
}  // namespace fema_beam_rec

namespace fema_column_rec {
inline constexpr std::uint32_t kSize = 473;
using namespace fema_head;
inline constexpr FieldDef StiffnessFactor = F32Field("StiffnessFactor", 133);
inline constexpr FieldDef ReferenceLength = F32Field("ReferenceLength", 137);
inline constexpr FieldDef AxialCapacity1 = F32Field("AxialCapacity1", 141);
inline constexpr FieldDef AxialCapacity2 = F32Field("AxialCapacity2", 145);
inline constexpr FieldDef MomentCapacity2 = F32Field("MomentCapacity2", 149);
inline constexpr FieldDef MomentCapacity3 = F32Field("MomentCapacity3", 153);
inline constexpr FieldDef Deformation1 = F32Field("Deformation1", 173);
inline constexpr FieldDef Deformation2 = F32Field("Deformation2", 177);
inline constexpr FieldDef Deformation3 = F32Field("Deformation3", 181);
inline constexpr FieldDef Deformation4 = F32Field("Deformation4", 185);
inline constexpr FieldDef Param1 = F32Field("Param1", 197);
inline constexpr FieldDef Param2 = F32Field("Param2", 201);
inline constexpr FieldDef Param3 = F32Field("Param3", 205);
inline constexpr FieldDef Param4 = F32Field("Param4", 209);
inline constexpr FieldDef Param5 = F32Field("Param5", 213);
inline constexpr FieldDef Param6 = F32Field("Param6", 217);
inline constexpr FieldDef Param7 = F32Field("Param7", 221);
inline constexpr FieldDef Param8 = F32Field("Param8", 225);
inline constexpr FieldDef Param9 = F32Field("Param9", 229);
// The column's only limit-state field: the fill writes all three limit states into it.
inline constexpr FieldDef LimitState3 = F32Field("LimitState3", 305);
inline constexpr auto kFields = field_table::List(
    Name, ComponentNumber, ComponentKind, UnitLength, UnitForce, Option1, Option2,
    HasStrengthLoss, SectionKind, SectionSubKind, CrossSectionNumber, ComponentNumberCopy, E, Nu,
    G, Area, As2, As3, TorsionConst, I22, I33, StiffnessFactor, ReferenceLength, AxialCapacity1,
    AxialCapacity2, MomentCapacity2, MomentCapacity3, Deformation1, Deformation2, Deformation3,
    Deformation4, Param1, Param2, Param3, Param4, Param5, Param6, Param7, Param8, Param9,
    LimitState3);
static_assert(field_table::FitsWithoutOverlap(kFields, kSize));
}  // namespace fema_column_rec

namespace fema_column_sub_rec {
inline constexpr std::uint32_t kSize = 60;
inline constexpr FieldDef Flag = U8Field("Flag", 0);
inline constexpr auto kFields = field_table::List(Flag);
static_assert(field_table::FitsWithoutOverlap(kFields, kSize));
}  // namespace fema_column_sub_rec

}  // namespace vtt
