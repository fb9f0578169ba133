#include "components/fill_trelk_component_material.h"

#include <string>

#include "source/host_model.h"
#include "source/vask_model.h"
#include "store/material_records.h"
#include "store/trelk_store.h"

namespace vtt {
namespace {

// The strain-hardening and softening values that the target application expects of each
// inelastic kind, given as they stand.
constexpr double kRebarFiberV3 = 0.0;
constexpr double kRebarFiberV4 = 0.2;
constexpr double kConcreteFiberV3 = 0.04;
constexpr double kConcreteFiberV4 = 0.02;
constexpr double kConcreteShearV1 = 0.0;
constexpr double kConcreteShearV3 = 0.0;
constexpr double kConcreteShearV4 = 2.0;

constexpr double kShearTagged1 = 0.95;
constexpr double kShearFactor = 0.8;

bool IsConcrete(const VaskPropMaterialObj& mat) {
  return mat.MatType == host_code::kMaterialConcrete;
}
bool IsSteel(const VaskPropMaterialObj& mat) { return mat.MatType == host_code::kMaterialSteel; }
bool IsRebar(const VaskPropMaterialObj& mat) { return mat.MatType == host_code::kMaterialRebar; }

// The elastic passes take concrete and steel in one loop, each with its own prefix.
std::string ElasticName(const VaskPropMaterialObj& mat, int index, std::string_view concrete,
                        std::string_view steel) {
  return NameWithSuffix(IsConcrete(mat) ? concrete : steel, mat.Label, index);
}

}  // namespace

std::int32_t AddTrelkMatInel(TrelkStore& store) { return store.AddComponent(Component::MatInel); }

std::int32_t AddTrelkMatElasticFiber(TrelkStore& store) {
  return store.AddComponent(Component::MatElasticFiber);
}

std::int32_t AddTrelkMatElasticShear(TrelkStore& store) {
  return store.AddComponent(Component::MatElasticShear);
}

std::int32_t AddTrelkMatElasticSlab(TrelkStore& store) {
  return store.AddComponent(Component::MatElasticSlab);
}

void SetTrelkMatInel(TrelkStore& store, std::int32_t number, std::string_view name,
                     std::int32_t id, MatInelKind kind, double stiffness, double v1, double v2,
                     double v3, double v4) {
  namespace f = mat_inel_rec;
  RecordList& list = store.Components(Component::MatInel);
  RecordRef rec = list.Record(number);
  rec.SetText(f::Name, name);
  rec.SetInt(f::RecordNumber, id);
  rec.SetInt(f::Kind, static_cast<std::int64_t>(kind));
  rec.SetInt(f::UnitLength, store.Units.UnitLength);
  rec.SetInt(f::UnitForce, store.Units.UnitForce);
  rec.SetInt(f::Option1, 0);
  rec.SetInt(f::Option2, 1);
  rec.SetInt(f::Option3, 0);
  rec.SetInt(f::Option4, 1);
  rec.SetInt(f::Option5, 1);
  rec.SetInt(f::Option6, 0);
  rec.SetInt(f::Option7, 0);
  rec.SetInt(f::Option8, 0);
  rec.SetInt(f::Option9, 10);
  rec.SetInt(f::HasStrengthLoss, 1);
  rec.SetInt(f::Word1, 0);
  rec.SetInt(f::RecordNumberAgain, id);
  rec.SetReal(f::Stiffness, stiffness);
  rec.SetReal(f::Word2, 0.0);
  const bool sideB = kind == MatInelKind::ConcreteFiber;
  rec.SetReal(sideB ? f::SideBValue1 : f::SideAValue1, v1);
  rec.SetReal(sideB ? f::SideBValue2 : f::SideAValue2, v2);
  rec.SetReal(sideB ? f::SideBValue3 : f::SideAValue3, v3);
  rec.SetReal(sideB ? f::SideBValue4 : f::SideAValue4, v4);
  rec.SetReal(sideB ? f::SideAValue1 : f::SideBValue1, 0.0);
  rec.SetReal(sideB ? f::SideAValue2 : f::SideBValue2, 0.0);
  rec.SetReal(sideB ? f::SideAValue3 : f::SideBValue3, 0.0);
  rec.SetReal(sideB ? f::SideAValue4 : f::SideBValue4, 0.0);
  list.SubRecord(number).SetInt(strength_loss_rec::Flag, 1);
}

void SetTrelkMatElasticFiber(TrelkStore& store, std::int32_t number, std::string_view name,
                             std::int32_t id, double modulus) {
  namespace f = mat_elastic_fiber_rec;
  RecordRef rec = store.Components(Component::MatElasticFiber).Record(number);
  rec.SetText(f::Name, name);
  rec.SetInt(f::RecordNumber, id);
  rec.SetInt(f::Kind, 4);
  rec.SetInt(f::UnitLength, store.Units.UnitLength);
  rec.SetInt(f::UnitForce, store.Units.UnitForce);
  rec.SetInt(f::Option1, 0);
  rec.SetInt(f::Option2, 1);
  rec.SetInt(f::Word1, 0);
  rec.SetInt(f::Word2, 0);
  rec.SetReal(f::Modulus, modulus);
}

void SetTrelkMatElasticShear(TrelkStore& store, std::int32_t number, std::string_view name,
                             std::int32_t id, double modulus) {
  namespace f = mat_elastic_shear_rec;
  RecordList& list = store.Components(Component::MatElasticShear);
  RecordRef rec = list.Record(number);
  rec.SetText(f::Name, name);
  rec.SetInt(f::RecordNumber, id);
  rec.SetInt(f::Kind, 5);
  rec.SetInt(f::UnitLength, store.Units.UnitLength);
  rec.SetInt(f::UnitForce, store.Units.UnitForce);
  rec.SetInt(f::Option1, 1);
  rec.SetInt(f::Option2, 0);
  rec.SetInt(f::Option3, 0);
  rec.SetInt(f::HasSubRecord, 1);
  rec.SetInt(f::Word1, 1);
  rec.SetInt(f::RecordNumberAgain, id);
  rec.SetReal(f::Modulus, modulus);
  rec.SetTaggedF64(f::Tagged1, kShearTagged1);
  rec.SetTaggedI16(f::Tagged2, 0);
  rec.SetTaggedI16(f::Tagged3, 0);
  rec.SetReal(f::Word2, 0.0);
  rec.SetReal(f::Word3, 0.0);
  rec.SetReal(f::Factor, kShearFactor);
  rec.SetReal(f::Word4, 0.0);
  rec.SetReal(f::Word5, 0.0);
  rec.SetReal(f::Word6, 0.0);
  rec.SetReal(f::Word7, 0.0);
  list.SubRecord(number).SetInt(mat_elastic_shear_sub_rec::Flag, 1);
}

void SetTrelkMatElasticSlab(TrelkStore& store, std::int32_t number, std::string_view name,
                            std::int32_t id, double modulus, double poisson) {
  namespace f = mat_elastic_slab_rec;
  RecordRef rec = store.Components(Component::MatElasticSlab).Record(number);
  rec.SetText(f::Name, name);
  rec.SetInt(f::RecordNumber, id);
  rec.SetInt(f::Kind, 6);
  rec.SetInt(f::UnitLength, store.Units.UnitLength);
  rec.SetInt(f::UnitForce, store.Units.UnitForce);
  rec.SetInt(f::Option1, 0);
  rec.SetInt(f::Option2, 1);
  rec.SetInt(f::Word1, 0);
  rec.SetReal(f::Modulus, modulus);
  rec.SetReal(f::Poisson, poisson);
}

void FillTrelkMaterials(const VaskModelObj& model, TrelkStore& store) {
  const int num = model.PropMatNum();

  // The three inelastic passes share one list, so their numbers run on from pass to pass.
  store.Components(Component::MatInel).SetCount(0);
  std::int32_t n = 1;
  for (int i = 1; i <= num; ++i) {
    VaskPropMaterialObj& mat = *model.PropMatObj(i);
    if (!IsRebar(mat)) continue;
    AddTrelkMatInel(store);
    SetTrelkMatInel(store, n, NameWithSuffix("MatIneFibRebar-", mat.Label, i), n,
                    MatInelKind::RebarFiber, mat.E(), mat.RebareFy, mat.RebareFu,
                    kRebarFiberV3, kRebarFiberV4);
    mat.idTrelkInelastic = n;
    ++n;
  }
  for (int i = 1; i <= num; ++i) {
    VaskPropMaterialObj& mat = *model.PropMatObj(i);
    if (!IsConcrete(mat)) continue;
    AddTrelkMatInel(store);
    SetTrelkMatInel(store, n, NameWithSuffix("MatIneFibConc-", mat.Label, i), n,
                    MatInelKind::ConcreteFiber, mat.E(), mat.Fy(), mat.Fu(), kConcreteFiberV3,
                    kConcreteFiberV4);
    mat.idTrelkInelastic = n;
    ++n;
  }
  for (int i = 1; i <= num; ++i) {
    VaskPropMaterialObj& mat = *model.PropMatObj(i);
    if (!IsConcrete(mat)) continue;
    AddTrelkMatInel(store);
    SetTrelkMatInel(store, n, NameWithSuffix("MatIneShearConc-", mat.Label, i), n,
                    MatInelKind::ConcreteShear, mat.G(), kConcreteShearV1, mat.Fu() / 2.0,
                    kConcreteShearV3, kConcreteShearV4);
    mat.idTrelkInelasticShear = n;
    ++n;
  }

  store.Components(Component::MatElasticFiber).SetCount(0);
  n = 1;
  for (int i = 1; i <= num; ++i) {
    VaskPropMaterialObj& mat = *model.PropMatObj(i);
    if (!IsConcrete(mat) && !IsSteel(mat)) continue;
    AddTrelkMatElasticFiber(store);
    SetTrelkMatElasticFiber(store, n,
                            ElasticName(mat, i, "MatElaFiberConc-", "MatElaFiberSteel-"), n,
                            mat.E());
    mat.idTrelkElasticFiber = n;
    ++n;
  }

  store.Components(Component::MatElasticShear).SetCount(0);
  n = 1;
  for (int i = 1; i <= num; ++i) {
    VaskPropMaterialObj& mat = *model.PropMatObj(i);
    if (!IsConcrete(mat) && !IsSteel(mat)) continue;
    AddTrelkMatElasticShear(store);
    SetTrelkMatElasticShear(store, n,
                            ElasticName(mat, i, "MatElaShearConc-", "MatElaShearSteel-"), n,
                            mat.G());
    mat.idTrelkElasticShear = n;
    ++n;
  }

  // The slab list's count is not reset: a fresh store holds no slab record, and the
  // records are written by the running number whatever the count.
  n = 1;
  for (int i = 1; i <= num; ++i) {
    VaskPropMaterialObj& mat = *model.PropMatObj(i);
    if (!IsConcrete(mat) && !IsSteel(mat)) continue;
    AddTrelkMatElasticSlab(store);
    SetTrelkMatElasticSlab(store, n, ElasticName(mat, i, "MatElaSlabConc-", "MatElaSlabSteel-"),
                           n, mat.E(), mat.Nu());
    mat.idTrelkElasticSlab = n;
    ++n;
  }
}

}  // namespace vtt
