// Joints and rigid diaphragms of the source model.
//
// VaskNodeObj is one joint: its coordinates in "Global", six restraints, the mass
// accumulators that the mass stage fills, and the diaphragms that hold it.
// VaskConstraintObj is one rigid diaphragm, a named set of nodes. The target lets a node
// belong to one diaphragm only and a supported node to none; the operations below are the
// pieces from which the reading merges and thins the host's diaphragms.
#pragma once

#include <string>

#include "source/vask_one_based.h"

namespace vtt {

class VaskConstraintObj;

class VaskNodeObj {
 public:
  // The target node record number: position in the model's node list plus 1, since record
  // 1 of the target is a node of its own.
  int id = 0;
  double z = 0.0;
  double y = 0.0;
  double x = 0.0;
  std::string Label;
  // U1, U2, U3, R1, R2, R3.
  OneBasedArray<bool, 6> IsRestrained;
  OneBasedArray<double, 6> PointMass;
  OneBasedArray<double, 6> LoadMass;
  OneBasedArray<double, 6> FrameLoadMass;
  OneBasedArray<double, 6> AreaLoadMass;
  OneBasedArray<double, 6> Mass;
  OneBasedList<VaskConstraintObj*> ConstraintObj;

  int ConstraintNum() const { return ConstraintObj.Num(); }
  void AddConstraintRef(VaskConstraintObj* constraint);

  bool IsSupport() const;
  // U1, U2 and R3: the three freedoms that a horizontal diaphragm ties.
  bool IsSupportXY() const;
  bool MassExist() const;
};

class VaskConstraintObj {
 public:
  // Position in the model's list after the first clean-up of the reading.
  int id = 0;
  // Diaphragms that end with equal keys are merged.
  int idSort = 0;
  // Member nodes. An empty member (nullptr) is stored only for a point name that the
  // model does not know; it matches no node and is no support.
  OneBasedList<VaskNodeObj*> NodeObj;
  std::string Label;

  int NodeNum() const { return NodeObj.Num(); }

  // True when a member has the same id as `node`.
  bool FindNode(const VaskNodeObj* node) const;
  // True when any member has the id of any member of `other`.
  bool ExistCommonNode(const VaskConstraintObj& other) const;
  // Appends without a check.
  void NodeAdd(VaskNodeObj* node);
  // Appends every node of `other` that FindNode does not find here, then empties `other`.
  void UnionConstraint(VaskConstraintObj& other);
  // UnionConstraint, but only when the two share a node.
  void MergeConstraintObj(VaskConstraintObj& other);
  // Drops every member that IsSupportXY, keeping the order of the rest.
  void RemoveSupportNode();
};

}  // namespace vtt
