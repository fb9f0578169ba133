#include "components/fill_trelk_component_inelastic.h"

#include <array>
#include <cmath>
#include <cstddef>
#include <string>

#include "source/host_model.h"
#include "source/vask_model.h"
#include "store/fema_records.h"
#include "store/material_records.h"
#include "store/trelk_store.h"
#include "store/units.h"

namespace vtt {
namespace {

// The FEMA components stand on a frame section of the target.
constexpr std::int32_t kSectionKind = 3;

constexpr double kStiffnessFactor = 1.0;
// 196.85 inches, five metres.
constexpr double kReferenceLengthInches = 196.85;
// The placeholder capacities are worked out from a stress of 100 ksi.
constexpr double kCapacityStressKsi = 100.0;
constexpr double kConcreteBeamMomentFactor = 0.004;
constexpr double kConcreteColumnAxialFactor = 0.008;
constexpr double kResidualStrength = 0.4;

constexpr std::array<double, 3> kSteelBeamDeformations = {20.0, 11.0, 13.0};
constexpr std::array<double, 3> kConcreteBeamDeformations = {0.1, 0.04, 0.08};
constexpr std::array<double, 4> kSteelColumnDeformations = {20.0, 20.0, 20.0, 20.0};
constexpr std::array<double, 4> kConcreteColumnDeformations = {0.003, 0.005, 0.017, 0.02};
constexpr std::array<double, 9> kColumnParams = {0.15, 0.8, 0.8, 1.1, 2.0,
                                                 2.0,  2.0, 2.0, 1.4};
constexpr std::array<double, 3> kLimitStates = {2.0, 7.0, 9.0};

// L: one length unit of the program in inches, from the store's single-precision table.
double InchesPerProgramLength(const TrelkStore& store) {
  return static_cast<double>(
      InchesPerUnitLength.at(static_cast<std::size_t>(store.Units.UnitLength)));
}

// F: one force unit of the program in kips.
double KipsPerProgramForce(const TrelkStore& store) {
  return static_cast<double>(KipsPerUnitForce.at(static_cast<std::size_t>(store.Units.UnitForce)));
}

// S = F / L / L: one stress unit of the program in ksi.
double KsiPerProgramStress(const TrelkStore& store) {
  const double length = InchesPerProgramLength(store);
  return KipsPerProgramForce(store) / length / length;
}

// The fields both records hold at the same offsets.
void SetHead(RecordRef rec, const TrelkStore& store, std::string_view name, std::int32_t number,
             std::int32_t kind, std::int32_t sectionSubKind, std::int32_t crossSectionNumber,
             const FemaElasticValues& values) {
  namespace f = fema_head;
  rec.SetText(f::Name, name);
  rec.SetInt(f::ComponentNumber, number);
  rec.SetInt(f::ComponentKind, kind);
  rec.SetInt(f::UnitLength, store.Units.UnitLength);
  rec.SetInt(f::UnitForce, store.Units.UnitForce);
  rec.SetInt(f::SectionKind, kSectionKind);
  rec.SetInt(f::SectionSubKind, sectionSubKind);
  rec.SetInt(f::CrossSectionNumber, crossSectionNumber);
  rec.SetInt(f::ComponentNumberCopy, number);
  rec.SetReal(f::E, values.E);
  rec.SetReal(f::Nu, values.Nu);
  rec.SetReal(f::G, values.G);
  rec.SetReal(f::Area, values.Area);
  rec.SetReal(f::As2, values.As2);
  rec.SetReal(f::As3, values.As3);
  rec.SetReal(f::TorsionConst, values.TorsionConst);
  rec.SetReal(f::I22, values.I22);
  rec.SetReal(f::I33, values.I33);
}

template <std::size_t N>
void SetReals(RecordRef rec, const std::array<FieldDef, N>& fields,
              const std::array<double, N>& values) {
  for (std::size_t k = 0; k < N; ++k) rec.SetReal(fields[k], values[k]);
}

// One pass of FillTrelkFemaComponents: which sections it takes, how it names and kinds
// their components, which cross section the component stands on (with that section's type
// in the target) and where the component's number goes.
template <class Kind>
struct FemaPass {
  int materialType;
  std::string_view prefix;
  Kind kind;
  std::int32_t sectionSubKind;
  int VaskPropFrameSectObj::*crossSection;
  int VaskPropFrameSectObj::*component;
};

using Sect = VaskPropFrameSectObj;

constexpr std::array<FemaPass<FemaBeamKind>, 2> kBeamPasses = {{
    {host_code::kMaterialSteel, "IneFemaBmS-", FemaBeamKind::Steel, 4,
     &Sect::idTrelkXsectSteelBeam, &Sect::idTrelkInelasFemaSteelBeam},
    {host_code::kMaterialConcrete, "IneFemaBmC-", FemaBeamKind::Concrete, 3,
     &Sect::idTrelkXsectConcBeam, &Sect::idTrelkInelasFemaConcBeam},
}};

constexpr std::array<FemaPass<FemaColumnKind>, 2> kColumnPasses = {{
    {host_code::kMaterialSteel, "IneFemaColS-", FemaColumnKind::Steel, 7,
     &Sect::idTrelkXsectSteelCol, &Sect::idTrelkInelasFemaSteelCol},
    {host_code::kMaterialConcrete, "IneFemaColC-", FemaColumnKind::Concrete, 6,
     &Sect::idTrelkXsectConcCol, &Sect::idTrelkInelasFemaConcCol},
}};

// Runs the passes of one list under one running number. A section without material is
// left out of every pass. `fill` adds and writes one record.
template <class Kind, class Fill>
void RunPasses(const VaskModelObj& model, const std::array<FemaPass<Kind>, 2>& passes,
               const Fill& fill) {
  std::int32_t n = 1;
  for (const FemaPass<Kind>& pass : passes) {
    for (int i = 1; i <= model.PropFrameSectNum(); ++i) {
      VaskPropFrameSectObj& section = *model.PropFrameSectObj(i);
      const VaskPropMaterialObj* mat = section.PropMatObj;
      if (mat == nullptr || mat->MatType != pass.materialType) continue;
      fill(n, NameWithSuffix(pass.prefix, section.Label, i), pass, section, *mat);
      section.*pass.component = n;
      ++n;
    }
  }
}

}  // namespace

FemaElasticValues FemaElasticValuesOf(const VaskPropFrameSectObj& section) {
  const VaskPropMaterialObj& mat = *section.PropMatObj;
  FemaElasticValues v;
  v.E = mat.E();
  v.Nu = mat.Nu();
  v.G = mat.G();
  v.Area = section.area;
  v.As2 = section.As2;
  v.As3 = section.As3;
  v.TorsionConst = section.TorsionConst;
  v.I22 = section.I22;
  v.I33 = section.I33;
  return v;
}

std::int32_t AddTrelkFemaBeam(TrelkStore& store) { return store.AddComponent(Component::FemaBeam); }

std::int32_t AddTrelkFemaColumn(TrelkStore& store) {
  return store.AddComponent(Component::FemaColumn);
}

void FillTrelkFemaBeamRecord(TrelkStore& store, std::int32_t componentNumber,
                             std::string_view name, std::int32_t number, FemaBeamKind kind,
                             std::int32_t sectionSubKind, std::int32_t crossSectionNumber,
                             const FemaElasticValues& values) {
  namespace f = fema_beam_rec;
  RecordList& list = store.Components(Component::FemaBeam);
  RecordRef rec = list.Record(componentNumber);
  const bool concrete = kind == FemaBeamKind::Concrete;
  const double length = InchesPerProgramLength(store);
  const double stress = KsiPerProgramStress(store);
  const double area = values.Area;

  SetHead(rec, store, name, number, static_cast<std::int32_t>(kind), sectionSubKind,
          crossSectionNumber, values);
  rec.SetInt(f::Option1, 1);
  rec.SetInt(f::Option2, 0);
  rec.SetInt(f::Option3, 10);
  rec.SetInt(f::HasStrengthLoss, 0);
  rec.SetReal(f::StiffnessFactor, kStiffnessFactor);
  rec.SetReal(f::ReferenceLength, concrete ? kReferenceLengthInches / length : 0.0);
  rec.SetReal(f::Param1, 0.0);
  rec.SetReal(f::MomentCapacity,
              concrete ? area * kCapacityStressKsi * kConcreteBeamMomentFactor / stress *
                             std::sqrt(area)
                       : kCapacityStressKsi / stress * std::sqrt(area));
  rec.SetReal(f::Param2, 0.0);
  SetReals(rec, std::array{f::Deformation1, f::Deformation2, f::Deformation3},
           concrete ? kConcreteBeamDeformations : kSteelBeamDeformations);
  rec.SetReal(f::ResidualStrength, kResidualStrength);
  SetReals(rec, std::array{f::LimitState1, f::LimitState2, f::LimitState3}, kLimitStates);
  // Kept in step with the record, though HasStrengthLoss 0 keeps it out of the file.
  list.SubRecord(componentNumber).SetInt(strength_loss_rec::Flag, 1);
}

void FillTrelkFemaColumnRecord(TrelkStore& store, std::int32_t componentNumber,
                               std::string_view name, std::int32_t number, FemaColumnKind kind,
                               std::int32_t sectionSubKind, std::int32_t crossSectionNumber,
                               const FemaElasticValues& values, double strength) {
  namespace f = fema_column_rec;
  RecordList& list = store.Components(Component::FemaColumn);
  RecordRef rec = list.Record(componentNumber);
  const bool concrete = kind == FemaColumnKind::Concrete;
  const double length = InchesPerProgramLength(store);
  const double stress = KsiPerProgramStress(store);
  const double area = values.Area;

  SetHead(rec, store, name, number, static_cast<std::int32_t>(kind), sectionSubKind,
          crossSectionNumber, values);
  rec.SetInt(f::Option1, 1);
  rec.SetInt(f::Option2, 1);
  rec.SetInt(f::HasStrengthLoss, 1);
  rec.SetReal(f::StiffnessFactor, kStiffnessFactor);
  rec.SetReal(f::ReferenceLength, concrete ? kReferenceLengthInches / length : 0.0);
  rec.SetReal(f::AxialCapacity1, concrete ? area * kCapacityStressKsi *
                                                kConcreteColumnAxialFactor / stress
                                          : area * strength);
  // The concrete capacities build on AxialCapacity1 as stored, in single precision.
  const double axial1 = rec.GetReal(f::AxialCapacity1);
  rec.SetReal(f::AxialCapacity2, concrete ? area * strength + axial1 : area * strength);
  const double moment = concrete ? axial1 * std::sqrt(area) / 2.0 * 3.0 / 4.0
                                 : area * strength * std::sqrt(area) / 2.0;
  rec.SetReal(f::MomentCapacity2, moment);
  rec.SetReal(f::MomentCapacity3, moment);
  SetReals(rec, std::array{f::Deformation1, f::Deformation2, f::Deformation3, f::Deformation4},
           concrete ? kConcreteColumnDeformations : kSteelColumnDeformations);
  SetReals(rec,
           std::array{f::Param1, f::Param2, f::Param3, f::Param4, f::Param5, f::Param6,
                      f::Param7, f::Param8, f::Param9},
           kColumnParams);
  // The column record has one limit-state field where the beam has three: the three
  // limit states go into it in turn, and the last one is what stays.
  for (double limit : kLimitStates) rec.SetReal(f::LimitState3, limit);
  list.SubRecord(componentNumber).SetInt(fema_column_sub_rec::Flag, 1);
}

void FillTrelkFemaComponents(const VaskModelObj& model, TrelkStore& store) {
  store.Components(Component::FemaBeam).SetCount(0);
  RunPasses(model, kBeamPasses,
            [&store](std::int32_t n, const std::string& name, const FemaPass<FemaBeamKind>& pass,
                     const VaskPropFrameSectObj& section, const VaskPropMaterialObj&) {
              AddTrelkFemaBeam(store);
              FillTrelkFemaBeamRecord(store, n, name, n, pass.kind, pass.sectionSubKind,
                                      section.*pass.crossSection, FemaElasticValuesOf(section));
            });

  store.Components(Component::FemaColumn).SetCount(0);
  RunPasses(model, kColumnPasses,
            [&store](std::int32_t n, const std::string& name,
                     const FemaPass<FemaColumnKind>& pass, const VaskPropFrameSectObj& section,
                     const VaskPropMaterialObj& mat) {
              const double strength =
                  pass.kind == FemaColumnKind::Concrete ? mat.ConcFc : mat.Fu();
              AddTrelkFemaColumn(store);
              FillTrelkFemaColumnRecord(store, n, name, n, pass.kind, pass.sectionSubKind,
                                        section.*pass.crossSection,
                                        FemaElasticValuesOf(section), strength);
            });
}

}  // namespace vtt
