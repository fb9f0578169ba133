// Reading the host's rigid diaphragms (stage 5 of the reading).
#include <algorithm>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "source/diaphragm_merge.h"
#include "source/vask_model.h"

namespace vtt {
namespace {

constexpr int kDiaphragmAxisZ = 3;
constexpr int kDiaphragmAxisAutomatic = 4;

bool HoldsSupportXY(const VaskConstraintObj& constraint) {
  for (const VaskNodeObj* node : constraint.NodeObj) {
    if (node != nullptr && node->IsSupportXY()) return true;
  }
  return false;
}

}  // namespace

void VaskModelObj::ReadConstraints() {
  int name_count = 0;
  Names names;
  host_.GetConstraintNameList(name_count, names);
  int assignment_count = 0;
  Names point_names;
  Names constraint_names;
  host_.GetPointConstraints("ALL", ItemType::Group, assignment_count, point_names,
                            constraint_names);
  const int assignments = std::min({assignment_count, static_cast<int>(point_names.size()),
                                    static_cast<int>(constraint_names.size())});

  // The assignments of each constraint name, in host order: the same as scanning every
  // assignment for each name, without the scan.
  std::unordered_map<std::string, std::vector<int>> assignments_of;
  for (int a = 0; a < assignments; ++a) {
    assignments_of[constraint_names[static_cast<std::size_t>(a)]].push_back(a);
  }

  // 1-2. Diaphragms with a normal along Z (or an automatic axis); the system is not tested.
  const int num = std::min(name_count, static_cast<int>(names.size()));
  int lastNodeId = 0;
  for (int i = 0; i < num; ++i) {
    const std::string& name = names[static_cast<std::size_t>(i)];
    int type = 0;
    host_.GetConstraintType(name, type);
    if (type != host_code::kConstraintDiaphragm) {
      NoteDrop("constraint", name, "not a diaphragm");
      continue;
    }
    int axis = 0;
    std::string csys;
    host_.GetDiaphragmData(name, axis, csys);
    if (axis != kDiaphragmAxisZ && axis != kDiaphragmAxisAutomatic) {
      NoteDrop("diaphragm", name, "its normal is not along Z");
      continue;
    }
    const auto found = assignments_of.find(name);
    if (found == assignments_of.end()) continue;
    // The first constraint of the name, made at the first assignment when there is none;
    // nothing else changes the constraints in between.
    VaskConstraintObj* constraint = nullptr;
    for (int a : found->second) {
      if (constraint == nullptr) constraint = ConstraintFind(name);
      if (constraint == nullptr) {
        constraint = ConstraintAdd();
        constraint->Label = name;
      }
      // The host lists the points of a diaphragm mostly in model order: the node after
      // the last one found is tried first.
      VaskNodeObj* node = NodeObjNear(point_names[static_cast<std::size_t>(a)], lastNodeId + 1);
      if (node != nullptr) lastNodeId = node->id;
      constraint->NodeAdd(node);
    }
  }

  // 3. Constraints without members go.
  for (int i = ConstraintNum(); i >= 1; --i) {
    if (ConstraintObj(i)->NodeNum() == 0) ConstraintRemove(i);
  }
  // 4. A diaphragm that holds a node supported in U1, U2 or R3 goes whole.
  for (int i = ConstraintNum(); i >= 1; --i) {
    if (HoldsSupportXY(*ConstraintObj(i)))
      NoteDrop("diaphragm", ConstraintObj(i)->Label, "it holds a node supported in U1, U2 or R3");
    if (HoldsSupportXY(*ConstraintObj(i))) ConstraintRemove(i);
  }
  // 5. Numbers.
  for (int i = 1; i <= ConstraintNum(); ++i) {
    ConstraintObj(i)->id = i;
    ConstraintObj(i)->idSort = i;
  }
  // 6. Each node learns the diaphragms that still hold it, in the host's order.
  for (int n = 1; n <= NodeNum(); ++n) {
    VaskNodeObj* node = NodeObj(n);
    int count = 0;
    Names points;
    Names held_by;
    host_.GetPointConstraints(node->Label, ItemType::Object, count, points, held_by);
    const int held = std::min(count, static_cast<int>(held_by.size()));
    for (int j = 0; j < held; ++j) {
      VaskConstraintObj* constraint = ConstraintFind(held_by[static_cast<std::size_t>(j)]);
      if (constraint != nullptr) node->AddConstraintRef(constraint);
    }
  }
  // 7. Sort keys, in one pass over the nodes.
  for (int n = 1; n <= NodeNum(); ++n) {
    const VaskNodeObj* node = NodeObj(n);
    int first = 0;
    for (int j = 1; j <= node->ConstraintNum(); ++j) {
      if (j == 1) {
        first = node->ConstraintObj(j)->id;
      } else {
        node->ConstraintObj(j)->idSort = first;
      }
    }
  }
  // 8. Merge by sort key.
  MergeDiaphragmsBySortKey(*this);
}

void MergeDiaphragmsBySortKeyLiteral(VaskModelObj& model) {
  const int count = model.ConstraintNum();
  for (int i = 1; i <= count; ++i) {
    for (int j = model.ConstraintNum(); j >= i + 1; --j) {
      if (model.ConstraintObj(i)->idSort == model.ConstraintObj(j)->idSort) {
        model.ConstraintObj(i)->UnionConstraint(*model.ConstraintObj(j));
        model.ConstraintRemove(j);
      }
    }
  }
}

void MergeDiaphragmsBySortKey(VaskModelObj& model) {
  // In the nested loops, a diaphragm takes in every later one with its key, from the last
  // to the first, before any later diaphragm is looked at; removals below it do not move
  // it. So each key's first diaphragm absorbs the others of its key in descending order.
  std::unordered_map<int, std::vector<int>> positions_of;
  std::vector<int> keys_in_order;
  for (int i = 1; i <= model.ConstraintNum(); ++i) {
    auto [it, added] = positions_of.try_emplace(model.ConstraintObj(i)->idSort);
    if (added) keys_in_order.push_back(it->first);
    it->second.push_back(i);
  }
  std::vector<bool> absorbed(static_cast<std::size_t>(model.ConstraintNum()) + 1, false);
  for (int key : keys_in_order) {
    const std::vector<int>& positions = positions_of[key];
    if (positions.size() < 2) continue;
    VaskConstraintObj& keeper = *model.ConstraintObj(positions.front());
    // The ids the keeper holds, kept up to date across all the unions of its key.
    std::unordered_set<int> ids;
    for (const VaskNodeObj* node : keeper.NodeObj) {
      if (node != nullptr) ids.insert(node->id);
    }
    for (auto p = positions.rbegin(); p + 1 != positions.rend(); ++p) {
      VaskConstraintObj& other = *model.ConstraintObj(*p);
      for (VaskNodeObj* node : other.NodeObj) {
        if (node != nullptr && !ids.insert(node->id).second) continue;
        keeper.NodeAdd(node);
      }
      other.NodeObj.Clear();
      absorbed[static_cast<std::size_t>(*p)] = true;
    }
  }
  model.ConstraintRemoveWhere(
      [&absorbed](int position) { return absorbed[static_cast<std::size_t>(position)]; });
}

}  // namespace vtt
