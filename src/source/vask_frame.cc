#include "source/vask_frame.h"

namespace vtt {

bool VaskFrameObj::IsFEMAFrame() const { return HingeI || HingeJ; }

bool VaskFrameObj::isIReleased() const { return ReleaseIObj != nullptr; }

bool VaskFrameObj::isJReleased() const { return ReleaseJObj != nullptr; }

bool VaskFrameObj::LoadFrameDistributedNotEmpty(std::string_view pattern) const {
  for (int i = 1; i <= LoadFrameDistributedNum(); ++i) {
    const VaskLoadFrameDistObj& load = *LoadFrameDistributedObj(i);
    if (load.PatternLabel == pattern && load.HasLoad()) return true;
  }
  return false;
}

bool VaskFrameObj::LoadFramePointNotEmpty(std::string_view pattern) const {
  for (int i = 1; i <= LoadFramePointNum(); ++i) {
    const VaskLoadFramePointObj& load = *LoadFramePointObj(i);
    if (load.PatternLabel == pattern && load.HasLoad()) return true;
  }
  return false;
}

void VaskFrameObj::Redim_TrelkSubGroup(int num) { idTrelkElemLoadSubGroup.Redim(num); }

}  // namespace vtt
