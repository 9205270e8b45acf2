#pragma once
// Unit weight by depth of a vertical (GAMMA_m.dat): a short list of (Z, value) points with a mode.
//   Method 0: unit weight from the soil chart at each depth (the list follows the DMT rows);
//   Method 1: the chart, and below the last measured depth a constant value (line 1 of the file
//             is then "1:constant");
//   Method 2: the user's table.
// The file and the points are DepthProfile's.

#include <cstdint>
#include <string>
#include <string_view>

#include "dmt/DepthProfile.h"

namespace koru {

class cls_GAMMA : public DepthProfile {
 public:
  float sngConstant = 0;  // kN/m3, mode 1

  float getYi(int i) const { return valueAt(i); }
  void setYi(int i, float y) { setValueAt(i, y); }

  // Unit weight at depth Z, kN/m3.
  float getYz(float z) const;

 private:
  // Modes 1 and 2 read the points of a file; only the user's table (2) is written, since modes
  // 0 and 1 rebuild the list from the DMT rows.
  bool readsPoints(int16_t mode) const override { return mode == 1 || mode == 2; }
  bool writesPoints(int16_t mode) const override { return mode == 2; }
  bool readHead(int16_t mode, std::string_view firstLine) override;
  std::string headText(int mode) const override;
};

}  // namespace koru
