// The model file: a Vask model held as one JSON document (docs/model-format.md).
//
// These are the file's contents after checking, as plain data in file order, with every
// default filled in. Nothing here is indexed or derived; JsonModelHost does that.
#pragma once

#include <array>
#include <cstddef>
#include <filesystem>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "source/host_model.h"

namespace vtt {

// A model file that cannot be read or is not a valid model; the text is the one message
// the user sees: it names the file, where in it, and what was expected.
class ModelFileError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

namespace model_file {

struct Isotropic {
  double e = 0, u = 0, a = 0, g = 0;

  bool operator==(const Isotropic&) const = default;
};
struct Orthotropic {
  std::array<double, 3> e{}, u{}, a{}, g{};

  bool operator==(const Orthotropic&) const = default;
};
struct Anisotropic {
  std::array<double, 3> e{};
  std::array<double, 15> u{};
  std::array<double, 6> a{};
  std::array<double, 3> g{};

  bool operator==(const Anisotropic&) const = default;
};
struct Uniaxial {
  double e = 0, a = 0;

  bool operator==(const Uniaxial&) const = default;
};
struct Strengths {
  double fy = 0, fu = 0, efy = 0, efu = 0;

  bool operator==(const Strengths&) const = default;
};
struct CurvePoint {
  double strain = 0, stress = 0;

  bool operator==(const CurvePoint&) const = default;
};

// Everything a material holds besides its name and type; also what `default_materials`
// gives for a material that AddDefaultMaterial creates.
struct MaterialProperties {
  int symmetry = host_code::kSymmetryIsotropic;
  double weightPerVolume = 0;
  double massPerVolume = 0;
  std::optional<Isotropic> isotropic;
  std::optional<Orthotropic> orthotropic;
  std::optional<Anisotropic> anisotropic;
  std::optional<Uniaxial> uniaxial;
  std::optional<Strengths> steel;
  std::optional<Strengths> rebar;
  std::optional<double> concreteFc;
  std::optional<std::vector<CurvePoint>> stressStrain;

  bool operator==(const MaterialProperties&) const = default;
};

struct Material {
  std::string name;
  int type = 0;
  MaterialProperties properties;

  bool operator==(const Material&) const = default;
};

struct DefaultMaterials {
  std::optional<MaterialProperties> concrete, steel, rebar;

  bool operator==(const DefaultMaterials&) const = default;
};

struct NonprismaticSegment {
  std::string start, end;

  bool operator==(const NonprismaticSegment&) const = default;
};

struct FrameSection {
  std::string name;
  int type = 0;
  std::string material;
  // area, As2, As3, J, I22, I33, S22, S33, Z22, Z33, R22, R33
  std::array<double, 12> properties{};
  std::optional<int> rebarDesign;
  std::optional<std::vector<NonprismaticSegment>> segments;

  bool operator==(const FrameSection&) const = default;
};

struct ShellLayer {
  std::string name;
  double distance = 0;
  double thickness = 0;
  int type = 1;
  int integrationPoints = 1;
  std::string material;
  double materialAngle = 0;
  int s11 = 1, s22 = 1, s12 = 1;

  bool operator==(const ShellLayer&) const = default;
};

struct AreaSection {
  std::string name;
  int type = 1;
  int shellType = 1;
  bool drillingDof = true;
  std::string material;
  double materialAngle = 0;
  double membraneThickness = 0;
  double bendingThickness = 0;
  std::vector<ShellLayer> layers;

  bool operator==(const AreaSection&) const = default;
};

struct PointForce {
  std::string pattern;
  std::string csys = "GLOBAL";
  int step = 0;
  DofValues values{};  // F1, F2, F3, M1, M2, M3

  bool operator==(const PointForce&) const = default;
};

struct Point {
  std::string name;
  double x = 0, y = 0, z = 0;
  DofFlags restraints{};
  std::vector<std::string> constraints;
  DofValues mass{};
  std::vector<PointForce> forces;

  bool operator==(const Point&) const = default;
};

struct Constraint {
  std::string name;
  int type = 0;
  int axis = 3;
  std::string csys = "Global";

  bool operator==(const Constraint&) const = default;
};

struct Hinge {
  int dof = 0;
  double relativeDistance = 0;

  bool operator==(const Hinge&) const = default;
};

struct DistributedLoad {
  std::string pattern;
  int type = 1;
  std::string csys = "GLOBAL";
  int dir = 0;
  double rd1 = 0, rd2 = 0, val1 = 0, val2 = 0;

  bool operator==(const DistributedLoad&) const = default;
};

struct FramePointLoad {
  std::string pattern;
  int type = 1;
  std::string csys = "GLOBAL";
  int dir = 0;
  double rd = 0, val = 0;

  bool operator==(const FramePointLoad&) const = default;
};

struct Frame {
  std::string name, section, pointI, pointJ;
  double angle = 0;
  DofFlags releaseI{}, releaseJ{};
  std::vector<Hinge> hinges;
  double massPerLength = 0;
  std::vector<DistributedLoad> distributedLoads;
  std::vector<FramePointLoad> pointLoads;

  bool operator==(const Frame&) const = default;
};

struct AreaLoad {
  std::string pattern;
  std::string csys = "GLOBAL";
  int dir = 0;
  double value = 0;
  int distType = 2;  // only for loads spread to frames

  bool operator==(const AreaLoad&) const = default;
};

struct Area {
  std::string name, section;
  std::vector<std::string> points;
  double massPerArea = 0;
  std::vector<AreaLoad> uniformLoads;
  std::vector<AreaLoad> uniformToFrameLoads;

  bool operator==(const Area&) const = default;
};

struct LoadPattern {
  std::string name;
  int type = 1;
  double selfWeightMultiplier = 0;

  bool operator==(const LoadPattern&) const = default;
};

struct MassSourceLoad {
  std::string pattern;
  double factor = 0;

  bool operator==(const MassSourceLoad&) const = default;
};

struct MassSource {
  int option = 1;
  std::vector<MassSourceLoad> loads;

  bool operator==(const MassSource&) const = default;
};

struct FunctionFile {
  std::string path;  // relative paths already taken from the model file's folder
  int headerLines = 0;
  int prefixChars = 0;
  int pointsPerLine = 1;
  int valueType = 1;
  bool freeFormat = true;
  int fieldWidth = 10;
  double dt = 0.02;

  bool operator==(const FunctionFile&) const = default;
};

struct FunctionPoint {
  double time = 0, value = 0;

  bool operator==(const FunctionPoint&) const = default;
};

struct Function {
  std::string name;
  int family = 2;
  int kind = 0;
  std::optional<FunctionFile> file;
  std::optional<std::vector<FunctionPoint>> points;
  std::optional<double> period, amplitude, time, maxTime, rampTime;
  std::optional<int> stepsPerCycle, cycles;

  bool operator==(const Function&) const = default;
};

struct GroupAssignment {
  int type = 0;
  std::string name;

  bool operator==(const GroupAssignment&) const = default;
};

struct Group {
  std::string name;
  std::vector<GroupAssignment> assignments;

  bool operator==(const Group&) const = default;
};

struct LoadApplication {
  int control = 1;
  int displacementType = 1;
  double displacement = 0;
  int monitoredDof = 1;
  std::string monitoredPoint;

  bool operator==(const LoadApplication&) const = default;
};

struct CaseLoad {
  std::string type;  // "Load", "Mode" or "Accel"
  std::string name;
  double factor = 1;
  std::string function;
  double timeFactor = 1;

  bool operator==(const CaseLoad&) const = default;
};

struct TimeStep {
  int steps = 0;
  double size = 0;

  bool operator==(const TimeStep&) const = default;
};

struct Damping {
  int type = 1;
  double massCoefficient = 0;
  double stiffnessCoefficient = 0;
  std::array<double, 2> values{};
  std::array<double, 2> ratios{};

  bool operator==(const Damping&) const = default;
};

struct LoadCase {
  std::string name;
  int type = 0;
  LoadApplication loadApplication;
  std::vector<CaseLoad> loads;
  std::optional<TimeStep> timeStep;
  std::optional<Damping> damping;

  bool operator==(const LoadCase&) const = default;
};

struct Model {
  int units = 0;
  std::vector<Material> materials;
  DefaultMaterials defaultMaterials;
  std::vector<FrameSection> frameSections;
  std::vector<AreaSection> areaSections;
  std::vector<Point> points;
  std::vector<Constraint> constraints;
  std::vector<Frame> frames;
  std::vector<Area> areas;
  std::vector<LoadPattern> loadPatterns;
  MassSource massSource;
  std::vector<Function> functions;
  std::vector<Group> groups;
  std::vector<LoadCase> loadCases;

  bool operator==(const Model&) const = default;
};

// Checks and reads a whole model file. `displayName` names the file in messages;
// `baseFolder` is where relative function file paths are taken from.
// Throws ModelFileError.
Model ReadModel(std::string_view text, const std::string& displayName,
                const std::filesystem::path& baseFolder);

// The same through the full reading alone: a tree of the whole document, then the checks.
// ReadModel gives the same model or the same message, only sooner; tests compare the two.
Model ReadModelFully(std::string_view text, const std::string& displayName,
                     const std::filesystem::path& baseFolder);

// From this size of text on, the quick reading reads the frames on a second thread (by
// default 1 MiB). Tests and fuzzing lower it to reach that way with small texts.
void SetFramesThreadFromBytes(std::size_t bytes);
std::size_t FramesThreadFromBytes();

// Reads the file's bytes; throws ModelFileError naming the path and the system's reason.
std::string ReadFileText(const std::filesystem::path& file);

}  // namespace model_file
}  // namespace vtt
