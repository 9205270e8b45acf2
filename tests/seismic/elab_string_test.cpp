// The elab string: a record's elaboration settings as text, "filter;window;delay".

#include <gtest/gtest.h>

#include "seismic/ElabString.h"
#include "seismic/cls_SEISMOGRAM.h"

namespace {

using koru::cls_SEISMOGRAM;

TEST(ElabString, TextRoundTripsUnchangedBecauseParametersStayText) {
  for (const char* text :
       {"2,180;0,0,4095;0,0", "5,180;4;0,0", "6;0;-1", "3,150.50;2,10,200;3,1.2500", "4,0180;5;3,-0.01", "5,;2,,;0,"}) {
    cls_SEISMOGRAM r;
    ASSERT_TRUE(r.set_elabString(text)) << text;
    EXPECT_EQ(r.get_elabString(), text);
  }
}

TEST(ElabString, StagesLandInTheirCodesAndAShortTextFailsAfterTheEarlierStages) {
  cls_SEISMOGRAM r;
  ASSERT_TRUE(r.set_elabString("2,180;0,0,4095;0,0"));
  EXPECT_EQ(r.filterCode, 2);
  EXPECT_EQ(r.windowParams, (std::vector<std::string>{"0", "4095"}));
  ASSERT_TRUE(r.set_elabString("6;0;-1"));
  EXPECT_TRUE(r.filterParams.empty());
  EXPECT_EQ(r.rephaseCode, -1);

  // An empty text changes nothing; a short one fails after setting the earlier stages.
  r.set_elabString("5,180;4;0,0");
  EXPECT_TRUE(r.set_elabString(""));
  EXPECT_EQ(r.get_elabString(), "5,180;4;0,0");

  EXPECT_FALSE(r.set_elabString("2,150;3"));
  EXPECT_EQ(r.get_elabString(), "2,150;3;0,0");  // filter and window set, delay as it was
  EXPECT_FALSE(r.set_elabString("4,200;x,1;0"));  // a code that is no number stops the reading
  EXPECT_EQ(r.get_elabString(), "4,200;3;0,0");
}

}  // namespace
