#include "source/vask_section_links.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <string>
#include <vector>

#include "source/host_model.h"
#include "source/vask_model.h"
#include "transfer/failure.h"

namespace vtt {
namespace {

char AsciiLowerByte(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

// Codes of the sections the layer rule applies to: a shell (area section type 1) of the
// layered kind (shell type 6).
constexpr int kAreaSectionShell = 1;
constexpr int kShellLayered = 6;

// Layer types of a layered shell: a shell layer carries membrane and bending forces, a
// membrane layer membrane forces only, a plate layer bending only.
constexpr int kLayerShell = 1;
constexpr int kLayerMembrane = 2;
constexpr int kLayerPlate = 3;
// Behaviour code of a layer's S11 or S22 component that makes it nonlinear.
constexpr int kNonlinear = 2;

// LayerTrelkType values.
constexpr int kNoRuleMet = 0;
constexpr int kFiberWall = 1;
constexpr int kGeneralWallHorizontal = 2;
constexpr int kGeneralWallBoth = 3;
constexpr int kNoSteelOrConcrete = -1;

// A concrete layer's material angle names a wall direction only when it is within this
// many degrees of 0 or 90; a rebar layer's magnitude of angle within this wider band.
constexpr double kConcreteAngleBand = 0.1;
constexpr double kRebarAngleBand = 5.0;

// A sum below this counts as no thickness and becomes kFloorThickness: the walls made
// from a layered shell never have a thickness of 0.
constexpr double kThicknessTolerance = 0.000001;
constexpr double kFloorThickness = 0.001;

bool CarriesMembrane(int layerType) {
  return layerType == kLayerShell || layerType == kLayerMembrane;
}
bool CarriesBending(int layerType) { return layerType == kLayerShell || layerType == kLayerPlate; }

// The wall a structural concrete layer asks for by its angle and its nonlinear components,
// or kNoRuleMet. The three rules are tried in this order.
int WallOfConcreteLayer(double angle, int s11Type, int s22Type) {
  const bool near0 = std::fabs(angle) < kConcreteAngleBand;
  const bool near90 = std::fabs(angle - 90.0) < kConcreteAngleBand;
  const bool s11Nonlinear = s11Type == kNonlinear;
  const bool s22Nonlinear = s22Type == kNonlinear;
  if (s22Nonlinear && s11Nonlinear && (near0 || near90)) return kGeneralWallBoth;
  if ((s22Nonlinear && near0) || (s11Nonlinear && near90)) return kFiberWall;
  if ((s22Nonlinear && near90) || (s11Nonlinear && near0)) return kGeneralWallHorizontal;
  return kNoRuleMet;
}

void Floor(double& thickness) {
  if (thickness < kThicknessTolerance) thickness = kFloorThickness;
}

}  // namespace

std::string AsciiLower(std::string_view text) {
  std::string lower(text);
  for (char& c : lower) c = AsciiLowerByte(c);
  return lower;
}

bool EqualsIgnoringAsciiCase(std::string_view a, std::string_view b) {
  if (a.size() != b.size()) return false;
  for (std::size_t i = 0; i < a.size(); ++i) {
    if (AsciiLowerByte(a[i]) != AsciiLowerByte(b[i])) return false;
  }
  return true;
}

LastMaterialByLabel::LastMaterialByLabel(const VaskModelObj& model) {
  // Later materials overwrite earlier ones of the same key: the last match wins.
  for (int i = 1; i <= model.PropMatNum(); ++i) {
    VaskPropMaterialObj* material = model.PropMatObj(i);
    exact_.insert_or_assign(material->Label, material);
    folded_.insert_or_assign(AsciiLower(material->Label), material);
  }
}

VaskPropMaterialObj* LastMaterialByLabel::Exact(std::string_view name) const {
  const auto found = exact_.find(name);
  return found == exact_.end() ? nullptr : found->second;
}

VaskPropMaterialObj* LastMaterialByLabel::IgnoringCase(std::string_view name) const {
  const auto found = folded_.find(AsciiLower(name));
  return found == folded_.end() ? nullptr : found->second;
}

void LinkFrameSectionsToMaterials(VaskModelObj& model) {
  const LastMaterialByLabel materials(model);
  for (int i = 1; i <= model.PropFrameSectNum(); ++i) {
    VaskPropFrameSectObj& section = *model.PropFrameSectObj(i);
    if (VaskPropMaterialObj* material = materials.IgnoringCase(section.PropMatName)) {
      section.PropMatObj = material;
    }
  }
  for (int i = 1; i <= model.PropEmbedFrameSectNum(); ++i) {
    VaskPropFrameSectObj& section = *model.PropEmbedFrameSectObj(i);
    if (VaskPropMaterialObj* material = materials.Exact(section.PropMatName)) {
      section.PropMatObj = material;
    }
  }
}

void LinkFrameSectionsToMaterialsLiteral(VaskModelObj& model) {
  for (int i = 1; i <= model.PropFrameSectNum(); ++i) {
    VaskPropFrameSectObj& section = *model.PropFrameSectObj(i);
    for (int j = 1; j <= model.PropMatNum(); ++j) {
      VaskPropMaterialObj* material = model.PropMatObj(j);
      if (EqualsIgnoringAsciiCase(section.PropMatName, material->Label)) {
        section.PropMatObj = material;
      }
    }
  }
  for (int i = 1; i <= model.PropEmbedFrameSectNum(); ++i) {
    VaskPropFrameSectObj& section = *model.PropEmbedFrameSectObj(i);
    for (int j = 1; j <= model.PropMatNum(); ++j) {
      VaskPropMaterialObj* material = model.PropMatObj(j);
      if (section.PropMatName == material->Label) section.PropMatObj = material;
    }
  }
}

void LinkAreaSectionsToMaterials(VaskModelObj& model) {
  const LastMaterialByLabel materials(model);
  for (int i = 1; i <= model.PropAreaSectNum(); ++i) {
    VaskPropAreaSectObj& section = *model.PropAreaSectObj(i);
    if (VaskPropMaterialObj* material = materials.Exact(section.PropMat)) {
      section.PropMatObj = material;
    }
  }
  for (int i = 1; i <= model.PropAreaSectNum(); ++i) {
    VaskPropAreaSectObj& section = *model.PropAreaSectObj(i);
    if (section.ShellType == kShellLayered && section.PropType == kAreaSectionShell) {
      GenerateLayerTrelkType(model, section);
    }
  }
}

void GenerateLayerTrelkType(const VaskModelObj& model, VaskPropAreaSectObj& section) {
  const int layers = section.LayerNum;
  // The material of each layer, nullptr where its name is no material of the model.
  std::vector<VaskPropMaterialObj*> materials(static_cast<std::size_t>(std::max(layers, 0)));
  for (int layer = 1; layer <= layers; ++layer) {
    materials[static_cast<std::size_t>(layer - 1)] =
        model.PropMaterialObjGet(section.LayerMatProp(layer));
  }
  const auto material = [&](int layer) { return materials[static_cast<std::size_t>(layer - 1)]; };
  // A structural layer of a kind: a known material of that type in a shell or membrane
  // layer. Plate layers carry no membrane force and take no part in the classification.
  const auto structural = [&](int layer, int matType) {
    const VaskPropMaterialObj* m = material(layer);
    return m != nullptr && m->MatType == matType && CarriesMembrane(section.LayerType(layer));
  };

  int concreteLayers = 0;
  int rebarLayers = 0;
  for (int layer = 1; layer <= layers; ++layer) {
    if (structural(layer, host_code::kMaterialConcrete)) ++concreteLayers;
    if (structural(layer, host_code::kMaterialRebar)) ++rebarLayers;
  }

  // A nonlinear wall needs both concrete and rebar; its kind is that of the first concrete
  // layer that asks for one.
  if (concreteLayers >= 1 && rebarLayers >= 1) {
    for (int layer = 1; layer <= layers; ++layer) {
      if (!structural(layer, host_code::kMaterialConcrete)) continue;
      const int wall = WallOfConcreteLayer(section.LayerMatAng(layer), section.LayerS11Type(layer),
                                           section.LayerS22Type(layer));
      if (wall == kNoRuleMet) continue;
      section.LayerTrelkType = wall;
      section.LayerPropMatConcObj = material(layer);
      break;
    }
    for (int layer = 1; layer <= layers; ++layer) {
      if (structural(layer, host_code::kMaterialRebar)) {
        section.LayerPropMatRebarObj = material(layer);
        break;
      }
    }
  }

  if (section.LayerTrelkType == kNoRuleMet) {
    // No nonlinear wall: the shell stands as one elastic layer in the material of its first
    // steel or concrete layer, with every layer's thickness scaled by its stiffness.
    for (int layer = 1; layer <= layers; ++layer) {
      const VaskPropMaterialObj* m = material(layer);
      if (m != nullptr &&
          (m->MatType == host_code::kMaterialSteel || m->MatType == host_code::kMaterialConcrete)) {
        section.LayerPropMatObj = material(layer);
        break;
      }
    }
    if (section.LayerPropMatObj == nullptr) {
      section.LayerTrelkType = kNoSteelOrConcrete;
    } else {
      const double baseE = section.LayerPropMatObj->E();
      if (baseE == 0.0) {
        throw TransferFailure("Layered shell section \"" + section.Label + "\": material \"" +
                              section.LayerPropMatObj->Label +
                              "\" has a modulus of elasticity of 0, so the transformed thickness "
                              "of the section cannot be computed.");
      }
      for (int layer = 1; layer <= layers; ++layer) {
        const VaskPropMaterialObj* m = material(layer);
        if (m != nullptr) section.LayerTrelkThick += section.LayerThick(layer) * m->E() / baseE;
      }
    }
  } else if (section.LayerTrelkType == kFiberWall ||
             section.LayerTrelkType == kGeneralWallHorizontal ||
             section.LayerTrelkType == kGeneralWallBoth) {
    for (int layer = 1; layer <= layers; ++layer) {
      const VaskPropMaterialObj* m = material(layer);
      if (m == nullptr) continue;
      const int layerType = section.LayerType(layer);
      const double thick = section.LayerThick(layer);
      if (m->MatType == host_code::kMaterialConcrete) {
        if (CarriesMembrane(layerType)) section.LayerTrelkThick += thick;
        if (CarriesBending(layerType)) section.LayerTrelkThickBend += thick;
      } else if (m->MatType == host_code::kMaterialRebar && CarriesMembrane(layerType)) {
        // The sign of the angle does not matter, and the band is wider than for concrete.
        const double angle = std::fabs(section.LayerMatAng(layer));
        if (std::fabs(angle - 90.0) < kRebarAngleBand) {
          section.LayerTrelkThickRebarV += thick;
        } else if (angle < kRebarAngleBand) {
          section.LayerTrelkThickRebarH += thick;
        }
      }
    }
  }

  Floor(section.LayerTrelkThickRebarV);
  Floor(section.LayerTrelkThickRebarH);
  Floor(section.LayerTrelkThick);
  Floor(section.LayerTrelkThickBend);
}

}  // namespace vtt
