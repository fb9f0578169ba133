// The loads of the source model: stages 9 to 15 (ReadLoadPatterns, ReadLoadNodes,
// ReadFramesLoadDistributed, ReadFramesLoadPoint, CheckLoadFramePoint, ReadLoadAreas,
// SpreadLoadAreas) and 24 (MarkLoadPatternContents) of ReadVaskData.
//
// What leaves here: the patterns; the nodal loads, which also take the end point loads of
// frames and the corner shares of area loads; and on every frame its distributed and point
// loads per pattern, positive downward. A load the target cannot take (another coordinate
// system than "GLOBAL", a direction other than Z or gravity, a moment along a frame) is
// left out without a word.
#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <initializer_list>
#include <string>
#include <unordered_set>
#include <vector>

#include "source/vask_model.h"
#include "store/units.h"

namespace vtt {
namespace {

constexpr double kSmall = 1e-6;

// MyType of a frame load that is a force; moments are not carried.
constexpr int kFrameLoadForce = 1;

// Area section type of a shell, and the two shell kinds whose material is known.
constexpr int kPropTypeShell = 1;
constexpr int kShellThin = 1;
constexpr int kShellLayered = 6;

// Directions that the frame and area readers take: global Z and projected Z (upward
// positive), gravity and projected gravity (downward positive).
bool IsCarriedDirection(int dir) { return dir == 6 || dir == 9 || dir == 10 || dir == 11; }

// The projected directions, whose area loads act on the plan area.
bool IsProjectedDirection(int dir) { return dir == 9 || dir == 11; }

// The count of a host list, never past what the arrays hold.
template <class... Arrays>
int ItemsOf(int count, const Arrays&... arrays) {
  int num = count;
  ((num = std::min(num, static_cast<int>(arrays.size()))), ...);
  return std::max(num, 0);
}

std::size_t At(int i) { return static_cast<std::size_t>(i); }

// Whether a frame load item is one the frame readers take.
bool IsCarriedFrameLoad(int myType, const std::string& csys, int dir) {
  return myType == kFrameLoadForce && IsGlobalLoadCSys(csys) && IsCarriedDirection(dir);
}

// Why a load item is not taken, for the report of what was left out.
std::string LoadDropReason(int myType, const std::string& csys, int dir) {
  if (myType != kFrameLoadForce) return "a moment load";
  if (!IsGlobalLoadCSys(csys)) return "in the local system \"" + csys + "\"";
  return "direction " + std::to_string(dir) + " is not carried";
}

VaskLoadFrameDistObj* FindLoadFrameDistributed(const VaskFrameObj& frame,
                                                const std::string& pattern, int loadType,
                                                const std::string& csys) {
  for (int k = 1; k <= frame.LoadFrameDistributedNum(); ++k) {
    VaskLoadFrameDistObj* load = frame.LoadFrameDistributedObj(k);
    if (load->PatternLabel == pattern && load->LoadType == loadType && load->CSys == csys) {
      return load;
    }
  }
  return nullptr;
}

// Point loads of a frame are kept per pattern alone.
VaskLoadFramePointObj* FindLoadFramePoint(const VaskFrameObj& frame, const std::string& pattern) {
  for (int k = 1; k <= frame.LoadFramePointNum(); ++k) {
    VaskLoadFramePointObj* load = frame.LoadFramePointObj(k);
    if (load->PatternLabel == pattern) return load;
  }
  return nullptr;
}

VaskLoadFramePointObj& LoadFramePointFor(VaskFrameObj& frame, const std::string& frameName,
                                         const std::string& pattern, const std::string& csys) {
  if (VaskLoadFramePointObj* found = FindLoadFramePoint(frame, pattern)) return *found;
  VaskLoadFramePointObj& load = *frame.LoadFramePointObj.Add();
  load.Label = frameName;
  load.PatternLabel = pattern;
  load.LoadType = kFrameLoadForce;
  load.CSys = csys;
  return load;
}

// The lists of the host's answer about the loads of one frame. One set serves every frame
// of a stage and is emptied before each question, which leaves it as fresh lists would be:
// a million frames then do not cost a million sets of allocations.
struct FrameLoadLists {
  Names frameNames;
  Names patterns;
  Ints myTypes;
  Names csys;
  Ints dirs;
  Reals rd1;
  Reals rd2;
  Reals dist1;
  Reals dist2;
  Reals val1;
  Reals val2;

  void Clear() {
    for (Names* names : {&frameNames, &patterns, &csys}) names->clear();
    for (Ints* ints : {&myTypes, &dirs}) ints->clear();
    for (Reals* reals : {&rd1, &rd2, &dist1, &dist2, &val1, &val2}) reals->clear();
  }
};

// The distributed loads of one frame, sorted per pattern afterwards with the length unit
// that `unitLength` gives. A piece shorter than 1e-6 is a point load of its start value at
// its start.
template <class UnitLength>
void ReadLoadFrameDistributed(HostModel& host, VaskFrameObj& frame, UnitLength& unitLength,
                              const VaskModelObj& model, FrameLoadLists& lists) {
  lists.Clear();
  int count = 0;
  Names& frameNames = lists.frameNames;
  Names& patterns = lists.patterns;
  Ints& myTypes = lists.myTypes;
  Names& csys = lists.csys;
  Ints& dirs = lists.dirs;
  Reals& rd1 = lists.rd1;
  Reals& rd2 = lists.rd2;
  Reals& dist1 = lists.dist1;
  Reals& dist2 = lists.dist2;
  Reals& val1 = lists.val1;
  Reals& val2 = lists.val2;
  host.GetFrameDistributedLoads(frame.Label, ItemType::Object, count, frameNames, patterns, myTypes,
                                csys, dirs, rd1, rd2, dist1, dist2, val1, val2);
  const int num = ItemsOf(count, frameNames, patterns, myTypes, csys, dirs, rd1, rd2, val1, val2);
  int patternType = 0;
  for (int i = 0; i < num; ++i) {
    // Asked as for every load; the answer decides nothing here.
    host.GetLoadPatternType(patterns[At(i)], patternType);
    if (!IsCarriedFrameLoad(myTypes[At(i)], csys[At(i)], dirs[At(i)])) {
      model.NoteDrop("frame distributed load", frame.Label + " (" + patterns[At(i)] + ")",
                     LoadDropReason(myTypes[At(i)], csys[At(i)], dirs[At(i)]));
      continue;
    }
    if (std::abs(rd1[At(i)] - rd2[At(i)]) >= kSmall) {
      VaskLoadFrameDistObj* load =
          FindLoadFrameDistributed(frame, patterns[At(i)], myTypes[At(i)], csys[At(i)]);
      if (load == nullptr) {
        load = frame.LoadFrameDistributedObj.Add();
        load->Label = frameNames[At(i)];
        load->PatternLabel = patterns[At(i)];
        load->LoadType = myTypes[At(i)];
        load->CSys = csys[At(i)];
      }
      load->AddLoadFrameDistributed(dirs[At(i)], rd1[At(i)], rd2[At(i)], val1[At(i)],
                                    val2[At(i)]);
    } else {
      LoadFramePointFor(frame, frameNames[At(i)], patterns[At(i)], csys[At(i)])
          .AddLoadFramePoint(dirs[At(i)], rd1[At(i)], val1[At(i)]);
    }
  }
  for (int k = 1; k <= frame.LoadFrameDistributedNum(); ++k) {
    frame.LoadFrameDistributedObj(k)->SortLoadFrameDistributed(unitLength(),
                                                                model.DropObserverIfAny());
  }
}

// The point loads of one frame, joined to those that stage 11 found; every point object of
// the frame is sorted afterwards.
void ReadLoadFramePoint(HostModel& host, VaskFrameObj& frame, const VaskModelObj& model,
                        FrameLoadLists& lists) {
  lists.Clear();
  int count = 0;
  Names& frameNames = lists.frameNames;
  Names& patterns = lists.patterns;
  Ints& myTypes = lists.myTypes;
  Names& csys = lists.csys;
  Ints& dirs = lists.dirs;
  Reals& relDist = lists.rd1;
  Reals& dist = lists.dist1;
  Reals& val = lists.val1;
  host.GetFramePointLoads(frame.Label, ItemType::Object, count, frameNames, patterns, myTypes,
                          csys, dirs, relDist, dist, val);
  const int num = ItemsOf(count, frameNames, patterns, myTypes, csys, dirs, relDist, val);
  int patternType = 0;
  for (int i = 0; i < num; ++i) {
    host.GetLoadPatternType(patterns[At(i)], patternType);
    if (!IsCarriedFrameLoad(myTypes[At(i)], csys[At(i)], dirs[At(i)])) {
      model.NoteDrop("frame point load", frame.Label + " (" + patterns[At(i)] + ")",
                     LoadDropReason(myTypes[At(i)], csys[At(i)], dirs[At(i)]));
      continue;
    }
    LoadFramePointFor(frame, frameNames[At(i)], patterns[At(i)], csys[At(i)])
        .AddLoadFramePoint(dirs[At(i)], relDist[At(i)], val[At(i)]);
  }
  for (int k = 1; k <= frame.LoadFramePointNum(); ++k) {
    frame.LoadFramePointObj(k)->SortLoadFramePoint(model.DropObserverIfAny());
  }
}

// One load list of an area as the host gives it, from either of the two area load queries.
struct AreaLoads {
  Names patterns;
  Names csys;
  Ints dirs;
  Reals values;
  int num = 0;
};

// The weight of a material, when there is one.
bool HasUnitWeight(const VaskPropMaterialObj* material) {
  return material != nullptr && material->UnitWeight > kSmall;
}

}  // namespace

bool VaskModelObj::IsLoadPatternDeadOrLive(int /*type*/) {
  // The readers ask this of every load they take, but no pattern type is left out.
  return true;
}

void VaskModelObj::ReadLoadPatterns() {
  int count = 0;
  Names names;
  host_.GetLoadPatternNames(count, names);
  int type = 0;
  double multiplier = 0.0;
  const int num = ItemsOf(count, names);
  for (int i = 0; i < num; ++i) {
    const std::string& name = names[At(i)];
    host_.GetLoadPatternType(name, type);
    if (!IsLoadPatternDeadOrLive(type)) continue;
    host_.GetSelfWeightMultiplier(name, multiplier);
    VaskLoadPatternObj& pattern = *AddLoadPattern();
    pattern.Label = name;
    pattern.SelfWtMultiplier = multiplier;
  }
}

void VaskModelObj::ReadLoadNodes() {
  int count = 0;
  Names pointNames;
  Names patterns;
  Ints steps;
  Names csys;
  Reals f1;
  Reals f2;
  Reals f3;
  Reals m1;
  Reals m2;
  Reals m3;
  int type = 0;
  for (int n = 1; n <= NodeNum(); ++n) {
    host_.GetPointForces(NodeObj(n)->Label, ItemType::Object, count, pointNames, patterns, steps,
                         csys, f1, f2, f3, m1, m2, m3);
    if (count < 1) continue;
    const int num = ItemsOf(count, pointNames, patterns, csys, f1, f2, f3, m1, m2, m3);
    std::vector<bool> taken(At(num), false);
    bool anyTaken = false;
    for (int i = 0; i < num; ++i) {
      host_.GetLoadPatternType(patterns[At(i)], type);
      taken[At(i)] = IsGlobalLoadCSys(csys[At(i)]) && IsLoadPatternDeadOrLive(type);
      if (!taken[At(i)])
        NoteDrop("nodal load", pointNames[At(i)] + " (" + patterns[At(i)] + ")",
                 "in the local system \"" + csys[At(i)] + "\"");
      anyTaken = anyTaken || taken[At(i)];
    }
    if (!anyTaken) continue;
    // One new object per loaded node, whatever objects the node already has.
    VaskLoadNodeObj& loads = *AddLoadNode();
    for (int i = 0; i < num; ++i) {
      if (!taken[At(i)]) continue;
      loads.SetLoadNode(pointNames[At(i)], patterns[At(i)], f1[At(i)], f2[At(i)], f3[At(i)],
                        m1[At(i)], m2[At(i)], m3[At(i)]);
    }
  }
}

void VaskModelObj::ReadFramesLoadDistributed() {
  // The sorting works in the length unit of the structure.
  const auto unitLength = [this] { return PresentUnits().UnitLength; };
  FrameLoadLists lists;
  for (int i = 1; i <= FrameNum(); ++i) {
    ReadLoadFrameDistributed(host_, *FrameObj(i), unitLength, *this, lists);
  }
}

void VaskModelObj::ReadFramesLoadPoint() {
  FrameLoadLists lists;
  for (int i = 1; i <= FrameNum(); ++i) ReadLoadFramePoint(host_, *FrameObj(i), *this, lists);
}

void VaskModelObj::CheckLoadFramePoint() {
  for (int i = 1; i <= FrameNum(); ++i) {
    const VaskFrameObj& frame = *FrameObj(i);
    for (int k = 1; k <= frame.LoadFramePointNum(); ++k) {
      VaskLoadFramePointObj& load = *frame.LoadFramePointObj(k);
      // The value goes on as it is stored, positive downward, into F3, which is positive
      // upward: an end load changes its sense on this road. That is the rule.
      if (load.ItemNum > 0 && load.RD(1) < kSmall) {
        AddLoadNode()->SetLoadNode(frame.LabelNodeI, load.PatternLabel, 0.0, 0.0, load.Val(1),
                                   0.0, 0.0, 0.0);
        load.RemoveLoadFramePoint(1);
      }
      if (load.ItemNum > 0 && std::abs(load.RD(load.ItemNum) - 1.0) < kSmall) {
        AddLoadNode()->SetLoadNode(frame.LabelNodeJ, load.PatternLabel, 0.0, 0.0,
                                   load.Val(load.ItemNum), 0.0, 0.0, 0.0);
        load.RemoveLoadFramePoint(load.ItemNum);
      }
    }
  }
}

void VaskModelObj::ReadLoadAreas() {
  int count = 0;
  Names areaNames;
  Ints distTypes;
  AreaLoads loads;
  int type = 0;
  // Two passes over every area: the uniform loads, then the uniform loads that the host
  // spreads to frames, taken alike (how they are spread is not carried). The parts of a
  // divided triangle carry its label, so each of them takes the triangle's loads.
  for (int pass = 1; pass <= 2; ++pass) {
    for (int a = 1; a <= AreaNum(); ++a) {
      const std::string& label = AreaObj(a)->Label;
      if (pass == 1) {
        host_.GetAreaUniformLoads(label, ItemType::Object, count, areaNames, loads.patterns,
                                  loads.csys, loads.dirs, loads.values);
      } else {
        host_.GetAreaUniformToFrameLoads(label, ItemType::Object, count, areaNames,
                                         loads.patterns, loads.csys, loads.dirs, loads.values,
                                         distTypes);
      }
      if (count < 1) continue;
      loads.num = ItemsOf(count, loads.patterns, loads.csys, loads.dirs, loads.values);
      // One load the target cannot take costs the area every load of this pass.
      bool rejected = false;
      for (int i = 0; i < loads.num && !rejected; ++i) {
        host_.GetLoadPatternType(loads.patterns[At(i)], type);
        rejected = IsAreaLoadRejected(type, loads.csys[At(i)], loads.dirs[At(i)]);
      }
      if (rejected) {
        NoteDrop("area load", label,
                 "a load in a local system or an unsupported direction costs the area every load "
                 "of its kind");
        continue;
      }
      VaskLoadAreaObj& areaLoads = *AddLoadArea();
      for (int i = 0; i < loads.num; ++i) {
        areaLoads.SetLoadArea(label, loads.patterns[At(i)], loads.csys[At(i)], loads.dirs[At(i)],
                              loads.values[At(i)]);
      }
    }
  }
}

void VaskModelObj::SpreadLoadAreas() {
  // Every load object reaches every 4-noded area of its label, in area order. The 4-noded
  // areas of a label are chained once, behind the first area of that label (of any number
  // of nodes), so the spreading stays linear in the size of the model and needs no table
  // of labels of its own.
  const auto slot = [](int position) { return static_cast<std::size_t>(position); };
  std::vector<int> firstOf(slot(AreaNum()) + 1, 0);  // by first area of a label
  std::vector<int> lastOf(slot(AreaNum()) + 1, 0);
  std::vector<int> nextOf(slot(AreaNum()) + 1, 0);  // by area: the next of its label
  for (int a = 1; a <= AreaNum(); ++a) {
    const VaskAreaObj& area = *AreaObj(a);
    if (area.NumNodes != 4) continue;
    const int head = AreaPositionNear(area.Label, a);
    if (firstOf[slot(head)] == 0) {
      firstOf[slot(head)] = a;
    } else {
      nextOf[slot(lastOf[slot(head)])] = a;
    }
    lastOf[slot(head)] = a;
  }
  // The load objects were made area by area, so the area after the last one found is
  // tried first.
  int lastHead = 0;
  // By node id: where that node's nodal load object was found or made last, tried first.
  std::vector<int> loadOfNode;
  for (int k = 1; k <= LoadAreaNum(); ++k) {
    const VaskLoadAreaObj& loads = *LoadAreaObj(k);
    const int head = AreaPositionNear(loads.Label, lastHead + 1);
    if (head == 0) continue;
    lastHead = head;
    for (int a = firstOf[slot(head)]; a != 0; a = nextOf[slot(a)]) {
      const VaskAreaObj& area = *AreaObj(a);
      const NodeOwner owner{"Area", area.Label};
      std::array<double, 4> x{};
      std::array<double, 4> y{};
      std::array<double, 4> z{};
      std::array<int, 4> ids{};
      for (int j = 1; j <= 4; ++j) {
        const VaskNodeObj& node = RequiredNode(area.LabelNodes(j), owner, area.NodeHint(j));
        x[At(j - 1)] = node.x;
        y[At(j - 1)] = node.y;
        z[At(j - 1)] = node.z;
        ids[At(j - 1)] = node.id;
      }
      double acting = QuadArea(x, y, z, false);
      const double plan = QuadArea(x, y, z, true);
      for (int t = 1; t <= loads.ItemNum; ++t) {
        // Once a projected load has been met, the later loads of this object act on the
        // plan area too.
        if (IsProjectedDirection(loads.Direction(t))) acting = plan;
        const double f = loads.ValueNumber(t) * acting / 4.0;
        for (int j = 1; j <= 4; ++j) {
          const std::string& nodeLabel = area.LabelNodes(j);
          // The node found for this label carries it, so its id keys the label here.
          const int id = ids[At(j - 1)];
          if (id >= 0 && loadOfNode.size() <= static_cast<std::size_t>(id)) {
            loadOfNode.resize(std::max(static_cast<std::size_t>(id) + 1,
                                       static_cast<std::size_t>(NodeNum()) + 2), 0);
          }
          int* known = id >= 0 ? &loadOfNode[static_cast<std::size_t>(id)] : nullptr;
          int position = LoadNodePositionNear(nodeLabel, known != nullptr ? *known : 0);
          VaskLoadNodeObj* nodeLoads = nullptr;
          if (position == 0) {
            nodeLoads = AddLoadNode();
            position = LoadNodeNum();
          } else {
            nodeLoads = LoadNodeObj(position);
          }
          if (known != nullptr) *known = position;
          nodeLoads->SetLoadNode(nodeLabel, loads.LoadPattern(t), 0.0, 0.0, f, 0.0, 0.0, 0.0);
        }
      }
    }
  }
  // The last stage that adds nodal loads: tell which of them the nodal pattern will not keep.
  if (const DropObserver* observer = DropObserverIfAny()) {
    std::vector<const VaskLoadNodeObj*> nodeLoads;
    for (int n = 1; n <= LoadNodeNum(); ++n) nodeLoads.push_back(LoadNodeObj(n));
    NoteReplacedNodeLoads(nodeLoads, *observer);
  }
}

void VaskModelObj::MarkLoadPatternContents() {
  // Nodal loads: the patterns with an item that is not negligible.
  std::unordered_set<std::string> nodeLoaded;
  for (int n = 1; n <= LoadNodeNum(); ++n) {
    const VaskLoadNodeObj& loads = *LoadNodeObj(n);
    for (int i = 1; i <= loads.ItemNum; ++i) {
      const std::array<double, 6> values = {loads.F1(i), loads.F2(i), loads.F3(i),
                                            loads.M1(i), loads.M2(i), loads.M3(i)};
      if (std::any_of(values.begin(), values.end(),
                      [](double v) { return std::abs(v) > kSmall; })) {
        nodeLoaded.insert(loads.LoadPattern(i));
      }
    }
  }
  // Frame loads: the patterns for which some frame's LoadFrameDistributedNotEmpty or
  // LoadFramePointNotEmpty holds, gathered in one pass over the load objects.
  std::unordered_set<std::string> frameLoaded;
  for (int i = 1; i <= FrameNum(); ++i) {
    const VaskFrameObj& frame = *FrameObj(i);
    for (int k = 1; k <= frame.LoadFrameDistributedNum(); ++k) {
      const VaskLoadFrameDistObj& load = *frame.LoadFrameDistributedObj(k);
      if (load.HasLoad()) frameLoaded.insert(load.PatternLabel);
    }
    for (int k = 1; k <= frame.LoadFramePointNum(); ++k) {
      const VaskLoadFramePointObj& load = *frame.LoadFramePointObj(k);
      if (load.HasLoad()) frameLoaded.insert(load.PatternLabel);
    }
  }
  for (int p = 1; p <= LoadPatternNum(); ++p) {
    VaskLoadPatternObj& pattern = *LoadPatternObj(p);
    if (nodeLoaded.contains(pattern.Label)) pattern.LoadNodeNotEmpty = true;
    if (frameLoaded.contains(pattern.Label)) pattern.LoadElementNotEmpty = true;
  }

  // Self weight: a pattern with a multiplier carries it when some frame or shell has
  // weight. The shell's material is that of a thin shell, or the concrete of a layered one;
  // for a shell of another kind the material looked at for the area before it is looked at
  // again, across patterns too.
  // Which frame is met first does not depend on the pattern, so the frames are looked at
  // once.
  bool frameHasWeight = false;
  for (int i = 1; i <= FrameNum() && !frameHasWeight; ++i) {
    const VaskPropFrameSectObj* section = FrameObj(i)->PropFrameSectObj;
    frameHasWeight = section != nullptr && HasUnitWeight(section->PropMatObj);
  }
  const VaskPropMaterialObj* material = nullptr;
  for (int p = 1; p <= LoadPatternNum(); ++p) {
    VaskLoadPatternObj& pattern = *LoadPatternObj(p);
    if (!(pattern.SelfWtMultiplier >= kSmall)) continue;
    if (frameHasWeight) {
      pattern.SelfWeightNotEmpty = true;
      continue;
    }
    for (int a = 1; a <= AreaNum(); ++a) {
      const VaskPropAreaSectObj* shell = AreaObj(a)->PropAreaSectObj;
      if (shell == nullptr) continue;
      if (shell->ShellType == kShellThin) {
        material = shell->PropMatObj;
      } else if (shell->ShellType == kShellLayered) {
        material = shell->LayerPropMatConcObj;
      }
      if (shell->PropType == kPropTypeShell && HasUnitWeight(material)) {
        pattern.SelfWeightNotEmpty = true;
        break;
      }
    }
  }
}

}  // namespace vtt
