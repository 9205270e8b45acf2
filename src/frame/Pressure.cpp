#include "frame/Pressure.h"

#include "frame/Numbers.h"

namespace koru {

float pressureFactor(int pressureUnit) {
  switch (pressureUnit) {
    case 0: return 0.01f;
    case 1: return 1.0f;
    default: return 0.0f;
  }
}

std::string pressureUnitLabel(int pressureUnit) {
  switch (pressureUnit) {
    case 0: return "bar";
    case 1: return "kPa";
    default: return "";
  }
}

std::string pressureFormat(int pressureUnit) {
  switch (pressureUnit) {
    case 0: return "0.00";
    case 1: return "0";
    default: return "";
  }
}

std::string formatPressure(float kPa, int pressureUnit) {
  if (roundTo(kPa, 3) == 0.0) return "";
  return formatNumber(kPa * pressureFactor(pressureUnit), pressureFormat(pressureUnit));
}

}  // namespace koru
