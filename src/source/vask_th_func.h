// A time-history function of the host as a list of (time, value) points.
//
// The reading writes each function's record file at once and keeps the points here for
// the dynamic load cases.
#pragma once

#include <string>

#include "source/vask_one_based.h"

namespace vtt {

class VaskTHFuncObj {
 public:
  std::string Label;
  int ValueNum = 0;
  double Dt = 0.0;
  OneBasedList<double> Value;
  OneBasedList<double> Time;

  // Appends one point.
  void AddTHFunc(double value, double time);
};

}  // namespace vtt
