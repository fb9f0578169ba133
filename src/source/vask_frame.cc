#include "source/vask_frame.h"

namespace vtt {

bool VaskFrameObj::IsFEMAFrame() const { return HingeI || HingeJ; }

bool VaskFrameObj::isIReleased() const { return ReleaseIObj != nullptr; }

bool VaskFrameObj::isJReleased() const { return ReleaseJObj != nullptr; }

void VaskFrameObj::Redim_TrelkSubGroup(int num) { idTrelkElemLoadSubGroup.Redim(num); }

}  // namespace vtt
