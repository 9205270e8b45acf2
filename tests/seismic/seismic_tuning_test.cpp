// What the controls of the three tuning dialogues change, and that each change evaluates again.

#include <gtest/gtest.h>

#include <cmath>

#include "seismic/SeismicTuning.h"
#include "synthetic_strike.h"

namespace {

using koru::SeismicTuning;

koru::cls_SEISMOGRAM shear() {
  auto r = koru::synth::makeSyntheticStrike({});
  r.setDefaultElabParameters();
  return r;
}

TEST(SeismicTuning, FilterDialogueRebuildsTheFilterAndEvaluates) {
  auto r = shear();
  SeismicTuning t(r);
  t.openFiltering();
  const int16_t v = r.V();

  t.setSlider(90);
  EXPECT_EQ(r.get_elabString().substr(0, 5), "5,90;");
  t.selectFilter(1);  // two equal poles, slider back at 180
  EXPECT_EQ(r.filterParams, (std::vector<std::string>{"180"}));
  t.selectFilter(4);  // none
  EXPECT_EQ(r.vG1f(), r.vG1r());  // evaluated again
  t.cancel();
  EXPECT_EQ(r.get_elabString().substr(0, 6), "5,180;");
  EXPECT_EQ(r.V(), v);
}

TEST(SeismicTuning, DelayDialogueSwitchesModeAndStepsTheManualDelay) {
  auto r = shear();
  SeismicTuning t(r);
  t.openRephase();
  const float found = r.DeltaT();

  t.selectRephaseMode(1);  // manual, starting from the delay found
  EXPECT_EQ(r.rephaseCode, 3);
  t.moveLeft();
  t.moveLeft();
  t.moveRight();
  EXPECT_NEAR(r.DeltaT(), found + 0.01f, 1e-4);
  EXPECT_TRUE(t.typeDelay("2.5"));
  EXPECT_FLOAT_EQ(r.DeltaT(), 2.5f);
  EXPECT_EQ(r.V(), static_cast<int16_t>(std::nearbyint(r.DeltaS() * 1000 / 2.5)));
  t.selectRephaseMode(0);
  EXPECT_NEAR(r.DeltaT(), found, 1e-6);
}

}  // namespace
