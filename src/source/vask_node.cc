#include "source/vask_node.h"

#include <cmath>
#include <unordered_set>

namespace vtt {

namespace {

constexpr double kMassTolerance = 0.000001;

std::unordered_set<int> MemberIds(const VaskConstraintObj& constraint) {
  std::unordered_set<int> ids;
  for (const VaskNodeObj* node : constraint.NodeObj) {
    if (node != nullptr) ids.insert(node->id);
  }
  return ids;
}

}  // namespace

void VaskNodeObj::AddConstraintRef(VaskConstraintObj* constraint) { ConstraintObj.Add(constraint); }

bool VaskNodeObj::IsSupport() const {
  for (const bool restrained : IsRestrained) {
    if (restrained) return true;
  }
  return false;
}

bool VaskNodeObj::IsSupportXY() const {
  return IsRestrained(1) || IsRestrained(2) || IsRestrained(6);
}

bool VaskNodeObj::MassExist() const {
  for (const double mass : Mass) {
    if (std::fabs(mass) > kMassTolerance) return true;
  }
  return false;
}

bool VaskConstraintObj::FindNode(const VaskNodeObj* node) const {
  if (node == nullptr) return false;
  for (const VaskNodeObj* member : NodeObj) {
    if (member != nullptr && member->id == node->id) return true;
  }
  return false;
}

bool VaskConstraintObj::ExistCommonNode(const VaskConstraintObj& other) const {
  const std::unordered_set<int> otherIds = MemberIds(other);
  for (const VaskNodeObj* member : NodeObj) {
    if (member != nullptr && otherIds.contains(member->id)) return true;
  }
  return false;
}

void VaskConstraintObj::NodeAdd(VaskNodeObj* node) { NodeObj.Add(node); }

void VaskConstraintObj::UnionConstraint(VaskConstraintObj& other) {
  // The ids present here grow with each append, as FindNode over the growing list would
  // see them, so a node listed twice in `other` arrives once. The bound is taken first:
  // `other` may be this very constraint.
  std::unordered_set<int> ids = MemberIds(*this);
  const int otherNum = other.NodeNum();
  for (int i = 1; i <= otherNum; ++i) {
    VaskNodeObj* node = other.NodeObj(i);
    if (node != nullptr && !ids.insert(node->id).second) continue;
    NodeAdd(node);
  }
  other.NodeObj.Clear();
}

void VaskConstraintObj::MergeConstraintObj(VaskConstraintObj& other) {
  if (ExistCommonNode(other)) UnionConstraint(other);
}

void VaskConstraintObj::RemoveSupportNode() {
  for (int i = NodeNum(); i >= 1; --i) {
    const VaskNodeObj* node = NodeObj(i);
    if (node != nullptr && node->IsSupportXY()) NodeObj.RemoveAt(i);
  }
}

}  // namespace vtt
