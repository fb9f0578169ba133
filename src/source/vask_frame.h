// Line elements of the source model and their shared end-release patterns.
//
// VaskFrameObj carries what the reading learns of one frame (end nodes, section, angle,
// releases, hinges, loads) and the record numbers the translation writes back.
// VaskFrameReleaseObj is one distinct pattern of six release flags; every frame end with
// that pattern refers to the same object, so identity compares patterns.
#pragma once

#include <string>
#include <string_view>

#include "source/vask_load.h"
#include "source/vask_obj_list.h"
#include "source/vask_one_based.h"

namespace vtt {

class VaskPropFrameSectObj;

class VaskFrameReleaseObj {
 public:
  // U1, U2, U3, R1, R2, R3.
  OneBasedArray<bool, 6> Release;
  int idTrelkXecElaRelease = 0;
};

class VaskFrameObj {
 public:
  int idTrelkElem = 0;
  int idTrelkElemGroup = 0;
  int idTrelkElemSubGroup = 0;
  OneBasedList<int> idTrelkElemLoadSubGroup;
  int idCompdRelealse = 0;
  // 1 concrete, 2 steel, 3 other.
  int TrelkMatType = 3;
  // 1 column, 2 beam, 3 brace; set for every frame by the classification.
  int TrelkFrameType = 0;
  // 1 concrete beam, 2 concrete column.
  int TrelkConcType = 3;
  // 1 rectangular, 2 I-shape, 3 other.
  int TrelkSectType = 3;
  double MassOverL = 0.0;
  std::string LabelNodeJ;
  std::string LabelNodeI;
  // Node ids; -1 when the label is not a node of the model.
  int NodeJ = 0;
  int NodeI = 0;
  std::string Label;
  std::string PropFrameSectName;
  VaskPropFrameSectObj* PropFrameSectObj = nullptr;
  VaskObjList<VaskLoadFrameDistObj> LoadFrameDistributedObj;
  VaskObjList<VaskLoadFramePointObj> LoadFramePointObj;
  // Empty when that end has no release.
  VaskFrameReleaseObj* ReleaseIObj = nullptr;
  VaskFrameReleaseObj* ReleaseJObj = nullptr;
  bool HingeI = false;
  bool HingeJ = false;
  // 1 or 2 where a hinge stands.
  int HingeTypeI = -1;
  int HingeTypeJ = -1;
  // Local axis angle in degrees.
  double Angle = 0.0;

  int LoadFrameDistributedNum() const { return LoadFrameDistributedObj.Num(); }
  int LoadFramePointNum() const { return LoadFramePointObj.Num(); }
  // Whether a distributed load object of `pattern` has an item with |Val1| or |Val2|
  // above 1e-6.
  bool LoadFrameDistributedNotEmpty(std::string_view pattern) const;
  // Whether a point load object of `pattern` has an item with |Val| above 1e-6.
  bool LoadFramePointNotEmpty(std::string_view pattern) const;

  // A frame with a hinge at either end takes the inelastic (FEMA) components.
  bool IsFEMAFrame() const;
  bool isIReleased() const;
  bool isJReleased() const;
  // Sizes idTrelkElemLoadSubGroup to `num`, keeping its entries.
  void Redim_TrelkSubGroup(int num);
};

}  // namespace vtt
