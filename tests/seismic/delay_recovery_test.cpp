// The whole chain on synthetic strikes of known velocity: filter, window, up-sampled lag search.

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

#include "seismic/cls_SEISMOGRAM.h"
#include "synthetic_strike.h"

namespace {

using koru::synth::StrikeSettings;

struct Case { int32_t waveType; float tcamp; double velocity; float z; };

StrikeSettings settings(const Case& c) {
  StrikeSettings s;
  s.waveType = c.waveType;
  s.sngTcamp = c.tcamp;
  s.velocity = c.velocity;
  s.Z = c.z;
  s.noise = 0;
  s.quantise = false;
  s.n = static_cast<int>((c.waveType == 1 ? 85000 : 70000) / c.tcamp);
  // The longer record and receiver base of compression waves.
  if (c.waveType == 1) {
    s.distG1G2 = 0.604f;
    s.distHammer = 1.6f;
    s.frequency = 50;
    s.arrival = 20;
  }
  return s;
}

TEST(EvalV, CleanStrikesGiveTheirDelayToTheResolutionOfTheUpSampling) {
  std::vector<Case> grid;
  for (float tcamp : {50.0f, 100.0f, 200.0f, 400.0f})
    for (float z : {2.0f, 8.0f, 20.0f}) {
      for (double v : {80.0, 120.0, 200.0, 300.0, 450.0, 600.0}) grid.push_back({0, tcamp, v, z});
      for (double v : {300.0, 500.0, 800.0, 1200.0, 1600.0, 2000.0}) grid.push_back({1, tcamp, v, z});
    }
  for (const auto& c : grid) {
    SCOPED_TRACE(testing::Message() << "wave " << c.waveType << " tcamp " << c.tcamp << " v " << c.velocity << " z "
                                    << c.z);
    const auto s = settings(c);
    auto r = koru::synth::makeSyntheticStrike(s);
    r.set_elabString("5,180;0;0,0");  // the whole trace: no window takes part
    ASSERT_TRUE(r.evalV());
    const double truth = koru::synth::trueDelayMs(s);
    const double errorUs = (r.DeltaT() - truth) * 1000;
    // The search refines until one step is worth about 1 m/s, unless 120 subdivisions of the
    // sample time are reached first.
    const double stepVelocity = c.velocity * c.velocity * r.upStep() * 1e-6 / r.DeltaS();
    EXPECT_TRUE(r.upFactor() == 120 || stepVelocity <= 1.5) << stepVelocity;
    // What is left is the bias of straight-line up-sampling: a few steps at most.
    EXPECT_LE(std::fabs(errorUs), 6 * r.upStep()) << errorUs;
    EXPECT_LE(std::fabs(r.V() - c.velocity), 0.01 * c.velocity) << r.V();
  }
}

TEST(EvalV, ChannelTwoSampledLaterAddsItsLagToTheDelay) {
  const auto s = settings({0, 100, 200, 5});
  auto base = koru::synth::makeSyntheticStrike(s), lagged = base;
  lagged.delaySampleG2 = 40;  // the same traces, channel 2 sampled 40 us after channel 1
  for (auto* r : {&base, &lagged}) r->set_elabString("5,180;0;0,0"), r->evalV();
  EXPECT_FLOAT_EQ(lagged.rawDelay(), base.rawDelay());
  EXPECT_NEAR(lagged.DeltaT(), base.DeltaT() + 0.04, 1e-6);
}

}  // namespace
