// The unit block of a structure: what the host's present-units code means in Trelk's
// length and force codes, gravity, and the display size the S file carries.
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

namespace vtt {

struct UnitBlock {
  std::int16_t UnitLength = 0;  // 0 inch, 1 foot, 2 millimetre, 3 centimetre, 4 metre
  std::int16_t UnitForce = 0;   // 0 kip, 1 pound, 2 newton, 3 kilonewton, 4 kgf, 5 tonne-force
  float UnitGravity = 0.0f;     // length units per second squared
  std::int16_t BeepOnFileError = 0;
  std::int16_t SizeChoice = 1;
  std::int16_t UnitWord3 = 4;
  std::int32_t UnitWord4 = 0;
  std::int32_t UnitWord5 = 0;
  double SizeValue = 0.0;
  std::string_view SizeText;
};

// The unit block for a host unit code. Codes outside 1 to 16 (and 6, which has no row of
// its own) take kilonewton and metre.
UnitBlock UnitsForHostCode(int host_code);

// Conversion tables indexed by UnitLength and UnitForce.
inline constexpr std::array<float, 5> InchesPerUnitLength = {1.0f, 12.0f, 0.03937f, 0.3937f,
                                                             39.37f};
inline constexpr std::array<float, 6> KipsPerUnitForce = {1.0f,      0.001f,     0.000224809f,
                                                          0.224809f, 0.0022046f, 2.2046f};

// Size tables, indexed by UnitLength and a column 0 to 3.
float SizeTableValue(int unit_length, int column);
std::string_view SizeTableText(int unit_length, int column);

}  // namespace vtt
