// A HostModel for tests: every operation fails with status 1 and zeroed or empty results,
// and the two counting operations answer 0. A test derives from it and overrides only the
// operations its model needs.
#pragma once

#include <string>

#include "source/host_model.h"

namespace vtt::test_support {

class FakeHostModel : public HostModel {
 public:
  static constexpr int kFailed = 1;

  int GetPresentUnits() override { return 0; }
  int GetPointCount() override { return 0; }
  int GetPointNameList(int& count, Names& names) override {
    count = 0;
    names.clear();
    return kFailed;
  }
  int GetPointCoordinates(const std::string& /*name*/, double& x, double& y, double& z,
                          const std::string& /*csys*/) override {
    x = 0.0;
    y = 0.0;
    z = 0.0;
    return kFailed;
  }
  int GetPointRestraints(const std::string& /*name*/, DofFlags& restraints) override {
    restraints = {};
    return kFailed;
  }
  int GetPointConstraints(const std::string& /*name*/, ItemType /*itemType*/, int& count,
                          Names& pointNames, Names& constraintNames) override {
    count = 0;
    pointNames.clear();
    constraintNames.clear();
    return kFailed;
  }
  int GetPointConnectivity(const std::string& /*name*/, int& count, Ints& objectTypes,
                           Names& objectNames, Ints& pointNumbers) override {
    count = 0;
    objectTypes.clear();
    objectNames.clear();
    pointNumbers.clear();
    return kFailed;
  }
  int GetConstraintNameList(int& count, Names& names) override {
    count = 0;
    names.clear();
    return kFailed;
  }
  int GetConstraintType(const std::string& /*name*/, int& type) override {
    type = 0;
    return kFailed;
  }
  int GetDiaphragmData(const std::string& /*name*/, int& axis, std::string& csys) override {
    axis = 0;
    csys.clear();
    return kFailed;
  }
  int GetMaterialNameList(int /*typeFilter*/, int& count, Names& names) override {
    count = 0;
    names.clear();
    return kFailed;
  }
  int AddDefaultMaterial(const std::string& /*name*/, int /*type*/, int /*region*/,
                         const std::string& /*standard*/, const std::string& /*grade*/,
                         std::string& createdName) override {
    createdName.clear();
    return kFailed;
  }
  int GetMaterialType(const std::string& /*name*/, int& type, int& symmetry) override {
    type = 0;
    symmetry = 0;
    return kFailed;
  }
  int GetMaterialWeightAndMass(const std::string& /*name*/, double& weightPerVolume,
                               double& massPerVolume) override {
    weightPerVolume = 0.0;
    massPerVolume = 0.0;
    return kFailed;
  }
  int GetIsotropicData(const std::string& /*name*/, double& e, double& u, double& a,
                       double& g) override {
    e = 0.0;
    u = 0.0;
    a = 0.0;
    g = 0.0;
    return kFailed;
  }
  int GetOrthotropicData(const std::string& /*name*/, Reals& e, Reals& u, Reals& a,
                         Reals& g) override {
    e.clear();
    u.clear();
    a.clear();
    g.clear();
    return kFailed;
  }
  int GetAnisotropicData(const std::string& /*name*/, Reals& e, Reals& u, Reals& a,
                         Reals& g) override {
    e.clear();
    u.clear();
    a.clear();
    g.clear();
    return kFailed;
  }
  int GetUniaxialData(const std::string& /*name*/, double& e, double& a) override {
    e = 0.0;
    a = 0.0;
    return kFailed;
  }
  int GetSteelData(const std::string& /*name*/, double& fy, double& fu, double& efy,
                   double& efu) override {
    fy = 0.0;
    fu = 0.0;
    efy = 0.0;
    efu = 0.0;
    return kFailed;
  }
  int GetRebarData(const std::string& /*name*/, double& fy, double& fu, double& efy,
                   double& efu) override {
    fy = 0.0;
    fu = 0.0;
    efy = 0.0;
    efu = 0.0;
    return kFailed;
  }
  int GetConcreteData(const std::string& /*name*/, double& fc) override {
    fc = 0.0;
    return kFailed;
  }
  int GetStressStrainCurve(const std::string& /*name*/, int& count, Ints& pointIds, Reals& strains,
                           Reals& stresses) override {
    count = 0;
    pointIds.clear();
    strains.clear();
    stresses.clear();
    return kFailed;
  }
  int GetFrameSectionNameList(int& count, Names& names) override {
    count = 0;
    names.clear();
    return kFailed;
  }
  int GetFrameSectionProperties(const std::string& /*name*/, double& area, double& as2, double& as3,
                                double& torsion, double& i22, double& i33, double& s22, double& s33,
                                double& z22, double& z33, double& r22, double& r33) override {
    area = 0.0;
    as2 = 0.0;
    as3 = 0.0;
    torsion = 0.0;
    i22 = 0.0;
    i33 = 0.0;
    s22 = 0.0;
    s33 = 0.0;
    z22 = 0.0;
    z33 = 0.0;
    r22 = 0.0;
    r33 = 0.0;
    return kFailed;
  }
  int GetFrameSectionType(const std::string& /*name*/, int& type) override {
    type = 0;
    return kFailed;
  }
  int GetNonprismaticSection(const std::string& /*name*/, int& count, Names& startSections,
                             Names& endSections) override {
    count = 0;
    startSections.clear();
    endSections.clear();
    return kFailed;
  }
  int GetFrameSectionMaterial(const std::string& /*name*/, std::string& material) override {
    material.clear();
    return kFailed;
  }
  int GetRebarDesignType(const std::string& /*sectionName*/, int& designType) override {
    designType = 0;
    return kFailed;
  }
  int GetAreaSectionNameList(int& count, Names& names) override {
    count = 0;
    names.clear();
    return kFailed;
  }
  int GetAreaSectionType(const std::string& /*name*/, int& type) override {
    type = 0;
    return kFailed;
  }
  int GetShellSection(const std::string& /*name*/, int& shellType, bool& drillingDof,
                      std::string& material, double& materialAngle, double& membraneThickness,
                      double& bendingThickness) override {
    shellType = 0;
    drillingDof = false;
    material.clear();
    materialAngle = 0.0;
    membraneThickness = 0.0;
    bendingThickness = 0.0;
    return kFailed;
  }
  int GetShellLayers(const std::string& /*name*/, int& count, Names& layerNames, Reals& distances,
                     Reals& thicknesses, Ints& types, Ints& integrationPoints, Names& materials,
                     Reals& materialAngles, Ints& s11Types, Ints& s22Types,
                     Ints& s12Types) override {
    count = 0;
    layerNames.clear();
    distances.clear();
    thicknesses.clear();
    types.clear();
    integrationPoints.clear();
    materials.clear();
    materialAngles.clear();
    s11Types.clear();
    s22Types.clear();
    s12Types.clear();
    return kFailed;
  }
  int GetFrameNameList(int& count, Names& names) override {
    count = 0;
    names.clear();
    return kFailed;
  }
  int GetFrameSection(const std::string& /*name*/, std::string& section,
                      std::string& autoSelect) override {
    section.clear();
    autoSelect.clear();
    return kFailed;
  }
  int GetFramePoints(const std::string& /*name*/, std::string& pointI,
                     std::string& pointJ) override {
    pointI.clear();
    pointJ.clear();
    return kFailed;
  }
  int GetFrameLocalAngle(const std::string& /*name*/, double& angle, bool& advanced) override {
    angle = 0.0;
    advanced = false;
    return kFailed;
  }
  int GetFrameReleases(const std::string& /*name*/, DofFlags& releaseI, DofFlags& releaseJ,
                       DofValues& startValues, DofValues& endValues) override {
    releaseI = {};
    releaseJ = {};
    startValues = {};
    endValues = {};
    return kFailed;
  }
  int GetFrameHinges(const std::string& /*name*/, int& count, Ints& a1, Ints& a2, Ints& dofs,
                     Reals& a4, Reals& a5, Reals& relativeDistances) override {
    count = 0;
    a1.clear();
    a2.clear();
    dofs.clear();
    a4.clear();
    a5.clear();
    relativeDistances.clear();
    return kFailed;
  }
  int GetAreaNameList(int& count, Names& names) override {
    count = 0;
    names.clear();
    return kFailed;
  }
  int GetAreaSection(const std::string& /*name*/, std::string& section) override {
    section.clear();
    return kFailed;
  }
  int GetAreaPoints(const std::string& /*name*/, int& count, Names& points) override {
    count = 0;
    points.clear();
    return kFailed;
  }
  int GetLoadPatternNames(int& count, Names& names) override {
    count = 0;
    names.clear();
    return kFailed;
  }
  int GetLoadPatternType(const std::string& /*name*/, int& type) override {
    type = 0;
    return kFailed;
  }
  int GetSelfWeightMultiplier(const std::string& /*name*/, double& multiplier) override {
    multiplier = 0.0;
    return kFailed;
  }
  int GetPointForces(const std::string& /*name*/, ItemType /*itemType*/, int& count,
                     Names& pointNames, Names& loadPatterns, Ints& lcSteps, Names& csys, Reals& f1,
                     Reals& f2, Reals& f3, Reals& m1, Reals& m2, Reals& m3) override {
    count = 0;
    pointNames.clear();
    loadPatterns.clear();
    lcSteps.clear();
    csys.clear();
    f1.clear();
    f2.clear();
    f3.clear();
    m1.clear();
    m2.clear();
    m3.clear();
    return kFailed;
  }
  int GetFrameDistributedLoads(const std::string& /*name*/, ItemType /*itemType*/, int& count,
                               Names& frameNames, Names& loadPatterns, Ints& myTypes, Names& csys,
                               Ints& dirs, Reals& rd1, Reals& rd2, Reals& dist1, Reals& dist2,
                               Reals& val1, Reals& val2) override {
    count = 0;
    frameNames.clear();
    loadPatterns.clear();
    myTypes.clear();
    csys.clear();
    dirs.clear();
    rd1.clear();
    rd2.clear();
    dist1.clear();
    dist2.clear();
    val1.clear();
    val2.clear();
    return kFailed;
  }
  int GetFramePointLoads(const std::string& /*name*/, ItemType /*itemType*/, int& count,
                         Names& frameNames, Names& loadPatterns, Ints& myTypes, Names& csys,
                         Ints& dirs, Reals& relDist, Reals& dist, Reals& val) override {
    count = 0;
    frameNames.clear();
    loadPatterns.clear();
    myTypes.clear();
    csys.clear();
    dirs.clear();
    relDist.clear();
    dist.clear();
    val.clear();
    return kFailed;
  }
  int GetAreaUniformLoads(const std::string& /*name*/, ItemType /*itemType*/, int& count,
                          Names& areaNames, Names& loadPatterns, Names& csys, Ints& dirs,
                          Reals& values) override {
    count = 0;
    areaNames.clear();
    loadPatterns.clear();
    csys.clear();
    dirs.clear();
    values.clear();
    return kFailed;
  }
  int GetAreaUniformToFrameLoads(const std::string& /*name*/, ItemType /*itemType*/, int& count,
                                 Names& areaNames, Names& loadPatterns, Names& csys, Ints& dirs,
                                 Reals& values, Ints& distTypes) override {
    count = 0;
    areaNames.clear();
    loadPatterns.clear();
    csys.clear();
    dirs.clear();
    values.clear();
    distTypes.clear();
    return kFailed;
  }
  int GetMassSource(int& option, int& count, Names& loadPatterns, Reals& factors) override {
    option = 0;
    count = 0;
    loadPatterns.clear();
    factors.clear();
    return kFailed;
  }
  int GetPointMass(const std::string& /*name*/, DofValues& mass) override {
    mass = {};
    return kFailed;
  }
  int GetFrameMass(const std::string& /*name*/, double& massPerLength) override {
    massPerLength = 0.0;
    return kFailed;
  }
  int GetAreaMass(const std::string& /*name*/, double& massPerArea) override {
    massPerArea = 0.0;
    return kFailed;
  }
  int GetFunctionNames(int& count, Names& names) override {
    count = 0;
    names.clear();
    return kFailed;
  }
  int GetFunctionType(const std::string& /*name*/, int& family, int& kind) override {
    family = 0;
    kind = 0;
    return kFailed;
  }
  int GetFunctionFromFile(const std::string& /*name*/, std::string& fileName, int& headerLines,
                          int& prefixChars, int& pointsPerLine, int& valueType, bool& freeFormat,
                          int& fieldWidth, double& dt) override {
    fileName.clear();
    headerLines = 0;
    prefixChars = 0;
    pointsPerLine = 0;
    valueType = 0;
    freeFormat = false;
    fieldWidth = 0;
    dt = 0.0;
    return kFailed;
  }
  int GetFunctionPoints(const std::string& /*name*/, int& count, Reals& times,
                        Reals& values) override {
    count = 0;
    times.clear();
    values.clear();
    return kFailed;
  }
  int GetFunctionPeriodicPoints(const std::string& /*name*/, int& cycles, int& count, Reals& times,
                                Reals& values) override {
    cycles = 0;
    count = 0;
    times.clear();
    values.clear();
    return kFailed;
  }
  int GetFunctionSine(const std::string& /*name*/, double& period, int& stepsPerCycle, int& cycles,
                      double& amplitude) override {
    period = 0.0;
    stepsPerCycle = 0;
    cycles = 0;
    amplitude = 0.0;
    return kFailed;
  }
  int GetFunctionCosine(const std::string& /*name*/, double& period, int& stepsPerCycle,
                        int& cycles, double& amplitude) override {
    period = 0.0;
    stepsPerCycle = 0;
    cycles = 0;
    amplitude = 0.0;
    return kFailed;
  }
  int GetFunctionRamp(const std::string& /*name*/, double& time, double& amplitude,
                      double& maxTime) override {
    time = 0.0;
    amplitude = 0.0;
    maxTime = 0.0;
    return kFailed;
  }
  int GetFunctionSawtooth(const std::string& /*name*/, double& period, double& rampTime,
                          int& cycles, double& amplitude) override {
    period = 0.0;
    rampTime = 0.0;
    cycles = 0;
    amplitude = 0.0;
    return kFailed;
  }
  int GetFunctionTriangular(const std::string& /*name*/, double& period, int& cycles,
                            double& amplitude) override {
    period = 0.0;
    cycles = 0;
    amplitude = 0.0;
    return kFailed;
  }
  int GetGroupNames(int& count, Names& names) override {
    count = 0;
    names.clear();
    return kFailed;
  }
  int GetGroupAssignments(const std::string& /*name*/, int& count, Ints& objectTypes,
                          Names& objectNames) override {
    count = 0;
    objectTypes.clear();
    objectNames.clear();
    return kFailed;
  }
  int GetCaseNames(int& count, Names& names) override {
    count = 0;
    names.clear();
    return kFailed;
  }
  int GetCaseType(const std::string& /*name*/, int& type, int& subType, int& designType,
                  int& designOption, int& autoCreated) override {
    type = 0;
    subType = 0;
    designType = 0;
    designOption = 0;
    autoCreated = 0;
    return kFailed;
  }
  int GetStaticLoadApplication(const std::string& /*name*/, int& loadControl, int& displacementType,
                               double& displacement, int& monitoredDof,
                               std::string& monitoredPoint) override {
    loadControl = 0;
    displacementType = 0;
    displacement = 0.0;
    monitoredDof = 0;
    monitoredPoint.clear();
    return kFailed;
  }
  int GetStaticLoads(const std::string& /*name*/, int& count, Names& loadTypes, Names& loadNames,
                     Reals& scaleFactors) override {
    count = 0;
    loadTypes.clear();
    loadNames.clear();
    scaleFactors.clear();
    return kFailed;
  }
  int GetHistoryLoads(const std::string& /*name*/, int& count, Names& loadTypes, Names& loadNames,
                      Names& functions, Reals& scaleFactors, Reals& timeFactors) override {
    count = 0;
    loadTypes.clear();
    loadNames.clear();
    functions.clear();
    scaleFactors.clear();
    timeFactors.clear();
    return kFailed;
  }
  int GetHistoryTimeStep(const std::string& /*name*/, int& steps, double& stepSize) override {
    steps = 0;
    stepSize = 0.0;
    return kFailed;
  }
  int GetHistoryDamping(const std::string& /*name*/, int& type, double& massCoefficient,
                        double& stiffnessCoefficient, double& value1, double& value2,
                        double& ratio1, double& ratio2) override {
    type = 0;
    massCoefficient = 0.0;
    stiffnessCoefficient = 0.0;
    value1 = 0.0;
    value2 = 0.0;
    ratio1 = 0.0;
    ratio2 = 0.0;
    return kFailed;
  }
};

}  // namespace vtt::test_support
