// Load patterns and the loads of the source model.
//
// Plain data: the readers of the load stages fill these objects and the load, mass and
// load-case steps read them. Each per-item list is one-based and kept beside a separate
// `ItemNum`, since a list may hold entries past the count (a removed frame point load
// leaves its old last entry behind, and a later pass still reads it).
#pragma once

#include <string>

#include "source/vask_one_based.h"

namespace vtt {

class VaskLoadPatternObj {
 public:
  std::string Label;
  // Never written by the reading; stays 0.
  int LoadType = 0;
  double SelfWtMultiplier = 0.0;
  bool LoadNodeNotEmpty = false;
  bool LoadElementNotEmpty = false;
  bool SelfWeightNotEmpty = false;
  std::string TrelkLoadPatternNodeName;
  std::string TrelkLoadPatternElementName;
  std::string TrelkLoadPatternSelfWeightName;
};

// The loads of one node. F3 is positive upward, along global +Z.
class VaskLoadNodeObj {
 public:
  int ItemNum = 0;
  std::string Label;
  OneBasedList<std::string> LoadPattern;
  OneBasedList<double> M3;
  OneBasedList<double> M2;
  OneBasedList<double> M1;
  OneBasedList<double> F3;
  OneBasedList<double> F2;
  OneBasedList<double> F1;
};

// The work list of a piecewise linear load along a frame: stations at relative distances,
// with the value just left and just right of each.
class VaskPairObj {
 public:
  OneBasedList<double> dist;
  OneBasedList<double> ValLeft;
  OneBasedList<double> ValRight;
  int ItemNum = 0;
};

// The distributed loads of one frame in one pattern; values positive downward, distances
// relative to the frame length.
class VaskLoadFrameDistObj {
 public:
  std::string Label;
  int ItemNum = 0;
  OneBasedList<double> Val2;
  OneBasedList<double> Val1;
  OneBasedList<double> RD2;
  OneBasedList<double> RD1;
  // Nothing writes it, so it reads 0.
  int Dir = 0;
  std::string CSys;
  int LoadType = 0;
  std::string PatternLabel;
  VaskPairObj PairObj;
};

// The point loads of one frame in one pattern; values positive downward.
class VaskLoadFramePointObj {
 public:
  int ItemNum = 0;
  std::string Label;
  OneBasedList<double> Val;
  OneBasedList<double> RD;
  // Never written.
  int Direction = 0;
  std::string CSys;
  int LoadType = 0;
  std::string PatternLabel;
};

// The uniform loads of one area. A value is kept as its decimal text and read back by a
// text-to-number conversion; it is positive along +Z.
class VaskLoadAreaObj {
 public:
  int ItemNum = 0;
  std::string Label;
  OneBasedList<std::string> Value;
  OneBasedList<int> Direction;
  OneBasedList<std::string> LoadPattern;
};

}  // namespace vtt
