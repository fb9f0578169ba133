// Layouts of the material components of the component library. Offsets are file offsets;
// bytes that no field names hold 0.
//
// - TrelkMatInelRec (329 bytes): the three inelastic kinds, rebar fibre, concrete fibre
//   and concrete shear. HasStrengthLoss 1 puts a TrelkStrengthLossRec (50 bytes) behind
//   it in the file.
// - TrelkMatElasticFiberRec (126 bytes).
// - TrelkMatElasticShearRec (152 bytes as filled: three tagged values stand inside it).
//   HasSubRecord 1 puts a TrelkMatElasticShearSubRec (56 bytes) behind it.
// - TrelkMatElasticSlabRec (174 bytes).
#pragma once

#include <cstdint>

#include "store/field_table.h"
#include "store/record.h"

namespace vtt {

namespace mat_inel_rec {
inline constexpr std::uint32_t kSize = 329;
inline constexpr FieldDef Name = TextField("Name", 0, 40);
inline constexpr FieldDef RecordNumber = I16Field("RecordNumber", 40);
// 0 rebar fibre, 1 concrete fibre, 2 concrete shear.
inline constexpr FieldDef Kind = U8Field("Kind", 42);
inline constexpr FieldDef UnitLength = U8Field("UnitLength", 43);
inline constexpr FieldDef UnitForce = U8Field("UnitForce", 44);
inline constexpr FieldDef Option1 = U8Field("Option1", 45);
inline constexpr FieldDef Option2 = U8Field("Option2", 46);
inline constexpr FieldDef Option3 = U8Field("Option3", 47);
inline constexpr FieldDef Option4 = U8Field("Option4", 48);
inline constexpr FieldDef Option5 = U8Field("Option5", 49);
inline constexpr FieldDef Option6 = U8Field("Option6", 50);
inline constexpr FieldDef Option7 = U8Field("Option7", 51);
inline constexpr FieldDef Option8 = U8Field("Option8", 52);
inline constexpr FieldDef Option9 = U8Field("Option9", 53);
inline constexpr FieldDef HasStrengthLoss = U8Field("HasStrengthLoss", 54);
inline constexpr FieldDef Word1 = I16Field("Word1", 57);
inline constexpr FieldDef RecordNumberAgain = I16Field("RecordNumberAgain", 59);
inline constexpr FieldDef Stiffness = F32Field("Stiffness", 65);
inline constexpr FieldDef Word2 = F32Field("Word2", 69);
// Kinds 0 and 2 use side A, kind 1 side B; the other side stays 0.
inline constexpr FieldDef SideAValue1 = F32Field("SideAValue1", 81);
inline constexpr FieldDef SideAValue2 = F32Field("SideAValue2", 85);
inline constexpr FieldDef SideBValue1 = F32Field("SideBValue1", 89);
inline constexpr FieldDef SideBValue2 = F32Field("SideBValue2", 93);
inline constexpr FieldDef SideAValue3 = F32Field("SideAValue3", 97);
inline constexpr FieldDef SideAValue4 = F32Field("SideAValue4", 101);
inline constexpr FieldDef SideBValue3 = F32Field("SideBValue3", 105);
inline constexpr FieldDef SideBValue4 = F32Field("SideBValue4", 109);
inline constexpr auto kFields = field_table::List(
    Name, RecordNumber, Kind, UnitLength, UnitForce, Option1, Option2, Option3, Option4, Option5,
    Option6, Option7, Option8, Option9, HasStrengthLoss, Word1, RecordNumberAgain, Stiffness,
    Word2, SideAValue1, SideAValue2, SideBValue1, SideBValue2, SideAValue3, SideAValue4,
    SideBValue3, SideBValue4);
static_assert(field_table::FitsWithoutOverlap(kFields, kSize));
}  // namespace mat_inel_rec

// Also kept in step with the FEMA beam list.
namespace strength_loss_rec {
inline constexpr std::uint32_t kSize = 50;
inline constexpr FieldDef Flag = U8Field("Flag", 0);
inline constexpr auto kFields = field_table::List(Flag);
static_assert(field_table::FitsWithoutOverlap(kFields, kSize));
}  // namespace strength_loss_rec

namespace mat_elastic_fiber_rec {
inline constexpr std::uint32_t kSize = 126;
inline constexpr FieldDef Name = TextField("Name", 0, 40);
inline constexpr FieldDef RecordNumber = I16Field("RecordNumber", 40);
inline constexpr FieldDef Kind = U8Field("Kind", 42);
inline constexpr FieldDef UnitLength = U8Field("UnitLength", 43);
inline constexpr FieldDef UnitForce = U8Field("UnitForce", 44);
inline constexpr FieldDef Option1 = U8Field("Option1", 45);
inline constexpr FieldDef Option2 = U8Field("Option2", 46);
inline constexpr FieldDef Word1 = I16Field("Word1", 50);
inline constexpr FieldDef Word2 = I16Field("Word2", 52);
inline constexpr FieldDef Modulus = F32Field("Modulus", 58);
inline constexpr auto kFields = field_table::List(Name, RecordNumber, Kind, UnitLength, UnitForce,
                                                  Option1, Option2, Word1, Word2, Modulus);
static_assert(field_table::FitsWithoutOverlap(kFields, kSize));
}  // namespace mat_elastic_fiber_rec

namespace mat_elastic_shear_rec {
inline constexpr std::uint32_t kSize = 152;
inline constexpr FieldDef Name = TextField("Name", 0, 40);
inline constexpr FieldDef RecordNumber = I16Field("RecordNumber", 40);
inline constexpr FieldDef Kind = U8Field("Kind", 42);
inline constexpr FieldDef UnitLength = U8Field("UnitLength", 43);
inline constexpr FieldDef UnitForce = U8Field("UnitForce", 44);
inline constexpr FieldDef Option1 = U8Field("Option1", 45);
inline constexpr FieldDef Option2 = U8Field("Option2", 46);
inline constexpr FieldDef Option3 = U8Field("Option3", 47);
inline constexpr FieldDef HasSubRecord = U8Field("HasSubRecord", 48);
inline constexpr FieldDef Word1 = I16Field("Word1", 50);
inline constexpr FieldDef RecordNumberAgain = I16Field("RecordNumberAgain", 52);
inline constexpr FieldDef Modulus = F32Field("Modulus", 58);
// Tagged values: their type words fix where the fields behind them stand.
inline constexpr FieldDef Tagged1 = TaggedF64Field("Tagged1", 62);
inline constexpr FieldDef Tagged2 = TaggedI16Field("Tagged2", 72);
inline constexpr FieldDef Tagged3 = TaggedI16Field("Tagged3", 76);
inline constexpr FieldDef Word2 = F32Field("Word2", 80);
inline constexpr FieldDef Word3 = F32Field("Word3", 84);
inline constexpr FieldDef Factor = F32Field("Factor", 96);
inline constexpr FieldDef Word4 = F32Field("Word4", 100);
inline constexpr FieldDef Word5 = F32Field("Word5", 104);
inline constexpr FieldDef Word6 = F32Field("Word6", 108);
inline constexpr FieldDef Word7 = F32Field("Word7", 112);
inline constexpr auto kFields = field_table::List(
    Name, RecordNumber, Kind, UnitLength, UnitForce, Option1, Option2, Option3, HasSubRecord,
    Word1, RecordNumberAgain, Modulus, Tagged1, Tagged2, Tagged3, Word2, Word3, Factor, Word4,
    Word5, Word6, Word7);
static_assert(field_table::FitsWithoutOverlap(kFields, kSize));
}  // namespace mat_elastic_shear_rec

namespace mat_elastic_shear_sub_rec {
inline constexpr std::uint32_t kSize = 56;
inline constexpr FieldDef Flag = U8Field("Flag", 0);
inline constexpr auto kFields = field_table::List(Flag);
static_assert(field_table::FitsWithoutOverlap(kFields, kSize));
}  // namespace mat_elastic_shear_sub_rec

namespace mat_elastic_slab_rec {
inline constexpr std::uint32_t kSize = 174;
inline constexpr FieldDef Name = TextField("Name", 0, 40);
inline constexpr FieldDef RecordNumber = I16Field("RecordNumber", 40);
inline constexpr FieldDef Kind = U8Field("Kind", 42);
inline constexpr FieldDef UnitLength = U8Field("UnitLength", 43);
inline constexpr FieldDef UnitForce = U8Field("UnitForce", 44);
inline constexpr FieldDef Option1 = U8Field("Option1", 45);
inline constexpr FieldDef Option2 = U8Field("Option2", 46);
inline constexpr FieldDef Word1 = I16Field("Word1", 52);
inline constexpr FieldDef Modulus = F32Field("Modulus", 58);
inline constexpr FieldDef Poisson = F32Field("Poisson", 78);
inline constexpr auto kFields = field_table::List(Name, RecordNumber, Kind, UnitLength, UnitForce,
                                                  Option1, Option2, Word1, Modulus, Poisson);
static_assert(field_table::FitsWithoutOverlap(kFields, kSize));
}  // namespace mat_elastic_slab_rec

}  // namespace vtt
