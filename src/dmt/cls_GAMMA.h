#pragma once
// Unit weight by depth of a vertical (GAMMA_m.dat): a short list of (Z, value) points with a mode.
//   Method 0: unit weight from the soil chart at each depth (the list follows the DMT rows);
//   Method 1: the chart, and below the last measured depth a constant value;
//   Method 2: the user's table.

#include <cstdint>
#include <filesystem>
#include <vector>

#include "frame/Diagnostic.h"

namespace koru {

class cls_GAMMA {
 public:
  float sngConstant = 0;  // kN/m3, mode 1
  bool blnActive = false;

  void setPath(const std::filesystem::path& path) { strPath_ = path; }
  const std::filesystem::path& path() const { return strPath_; }

  int16_t Method() const { return intMethod_; }
  void setMethod(int16_t method) { intMethod_ = method; }
  bool Active() const { return blnActive; }
  void setActive(bool active) { blnActive = active; }

  int16_t N() const { return static_cast<int16_t>(aZ_.size()); }
  // Resizes both lists keeping what fits; 0 or less empties them.
  void setN(int n);
  float getZi(int i) const { return aZ_.at(static_cast<size_t>(i)); }
  float getYi(int i) const { return aY_.at(static_cast<size_t>(i)); }
  void setZi(int i, float z) { aZ_.at(static_cast<size_t>(i)) = z; }
  void setYi(int i, float y) { aY_.at(static_cast<size_t>(i)) = y; }

  // Unit weight at depth Z, kN/m3.
  float getYz(float z) const;

  // 0 read, -1 missing file (defaults stay in force). A line that cannot be read ends the
  // reading with what was read; `why` then tells the line.
  int16_t loadInfo(Diagnostic* why = nullptr);
  bool saveInfo(Diagnostic* why = nullptr) const;

 private:
  std::filesystem::path strPath_;
  int16_t intMethod_ = 0;
  std::vector<float> aZ_, aY_;
};

}  // namespace koru
