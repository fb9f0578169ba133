// JsonModelHost: a HostModel that answers every host operation from a model file, so that
// a transfer runs without Vask (docs/model-format.md describes the file).
//
// The whole file is read and checked when the host is made; a bad file is refused then,
// with one message, before any operation is answered. Look-ups by name are hashed (the
// first entry of a name wins) and point connectivity is worked out once, so that a model of
// hundreds of thousands of points answers as fast as it is asked.
#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <future>
#include <memory>
#include <string>
#include <string_view>
#include <thread>
#include <unordered_map>
#include <vector>

#include "hosts/model_file.h"
#include "source/host_model.h"

namespace vtt {

class JsonModelHost final : public HostModel {
 public:
  // Reads and validates the whole file; throws ModelFileError with one user-facing message.
  static std::unique_ptr<JsonModelHost> FromFile(const std::filesystem::path& file);
  // Models of fewer frames and areas than this make all their indexes before the first
  // question; larger ones make those of frames, areas and groups and the connectivity on a
  // second thread while the first goes on (see JsonModelHost's constructor).
  static constexpr std::size_t kObjectsForThread = 20000;

  JsonModelHost(const JsonModelHost&) = delete;
  JsonModelHost& operator=(const JsonModelHost&) = delete;
  ~JsonModelHost() override;

  // Same from text; `displayName` is used in messages, `baseFolder` resolves relative paths.
  static std::unique_ptr<JsonModelHost> FromText(std::string_view json,
                                                 const std::string& displayName,
                                                 const std::filesystem::path& baseFolder);

  // ---- Units and points ----
  int GetPresentUnits() override;
  int GetPointCount() override;
  int GetPointNameList(int& count, Names& names) override;
  int GetPointCoordinates(const std::string& name, double& x, double& y, double& z,
                          const std::string& csys) override;
  int GetPointRestraints(const std::string& name, DofFlags& restraints) override;
  int GetPointConstraints(const std::string& name, ItemType itemType, int& count, Names& pointNames,
                          Names& constraintNames) override;
  int GetPointConnectivity(const std::string& name, int& count, Ints& objectTypes,
                           Names& objectNames, Ints& pointNumbers) override;

  // Releases the points, frames and areas with their indexes and connectivity, most of the
  // memory of a large model; a later question about them is a logic error and throws.
  void SourceModelRead() override;

  // The answers come from the model read from the file, which no question changes.
  bool AnswersFromTwoThreads() const override { return true; }

  // ---- Constraints ----
  int GetConstraintNameList(int& count, Names& names) override;
  int GetConstraintType(const std::string& name, int& type) override;
  int GetDiaphragmData(const std::string& name, int& axis, std::string& csys) override;

  // ---- Materials ----
  int GetMaterialNameList(int typeFilter, int& count, Names& names) override;
  int AddDefaultMaterial(const std::string& name, int type, int region, const std::string& standard,
                         const std::string& grade, std::string& createdName) override;
  int GetMaterialType(const std::string& name, int& type, int& symmetry) override;
  int GetMaterialWeightAndMass(const std::string& name, double& weightPerVolume,
                               double& massPerVolume) override;
  int GetIsotropicData(const std::string& name, double& e, double& u, double& a,
                       double& g) override;
  int GetOrthotropicData(const std::string& name, Reals& e, Reals& u, Reals& a, Reals& g) override;
  int GetAnisotropicData(const std::string& name, Reals& e, Reals& u, Reals& a, Reals& g) override;
  int GetUniaxialData(const std::string& name, double& e, double& a) override;
  int GetSteelData(const std::string& name, double& fy, double& fu, double& efy,
                   double& efu) override;
  int GetRebarData(const std::string& name, double& fy, double& fu, double& efy,
                   double& efu) override;
  int GetConcreteData(const std::string& name, double& fc) override;
  int GetStressStrainCurve(const std::string& name, int& count, Ints& pointIds, Reals& strains,
                           Reals& stresses) override;

  // ---- Frame sections ----
  int GetFrameSectionNameList(int& count, Names& names) override;
  int GetFrameSectionProperties(const std::string& name, double& area, double& as2, double& as3,
                                double& torsion, double& i22, double& i33, double& s22, double& s33,
                                double& z22, double& z33, double& r22, double& r33) override;
  int GetFrameSectionType(const std::string& name, int& type) override;
  int GetNonprismaticSection(const std::string& name, int& count, Names& startSections,
                             Names& endSections) override;
  int GetFrameSectionMaterial(const std::string& name, std::string& material) override;
  int GetRebarDesignType(const std::string& sectionName, int& designType) override;

  // ---- Area sections ----
  int GetAreaSectionNameList(int& count, Names& names) override;
  int GetAreaSectionType(const std::string& name, int& type) override;
  int GetShellSection(const std::string& name, int& shellType, bool& drillingDof,
                      std::string& material, double& materialAngle, double& membraneThickness,
                      double& bendingThickness) override;
  int GetShellLayers(const std::string& name, int& count, Names& layerNames, Reals& distances,
                     Reals& thicknesses, Ints& types, Ints& integrationPoints, Names& materials,
                     Reals& materialAngles, Ints& s11Types, Ints& s22Types,
                     Ints& s12Types) override;

  // ---- Frames ----
  int GetFrameNameList(int& count, Names& names) override;
  int GetFrameSection(const std::string& name, std::string& section,
                      std::string& autoSelect) override;
  int GetFramePoints(const std::string& name, std::string& pointI, std::string& pointJ) override;
  int GetFrameLocalAngle(const std::string& name, double& angle, bool& advanced) override;
  int GetFrameReleases(const std::string& name, DofFlags& releaseI, DofFlags& releaseJ,
                       DofValues& startValues, DofValues& endValues) override;
  int GetFrameHinges(const std::string& name, int& count, Ints& a1, Ints& a2, Ints& dofs, Reals& a4,
                     Reals& a5, Reals& relativeDistances) override;

  // ---- Areas ----
  int GetAreaNameList(int& count, Names& names) override;
  int GetAreaSection(const std::string& name, std::string& section) override;
  int GetAreaPoints(const std::string& name, int& count, Names& points) override;

  // ---- Load patterns and loads ----
  int GetLoadPatternNames(int& count, Names& names) override;
  int GetLoadPatternType(const std::string& name, int& type) override;
  int GetSelfWeightMultiplier(const std::string& name, double& multiplier) override;
  int GetPointForces(const std::string& name, ItemType itemType, int& count, Names& pointNames,
                     Names& loadPatterns, Ints& lcSteps, Names& csys, Reals& f1, Reals& f2,
                     Reals& f3, Reals& m1, Reals& m2, Reals& m3) override;
  int GetFrameDistributedLoads(const std::string& name, ItemType itemType, int& count,
                               Names& frameNames, Names& loadPatterns, Ints& myTypes, Names& csys,
                               Ints& dirs, Reals& rd1, Reals& rd2, Reals& dist1, Reals& dist2,
                               Reals& val1, Reals& val2) override;
  int GetFramePointLoads(const std::string& name, ItemType itemType, int& count, Names& frameNames,
                         Names& loadPatterns, Ints& myTypes, Names& csys, Ints& dirs,
                         Reals& relDist, Reals& dist, Reals& val) override;
  int GetAreaUniformLoads(const std::string& name, ItemType itemType, int& count, Names& areaNames,
                          Names& loadPatterns, Names& csys, Ints& dirs, Reals& values) override;
  int GetAreaUniformToFrameLoads(const std::string& name, ItemType itemType, int& count,
                                 Names& areaNames, Names& loadPatterns, Names& csys, Ints& dirs,
                                 Reals& values, Ints& distTypes) override;

  // ---- Mass ----
  int GetMassSource(int& option, int& count, Names& loadPatterns, Reals& factors) override;
  int GetPointMass(const std::string& name, DofValues& mass) override;
  int GetFrameMass(const std::string& name, double& massPerLength) override;
  int GetAreaMass(const std::string& name, double& massPerArea) override;

  // ---- Time-history functions ----
  int GetFunctionNames(int& count, Names& names) override;
  int GetFunctionType(const std::string& name, int& family, int& kind) override;
  int GetFunctionFromFile(const std::string& name, std::string& fileName, int& headerLines,
                          int& prefixChars, int& pointsPerLine, int& valueType, bool& freeFormat,
                          int& fieldWidth, double& dt) override;
  int GetFunctionPoints(const std::string& name, int& count, Reals& times, Reals& values) override;
  int GetFunctionPeriodicPoints(const std::string& name, int& cycles, int& count, Reals& times,
                                Reals& values) override;
  int GetFunctionSine(const std::string& name, double& period, int& stepsPerCycle, int& cycles,
                      double& amplitude) override;
  int GetFunctionCosine(const std::string& name, double& period, int& stepsPerCycle, int& cycles,
                        double& amplitude) override;
  int GetFunctionRamp(const std::string& name, double& time, double& amplitude,
                      double& maxTime) override;
  int GetFunctionSawtooth(const std::string& name, double& period, double& rampTime, int& cycles,
                          double& amplitude) override;
  int GetFunctionTriangular(const std::string& name, double& period, int& cycles,
                            double& amplitude) override;

  // ---- Groups ----
  int GetGroupNames(int& count, Names& names) override;
  int GetGroupAssignments(const std::string& name, int& count, Ints& objectTypes,
                          Names& objectNames) override;

  // ---- Load cases ----
  int GetCaseNames(int& count, Names& names) override;
  int GetCaseType(const std::string& name, int& type, int& subType, int& designType,
                  int& designOption, int& autoCreated) override;
  int GetStaticLoadApplication(const std::string& name, int& loadControl, int& displacementType,
                               double& displacement, int& monitoredDof,
                               std::string& monitoredPoint) override;
  int GetStaticLoads(const std::string& name, int& count, Names& loadTypes, Names& loadNames,
                     Reals& scaleFactors) override;
  int GetHistoryLoads(const std::string& name, int& count, Names& loadTypes, Names& loadNames,
                      Names& functions, Reals& scaleFactors, Reals& timeFactors) override;
  int GetHistoryTimeStep(const std::string& name, int& steps, double& stepSize) override;
  int GetHistoryDamping(const std::string& name, int& type, double& massCoefficient,
                        double& stiffnessCoefficient, double& value1, double& value2,
                        double& ratio1, double& ratio2) override;

 private:
  // A sine or a cosine: the same data, told apart by the function's kind.
  int GetWaveFunction(const std::string& name, int kind, double& period, int& stepsPerCycle,
                      int& cycles, double& amplitude) const;
  // Names to the position of their first entry in one list of the model. The keys view
  // the names held by the model, whose lists do not move once read, except the materials,
  // which AddDefaultMaterial grows and then indexes anew.
  //
  // Open addressing in one flat table: the transfer asks for names of points, frames and
  // areas once per object and the connectivity once per end and corner, and in a model of
  // a million names a chained table costs a cache miss per link.
  class NameIndex {
   public:
    static constexpr std::size_t kAbsent = static_cast<std::size_t>(-1);
    void Reserve(std::size_t names);
    // Keeps the first position of a name that the file holds twice.
    void Add(std::string_view name, std::size_t position);
    std::size_t Find(std::string_view name) const;
    bool Contains(std::string_view name) const { return Find(name) != kAbsent; }
    // Whether the entry at `position` is the first of its name (the one a look-up finds).
    bool IsFirst(std::size_t position) const {
      return position < first_.size() && first_[position] != 0;
    }
    // The position of the last answer that went through FindNear, or kAbsent. Two threads
    // may ask at once, each walking its own part of a list: each keeps its own last answer
    // (threads take turns at two places), and whatever position is found there is checked
    // before it is taken.
    std::size_t LastFound() const { return lastFound_[ThreadPlace()].Get(); }
    void SetLastFound(std::size_t position) const { lastFound_[ThreadPlace()].Set(position); }

   private:
    struct Slot {
      std::string_view name;
      std::uint32_t hash = 0;
      std::uint32_t position = kEmpty;
    };
    static constexpr std::uint32_t kEmpty = static_cast<std::uint32_t>(-1);
    static std::uint32_t Hash(std::string_view name);
    void Grow();

    std::vector<Slot> slots_;  // a power of two in size, at most half full
    std::size_t used_ = 0;
    std::vector<std::uint8_t> first_;  // by position: 1 for the first entry of its name
    // A position that threads share without order: each reads some position once found.
    class SharedPosition {
     public:
      SharedPosition() = default;
      SharedPosition(const SharedPosition& other) : value_(other.Get()) {}
      SharedPosition& operator=(const SharedPosition& other) {
        Set(other.Get());
        return *this;
      }
      std::size_t Get() const { return value_.load(std::memory_order_relaxed); }
      void Set(std::size_t value) const { value_.store(value, std::memory_order_relaxed); }

     private:
      mutable std::atomic<std::size_t> value_{kAbsent};
    };
    static std::size_t ThreadPlace();
    SharedPosition lastFound_[2];
  };

  // One object that a point is connected to; `object` indexes frames or areas by `type`.
  struct Connection {
    std::uint32_t object;
    std::int32_t pointNumber;
    std::uint8_t type;
  };

  explicit JsonModelHost(model_file::Model model);

  template <class Item>
  const Item* Find(const std::vector<Item>& items, const NameIndex& index,
                   const std::string& name) const;
  // The objects of `objectType` that a load or assignment query covers, in the host's
  // order; false when the name names nothing of that item type.
  template <class Item>
  bool Select(const std::string& name, ItemType itemType, int objectType,
              const std::vector<Item>& items, const NameIndex& index,
              std::vector<const Item*>& selected) const;
  double FrameLength(const model_file::Frame& frame) const;
  // Throws when the points, frames and areas have been released (SourceModelRead).
  void RequireObjects() const;
  template <class Item>
  void RequireObjectsFor(const std::vector<Item>& items) const;
  void BuildConnectivity();
  // Wait until the index, or the connectivity, is made, when a second thread makes it;
  // its failure is thrown here.
  void AwaitIndex(const NameIndex& index) const;
  void AwaitConnectivity() const;

  model_file::Model model_;
  NameIndex pointIndex_, frameIndex_, areaIndex_, materialIndex_, frameSectionIndex_,
      areaSectionIndex_, constraintIndex_, functionIndex_, groupIndex_, caseIndex_, patternIndex_;
  // The objects connected to point p are connections_[connectionStart_[p] ..
  // connectionStart_[p + 1]), frames first, each kind in file order.
  std::vector<std::size_t> connectionStart_;
  std::vector<Connection> connections_;
  // The points of the ends of frame f at 2f and 2f + 1 (the first point of each end's
  // name), or kNoPoint: a frame's length is asked with each of its loads.
  static constexpr std::uint32_t kNoPoint = static_cast<std::uint32_t>(-1);
  std::vector<std::uint32_t> frameEndPoints_;
  bool objectsReleased_ = false;
  // The second thread that makes the indexes of frames, areas and groups, then the
  // connectivity, each told made through its future; `made_` once all are.
  std::atomic<bool> made_{true};
  std::shared_future<void> frameIndexMade_, areaIndexMade_, groupIndexMade_, connectivityMade_;
  std::thread maker_;
};

}  // namespace vtt
