// A material of the host: one of steel (1), concrete (2) or rebar (6).
//
// The derived members E, Nu, G, Fy and Fu are what the translation uses. They pick the
// first value of the set that the material's symmetry names, so an anisotropic or
// uniaxial material stands for an isotropic one. Only the first three orthotropic moduli
// are read, so an orthotropic material has Nu 0 and G 0; the components live with that.
// Codes outside the known ones give fixed fall-backs.
#pragma once

#include <array>
#include <string>

namespace vtt {

class VaskPropMaterialObj {
 public:
  // Target material components, written by the material translation.
  int idTrelkInelastic = 0;
  int idTrelkElasticShear = 0;
  int idTrelkInelasticShear = 0;
  int idTrelkElasticSlab = 0;
  int idTrelkElasticFiber = 0;
  std::string Label;
  // 1 steel, 2 concrete, 6 rebar.
  int MatType = 0;
  // 0 isotropic, 1 orthotropic, 2 anisotropic, 3 uniaxial.
  int SymType = 0;
  double IsoE = 0.0;
  double IsoU = 0.0;
  double IsoA = 0.0;
  double IsoG = 0.0;
  double UniE = 0.0;
  double UniA = 0.0;
  std::array<double, 3> AniE{};
  std::array<double, 15> AniU{};
  std::array<double, 5> AniA{};
  std::array<double, 3> AniG{};
  std::array<double, 3> OrtE{};
  std::array<double, 3> OrtU{};
  std::array<double, 3> OrtA{};
  std::array<double, 3> OrtG{};
  double SteelFy = 0.0;
  double SteeleFy = 0.0;
  double SteelFu = 0.0;
  double SteeleFu = 0.0;
  double RebarFy = 0.0;
  double RebareFy = 0.0;
  double RebarFu = 0.0;
  double RebareFu = 0.0;
  double ConcFc = 0.0;
  double UnitMass = 0.0;
  double UnitWeight = 0.0;

  double E() const;
  double Nu() const;
  double G() const;
  double Fy() const;
  double Fu() const;
};

}  // namespace vtt
