#include "dissipation/FormatPower.h"

#include <algorithm>
#include <cmath>

#include "frame/Numbers.h"

namespace koru {

namespace {

// x / 10^e without 10^e itself overflowing for the subnormal end of the range.
double scaledDown(double x, int e) {
  if (e < -300) return (x * 1e300) / std::pow(10.0, e + 300);
  return x / std::pow(10.0, e);
}

}  // namespace

std::string formatPower(double x, int digits) {
  if (!std::isfinite(x) || x <= 0) return "";
  // The mantissa is rounded to `digits` decimals but always shown with at least one: with no
  // digits asked, 2.7e-5 reads "3.0 * 10 ^ - 5".
  const int decimals = std::clamp(digits, 0, 15);
  const int shown = std::max(decimals, 1);
  int e = static_cast<int>(std::floor(std::log10(x)));
  // log10 of an exact power of ten may land a hair below the integer; the exponent is meant to
  // put the unrounded mantissa in [1, 10), so it is set right before rounding.
  double mantissa = scaledDown(x, e);
  if (mantissa >= 10.0) {
    ++e;
    mantissa = scaledDown(x, e);
  } else if (mantissa < 1.0) {
    --e;
    mantissa = scaledDown(x, e);
  }
  mantissa = roundTo(mantissa, decimals);
  std::string text = formatNumber(mantissa, "0." + std::string(static_cast<size_t>(shown), '0'));
  text += " * 10 ^ " + std::to_string(e);
  std::string out;
  out.reserve(text.size() + 2);
  for (char c : text) {
    if (c == ',') {
      out += '.';
    } else if (c == '-') {
      out += "- ";
    } else {
      out += c;
    }
  }
  return out;
}

}  // namespace koru
