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

}  // namespace
