// Stages 2, 3, 16 and 17 of ReadVaskData: the host's frame and shell sections, and the
// links from sections to the materials of stage 1.
//
// Frame sections keep the host's section constants and only the name of their material;
// shell sections keep the host's data as it stands, layers included. The links come later
// (stages 16 and 17) and are made through vask_section_links.h, where the layer rule of a
// layered shell lives too.
#include <algorithm>
#include <cstddef>
#include <string>
#include <vector>

#include "source/vask_model.h"
#include "source/vask_section_links.h"

namespace vtt {
namespace {

// Host codes of the sections this reading distinguishes.
constexpr int kFrameSectionNonprismatic = 14;
constexpr int kAreaSectionShell = 1;
constexpr int kShellThin = 1;
constexpr int kShellLayered = 6;

// A thin shell's thickness below this counts as no thickness and becomes kFloorThickness:
// no shell reaches the target with a thickness of 0.
constexpr double kThicknessTolerance = 0.000001;
constexpr double kFloorThickness = 0.001;

double FlooredThickness(double thickness) {
  return thickness < kThicknessTolerance ? kFloorThickness : thickness;
}

// The value at a zero-based place of a host array, or T's zero value where the host gave
// fewer values than its count promised.
template <class T>
T HostValue(const std::vector<T>& values, int place) {
  const auto slot = static_cast<std::size_t>(place);
  return slot < values.size() ? values[slot] : T{};
}

// The material name of a frame section, or the empty text when any call of the way to it
// fails. A non-prismatic section has no material of its own: it takes the material of the
// start section of its first segment.
std::string FrameSectionMaterial(HostModel& host, const std::string& name, int type) {
  std::string materialOf = name;
  if (type == kFrameSectionNonprismatic) {
    int segments = 0;
    Names startSections;
    Names endSections;
    if (host.GetNonprismaticSection(name, segments, startSections, endSections) != 0 ||
        segments < 1 || startSections.empty()) {
      return {};
    }
    materialOf = startSections.front();
    int startType = 0;
    if (host.GetFrameSectionType(materialOf, startType) != 0) return {};
  }
  std::string material;
  if (host.GetFrameSectionMaterial(materialOf, material) != 0) return {};
  return material;
}

}  // namespace

void VaskModelObj::ReadPropFrameSections() {
  int count = 0;
  Names names;
  host_.GetFrameSectionNameList(count, names);
  const int num = std::min(count, static_cast<int>(names.size()));
  for (int i = 0; i < num; ++i) {
    const std::string& name = names[static_cast<std::size_t>(i)];
    // The status of the constants is not tested: a failed call leaves them at 0.
    double area = 0.0;
    double as2 = 0.0;
    double as3 = 0.0;
    double torsion = 0.0;
    double i22 = 0.0;
    double i33 = 0.0;
    double s22 = 0.0;
    double s33 = 0.0;
    double firstPlasticModulus = 0.0;
    double secondPlasticModulus = 0.0;
    double r22 = 0.0;
    double r33 = 0.0;
    host_.GetFrameSectionProperties(name, area, as2, as3, torsion, i22, i33, s22, s33,
                                    firstPlasticModulus, secondPlasticModulus, r22, r33);
    int type = 0;
    if (host_.GetFrameSectionType(name, type) != 0 || type < 1) {
      NoteDrop("frame section", name, "its section type is unknown");
      continue;
    }

    VaskPropFrameSectObj& section = *AddPropFrameSect();
    section.Label = name;
    section.area = area;
    section.As2 = as2;
    section.As3 = as3;
    section.TorsionConst = torsion;
    section.I22 = i22;
    section.I33 = i33;
    section.S22 = s22;
    section.S33 = s33;
    // Z22 keeps the second plastic modulus of the host's pair and Z33 is left at 0: that
    // is the arrangement of the constants the rest of the transfer reads.
    section.Z22 = secondPlasticModulus;
    section.R22 = r22;
    section.R33 = r33;
    section.PropType = type;

    section.PropMatName = FrameSectionMaterial(host_, name, type);
    // The host's shape dimensions are not read: the translation works from the constants.
    section.t2 = 0.0;
    section.t3 = 0.0;
    section.tf = 0.0;
    section.tw = 0.0;
    section.t2b = 0.0;
    section.tfb = 0.0;
  }
}

void VaskModelObj::ReadPropAreaSections() {
  int count = 0;
  Names names;
  host_.GetAreaSectionNameList(count, names);
  const int num = std::min(count, static_cast<int>(names.size()));
  for (int i = 0; i < num; ++i) {
    const std::string& name = names[static_cast<std::size_t>(i)];
    int type = 0;
    host_.GetAreaSectionType(name, type);
    if (type != kAreaSectionShell) {
      NoteDrop("area section", name, "not a shell section");
      continue;
    }
    int shellType = 0;
    bool drillingDof = false;
    std::string material;
    double materialAngle = 0.0;
    double thickness = 0.0;
    double bendingThickness = 0.0;
    host_.GetShellSection(name, shellType, drillingDof, material, materialAngle, thickness,
                          bendingThickness);
    if (shellType == kShellThin) {
      VaskPropAreaSectObj& section = *AddPropAreaSect();
      section.Label = name;
      section.PropType = type;
      section.ShellType = shellType;
      section.IncludeDrillingDOF = drillingDof;
      section.PropMat = material;
      section.MatAng = materialAngle;
      section.Thick = FlooredThickness(thickness);
      section.Bending = FlooredThickness(bendingThickness);
    } else if (shellType == kShellLayered) {
      // A layered shell has its materials and thicknesses in its layers only; PropMat,
      // Thick and Bending stay empty.
      VaskPropAreaSectObj& section = *AddPropAreaSect();
      section.PropType = type;
      section.ShellType = shellType;
      section.Label = name;
      int layers = 0;
      Names layerNames;
      Reals distances;
      Reals thicknesses;
      Ints layerTypes;
      Ints integrationPoints;
      Names materials;
      Reals materialAngles;
      Ints s11Types;
      Ints s22Types;
      Ints s12Types;
      host_.GetShellLayers(name, layers, layerNames, distances, thicknesses, layerTypes,
                           integrationPoints, materials, materialAngles, s11Types, s22Types,
                           s12Types);
      section.LayerNum = layers;
      section.RedimLayer();
      for (int layer = 1; layer <= section.LayerNum; ++layer) {
        const int place = layer - 1;
        section.LayerDists(layer) = HostValue(distances, place);
        section.LayerNames(layer) = HostValue(layerNames, place);
        section.LayerThick(layer) = HostValue(thicknesses, place);
        section.LayerType(layer) = HostValue(layerTypes, place);
        section.LayerNumIntPts(layer) = HostValue(integrationPoints, place);
        section.LayerMatProp(layer) = HostValue(materials, place);
        section.LayerMatAng(layer) = HostValue(materialAngles, place);
        section.LayerS11Type(layer) = HostValue(s11Types, place);
        section.LayerS22Type(layer) = HostValue(s22Types, place);
        section.LayerS12Type(layer) = HostValue(s12Types, place);
      }
    }
  }
}

void VaskModelObj::LinkFrameSectionMaterials() { LinkFrameSectionsToMaterials(*this); }

void VaskModelObj::LinkAreaSectionMaterials() { LinkAreaSectionsToMaterials(*this); }

}  // namespace vtt
