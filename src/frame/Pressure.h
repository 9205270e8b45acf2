#pragma once
// Pressures are kPa in all data; the display unit (0 = bar, 1 = kPa) only changes what is shown.

#include <string>

namespace koru {

float pressureFactor(int pressureUnit);            // 0.01, 1, else 0
std::string pressureUnitLabel(int pressureUnit);   // "bar", "kPa"
std::string pressureFormat(int pressureUnit);      // "0.00", "0"
// Empty when the value rounds to 0 at 3 decimals, else the value in the unit and its format.
std::string formatPressure(float kPa, int pressureUnit);

}  // namespace koru
