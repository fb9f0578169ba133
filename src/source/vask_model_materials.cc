// Stage 1 of ReadVaskData: the host's concrete, steel and rebar materials.
//
// The cross sections read later name their materials, and the component translation
// needs one material of each of the three kinds to build its records from, so a host
// that lacks one gets a default material of that kind first. This is the only stage that
// changes the host model.
#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <string>

#include "source/vask_model.h"

namespace vtt {
namespace {

// A curve value at or below this magnitude counts as no stress at all.
constexpr double kCurveStressTolerance = 0.000001;

// Each kind the transfer needs, with the name of the default material made when the host
// has none of it, in the order they are made sure of.
struct RequiredMaterial {
  int type;
  const char* defaultName;
};
constexpr RequiredMaterial kRequiredMaterials[] = {
    {host_code::kMaterialConcrete, "Conc"},
    {host_code::kMaterialSteel, "Steel"},
    {host_code::kMaterialRebar, "Rebar"},
};

// The region code that lets the host pick its own default properties for the type.
constexpr int kAnyRegion = -1;

// The stresses of the curve's points, in order; none when the host gives no curve.
Reals CurveStresses(HostModel& host, const std::string& name) {
  int count = 0;
  Ints pointIds;
  Reals strains;
  Reals stresses;
  if (host.GetStressStrainCurve(name, count, pointIds, strains, stresses) != 0) return {};
  stresses.resize(std::min(stresses.size(), static_cast<std::size_t>(std::max(count, 0))));
  return stresses;
}

// Copies the first values the host gave into a fixed set; values it did not give stay 0.
template <std::size_t N>
void KeepFirst(const Reals& values, std::array<double, N>& into) {
  const std::size_t n = std::min(values.size(), N);
  std::copy_n(values.begin(), n, into.begin());
}

}  // namespace

void VaskModelObj::ReadPropMaterials() {
  for (const RequiredMaterial& required : kRequiredMaterials) {
    int count = 0;
    Names names;
    const int status = host_.GetMaterialNameList(required.type, count, names);
    if (count == 0 || status != 0) {
      std::string createdName;
      host_.AddDefaultMaterial(required.defaultName, required.type, kAnyRegion, "", "",
                               createdName);
    }
  }

  int count = 0;
  Names names;
  host_.GetMaterialNameList(0, count, names);
  const int num = std::min(count, static_cast<int>(names.size()));
  // Property statuses are not tested: a failed call leaves its fields at 0.
  for (int i = 0; i < num; ++i) {
    const std::string& name = names[static_cast<std::size_t>(i)];
    int type = 0;
    int symmetry = 0;
    host_.GetMaterialType(name, type, symmetry);
    if (type != host_code::kMaterialConcrete && type != host_code::kMaterialSteel &&
        type != host_code::kMaterialRebar) {
      NoteDrop("material", name, "neither concrete, steel nor rebar");
      continue;
    }
    VaskPropMaterialObj& mat = *AddPropMaterial();
    mat.Label = name;
    mat.MatType = type;
    mat.SymType = symmetry;
    host_.GetMaterialWeightAndMass(name, mat.UnitWeight, mat.UnitMass);

    switch (type) {
      case host_code::kMaterialRebar: {
        host_.GetRebarData(name, mat.RebarFy, mat.RebarFu, mat.RebareFy, mat.RebareFu);
        // The curve's peak tension stands for the expected ultimate strength.
        double peak = 0.0;
        for (double stress : CurveStresses(host_, name)) {
          if (stress > peak) peak = stress;
        }
        if (peak > kCurveStressTolerance) mat.RebareFu = peak;
        break;
      }
      case host_code::kMaterialConcrete: {
        host_.GetConcreteData(name, mat.ConcFc);
        // The curve's peak compression wins over the stated strength; a curve with no
        // compression leaves the stated strength alone.
        double peak = 0.0;
        for (double stress : CurveStresses(host_, name)) {
          if (stress < peak) peak = stress;
        }
        if (std::fabs(peak) > kCurveStressTolerance) mat.ConcFc = std::fabs(peak);
        break;
      }
      case host_code::kMaterialSteel:
        // The steel curve is not read: the stated strengths stand.
        host_.GetSteelData(name, mat.SteelFy, mat.SteelFu, mat.SteeleFy, mat.SteeleFu);
        break;
    }

    switch (symmetry) {
      case host_code::kSymmetryIsotropic:
        host_.GetIsotropicData(name, mat.IsoE, mat.IsoU, mat.IsoA, mat.IsoG);
        break;
      case host_code::kSymmetryOrthotropic: {
        // Only the moduli are kept; the other orthotropic sets stay 0.
        Reals e;
        Reals u;
        Reals a;
        Reals g;
        host_.GetOrthotropicData(name, e, u, a, g);
        KeepFirst(e, mat.OrtE);
        break;
      }
      case host_code::kSymmetryAnisotropic: {
        Reals e;
        Reals u;
        Reals a;
        Reals g;
        host_.GetAnisotropicData(name, e, u, a, g);
        KeepFirst(e, mat.AniE);
        KeepFirst(g, mat.AniG);
        KeepFirst(u, mat.AniU);
        KeepFirst(a, mat.AniA);
        break;
      }
      case host_code::kSymmetryUniaxial:
        host_.GetUniaxialData(name, mat.UniE, mat.UniA);
        break;
      default:
        break;
    }
  }
}

}  // namespace vtt
