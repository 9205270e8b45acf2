#include "dmt/cls_GAMMA.h"

#include "frame/Numbers.h"

namespace koru {

float cls_GAMMA::getYz(float z) const {
  if (const auto point = pointAt(z)) return *point;
  const size_t n = count();
  if (Method() == 2 && n == 0) return 17.0f;  // the default unit weight above the readings
  if (n == 0) return 0.0f;
  const float first = values()[0], last = values()[n - 1];

  switch (Method()) {
    case 2:
      if (z > depths()[n - 1]) return last;
      if (z <= depths()[0]) return first;
      break;
    case 0:
    case 1:
      if (z > depths()[n - 1]) return (Method() == 1 && sngConstant > 0) ? sngConstant : last;
      if (n < 2 || z < depths()[1]) return first;
      break;
    default:
      return 0.0f;
  }
  return between(z);
}

bool cls_GAMMA::readHead(int16_t mode, std::string_view firstLine) {
  if (mode != 1) return true;
  const size_t colon = firstLine.find(':');
  if (colon == std::string_view::npos) return true;
  const auto constant = tryParseSingle(firstLine.substr(colon + 1));
  if (constant) sngConstant = *constant;
  return constant.has_value();
}

std::string cls_GAMMA::headText(int mode) const {
  return mode == 1 ? ":" + formatNumber(sngConstant, "0.0#") : std::string();
}

}  // namespace koru
