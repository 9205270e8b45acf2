#pragma once
// Pore pressure by depth of a vertical (U_m.dat). Method 0: hydrostatic from the water table
// (the evaluation does not ask the profile then); Method 1: the user's table, extended above and
// below by hydrostatic lines through its end points.

#include <cstdint>
#include <filesystem>
#include <vector>

#include "frame/Diagnostic.h"

namespace koru {

class cls_U {
 public:
  bool blnActive = false;

  void setPath(const std::filesystem::path& path) { strPath_ = path; }
  const std::filesystem::path& path() const { return strPath_; }

  int16_t Method() const { return intMethod_; }
  void setMethod(int16_t method) { intMethod_ = method; }
  bool Active() const { return blnActive; }
  void setActive(bool active) { blnActive = active; }

  int16_t N() const { return static_cast<int16_t>(aZ_.size()); }
  void setN(int n);
  float getZi(int i) const { return aZ_.at(static_cast<size_t>(i)); }
  float getUi(int i) const { return aU_.at(static_cast<size_t>(i)); }
  void setZi(int i, float z) { aZ_.at(static_cast<size_t>(i)) = z; }
  void setUi(int i, float u) { aU_.at(static_cast<size_t>(i)) = u; }

  // Pore pressure at depth Z, kPa; never negative.
  float getUz(float z) const;

  int16_t loadInfo(Diagnostic* why = nullptr);
  bool saveInfo(Diagnostic* why = nullptr) const;

 private:
  std::filesystem::path strPath_;
  int16_t intMethod_ = 0;
  std::vector<float> aZ_, aU_;
};

}  // namespace koru
