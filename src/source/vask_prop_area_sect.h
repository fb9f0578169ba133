// A shell section of the host: an elastic thin shell (shell type 1) or a layered shell
// (shell type 6), with the classification that tells which kind of target wall a layered
// shell becomes and the thickness sums that go with it.
#pragma once

#include <string>

#include "source/vask_one_based.h"

namespace vtt {

class VaskPropMaterialObj;

class VaskPropAreaSectObj {
 public:
  int idTrelkXSectWallIne = 0;
  int idTrelkXSectGWallIneH = 0;
  int idTrelkXSectGWallIneV = 0;
  int idTrelkXSectGWallEla = 0;
  int idTrelkCompoundWall = 0;
  int idTrelkCompoundGWall = 0;
  int idTrelkXSectWallEla = 0;
  int idTrelkXSectSlabEla = 0;
  // 0 no nonlinear wall rule met (LayerTrelkThick then holds a transformed thickness),
  // 1 fiber wall, 2 general wall with horizontal axial-moment behaviour, 3 general wall in
  // both directions, -1 no layer of steel or concrete.
  int LayerTrelkType = 0;
  double LayerTrelkThick = 0.0;
  double LayerTrelkThickBend = 0.0;
  double LayerTrelkThickRebarV = 0.0;
  double LayerTrelkThickRebarH = 0.0;
  std::string Label;
  // 1 shell.
  int PropType = 0;
  // 1 elastic thin shell, 6 layered.
  int ShellType = 0;
  bool IncludeDrillingDOF = false;
  std::string PropMat;
  double MatAng = 0.0;
  // Not filled by the reading.
  std::string LabelMat;
  double Thick = 0.0;
  double Bending = 0.0;
  int LayerNum = 0;
  OneBasedList<std::string> LayerNames;
  OneBasedList<double> LayerDists;
  OneBasedList<double> LayerThick;
  OneBasedList<int> LayerType;
  OneBasedList<int> LayerNumIntPts;
  OneBasedList<std::string> LayerMatProp;
  OneBasedList<double> LayerMatAng;
  OneBasedList<int> LayerS11Type;
  OneBasedList<int> LayerS22Type;
  OneBasedList<int> LayerS12Type;
  VaskPropMaterialObj* PropMatObj = nullptr;
  VaskPropMaterialObj* LayerPropMatConcObj = nullptr;
  VaskPropMaterialObj* LayerPropMatRebarObj = nullptr;
  VaskPropMaterialObj* LayerPropMatObj = nullptr;

  // Sizes the ten layer lists to LayerNum when it is above 0, keeping their entries.
  void RedimLayer();
};

}  // namespace vtt
