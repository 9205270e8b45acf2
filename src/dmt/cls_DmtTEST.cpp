#include "dmt/cls_DmtTEST.h"

#include <cmath>

#include "frame/Dates.h"

namespace koru {

cls_DmtTEST::cls_DmtTEST() { strDate = todayString(); }

void cls_DmtTEST::setN(int n) {
  const size_t size = n > 0 ? static_cast<size_t>(n) : 0;
  vZ.assign(size, 0.0f);
  vTH.assign(size, 0.0f);
  vA.assign(size, 0);
  vB.assign(size, 0);
  vC.assign(size, 0);
}

void cls_DmtTEST::setFactorEd(float value) {
  factorEd_ = value;
  // The standard membrane keeps its historical coefficients exactly.
  if (value == 34.7f) {
    sngCoefA = 1.05f;
    sngCoefB = 0.05f;
    return;
  }
  const double s = s0();
  sngCoefA = static_cast<float>(1.0 + 0.05 / (s - 0.05));
  sngCoefB = static_cast<float>(0.05 / (s - 0.05));
}

float cls_DmtTEST::s0() const { return static_cast<float>(120.0 / (4.0 * std::atan(1.0) * factorEd_)); }

}  // namespace koru
