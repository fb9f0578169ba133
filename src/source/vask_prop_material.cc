#include "source/vask_prop_material.h"

#include "source/host_model.h"

namespace vtt {

namespace {

constexpr double kFallbackE = 5400.0;
constexpr double kFallbackNu = 0.05;
constexpr double kFallbackG = 2700.0;
constexpr double kUniaxialNu = 0.05;
constexpr double kFallbackFy = 211500.0;
constexpr double kFallbackFu = 235000.0;
// The yield strength the components use is 90 percent of the stated one.
constexpr double kYieldFactor = 0.9;

}  // namespace

double VaskPropMaterialObj::E() const {
  switch (SymType) {
    case host_code::kSymmetryIsotropic:
      return IsoE;
    case host_code::kSymmetryOrthotropic:
      return OrtE[0];
    case host_code::kSymmetryAnisotropic:
      return AniE[0];
    case host_code::kSymmetryUniaxial:
      return UniE;
    default:
      return kFallbackE;
  }
}

double VaskPropMaterialObj::Nu() const {
  switch (SymType) {
    case host_code::kSymmetryIsotropic:
      return IsoU;
    case host_code::kSymmetryOrthotropic:
      return OrtU[0];
    case host_code::kSymmetryAnisotropic:
      return AniU[0];
    case host_code::kSymmetryUniaxial:
      return kUniaxialNu;
    default:
      return kFallbackNu;
  }
}

double VaskPropMaterialObj::G() const {
  switch (SymType) {
    case host_code::kSymmetryIsotropic:
      return IsoG;
    case host_code::kSymmetryOrthotropic:
      return OrtG[0];
    case host_code::kSymmetryAnisotropic:
      return AniG[0];
    case host_code::kSymmetryUniaxial:
      return UniE / 2.0;
    default:
      return kFallbackG;
  }
}

double VaskPropMaterialObj::Fy() const {
  switch (MatType) {
    case host_code::kMaterialSteel:
      return kYieldFactor * SteelFy;
    case host_code::kMaterialConcrete:
      return kYieldFactor * ConcFc;
    case host_code::kMaterialRebar:
      return kYieldFactor * RebarFy;
    default:
      return kFallbackFy;
  }
}

double VaskPropMaterialObj::Fu() const {
  switch (MatType) {
    case host_code::kMaterialSteel:
      return SteelFu;
    case host_code::kMaterialConcrete:
      return ConcFc;
    case host_code::kMaterialRebar:
      return RebarFu;
    default:
      return kFallbackFu;
  }
}

}  // namespace vtt
