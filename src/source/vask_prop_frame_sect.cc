#include "source/vask_prop_frame_sect.h"

namespace vtt {

int VaskPropFrameSectObj::GetIdxRelease(const VaskFrameReleaseObj* releaseI,
                                        const VaskFrameReleaseObj* /*releaseJ*/) const {
  for (int i = 1; i <= ReleaseNum(); ++i) {
    if (ReleaseIObj(i) == releaseI) return i;
  }
  return -1;
}

void VaskPropFrameSectObj::AddRelease(VaskFrameReleaseObj* releaseI, VaskFrameReleaseObj* releaseJ,
                                      int number) {
  ReleaseIObj.Add(releaseI);
  ReleaseJObj.Add(releaseJ);
  idTrelkRelease.Add(number);
}

}  // namespace vtt
