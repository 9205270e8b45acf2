#include "seismic/LagSearch.h"

#include <algorithm>
#include <limits>

#include "seismic/SeismicMath.h"

namespace koru {

namespace {

// Lags computed together. Each has its own accumulator, added to in rising j exactly as a lone
// sum would be, so the block changes the speed and not one bit of the result. The traces are
// floats turned into doubles, so every product is exact and a fused multiply-add gives the same
// sums as a multiply followed by an add.
constexpr int64_t kBlock = 32;

#if defined(__GNUC__) && !defined(__clang__) && defined(__x86_64__)
#define KORU_CLONES __attribute__((target_clones("avx2", "default")))
#else
#define KORU_CLONES
#endif

// A block of kBlock lags from k0, all of which overlap the traces (k0 + kBlock - 1 <= n - 1).
KORU_CLONES
void correlateBlock(const double* a, const double* b, size_t n, int64_t k0, double* out) {
  double acc[kBlock] = {};
  const size_t common = n - static_cast<size_t>(k0 + kBlock - 1);  // j valid for every lag of the block
  const double* bk = b + k0;
  for (size_t j = 0; j < common; ++j) {
    const double aj = a[j];
    const double* bj = bk + j;
    for (int64_t t = 0; t < kBlock; ++t) acc[t] += aj * bj[t];
  }
  // The shorter lags run on a few samples past the common stretch.
  for (int64_t t = 0; t < kBlock; ++t) {
    const size_t end = n - static_cast<size_t>(k0 + t);
    double sum = acc[t];
    for (size_t j = common; j < end; ++j) sum += a[j] * b[j + static_cast<size_t>(k0 + t)];
    out[t] = sum;
  }
}

double correlateOne(const double* a, const double* b, size_t n, int64_t k) {
  double sum = 0;
  const size_t end = n - static_cast<size_t>(k);
  for (size_t j = 0; j < end; ++j) sum += a[j] * b[j + static_cast<size_t>(k)];
  return sum;
}

void correlateRange(const double* a, const double* b, size_t n, int64_t low, int64_t high, double* out) {
  const int64_t lastLag = static_cast<int64_t>(n) - 1;  // beyond it the sums are empty
  int64_t k = low;
  for (; k < 0 && k <= high; ++k) out[k - low] = 0;  // channel 2 ahead: not a downgoing wave
  while (k <= high && k <= lastLag) {
    if (k + kBlock - 1 <= lastLag) {
      // A whole block even when fewer lags are asked for: the extra lags cost less than
      // computing the asked ones one at a time.
      double block[kBlock];
      correlateBlock(a, b, n, k, block);
      const int64_t take = std::min<int64_t>(kBlock, high - k + 1);
      std::copy_n(block, take, out + (k - low));
      k += take;
    } else {
      out[k - low] = correlateOne(a, b, n, k);
      ++k;
    }
  }
  for (; k <= high; ++k) out[k - low] = 0;
}

}  // namespace

void LagSearch::correlations(const double* a, const double* b, size_t n, int64_t low, int64_t high, double* out) {
  if (high < low) return;
  correlateRange(a, b, n, low, high, out);
}

LagSearch::Range LagSearch::refinedRange(int64_t lag, double coarseStep, double fineStep) {
  // Products first, then the division: a bound that falls on a half has to round the same way
  // whatever the steps are.
  constexpr int64_t kMax = std::numeric_limits<int64_t>::max() / 4;
  Range r;
  r.low = seismic::roundClamped(static_cast<double>(lag - 1) * coarseStep / fineStep - 1, 0, kMax);
  r.high = seismic::roundClamped(static_cast<double>(lag + 1) * coarseStep / fineStep + 1, 0, kMax);
  return r;
}

int64_t LagSearch::bestLag(const double* a, const double* b, size_t n, int64_t low, int64_t high) {
  int64_t best = 0;
  double bestCorrelation = 0;
  // Lags beyond the traces have empty sums (0) and can never replace the best one, so the work
  // stops at the last lag that overlaps; the edge rule still judges against the requested high.
  const int64_t from = std::max<int64_t>(low, 0);
  const int64_t to = std::min<int64_t>(high, static_cast<int64_t>(n) - 1);
  constexpr int64_t kChunk = 1024;
  double buffer[kChunk];
  for (int64_t k0 = from; k0 <= to; k0 += kChunk) {
    const int64_t k1 = std::min(to, k0 + kChunk - 1);
    correlateRange(a, b, n, k0, k1, buffer);
    for (int64_t k = k0; k <= k1; ++k) {
      if (buffer[k - k0] > bestCorrelation) {
        bestCorrelation = buffer[k - k0];
        best = k;
      }
    }
  }
  if (best == low || best == high) return -1;
  return best;
}

}  // namespace koru
