// The evaluation chain: geometry and results, the lag search against a brute-force correlation,
// half waves against a run-length reference, the window codes and their edge cases.

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <numeric>
#include <random>
#include <tuple>
#include <vector>

#include "seismic/LagSearch.h"
#include "seismic/cls_SEISMOGRAM.h"
#include "synthetic_strike.h"

namespace {

using koru::cls_SEISMOGRAM;
using koru::cls_Semionda;
using koru::LagSearch;

constexpr double kPi = 3.14159265358979323846;

// A record of the given raw channels (no filter, no window unless set), means computed.
cls_SEISMOGRAM fromChannels(const std::vector<float>& g1, const std::vector<float>& g2, float tcamp = 100) {
  cls_SEISMOGRAM r;
  r.sngTcamp = tcamp;
  r.setIntN(static_cast<int>(g1.size()));
  r.set_vG1r(g1);
  r.set_vG2r(g2);
  r.prepareForEvalv();
  return r;
}

// ---- Geometry and results ---------------------------------------------------------------------

TEST(EvalV, VelocityRoundsHalvesToEven) {
  cls_SEISMOGRAM r;  // no samples: the delay stage alone decides
  r.Z = 1;
  r.distHammer = 0;
  // DeltaS, the difference of the two straight rays: 0.5 m for G1G2 0.5 (1.25 - 0.75), 0.75 m for 0.75.
  const struct { float distG1G2; const char* elab; int v; } cases[] = {
      {0.5f, "6;0;3,8", 62}, {0.75f, "6;0;3,4", 188}, {0.75f, "6;0;3,-4", 0}};  // 62.5, 187.5, a negative delay
  for (const auto& c : cases) {
    r.distG1G2 = c.distG1G2;
    r.set_elabString(c.elab);
    EXPECT_TRUE(r.evalV() || c.v == 0) << c.elab;
    EXPECT_EQ(r.V(), c.v) << c.elab;
  }
}

// ---- Lag search -------------------------------------------------------------------------------

double bruteCorrelation(const std::vector<double>& a, const std::vector<double>& b, int64_t k) {
  double sum = 0;
  for (int64_t j = 0; j + k < static_cast<int64_t>(b.size()); ++j)
    sum += a[static_cast<size_t>(j)] * b[static_cast<size_t>(j + k)];
  return sum;
}

int64_t bruteBestLag(const std::vector<double>& a, const std::vector<double>& b, int64_t low, int64_t high) {
  int64_t best = 0;
  double bestValue = 0;
  for (int64_t k = low; k <= high; ++k) {
    const double c = k < 0 ? 0 : bruteCorrelation(a, b, k);
    if (c > bestValue) {
      bestValue = c;
      best = k;
    }
  }
  return (best == low || best == high) ? -1 : best;
}

std::vector<double> singles(std::mt19937& gen, size_t n) {
  std::vector<double> v(n);
  for (auto& x : v) x = static_cast<float>(static_cast<double>(gen() % 20001) / 100.0 - 100.0);
  return v;
}

TEST(EvalV, LagSearchCorrelationsEqualASequentialSumBitForBit) {
  std::mt19937 gen(11);
  for (size_t n : {1u, 5u, 31u, 32u, 33u, 100u, 1000u}) {
    const auto a = singles(gen, n), b = singles(gen, n);
    for (auto [low, high] : {std::pair<int64_t, int64_t>{0, 0}, {0, 40}, {3, 70}, {-3, 5}, {0, 2000}, {17, 17}}) {
      std::vector<double> out(static_cast<size_t>(high - low + 1), -1);
      LagSearch::correlations(a.data(), b.data(), n, low, high, out.data());
      for (int64_t k = low; k <= high; ++k) {
        const double expected = k < 0 ? 0 : bruteCorrelation(a, b, k);
        ASSERT_EQ(out[static_cast<size_t>(k - low)], expected) << "n " << n << " k " << k;
      }
    }
  }
}

TEST(EvalV, LagSearchPicksTheSameLagAsABruteForceSearch) {
  std::mt19937 gen(5);
  for (int trial = 0; trial < 200; ++trial) {
    const size_t n = 20 + gen() % 300;
    auto a = singles(gen, n);
    auto b = std::vector<double>(n, 0.0);
    const size_t shift = gen() % (n / 2);
    for (size_t j = 0; j + shift < n; ++j) b[j + shift] = a[j] * 0.7 + static_cast<double>(gen() % 200) - 100;
    const int64_t low = gen() % 5, high = low + static_cast<int64_t>(gen() % n);
    ASSERT_EQ(LagSearch::bestLag(a.data(), b.data(), n, low, high), bruteBestLag(a, b, low, high)) << trial;
  }
}

TEST(EvalV, LagSearchKeepsTheFirstOfEqualPeaks) {
  std::vector<double> a(20, 0.0), b(20, 0.0);
  a[0] = 1;
  b[4] = 2;
  b[9] = 2;  // correlation 2 at lags 4 and 9
  EXPECT_EQ(LagSearch::bestLag(a.data(), b.data(), 20, 0, 15), 4);
  b[9] = 2.0000001;
  EXPECT_EQ(LagSearch::bestLag(a.data(), b.data(), 20, 0, 15), 9);
}

// ---- Edge cases of the chain ------------------------------------------------------------------

TEST(EvalV, TapersFollowTheCosineOverATenthOfTheInterval) {
  auto r = koru::synth::makeSyntheticStrike({});
  r.set_elabString("5,180;2,100,300;0,0");
  r.evalV();
  EXPECT_EQ(r.iEP1(), 100);
  EXPECT_EQ(r.iEP2(), 300);
  const auto f1 = r.vG1f();
  const auto& w = r.windowedG1();
  ASSERT_EQ(w.size(), 241u);  // 20 samples of taper either side
  for (int i = 80; i <= 320; ++i) {
    const double factor = std::cos(std::max({0.0, 100.0 - i, i - 300.0}) / 20 * kPi / 2);
    const double x = f1[static_cast<size_t>(i)] - r.mediaG1f;
    ASSERT_NEAR(w[static_cast<size_t>(i - 80)], x * factor, 1e-5) << i;
  }
}

// ---- Half waves -------------------------------------------------------------------------------

// Half waves by runs of equal sign over the samples before the last one: leading zeros and the
// first run are skipped (incomplete), the run still open at the end is dropped, and runs of two
// samples or fewer are no half waves.
std::vector<cls_Semionda> referenceHalfWaves(const std::vector<float>& x) {
  std::vector<cls_Semionda> out;
  const int last = static_cast<int>(x.size()) - 1;
  auto sgn = [](float v) { return v > 0 ? 1 : (v < 0 ? -1 : 0); };
  int i = 0;
  while (i < last && x[static_cast<size_t>(i)] == 0) ++i;
  std::vector<std::pair<int, int>> runs;  // first, last index
  for (int start = i; start < last;) {
    int end = start;
    while (end + 1 < last && sgn(x[static_cast<size_t>(end + 1)]) == sgn(x[static_cast<size_t>(start)])) ++end;
    runs.push_back({start, end});
    start = end + 1;
  }
  // The first run is incomplete; the last one is complete only if a sample of another sign
  // follows it before the last index.
  for (size_t k = 1; k + 1 < runs.size(); ++k) {
    auto [s, e] = runs[k];
    if (e - s <= 1) continue;
    cls_Semionda h;
    h.sign = sgn(x[static_cast<size_t>(s)]);
    h.iStart = s;
    h.iEnd = e;
    h.iMax = s;
    for (int j = s; j <= e; ++j) {
      const float v = x[static_cast<size_t>(j)];
      h.energy += v;
      if (std::fabs(v) > h.max) {
        h.max = std::fabs(v);
        h.iMax = j;
      }
    }
    out.push_back(h);
  }
  return out;
}

TEST(EvalV, HalfWavesMatchARunLengthReference) {
  std::mt19937 gen(3);
  for (int trial = 0; trial < 300; ++trial) {
    const size_t n = 2 + gen() % 80;
    std::vector<float> g(n);
    // Small whole values around 100 with long runs and zeros, and the mean exactly 100.
    int level = 0;
    for (size_t i = 0; i + 1 < n; ++i) {
      if (gen() % 3 == 0) level = static_cast<int>(gen() % 7) - 3;
      g[i] = static_cast<float>(100 + level * static_cast<int>(1 + gen() % 3));
    }
    g[n - 1] = static_cast<float>(100.0 * static_cast<double>(n) - std::accumulate(g.begin(), g.end() - 1, 0.0));
    auto r = fromChannels(g, g);
    r.set_elabString("6;0;0,0");
    r.filterSeismogramManager();
    ASSERT_EQ(r.mediaG1f, 100.0f);
    std::vector<float> x(n);
    for (size_t i = 0; i < n; ++i) x[i] = g[i] - 100.0f;
    const auto got = r.splitHalfWaves(1);
    const auto expected = referenceHalfWaves(x);
    ASSERT_TRUE(got.has_value());
    ASSERT_EQ(got->size(), expected.size()) << trial;
    const auto fields = [](const cls_Semionda& h) { return std::tuple(h.iStart, h.iEnd, h.iMax, h.max, h.sign, h.energy); };
    for (size_t k = 0; k < expected.size(); ++k) EXPECT_EQ(fields((*got)[k]), fields(expected[k])) << trial << ", " << k;
  }
}

// ---- Dominant frequency -----------------------------------------------------------------------

TEST(EvalV, DominantFrequencyFromCrossingsOfTheMean) {
  std::vector<float> g1(1000), g2(1000);
  for (size_t i = 0; i < 1000; ++i) {
    g1[i] = static_cast<float>(127.5 + 50 * std::sin(2 * kPi * 100 * i * 1e-4 + 0.3));
    g2[i] = static_cast<float>(127.5 + 50 * std::sin(2 * kPi * 37 * i * 1e-4 + 1));
  }
  auto r = fromChannels(g1, g2);
  EXPECT_NEAR(r.Evaluate_Frequency(1), 100, 0.5);
  EXPECT_NEAR(r.Evaluate_Frequency(2), 37, 0.5);
}

}  // namespace
