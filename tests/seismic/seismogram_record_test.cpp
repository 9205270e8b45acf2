// The record's running figures, its scale, its time axis, the gain advice and the channel
// operations.

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

#include "seismic/cls_SEISMOGRAM.h"

namespace {

using koru::cls_SEISMOGRAM;

cls_SEISMOGRAM withSamples(const std::vector<float>& g1, const std::vector<float>& g2) {
  cls_SEISMOGRAM r;
  r.sngTcamp = 100;
  r.setIntN(static_cast<int>(g1.size()));
  for (size_t i = 0; i < g1.size(); ++i) {
    r.storeG1(g1[i], static_cast<int>(i));
    r.storeG2(g2[i], static_cast<int>(i));
  }
  r.calcMeansAndVoltage();
  return r;
}

TEST(Seismogram, StoreKeepsTheSumAndTakesExtremesOnlyPastTheStartSamples) {
  cls_SEISMOGRAM r;
  r.sngTcamp = 100;
  r.filterCode = 5;  // four start samples
  r.setIntN(8);
  const std::vector<float> g1 = {250, 1, 2, 3, 4, 100, 90, 110};
  for (int i = 0; i < 8; ++i) EXPECT_TRUE(r.storeG1(g1[static_cast<size_t>(i)], i));
  EXPECT_DOUBLE_EQ(r.sumG1R(), 560);
  EXPECT_EQ(r.minG1R(), 90);  // samples 0 to 4 are left out
  EXPECT_EQ(r.maxG1R(), 110);

  // With no filter there are no start samples, yet the very first sample (index 0) is still
  // not greater than 0 and stays out.
  cls_SEISMOGRAM plain;
  plain.setIntN(3);
  for (int i = 0; i < 3; ++i) plain.storeG2(std::vector<float>{7, 9, 8}[static_cast<size_t>(i)], i);
  EXPECT_EQ(plain.minG2R(), 8);
  EXPECT_EQ(plain.maxG2R(), 9);
}

TEST(Seismogram, ResetOfExtremesLeavesTheRawSumsSoASecondPrepareDoublesTheMeans) {
  auto r = withSamples({100, 100, 120, 80}, {50, 60, 70, 80});
  EXPECT_FLOAT_EQ(r.mediaG1r, 100);
  r.resetExtremes();
  r.prepareForEvalv();
  EXPECT_FLOAT_EQ(r.mediaG1r, 200);
  EXPECT_EQ(r.minG1R(), 80);
}

TEST(Seismogram, ScaleFollowsReferenceVoltageAndGain) {
  auto r = withSamples({100, 100, 150, 100}, {100, 110, 100, 100});
  r.Gain = 100;
  r.hardwareMinor = 1;  // newer hardware: 3.3 V
  r.calcMeansAndVoltage();
  EXPECT_FLOAT_EQ(r.K4mV, 3300.0f / 100 / 256);
  r.Gain = 0.5f;
  r.hardwareMinor = 0;  // 5 V; a gain below 1 counts as 1
  r.calcMeansAndVoltage();
  EXPECT_FLOAT_EQ(r.K4mV, 5000.0f / 256);
  // maxGr: the largest deviation from the mean on either channel (G1: 150 - 112.5).
  EXPECT_FLOAT_EQ(r.maxGr(), 37.5f);
  EXPECT_FLOAT_EQ(r.deltaGr(), 50);
  EXPECT_FLOAT_EQ(r.maxmVr, cls_SEISMOGRAM::round2(5000.0 / 256 * 1.3 * 37.5));
  EXPECT_FLOAT_EQ(r.maxmVr, 950);
}

TEST(Seismogram, Round2KeepsTwoSignificantDigitsWithHalvesToEven) {
  EXPECT_EQ(cls_SEISMOGRAM::round2(-3), 0);
  EXPECT_EQ(cls_SEISMOGRAM::round2(10.5), 10);  // within 10..100: to a whole number
  EXPECT_EQ(cls_SEISMOGRAM::round2(125), 120);  // 12.5 -> 12
  EXPECT_EQ(cls_SEISMOGRAM::round2(135), 140);
  EXPECT_FLOAT_EQ(cls_SEISMOGRAM::round2(0.01234), 0.012f);
}

TEST(Gain, ClippingTraceIsAdvisedHalfTheGainAndAQuietOneNoChange) {
  // Samples past the first: G1 spans 100..150, G2 110..140.
  auto quiet = withSamples({0, 100, 150, 120}, {0, 110, 140, 120});
  // G1: centre 125, headroom 125, deviation 25 -> 5; G2: centre 125, deviation 15 -> 8.33.
  EXPECT_FLOAT_EQ(quiet.bestGainCoefficient(), 5);
  quiet.Gain = 1000;
  EXPECT_EQ(quiet.bestAssignableGain(), 0);

  auto clipping = withSamples({0, 0, 200, 120}, {0, 110, 140, 120});
  clipping.Gain = 1000;
  EXPECT_FLOAT_EQ(clipping.bestGainCoefficient(), 0.5f);
  EXPECT_EQ(clipping.bestAssignableGain(), 500);
  clipping.Gain = 100;
  EXPECT_EQ(clipping.bestAssignableGain(), 40);  // the ladder step at or below 50
}

}  // namespace
