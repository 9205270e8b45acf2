#pragma once
// The cross-correlation of two equally long traces over a range of lags, and the choice of the
// best lag. Channel 2 is taken to lag channel 1 (the wave goes down), so only lags k >= 0 of
//   correlation(k) = sum over j = 0 .. n-1-k of a(j) b(j+k)
// are tried. Each correlation is one sum in double, in rising j: the order of the additions
// decides between nearly equal peaks, so it is the same however many lags are computed at once.
// The traces are Single samples held in doubles (the up-sampled traces are kept that way so that
// the search reads them as they are): every product is then exact.

#include <cstddef>
#include <cstdint>
#include <vector>

namespace koru {

class LagSearch {
 public:
  // correlation(k) for k = low .. high into out[k - low] (0 for lags beyond the traces).
  static void correlations(const double* a, const double* b, size_t n, int64_t low, int64_t high, double* out);

  // The lag of the greatest correlation within [low, high]. The best lag starts at 0 with
  // correlation 0 and only a strictly greater correlation replaces it: the first of equal peaks
  // stays and no lag of correlation 0 or less is taken. A best lag equal to low or high lies on
  // the edge of the search and gives -1 (no peak).
  static int64_t bestLag(const double* a, const double* b, size_t n, int64_t low, int64_t high);

  // The range of the finer search around a coarse lag: from lag - 1 to lag + 1 coarse steps,
  // one fine step wider on either side, in fine steps and rounded (halves to even), never below
  // 0. Each bound is (lag -/+ 1) x coarseStep / fineStep, in that order.
  struct Range {
    int64_t low = 0, high = 0;
  };
  static Range refinedRange(int64_t lag, double coarseStep, double fineStep);
};

}  // namespace koru
