#include "components/fill_trelk_component_xsect.h"

#include <string>

#include "source/host_model.h"
#include "source/vask_model.h"
#include "store/trelk_store.h"
#include "store/xsect_records.h"
#include "transfer/failure.h"

namespace vtt {
namespace {

// Host section types that have a drawn shape of their own.
constexpr int kFrameIShape = 1;
constexpr int kFrameRectangle = 8;

// Area sections: only shells take part, thin or layered.
constexpr int kAreaShell = 1;
constexpr int kShellThin = 1;
constexpr int kShellLayered = 6;

// Layer classification of a layered shell.
constexpr int kLayerFibreWall = 1;
constexpr int kLayerGeneralWallHorizontal = 2;
constexpr int kLayerGeneralWallBoth = 3;

// Every inelastic wall is cut into six concrete and two rebar fibres.
constexpr std::int32_t kConcreteFibres = 6;
constexpr std::int32_t kRebarFibres = 2;
constexpr std::int32_t kWallInelOption1 = 1;
// A thin shell carries no rebar of its own; its fibre wall takes this percentage.
constexpr double kThinShellRebarPercent = 0.4;
constexpr double kWallInelFactor1 = 0.3;
constexpr std::int64_t kFibreGroup = 4;

// The beam and the column record hold the same fields at different offsets; one filler
// serves both through this table.
struct XecFrameFields {
  FieldDef Option1, UnitLength, UnitForce, Kind, Shape, Option2;
  FieldDef Area, TorsionConstant, Inertia22, Inertia33, ShearArea2, ShearArea3;
  FieldDef Factor1, Factor2;
  FieldDef Modulus, Poisson, ShearModulus;
  FieldDef Depth2, Depth3, FlangeThickness, WebThickness;
  FieldDef RecordNumberAgain;
};

constexpr XecFrameFields FrameFieldsOfBeam() {
  namespace f = xsect_beam_rec;
  return {f::Option1,      f::UnitLength,   f::UnitForce,  f::Kind,
          f::Shape,        f::Option2,      f::Area,       f::TorsionConstant,
          f::Inertia22,    f::Inertia33,    f::ShearArea2, f::ShearArea3,
          f::Factor1,      f::Factor2,      f::Modulus,    f::Poisson,
          f::ShearModulus, f::Depth2,       f::Depth3,     f::FlangeThickness,
          f::WebThickness, f::RecordNumberAgain};
}

constexpr XecFrameFields FrameFieldsOfColumn() {
  namespace f = xsect_column_rec;
  return {f::Option1,      f::UnitLength,   f::UnitForce,  f::Kind,
          f::Shape,        f::Option2,      f::Area,       f::TorsionConstant,
          f::Inertia22,    f::Inertia33,    f::ShearArea2, f::ShearArea3,
          f::Factor1,      f::Factor2,      f::Modulus,    f::Poisson,
          f::ShearModulus, f::Depth2,       f::Depth3,     f::FlangeThickness,
          f::WebThickness, f::RecordNumberAgain};
}

void SetFrameSection(TrelkStore& store, Component list, const XecFrameFields& f,
                     std::int32_t number, std::string_view name, std::int32_t id, XecKind kind,
                     XecShape shape, const XecFrameValues& v) {
  RecordRef rec = store.Components(list).Record(number);
  rec.SetText(xsect_head::Name, name);
  rec.SetInt(xsect_head::RecordNumber, id);
  rec.SetText(xsect_head::Text1, "");
  rec.SetText(xsect_head::Text2, "");
  rec.SetInt(f.Option1, 0);
  rec.SetInt(f.UnitLength, store.Units.UnitLength);
  rec.SetInt(f.UnitForce, store.Units.UnitForce);
  rec.SetInt(f.Kind, static_cast<std::int64_t>(kind));
  rec.SetInt(f.Shape, static_cast<std::int64_t>(shape));
  rec.SetInt(f.Option2, 0);
  rec.SetReal(f.Area, v.Area);
  rec.SetReal(f.TorsionConstant, v.TorsionConstant);
  rec.SetReal(f.Inertia22, v.Inertia22);
  rec.SetReal(f.Inertia33, v.Inertia33);
  rec.SetReal(f.ShearArea2, v.ShearArea2);
  rec.SetReal(f.ShearArea3, v.ShearArea3);
  rec.SetReal(f.Factor1, 1.0);
  rec.SetReal(f.Factor2, 1.0);
  rec.SetReal(f.Modulus, v.Modulus);
  rec.SetReal(f.Poisson, v.Poisson);
  rec.SetReal(f.ShearModulus, v.ShearModulus);
  rec.SetReal(f.Depth2, v.Depth2);
  rec.SetReal(f.Depth3, v.Depth3);
  rec.SetReal(f.FlangeThickness, v.FlangeThickness);
  rec.SetReal(f.WebThickness, v.WebThickness);
  rec.SetInt(f.RecordNumberAgain, id);
}

bool IsSteel(const VaskPropMaterialObj& mat) { return mat.MatType == host_code::kMaterialSteel; }
bool IsConcrete(const VaskPropMaterialObj& mat) {
  return mat.MatType == host_code::kMaterialConcrete;
}
bool IsRebar(const VaskPropMaterialObj& mat) { return mat.MatType == host_code::kMaterialRebar; }

bool IsSteelSection(const VaskPropFrameSectObj& section) {
  return section.PropMatObj != nullptr && IsSteel(*section.PropMatObj);
}
bool IsConcreteSection(const VaskPropFrameSectObj& section) {
  return section.PropMatObj != nullptr && IsConcrete(*section.PropMatObj);
}

XecShape SteelShape(const VaskPropFrameSectObj& section) {
  return section.PropType == kFrameIShape ? XecShape::SteelI : XecShape::General;
}
XecShape ConcreteShape(const VaskPropFrameSectObj& section) {
  return section.PropType == kFrameRectangle ? XecShape::Rectangle : XecShape::General;
}

// The material of a thin shell, or null for any other area section.
const VaskPropMaterialObj* ThinShellMaterial(const VaskPropAreaSectObj& section) {
  if (section.PropType != kAreaShell || section.ShellType != kShellThin) return nullptr;
  return section.PropMatObj;
}

// The governing concrete of a layered shell that the layer classification made a wall
// of, or null.
const VaskPropMaterialObj* LayeredWallConcrete(const VaskPropAreaSectObj& section) {
  if (section.PropType != kAreaShell || section.ShellType != kShellLayered) return nullptr;
  return section.LayerPropMatConcObj;
}

// 100 x rebar / concrete thickness. With a concrete thickness of 0 the division fails,
// and the failure ends the transfer.
double RebarPercentOf(const VaskPropAreaSectObj& section, double rebar_thickness) {
  if (section.LayerTrelkThick == 0.0) {
    throw TransferFailure("Division by zero: the layered area section \"" + section.Label +
                          "\" has a concrete thickness of 0, so the rebar percentage of its "
                          "wall cannot be worked out.");
  }
  return 100.0 * rebar_thickness / section.LayerTrelkThick;
}

// The one material of every rebar fibre of every wall: the last rebar material's
// inelastic fibre, or failing that the last steel material's elastic fibre, or 0.
std::int32_t RebarFibreMaterial(const VaskModelObj& model) {
  std::int32_t material = 0;
  for (int i = 1; i <= model.PropMatNum(); ++i) {
    const VaskPropMaterialObj& mat = *model.PropMatObj(i);
    if (IsSteel(mat)) material = mat.idTrelkElasticFiber;
  }
  for (int i = 1; i <= model.PropMatNum(); ++i) {
    const VaskPropMaterialObj& mat = *model.PropMatObj(i);
    if (IsRebar(mat)) material = mat.idTrelkInelastic;
  }
  return material;
}

void SetWallFibre(RecordRef& rec, int k, bool is_concrete, std::int32_t material, float area,
                  float position) {
  namespace f = xsect_wall_inel_rec;
  rec.SetInt(f::FibreGroup(k), kFibreGroup);
  rec.SetInt(f::FibreIsConcrete(k), is_concrete ? 1 : 0);
  rec.SetInt(f::FibreFlag(k), 1);
  rec.SetInt(f::FibreMaterial(k), material);
  rec.SetReal(f::FibreArea(k), -area);
  rec.SetReal(f::FibrePosition(k), position);
}

// The beam passes (steel, concrete, embedded), then the column passes (steel, concrete).
void FillFrameSections(const VaskModelObj& model, TrelkStore& store) {
  const int num = model.PropFrameSectNum();

  store.Components(Component::XecBeam).SetCount(0);
  std::int32_t n = 1;
  for (int i = 1; i <= num; ++i) {
    VaskPropFrameSectObj& section = *model.PropFrameSectObj(i);
    if (!IsSteelSection(section)) continue;
    AddTrelkXecBeam(store);
    SetTrelkXecBeam(store, n, NameWithSuffix("XecBmS-", section.Label, i), n, XecKind::SteelBeam,
                    SteelShape(section), XecFrameValuesOf(section));
    section.idTrelkXsectSteelBeam = n;
    ++n;
  }
  for (int i = 1; i <= num; ++i) {
    VaskPropFrameSectObj& section = *model.PropFrameSectObj(i);
    if (!IsConcreteSection(section)) continue;
    AddTrelkXecBeam(store);
    SetTrelkXecBeam(store, n, NameWithSuffix("XecBmC-", section.Label, i), n,
                    XecKind::ConcreteBeam, ConcreteShape(section), XecFrameValuesOf(section));
    section.idTrelkXsectConcBeam = n;
    ++n;
  }
  // Embedded sections are made by the program, not named by the user: their names are
  // the index alone.
  for (int i = 1; i <= model.PropEmbedFrameSectNum(); ++i) {
    VaskPropFrameSectObj& section = *model.PropEmbedFrameSectObj(i);
    if (section.PropMatObj == nullptr) continue;
    AddTrelkXecBeam(store);
    SetTrelkXecBeam(store, n, "XecEmbed-" + std::to_string(i), n, XecKind::ConcreteBeam,
                    XecShape::Rectangle, XecFrameValuesOf(section));
    section.idTrelkXsectEmbedBeam = n;
    ++n;
  }

  store.Components(Component::XecColumn).SetCount(0);
  n = 1;
  for (int i = 1; i <= num; ++i) {
    VaskPropFrameSectObj& section = *model.PropFrameSectObj(i);
    if (!IsSteelSection(section)) continue;
    AddTrelkXecColumn(store);
    SetTrelkXecColumn(store, n, NameWithSuffix("XecColS-", section.Label, i), n,
                      XecKind::SteelColumn, SteelShape(section), XecFrameValuesOf(section));
    // The steel beam member takes the column's number as well, overwriting the beam
    // record's number: from here on both members name the column section.
    section.idTrelkXsectSteelBeam = n;
    section.idTrelkXsectSteelCol = n;
    ++n;
  }
  for (int i = 1; i <= num; ++i) {
    VaskPropFrameSectObj& section = *model.PropFrameSectObj(i);
    if (!IsConcreteSection(section)) continue;
    AddTrelkXecColumn(store);
    SetTrelkXecColumn(store, n, NameWithSuffix("XecColC-", section.Label, i), n,
                      XecKind::ConcreteColumn, ConcreteShape(section),
                      XecFrameValuesOf(section));
    section.idTrelkXsectConcCol = n;
    ++n;
  }
}

// The elastic wall passes: shear walls of thin shells, then general walls of
// layered shells that act as general walls in the horizontal direction only.
void FillElasticWalls(const VaskModelObj& model, TrelkStore& store) {
  const int num = model.PropAreaSectNum();
  store.Components(Component::XecWallElastic).SetCount(0);
  std::int32_t n = 1;
  for (int i = 1; i <= num; ++i) {
    VaskPropAreaSectObj& section = *model.PropAreaSectObj(i);
    const VaskPropMaterialObj* mat = ThinShellMaterial(section);
    if (mat == nullptr || (!IsConcrete(*mat) && !IsSteel(*mat))) continue;
    const char* prefix = IsConcrete(*mat) ? "XecWallElaC-" : "XecWallElaS-";
    AddTrelkXecWallElastic(store);
    SetTrelkXecWallElastic(store, n, NameWithSuffix(prefix, section.Label, i), n,
                           XecKind::ShearWallElastic, mat->idTrelkElasticFiber, section.Thick,
                           section.Bending, mat->E(), mat->Nu());
    section.idTrelkXSectWallEla = n;
    ++n;
  }
  for (int i = 1; i <= num; ++i) {
    VaskPropAreaSectObj& section = *model.PropAreaSectObj(i);
    const VaskPropMaterialObj* concrete = LayeredWallConcrete(section);
    if (concrete == nullptr || section.LayerTrelkType != kLayerGeneralWallHorizontal) continue;
    AddTrelkXecWallElastic(store);
    SetTrelkXecWallElastic(store, n, NameWithSuffix("XecGWallElaH-", section.Label, i), n,
                           XecKind::GeneralWallElastic, concrete->idTrelkElasticFiber,
                           section.LayerTrelkThick, section.LayerTrelkThickBend, concrete->E(),
                           concrete->Nu());
    section.idTrelkXSectGWallEla = n;
    ++n;
  }
}

// The inelastic wall passes: fibre walls (thin concrete shells and layered fibre walls),
// then general walls, horizontal and, for walls acting in both directions, vertical.
void FillInelasticWalls(const VaskModelObj& model, TrelkStore& store) {
  const std::int32_t rebar_material = RebarFibreMaterial(model);
  const int num = model.PropAreaSectNum();
  store.Components(Component::XecWallInel).SetCount(0);
  std::int32_t n = 1;
  const auto add_wall = [&](const std::string& name, XecKind kind,
                            const VaskPropMaterialObj& concrete, double thickness,
                            double bending_thickness, double rebar_percent) {
    AddTrelkXecWallInel(store);
    SetTrelkXecWallInel(store, n, name, n, kind, kWallInelOption1, kConcreteFibres,
                        kRebarFibres, concrete.idTrelkInelastic, rebar_material, thickness,
                        bending_thickness, rebar_percent, concrete.E(), concrete.Nu());
    return n++;
  };

  for (int i = 1; i <= num; ++i) {
    VaskPropAreaSectObj& section = *model.PropAreaSectObj(i);
    if (const VaskPropMaterialObj* mat = ThinShellMaterial(section);
        mat != nullptr && IsConcrete(*mat)) {
      // Whatever its name says, the record is made and numbered like any other.
      section.idTrelkXSectWallIne =
          add_wall(NameWithSuffix("Notused-XSecWallCIne-", section.Label, i),
                   XecKind::ShearWallInel, *mat, section.Thick, section.Bending,
                   kThinShellRebarPercent);
    } else if (const VaskPropMaterialObj* concrete = LayeredWallConcrete(section);
               concrete != nullptr && section.LayerTrelkType == kLayerFibreWall) {
      section.idTrelkXSectWallIne =
          add_wall(NameWithSuffix("XecWallCIneV-", section.Label, i), XecKind::ShearWallInel,
                   *concrete, section.LayerTrelkThick, section.LayerTrelkThickBend,
                   RebarPercentOf(section, section.LayerTrelkThickRebarV));
    }
  }
  for (int i = 1; i <= num; ++i) {
    VaskPropAreaSectObj& section = *model.PropAreaSectObj(i);
    const VaskPropMaterialObj* concrete = LayeredWallConcrete(section);
    if (concrete == nullptr || (section.LayerTrelkType != kLayerGeneralWallHorizontal &&
                                section.LayerTrelkType != kLayerGeneralWallBoth)) {
      continue;
    }
    section.idTrelkXSectGWallIneH =
        add_wall(NameWithSuffix("XecGWallCIneH-", section.Label, i), XecKind::GeneralWallInel,
                 *concrete, section.LayerTrelkThick, section.LayerTrelkThickBend,
                 RebarPercentOf(section, section.LayerTrelkThickRebarH));
    if (section.LayerTrelkType == kLayerGeneralWallBoth) {
      section.idTrelkXSectGWallIneV =
          add_wall(NameWithSuffix("XecGWallCIneV-", section.Label, i),
                   XecKind::GeneralWallInel, *concrete, section.LayerTrelkThick,
                   section.LayerTrelkThickBend,
                   RebarPercentOf(section, section.LayerTrelkThickRebarV));
    }
  }
}

// The slab pass: a slab for every thin shell of concrete or steel. Unlike the other lists, the
// slab list's count is not set back to 0 first; numbering from 1 relies on the count the
// store starts with.
void FillSlabs(const VaskModelObj& model, TrelkStore& store) {
  std::int32_t n = 1;
  for (int i = 1; i <= model.PropAreaSectNum(); ++i) {
    VaskPropAreaSectObj& section = *model.PropAreaSectObj(i);
    const VaskPropMaterialObj* mat = ThinShellMaterial(section);
    if (mat == nullptr || (!IsConcrete(*mat) && !IsSteel(*mat))) continue;
    const char* prefix = IsConcrete(*mat) ? "XecElaSlabC-" : "XecElaSlabS-";
    AddTrelkXecSlab(store);
    SetTrelkXecSlab(store, n, NameWithSuffix(prefix, section.Label, i), n,
                    mat->idTrelkElasticSlab, section.Thick, section.Bending, mat->E(),
                    mat->UnitWeight);
    section.idTrelkXSectSlabEla = n;
    ++n;
  }
}

}  // namespace

XecFrameValues XecFrameValuesOf(const VaskPropFrameSectObj& section) {
  const VaskPropMaterialObj& mat = *section.PropMatObj;
  return {section.area, section.TorsionConst, section.I22, section.I33, section.As2,
          section.As3,  mat.E(),              mat.Nu(),    mat.G(),     section.t2,
          section.t3,   section.tf,           section.tw};
}

std::int32_t AddTrelkXecBeam(TrelkStore& store) { return store.AddComponent(Component::XecBeam); }

std::int32_t AddTrelkXecColumn(TrelkStore& store) {
  return store.AddComponent(Component::XecColumn);
}

std::int32_t AddTrelkXecWallElastic(TrelkStore& store) {
  return store.AddComponent(Component::XecWallElastic);
}

std::int32_t AddTrelkXecWallInel(TrelkStore& store) {
  return store.AddComponent(Component::XecWallInel);
}

std::int32_t AddTrelkXecSlab(TrelkStore& store) { return store.AddComponent(Component::XecSlab); }

void SetTrelkXecBeam(TrelkStore& store, std::int32_t number, std::string_view name,
                     std::int32_t id, XecKind kind, XecShape shape,
                     const XecFrameValues& values) {
  SetFrameSection(store, Component::XecBeam, FrameFieldsOfBeam(), number, name, id, kind, shape,
                  values);
}

void SetTrelkXecColumn(TrelkStore& store, std::int32_t number, std::string_view name,
                       std::int32_t id, XecKind kind, XecShape shape,
                       const XecFrameValues& values) {
  SetFrameSection(store, Component::XecColumn, FrameFieldsOfColumn(), number, name, id, kind,
                  shape, values);
}

void SetTrelkXecWallElastic(TrelkStore& store, std::int32_t number, std::string_view name,
                            std::int32_t id, XecKind kind, std::int32_t material_id,
                            double thickness, double bending_thickness, double modulus,
                            double poisson) {
  namespace f = xsect_wall_elastic_rec;
  RecordRef rec = store.Components(Component::XecWallElastic).Record(number);
  rec.SetText(f::Name, name);
  rec.SetInt(f::RecordNumber, id);
  rec.SetInt(f::Kind, static_cast<std::int64_t>(kind));
  rec.SetInt(f::UnitLength, store.Units.UnitLength);
  rec.SetInt(f::UnitForce, store.Units.UnitForce);
  rec.SetInt(f::Option1, 1);
  rec.SetInt(f::Option2, 0);
  rec.SetInt(f::Word1, 0);
  rec.SetReal(f::Thickness, thickness);
  rec.SetReal(f::BendingThickness, bending_thickness);
  rec.SetReal(f::Modulus, modulus);
  rec.SetReal(f::BendingThicknessAgain, bending_thickness);
  rec.SetReal(f::Poisson, poisson);
  rec.SetInt(f::Word2, 4);
  rec.SetInt(f::MaterialId, material_id);
}

void SetTrelkXecWallInel(TrelkStore& store, std::int32_t number, std::string_view name,
                         std::int32_t id, XecKind kind, std::int32_t option1,
                         std::int32_t concrete_fibres, std::int32_t rebar_fibres,
                         std::int32_t concrete_material, std::int32_t rebar_material,
                         double thickness, double bending_thickness, double rebar_percent,
                         double modulus, double poisson) {
  namespace f = xsect_wall_inel_rec;
  RecordRef rec = store.Components(Component::XecWallInel).Record(number);
  rec.SetText(f::Name, name);
  rec.SetInt(f::RecordNumber, id);
  rec.SetText(f::Text1, "");
  rec.SetText(f::Text2, "");
  rec.SetInt(f::Kind, static_cast<std::int64_t>(kind));
  rec.SetInt(f::UnitLength, store.Units.UnitLength);
  rec.SetInt(f::UnitForce, store.Units.UnitForce);
  rec.SetInt(f::Option1, option1);
  rec.SetInt(f::Option2, 0);
  // No sub-record: the wall's behaviour is all in its fibres.
  rec.SetInt(f::HasSubRecord, 0);
  rec.SetInt(f::ConcreteFibreCount, concrete_fibres);
  rec.SetInt(f::Word1, 0);
  rec.SetInt(f::Word2, 0);
  rec.SetInt(f::RecordNumberAgain, id);
  rec.SetReal(f::RebarPercent, rebar_percent);
  rec.SetReal(f::Factor1, kWallInelFactor1);
  rec.SetReal(f::Word3, 0.0);
  rec.SetReal(f::Thickness, thickness);
  rec.SetReal(f::Word4, 0.0);
  rec.SetReal(f::Word5, 0.0);
  rec.SetReal(f::BendingThickness, bending_thickness);
  rec.SetReal(f::Modulus, modulus);
  rec.SetReal(f::BendingThicknessAgain, bending_thickness);
  rec.SetReal(f::Poisson, poisson);
  LayOutTrelkWallFibres(store, number, concrete_fibres, rebar_fibres, concrete_material,
                        rebar_material, thickness, rebar_percent);
}

void SetTrelkXecSlab(TrelkStore& store, std::int32_t number, std::string_view name,
                     std::int32_t id, std::int32_t material_id, double thickness,
                     double bending_thickness, double /*modulus*/, double unit_weight) {
  namespace f = xsect_slab_rec;
  RecordRef rec = store.Components(Component::XecSlab).Record(number);
  rec.SetText(f::Name, name);
  rec.SetInt(f::RecordNumber, id);
  rec.SetInt(f::Kind, static_cast<std::int64_t>(XecKind::Slab));
  rec.SetInt(f::UnitLength, store.Units.UnitLength);
  rec.SetInt(f::UnitForce, store.Units.UnitForce);
  rec.SetInt(f::Option1, 0);
  rec.SetInt(f::Word1, 0);
  rec.SetInt(f::Word2, 0);
  rec.SetReal(f::Thickness, thickness);
  rec.SetReal(f::BendingThickness, bending_thickness);
  rec.SetReal(f::ThicknessAgain, thickness);
  rec.SetReal(f::UnitWeight, unit_weight);
  rec.SetInt(f::Option2, 4);
  rec.SetInt(f::Option3, 4);
  rec.SetInt(f::Word3, 6);
  rec.SetInt(f::MaterialId, material_id);
  rec.SetInt(f::Option4, 4);
  rec.SetInt(f::Option5, 4);
  rec.SetInt(f::Word4, 6);
  rec.SetInt(f::MaterialIdAgain, material_id);
}

// Where single precision enters, and nowhere else:
// - concrete fibres: the area T / n, the first position 0.5 / n - 0.5 and the step 1 / n
//   are worked out in double and rounded to single; each next position is the single sum
//   of the last position and the step, so rounding accumulates along the wall (with
//   n = 6 the third position is -0.08333331, not the -0.08333334 that (k - 0.5) / n - 0.5
//   rounded once would give);
// - rebar fibres: the percentage is first rounded to single, then P x T / (m x 100) is
//   worked out in double and rounded to single; positions step as for the concrete.
void LayOutTrelkWallFibres(TrelkStore& store, std::int32_t number, std::int32_t concrete_fibres,
                           std::int32_t rebar_fibres, std::int32_t concrete_material,
                           std::int32_t rebar_material, double thickness, double rebar_percent) {
  namespace f = xsect_wall_inel_rec;
  RecordRef rec = store.Components(Component::XecWallInel).Record(number);
  const std::int32_t n = concrete_fibres;
  if (n > 0) {
    const float area = static_cast<float>(thickness / n);
    const float step = static_cast<float>(1.0 / n);
    float position = static_cast<float>(0.5 / n - 0.5);
    for (int k = 1; k <= n; ++k) {
      SetWallFibre(rec, k, true, concrete_material, area, position);
      position += step;
    }
  }
  rec.SetInt(f::RebarFibreCount, rebar_fibres);
  const std::int32_t m = rebar_fibres;
  if (m > 0) {
    const float percent = static_cast<float>(rebar_percent);
    const float area =
        static_cast<float>(static_cast<double>(percent) * thickness / static_cast<double>(m * 100));
    const float step = static_cast<float>(1.0 / m);
    float position = static_cast<float>(0.5 / m - 0.5);
    for (int k = n + 1; k <= n + m; ++k) {
      SetWallFibre(rec, k, false, rebar_material, area, position);
      position += step;
    }
  }
  rec.SetInt(f::FibreCount, n + m);
}

void FillTrelkCrossSections(const VaskModelObj& model, TrelkStore& store) {
  FillFrameSections(model, store);
  FillElasticWalls(model, store);
  FillInelasticWalls(model, store);
  FillSlabs(model, store);
}

}  // namespace vtt
