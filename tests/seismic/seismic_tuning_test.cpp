// What the controls of the three tuning dialogues change, and that each change evaluates again.

#include <gtest/gtest.h>

#include <cmath>

#include "frame/Numbers.h"
#include "frame/strings/StringTable.h"
#include "scripted_prompts.h"
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
  EXPECT_EQ(t.filterListIndex, 3);  // Butterworth
  EXPECT_TRUE(t.frequencyFrameVisible);
  EXPECT_EQ(t.sliderLabel(), "180");
  const int16_t v = r.V();
  EXPECT_GT(v, 0);
  EXPECT_EQ(t.velocityText(), std::to_string(v));

  t.setSlider(90);
  EXPECT_EQ(r.get_elabString().substr(0, 5), "5,90;");
  t.selectFilter(1);  // two equal poles, slider back at 180
  EXPECT_EQ(t.sliderValue, 180);
  EXPECT_EQ(r.filterCode, 3);
  EXPECT_EQ(r.filterParams, (std::vector<std::string>{"180"}));
  t.selectFilter(4);  // none
  EXPECT_FALSE(t.frequencyFrameVisible);
  EXPECT_EQ(r.filterCode, 6);
  EXPECT_TRUE(r.filterParams.empty());
  EXPECT_EQ(r.vG1f(), r.vG1r());  // evaluated again

  t.cancel();
  EXPECT_FALSE(t.blnButtonCancelOk);
  EXPECT_EQ(r.get_elabString().substr(0, 6), "5,180;");
  EXPECT_EQ(r.V(), v);
  t.ok();
  EXPECT_TRUE(t.blnButtonCancelOk);
}

TEST(SeismicTuning, FilterDialogueOpensOnTheFirstEntryForCode2AndForNoise) {
  auto r = shear();
  r.set_elabString("2,150;4;0,0");
  SeismicTuning a(r);
  a.openFiltering();
  EXPECT_EQ(a.filterListIndex, 0);
  EXPECT_EQ(a.sliderValue, 150);
  r.set_elabString("4,200;4;0,0");
  r.triggerType = 2;
  SeismicTuning b(r);
  b.openFiltering();
  EXPECT_EQ(b.filterListIndex, 0);
  r.triggerType = 0;
  r.set_elabString("6;4;0,0");
  SeismicTuning c(r);
  c.openFiltering();
  EXPECT_EQ(c.filterListIndex, 4);
  EXPECT_FALSE(c.frequencyFrameVisible);
}

TEST(SeismicTuning, FilterListNamesFamilyAndOrder) {
  koru::testing::ScriptedPrompts prompts;
  koru::ProgramStrings strings(prompts);
  strings.table().append(4009, "Low-pass");
  strings.table().append(4010, "Bessel");
  strings.table().append(4011, "Butterworth");
  strings.table().append(4012, "order");
  strings.table().append(4013, "None");
  EXPECT_EQ(SeismicTuning::filterList(strings),
            (std::vector<std::string>{"Low-pass (order 1)", "Low-pass (order 2)", "Bessel (order 4)",
                                      "Butterworth (order 4)", "None"}));
  EXPECT_EQ(SeismicTuning::filterCodeOfListIndex(0), 2);
  EXPECT_EQ(SeismicTuning::filterCodeOfListIndex(4), 6);
}

TEST(SeismicTuning, WindowDialogueAutomaticLocksTheFieldsAndManualTakesCheckedTimes) {
  auto r = shear();
  SeismicTuning t(r);
  t.openWindowing();
  EXPECT_TRUE(t.automatic);
  EXPECT_TRUE(t.fieldsLocked);
  EXPECT_EQ(r.windowCode, 4);
  const float low = r.cutLow_ms();
  EXPECT_EQ(t.t1Text, koru::formatNumber(low, "0.0"));
  EXPECT_FALSE(t.leaveT1("5"));  // locked

  t.selectManual();
  EXPECT_FALSE(t.fieldsLocked);
  EXPECT_FALSE(t.leaveT1("abc"));
  EXPECT_FALSE(t.leaveT1("-1"));
  EXPECT_FALSE(t.leaveT2("70.1"));  // beyond the trace (maxTf = 70 ms)
  EXPECT_EQ(t.t1Text, koru::formatNumber(low, "0.0"));
  EXPECT_TRUE(t.leaveT1("5"));
  EXPECT_TRUE(t.leaveT2("40"));
  EXPECT_EQ(r.windowCode, 2);
  EXPECT_EQ(r.windowParams, (std::vector<std::string>{"50", "400"}));
  EXPECT_EQ(r.iEP1(), 50);  // evaluated again
  EXPECT_EQ(t.t2Text, "40.0");

  auto p = shear();
  p.intWaveType = 1;
  p.set_elabString("5,180;0,0,699;0,0");
  SeismicTuning manual(p);
  manual.openWindowing();
  EXPECT_FALSE(manual.automatic);
  EXPECT_FALSE(manual.fieldsLocked);
  manual.selectAutomatic();
  EXPECT_EQ(p.windowCode, 5);  // a compression wave: first arrival
}

TEST(SeismicTuning, DelayDialogueSwitchesModeAndStepsTheManualDelay) {
  auto r = shear();
  SeismicTuning t(r);
  t.openRephase();
  EXPECT_EQ(t.rephaseModeIndex, 0);
  EXPECT_TRUE(t.delayFieldLocked);
  EXPECT_FALSE(t.manualFrameVisible);
  const float found = r.DeltaT();
  EXPECT_EQ(t.delayText, koru::formatNumber(found, "0.0000"));
  EXPECT_EQ(SeismicTuning::rephaseModes()[0], "cross-correlation algorythm");

  t.selectRephaseMode(1);  // manual, starting from the delay found
  EXPECT_EQ(r.rephaseCode, 3);
  EXPECT_TRUE(t.manualFrameVisible);
  EXPECT_NEAR(r.DeltaT(), found, 1e-4);
  const float start = r.DeltaT();
  t.moveLeft();
  EXPECT_NEAR(r.DeltaT(), start + 0.01f, 1e-4);
  t.moveRight();
  t.moveRight();
  EXPECT_NEAR(r.DeltaT(), start - 0.01f, 1e-4);
  EXPECT_TRUE(t.typeDelay("2.5"));
  EXPECT_FLOAT_EQ(r.DeltaT(), 2.5f);
  EXPECT_EQ(t.delayText, "2.5000");
  EXPECT_FALSE(t.typeDelay("x"));
  EXPECT_EQ(r.V(), static_cast<int16_t>(std::nearbyint(r.DeltaS() * 1000 / 2.5)));

  t.selectRephaseMode(0);
  EXPECT_EQ(r.rephaseCode, 0);
  EXPECT_TRUE(t.delayFieldLocked);
  EXPECT_NEAR(r.DeltaT(), found, 1e-6);
}

}  // namespace
