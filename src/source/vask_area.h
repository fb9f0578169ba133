// Four-noded shells of the source model.
//
// The target knows only 4-noded shells: the reading stores quadrilaterals as they are and
// divides each triangle into three, all carrying the triangle's name. Once the reading has
// put the nodes in normal order, nodes 1 and 2 are the lower pair and 3 and 4 the upper
// pair, running the same way in plan.
#pragma once

#include <string>

#include "source/vask_one_based.h"

namespace vtt {

class VaskPropAreaSectObj;
class VaskPropFrameSectObj;

class VaskAreaObj {
 public:
  // The embedded-beam section that ties frames into this shell; empty when none.
  VaskPropFrameSectObj* EmbedFrameObj = nullptr;
  OneBasedList<int> idNodes;
  OneBasedList<std::string> LabelNodes;
  int NumNodes = 0;
  std::string Label;
  std::string PropAreaSectName;
  int idTrelkElem = 0;
  int idTrelkElemGroup = 0;
  // 1 wall, 2 floor, 3 ramp.
  int Orientation = 0;
  // A frame joins the shell at that corner.
  OneBasedArray<bool, 4> IsEmbed;
  VaskPropAreaSectObj* PropAreaSectObj = nullptr;
  double MassOverL2 = 0.0;

  // Sizes idNodes and LabelNodes to NumNodes when it is above 0, keeping their entries.
  // The readers set NumNodes, then call this, then fill the node lists.
  void RedimJoint();

  // Where node j is expected in the model's node list, as a hint for its look-up by label;
  // 0 (no hint) when idNodes has no entry j.
  int NodeHint(int j) const { return j >= 1 && j <= idNodes.Num() ? idNodes(j) : 0; }
};

}  // namespace vtt
