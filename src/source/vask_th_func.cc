#include "source/vask_th_func.h"

namespace vtt {

void VaskTHFuncObj::AddTHFunc(double value, double time) {
  ++ValueNum;
  if (Value.Num() < ValueNum) Value.Redim(ValueNum);
  if (Time.Num() < ValueNum) Time.Redim(ValueNum);
  Value(ValueNum) = value;
  Time(ValueNum) = time;
}

}  // namespace vtt
