#pragma once
// Small conversions the seismic code needs everywhere: rounding with halves to even into an
// integer range without ever converting a value that does not fit (a hostile file can bring
// NaN or 1e38 into any formula).

#include <cmath>
#include <cstdint>

#include "frame/Numbers.h"

namespace koru::seismic {

// Nearest integer, halves to even, held within [lo, hi]; `otherwise` for NaN.
inline int64_t roundClamped(double x, int64_t lo, int64_t hi, int64_t otherwise = 0) {
  if (std::isnan(x)) return otherwise;
  const double r = roundHalfEven(x);
  if (r <= static_cast<double>(lo)) return lo;
  if (r >= static_cast<double>(hi)) return hi;
  return static_cast<int64_t>(r);
}

// Integer part (towards zero) held within [lo, hi]; `otherwise` for NaN.
inline int64_t truncClamped(double x, int64_t lo, int64_t hi, int64_t otherwise = 0) {
  if (std::isnan(x)) return otherwise;
  const double r = std::trunc(x);
  if (r <= static_cast<double>(lo)) return lo;
  if (r >= static_cast<double>(hi)) return hi;
  return static_cast<int64_t>(r);
}

// A value rounded to a Single and carried on in double. The rounding goes through memory:
// GCC 12's vectoriser has been seen to drop a float round trip that stays in registers.
inline double toSingle(double x) {
  volatile float f = static_cast<float>(x);
  return f;
}

inline constexpr double kPiExact = 3.14159265358979323846;

}  // namespace koru::seismic
