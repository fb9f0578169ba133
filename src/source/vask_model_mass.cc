// Stage 22 of ReadVaskData: the host's mass source, and the mass that it puts on nodes.
//
// Trelk knows mass only as lumped mass at nodes, so every kind of mass ends on the end
// nodes of frames and the corner nodes of areas, in four accumulators of each node:
// PointMass (additional and material mass), LoadMass (nodal loads), FrameLoadMass (frame
// self weight and frame loads) and AreaLoadMass (area self weight). Frames and areas fill
// only U1 and U2: their mass is horizontal mass. The nodal mass step later adds the
// accumulators up for the structure.
#include <algorithm>
#include <array>
#include <optional>
#include <vector>
#include <cstddef>
#include <memory>
#include <string>

#include "source/vask_model.h"
#include "store/units.h"
#include "transfer/failure.h"

namespace vtt {
namespace {

// Mass source options of the host.
constexpr int kMassFromElements = 1;
constexpr int kMassFromLoads = 2;
constexpr int kMassFromBoth = 3;

// Relative distances and plan lengths at or below this count as nothing.
constexpr double kSmall = 1e-6;

// Distributed-load directions that act on the plan projection of the frame.
constexpr int kDirProjectedZ = 9;
constexpr int kDirProjectedGravity = 11;

// The two horizontal translations that the mass of frames and areas goes to.
constexpr int kHorizontal[] = {1, 2};

// Degrees of freedom that a point's additional mass is taken for: U3 is left out.
constexpr int kPointMassDofs[] = {1, 2, 4, 5, 6};

using NodeOwner = VaskModelObj::NodeOwner;

NodeOwner FrameOwner(const VaskFrameObj& frame) { return {"Frame", frame.Label}; }
NodeOwner AreaOwner(const VaskAreaObj& area) { return {"Area", area.Label}; }

// The node of a label that must be a node of the model.
VaskNodeObj& NodeOf(const VaskModelObj& model, const std::string& label,
                    const NodeOwner& owner, int hint = 0) {
  VaskNodeObj* node = model.NodeObjNear(label, hint);
  if (node == nullptr) {
    throw TransferFailure(owner.Text() + ": node \"" + label + "\" is not a node of the model.");
  }
  return *node;
}

const VaskPropFrameSectObj& SectionOf(const VaskFrameObj& frame) {
  if (frame.PropFrameSectObj == nullptr) {
    throw TransferFailure(FrameOwner(frame).Text() + ": its section \"" + frame.PropFrameSectName +
                          "\" is not a frame section of the model.");
  }
  return *frame.PropFrameSectObj;
}

const VaskPropAreaSectObj& SectionOf(const VaskAreaObj& area) {
  if (area.PropAreaSectObj == nullptr) {
    throw TransferFailure(AreaOwner(area).Text() + ": its section \"" + area.PropAreaSectName +
                          "\" is not an area section of the model.");
  }
  return *area.PropAreaSectObj;
}

void AddHorizontal(OneBasedArray<double, 6>& accumulator, double value) {
  for (int c : kHorizontal) accumulator(c) += value;
}

// The material and thickness whose mass and weight an area carries: its own material and
// thickness, or for a layered shell the concrete of its layers and their thickness. No
// material when a layered shell has no concrete layer.
struct AreaBody {
  const VaskPropMaterialObj* material = nullptr;
  double thickness = 0.0;
};

AreaBody BodyOf(const VaskPropAreaSectObj& section) {
  if (section.PropMatObj == nullptr) {
    return {section.LayerPropMatConcObj, section.LayerTrelkThick};
  }
  return {section.PropMatObj, section.Thick};
}

// The end nodes and lengths of the frames, and the corners and areas of the 4-noded areas,
// each found once for the whole reading of the mass: every pass, and every pattern of the
// mass source, needs them again, and on a large building the label look-ups of the nodes
// cost more than all the arithmetic. No node is added or renamed while the mass is read,
// so the first answer holds for every later question. An object is measured when a pass
// first needs it, so a missing node stops the run where it would without the record.
class MeasuredObjects {
 public:
  struct FrameEnds {
    VaskNodeObj* nodeI = nullptr;
    VaskNodeObj* nodeJ = nullptr;
    double length = 0.0;
    double planLength = 0.0;
  };
  struct AreaCorners {
    std::array<VaskNodeObj*, 4> nodes{};
    double area = 0.0;
  };

  explicit MeasuredObjects(VaskModelObj& model)
      : model_(model),
        frames_(static_cast<std::size_t>(model.FrameNum())),
        areas_(static_cast<std::size_t>(model.AreaNum())) {}

  // Frame i: its end nodes, its length and its plan length, as FrameObjLengthGet gives them.
  const FrameEnds& Frame(int i) {
    std::optional<FrameEnds>& known = frames_[static_cast<std::size_t>(i - 1)];
    if (!known) {
      const VaskFrameObj& frame = *model_.FrameObj(i);
      const NodeOwner owner = FrameOwner(frame);
      FrameEnds ends;
      ends.nodeI = &NodeOf(model_, frame.LabelNodeI, owner, frame.NodeI);
      ends.nodeJ = &NodeOf(model_, frame.LabelNodeJ, owner, frame.NodeJ);
      ends.length = FrameLengthBetween(*ends.nodeI, *ends.nodeJ, false);
      ends.planLength = FrameLengthBetween(*ends.nodeI, *ends.nodeJ, true);
      known = ends;
    }
    return *known;
  }

  // The node of nodal load object i. The nodal loads may still be growing when the
  // objects are first measured, so their list is sized when it is first needed.
  VaskNodeObj& LoadNode(int i) {
    if (loadNodes_.size() < static_cast<std::size_t>(i)) {
      loadNodes_.resize(static_cast<std::size_t>(model_.LoadNodeNum()), nullptr);
    }
    VaskNodeObj*& known = loadNodes_[static_cast<std::size_t>(i - 1)];
    if (known == nullptr) {
      known = &NodeOf(model_, model_.LoadNodeObj(i)->Label, NodeOwner{"Nodal load", {}, false});
    }
    return *known;
  }

  // Area i, which has 4 nodes: its corners and its area, as AreaObjAreaGet gives it.
  const AreaCorners& Area(int i) {
    std::optional<AreaCorners>& known = areas_[static_cast<std::size_t>(i - 1)];
    if (!known) {
      const VaskAreaObj& area = *model_.AreaObj(i);
      const NodeOwner owner = AreaOwner(area);
      AreaCorners corners;
      std::array<double, 4> x{};
      std::array<double, 4> y{};
      std::array<double, 4> z{};
      for (std::size_t j = 0; j < 4; ++j) {
        const int at = static_cast<int>(j) + 1;
        VaskNodeObj& node = NodeOf(model_, area.LabelNodes(at), owner, area.NodeHint(at));
        corners.nodes[j] = &node;
        x[j] = node.x;
        y[j] = node.y;
        z[j] = node.z;
      }
      corners.area = QuadArea(x, y, z, false);
      known = corners;
    }
    return *known;
  }

 private:
  VaskModelObj& model_;
  std::vector<std::optional<FrameEnds>> frames_;
  std::vector<std::optional<AreaCorners>> areas_;
  std::vector<VaskNodeObj*> loadNodes_;
};

// Pass A: the additional masses of the points, assigned, not added.
void PointMasses(VaskModelObj& model, HostModel& host) {
  DofValues m{};
  for (int i = 1; i <= model.NodeNum(); ++i) {
    VaskNodeObj& node = *model.NodeObj(i);
    if (host.GetPointMass(node.Label, m) != 0) continue;
    for (int c : kPointMassDofs) node.PointMass(c) = m[static_cast<std::size_t>(c - 1)];
  }
}

// Pass B: additional mass per length and the mass of the section's material, half to each
// end of the frame.
void FrameMasses(VaskModelObj& model, HostModel& host, MeasuredObjects& measured) {
  for (int i = 1; i <= model.FrameNum(); ++i) {
    const VaskFrameObj& frame = *model.FrameObj(i);
    const MeasuredObjects::FrameEnds& ends = measured.Frame(i);
    const double length = ends.length;
    VaskNodeObj& nodeI = *ends.nodeI;
    VaskNodeObj& nodeJ = *ends.nodeJ;
    const VaskPropFrameSectObj& section = SectionOf(frame);
    const VaskPropMaterialObj* material = section.PropMatObj;

    double massPerLength = 0.0;
    if (host.GetFrameMass(frame.Label, massPerLength) == 0) {
      const double half = massPerLength * length / 2.0;
      for (int c : kHorizontal) {
        nodeI.PointMass(c) += half;
        nodeJ.PointMass(c) += half;
      }
    }
    if (material != nullptr) {
      const double half = section.area * material->UnitMass * length / 2.0;
      for (int c : kHorizontal) {
        nodeI.PointMass(c) += half;
        nodeJ.PointMass(c) += half;
      }
    }
  }
}

// Pass C: additional mass per area and the mass of the shell's material, a quarter to each
// corner. Only 4-noded areas carry mass.
void AreaMasses(VaskModelObj& model, HostModel& host, MeasuredObjects& measured) {
  for (int i = 1; i <= model.AreaNum(); ++i) {
    const VaskAreaObj& area = *model.AreaObj(i);
    double massPerArea = 0.0;
    if (host.GetAreaMass(area.Label, massPerArea) != 0) continue;
    // Areas of other than 4 nodes measure 0 and carry no mass, but their section is
    // still required.
    const MeasuredObjects::AreaCorners* measuredArea =
        area.NumNodes == 4 ? &measured.Area(i) : nullptr;
    const double ar = measuredArea != nullptr ? measuredArea->area : 0.0;
    const VaskPropAreaSectObj& section = SectionOf(area);
    if (area.NumNodes != 4) continue;

    const std::array<VaskNodeObj*, 4>& corners = measuredArea->nodes;

    const double additional = massPerArea * ar / 4.0;
    for (VaskNodeObj* node : corners) AddHorizontal(node->PointMass, additional);

    const AreaBody body = BodyOf(section);
    if (body.material == nullptr) continue;
    const double own = body.material->UnitMass * ar * body.thickness / 4.0;
    for (VaskNodeObj* node : corners) AddHorizontal(node->PointMass, own);
  }
}

// Pass D: the loads of one mass-source pattern turned into mass, with scale factor `s`;
// downward load makes positive mass.
void LoadMasses(VaskModelObj& model, HostModel& host, MeasuredObjects& measured,
                const std::string& pattern, double s, double g) {
  // The pattern's type is asked for and not used: every pattern of the source counts.
  int type = 0;
  host.GetLoadPatternType(pattern, type);

  // The load patterns of that label, in model order: the self weight of each counts.
  std::vector<const VaskLoadPatternObj*> named;
  for (int k = 1; k <= model.LoadPatternNum(); ++k) {
    const VaskLoadPatternObj* loadPattern = model.LoadPatternObj(k);
    if (loadPattern->Label == pattern) named.push_back(loadPattern);
  }

  // Nodal loads, area loads spread to nodes among them. F3 is positive upward.
  for (int i = 1; i <= model.LoadNodeNum(); ++i) {
    const VaskLoadNodeObj& load = *model.LoadNodeObj(i);
    for (int k = 1; k <= load.ItemNum; ++k) {
      if (load.LoadPattern(k) != pattern) continue;
      VaskNodeObj& node = measured.LoadNode(i);
      for (int c : kHorizontal) node.LoadMass(c) = node.LoadMass(c) - load.F3(k) * s / g;
    }
  }

  // Frame self weight, half to each end.
  for (int i = 1; i <= model.FrameNum(); ++i) {
    const VaskFrameObj& frame = *model.FrameObj(i);
    const VaskPropFrameSectObj& section = SectionOf(frame);
    const VaskPropMaterialObj* material = section.PropMatObj;
    if (material == nullptr) continue;
    const MeasuredObjects::FrameEnds& ends = measured.Frame(i);
    const double length = ends.length;
    VaskNodeObj& nodeI = *ends.nodeI;
    VaskNodeObj& nodeJ = *ends.nodeJ;
    for (const VaskLoadPatternObj* loadPattern : named) {
      const double m = material->UnitWeight * loadPattern->SelfWtMultiplier * section.area *
                       length * s / g / 2.0;
      AddHorizontal(nodeI.FrameLoadMass, m);
      AddHorizontal(nodeJ.FrameLoadMass, m);
    }
  }

  // Area self weight, a quarter to each corner.
  for (int i = 1; i <= model.AreaNum(); ++i) {
    const VaskAreaObj& area = *model.AreaObj(i);
    if (area.NumNodes != 4) continue;
    const MeasuredObjects::AreaCorners& corners = measured.Area(i);
    const double ar = corners.area;
    const AreaBody body = BodyOf(SectionOf(area));
    if (body.material == nullptr) continue;
    for (const VaskLoadPatternObj* loadPattern : named) {
      const double m = body.material->UnitWeight * loadPattern->SelfWtMultiplier * ar *
                       body.thickness * s / g / 4.0;
      for (VaskNodeObj* node : corners.nodes) AddHorizontal(node->AreaLoadMass, m);
    }
  }

  // Frame loads, positive downward: the reactions of a simply supported span.
  for (int i = 1; i <= model.FrameNum(); ++i) {
    VaskFrameObj& frame = *model.FrameObj(i);
    const MeasuredObjects::FrameEnds& ends = measured.Frame(i);
    double length = ends.length;
    const double planLength = ends.planLength;
    VaskNodeObj& nodeI = *ends.nodeI;
    VaskNodeObj& nodeJ = *ends.nodeJ;

    for (int d = 1; d <= frame.LoadFrameDistributedNum(); ++d) {
      const VaskLoadFrameDistObj& load = *frame.LoadFrameDistributedObj(d);
      if (load.PatternLabel != pattern) continue;
      for (int k = 1; k <= load.ItemNum; ++k) {
        // A load on the plan projection spans the plan length, from here on for this frame.
        if (load.Dir == kDirProjectedZ || load.Dir == kDirProjectedGravity) length = planLength;
        const double a = load.RD1(k);
        const double b = load.RD2(k);
        const double p = load.Val1(k);
        const double q = load.Val2(k);
        // The trapezoid as a triangle on a rectangle.
        const double t = (b - a) * (q - p) / 2.0;
        const double r = (b - a) * p;
        const double reactionI = (1.0 - a / 3.0 - 2.0 * b / 3.0) * t * length +
                                 (1.0 - (a + b) / 2.0) * r * length;
        const double reactionJ =
            t * (2.0 * b / 3.0 + a / 3.0) * length + r * (a + b) / 2.0 * length;
        AddHorizontal(nodeI.FrameLoadMass, reactionI * s / g);
        AddHorizontal(nodeJ.FrameLoadMass, reactionJ * s / g);
      }
    }

    for (int d = 1; d <= frame.LoadFramePointNum(); ++d) {
      const VaskLoadFramePointObj& load = *frame.LoadFramePointObj(d);
      if (load.PatternLabel != pattern) continue;
      for (int k = 1; k <= load.ItemNum; ++k) {
        const double reactionI = (1.0 - load.RD(k)) * load.Val(k);
        const double reactionJ = load.RD(k) * load.Val(k);
        // A frame without plan length, a column, carries no mass from its point loads.
        if (!(planLength > kSmall)) continue;
        AddHorizontal(nodeI.FrameLoadMass, reactionI * s / g);
        AddHorizontal(nodeJ.FrameLoadMass, reactionJ * s / g);
      }
    }
  }
}

}  // namespace

// What the first half of the stage leaves to the second: the mass source option and the
// objects measured so far.
class VaskModelObj::MassOfObjects {
 public:
  explicit MassOfObjects(VaskModelObj& model) : measured(model) {}
  int option = 0;
  MeasuredObjects measured;
};

void VaskModelObj::ReadMass() { ReadMassOfLoads(*ReadMassOfObjects()); }

std::shared_ptr<VaskModelObj::MassOfObjects> VaskModelObj::ReadMassOfObjects() {
  int option = 0;
  int count = 0;
  Names names;
  Reals factors;
  host_.GetMassSource(option, count, names, factors);
  MassSrcOption = option;
  MassSrcLoadNum = count;
  if (count >= 1) {
    MassSrcLoadPattern.Redim(count);
    MassSrcSF.Redim(count);
    // Entries the host did not give stay empty and 0.
    const int names_given = std::min(count, static_cast<int>(names.size()));
    const int factors_given = std::min(count, static_cast<int>(factors.size()));
    for (int k = 1; k <= names_given; ++k) {
      MassSrcLoadPattern(k) = names[static_cast<std::size_t>(k - 1)];
    }
    for (int k = 1; k <= factors_given; ++k) {
      MassSrcSF(k) = factors[static_cast<std::size_t>(k - 1)];
    }
  }

  auto objects = std::make_shared<MassOfObjects>(*this);
  objects->option = option;
  if (option == kMassFromElements || option == kMassFromBoth) {
    PointMasses(*this, host_);
    FrameMasses(*this, host_, objects->measured);
    AreaMasses(*this, host_, objects->measured);
  }
  return objects;
}

void VaskModelObj::ReadMassOfLoads(MassOfObjects& objects) {
  if (objects.option != kMassFromLoads && objects.option != kMassFromBoth) return;
  // Gravity of the present units, in the single precision the structure holds it in.
  const double g = PresentUnits().UnitGravity;
  for (int k = 1; k <= MassSrcLoadNum; ++k) {
    LoadMasses(*this, host_, objects.measured, MassSrcLoadPattern(k), MassSrcSF(k), g);
  }
}

}  // namespace vtt
