// The frames of the source model: stages 6 (ReadFrames), 7 (ReadFrameReleases),
// 18 (LinkFrameSections), 20 (ClassifyFrames) and 27 (ReadFrameHinges) of ReadVaskData,
// and the two frame queries of the root, FrameOrientationGet and FrameReleaseFind.
//
// A frame exists for the transfer only when its section was read in stage 2. Its role
// (column, beam, brace) comes from the direction of its axis alone, even when it carries
// hinges; its section and material decide the kind of component it becomes.
#include <algorithm>
#include <cmath>
#include <cstddef>
#include <string>

#include "source/vask_model.h"
#include "transfer/failure.h"

namespace vtt {
namespace {

// Host section types that the classification distinguishes.
constexpr int kSectionIShape = 1;
constexpr int kSectionRectangular = 8;

// Host rebar design types of a concrete section.
constexpr int kRebarDesignColumn = 1;
constexpr int kRebarDesignBeam = 2;

// Bounds on |cos| of the angle between a frame's axis and the vertical: 5 and 85 degrees
// turned into radians with pi taken as 3.14. The bounds must stay these exact values, so
// that a frame near a bound lands on the same side as it always has.
const double kColumnCosine = std::cos(15.7 / 180.0);
const double kBeamCosine = std::cos(266.9 / 180.0);

// The kind of hinge (1 or 2) that a host hinge degree-of-freedom code stands for; the
// transfer carries no other codes.
constexpr int kHingeKindNone = 0;
int HingeKind(int dofCode) {
  switch (dofCode) {
    case 6:
    case 9:
      return 1;
    case 8:
    case 10:
    case 11:
      return 2;
    default:
      return kHingeKindNone;
  }
}

// A hinge this close to an end, in relative distance along the frame, stands at that end;
// one between the two bounds is not carried over.
constexpr double kHingeAtIBelow = 0.10001;
constexpr double kHingeAtJFrom = 0.89999;

std::string FrameOwner(const VaskFrameObj& frame) { return "Frame \"" + frame.Label + "\""; }

bool AnyReleased(const DofFlags& flags) {
  return std::any_of(flags.begin(), flags.end(), [](bool released) { return released; });
}

}  // namespace

void VaskModelObj::ReadFrames() {
  int count = 0;
  Names names;
  host_.GetFrameNameList(count, names);
  // Statuses are not tested: a failed call leaves its results as the host left them.
  std::string section;
  std::string autoSelect;
  std::string pointI;
  std::string pointJ;
  double angle = 0.0;
  bool advanced = false;
  const int num = std::min(count, static_cast<int>(names.size()));
  // Frames come mostly in rows: a frame's ends lie one node on from those of the frame
  // before it, or it starts where that one ended.
  int lastI = 0;
  int lastJ = 0;
  for (int i = 0; i < num; ++i) {
    const std::string& name = names[static_cast<std::size_t>(i)];
    host_.GetFrameSection(name, section, autoSelect);
    // A frame over a section that stage 2 left out does not exist for the transfer.
    if (PropFrameSectObjGet(section) == nullptr) {
      NoteDrop("frame", name, "its section \"" + section + "\" was not taken");
      continue;
    }
    host_.GetFramePoints(name, pointI, pointJ);
    VaskFrameObj& frame = *AddFrame();
    frame.Label = name;
    frame.PropFrameSectName = section;
    frame.LabelNodeI = pointI;
    frame.LabelNodeJ = pointJ;
    frame.NodeI = NodeIdFrom(pointI, {lastI + 1, lastJ});
    frame.NodeJ = NodeIdFrom(pointJ, {lastJ + 1, frame.NodeI + (lastJ - lastI)});
    lastI = frame.NodeI;
    lastJ = frame.NodeJ;
    host_.GetFrameLocalAngle(name, angle, advanced);
    frame.Angle = angle;
  }
}

VaskFrameReleaseObj* VaskModelObj::FrameReleaseFind(const DofFlags& flags) const {
  for (int i = 1; i <= FrameReleaseNum(); ++i) {
    VaskFrameReleaseObj* pattern = FrameReleaseObj(i);
    bool equal = true;
    for (int dof = 1; dof <= 6 && equal; ++dof) {
      equal = pattern->Release(dof) == flags[static_cast<std::size_t>(dof - 1)];
    }
    if (equal) return pattern;
  }
  return nullptr;
}

void VaskModelObj::ReadFrameReleases() {
  // The pattern of these flags: the stored one, or a new one. One object per distinct
  // pattern, so that the compounds made per release pair compare patterns by identity.
  const auto sharedPattern = [this](const DofFlags& flags) {
    VaskFrameReleaseObj* pattern = FrameReleaseFind(flags);
    if (pattern == nullptr) {
      pattern = FrameReleaseAdd();
      for (int dof = 1; dof <= 6; ++dof) {
        pattern->Release(dof) = flags[static_cast<std::size_t>(dof - 1)];
      }
    }
    return pattern;
  };
  DofFlags releaseI{};
  DofFlags releaseJ{};
  DofValues startValues{};
  DofValues endValues{};
  for (int i = 1; i <= FrameNum(); ++i) {
    VaskFrameObj& frame = *FrameObj(i);
    host_.GetFrameReleases(frame.Label, releaseI, releaseJ, startValues, endValues);
    if (AnyReleased(releaseI)) frame.ReleaseIObj = sharedPattern(releaseI);
    if (AnyReleased(releaseJ)) frame.ReleaseJObj = sharedPattern(releaseJ);
    if (releaseI[4] || releaseJ[4])
      NoteDrop("release", frame.Label,
               "a moment release about the local 2 axis (M2) is not carried");
  }
}

void VaskModelObj::LinkFrameSections() {
  for (int i = 1; i <= FrameNum(); ++i) {
    VaskFrameObj& frame = *FrameObj(i);
    frame.PropFrameSectObj = PropFrameSectObjGet(frame.PropFrameSectName);
  }
}

int VaskModelObj::FrameOrientationGet(const VaskFrameObj& frame) const {
  const NodeOwner owner{"Frame", frame.Label};
  const VaskNodeObj& nodeI = RequiredNode(frame.LabelNodeI, owner, frame.NodeI);
  const VaskNodeObj& nodeJ = RequiredNode(frame.LabelNodeJ, owner, frame.NodeJ);
  const double dx = nodeJ.x - nodeI.x;
  const double dy = nodeJ.y - nodeI.y;
  const double dz = nodeJ.z - nodeI.z;
  const double length = std::sqrt(dz * dz + dx * dx + dy * dy);
  if (length == 0.0) {
    throw TransferFailure(owner.Text() + ": its end nodes \"" + frame.LabelNodeI + "\" and \"" +
                          frame.LabelNodeJ +
                          "\" coincide; a frame of zero length has no orientation.");
  }
  const double c = std::abs(dz / length);
  if (c > kColumnCosine) return 1;
  if (c < kBeamCosine) return 2;
  return 3;
}

void VaskModelObj::ClassifyFrames() {
  for (int i = 1; i <= FrameNum(); ++i) {
    VaskFrameObj& frame = *FrameObj(i);
    frame.TrelkFrameType = FrameOrientationGet(frame);
    const VaskPropFrameSectObj* section = frame.PropFrameSectObj;
    if (section == nullptr) {
      throw TransferFailure(FrameOwner(frame) + ": its section \"" + frame.PropFrameSectName +
                            "\" is not a frame section of the model.");
    }
    switch (section->PropType) {
      case kSectionRectangular:
        frame.TrelkSectType = 1;
        break;
      case kSectionIShape:
        frame.TrelkSectType = 2;
        break;
      default:
        frame.TrelkSectType = 3;
        break;
    }
    // Without a material the frame keeps its initial material and concrete types.
    const VaskPropMaterialObj* material = section->PropMatObj;
    if (material == nullptr)
      NoteDrop("frame", frame.Label,
               "the material of its section \"" + section->Label +
                   "\" was not taken: neither steel nor concrete");
    if (material == nullptr) continue;
    switch (material->MatType) {
      case host_code::kMaterialSteel:
        frame.TrelkMatType = 2;
        break;
      case host_code::kMaterialConcrete:
        frame.TrelkMatType = 1;
        break;
      default:
        frame.TrelkMatType = 3;
        NoteDrop("frame", frame.Label, "its material is neither steel nor concrete");
        break;
    }
    // Only a rectangular concrete section carries the rebar design type that tells a
    // concrete column from a concrete beam.
    if (material->MatType == host_code::kMaterialConcrete &&
        section->PropType == kSectionRectangular) {
      int designType = 0;
      host_.GetRebarDesignType(section->Label, designType);
      if (designType == kRebarDesignColumn) {
        frame.TrelkConcType = 2;
      } else if (designType == kRebarDesignBeam) {
        frame.TrelkConcType = 1;
      }
    }
  }
}

void VaskModelObj::ReadFrameHinges() {
  int count = 0;
  Ints a1;
  Ints a2;
  Ints dofs;
  Reals a4;
  Reals a5;
  Reals relativeDistances;
  for (int i = 1; i <= FrameNum(); ++i) {
    VaskFrameObj& frame = *FrameObj(i);
    const int status =
        host_.GetFrameHinges(frame.Label, count, a1, a2, dofs, a4, a5, relativeDistances);
    if (status != 0 || count <= 0) continue;
    const int num = std::min(
        {count, static_cast<int>(dofs.size()), static_cast<int>(relativeDistances.size())});
    // Each hinge in order, so a later hinge at the same end overwrites the kind.
    for (int k = 0; k < num; ++k) {
      const int kind = HingeKind(dofs[static_cast<std::size_t>(k)]);
      if (kind == kHingeKindNone) continue;
      const double r = relativeDistances[static_cast<std::size_t>(k)];
      if (r < kHingeAtIBelow) {
        frame.HingeI = true;
        frame.HingeTypeI = kind;
      }
      if (r >= kHingeAtJFrom) {
        frame.HingeJ = true;
        frame.HingeTypeJ = kind;
      }
      if (r >= kHingeAtIBelow && r < kHingeAtJFrom)
        NoteDrop("hinge", frame.Label, "in the middle third of the frame");
    }
  }
}

}  // namespace vtt
