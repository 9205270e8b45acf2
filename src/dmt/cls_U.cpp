#include "dmt/cls_U.h"

namespace koru {

namespace {

constexpr double kGravity = 9.81;

}  // namespace

float cls_U::getUz(float z) const {
  if (Method() != 1) return 0.0f;
  if (const auto point = pointAt(z)) return *point;
  const size_t n = count();
  if (n == 0) return 0.0f;

  // Outside the table the water pressure follows a hydrostatic line through the nearer end point.
  const auto hydrostatic = [z](float zPoint, float uPoint) {
    const double c = uPoint - kGravity * zPoint;
    const double u = kGravity * z + c;
    return u < 0 ? 0.0f : finiteOrZero(u);
  };
  if (z < depths()[0]) return hydrostatic(depths()[0], values()[0]);
  if (z > depths()[n - 1]) return hydrostatic(depths()[n - 1], values()[n - 1]);
  return between(z);
}

}  // namespace koru
