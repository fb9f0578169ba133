// Every host operation answered from the fixture model tests/models/hosts/every-operation.json:
// values, order, first entry of a duplicated name, and zeroed results for unknown names.
#include "hosts/json_model_host.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <memory>
#include <stdexcept>
#include <string>

namespace vtt {
namespace {

using ::testing::Test;

const std::filesystem::path kFixture =
    std::filesystem::path(VTT_SOURCE_DIR) / "tests/models/hosts/every-operation.json";

class JsonModelHostTest : public Test {
 protected:
  void SetUp() override { host = JsonModelHost::FromFile(kFixture); }
  std::unique_ptr<JsonModelHost> host;
};

Names N(std::initializer_list<const char*> names) { return Names(names.begin(), names.end()); }

// ---- Units and points ----

TEST_F(JsonModelHostTest, PresentUnitsAreTheFilesUnitCode) {
  EXPECT_EQ(host->GetPresentUnits(), 6);
}

TEST_F(JsonModelHostTest, PointCountCountsEveryEntryIncludingDuplicates) {
  EXPECT_EQ(host->GetPointCount(), 8);
}

TEST_F(JsonModelHostTest, PointNamesComeInFileOrderWithDuplicates) {
  int count = -1;
  Names names = {"stale"};
  EXPECT_EQ(host->GetPointNameList(count, names), 0);
  EXPECT_EQ(count, 8);
  EXPECT_EQ(names, N({"1", "2", "3", "4", "1", "5", "6", "LONE"}));
}

TEST_F(JsonModelHostTest, PointCoordinatesComeFromTheFirstEntryOfTheName) {
  double x = -1, y = -1, z = -1;
  EXPECT_EQ(host->GetPointCoordinates("3", x, y, z, "Global"), 0);
  EXPECT_EQ(x, 4);
  EXPECT_EQ(y, 0);
  EXPECT_EQ(z, 3.5);
  EXPECT_EQ(host->GetPointCoordinates("1", x, y, z, "Global"), 0);
  EXPECT_EQ(x, 0);
  EXPECT_EQ(y, 0);
  EXPECT_EQ(z, 0);
}

TEST_F(JsonModelHostTest, UnknownPointFailsWithZeroCoordinates) {
  double x = 1, y = 2, z = 3;
  EXPECT_EQ(host->GetPointCoordinates("nope", x, y, z, "Global"), 1);
  EXPECT_EQ(x, 0);
  EXPECT_EQ(y, 0);
  EXPECT_EQ(z, 0);
}

TEST_F(JsonModelHostTest, PointNamesAreCaseSensitive) {
  double x = 1, y = 2, z = 3;
  EXPECT_EQ(host->GetPointCoordinates("lone", x, y, z, "Global"), 1);
  EXPECT_EQ(host->GetPointCoordinates("LONE", x, y, z, "Global"), 0);
  EXPECT_EQ(x, 10);
}

TEST_F(JsonModelHostTest, RestraintsDefaultToFree) {
  DofFlags restraints{};
  EXPECT_EQ(host->GetPointRestraints("4", restraints), 0);
  EXPECT_EQ(restraints, (DofFlags{true, true, true, false, false, false}));
  restraints.fill(true);
  EXPECT_EQ(host->GetPointRestraints("2", restraints), 0);
  EXPECT_EQ(restraints, DofFlags{});
  restraints.fill(true);
  EXPECT_EQ(host->GetPointRestraints("nope", restraints), 1);
  EXPECT_EQ(restraints, DofFlags{});
}

TEST_F(JsonModelHostTest, PointConstraintsOfOnePointRepeatThePointName) {
  int count = 0;
  Names points, constraints;
  EXPECT_EQ(host->GetPointConstraints("2", ItemType::Object, count, points, constraints), 0);
  EXPECT_EQ(count, 2);
  EXPECT_EQ(points, N({"2", "2"}));
  EXPECT_EQ(constraints, N({"D1", "B1"}));
  // The first point "1" holds D1; the second entry of that name (D2) is not reached.
  EXPECT_EQ(host->GetPointConstraints("1", ItemType::Object, count, points, constraints), 0);
  EXPECT_EQ(constraints, N({"D1"}));
  EXPECT_EQ(host->GetPointConstraints("3", ItemType::Object, count, points, constraints), 0);
  EXPECT_EQ(count, 0);
  EXPECT_TRUE(points.empty());
}

TEST_F(JsonModelHostTest, PointConstraintsOfGroupAllListEveryAssignmentInPointOrder) {
  int count = 0;
  Names points, constraints;
  EXPECT_EQ(host->GetPointConstraints("ALL", ItemType::Group, count, points, constraints), 0);
  EXPECT_EQ(count, 5);
  EXPECT_EQ(points, N({"1", "2", "2", "1", "6"}));
  EXPECT_EQ(constraints, N({"D1", "D1", "B1", "D2", "D2"}));
}

TEST_F(JsonModelHostTest, PointConstraintsOfAGroupFollowTheGroupsPoints) {
  int count = 0;
  Names points, constraints;
  EXPECT_EQ(host->GetPointConstraints("G1", ItemType::Group, count, points, constraints), 0);
  EXPECT_EQ(count, 3);
  EXPECT_EQ(points, N({"2", "2", "1"}));
  EXPECT_EQ(constraints, N({"D1", "B1", "D1"}));
}

TEST_F(JsonModelHostTest, PointConstraintsOfUnknownNamesFailEmpty) {
  int count = 7;
  Names points = {"x"}, constraints = {"y"};
  EXPECT_EQ(host->GetPointConstraints("nope", ItemType::Group, count, points, constraints), 1);
  EXPECT_EQ(count, 0);
  EXPECT_TRUE(points.empty());
  EXPECT_TRUE(constraints.empty());
  count = 7;
  EXPECT_EQ(host->GetPointConstraints("nope", ItemType::Object, count, points, constraints), 1);
  EXPECT_EQ(count, 0);
  EXPECT_EQ(host->GetPointConstraints("2", ItemType::SelectedObjects, count, points, constraints),
            1);
}

TEST_F(JsonModelHostTest, ConnectivityListsFramesThenAreasInFileOrder) {
  int count = 0;
  Ints types, numbers;
  Names names;
  EXPECT_EQ(host->GetPointConnectivity("2", count, types, names, numbers), 0);
  EXPECT_EQ(count, 5);
  EXPECT_EQ(types, (Ints{2, 2, 2, 5, 5}));
  EXPECT_EQ(names, N({"C1", "B1", "X", "F1", "F2"}));
  EXPECT_EQ(numbers, (Ints{2, 1, 1, 1, 2}));
}

TEST_F(JsonModelHostTest, ConnectivityCountsEveryAreaThatNamesThePoint) {
  int count = 0;
  Ints types, numbers;
  Names names;
  // Point "3" ends B1 and C2 at J, and is the 2nd, 1st and 3rd corner of three areas.
  EXPECT_EQ(host->GetPointConnectivity("3", count, types, names, numbers), 0);
  EXPECT_EQ(types, (Ints{2, 2, 5, 5, 5}));
  EXPECT_EQ(names, N({"B1", "C2", "F1", "F2", "F1"}));
  EXPECT_EQ(numbers, (Ints{2, 2, 2, 1, 3}));
  // The second frame named C1 ends at point "5", which is also an area corner.
  EXPECT_EQ(host->GetPointConnectivity("5", count, types, names, numbers), 0);
  EXPECT_EQ(names, N({"C1", "F1", "F2"}));
  EXPECT_EQ(numbers, (Ints{1, 4, 3}));
}

TEST_F(JsonModelHostTest, ConnectivityOfAnUnconnectedPointIsEmptyAndOfAnUnknownPointFails) {
  int count = 9;
  Ints types = {1}, numbers = {1};
  Names names = {"x"};
  EXPECT_EQ(host->GetPointConnectivity("LONE", count, types, names, numbers), 0);
  EXPECT_EQ(count, 0);
  EXPECT_TRUE(types.empty());
  count = 9;
  names = {"x"};
  EXPECT_EQ(host->GetPointConnectivity("nope", count, types, names, numbers), 1);
  EXPECT_EQ(count, 0);
  EXPECT_TRUE(names.empty());
  EXPECT_TRUE(numbers.empty());
}

// ---- Constraints ----

TEST_F(JsonModelHostTest, ConstraintsListAndTypesComeFromTheFirstEntry) {
  int count = 0;
  Names names;
  EXPECT_EQ(host->GetConstraintNameList(count, names), 0);
  EXPECT_EQ(names, N({"D1", "B1", "D2", "D1"}));
  int type = 0;
  EXPECT_EQ(host->GetConstraintType("D1", type), 0);
  EXPECT_EQ(type, 2);
  EXPECT_EQ(host->GetConstraintType("B1", type), 0);
  EXPECT_EQ(type, 1);
  EXPECT_EQ(host->GetConstraintType("nope", type), 1);
  EXPECT_EQ(type, 0);
}

TEST_F(JsonModelHostTest, DiaphragmDataHasDefaultsAndFailsForOtherConstraintTypes) {
  int axis = 0;
  std::string csys = "stale";
  EXPECT_EQ(host->GetDiaphragmData("D1", axis, csys), 0);
  EXPECT_EQ(axis, 3);
  EXPECT_EQ(csys, "Global");
  EXPECT_EQ(host->GetDiaphragmData("D2", axis, csys), 0);
  EXPECT_EQ(axis, 4);
  EXPECT_EQ(csys, "Local");
  EXPECT_EQ(host->GetDiaphragmData("B1", axis, csys), 1);
  EXPECT_EQ(axis, 0);
  EXPECT_EQ(csys, "");
}

// ---- Materials ----

TEST_F(JsonModelHostTest, MaterialNamesAreFilteredByType) {
  int count = 0;
  Names names;
  EXPECT_EQ(host->GetMaterialNameList(0, count, names), 0);
  EXPECT_EQ(names, N({"C30", "S355", "B500", "ORTHO", "ANISO", "AL", "C30"}));
  EXPECT_EQ(host->GetMaterialNameList(1, count, names), 0);
  EXPECT_EQ(count, 2);
  EXPECT_EQ(names, N({"S355", "C30"}));
  EXPECT_EQ(host->GetMaterialNameList(7, count, names), 0);
  EXPECT_EQ(count, 0);
  EXPECT_TRUE(names.empty());
}

TEST_F(JsonModelHostTest, MaterialTypeAndSymmetryWithDefaults) {
  int type = 0, symmetry = -1;
  EXPECT_EQ(host->GetMaterialType("C30", type, symmetry), 0);
  EXPECT_EQ(type, 2);
  EXPECT_EQ(symmetry, 0);
  EXPECT_EQ(host->GetMaterialType("B500", type, symmetry), 0);
  EXPECT_EQ(type, 6);
  EXPECT_EQ(symmetry, 3);
  EXPECT_EQ(host->GetMaterialType("nope", type, symmetry), 1);
  EXPECT_EQ(type, 0);
  EXPECT_EQ(symmetry, 0);
}

TEST_F(JsonModelHostTest, WeightAndMassDefaultToZero) {
  double weight = -1, mass = -1;
  EXPECT_EQ(host->GetMaterialWeightAndMass("C30", weight, mass), 0);
  EXPECT_EQ(weight, 24);
  EXPECT_EQ(mass, 2.447);
  EXPECT_EQ(host->GetMaterialWeightAndMass("AL", weight, mass), 0);
  EXPECT_EQ(weight, 0);
  EXPECT_EQ(mass, 0);
  weight = mass = 5;
  EXPECT_EQ(host->GetMaterialWeightAndMass("nope", weight, mass), 1);
  EXPECT_EQ(weight, 0);
  EXPECT_EQ(mass, 0);
}

TEST_F(JsonModelHostTest, IsotropicDataOrFailureWhenAbsent) {
  double e = 0, u = 0, a = 0, g = 0;
  EXPECT_EQ(host->GetIsotropicData("C30", e, u, a, g), 0);
  EXPECT_EQ(e, 30000000);
  EXPECT_EQ(u, 0.2);
  EXPECT_EQ(a, 1e-5);
  EXPECT_EQ(g, 12500000);
  EXPECT_EQ(host->GetIsotropicData("AL", e, u, a, g), 1);
  EXPECT_EQ(e, 0);
  EXPECT_EQ(u, 0);
  EXPECT_EQ(a, 0);
  EXPECT_EQ(g, 0);
}

TEST_F(JsonModelHostTest, OrthotropicDataOrFailureWhenAbsent) {
  Reals e, u, a, g;
  EXPECT_EQ(host->GetOrthotropicData("ORTHO", e, u, a, g), 0);
  EXPECT_EQ(e, (Reals{1, 2, 3}));
  EXPECT_EQ(u, (Reals{0.1, 0.2, 0.3}));
  EXPECT_EQ(a, (Reals{4, 5, 6}));
  EXPECT_EQ(g, (Reals{7, 8, 9}));
  EXPECT_EQ(host->GetOrthotropicData("C30", e, u, a, g), 1);
  EXPECT_TRUE(e.empty() && u.empty() && a.empty() && g.empty());
}

TEST_F(JsonModelHostTest, AnisotropicDataHasFifteenPoissonRatiosAndSixExpansions) {
  Reals e, u, a, g;
  EXPECT_EQ(host->GetAnisotropicData("ANISO", e, u, a, g), 0);
  EXPECT_EQ(e, (Reals{11, 12, 13}));
  ASSERT_EQ(u.size(), 15u);
  EXPECT_EQ(u[14], 15);
  EXPECT_EQ(a, (Reals{21, 22, 23, 24, 25, 26}));
  EXPECT_EQ(g, (Reals{31, 32, 33}));
  EXPECT_EQ(host->GetAnisotropicData("ORTHO", e, u, a, g), 1);
  EXPECT_TRUE(e.empty() && u.empty() && a.empty() && g.empty());
}

TEST_F(JsonModelHostTest, UniaxialDataOrFailureWhenAbsent) {
  double e = 0, a = 0;
  EXPECT_EQ(host->GetUniaxialData("B500", e, a), 0);
  EXPECT_EQ(e, 200000000);
  EXPECT_EQ(a, 1.17e-5);
  EXPECT_EQ(host->GetUniaxialData("C30", e, a), 1);
  EXPECT_EQ(e, 0);
  EXPECT_EQ(a, 0);
}

TEST_F(JsonModelHostTest, SteelRebarAndConcreteStrengths) {
  double fy = 0, fu = 0, efy = 0, efu = 0, fc = 0;
  EXPECT_EQ(host->GetSteelData("S355", fy, fu, efy, efu), 0);
  EXPECT_EQ(fy, 355000);
  EXPECT_EQ(fu, 490000);
  EXPECT_EQ(efy, 390500);
  EXPECT_EQ(efu, 539000);
  EXPECT_EQ(host->GetRebarData("B500", fy, fu, efy, efu), 0);
  EXPECT_EQ(fy, 500000);
  EXPECT_EQ(fu, 550000);
  EXPECT_EQ(efy, 550000);
  EXPECT_EQ(efu, 605000);
  EXPECT_EQ(host->GetConcreteData("C30", fc), 0);
  EXPECT_EQ(fc, 30000);
}

TEST_F(JsonModelHostTest, StrengthsFailZeroedWhenTheSetIsAbsent) {
  double fy = 1, fu = 1, efy = 1, efu = 1, fc = 1;
  EXPECT_EQ(host->GetSteelData("B500", fy, fu, efy, efu), 1);
  EXPECT_EQ(fy + fu + efy + efu, 0);
  fy = fu = efy = efu = 1;
  EXPECT_EQ(host->GetRebarData("S355", fy, fu, efy, efu), 1);
  EXPECT_EQ(fy + fu + efy + efu, 0);
  EXPECT_EQ(host->GetConcreteData("S355", fc), 1);
  EXPECT_EQ(fc, 0);
}

TEST_F(JsonModelHostTest, StressStrainCurveNumbersItsPointsFromZero) {
  int count = 0;
  Ints ids;
  Reals strains, stresses;
  EXPECT_EQ(host->GetStressStrainCurve("C30", count, ids, strains, stresses), 0);
  EXPECT_EQ(count, 3);
  EXPECT_EQ(ids, (Ints{0, 1, 2}));
  EXPECT_EQ(strains, (Reals{-0.0035, 0, 0.0001}));
  EXPECT_EQ(stresses, (Reals{-30000, 0, 2000}));
  EXPECT_EQ(host->GetStressStrainCurve("S355", count, ids, strains, stresses), 1);
  EXPECT_EQ(count, 0);
  EXPECT_TRUE(ids.empty() && strains.empty() && stresses.empty());
}

// ---- Default materials ----

TEST_F(JsonModelHostTest, DefaultMaterialTakesTheNameOrTheSmallestFreeSuffix) {
  std::string created;
  EXPECT_EQ(host->AddDefaultMaterial("Conc", 2, -1, "", "", created), 0);
  EXPECT_EQ(created, "Conc");
  EXPECT_EQ(host->AddDefaultMaterial("Conc", 2, -1, "", "", created), 0);
  EXPECT_EQ(created, "Conc1");
  EXPECT_EQ(host->AddDefaultMaterial("Conc", 2, -1, "", "", created), 0);
  EXPECT_EQ(created, "Conc2");
  EXPECT_EQ(host->AddDefaultMaterial("C30", 1, -1, "", "", created), 0);
  EXPECT_EQ(created, "C301");
  int count = 0;
  Names names;
  EXPECT_EQ(host->GetMaterialNameList(2, count, names), 0);
  EXPECT_EQ(names, N({"C30", "Conc", "Conc1", "Conc2"}));
  int type = 0, symmetry = -1;
  EXPECT_EQ(host->GetMaterialType("Conc1", type, symmetry), 0);
  EXPECT_EQ(type, 2);
  EXPECT_EQ(symmetry, 0);
}

TEST_F(JsonModelHostTest, DefaultMaterialOfAnotherTypeFails) {
  std::string created = "stale";
  EXPECT_EQ(host->AddDefaultMaterial("Alu", 3, -1, "", "", created), 1);
  EXPECT_EQ(created, "");
  int count = 0;
  Names names;
  host->GetMaterialNameList(0, count, names);
  EXPECT_EQ(count, 7);
}

// The fixture is in kN and m: InchesPerUnitLength 39.37 and KipsPerUnitForce 0.224809, as f32.
const double kMetre = static_cast<double>(39.37f);
const double kKilonewton = static_cast<double>(0.224809f);

TEST_F(JsonModelHostTest, BuiltInSteelIsConvertedIntoTheModelsUnits) {
  std::string created;
  ASSERT_EQ(host->AddDefaultMaterial("Steel", 1, -1, "", "", created), 0);
  double e = 0, u = 0, a = 0, g = 0;
  EXPECT_EQ(host->GetIsotropicData("Steel", e, u, a, g), 0);
  EXPECT_DOUBLE_EQ(e, 29000 * (kMetre * kMetre) / kKilonewton);
  EXPECT_NEAR(e, 199.95e6, 0.01e6);
  EXPECT_EQ(u, 0.3);
  EXPECT_EQ(a, 6.5e-6);
  EXPECT_DOUBLE_EQ(g, 11153.846 * (kMetre * kMetre) / kKilonewton);
  double weight = 0, mass = 0;
  EXPECT_EQ(host->GetMaterialWeightAndMass("Steel", weight, mass), 0);
  EXPECT_DOUBLE_EQ(weight, 2.8356e-4 * (kMetre * kMetre * kMetre) / kKilonewton);
  EXPECT_NEAR(weight, 76.97, 0.01);
  EXPECT_DOUBLE_EQ(mass, 7.3446e-7 * (kMetre * kMetre * kMetre * kMetre) / kKilonewton);
  double fy = 0, fu = 0, efy = 0, efu = 0;
  EXPECT_EQ(host->GetSteelData("Steel", fy, fu, efy, efu), 0);
  EXPECT_DOUBLE_EQ(fy, 50 * (kMetre * kMetre) / kKilonewton);
  EXPECT_DOUBLE_EQ(fu, 65 * (kMetre * kMetre) / kKilonewton);
  EXPECT_DOUBLE_EQ(efy, 55 * (kMetre * kMetre) / kKilonewton);
  EXPECT_DOUBLE_EQ(efu, 71.5 * (kMetre * kMetre) / kKilonewton);
  int count = -1;
  Ints ids;
  Reals strains, stresses;
  EXPECT_EQ(host->GetStressStrainCurve("Steel", count, ids, strains, stresses), 1);
}

TEST_F(JsonModelHostTest, BuiltInConcreteIsConvertedIntoTheModelsUnits) {
  std::string created;
  ASSERT_EQ(host->AddDefaultMaterial("Conc", 2, -1, "", "", created), 0);
  double e = 0, u = 0, a = 0, g = 0, fc = 0;
  EXPECT_EQ(host->GetIsotropicData("Conc", e, u, a, g), 0);
  EXPECT_DOUBLE_EQ(e, 3604.9965 * (kMetre * kMetre) / kKilonewton);
  EXPECT_EQ(u, 0.2);
  EXPECT_EQ(a, 5.5e-6);
  EXPECT_DOUBLE_EQ(g, 1502.0819 * (kMetre * kMetre) / kKilonewton);
  EXPECT_EQ(host->GetConcreteData("Conc", fc), 0);
  EXPECT_DOUBLE_EQ(fc, 4 * (kMetre * kMetre) / kKilonewton);
  double weight = 0, mass = 0;
  EXPECT_EQ(host->GetMaterialWeightAndMass("Conc", weight, mass), 0);
  EXPECT_DOUBLE_EQ(weight, 8.6806e-5 * (kMetre * kMetre * kMetre) / kKilonewton);
  EXPECT_DOUBLE_EQ(mass, 2.2483e-7 * (kMetre * kMetre * kMetre * kMetre) / kKilonewton);
}

TEST_F(JsonModelHostTest, BuiltInRebarIsUniaxial) {
  std::string created;
  ASSERT_EQ(host->AddDefaultMaterial("Rebar", 6, -1, "", "", created), 0);
  int type = 0, symmetry = 0;
  EXPECT_EQ(host->GetMaterialType("Rebar", type, symmetry), 0);
  EXPECT_EQ(type, 6);
  EXPECT_EQ(symmetry, 3);
  double e = 0, a = 0;
  EXPECT_EQ(host->GetUniaxialData("Rebar", e, a), 0);
  EXPECT_DOUBLE_EQ(e, 29000 * (kMetre * kMetre) / kKilonewton);
  EXPECT_EQ(a, 6.5e-6);
  double fy = 0, fu = 0, efy = 0, efu = 0;
  EXPECT_EQ(host->GetRebarData("Rebar", fy, fu, efy, efu), 0);
  EXPECT_DOUBLE_EQ(fy, 60 * (kMetre * kMetre) / kKilonewton);
  EXPECT_DOUBLE_EQ(fu, 90 * (kMetre * kMetre) / kKilonewton);
  EXPECT_DOUBLE_EQ(efy, 66 * (kMetre * kMetre) / kKilonewton);
  EXPECT_DOUBLE_EQ(efu, 99 * (kMetre * kMetre) / kKilonewton);
  double u = 1, g = 1;
  EXPECT_EQ(host->GetIsotropicData("Rebar", e, u, a, g), 1);
}

std::unique_ptr<JsonModelHost> ModelInUnits(int units, const std::string& extra = "") {
  return JsonModelHost::FromText(
      R"({"format": "vask-model", "version": 1, "units": )" + std::to_string(units) + extra + "}",
      "units.json", "/models");
}

double DefaultSteelE(JsonModelHost& host) {
  std::string created;
  host.AddDefaultMaterial("Steel", 1, -1, "", "", created);
  double e = 0, u = 0, a = 0, g = 0;
  host.GetIsotropicData(created, e, u, a, g);
  return e;
}

TEST(JsonModelHostDefaultMaterials, KipAndInchValuesStandAsTheyAre) {
  EXPECT_EQ(DefaultSteelE(*ModelInUnits(3)), 29000);
}

TEST(JsonModelHostDefaultMaterials, EachUnitCodeHasItsForceAndLength) {
  const double foot = static_cast<double>(12.0f);
  const double millimetre = static_cast<double>(0.03937f);
  const double centimetre = static_cast<double>(0.3937f);
  const double pound = static_cast<double>(0.001f);
  const double newton = static_cast<double>(0.000224809f);
  const double kgf = static_cast<double>(0.0022046f);
  const double tonf = static_cast<double>(2.2046f);
  EXPECT_DOUBLE_EQ(DefaultSteelE(*ModelInUnits(1)), 29000 / pound);
  EXPECT_DOUBLE_EQ(DefaultSteelE(*ModelInUnits(2)), 29000 * (foot * foot) / pound);
  EXPECT_DOUBLE_EQ(DefaultSteelE(*ModelInUnits(4)), 29000 * (foot * foot));
  EXPECT_DOUBLE_EQ(DefaultSteelE(*ModelInUnits(5)),
                   29000 * (millimetre * millimetre) / kKilonewton);
  EXPECT_DOUBLE_EQ(DefaultSteelE(*ModelInUnits(7)), 29000 * (millimetre * millimetre) / kgf);
  EXPECT_DOUBLE_EQ(DefaultSteelE(*ModelInUnits(8)), 29000 * (kMetre * kMetre) / kgf);
  EXPECT_DOUBLE_EQ(DefaultSteelE(*ModelInUnits(9)), 29000 * (millimetre * millimetre) / newton);
  EXPECT_DOUBLE_EQ(DefaultSteelE(*ModelInUnits(10)), 29000 * (kMetre * kMetre) / newton);
  EXPECT_DOUBLE_EQ(DefaultSteelE(*ModelInUnits(11)), 29000 * (millimetre * millimetre) / tonf);
  EXPECT_DOUBLE_EQ(DefaultSteelE(*ModelInUnits(12)), 29000 * (kMetre * kMetre) / tonf);
  EXPECT_DOUBLE_EQ(DefaultSteelE(*ModelInUnits(13)),
                   29000 * (centimetre * centimetre) / kKilonewton);
  EXPECT_DOUBLE_EQ(DefaultSteelE(*ModelInUnits(14)), 29000 * (centimetre * centimetre) / kgf);
  EXPECT_DOUBLE_EQ(DefaultSteelE(*ModelInUnits(15)), 29000 * (centimetre * centimetre) / newton);
  EXPECT_DOUBLE_EQ(DefaultSteelE(*ModelInUnits(16)), 29000 * (centimetre * centimetre) / pound);
}

TEST(JsonModelHostDefaultMaterials, ValuesFromTheFileReplaceTheBuiltInOnes) {
  auto host = ModelInUnits(6, R"(, "default_materials": {
      "steel": {"weight_per_volume": 78.5, "mass_per_volume": 8.0,
                "isotropic": {"E": 210000000, "U": 0.3, "A": 1.2e-5, "G": 80000000},
                "steel": {"Fy": 235000, "Fu": 360000, "eFy": 258500, "eFu": 396000}},
      "rebar": {"symmetry": 3, "uniaxial": {"E": 200000000, "A": 1e-5}}})");
  std::string created;
  ASSERT_EQ(host->AddDefaultMaterial("Steel", 1, -1, "", "", created), 0);
  double e = 0, u = 0, a = 0, g = 0;
  EXPECT_EQ(host->GetIsotropicData("Steel", e, u, a, g), 0);
  EXPECT_EQ(e, 210000000);
  EXPECT_EQ(g, 80000000);
  double fy = 0, fu = 0, efy = 0, efu = 0;
  EXPECT_EQ(host->GetSteelData("Steel", fy, fu, efy, efu), 0);
  EXPECT_EQ(fy, 235000);
  double weight = 0, mass = 0;
  EXPECT_EQ(host->GetMaterialWeightAndMass("Steel", weight, mass), 0);
  EXPECT_EQ(weight, 78.5);
  EXPECT_EQ(mass, 8.0);
  // A rebar entry without strengths gives a rebar without strengths.
  ASSERT_EQ(host->AddDefaultMaterial("Rebar", 6, -1, "", "", created), 0);
  EXPECT_EQ(host->GetUniaxialData("Rebar", e, a), 0);
  EXPECT_EQ(e, 200000000);
  EXPECT_EQ(host->GetRebarData("Rebar", fy, fu, efy, efu), 1);
  // No concrete entry: the built-in concrete.
  ASSERT_EQ(host->AddDefaultMaterial("Conc", 2, -1, "", "", created), 0);
  double fc = 0;
  EXPECT_EQ(host->GetConcreteData("Conc", fc), 0);
  EXPECT_DOUBLE_EQ(fc, 4 * (kMetre * kMetre) / kKilonewton);
}

// ---- Frame sections ----

TEST_F(JsonModelHostTest, FrameSectionNamesAndTypes) {
  int count = 0;
  Names names;
  EXPECT_EQ(host->GetFrameSectionNameList(count, names), 0);
  EXPECT_EQ(names, N({"C400", "W14", "TAPER", "C400"}));
  int type = 0;
  EXPECT_EQ(host->GetFrameSectionType("C400", type), 0);
  EXPECT_EQ(type, 8);
  EXPECT_EQ(host->GetFrameSectionType("nope", type), 1);
  EXPECT_EQ(type, 0);
}

TEST_F(JsonModelHostTest, FrameSectionPropertiesComeInResultOrder) {
  double p[12] = {};
  EXPECT_EQ(host->GetFrameSectionProperties("C400", p[0], p[1], p[2], p[3], p[4], p[5], p[6], p[7],
                                            p[8], p[9], p[10], p[11]),
            0);
  const double expected[12] = {0.16,   0.1333, 0.1334, 0.0036, 0.002133, 0.002134,
                               0.0106, 0.0107, 0.016,  0.017,  0.1154,   0.1155};
  for (int k = 0; k < 12; ++k) EXPECT_EQ(p[k], expected[k]) << "result " << k;
}

TEST_F(JsonModelHostTest, FrameSectionPropertiesNotGivenAreZero) {
  double p[12];
  std::fill(std::begin(p), std::end(p), -1.0);
  EXPECT_EQ(host->GetFrameSectionProperties("W14", p[0], p[1], p[2], p[3], p[4], p[5], p[6], p[7],
                                            p[8], p[9], p[10], p[11]),
            0);
  EXPECT_EQ(p[0], 0.01);
  EXPECT_EQ(p[5], 0.0003);
  EXPECT_EQ(p[1] + p[2] + p[3] + p[4] + p[6] + p[7] + p[8] + p[9] + p[10] + p[11], 0);
  std::fill(std::begin(p), std::end(p), -1.0);
  EXPECT_EQ(host->GetFrameSectionProperties("nope", p[0], p[1], p[2], p[3], p[4], p[5], p[6], p[7],
                                            p[8], p[9], p[10], p[11]),
            1);
  for (double value : p) EXPECT_EQ(value, 0);
}

TEST_F(JsonModelHostTest, NonprismaticSegmentsOrFailureWhenAbsent) {
  int count = 0;
  Names starts, ends;
  EXPECT_EQ(host->GetNonprismaticSection("TAPER", count, starts, ends), 0);
  EXPECT_EQ(count, 2);
  EXPECT_EQ(starts, N({"W14", "C400"}));
  EXPECT_EQ(ends, N({"C400", "C400"}));
  EXPECT_EQ(host->GetNonprismaticSection("W14", count, starts, ends), 1);
  EXPECT_EQ(count, 0);
  EXPECT_TRUE(starts.empty() && ends.empty());
}

TEST_F(JsonModelHostTest, SectionMaterialFailsWhenEmpty) {
  std::string material = "stale";
  EXPECT_EQ(host->GetFrameSectionMaterial("C400", material), 0);
  EXPECT_EQ(material, "C30");
  EXPECT_EQ(host->GetFrameSectionMaterial("TAPER", material), 1);
  EXPECT_EQ(material, "");
}

TEST_F(JsonModelHostTest, RebarDesignTypeOrFailureWhenAbsent) {
  int design = 0;
  EXPECT_EQ(host->GetRebarDesignType("C400", design), 0);
  EXPECT_EQ(design, 1);
  EXPECT_EQ(host->GetRebarDesignType("W14", design), 1);
  EXPECT_EQ(design, 0);
}

// ---- Area sections ----

TEST_F(JsonModelHostTest, AreaSectionNamesAndTypesWithDefaultShell) {
  int count = 0;
  Names names;
  EXPECT_EQ(host->GetAreaSectionNameList(count, names), 0);
  EXPECT_EQ(names, N({"SLAB", "LAY", "PLANE", "SLAB"}));
  int type = 0;
  EXPECT_EQ(host->GetAreaSectionType("SLAB", type), 0);
  EXPECT_EQ(type, 1);
  EXPECT_EQ(host->GetAreaSectionType("LAY", type), 0);
  EXPECT_EQ(type, 1);
  EXPECT_EQ(host->GetAreaSectionType("PLANE", type), 0);
  EXPECT_EQ(type, 2);
  EXPECT_EQ(host->GetAreaSectionType("nope", type), 1);
  EXPECT_EQ(type, 0);
}

TEST_F(JsonModelHostTest, ShellSectionAnswersItsValues) {
  int shellType = 0;
  bool drilling = true;
  std::string material;
  double angle = 0, membrane = 0, bending = 0;
  EXPECT_EQ(host->GetShellSection("SLAB", shellType, drilling, material, angle, membrane, bending),
            0);
  EXPECT_EQ(shellType, 2);
  EXPECT_FALSE(drilling);
  EXPECT_EQ(material, "C30");
  EXPECT_EQ(angle, 15);
  EXPECT_EQ(membrane, 0.2);
  EXPECT_EQ(bending, 0.25);
}

TEST_F(JsonModelHostTest, ShellSectionDefaultsAreThinShellWithDrilling) {
  int shellType = 0;
  bool drilling = false;
  std::string material = "stale";
  double angle = 1, membrane = 1, bending = 1;
  EXPECT_EQ(host->GetShellSection("PLANE", shellType, drilling, material, angle, membrane, bending),
            0);
  EXPECT_EQ(shellType, 1);
  EXPECT_TRUE(drilling);
  EXPECT_EQ(material, "");
  EXPECT_EQ(angle + membrane + bending, 0);
}

TEST_F(JsonModelHostTest, LayeredShellSectionHasNoMaterialAndNoThickness) {
  int shellType = 0;
  bool drilling = false;
  std::string material = "stale";
  double angle = 0, membrane = 1, bending = 1;
  EXPECT_EQ(host->GetShellSection("LAY", shellType, drilling, material, angle, membrane, bending),
            0);
  EXPECT_EQ(shellType, 6);
  EXPECT_TRUE(drilling);
  EXPECT_EQ(material, "");
  EXPECT_EQ(membrane, 0);
  EXPECT_EQ(bending, 0);
}

TEST_F(JsonModelHostTest, UnknownShellSectionFailsZeroed) {
  int shellType = 3;
  bool drilling = true;
  std::string material = "stale";
  double angle = 1, membrane = 1, bending = 1;
  EXPECT_EQ(host->GetShellSection("nope", shellType, drilling, material, angle, membrane, bending),
            1);
  EXPECT_EQ(shellType, 0);
  EXPECT_FALSE(drilling);
  EXPECT_EQ(material, "");
  EXPECT_EQ(angle + membrane + bending, 0);
}

TEST_F(JsonModelHostTest, ShellLayersWithTheirDefaults) {
  int count = 0;
  Names names, materials;
  Reals distances, thicknesses, angles;
  Ints types, points, s11, s22, s12;
  EXPECT_EQ(host->GetShellLayers("LAY", count, names, distances, thicknesses, types, points,
                                 materials, angles, s11, s22, s12),
            0);
  EXPECT_EQ(count, 2);
  EXPECT_EQ(names, N({"Top", "Core"}));
  EXPECT_EQ(distances, (Reals{0.1, 0}));
  EXPECT_EQ(thicknesses, (Reals{0.05, 0.2}));
  EXPECT_EQ(types, (Ints{2, 1}));
  EXPECT_EQ(points, (Ints{3, 1}));
  EXPECT_EQ(materials, N({"B500", "C30"}));
  EXPECT_EQ(angles, (Reals{90, 0}));
  EXPECT_EQ(s11, (Ints{2, 1}));
  EXPECT_EQ(s22, (Ints{0, 1}));
  EXPECT_EQ(s12, (Ints{1, 1}));
  EXPECT_EQ(host->GetShellLayers("nope", count, names, distances, thicknesses, types, points,
                                 materials, angles, s11, s22, s12),
            1);
  EXPECT_EQ(count, 0);
  EXPECT_TRUE(names.empty() && distances.empty() && s12.empty() && materials.empty());
}

// ---- Frames ----

TEST_F(JsonModelHostTest, FrameNamesSectionPointsAndAngleFromTheFirstEntry) {
  int count = 0;
  Names names;
  EXPECT_EQ(host->GetFrameNameList(count, names), 0);
  EXPECT_EQ(names, N({"C1", "B1", "C2", "X", "C1"}));
  std::string section, autoSelect = "stale";
  EXPECT_EQ(host->GetFrameSection("C1", section, autoSelect), 0);
  EXPECT_EQ(section, "C400");
  EXPECT_EQ(autoSelect, "");
  std::string i, j;
  EXPECT_EQ(host->GetFramePoints("C1", i, j), 0);
  EXPECT_EQ(i, "1");
  EXPECT_EQ(j, "2");
  double angle = 0;
  bool advanced = true;
  EXPECT_EQ(host->GetFrameLocalAngle("C1", angle, advanced), 0);
  EXPECT_EQ(angle, 90);
  EXPECT_FALSE(advanced);
  EXPECT_EQ(host->GetFrameLocalAngle("B1", angle, advanced), 0);
  EXPECT_EQ(angle, 0);
}

TEST_F(JsonModelHostTest, UnknownFrameFailsZeroed) {
  std::string section = "a", autoSelect = "b", i = "c", j = "d";
  EXPECT_EQ(host->GetFrameSection("nope", section, autoSelect), 1);
  EXPECT_EQ(section + autoSelect, "");
  EXPECT_EQ(host->GetFramePoints("nope", i, j), 1);
  EXPECT_EQ(i + j, "");
  double angle = 1;
  bool advanced = true;
  EXPECT_EQ(host->GetFrameLocalAngle("nope", angle, advanced), 1);
  EXPECT_EQ(angle, 0);
  EXPECT_FALSE(advanced);
}

TEST_F(JsonModelHostTest, ReleasesAtBothEndsWithZeroValues) {
  DofFlags releaseI{}, releaseJ{};
  DofValues start, end;
  start.fill(7);
  end.fill(7);
  EXPECT_EQ(host->GetFrameReleases("B1", releaseI, releaseJ, start, end), 0);
  EXPECT_EQ(releaseI, (DofFlags{false, false, false, false, false, true}));
  EXPECT_EQ(releaseJ, (DofFlags{false, false, false, false, true, true}));
  EXPECT_EQ(start, DofValues{});
  EXPECT_EQ(end, DofValues{});
  releaseI.fill(true);
  EXPECT_EQ(host->GetFrameReleases("C1", releaseI, releaseJ, start, end), 0);
  EXPECT_EQ(releaseI, DofFlags{});
  releaseI.fill(true);
  EXPECT_EQ(host->GetFrameReleases("nope", releaseI, releaseJ, start, end), 1);
  EXPECT_EQ(releaseI, DofFlags{});
}

TEST_F(JsonModelHostTest, HingesFillTheThirdAndSixthArrays) {
  int count = 0;
  Ints a1, a2, dofs;
  Reals a4, a5, distances;
  EXPECT_EQ(host->GetFrameHinges("C1", count, a1, a2, dofs, a4, a5, distances), 0);
  EXPECT_EQ(count, 2);
  EXPECT_EQ(a1, (Ints{0, 0}));
  EXPECT_EQ(a2, (Ints{0, 0}));
  EXPECT_EQ(dofs, (Ints{6, 9}));
  EXPECT_EQ(a4, (Reals{0, 0}));
  EXPECT_EQ(a5, (Reals{0, 0}));
  EXPECT_EQ(distances, (Reals{0.05, 0.95}));
  EXPECT_EQ(host->GetFrameHinges("B1", count, a1, a2, dofs, a4, a5, distances), 0);
  EXPECT_EQ(count, 0);
  EXPECT_TRUE(a1.empty() && dofs.empty() && distances.empty());
  count = 3;
  EXPECT_EQ(host->GetFrameHinges("nope", count, a1, a2, dofs, a4, a5, distances), 1);
  EXPECT_EQ(count, 0);
}

// ---- Areas ----

TEST_F(JsonModelHostTest, AreaNamesSectionAndPoints) {
  int count = 0;
  Names names;
  EXPECT_EQ(host->GetAreaNameList(count, names), 0);
  EXPECT_EQ(names, N({"F1", "F2", "F1"}));
  std::string section;
  EXPECT_EQ(host->GetAreaSection("F1", section), 0);
  EXPECT_EQ(section, "SLAB");
  Names points;
  EXPECT_EQ(host->GetAreaPoints("F1", count, points), 0);
  EXPECT_EQ(count, 4);
  EXPECT_EQ(points, N({"2", "3", "6", "5"}));
  EXPECT_EQ(host->GetAreaSection("nope", section), 1);
  EXPECT_EQ(section, "");
  EXPECT_EQ(host->GetAreaPoints("nope", count, points), 1);
  EXPECT_EQ(count, 0);
  EXPECT_TRUE(points.empty());
}

// ---- Load patterns and loads ----

TEST_F(JsonModelHostTest, LoadPatternsWithDefaultTypeAndMultiplier) {
  int count = 0;
  Names names;
  EXPECT_EQ(host->GetLoadPatternNames(count, names), 0);
  EXPECT_EQ(names, N({"DEAD", "LIVE", "WIND", "DEAD"}));
  int type = 0;
  double multiplier = -1;
  EXPECT_EQ(host->GetLoadPatternType("DEAD", type), 0);
  EXPECT_EQ(type, 1);
  EXPECT_EQ(host->GetSelfWeightMultiplier("DEAD", multiplier), 0);
  EXPECT_EQ(multiplier, 1);
  EXPECT_EQ(host->GetLoadPatternType("LIVE", type), 0);
  EXPECT_EQ(type, 3);
  EXPECT_EQ(host->GetLoadPatternType("WIND", type), 0);
  EXPECT_EQ(type, 1);
  EXPECT_EQ(host->GetSelfWeightMultiplier("WIND", multiplier), 0);
  EXPECT_EQ(multiplier, 0);
  multiplier = 2;
  EXPECT_EQ(host->GetLoadPatternType("nope", type), 1);
  EXPECT_EQ(type, 0);
  EXPECT_EQ(host->GetSelfWeightMultiplier("nope", multiplier), 1);
  EXPECT_EQ(multiplier, 0);
}

struct PointForces {
  int count = -1;
  Names points, patterns, csys;
  Ints steps;
  Reals f1, f2, f3, m1, m2, m3;
  int Get(HostModel& host, const std::string& name, ItemType itemType) {
    return host.GetPointForces(name, itemType, count, points, patterns, steps, csys, f1, f2, f3, m1,
                               m2, m3);
  }
};

TEST_F(JsonModelHostTest, PointForcesOfOnePointWithDefaults) {
  PointForces forces;
  EXPECT_EQ(forces.Get(*host, "1", ItemType::Object), 0);
  EXPECT_EQ(forces.count, 2);
  EXPECT_EQ(forces.points, N({"1", "1"}));
  EXPECT_EQ(forces.patterns, N({"DEAD", "LIVE"}));
  EXPECT_EQ(forces.steps, (Ints{0, 2}));
  EXPECT_EQ(forces.csys, N({"GLOBAL", "Local"}));
  EXPECT_EQ(forces.f1, (Reals{1, -1}));
  EXPECT_EQ(forces.f2, (Reals{2, -2}));
  EXPECT_EQ(forces.f3, (Reals{3, -3}));
  EXPECT_EQ(forces.m1, (Reals{4, -4}));
  EXPECT_EQ(forces.m2, (Reals{5, -5}));
  EXPECT_EQ(forces.m3, (Reals{6, -6}));
}

TEST_F(JsonModelHostTest, PointForcesOfGroupsAndOfUnknownNames) {
  PointForces forces;
  EXPECT_EQ(forces.Get(*host, "ALL", ItemType::Group), 0);
  EXPECT_EQ(forces.points, N({"1", "1", "3"}));
  EXPECT_EQ(forces.patterns, N({"DEAD", "LIVE", "WIND"}));
  EXPECT_EQ(forces.Get(*host, "G1", ItemType::Group), 0);
  EXPECT_EQ(forces.points, N({"1", "1"}));
  EXPECT_EQ(forces.Get(*host, "nope", ItemType::Object), 1);
  EXPECT_EQ(forces.count, 0);
  EXPECT_TRUE(forces.points.empty() && forces.f1.empty() && forces.m3.empty());
  EXPECT_EQ(forces.Get(*host, "nope", ItemType::Group), 1);
}

struct DistributedLoads {
  int count = -1;
  Names frames, patterns, csys;
  Ints types, dirs;
  Reals rd1, rd2, dist1, dist2, val1, val2;
  int Get(HostModel& host, const std::string& name, ItemType itemType) {
    return host.GetFrameDistributedLoads(name, itemType, count, frames, patterns, types, csys, dirs,
                                         rd1, rd2, dist1, dist2, val1, val2);
  }
};

struct FramePointLoads {
  int count = -1;
  Names frames, patterns, csys;
  Ints types, dirs;
  Reals relative, absolute, values;
  int Get(HostModel& host, const std::string& name, ItemType itemType) {
    return host.GetFramePointLoads(name, itemType, count, frames, patterns, types, csys, dirs,
                                   relative, absolute, values);
  }
};

TEST_F(JsonModelHostTest, DistributedLoadDistancesAreRelativeTimesFrameLength) {
  DistributedLoads loads;
  EXPECT_EQ(loads.Get(*host, "B1", ItemType::Object), 0);
  EXPECT_EQ(loads.count, 2);
  EXPECT_EQ(loads.frames, N({"B1", "B1"}));
  EXPECT_EQ(loads.patterns, N({"DEAD", "LIVE"}));
  EXPECT_EQ(loads.types, (Ints{1, 2}));
  EXPECT_EQ(loads.csys, N({"GLOBAL", "Local"}));
  EXPECT_EQ(loads.dirs, (Ints{10, 2}));
  EXPECT_EQ(loads.rd1, (Reals{0, 0.25}));
  EXPECT_EQ(loads.rd2, (Reals{1, 0.75}));
  // B1 runs from (0, 0, 3.5) to (4, 0, 3.5).
  EXPECT_EQ(loads.dist1, (Reals{0, 1}));
  EXPECT_EQ(loads.dist2, (Reals{4, 3}));
  EXPECT_EQ(loads.val1, (Reals{5, 1}));
  EXPECT_EQ(loads.val2, (Reals{5, 2}));
}

TEST_F(JsonModelHostTest, DistributedLoadOnAFrameWithAMissingPointHasZeroDistances) {
  DistributedLoads loads;
  EXPECT_EQ(loads.Get(*host, "X", ItemType::Object), 0);
  EXPECT_EQ(loads.rd1, (Reals{0.5}));
  EXPECT_EQ(loads.dist1, (Reals{0}));
  EXPECT_EQ(loads.dist2, (Reals{0}));
}

TEST(JsonModelHostLoads, AFramesLengthIsMeasuredBetweenTheFirstPointsOfItsEndNames) {
  // Point "A" is given twice: the frame runs from the first A (0, 0, 0) to B (0, 0, 3),
  // not from the second A (5, 0, 0).
  const auto model = JsonModelHost::FromText(
      R"({"format": "vask-model", "version": 1, "units": 6,
          "points": [{"name": "A", "x": 0, "y": 0, "z": 0}, {"name": "A", "x": 5, "y": 0, "z": 0},
                     {"name": "B", "x": 0, "y": 0, "z": 3}],
          "frames": [{"name": "F", "section": "S", "i": "A", "j": "B",
                      "distributed_loads": [{"pattern": "P", "dir": 10, "rd1": 0.5, "rd2": 1,
                                             "val1": 1, "val2": 1}],
                      "point_loads": [{"pattern": "P", "dir": 10, "rd": 0.25, "val": 1}]}]})",
      "twice.json", "/models");
  DistributedLoads loads;
  EXPECT_EQ(loads.Get(*model, "F", ItemType::Object), 0);
  EXPECT_EQ(loads.dist1, (Reals{1.5}));
  EXPECT_EQ(loads.dist2, (Reals{3}));
  FramePointLoads points;
  EXPECT_EQ(points.Get(*model, "F", ItemType::Object), 0);
  EXPECT_EQ(points.absolute, (Reals{0.75}));
}

TEST(JsonModelHostLoads, AnEndAfterTheLastEndsIsTakenOnlyAsTheFirstPointOfItsName) {
  // The second "A" stands one point on from F1's I end, where F2's I end is looked for
  // first: F2 still runs from the first A (0, 0, 0) to C (0, 0, 6).
  const auto model = JsonModelHost::FromText(
      R"({"format": "vask-model", "version": 1, "units": 6,
          "points": [{"name": "A", "x": 0, "y": 0, "z": 0}, {"name": "B", "x": 0, "y": 0, "z": 3},
                     {"name": "A", "x": 5, "y": 0, "z": 0}, {"name": "C", "x": 0, "y": 0, "z": 6}],
          "frames": [{"name": "F1", "section": "S", "i": "B", "j": "C"},
                     {"name": "F2", "section": "S", "i": "A", "j": "C",
                      "distributed_loads": [{"pattern": "P", "dir": 10, "rd1": 0.5, "rd2": 1,
                                             "val1": 1, "val2": 1}]}]})",
      "twice.json", "/models");
  DistributedLoads loads;
  EXPECT_EQ(loads.Get(*model, "F2", ItemType::Object), 0);
  EXPECT_EQ(loads.dist1, (Reals{3}));
  EXPECT_EQ(loads.dist2, (Reals{6}));
  int count = 0;
  Ints types;
  Names names;
  Ints numbers;
  ASSERT_EQ(model->GetPointConnectivity("A", count, types, names, numbers), 0);
  EXPECT_EQ(names, N({"F2"}));
}

TEST_F(JsonModelHostTest, DistributedLoadsOfGroupsAndUnknownNames) {
  DistributedLoads loads;
  EXPECT_EQ(loads.Get(*host, "ALL", ItemType::Group), 0);
  EXPECT_EQ(loads.frames, N({"B1", "B1", "C2", "X"}));
  // C2 runs from (4, 0, 0) to (4, 0, 3.5).
  EXPECT_EQ(loads.dist2[2], 1.75);
  EXPECT_EQ(loads.Get(*host, "G1", ItemType::Group), 0);
  EXPECT_EQ(loads.frames, N({"B1", "B1", "C2"}));
  EXPECT_EQ(loads.Get(*host, "EMPTY", ItemType::Group), 0);
  EXPECT_EQ(loads.count, 0);
  EXPECT_EQ(loads.Get(*host, "nope", ItemType::Object), 1);
  EXPECT_EQ(loads.count, 0);
  EXPECT_TRUE(loads.frames.empty() && loads.dist1.empty() && loads.val2.empty());
  EXPECT_EQ(loads.Get(*host, "B1", ItemType::SelectedObjects), 1);
}

TEST_F(JsonModelHostTest, FramePointLoadsWithAbsoluteDistance) {
  FramePointLoads loads;
  EXPECT_EQ(loads.Get(*host, "B1", ItemType::Object), 0);
  EXPECT_EQ(loads.count, 2);
  EXPECT_EQ(loads.frames, N({"B1", "B1"}));
  EXPECT_EQ(loads.patterns, N({"DEAD", "LIVE"}));
  EXPECT_EQ(loads.types, (Ints{1, 2}));
  EXPECT_EQ(loads.csys, N({"GLOBAL", "Local"}));
  EXPECT_EQ(loads.dirs, (Ints{10, 3}));
  EXPECT_EQ(loads.relative, (Reals{0.5, 0.25}));
  EXPECT_EQ(loads.absolute, (Reals{2, 1}));
  EXPECT_EQ(loads.values, (Reals{12, -4}));
  EXPECT_EQ(loads.Get(*host, "ALL", ItemType::Group), 0);
  EXPECT_EQ(loads.frames, N({"B1", "B1", "X"}));
  EXPECT_EQ(loads.absolute, (Reals{2, 1, 0}));
  EXPECT_EQ(loads.Get(*host, "nope", ItemType::Object), 1);
  EXPECT_EQ(loads.count, 0);
  EXPECT_TRUE(loads.frames.empty() && loads.absolute.empty() && loads.values.empty());
}

TEST_F(JsonModelHostTest, AreaUniformLoadsWithDefaultCsys) {
  int count = 0;
  Names areas, patterns, csys;
  Ints dirs;
  Reals values;
  EXPECT_EQ(
      host->GetAreaUniformLoads("F1", ItemType::Object, count, areas, patterns, csys, dirs, values),
      0);
  EXPECT_EQ(count, 1);
  EXPECT_EQ(areas, N({"F1"}));
  EXPECT_EQ(patterns, N({"DEAD"}));
  EXPECT_EQ(csys, N({"GLOBAL"}));
  EXPECT_EQ(dirs, (Ints{10}));
  EXPECT_EQ(values, (Reals{-2}));
  EXPECT_EQ(
      host->GetAreaUniformLoads("ALL", ItemType::Group, count, areas, patterns, csys, dirs, values),
      0);
  EXPECT_EQ(areas, N({"F1", "F2"}));
  EXPECT_EQ(host->GetAreaUniformLoads("nope", ItemType::Object, count, areas, patterns, csys, dirs,
                                      values),
            1);
  EXPECT_EQ(count, 0);
  EXPECT_TRUE(areas.empty() && values.empty());
}

TEST_F(JsonModelHostTest, AreaUniformToFrameLoadsWithDefaultDistributionTwo) {
  int count = 0;
  Names areas, patterns, csys;
  Ints dirs, distTypes;
  Reals values;
  EXPECT_EQ(host->GetAreaUniformToFrameLoads("F1", ItemType::Object, count, areas, patterns, csys,
                                             dirs, values, distTypes),
            0);
  EXPECT_EQ(count, 2);
  EXPECT_EQ(areas, N({"F1", "F1"}));
  EXPECT_EQ(patterns, N({"LIVE", "DEAD"}));
  EXPECT_EQ(csys, N({"GLOBAL", "Local"}));
  EXPECT_EQ(dirs, (Ints{10, 3}));
  EXPECT_EQ(values, (Reals{-3, -1}));
  EXPECT_EQ(distTypes, (Ints{2, 1}));
  EXPECT_EQ(host->GetAreaUniformToFrameLoads("G1", ItemType::Group, count, areas, patterns, csys,
                                             dirs, values, distTypes),
            0);
  EXPECT_EQ(count, 2);
  EXPECT_EQ(host->GetAreaUniformToFrameLoads("nope", ItemType::Object, count, areas, patterns, csys,
                                             dirs, values, distTypes),
            1);
  EXPECT_EQ(count, 0);
  EXPECT_TRUE(areas.empty() && distTypes.empty());
}

// ---- Mass ----

TEST_F(JsonModelHostTest, MassSourceOptionAndLoads) {
  int option = 0, count = 0;
  Names patterns;
  Reals factors;
  EXPECT_EQ(host->GetMassSource(option, count, patterns, factors), 0);
  EXPECT_EQ(option, 3);
  EXPECT_EQ(count, 2);
  EXPECT_EQ(patterns, N({"DEAD", "LIVE"}));
  EXPECT_EQ(factors, (Reals{1, 0.25}));
}

TEST_F(JsonModelHostTest, MassSourceDefaultsToElementMassWithoutLoads) {
  auto bare = JsonModelHost::FromText(R"({"format": "vask-model", "version": 1, "units": 3})",
                                      "bare.json", ".");
  int option = 0, count = 5;
  Names patterns = {"x"};
  Reals factors = {1};
  EXPECT_EQ(bare->GetMassSource(option, count, patterns, factors), 0);
  EXPECT_EQ(option, 1);
  EXPECT_EQ(count, 0);
  EXPECT_TRUE(patterns.empty() && factors.empty());
}

TEST_F(JsonModelHostTest, PointFrameAndAreaMasses) {
  DofValues mass{};
  EXPECT_EQ(host->GetPointMass("1", mass), 0);
  EXPECT_EQ(mass, (DofValues{1, 2, 3, 4, 5, 6}));
  EXPECT_EQ(host->GetPointMass("2", mass), 0);
  EXPECT_EQ(mass, DofValues{});
  mass.fill(1);
  EXPECT_EQ(host->GetPointMass("nope", mass), 1);
  EXPECT_EQ(mass, DofValues{});
  double perLength = 0, perArea = 0;
  EXPECT_EQ(host->GetFrameMass("C1", perLength), 0);
  EXPECT_EQ(perLength, 0.5);
  EXPECT_EQ(host->GetFrameMass("nope", perLength), 1);
  EXPECT_EQ(perLength, 0);
  EXPECT_EQ(host->GetAreaMass("F1", perArea), 0);
  EXPECT_EQ(perArea, 0.1);
  EXPECT_EQ(host->GetAreaMass("F2", perArea), 0);
  EXPECT_EQ(perArea, 0);
  perArea = 1;
  EXPECT_EQ(host->GetAreaMass("nope", perArea), 1);
  EXPECT_EQ(perArea, 0);
}

// ---- Time-history functions ----

TEST_F(JsonModelHostTest, FunctionNamesAndTypesWithDefaultFamily) {
  int count = 0;
  Names names;
  EXPECT_EQ(host->GetFunctionNames(count, names), 0);
  EXPECT_EQ(names, N({"REC", "ABS", "USER", "SIN", "COS", "RAMP", "SAW", "TRI", "PER", "RSPECTRUM",
                      "BROKEN", "SIN"}));
  int family = 0, kind = -1;
  EXPECT_EQ(host->GetFunctionType("SIN", family, kind), 0);
  EXPECT_EQ(family, 2);
  EXPECT_EQ(kind, 2);
  EXPECT_EQ(host->GetFunctionType("RSPECTRUM", family, kind), 0);
  EXPECT_EQ(family, 1);
  EXPECT_EQ(kind, 1);
  EXPECT_EQ(host->GetFunctionType("nope", family, kind), 1);
  EXPECT_EQ(family, 0);
  EXPECT_EQ(kind, 0);
}

struct FromFile {
  std::string path;
  int headerLines = -1, prefixChars = -1, pointsPerLine = -1, valueType = -1, fieldWidth = -1;
  bool freeFormat = false;
  double dt = -1;
  int Get(HostModel& host, const std::string& name) {
    return host.GetFunctionFromFile(name, path, headerLines, prefixChars, pointsPerLine, valueType,
                                    freeFormat, fieldWidth, dt);
  }
};

TEST_F(JsonModelHostTest, FromFileFunctionPathIsTakenFromTheModelFolder) {
  FromFile file;
  EXPECT_EQ(file.Get(*host, "REC"), 0);
  EXPECT_EQ(file.path, (kFixture.parent_path() / "records/record.txt").string());
  EXPECT_EQ(file.headerLines, 2);
  EXPECT_EQ(file.prefixChars, 1);
  EXPECT_EQ(file.pointsPerLine, 3);
  EXPECT_EQ(file.valueType, 2);
  EXPECT_FALSE(file.freeFormat);
  EXPECT_EQ(file.fieldWidth, 12);
  EXPECT_EQ(file.dt, 0.01);
}

TEST_F(JsonModelHostTest, FromFileFunctionDefaultsAndAbsolutePath) {
  FromFile file;
  EXPECT_EQ(file.Get(*host, "ABS"), 0);
  EXPECT_EQ(file.path, "/data/absolute.txt");
  EXPECT_EQ(file.headerLines, 0);
  EXPECT_EQ(file.prefixChars, 0);
  EXPECT_EQ(file.pointsPerLine, 1);
  EXPECT_EQ(file.valueType, 1);
  EXPECT_TRUE(file.freeFormat);
  EXPECT_EQ(file.fieldWidth, 10);
  EXPECT_EQ(file.dt, 0.02);
}

TEST_F(JsonModelHostTest, FromFileFunctionPathFollowsTheBaseFolderOfText) {
  auto model = JsonModelHost::FromText(
      R"({"format": "vask-model", "version": 1, "units": 6,
          "functions": [{"name": "F", "kind": 0, "file": {"path": "eq/north.txt"}}]})",
      "inline.json", "/models/site");
  FromFile file;
  EXPECT_EQ(file.Get(*model, "F"), 0);
  EXPECT_EQ(file.path, "/models/site/eq/north.txt");
}

TEST_F(JsonModelHostTest, FromFileFailsZeroedForOtherKinds) {
  FromFile file;
  file.path = "stale";
  file.freeFormat = true;
  EXPECT_EQ(file.Get(*host, "USER"), 1);
  EXPECT_EQ(file.path, "");
  EXPECT_EQ(
      file.headerLines + file.prefixChars + file.pointsPerLine + file.valueType + file.fieldWidth,
      0);
  EXPECT_FALSE(file.freeFormat);
  EXPECT_EQ(file.dt, 0);
}

TEST_F(JsonModelHostTest, UserAndPeriodicFunctionPoints) {
  int count = 0, cycles = 0;
  Reals times, values;
  EXPECT_EQ(host->GetFunctionPoints("USER", count, times, values), 0);
  EXPECT_EQ(count, 3);
  EXPECT_EQ(times, (Reals{0, 0.5, 1}));
  EXPECT_EQ(values, (Reals{0, 1, 0}));
  EXPECT_EQ(host->GetFunctionPeriodicPoints("PER", cycles, count, times, values), 0);
  EXPECT_EQ(cycles, 3);
  EXPECT_EQ(count, 3);
  EXPECT_EQ(times, (Reals{0, 0.25, 0.5}));
  EXPECT_EQ(values, (Reals{0, 1, 0}));
  EXPECT_EQ(host->GetFunctionPoints("PER", count, times, values), 1);
  EXPECT_EQ(count, 0);
  EXPECT_TRUE(times.empty() && values.empty());
  cycles = 4;
  EXPECT_EQ(host->GetFunctionPeriodicPoints("USER", cycles, count, times, values), 1);
  EXPECT_EQ(cycles, 0);
}

TEST_F(JsonModelHostTest, SineAndCosineFunctions) {
  double period = 0, amplitude = 0;
  int steps = 0, cycles = 0;
  EXPECT_EQ(host->GetFunctionSine("SIN", period, steps, cycles, amplitude), 0);
  EXPECT_EQ(period, 0.5);
  EXPECT_EQ(steps, 16);
  EXPECT_EQ(cycles, 4);
  EXPECT_EQ(amplitude, 2);
  EXPECT_EQ(host->GetFunctionCosine("COS", period, steps, cycles, amplitude), 0);
  EXPECT_EQ(period, 0.6);
  EXPECT_EQ(steps, 12);
  EXPECT_EQ(cycles, 5);
  EXPECT_EQ(amplitude, 3);
  EXPECT_EQ(host->GetFunctionCosine("SIN", period, steps, cycles, amplitude), 1);
  EXPECT_EQ(period + amplitude, 0);
  EXPECT_EQ(steps + cycles, 0);
}

TEST_F(JsonModelHostTest, FunctionWithMissingDataFailsItsOperation) {
  double period = 1, amplitude = 1;
  int steps = 1, cycles = 1;
  EXPECT_EQ(host->GetFunctionSine("BROKEN", period, steps, cycles, amplitude), 1);
  EXPECT_EQ(period, 0);
  EXPECT_EQ(steps, 0);
}

TEST_F(JsonModelHostTest, RampSawtoothAndTriangularFunctions) {
  double time = 0, amplitude = 0, maxTime = 0, period = 0, rampTime = 0;
  int cycles = 0;
  EXPECT_EQ(host->GetFunctionRamp("RAMP", time, amplitude, maxTime), 0);
  EXPECT_EQ(time, 1.5);
  EXPECT_EQ(amplitude, 3);
  EXPECT_EQ(maxTime, 4);
  EXPECT_EQ(host->GetFunctionSawtooth("SAW", period, rampTime, cycles, amplitude), 0);
  EXPECT_EQ(period, 2);
  EXPECT_EQ(rampTime, 0.5);
  EXPECT_EQ(cycles, 3);
  EXPECT_EQ(amplitude, 1.5);
  EXPECT_EQ(host->GetFunctionTriangular("TRI", period, cycles, amplitude), 0);
  EXPECT_EQ(period, 1.2);
  EXPECT_EQ(cycles, 5);
  EXPECT_EQ(amplitude, 0.8);
  // The second "SIN" is a ramp, but look-ups take the first entry of a name.
  EXPECT_EQ(host->GetFunctionRamp("SIN", time, amplitude, maxTime), 1);
  EXPECT_EQ(time + amplitude + maxTime, 0);
  EXPECT_EQ(host->GetFunctionSawtooth("nope", period, rampTime, cycles, amplitude), 1);
  EXPECT_EQ(host->GetFunctionTriangular("nope", period, cycles, amplitude), 1);
  EXPECT_EQ(period + cycles + amplitude, 0);
}

// ---- Groups ----

TEST_F(JsonModelHostTest, GroupsAsTheFileHoldsThem) {
  int count = 0;
  Names names;
  EXPECT_EQ(host->GetGroupNames(count, names), 0);
  EXPECT_EQ(names, N({"G1", "EMPTY", "G1"}));
  Ints types;
  Names objects;
  EXPECT_EQ(host->GetGroupAssignments("G1", count, types, objects), 0);
  EXPECT_EQ(count, 6);
  EXPECT_EQ(types, (Ints{1, 2, 1, 5, 1, 2}));
  EXPECT_EQ(objects, N({"2", "B1", "1", "F1", "NOWHERE", "C2"}));
  EXPECT_EQ(host->GetGroupAssignments("EMPTY", count, types, objects), 0);
  EXPECT_EQ(count, 0);
  EXPECT_TRUE(types.empty());
  // The file does not hold the host's group "ALL".
  EXPECT_EQ(host->GetGroupAssignments("ALL", count, types, objects), 1);
  EXPECT_EQ(count, 0);
  EXPECT_TRUE(objects.empty());
}

// ---- After the source model is read ----

TEST_F(JsonModelHostTest, AfterTheSourceModelIsReadGroupsAndCasesStillAnswer) {
  host->SourceModelRead();
  int count = 0;
  Names names;
  EXPECT_EQ(host->GetGroupNames(count, names), 0);
  EXPECT_EQ(names, N({"G1", "EMPTY", "G1"}));
  Ints types;
  Names objects;
  EXPECT_EQ(host->GetGroupAssignments("G1", count, types, objects), 0);
  EXPECT_EQ(objects, N({"2", "B1", "1", "F1", "NOWHERE", "C2"}));
  EXPECT_EQ(host->GetCaseNames(count, names), 0);
  EXPECT_EQ(names, N({"DEAD", "PUSH", "TH1", "TH2", "DEAD"}));
}

TEST_F(JsonModelHostTest, AfterTheSourceModelIsReadPointsFramesAndAreasAreGone) {
  host->SourceModelRead();
  int count = 0;
  Names names;
  double x = 0.0, y = 0.0, z = 0.0;
  EXPECT_THROW(host->GetPointCount(), std::logic_error);
  EXPECT_THROW(host->GetPointNameList(count, names), std::logic_error);
  EXPECT_THROW(host->GetPointCoordinates("1", x, y, z, "Global"), std::logic_error);
  EXPECT_THROW(host->GetFrameNameList(count, names), std::logic_error);
  std::string section, autoSelect;
  EXPECT_THROW(host->GetFrameSection("B1", section, autoSelect), std::logic_error);
  EXPECT_THROW(host->GetAreaNameList(count, names), std::logic_error);
  EXPECT_THROW(host->GetAreaSection("F1", section), std::logic_error);
  Ints objectTypes, pointNumbers;
  EXPECT_THROW(host->GetPointConnectivity("1", count, objectTypes, names, pointNumbers),
               std::logic_error);
  double mass = 0.0;
  EXPECT_THROW(host->GetFrameMass("B1", mass), std::logic_error);
}

// ---- Load cases ----

TEST_F(JsonModelHostTest, CaseNamesAndTypes) {
  int count = 0;
  Names names;
  EXPECT_EQ(host->GetCaseNames(count, names), 0);
  EXPECT_EQ(names, N({"DEAD", "PUSH", "TH1", "TH2", "DEAD"}));
  int type = 0, subType = 9, designType = 9, designOption = 9, autoCreated = 9;
  EXPECT_EQ(host->GetCaseType("TH1", type, subType, designType, designOption, autoCreated), 0);
  EXPECT_EQ(type, 8);
  EXPECT_EQ(subType + designType + designOption + autoCreated, 0);
  EXPECT_EQ(host->GetCaseType("DEAD", type, subType, designType, designOption, autoCreated), 0);
  EXPECT_EQ(type, 1);
  EXPECT_EQ(host->GetCaseType("nope", type, subType, designType, designOption, autoCreated), 1);
  EXPECT_EQ(type, 0);
}

TEST_F(JsonModelHostTest, StaticLoadApplicationGivenAndDefault) {
  int control = 0, displacementType = 0, dof = 0;
  double displacement = 0;
  std::string point = "stale";
  EXPECT_EQ(
      host->GetStaticLoadApplication("PUSH", control, displacementType, displacement, dof, point),
      0);
  EXPECT_EQ(control, 2);
  EXPECT_EQ(displacementType, 2);
  EXPECT_EQ(displacement, 0.3);
  EXPECT_EQ(dof, 1);
  EXPECT_EQ(point, "3");
  EXPECT_EQ(
      host->GetStaticLoadApplication("DEAD", control, displacementType, displacement, dof, point),
      0);
  EXPECT_EQ(control, 1);
  EXPECT_EQ(displacementType, 1);
  EXPECT_EQ(displacement, 0);
  EXPECT_EQ(dof, 1);
  EXPECT_EQ(point, "");
  EXPECT_EQ(
      host->GetStaticLoadApplication("nope", control, displacementType, displacement, dof, point),
      1);
  EXPECT_EQ(control + displacementType + dof, 0);
}

TEST_F(JsonModelHostTest, StaticLoadsWithDefaultFactor) {
  int count = 0;
  Names types, names;
  Reals factors;
  EXPECT_EQ(host->GetStaticLoads("PUSH", count, types, names, factors), 0);
  EXPECT_EQ(count, 2);
  EXPECT_EQ(types, N({"Load", "Mode"}));
  EXPECT_EQ(names, N({"DEAD", "1"}));
  EXPECT_EQ(factors, (Reals{1.2, 0.5}));
  EXPECT_EQ(host->GetStaticLoads("DEAD", count, types, names, factors), 0);
  EXPECT_EQ(factors, (Reals{1}));
  EXPECT_EQ(host->GetStaticLoads("nope", count, types, names, factors), 1);
  EXPECT_EQ(count, 0);
  EXPECT_TRUE(types.empty() && names.empty() && factors.empty());
}

TEST_F(JsonModelHostTest, HistoryLoadsWithFunctionAndTimeFactor) {
  int count = 0;
  Names types, names, functions;
  Reals factors, timeFactors;
  EXPECT_EQ(host->GetHistoryLoads("TH1", count, types, names, functions, factors, timeFactors), 0);
  EXPECT_EQ(count, 1);
  EXPECT_EQ(types, N({"Accel"}));
  EXPECT_EQ(names, N({"U1"}));
  EXPECT_EQ(functions, N({"REC"}));
  EXPECT_EQ(factors, (Reals{9.81}));
  EXPECT_EQ(timeFactors, (Reals{2}));
  EXPECT_EQ(host->GetHistoryLoads("DEAD", count, types, names, functions, factors, timeFactors), 0);
  EXPECT_EQ(functions, N({""}));
  EXPECT_EQ(timeFactors, (Reals{1}));
  EXPECT_EQ(host->GetHistoryLoads("nope", count, types, names, functions, factors, timeFactors), 1);
  EXPECT_EQ(count, 0);
  EXPECT_TRUE(functions.empty() && timeFactors.empty());
}

TEST_F(JsonModelHostTest, HistoryTimeStepOrFailureWhenAbsent) {
  int steps = 0;
  double size = 0;
  EXPECT_EQ(host->GetHistoryTimeStep("TH1", steps, size), 0);
  EXPECT_EQ(steps, 1000);
  EXPECT_EQ(size, 0.01);
  EXPECT_EQ(host->GetHistoryTimeStep("TH2", steps, size), 1);
  EXPECT_EQ(steps, 0);
  EXPECT_EQ(size, 0);
}

TEST_F(JsonModelHostTest, HistoryDampingGivenDefaultedOrAbsent) {
  int type = 0;
  double mass = -1, stiffness = -1, v1 = -1, v2 = -1, r1 = -1, r2 = -1;
  EXPECT_EQ(host->GetHistoryDamping("TH1", type, mass, stiffness, v1, v2, r1, r2), 0);
  EXPECT_EQ(type, 2);
  EXPECT_EQ(mass, 0);
  EXPECT_EQ(stiffness, 0);
  EXPECT_EQ(v1, 0.1);
  EXPECT_EQ(v2, 1);
  EXPECT_EQ(r1, 0.05);
  EXPECT_EQ(r2, 0.04);
  EXPECT_EQ(host->GetHistoryDamping("TH2", type, mass, stiffness, v1, v2, r1, r2), 0);
  EXPECT_EQ(type, 1);
  EXPECT_EQ(mass, 0.1);
  EXPECT_EQ(stiffness, 0.002);
  EXPECT_EQ(v1 + v2 + r1 + r2, 0);
  type = 5;
  mass = 1;
  EXPECT_EQ(host->GetHistoryDamping("PUSH", type, mass, stiffness, v1, v2, r1, r2), 1);
  EXPECT_EQ(type, 0);
  EXPECT_EQ(mass + stiffness + v1 + v2 + r1 + r2, 0);
}

}  // namespace
}  // namespace vtt
