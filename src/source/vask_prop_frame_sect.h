// A frame cross section: the host's section constants, its material, and the record
// numbers of every component the translation makes from it.
//
// The same class holds the embedded-beam sections that tie frames into shells; only those
// carry non-zero t2 and t3. The release pairs record which combinations of end-release
// patterns met this section, each with the number of the compound made for it.
#pragma once

#include <string>

#include "source/vask_one_based.h"

namespace vtt {

class VaskFrameReleaseObj;
class VaskPropMaterialObj;

class VaskPropFrameSectObj {
 public:
  OneBasedList<VaskFrameReleaseObj*> ReleaseIObj;
  OneBasedList<VaskFrameReleaseObj*> ReleaseJObj;
  OneBasedList<int> idTrelkRelease;

  int ReleaseNum() const { return ReleaseIObj.Num(); }
  // The first pair whose I pattern is `releaseI`, or -1. The J pattern plays no part in
  // the match: two frames of this section with the same I end and different J ends share
  // the release compound of the first of them.
  int GetIdxRelease(const VaskFrameReleaseObj* releaseI, const VaskFrameReleaseObj* releaseJ) const;
  // Appends a pair with the compound number `number`.
  void AddRelease(VaskFrameReleaseObj* releaseI, VaskFrameReleaseObj* releaseJ, int number);

  int idTrelkCompoundEmbededBeam = 0;
  int idTrelkCompoundEmbededBeamRelease = 0;
  int idTrelkXsectEmbedBeam = 0;
  int idTrelkXsectSteelBeam = 0;
  int idTrelkXsectSteelCol = 0;
  int idTrelkXsectConcBeam = 0;
  int idTrelkXsectConcCol = 0;
  int idTrelkInelasFemaSteelBeam = 0;
  int idTrelkInelasFemaSteelCol = 0;
  int idTrelkInelasFemaConcBeam = 0;
  int idTrelkInelasFemaConcCol = 0;
  int idTrelkCompoundSteelBeam = 0;
  int idTrelkCompoundSteelCol = 0;
  int idTrelkCompoundSteelBrace = 0;
  int idTrelkCompoundConcBeam = 0;
  int idTrelkCompoundConcCol = 0;
  int idTrelkCompoundConcBrace = 0;
  int idTrelkCompoundFemaSteelBeam = 0;
  int idTrelkCompoundFemaSteelCol = 0;
  int idTrelkCompoundFemaSteelBrace = 0;
  int idTrelkCompoundFemaConcBeam = 0;
  int idTrelkCompoundFemaConcCol = 0;
  int idTrelkCompoundFemaConcBrace = 0;
  // Not filled by the reading.
  int id = 0;
  std::string Label;
  // Host section type: 1 I-shape, 8 rectangular, 14 non-prismatic, others as given.
  int PropType = 0;
  std::string PropMatName;
  double t2 = 0.0;
  double t3 = 0.0;
  double tf = 0.0;
  double tw = 0.0;
  double t2b = 0.0;
  double tfb = 0.0;
  double area = 0.0;
  double As2 = 0.0;
  double As3 = 0.0;
  double TorsionConst = 0.0;
  double I22 = 0.0;
  double I33 = 0.0;
  double S22 = 0.0;
  double S33 = 0.0;
  double Z22 = 0.0;
  double Z33 = 0.0;
  double R22 = 0.0;
  double R33 = 0.0;
  VaskPropMaterialObj* PropMatObj = nullptr;
};

}  // namespace vtt
