#include "source/vask_area.h"

namespace vtt {

void VaskAreaObj::RedimJoint() {
  if (NumNodes <= 0) return;
  idNodes.Redim(NumNodes);
  LabelNodes.Redim(NumNodes);
}

}  // namespace vtt
