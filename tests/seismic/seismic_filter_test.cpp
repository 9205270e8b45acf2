// The filter stage against its difference equations evaluated plainly here, its start at rest,
// the "none" filter, stacking and the window interval in milliseconds.

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>
#include <vector>

#include "seismic/SeismicFilters.h"
#include "seismic/cls_SEISMOGRAM.h"
#include "synthetic_strike.h"

namespace {

using koru::cls_SEISMOGRAM;

constexpr double kPi = 3.14159265358979323846;

// A noisy strike, whole counts, 400 samples at the given sample time.
cls_SEISMOGRAM strike(float tcamp = 100, int16_t triggerType = 0) {
  koru::synth::StrikeSettings s;
  s.n = 400;
  s.sngTcamp = tcamp;
  s.noise = 3;
  s.triggerType = triggerType;
  return koru::synth::makeSyntheticStrike(s);
}

// The recursion of one code written out from the analogue prototypes, evaluated in double with
// the coefficients rounded to Singles, as the record keeps them.
std::vector<double> reference(const std::vector<float>& x, int code, double fc, double tcamp, double mean, int start) {
  // Through memory, so no optimiser can skip the rounding.
  auto c = [](double v) { volatile float f = static_cast<float>(v); return static_cast<double>(f); };
  if (code <= 1) fc = 180;
  const double k = c(2 * kPi * fc * 1e-6 * tcamp);
  std::vector<double> b(5, 0.0), a(5, 0.0);
  double A = 0, B = 0;
  if (code <= 2) {
    const double p = c(2 * (1e-6 * tcamp) * kPi * fc);
    A = c((2 - p) / (p + 2));
    B = c(p / (p + 2));
  } else if (code == 3) {
    b = {c(k * k), c(2 * k * k), c(k * k), 0, 0};
    a = {c(k * k + 4 * k + 4), c(2 * k * k - 8), c(k * k - 4 * k + 4), 0, 0};
  } else {
    double p1, q1, r1, p2, q2, r2;
    if (code == 4) {
      p1 = k * k + 2.6794 * k + 1.9556;
      q1 = 2 * k * k - 3.9112;
      r1 = k * k - 2.6794 * k + 1.9556;
      p2 = k * k + 1.5486 * k + 1.556;
      q2 = 2 * k * k - 3.112;
      r2 = k * k - 1.5486 * k + 1.556;
    } else {
      p1 = k * k + 3.6956 * k + 4;
      q1 = 2 * k * k - 8;
      r1 = k * k - 3.6956 * k + 4;
      p2 = k * k + 1.5308 * k + 4;
      q2 = 2 * k * k - 8;
      r2 = k * k - 1.5308 * k + 4;
    }
    p1 = c(p1);
    q1 = c(q1);
    r1 = c(r1);
    p2 = c(p2);
    q2 = c(q2);
    r2 = c(r2);
    const double k4 = k * k * k * k;
    b = {c(k4), c(4 * k4), c(6 * k4), c(4 * k4), c(k4)};
    a = {c(p2 * p1), c(p2 * q1 + q2 * p1), c(q2 * q1 + r2 * p1 + p2 * r1), c(q2 * r1 + r2 * q1), c(r2 * r1)};
  }
  std::vector<double> y(x.size(), 0.0);
  for (int i = 0; i < start; ++i) y[static_cast<size_t>(i)] = mean;
  auto X = [&](int i) { return static_cast<double>(x[static_cast<size_t>(i)]); };
  auto Y = [&](int i) { return y[static_cast<size_t>(i)]; };
  for (int i = std::max(start, code <= 2 ? 1 : code == 3 ? 2 : 4); i < static_cast<int>(x.size()); ++i) {
    double out;
    if (code <= 2)
      out = A * Y(i - 1) + B * (X(i) + X(i - 1));
    else if (code == 3)
      out = (b[0] * X(i) + b[1] * X(i - 1) + b[2] * X(i - 2) - a[1] * Y(i - 1) - a[2] * Y(i - 2)) / a[0];
    else
      out = (b[0] * X(i) + b[1] * X(i - 1) + b[2] * X(i - 2) + b[3] * X(i - 3) + b[4] * X(i - 4) -
             (a[1] * Y(i - 1) + a[2] * Y(i - 2) + a[3] * Y(i - 3) + a[4] * Y(i - 4))) /
            a[0];
    // The record keeps its outputs as Singles, and the next outputs are made from those.
    y[static_cast<size_t>(i)] = static_cast<float>(out);
  }
  return y;
}

double worstDifference(const cls_SEISMOGRAM& r, int code, float fc, float tcamp) {
  const auto ref1 = reference(r.vG1r(), code, fc, tcamp, r.mediaG1r, r.startupSamples());
  const auto ref2 = reference(r.vG2r(), code, fc, tcamp, r.mediaG2r, r.startupSamples());
  const auto f1 = r.vG1f(), f2 = r.vG2f();
  double worst = 0;
  for (size_t i = 0; i < f1.size(); ++i)
    worst = std::max({worst, std::fabs(f1[i] - ref1[i]), std::fabs(f2[i] - ref2[i])});
  return worst;
}

TEST(SeismicFilter, EveryCodeFollowsItsDifferenceEquation) {
  for (float tcamp : {50.0f, 100.0f, 400.0f}) {
    for (int code = 0; code <= 5; ++code) {
      for (float fc : {90.0f, 180.0f, 700.0f}) {
        SCOPED_TRACE(testing::Message() << "code " << code << " fc " << fc << " tcamp " << tcamp);
        auto r = strike(tcamp);
        r.setFilter(static_cast<int16_t>(code), fc);
        r.filterSeismogramManager();
        EXPECT_LT(worstDifference(r, code, fc, tcamp), 1e-3);
      }
    }
  }
}

TEST(SeismicFilter, OutputStartsAtRestAtTheRawMeanAndThoseSamplesStayOutOfTheExtremes) {
  auto r = strike(100, 1);  // external trigger: 25 start samples whatever the filter
  for (int16_t code : {2, 5}) {
    r.setFilter(code, 180);
    r.filterSeismogramManager();
    const auto f = r.vG1f();
    for (int i = 0; i < 25; ++i) EXPECT_EQ(f[static_cast<size_t>(i)], r.mediaG1r);
    EXPECT_NE(f[25], r.mediaG1r);
    const auto mx = std::max_element(f.begin() + 25, f.end());
    EXPECT_EQ(r.maxG1F(), *mx);
    EXPECT_EQ(r.iMaxG1F(), mx - f.begin());
  }
}

TEST(SeismicFilter, StackingBringsTheOtherStrikeToThisGainAndAverages) {
  auto r = strike();
  cls_SEISMOGRAM other;
  other.cloneSeismogram(strike());
  other.Gain = 200;  // twice this record's gain: its deviations count half
  std::vector<float> g1 = other.vG1r();
  for (float& v : g1) v += 3;  // another level
  other.set_vG1r(g1);
  other.prepareForEvalv();
  ASSERT_NEAR(other.mediaG1r, r.mediaG1r + 3, 1e-3);
  ASSERT_TRUE(r.addTracks(other));
  const auto before = strike().vG1r();
  for (size_t i = 0; i < before.size(); ++i) {
    const double expected = ((g1[i] - other.mediaG1r) * 0.5 + (before[i] - r.mediaG1r)) / 2 + r.mediaG1r;
    ASSERT_NEAR(r.vG1r()[i], expected, 1e-4) << i;
  }
}

TEST(SeismicFilter, WindowIntervalInMillisecondsAndItsCode) {
  cls_SEISMOGRAM r;
  r.sngTcamp = 100, r.setIntN(700);
  r.set_cutLow_ms(10.04f);  // 100.4 samples -> "100"
  r.set_cutHigh_ms(30.25f);  // 302.5 samples -> "303" (written with "0": halves away from zero)
  EXPECT_EQ(r.windowParams, (std::vector<std::string>{"100", "303"}));
  EXPECT_EQ(r.windowCode, 2);
  r.set_cutLow_ms(-5), r.set_cutHigh_ms(1000);  // bounded by the sample count: the whole trace, hence no window
  EXPECT_EQ(r.windowParams, (std::vector<std::string>{"0", "700"}));
  EXPECT_EQ(r.windowCode, 0);
}

}  // namespace
