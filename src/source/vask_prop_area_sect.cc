#include "source/vask_prop_area_sect.h"

namespace vtt {

void VaskPropAreaSectObj::RedimLayer() {
  if (LayerNum <= 0) return;
  LayerNames.Redim(LayerNum);
  LayerDists.Redim(LayerNum);
  LayerThick.Redim(LayerNum);
  LayerType.Redim(LayerNum);
  LayerNumIntPts.Redim(LayerNum);
  LayerMatProp.Redim(LayerNum);
  LayerMatAng.Redim(LayerNum);
  LayerS11Type.Redim(LayerNum);
  LayerS22Type.Redim(LayerNum);
  LayerS12Type.Redim(LayerNum);
}

}  // namespace vtt
