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
  EXPECT_FALSE(r.storeG1(5, 8));
  EXPECT_FALSE(r.storeG1(5, -1));
  EXPECT_DOUBLE_EQ(r.sumG1R(), 560);

  // With no filter there are no start samples, yet the very first sample (index 0) is still
  // not greater than 0 and stays out.
  cls_SEISMOGRAM plain;
  plain.setIntN(3);
  plain.storeG2(7, 0);
  plain.storeG2(9, 1);
  plain.storeG2(8, 2);
  EXPECT_EQ(plain.minG2R(), 8);
  EXPECT_EQ(plain.maxG2R(), 9);
}

TEST(Seismogram, StartupSamplesFollowTriggerAndFilter) {
  cls_SEISMOGRAM r;
  r.sngTcamp = 100;
  const std::vector<std::pair<int16_t, int>> byCode = {{0, 1}, {1, 1}, {2, 1}, {3, 2}, {4, 4}, {5, 4}, {6, 0}, {9, 0}};
  for (auto [code, expected] : byCode) {
    r.filterCode = code;
    EXPECT_EQ(r.startupSamples(), expected) << code;
  }
  r.triggerType = 1;  // an external trigger: 2.5 ms whatever the filter
  r.filterCode = 6;
  EXPECT_EQ(r.startupSamples(), 25);
  r.sngTcamp = 200;  // 12.5 -> 12, halves to even
  EXPECT_EQ(r.startupSamples(), 12);
  r.sngTcamp = 1000;  // 2.5 -> 2
  EXPECT_EQ(r.startupSamples(), 2);
}

TEST(Seismogram, ResetOfExtremesLeavesTheRawSumsSoASecondPrepareDoublesTheMeans) {
  auto r = withSamples({100, 100, 120, 80}, {50, 60, 70, 80});
  EXPECT_FLOAT_EQ(r.mediaG1r, 100);
  EXPECT_FLOAT_EQ(r.mediaG2r, 65);
  r.resetExtremes();
  EXPECT_EQ(r.minG1R(), 255);
  EXPECT_EQ(r.maxG1R(), 0);
  EXPECT_EQ(r.minG1F(), 100000);
  EXPECT_EQ(r.maxG1F(), -100000);
  EXPECT_DOUBLE_EQ(r.sumG1R(), 400);
  r.prepareForEvalv();
  EXPECT_FLOAT_EQ(r.mediaG1r, 200);
  EXPECT_EQ(r.minG1R(), 80);
  EXPECT_EQ(r.maxG1R(), 120);
  r.prepareForEvalv();
  EXPECT_FLOAT_EQ(r.mediaG1r, 300);

  // A fresh record whose arrays were set whole gets the right means.
  cls_SEISMOGRAM fresh;
  fresh.setIntN(4);
  fresh.set_vG1r({100, 100, 120, 80});
  fresh.set_vG2r({50, 60, 70, 80});
  fresh.prepareForEvalv();
  EXPECT_FLOAT_EQ(fresh.mediaG1r, 100);
  EXPECT_FLOAT_EQ(fresh.mediaG2r, 65);
}

TEST(Seismogram, SettingTheLengthSizesEveryArrayAndArraySettersFitIt) {
  cls_SEISMOGRAM r;
  r.setIntN(5);
  EXPECT_EQ(r.vG1r().size(), 5u);
  EXPECT_EQ(r.vG2f().size(), 5u);
  r.set_vG1r({1, 2, 3, 4, 5, 6, 7});
  EXPECT_EQ(r.vG1r(), (std::vector<float>{1, 2, 3, 4, 5}));
  r.set_vG2r({9});
  EXPECT_EQ(r.vG2r(), (std::vector<float>{9, 0, 0, 0, 0}));
  r.setIntN(-3);
  EXPECT_EQ(r.intN(), 0);
  EXPECT_TRUE(r.vG1r().empty());
  r.setIntN(100000);
  EXPECT_EQ(r.intN(), 32767);
}

TEST(Seismogram, ScaleFollowsReferenceVoltageAndGain) {
  auto r = withSamples({100, 100, 150, 100}, {100, 110, 100, 100});
  r.Gain = 100;
  struct Case {
    int16_t hardwareMinor, deviceType;
    float volts;
  };
  for (const Case c : {Case{1, 0, 3.3f}, Case{0, 0, 5.0f}, Case{0, 1, 3.3f}, Case{0, 2, 3.3f}, Case{0, 7, 0.0f}}) {
    r.hardwareMinor = c.hardwareMinor;
    r.deviceType = c.deviceType;
    r.calcMeansAndVoltage();
    EXPECT_FLOAT_EQ(r.K4mV, c.volts * 1000 / 100 / 256) << c.hardwareMinor << " " << c.deviceType;
  }
  r.hardwareMinor = 0;
  r.deviceType = 0;
  r.Gain = 0.5f;  // below 1 counts as 1
  r.calcMeansAndVoltage();
  EXPECT_FLOAT_EQ(r.K4mV, 5000.0f / 256);
  // maxGr: the largest deviation from the mean on either channel (G1: 150 - 112.5).
  EXPECT_FLOAT_EQ(r.maxGr(), 37.5f);
  EXPECT_FLOAT_EQ(r.deltaGr(), 50);
  EXPECT_FLOAT_EQ(r.maxmVr, cls_SEISMOGRAM::round2(5000.0 / 256 * 1.3 * 37.5));
  EXPECT_FLOAT_EQ(r.maxmVr, 950);
  EXPECT_FLOAT_EQ(r.maxGrPseudo(1, 1), 950);
  EXPECT_FLOAT_EQ(r.maxGrPseudo(2, 0.001f), 1);  // floored at 1
}

TEST(Seismogram, ScaleTakesTheDecimalReferenceVoltage) {
  // 3.3 V is the decimal figure: through a float first it would move K4mV by one unit in the
  // last place at gains such as 13 and 29.
  auto r = withSamples({100, 100, 150, 100}, {100, 110, 100, 100});
  r.hardwareMinor = 1;
  for (const float gain : {13.0f, 29.0f, 53.0f}) {
    r.Gain = gain;
    r.calcMeansAndVoltage();
    EXPECT_EQ(r.K4mV, static_cast<float>(3.3 * 1000.0 / gain / 256.0)) << gain;
  }
  r.Gain = 13;
  r.calcMeansAndVoltage();
  EXPECT_EQ(r.K4mV, 0.991586566f);
}

TEST(Seismogram, Round2KeepsTwoSignificantDigitsWithHalvesToEven) {
  EXPECT_EQ(cls_SEISMOGRAM::round2(0), 0);
  EXPECT_EQ(cls_SEISMOGRAM::round2(-3), 0);
  EXPECT_EQ(cls_SEISMOGRAM::round2(NAN), 0);
  EXPECT_EQ(cls_SEISMOGRAM::round2(10), 10);
  EXPECT_EQ(cls_SEISMOGRAM::round2(10.5), 10);  // within 10..100: to a whole number
  EXPECT_EQ(cls_SEISMOGRAM::round2(11.5), 12);
  EXPECT_EQ(cls_SEISMOGRAM::round2(99.7), 100);
  EXPECT_EQ(cls_SEISMOGRAM::round2(100), 100);
  EXPECT_EQ(cls_SEISMOGRAM::round2(125), 120);  // 12.5 -> 12
  EXPECT_EQ(cls_SEISMOGRAM::round2(135), 140);
  EXPECT_EQ(cls_SEISMOGRAM::round2(1234), 1200);
  EXPECT_FLOAT_EQ(cls_SEISMOGRAM::round2(4.56), 4.6f);
  EXPECT_FLOAT_EQ(cls_SEISMOGRAM::round2(0.01234), 0.012f);
}

TEST(Seismogram, TimeAxisStartsAtTheTriggerDelayOfTheProbeLine) {
  cls_SEISMOGRAM r;
  r.sngTcamp = 50;
  r.setIntN(10);
  r.TrigDelay = 3;
  EXPECT_FLOAT_EQ(r.TMin(), 2000);
  EXPECT_FLOAT_EQ(r.TMax(), 2500);
  EXPECT_FLOAT_EQ(r.vTi(4), 2200);
  EXPECT_EQ(r.returnIndexTvec(2200), 4);
  EXPECT_EQ(r.returnIndexTvec(2125), 2);  // 2.5 -> 2
  EXPECT_EQ(r.returnIndexTvec(2175), 4);  // 3.5 -> 4
  const auto axis = r.vect();
  ASSERT_EQ(axis.size(), 10u);
  EXPECT_FLOAT_EQ(axis.front(), 2000);
  EXPECT_FLOAT_EQ(axis.back(), 2450);
  r.intProbeLine = 29;  // older boxes step 943.79 us
  EXPECT_FLOAT_EQ(r.TMin(), 2 * 943.79f);
  r.intProbeLine = 30;
  r.TrigDelay = 0;
  EXPECT_FLOAT_EQ(r.TMin(), -1000);
  EXPECT_FLOAT_EQ(r.maxTr(), 500);
  EXPECT_FLOAT_EQ(r.maxTf(), 500);
  EXPECT_FLOAT_EQ(r.minTr(), 0);
}

TEST(Seismogram, ChannelOperationsCopyMoveAndInvert) {
  auto r = withSamples({1, 2, 3}, {10, 20, 30});
  r.moveTrace(2, 1);
  EXPECT_EQ(r.vG1r(), (std::vector<float>{10, 20, 30}));
  r.invertChannel2();
  EXPECT_EQ(r.vG2r(), (std::vector<float>{245, 235, 225}));

  auto other = withSamples({7, 8, 9}, {4, 5, 6});
  std::string message;
  EXPECT_TRUE(r.copyTrace(other, 1, 2, &message));
  EXPECT_EQ(r.vG2r(), (std::vector<float>{7, 8, 9}));
  EXPECT_FALSE(r.copyTrace(other, 3, 2, &message));
  EXPECT_EQ(message, "Incorrect Source");
  EXPECT_EQ(r.vG2r(), (std::vector<float>{0, 0, 0}));  // carried on with an empty channel
  EXPECT_FALSE(r.moveTrace(1, 0, &message));
  EXPECT_EQ(message, "Incorrect Destination");
  EXPECT_EQ(r.vG1r(), (std::vector<float>{10, 20, 30}));
}

TEST(Seismogram, CloneCopiesAcquisitionAndRawChannelsButNotElaboration) {
  auto source = withSamples({1, 2, 3}, {4, 5, 6});
  source.Z = 7.5f;
  source.distG1G2 = 0.5f;
  source.distHammer = 1.4f;
  source.delaySampleG2 = 20;
  source.triggerType = 1;
  source.TrigDelay = 2;
  source.Gain = 400;
  source.notes = "n";
  source.Data = "d";
  source.hour = "h";
  source.intWaveType = 1;
  source.hardwareMinor = 3;
  source.set_elabString("5,180;4;0,0");
  source.setDeltaT(2);

  cls_SEISMOGRAM copy;
  copy.cloneSeismogram(source);
  EXPECT_EQ(copy.fileText(), source.fileText());
  EXPECT_EQ(copy.get_elabString(), "6;0;-1");
  EXPECT_EQ(copy.DeltaT(), 0);
  EXPECT_EQ(copy.vG2r(), (std::vector<float>{4, 5, 6}));
}

TEST(Gain, ClosestLowerGainIsTheLadderStepAtOrBelow) {
  EXPECT_EQ(cls_SEISMOGRAM::setClosestLowerGain(19), 20);
  EXPECT_EQ(cls_SEISMOGRAM::setClosestLowerGain(20), 20);
  EXPECT_EQ(cls_SEISMOGRAM::setClosestLowerGain(39.9f), 20);
  EXPECT_EQ(cls_SEISMOGRAM::setClosestLowerGain(40), 40);
  EXPECT_EQ(cls_SEISMOGRAM::setClosestLowerGain(499), 400);
  EXPECT_EQ(cls_SEISMOGRAM::setClosestLowerGain(5119), 3200);
  EXPECT_EQ(cls_SEISMOGRAM::setClosestLowerGain(20479), 10240);
  EXPECT_EQ(cls_SEISMOGRAM::setClosestLowerGain(20480), 20480);
  EXPECT_EQ(cls_SEISMOGRAM::setClosestLowerGain(30000), 20480);
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
  clipping.Gain = 640;
  EXPECT_EQ(clipping.bestAssignableGain(), 320);
  clipping.Gain = 100;
  EXPECT_EQ(clipping.bestAssignableGain(), 40);

  auto top = withSamples({0, 128, 255, 128}, {0, 128, 130, 128});
  top.Gain = 2000;
  EXPECT_EQ(top.bestAssignableGain(), 1000);
}

}  // namespace
