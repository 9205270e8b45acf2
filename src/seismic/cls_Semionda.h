#pragma once
// One half wave of a de-meaned trace: the stretch between two changes of sign. The window stage
// picks the stretch of the strike it correlates from lists of these.

#include <cstdint>

namespace koru {

struct cls_Semionda {
  float max = 0;       // largest absolute deviation within the half wave
  int32_t iMax = 0;    // where it stands
  int32_t iStart = 0;  // first sample
  int32_t iEnd = 0;    // last sample
  double energy = 0;   // signed sum of the deviations
  int32_t sign = 0;    // 1 or -1; 0 in a flat stretch

  int32_t deltaI() const { return iEnd - iStart; }
  bool isPositive() const { return sign > 0; }
  bool isNegative() const { return sign < 0; }
};

}  // namespace koru
