// The evaluation chain: geometry and results, the lag search against a brute-force correlation,
// half waves against a run-length reference, the window codes and their edge cases.

#include <gtest/gtest.h>

#include <cmath>
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

TEST(EvalV, DeltaSIsTheDifferenceOfTheTwoStraightRays) {
  cls_SEISMOGRAM r;
  r.Z = 0.5f;
  r.distG1G2 = 1;
  r.distHammer = 1;
  EXPECT_NEAR(r.DeltaS(), std::sqrt(2.0) - 1, 1e-7);
  EXPECT_FLOAT_EQ(r.ZSensor(1), 0);
  EXPECT_FLOAT_EQ(r.ZSensor(2), 1);
  EXPECT_FLOAT_EQ(r.ZSensor(3), 0);
  r.Z = 5;
  r.distG1G2 = 0.5f;
  r.distHammer = 1.4f;
  const double h = 1.4f;
  EXPECT_FLOAT_EQ(r.DeltaS(), static_cast<float>(std::sqrt(5.25 * 5.25 + h * h) - std::sqrt(4.75 * 4.75 + h * h)));
}

TEST(EvalV, DeltaTAddsTheSampleLagOfChannel2AndZeroMeansNone) {
  cls_SEISMOGRAM r;
  EXPECT_EQ(r.DeltaT(), 0);
  r.delaySampleG2 = 50;
  r.setDeltaT(2.05f);
  EXPECT_NEAR(r.rawDelay(), 2.0f, 1e-6);
  EXPECT_FLOAT_EQ(r.DeltaT(), 2.05f);
  r.setDeltaT(0);
  EXPECT_EQ(r.rawDelay(), -1000);
  EXPECT_EQ(r.DeltaT(), 0);
  EXPECT_EQ(r.V(), 0);
}

TEST(EvalV, VelocityRoundsHalvesToEven) {
  cls_SEISMOGRAM r;  // no samples: the delay stage alone decides
  r.Z = 1;
  r.distG1G2 = 0.5f;
  r.distHammer = 0;  // DeltaS = 1.25 - 0.75 = 0.5 m
  ASSERT_FLOAT_EQ(r.DeltaS(), 0.5f);
  r.set_elabString("6;0;3,8");
  EXPECT_TRUE(r.evalV());
  EXPECT_FLOAT_EQ(r.DeltaT(), 8);
  EXPECT_EQ(r.V(), 62);  // 62.5
  r.distG1G2 = 0.75f;    // DeltaS = 0.75 m
  r.set_elabString("6;0;3,4");
  r.evalV();
  EXPECT_EQ(r.V(), 188);  // 187.5
  r.set_elabString("6;0;3,-4");
  r.evalV();
  EXPECT_EQ(r.V(), 0);  // a negative delay is no velocity
}

TEST(EvalV, ManualDelayOfZeroAndTheNoiseCodeGiveNoVelocity) {
  auto r = koru::synth::makeSyntheticStrike({});
  r.set_elabString("5,180;4;3,0");
  r.evalV();
  EXPECT_EQ(r.DeltaT(), 0);
  EXPECT_EQ(r.V(), 0);
  r.set_elabString("5,180;4;-1");
  r.evalV();
  EXPECT_EQ(r.V(), 0);
  r.set_elabString("5,180;4;3,2.5");
  r.delaySampleG2 = 30;
  r.evalV();
  EXPECT_FLOAT_EQ(r.DeltaT(), 2.5f);  // a manual delay is the corrected one
  EXPECT_EQ(r.V(), static_cast<int16_t>(std::nearbyint(r.DeltaS() * 1000 / 2.5)));
  r.set_elabString("5,180;4;3");  // a manual delay without its value: no evaluation
  EXPECT_FALSE(r.evalV());
  EXPECT_EQ(r.V(), 0);
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
    if (c > bestValue) bestValue = c, best = k;
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

TEST(EvalV, RefinedSearchRangeMultipliesBeforeItDividesAndRoundsHalvesToEven) {
  // (lag - 1) x coarse / fine - 1 and (lag + 1) x coarse / fine + 1, in that order: with the
  // steps of a 7 us trace (0.7 us coarse, 7/11 us fine) the quotient taken first would give 29
  // and 27 here.
  const double coarse = static_cast<double>(7.0f / 10.0f);
  const double fine = static_cast<double>(7.0f / 11.0f);
  EXPECT_EQ(LagSearch::refinedRange(24, coarse, fine).high, 28);
  EXPECT_EQ(LagSearch::refinedRange(26, coarse, fine).low, 26);
  // Steps of 20 us and 100/121 us: 9 x 24.2 - 1 = 216.8, 11 x 24.2 + 1 = 267.2.
  const auto r = LagSearch::refinedRange(10, 20, static_cast<double>(100.0f / 121.0f));
  EXPECT_EQ(r.low, 217);
  EXPECT_EQ(r.high, 267);
  // Never below 0.
  EXPECT_EQ(LagSearch::refinedRange(1, 20, 10).low, 0);
  EXPECT_EQ(LagSearch::refinedRange(1, 20, 10).high, 5);
  // A half rounds to the even neighbour.
  EXPECT_EQ(LagSearch::refinedRange(1, 1.25, 1).high, 4);  // 2 x 1.25 + 1 = 3.5
  EXPECT_EQ(LagSearch::refinedRange(3, 1.25, 1).low, 2);   // 2 x 1.25 - 1 = 1.5
  EXPECT_EQ(LagSearch::refinedRange(2, 1.25, 1).high, 5);  // 3 x 1.25 + 1 = 4.75
  EXPECT_EQ(LagSearch::refinedRange(4, 1.5, 1).low, 4);    // 3 x 1.5 - 1 = 3.5
  EXPECT_EQ(LagSearch::refinedRange(2, 1.5, 1).low, 0);    // 1 x 1.5 - 1 = 0.5
}

TEST(EvalV, LagSearchTakesNoLagOfZeroOrNegativeCorrelationAndNoPeakOnTheEdge) {
  std::vector<double> a(30, 1.0), b(30, -1.0);  // negative at every lag
  EXPECT_EQ(LagSearch::bestLag(a.data(), b.data(), 30, 0, 20), -1);
  EXPECT_EQ(LagSearch::bestLag(a.data(), b.data(), 30, 2, 20), 0);  // nothing taken: the start lag 0 stays
  std::vector<double> zero(30, 0.0);
  EXPECT_EQ(LagSearch::bestLag(a.data(), zero.data(), 30, 0, 20), -1);
  std::vector<double> c(30, 0.0), d(30, 0.0);
  c[0] = 1;
  d[20] = 1;  // peak exactly at the highest lag tried
  EXPECT_EQ(LagSearch::bestLag(c.data(), d.data(), 30, 0, 20), -1);
  EXPECT_EQ(LagSearch::bestLag(c.data(), d.data(), 30, 0, 21), 20);
  EXPECT_EQ(LagSearch::bestLag(c.data(), d.data(), 30, 20, 25), -1);  // and at the lowest
  // A high beyond the traces is still the edge the answer is judged against.
  EXPECT_EQ(LagSearch::bestLag(c.data(), d.data(), 30, 0, 100000), 20);
}

// ---- Edge cases of the chain ------------------------------------------------------------------

TEST(EvalV, IdenticalChannelsPeakAtTheLowEdgeAndGiveNoVelocity) {
  cls_SEISMOGRAM r;
  r.cloneSeismogram(koru::synth::makeSyntheticStrike({}));
  r.moveTrace(1, 2);
  r.prepareForEvalv();
  for (const char* elab : {"5,180;4;0,0", "5,180;0;0,0", "6;3;0,0"}) {
    r.set_elabString(elab);
    EXPECT_TRUE(r.evalV());
    EXPECT_EQ(r.DeltaT(), 0) << elab;
    EXPECT_EQ(r.V(), 0) << elab;
  }
}

TEST(EvalV, VelocityBelowTheSlowestSearchedPeaksOnTheHighEdgeAndGivesNone) {
  koru::synth::StrikeSettings s;
  s.n = 1000;
  s.noise = 0;
  s.quantise = false;
  s.velocity = 19;  // 25.3 ms over 0.48 m: just beyond the 24 ms that 20 m/s allows
  s.arrival = 10;
  auto slow = koru::synth::makeSyntheticStrike(s);
  slow.set_elabString("5,180;0;0,0");
  slow.evalV();
  EXPECT_EQ(slow.V(), 0);
  s.velocity = 25;  // inside the search
  auto inside = koru::synth::makeSyntheticStrike(s);
  inside.set_elabString("5,180;0;0,0");
  inside.evalV();
  EXPECT_NEAR(inside.V(), 25, 1);
}

TEST(EvalV, FlatTraceHasNoHalfWavesAndItsWindowIsTheWholeTrace) {
  const auto r0 = fromChannels(std::vector<float>(200, 128), std::vector<float>(200, 128));
  for (int code : {3, 4, 5}) {
    auto r = r0;
    r.set_elabString("6;" + std::to_string(code) + ";0,0");  // unfiltered, so exactly flat
    EXPECT_TRUE(r.evalV());
    ASSERT_TRUE(r.halfWavesG1().has_value());
    EXPECT_TRUE(r.halfWavesG1()->empty());
    EXPECT_TRUE(r.halfWavesG2()->empty());
    EXPECT_EQ(r.windowParams, (std::vector<std::string>{"0", "199"}));
    EXPECT_EQ(r.V(), 0);
  }
}

TEST(EvalV, RecordWithoutSamplesFallsBackToNoWindowAndGivesNoVelocity) {
  cls_SEISMOGRAM r;
  r.sngTcamp = 100;
  r.Z = 3;
  r.distG1G2 = 0.5f;
  r.distHammer = 1.4f;
  for (const char* elab : {"5,180;4;0,0", "5,180;5;0,0", "2,180;2,0,10;0,0", "6;0;0,0"}) {
    r.set_elabString(elab);
    r.evalV();
    EXPECT_FALSE(r.halfWavesG1().has_value()) << elab;
    EXPECT_EQ(r.V(), 0) << elab;
  }
}

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
    double factor = 1;
    if (i < 100) factor = std::cos((100.0 - i) / 20 * kPi / 2);
    if (i > 300) factor = std::cos((i - 300.0) / 20 * kPi / 2);
    const double x = f1[static_cast<size_t>(i)] - r.mediaG1f;
    ASSERT_NEAR(w[static_cast<size_t>(i - 80)], x * factor, 1e-5) << i;
  }
  EXPECT_NEAR(w.front(), 0, 1e-5);
  EXPECT_NEAR(w.back(), 0, 1e-5);
  const auto cc = r.vG1cc();
  ASSERT_EQ(cc.size(), 201u);
  EXPECT_FLOAT_EQ(cc[0], f1[100] - r.mediaG1f);
  EXPECT_FLOAT_EQ(r.maxTcc(), 200 * 100);
}

TEST(EvalV, ShortIntervalsStillHaveTwoSampleTailsAndLongOnesAtMost12AndAHalfMs) {
  auto r = koru::synth::makeSyntheticStrike({});
  r.set_elabString("5,180;2,100,110;0,0");
  r.evalV();
  EXPECT_EQ(r.nWindowed(), 15);
  r.set_elabString("5,180;2,-50,5000;0,0");  // clamped to the trace
  r.evalV();
  EXPECT_EQ(r.iEP1(), 0);
  EXPECT_EQ(r.iEP2(), 699);
  EXPECT_EQ(r.nWindowed(), 700);

  koru::synth::StrikeSettings coarse;
  coarse.sngTcamp = 1000;
  coarse.n = 700;
  auto c = koru::synth::makeSyntheticStrike(coarse);
  c.set_elabString("5,180;2,100,600;0,0");  // a tenth is 50 samples, 12.5 ms only 12
  c.evalV();
  EXPECT_EQ(c.nWindowed(), 501 + 2 * 12);

  r.set_elabString("5,180;2,300,100;0,0");  // an interval the wrong way round cannot be cut
  EXPECT_FALSE(r.evalV());
  EXPECT_EQ(r.V(), 0);
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
      if (std::fabs(v) > h.max) h.max = std::fabs(v), h.iMax = j;
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
    double sum = 0;
    for (size_t i = 0; i + 1 < n; ++i) sum += g[i];
    g[n - 1] = static_cast<float>(100.0 * static_cast<double>(n) - sum);
    auto r = fromChannels(g, g);
    r.set_elabString("6;0;0,0");
    r.filterSeismogramManager();
    ASSERT_EQ(r.mediaG1f, 100.0f);
    std::vector<float> x(n);
    for (size_t i = 0; i < n; ++i) x[i] = g[i] - 100.0f;
    const auto got = r.splitHalfWaves(1);
    ASSERT_TRUE(got.has_value());
    const auto expected = referenceHalfWaves(x);
    ASSERT_EQ(got->size(), expected.size()) << trial;
    const auto fields = [](const cls_Semionda& h) { return std::tuple(h.iStart, h.iEnd, h.iMax, h.max, h.sign, h.energy); };
    for (size_t k = 0; k < expected.size(); ++k) EXPECT_EQ(fields((*got)[k]), fields(expected[k])) << trial << ", " << k;
  }
}

// A trace of half waves of chosen heights and widths about a level of 100 (the first and the
// last stretch are left incomplete on purpose).
std::vector<float> halfWaveTrace(const std::vector<std::pair<float, int>>& waves) {
  std::vector<float> g;
  for (auto [height, width] : waves)
    for (int k = 0; k < width; ++k) g.push_back(100 + height * static_cast<float>(std::sin(kPi * (k + 0.5) / width)));
  return g;
}

TEST(EvalV, MainHalfWaveCodeKeepsTheMainOneAndTheOneBefore) {
  // Heights: incomplete, 5, -10, 40 (main), -25, 6, -16, incomplete; they add up to nothing, so
  // the mean is the level of 100.
  const auto g = halfWaveTrace({{-3, 5}, {5, 6}, {-10, 6}, {40, 6}, {-25, 6}, {6, 6}, {-16, 6}, {3, 5}});
  auto r = fromChannels(g, g);
  r.set_elabString("6;4;0,0");
  r.evalV();
  ASSERT_EQ(r.halfWavesG1()->size(), 2u);
  EXPECT_EQ(r.halfWavesG1()->at(0).sign, -1);
  EXPECT_EQ(r.halfWavesG1()->at(1).iStart, 17);
  EXPECT_EQ(r.windowParams, (std::vector<std::string>{"11", "22"}));

  // When the first half wave is the main one, it stays alone.
  const auto first = halfWaveTrace({{-3, 5}, {40, 6}, {-10, 6}, {6, 6}, {-36, 6}, {3, 5}});
  auto f = fromChannels(first, first);
  f.set_elabString("6;4;0,0");
  f.evalV();
  ASSERT_EQ(f.halfWavesG1()->size(), 1u);
  EXPECT_EQ(f.halfWavesG1()->at(0).iStart, 5);
}

TEST(EvalV, LargeHalfWavesCodeDropsThoseBelowThreeQuartersOfThePeak) {
  // Peak 40: 35 and -32 are within three quarters of it, -25, 8 and -26 are not.
  const auto g = halfWaveTrace({{-3, 5}, {35, 6}, {-25, 6}, {40, 6}, {-32, 6}, {8, 6}, {-26, 6}, {3, 5}});
  auto r = fromChannels(g, g);
  r.set_elabString("6;3;0,0");
  r.evalV();
  ASSERT_EQ(r.halfWavesG1()->size(), 3u);
  for (const auto& h : *r.halfWavesG1()) EXPECT_GE(h.max, 0.75 * (r.maxG1F() - r.mediaG1f) - 1);
  EXPECT_EQ(r.windowParams, (std::vector<std::string>{"5", "28"}));
}

TEST(EvalV, FirstArrivalCodeTakesTheFirstSignificantHalfWaveAndItsPartner) {
  // 1 ms samples: half waves of 8 samples span 7 steps, within 5 and 50 ms. The +4 one comes
  // first but carries too little energy.
  const auto g1 = halfWaveTrace({{-3, 8}, {4, 8}, {-30, 8}, {40, 8}, {-20, 8}, {12, 8}, {-3, 8}});
  // Channel 2 three samples later.
  std::vector<float> g2(3, 100.0f);
  g2.insert(g2.end(), g1.begin(), g1.end() - 3);
  auto r = fromChannels(g1, g2, 1000);
  r.set_elabString("6;5;0,0");
  r.evalV();
  ASSERT_EQ(r.halfWavesG1()->size(), 1u);
  const auto chosen = r.halfWavesG1()->at(0);
  EXPECT_EQ(chosen.iStart, 16);  // the -30 one
  EXPECT_EQ(chosen.iEnd, 23);
  // On channel 2 the +4 half wave (11..18) overlaps the chosen one by 2 samples, the -30 one
  // (19..26) by 4: the larger overlap wins.
  ASSERT_EQ(r.halfWavesG2()->size(), 1u);
  EXPECT_EQ(r.halfWavesG2()->at(0).iStart, 19);
  EXPECT_EQ(r.windowParams, (std::vector<std::string>{"16", "26"}));
}

TEST(EvalV, LongestRecordWithTheFinestSampleTimeIsEvaluatedWithoutRunningAway) {
  // 32767 samples of noise at 1 us: the search spans the whole trace at every lag (about 5e8
  // products), yet ends, and gives no sensible peak.
  std::mt19937 gen(9);
  std::vector<float> g1(32767), g2(32767);
  for (size_t i = 0; i < g1.size(); ++i) {
    g1[i] = static_cast<float>(100 + gen() % 51);
    g2[i] = static_cast<float>(100 + gen() % 51);
  }
  auto r = fromChannels(g1, g2, 1);
  r.Z = 5;
  r.distG1G2 = 0.5f;
  r.distHammer = 1.4f;
  r.set_elabString("5,180;4;0,0");
  EXPECT_TRUE(r.evalV());
  EXPECT_GE(r.V(), 0);
  r.sngTcamp = 0;  // no time axis: no delay
  EXPECT_FALSE(r.evalV());
  EXPECT_EQ(r.V(), 0);
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
  EXPECT_EQ(r.Evaluate_Frequency(3), 0);
  auto flat = fromChannels(std::vector<float>(100, 127), std::vector<float>(100, 127));
  EXPECT_EQ(flat.Evaluate_Frequency(1), 0);
  // A single crossing is no period.
  std::vector<float> step(100, 100);
  for (size_t i = 50; i < 100; ++i) step[i] = 150;
  auto one = fromChannels(step, step);
  EXPECT_EQ(one.Evaluate_Frequency(1), 0);
}

}  // namespace
