#pragma once
// The low-pass filters of the seismograms: recursive filters taken from their analogue
// prototypes by the bilinear transform and run forward only. Being causal they delay both
// channels alike, so the delay between the channels survives the filter.
//
//   code 0, 1  one pole at 180 Hz          code 4  Bessel, 4th order
//   code 2     one pole at fc              code 5  Butterworth, 4th order
//   code 3     two equal real poles        code 6  none
//
// With K = 2 pi fc Tcamp (Tcamp in seconds) the orders 2 and 4 read
//   y(i) = (sum b[m] x(i-m) - sum_{m>=1} a[m] y(i-m)) / a[0]
// and the first order y(i) = A y(i-1) + B (x(i) + x(i-1)).

#include <array>
#include <cstddef>
#include <cstdint>

namespace koru {

class SeismicFilters {
 public:
  struct Coefficients {
    int16_t code = 6;
    int order = 0;             // 0: no filter
    float A = 0, B = 0;        // first order
    std::array<float, 5> b{};  // orders 2 and 4: numerator
    std::array<float, 5> a{};  // orders 2 and 4: denominator, a[0] divides
  };

  // Coefficients of a code (0 to 6) at cut frequency fc (Hz) and sample time tcamp (us). Codes
  // 0 and 1 always cut at 180 Hz.
  static Coefficients coefficients(int16_t code, float fc, float tcamp);
  // Output samples from `start` to n-1 by the recursion; y before `start` is the caller's
  // (start must be at least the order).
  static void run(const Coefficients& c, const float* x, float* y, size_t n, size_t start);
};

}  // namespace koru
