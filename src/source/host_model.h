// HostModel: the one interface through which the source model reaches Vask.
//
// Every operation the transfer asks of the host is one virtual function here, so the
// whole transfer runs the same against the live application or against a model file.
//
// Conventions, shared by every implementation:
// - The result is a status: 0 for success, non-zero for failure. Callers mostly read
//   results whatever the status, so an implementation that fails sets every result to
//   zero or empty.
// - Lists come back as a count and arrays of that count, indexed from 0 (unlike the
//   source model, which counts from 1). The caller passes empty arrays; the host sizes them.
// - Names are compared exactly; a name once returned is the key for further calls.
// - Reals are in the host's present units (GetPresentUnits); nothing is converted.
// - Restraint and release arrays are indexed U1, U2, U3, R1, R2, R3 from 0.
#pragma once

#include <array>
#include <string>
#include <vector>

namespace vtt {

using Names = std::vector<std::string>;
using Reals = std::vector<double>;
using Ints = std::vector<int>;
using DofFlags = std::array<bool, 6>;
using DofValues = std::array<double, 6>;

// How the name passed to a load or assignment query is read.
enum class ItemType { Object = 0, Group = 1, SelectedObjects = 2 };

// Codes the host uses that the transfer tests.
namespace host_code {
inline constexpr int kMaterialSteel = 1;
inline constexpr int kMaterialConcrete = 2;
inline constexpr int kMaterialRebar = 6;
inline constexpr int kSymmetryIsotropic = 0;
inline constexpr int kSymmetryOrthotropic = 1;
inline constexpr int kSymmetryAnisotropic = 2;
inline constexpr int kSymmetryUniaxial = 3;
inline constexpr int kConstraintDiaphragm = 2;
inline constexpr int kObjectPoint = 1;
inline constexpr int kObjectFrame = 2;
inline constexpr int kObjectArea = 5;
}  // namespace host_code

// The family of time-history functions, and the kinds of function within it: each kind is
// answered by its own operation of the host.
inline constexpr int kTimeHistoryFamily = 2;
enum FunctionKind : int {
  kFromFile = 0,
  kUser = 1,
  kSine = 2,
  kCosine = 3,
  kRamp = 4,
  kSawtooth = 5,
  kTriangular = 6,
  kUserPeriodic = 7,
};


class HostModel {
 public:
  virtual ~HostModel() = default;

  // Told once the source model has been read: the transfer asks nothing more of points,
  // frames, areas, their loads and their mass, so a host that holds them may let them go.
  // The later steps ask only for groups and load cases. Does nothing by default.
  virtual void SourceModelRead() {}

  // Whether questions may come from a second thread while the first thread asks others
  // (never while a command such as AddDefaultMaterial changes the model). The transfer
  // then asks some of them (the objects at a point, the groups) on a second processor.
  // False by default: a live host answers on the thread that made it.
  virtual bool AnswersFromTwoThreads() const { return false; }

  // ---- Units and points ----
  // The present unit code, 1 to 16 (not a status).
  virtual int GetPresentUnits() = 0;
  // The number of points in the model (not a status).
  virtual int GetPointCount() = 0;
  virtual int GetPointNameList(int& count, Names& names) = 0;
  virtual int GetPointCoordinates(const std::string& name, double& x, double& y, double& z,
                                  const std::string& csys) = 0;
  virtual int GetPointRestraints(const std::string& name, DofFlags& restraints) = 0;
  // With ItemType::Group and the name "ALL": every assignment of every point.
  virtual int GetPointConstraints(const std::string& name, ItemType itemType, int& count,
                                  Names& pointNames, Names& constraintNames) = 0;
  // Objects connected to a point: type 2 frame, 5 area; pointNumbers is the point's
  // position within each object.
  virtual int GetPointConnectivity(const std::string& name, int& count, Ints& objectTypes,
                                   Names& objectNames, Ints& pointNumbers) = 0;

  // ---- Constraints ----
  virtual int GetConstraintNameList(int& count, Names& names) = 0;
  virtual int GetConstraintType(const std::string& name, int& type) = 0;
  virtual int GetDiaphragmData(const std::string& name, int& axis, std::string& csys) = 0;

  // ---- Materials ----
  // typeFilter 0 lists all materials.
  virtual int GetMaterialNameList(int typeFilter, int& count, Names& names) = 0;
  // The only change the transfer makes to the host model.
  virtual int AddDefaultMaterial(const std::string& name, int type, int region,
                                 const std::string& standard, const std::string& grade,
                                 std::string& createdName) = 0;
  virtual int GetMaterialType(const std::string& name, int& type, int& symmetry) = 0;
  virtual int GetMaterialWeightAndMass(const std::string& name, double& weightPerVolume,
                                       double& massPerVolume) = 0;
  virtual int GetIsotropicData(const std::string& name, double& e, double& u, double& a,
                               double& g) = 0;
  virtual int GetOrthotropicData(const std::string& name, Reals& e, Reals& u, Reals& a,
                                 Reals& g) = 0;
  virtual int GetAnisotropicData(const std::string& name, Reals& e, Reals& u, Reals& a,
                                 Reals& g) = 0;
  virtual int GetUniaxialData(const std::string& name, double& e, double& a) = 0;
  virtual int GetSteelData(const std::string& name, double& fy, double& fu, double& efy,
                           double& efu) = 0;
  virtual int GetRebarData(const std::string& name, double& fy, double& fu, double& efy,
                           double& efu) = 0;
  virtual int GetConcreteData(const std::string& name, double& fc) = 0;
  virtual int GetStressStrainCurve(const std::string& name, int& count, Ints& pointIds,
                                   Reals& strains, Reals& stresses) = 0;

  // ---- Frame sections ----
  virtual int GetFrameSectionNameList(int& count, Names& names) = 0;
  // In result order: the two plastic moduli are z22 then z33.
  virtual int GetFrameSectionProperties(const std::string& name, double& area, double& as2,
                                        double& as3, double& torsion, double& i22,
                                        double& i33, double& s22, double& s33, double& z22,
                                        double& z33, double& r22, double& r33) = 0;
  virtual int GetFrameSectionType(const std::string& name, int& type) = 0;
  virtual int GetNonprismaticSection(const std::string& name, int& count,
                                     Names& startSections, Names& endSections) = 0;
  virtual int GetFrameSectionMaterial(const std::string& name, std::string& material) = 0;
  // 1 column, 2 beam.
  virtual int GetRebarDesignType(const std::string& sectionName, int& designType) = 0;

  // ---- Area sections ----
  virtual int GetAreaSectionNameList(int& count, Names& names) = 0;
  virtual int GetAreaSectionType(const std::string& name, int& type) = 0;
  virtual int GetShellSection(const std::string& name, int& shellType, bool& drillingDof,
                              std::string& material, double& materialAngle,
                              double& membraneThickness, double& bendingThickness) = 0;
  virtual int GetShellLayers(const std::string& name, int& count, Names& layerNames,
                             Reals& distances, Reals& thicknesses, Ints& types,
                             Ints& integrationPoints, Names& materials, Reals& materialAngles,
                             Ints& s11Types, Ints& s22Types, Ints& s12Types) = 0;

  // ---- Frames ----
  virtual int GetFrameNameList(int& count, Names& names) = 0;
  virtual int GetFrameSection(const std::string& name, std::string& section,
                              std::string& autoSelect) = 0;
  virtual int GetFramePoints(const std::string& name, std::string& pointI,
                             std::string& pointJ) = 0;
  virtual int GetFrameLocalAngle(const std::string& name, double& angle, bool& advanced) = 0;
  virtual int GetFrameReleases(const std::string& name, DofFlags& releaseI, DofFlags& releaseJ,
                               DofValues& startValues, DofValues& endValues) = 0;
  // Six arrays of per-hinge data; the third holds the degree-of-freedom code and the
  // sixth the relative distance along the frame.
  virtual int GetFrameHinges(const std::string& name, int& count, Ints& a1, Ints& a2,
                             Ints& dofs, Reals& a4, Reals& a5, Reals& relativeDistances) = 0;

  // ---- Areas ----
  virtual int GetAreaNameList(int& count, Names& names) = 0;
  virtual int GetAreaSection(const std::string& name, std::string& section) = 0;
  virtual int GetAreaPoints(const std::string& name, int& count, Names& points) = 0;

  // ---- Load patterns and loads ----
  virtual int GetLoadPatternNames(int& count, Names& names) = 0;
  virtual int GetLoadPatternType(const std::string& name, int& type) = 0;
  virtual int GetSelfWeightMultiplier(const std::string& name, double& multiplier) = 0;
  virtual int GetPointForces(const std::string& name, ItemType itemType, int& count,
                             Names& pointNames, Names& loadPatterns, Ints& lcSteps, Names& csys,
                             Reals& f1, Reals& f2, Reals& f3, Reals& m1, Reals& m2,
                             Reals& m3) = 0;
  virtual int GetFrameDistributedLoads(const std::string& name, ItemType itemType, int& count,
                                       Names& frameNames, Names& loadPatterns, Ints& myTypes,
                                       Names& csys, Ints& dirs, Reals& rd1, Reals& rd2,
                                       Reals& dist1, Reals& dist2, Reals& val1,
                                       Reals& val2) = 0;
  virtual int GetFramePointLoads(const std::string& name, ItemType itemType, int& count,
                                 Names& frameNames, Names& loadPatterns, Ints& myTypes,
                                 Names& csys, Ints& dirs, Reals& relDist, Reals& dist,
                                 Reals& val) = 0;
  virtual int GetAreaUniformLoads(const std::string& name, ItemType itemType, int& count,
                                  Names& areaNames, Names& loadPatterns, Names& csys, Ints& dirs,
                                  Reals& values) = 0;
  virtual int GetAreaUniformToFrameLoads(const std::string& name, ItemType itemType,
                                         int& count, Names& areaNames, Names& loadPatterns,
                                         Names& csys, Ints& dirs, Reals& values,
                                         Ints& distTypes) = 0;

  // ---- Mass ----
  virtual int GetMassSource(int& option, int& count, Names& loadPatterns, Reals& factors) = 0;
  virtual int GetPointMass(const std::string& name, DofValues& mass) = 0;
  virtual int GetFrameMass(const std::string& name, double& massPerLength) = 0;
  virtual int GetAreaMass(const std::string& name, double& massPerArea) = 0;

  // ---- Time-history functions ----
  virtual int GetFunctionNames(int& count, Names& names) = 0;
  // family 2 is time history (kTimeHistoryFamily); `kind` is one of FunctionKind.
  virtual int GetFunctionType(const std::string& name, int& family, int& kind) = 0;
  virtual int GetFunctionFromFile(const std::string& name, std::string& fileName,
                                  int& headerLines, int& prefixChars, int& pointsPerLine,
                                  int& valueType, bool& freeFormat, int& fieldWidth,
                                  double& dt) = 0;
  virtual int GetFunctionPoints(const std::string& name, int& count, Reals& times,
                                Reals& values) = 0;
  virtual int GetFunctionPeriodicPoints(const std::string& name, int& cycles, int& count,
                                        Reals& times, Reals& values) = 0;
  virtual int GetFunctionSine(const std::string& name, double& period, int& stepsPerCycle,
                              int& cycles, double& amplitude) = 0;
  virtual int GetFunctionCosine(const std::string& name, double& period, int& stepsPerCycle,
                                int& cycles, double& amplitude) = 0;
  virtual int GetFunctionRamp(const std::string& name, double& time, double& amplitude,
                              double& maxTime) = 0;
  virtual int GetFunctionSawtooth(const std::string& name, double& period, double& rampTime,
                                  int& cycles, double& amplitude) = 0;
  virtual int GetFunctionTriangular(const std::string& name, double& period, int& cycles,
                                    double& amplitude) = 0;

  // ---- Groups ----
  virtual int GetGroupNames(int& count, Names& names) = 0;
  virtual int GetGroupAssignments(const std::string& name, int& count, Ints& objectTypes,
                                  Names& objectNames) = 0;

  // ---- Load cases ----
  virtual int GetCaseNames(int& count, Names& names) = 0;
  virtual int GetCaseType(const std::string& name, int& type, int& subType, int& designType,
                          int& designOption, int& autoCreated) = 0;
  virtual int GetStaticLoadApplication(const std::string& name, int& loadControl,
                                       int& displacementType, double& displacement,
                                       int& monitoredDof, std::string& monitoredPoint) = 0;
  virtual int GetStaticLoads(const std::string& name, int& count, Names& loadTypes,
                             Names& loadNames, Reals& scaleFactors) = 0;
  virtual int GetHistoryLoads(const std::string& name, int& count, Names& loadTypes,
                              Names& loadNames, Names& functions, Reals& scaleFactors,
                              Reals& timeFactors) = 0;
  virtual int GetHistoryTimeStep(const std::string& name, int& steps, double& stepSize) = 0;
  // type 1 mass and stiffness coefficients, 2 periods, 3 frequencies.
  virtual int GetHistoryDamping(const std::string& name, int& type, double& massCoefficient,
                                double& stiffnessCoefficient, double& value1, double& value2,
                                double& ratio1, double& ratio2) = 0;
};

}  // namespace vtt
