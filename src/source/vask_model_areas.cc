// The areas of the source model: stages 8 (ReadAreas), 19 (LinkAreaSections),
// 21 (ClassifyAreas) and 28 (DetectEmbeddedBeams) of ReadVaskData, and the area
// operations of the root: AddNewNode, NormaliseAreaNodes and AreaOrientationGet.
//
// The target knows only 4-noded shells, so a triangle becomes three quadrilaterals on its
// centroid and mid-side nodes. Every area then has its nodes in normal order: nodes 1 and
// 2 the lower pair, 3 and 4 the upper pair, both pairs running the same way in plan. The
// element translation, the base cuts and AreaObjAreaGet rely on that order.
#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "source/vask_model.h"

namespace vtt {
namespace {

// Host codes that decide which areas are read.
constexpr int kAreaSectionShell = 1;
constexpr int kShellThin = 1;
constexpr int kShellLayered = 6;
// Section PropType of a shell, and the frame section type an embedded beam takes.
constexpr int kPropTypeShell = 1;
constexpr int kEmbedSectionRectangular = 8;

constexpr int kOrientationWall = 1;
constexpr int kOrientationFloor = 2;
constexpr int kOrientationRamp = 3;

// An edge this short, in model length units whatever the units, makes the area a floor.
constexpr double kShortEdge = 0.1;
// The classification takes pi as 3.1415926: an area near 5 or 85 degrees must land on the
// side it always has.
constexpr double kAreaPi = 3.1415926;
const double kFloorCosine = std::cos(5.0 * kAreaPi / 180.0);
const double kWallCosine = std::cos(85.0 * kAreaPi / 180.0);

constexpr double kSmall = 0.000001;
constexpr double kFloorValue = 0.001;

// One corner of an area: its coordinates and the node position (1 to 4) it came from.
struct Corner {
  double x = 0.0;
  double y = 0.0;
  double z = 0.0;
  int from = 0;
};
using Corners = std::array<Corner, 4>;

// The normal order: the exchange sort by z, in which equal levels are never exchanged,
// then the upper pair turned to run the way of the lower pair in plan.
Corners NormalOrder(Corners c) {
  for (std::size_t i = 0; i < 4; ++i) {
    for (std::size_t j = i + 1; j < 4; ++j) {
      if (c[j].z < c[i].z) std::swap(c[i], c[j]);
    }
  }
  if ((c[1].x - c[0].x) * (c[3].x - c[2].x) + (c[1].y - c[0].y) * (c[3].y - c[2].y) < 0.0) {
    std::swap(c[2], c[3]);
  }
  return c;
}

double Distance(const Corner& a, const Corner& b) {
  const double dx = b.x - a.x;
  const double dy = b.y - a.y;
  const double dz = b.z - a.z;
  return std::sqrt(dx * dx + dy * dy + dz * dz);
}

// The lists of the host's answer about what is connected to a point: one set serves every
// corner of every area, emptied before each question as fresh lists would be.
struct ConnectivityLists {
  Ints objectTypes;
  Names objectNames;
  Ints pointNumbers;
};

// Whether any object the host connects to the point is a frame.
bool FrameJoinsPoint(HostModel& host, const std::string& label, ConnectivityLists& lists) {
  int count = 0;
  Ints& objectTypes = lists.objectTypes;
  Names& objectNames = lists.objectNames;
  Ints& pointNumbers = lists.pointNumbers;
  objectTypes.clear();
  objectNames.clear();
  pointNumbers.clear();
  host.GetPointConnectivity(label, count, objectTypes, objectNames, pointNumbers);
  const auto num = static_cast<std::ptrdiff_t>(
      std::min(static_cast<std::size_t>(std::max(count, 0)), objectTypes.size()));
  return std::any_of(objectTypes.begin(), objectTypes.begin() + num,
                     [](int type) { return type == host_code::kObjectFrame; });
}

}  // namespace

void VaskModelObj::ReadAreas() {
  // The grid of AddNewNode is built afresh from the nodes present now.
  coincidentNodes_.Clear();
  int triangles = 0;
  int count = 0;
  Names names;
  host_.GetAreaNameList(count, names);
  std::string section;
  int sectionType = 0;
  int shellType = 0;
  bool drillingDof = false;
  std::string material;
  double materialAngle = 0.0;
  double membrane = 0.0;
  double bending = 0.0;
  int pointCount = 0;
  Names points;
  // Node 1 to 4 of an area: the label and the id.
  using AreaNodes = std::array<std::pair<std::string, int>, 4>;
  const auto addArea = [this](const std::string& label, const std::string& sectionName,
                              const AreaNodes& nodes) {
    VaskAreaObj& area = *AddArea();
    area.Label = label;
    area.NumNodes = 4;
    area.RedimJoint();
    for (int j = 1; j <= 4; ++j) {
      area.LabelNodes(j) = nodes[static_cast<std::size_t>(j - 1)].first;
      area.idNodes(j) = nodes[static_cast<std::size_t>(j - 1)].second;
    }
    area.PropAreaSectName = sectionName;
  };
  const auto of = [](const VaskNodeObj& node) { return std::make_pair(node.Label, node.id); };

  const int num = std::min(count, static_cast<int>(names.size()));
  // Areas come mostly in rows: each corner lies one node on from that of the area before.
  std::array<int, 4> lastCorners{};
  for (int i = 0; i < num; ++i) {
    const std::string& name = names[static_cast<std::size_t>(i)];
    host_.GetAreaSection(name, section);
    if (host_.GetAreaSectionType(section, sectionType) != 0 ||
        sectionType != kAreaSectionShell) {
      NoteDrop("area", name, "its section \"" + section + "\" is not a shell section");
      continue;
    }
    host_.GetShellSection(section, shellType, drillingDof, material, materialAngle, membrane,
                          bending);
    if (shellType != kShellThin && shellType != kShellLayered) {
      NoteDrop("area", name,
               "its shell type " + std::to_string(shellType) + " is neither thin nor layered");
      continue;
    }
    host_.GetAreaPoints(name, pointCount, points);
    const int numPoints = std::min(pointCount, static_cast<int>(points.size()));

    if (numPoints == 4) {
      // An unknown point keeps the id -1; NormaliseAreaNodes then stops the run naming
      // the area.
      AreaNodes nodes;
      for (std::size_t j = 0; j < 4; ++j) {
        const int id = NodeIdFrom(points[j], {lastCorners[j] + 1, lastCorners[j]});
        nodes[j] = {points[j], id};
        lastCorners[j] = id;
      }
      addArea(name, section, nodes);
    } else if (numPoints == 3) {
      const NodeOwner owner{"Area", name};
      const VaskNodeObj& p1 = RequiredNode(points[0], owner);
      const VaskNodeObj& p2 = RequiredNode(points[1], owner);
      const VaskNodeObj& p3 = RequiredNode(points[2], owner);
      const auto centroid = [](double c1, double c2, double c3) {
        const double m = (c1 + c2) / 2.0;
        return (m + m + c3) / 3.0;
      };
      ++triangles;
      const VaskNodeObj* c = AddNewNode(triangles + 1, centroid(p1.x, p2.x, p3.x),
                                        centroid(p1.y, p2.y, p3.y), centroid(p1.z, p2.z, p3.z));
      const VaskNodeObj* m12 = AddNewNode(triangles + 2, (p1.x + p2.x) / 2.0,
                                          (p1.y + p2.y) / 2.0, (p1.z + p2.z) / 2.0);
      const VaskNodeObj* m23 = AddNewNode(triangles + 3, (p2.x + p3.x) / 2.0,
                                          (p2.y + p3.y) / 2.0, (p2.z + p3.z) / 2.0);
      const VaskNodeObj* m31 = AddNewNode(triangles + 4, (p3.x + p1.x) / 2.0,
                                          (p3.y + p1.y) / 2.0, (p3.z + p1.z) / 2.0);
      triangles += 4;
      addArea(name, section, {of(p1), of(*m12), of(*c), of(*m31)});
      addArea(name, section, {of(p2), of(*m23), of(*c), of(*m12)});
      addArea(name, section, {of(p3), of(*m31), of(*c), of(*m23)});
    }
    // Areas of any other number of points are not transferred.
    if (numPoints != 3 && numPoints != 4)
      NoteDrop("area", name,
               std::to_string(numPoints) + " nodes; only areas of 3 or 4 nodes are taken");
  }

  for (int i = 1; i <= AreaNum(); ++i) NormaliseAreaNodes(*AreaObj(i));
}

VaskNodeObj* VaskModelObj::FindCoincidentNode(double x, double y, double z) const {
  if (coincidentNodes_.Num() > NodeNum()) coincidentNodes_.Clear();
  coincidentNodes_.Reserve(NodeNum() - coincidentNodes_.Num());
  for (int i = coincidentNodes_.Num() + 1; i <= NodeNum(); ++i) {
    const VaskNodeObj& node = *nodes_(i);
    coincidentNodes_.Add(node.x, node.y, node.z);
  }
  const int position = coincidentNodes_.Find(x, y, z);
  return position == 0 ? nullptr : nodes_(position);
}

VaskNodeObj* VaskModelObj::FindCoincidentNodeLinear(double x, double y, double z) const {
  for (int i = 1; i <= NodeNum(); ++i) {
    VaskNodeObj* node = nodes_(i);
    if (PointsCoincide(node->x, node->y, node->z, x, y, z)) return node;
  }
  return nullptr;
}

VaskNodeObj* VaskModelObj::AddNewNode(int number, double x, double y, double z) {
  // Neighbouring triangles share their mid-side nodes this way, and a mid-side or centroid
  // that falls on a joint uses the joint.
  if (VaskNodeObj* present = FindCoincidentNode(x, y, z)) return present;
  std::string label = "NewNode" + std::to_string(number);
  while (NodeObjGet(label) != nullptr) {
    ++number;
    label = "NewNode" + std::to_string(number);
  }
  // A new node has no support.
  return AddNode(std::move(label), x, y, z, DofFlags{});
}

void VaskModelObj::NormaliseAreaNodes(VaskAreaObj& area) const {
  const NodeOwner owner{"Area", area.Label};
  Corners corners;
  for (int j = 1; j <= 4; ++j) {
    const VaskNodeObj& node = RequiredNode(area.LabelNodes(j), owner, area.NodeHint(j));
    corners[static_cast<std::size_t>(j - 1)] = {node.x, node.y, node.z, j};
  }
  const Corners ordered = NormalOrder(corners);
  const OneBasedList<std::string> labels = area.LabelNodes;
  const OneBasedList<int> ids = area.idNodes;
  for (int j = 1; j <= 4; ++j) {
    const int from = ordered[static_cast<std::size_t>(j - 1)].from;
    area.LabelNodes(j) = labels(from);
    area.idNodes(j) = ids(from);
  }
}

int VaskModelObj::AreaOrientationGet(const VaskAreaObj& area) const {
  const NodeOwner owner{"Area", area.Label};
  Corners corners;
  for (int j = 1; j <= 4; ++j) {
    const VaskNodeObj& node = RequiredNode(area.LabelNodes(j), owner, area.NodeHint(j));
    corners[static_cast<std::size_t>(j - 1)] = {node.x, node.y, node.z, j};
  }
  const Corners p = NormalOrder(corners);

  // A sliver with a short top or bottom edge has no trustworthy normal: it is a floor.
  if (Distance(p[2], p[3]) < kShortEdge || Distance(p[0], p[1]) < kShortEdge) {
    return kOrientationFloor;
  }
  const double ax = p[2].x - p[1].x;
  const double ay = p[2].y - p[1].y;
  const double az = p[2].z - p[1].z;
  const double bx = p[3].x - p[0].x;
  const double by = p[3].y - p[0].y;
  const double bz = p[3].z - p[0].z;
  const double nx = ay * bz - az * by;
  const double ny = az * bx - ax * bz;
  const double nz = ax * by - ay * bx;
  double m = std::sqrt(nx * nx + ny * ny + nz * nz);
  if (m < kSmall) m = kFloorValue;
  const double unitZ = std::abs(nz / m);
  if (kFloorCosine < unitZ) return kOrientationFloor;
  if (unitZ < kWallCosine) return kOrientationWall;
  return kOrientationRamp;
}

void VaskModelObj::LinkAreaSections() {
  for (int i = 1; i <= AreaNum(); ++i) {
    VaskAreaObj& area = *AreaObj(i);
    area.PropAreaSectObj = areaSections_.Get(area.PropAreaSectName);
  }
}

void VaskModelObj::ClassifyAreas() {
  for (int i = 1; i <= AreaNum(); ++i) {
    VaskAreaObj& area = *AreaObj(i);
    area.Orientation = AreaOrientationGet(area);
  }
}

void VaskModelObj::MarkFrameJoins() {
  // Every area, whether it gets a section or not, learns where frames join it.
  // A node is a corner of several areas; the host is asked once for each node (by its
  // position in the node list, which nothing changes here), and gives the same answer.
  ConnectivityLists connectivity;
  std::vector<std::int8_t> joined(static_cast<std::size_t>(NodeNum()) + 1, -1);
  for (int i = 1; i <= AreaNum(); ++i) {
    VaskAreaObj& area = *AreaObj(i);
    const NodeOwner owner{"Area", area.Label};
    for (int j = 1; j <= 4; ++j) {
      const VaskNodeObj& node = RequiredNode(area.LabelNodes(j), owner, area.NodeHint(j));
      const bool known = node.id >= 1 && node.id <= NodeNum() && NodeObj(node.id) == &node;
      std::int8_t* answer = known ? &joined[static_cast<std::size_t>(node.id)] : nullptr;
      if (answer == nullptr || *answer < 0) {
        const bool frame = FrameJoinsPoint(host_, node.Label, connectivity);
        if (answer == nullptr) {
          area.IsEmbed(j) = frame;
          continue;
        }
        *answer = frame ? 1 : 0;
      }
      area.IsEmbed(j) = *answer == 1;
    }
  }
}

void VaskModelObj::DetectEmbeddedBeams() {
  // Pass 1: where frames join the areas, unless it is being done beside the mass.
  if (frameJoins_.valid()) {
    frameJoins_.get();
  } else {
    MarkFrameJoins();
  }

  // Pass 2. Equal sections share one object; a section matches only sections of the same
  // material name, so those are kept together, each group in list order, and the first
  // match within the group is the first match in the whole list.
  std::unordered_map<std::string, std::vector<VaskPropFrameSectObj*>> byMaterial;
  for (int k = 1; k <= PropEmbedFrameSectNum(); ++k) {
    VaskPropFrameSectObj* section = PropEmbedFrameSectObj(k);
    byMaterial[section->PropMatName].push_back(section);
  }
  const auto within = [](double a, double b) { return std::abs(a - b) <= kSmall; };

  for (int i = 1; i <= AreaNum(); ++i) {
    VaskAreaObj& area = *AreaObj(i);
    const bool joined =
        std::any_of(area.IsEmbed.begin(), area.IsEmbed.end(), [](bool embed) { return embed; });
    const VaskPropAreaSectObj* shell = area.PropAreaSectObj;
    if (!joined || shell == nullptr || shell->PropType != kPropTypeShell) continue;

    VaskPropMaterialObj* material = nullptr;
    double t = 0.0;
    if (shell->ShellType == kShellThin && area.Orientation == kOrientationWall) {
      material = shell->PropMatObj;
      t = shell->Thick;
    } else if (shell->ShellType == kShellLayered && shell->LayerTrelkType >= 1 &&
               shell->LayerTrelkType <= 3) {
      material = shell->LayerPropMatConcObj;
      t = shell->LayerTrelkThick;
    } else {
      continue;
    }
    if (material == nullptr) continue;

    const NodeOwner owner{"Area", area.Label};
    double h = (RequiredNode(area.LabelNodes(3), owner, area.NodeHint(3)).z -
                RequiredNode(area.LabelNodes(1), owner, area.NodeHint(1)).z) /
               2.0;
    if (h < kSmall) h = kFloorValue;
    const double inertia = (1.0 / 12.0) * t * h * h * h;

    std::vector<VaskPropFrameSectObj*>& group = byMaterial[material->Label];
    const auto match =
        std::find_if(group.begin(), group.end(), [&](const VaskPropFrameSectObj* s) {
          return within(s->t2, t) && within(s->t3, h) && within(s->I33, inertia);
        });
    VaskPropFrameSectObj* section = nullptr;
    if (match != group.end()) {
      section = *match;
    } else {
      section = AddPropEmbedFrameSect();
      group.push_back(section);
    }
    section->area = kFloorValue;
    section->As2 = 0.0;
    section->As3 = 0.0;
    section->I22 = kFloorValue;
    section->I33 = inertia;
    // A reused section takes the number of the latest area that uses it.
    section->Label = std::to_string(i);
    section->PropType = kEmbedSectionRectangular;
    section->t2 = t;
    section->t3 = h;
    section->TorsionConst = 0.0001;
    section->PropMatName = material->Label;
    section->PropMatObj = material;
    area.EmbedFrameObj = section;
  }
  // A reused section is renamed, but no step looks an embedded-beam section up by its
  // label, so every label index stays as it is.
}

}  // namespace vtt
