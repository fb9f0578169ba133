#include "store/units.h"

#include <stdexcept>

namespace vtt {
namespace {

struct HostUnits {
  std::int16_t force;
  std::int16_t length;
  float gravity;
};

// Rows 1 to 16 of the host codes. Row 6 is absent on purpose: code 6 falls through to the
// default, which happens to be its own values. Row 7's 9814.56 and row 16's pound are kept
// exactly as the format's writers have always produced them.
HostUnits HostRow(int code) {
  switch (code) {
    case 1: return {1, 0, 386.4f};
    case 2: return {1, 1, 32.2f};
    case 3: return {0, 0, 386.4f};
    case 4: return {0, 1, 32.2f};
    case 5: return {3, 2, 9814.6f};
    case 7: return {4, 2, 9814.56f};
    case 8: return {4, 4, 9.81f};
    case 9: return {2, 2, 9814.6f};
    case 10: return {2, 4, 9.81f};
    case 11: return {5, 2, 9814.6f};
    case 12: return {5, 4, 9.81f};
    case 13: return {3, 3, 981.4f};
    case 14: return {4, 3, 981.4f};
    case 15: return {2, 3, 981.4f};
    case 16: return {1, 3, 981.4f};
    default: return {3, 4, 9.81f};
  }
}

constexpr float kSizeValues[5][4] = {{2.0f, 6.0f, 18.0f, 60.0f},
                                     {0.2f, 0.5f, 1.5f, 5.0f},
                                     {50.0f, 150.0f, 450.0f, 1500.0f},
                                     {5.0f, 15.0f, 45.0f, 150.0f},
                                     {0.05f, 0.15f, 0.45f, 1.5f}};

constexpr std::string_view kSizeTexts[5][4] = {
    {"2 in.", "6 in.", "18 in.", "60 in."},
    {"0.2 ft.", "0.5 ft.", "1.5 ft.", "5 ft."},
    {"50 mm.", "150 mm.", "450 mm.", "1500 mm."},
    {"5 cm.", "15 cm.", "45 cm.", "150 cm."},
    {"0.05 m.", "0.15 m.", "0.45 m.", "1.5 m."}};

void CheckIndex(int unit_length, int column) {
  if (unit_length < 0 || unit_length > 4 || column < 0 || column > 3) {
    throw std::out_of_range("size table index");
  }
}

}  // namespace

float SizeTableValue(int unit_length, int column) {
  CheckIndex(unit_length, column);
  return kSizeValues[unit_length][column];
}

std::string_view SizeTableText(int unit_length, int column) {
  CheckIndex(unit_length, column);
  return kSizeTexts[unit_length][column];
}

UnitBlock UnitsForHostCode(int host_code) {
  const HostUnits row = HostRow(host_code);
  UnitBlock units;
  units.UnitForce = row.force;
  units.UnitLength = row.length;
  units.UnitGravity = row.gravity;
  units.BeepOnFileError = 0;
  units.SizeChoice = 1;
  units.UnitWord3 = 4;
  units.UnitWord4 = 0;
  units.UnitWord5 = 0;
  // The value is always column 1; the text follows SizeChoice (also 1).
  units.SizeValue = static_cast<double>(SizeTableValue(units.UnitLength, 1));
  units.SizeText = SizeTableText(units.UnitLength, units.SizeChoice);
  return units;
}

}  // namespace vtt
