#pragma once
// Pore pressure by depth of a vertical (U_m.dat). Method 0: hydrostatic from the water table
// (the evaluation does not ask the profile then); Method 1: the user's table, extended above and
// below by hydrostatic lines through its end points. The file and the points are DepthProfile's.

#include <cstdint>

#include "dmt/DepthProfile.h"

namespace koru {

class cls_U : public DepthProfile {
 public:
  float getUi(int i) const { return valueAt(i); }
  void setUi(int i, float u) { setValueAt(i, u); }

  // Pore pressure at depth Z, kPa; never negative.
  float getUz(float z) const;

 private:
  // Only the user's table carries points.
  bool readsPoints(int16_t mode) const override { return mode == 1; }
  bool writesPoints(int16_t mode) const override { return mode == 1; }
};

}  // namespace koru
