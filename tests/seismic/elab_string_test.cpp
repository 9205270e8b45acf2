// The elab string: a record's elaboration settings as text, "filter;window;delay".

#include <gtest/gtest.h>

#include "frame/strings/StringTable.h"
#include "scripted_prompts.h"
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

TEST(ElabString, StagesLandInTheirCodesAndLists) {
  cls_SEISMOGRAM r;
  ASSERT_TRUE(r.set_elabString("2,180;0,0,4095;0,0"));
  EXPECT_EQ(r.filterCode, 2);
  EXPECT_EQ(r.filterParams, (std::vector<std::string>{"180"}));
  EXPECT_EQ(r.windowCode, 0);
  EXPECT_EQ(r.windowParams, (std::vector<std::string>{"0", "4095"}));
  EXPECT_EQ(r.rephaseCode, 0);
  EXPECT_EQ(r.rephaseParams, (std::vector<std::string>{"0"}));
  ASSERT_TRUE(r.set_elabString("6;0;-1"));
  EXPECT_TRUE(r.filterParams.empty());
  EXPECT_TRUE(r.windowParams.empty());
  EXPECT_EQ(r.rephaseCode, -1);
  EXPECT_TRUE(r.rephaseParams.empty());
}

TEST(ElabString, EmptyTextChangesNothingAndAShortOneFailsAfterTheEarlierStages) {
  cls_SEISMOGRAM r;
  r.set_elabString("5,180;4;0,0");
  EXPECT_TRUE(r.set_elabString(""));
  EXPECT_EQ(r.get_elabString(), "5,180;4;0,0");

  EXPECT_FALSE(r.set_elabString("2,150;3"));
  EXPECT_EQ(r.get_elabString(), "2,150;3;0,0");  // filter and window set, delay as it was

  EXPECT_FALSE(r.set_elabString("3,100"));
  EXPECT_EQ(r.get_elabString(), "3,100;3;0,0");

  EXPECT_FALSE(r.set_elabString("4,200;x,1;0"));  // a code that is no number stops the reading
  EXPECT_EQ(r.get_elabString(), "4,200;3;0,0");
  EXPECT_FALSE(r.set_elabString("99999;0;0"));  // nor does a filter code beyond 16 bits fit
}

TEST(ElabString, DefaultAndNoiseSettingsReadAsTheirTexts) {
  cls_SEISMOGRAM r;
  EXPECT_EQ(r.get_elabString(), "6;0;-1");  // a new record: noise settings
  r.setDefaultElabParametersVs();
  EXPECT_EQ(r.get_elabString(), "5,180;4;0,0");
  r.setDefaultElabParametersVp();
  EXPECT_EQ(r.get_elabString(), "5,180;5;0,0");
  r.setDefaultElabParametersVsPseudo();
  EXPECT_EQ(r.get_elabString(), "5,180;4;0,0");
  r.setNoiseParameters();
  EXPECT_EQ(r.get_elabString(), "6;0;-1");

  r.intWaveType = 1;
  r.setDefaultElabParameters();
  EXPECT_EQ(r.get_elabString(), "5,180;5;0,0");
  r.intWaveType = 0;
  r.setDefaultElabParameters();
  EXPECT_EQ(r.get_elabString(), "5,180;4;0,0");
  r.setNoiseParameters();
  r.triggerType = 2;  // an immediate trigger records noise: the defaults leave it alone
  r.setDefaultElabParameters();
  EXPECT_EQ(r.get_elabString(), "6;0;-1");
}

TEST(ElabString, TemplateSetsAllThreeStagesInOrder) {
  cls_SEISMOGRAM r;
  r.setSismElabParametersTemplate(2, 180, 2, 10, 200, 3, 1.25f);
  EXPECT_EQ(r.get_elabString(), "2,180;2,10,200;3,1.25");
  r.setSismElabParametersTemplate(5, 150.5f, 0, 0, 4095, 0, 0);
  EXPECT_EQ(r.get_elabString(), "5,150.5;0,0,4095;0,0");
}

TEST(ElabString, SplitAndJoinHelpers) {
  using koru::ElabString;
  EXPECT_TRUE(ElabString::splitStages("").empty());
  EXPECT_EQ(ElabString::splitStages("a;;b"), (std::vector<std::string>{"a", "", "b"}));
  EXPECT_EQ(ElabString::splitItems("5,180,"), (std::vector<std::string>{"5", "180", ""}));
  EXPECT_EQ(ElabString::joinStage(-1, {}), "-1");
  EXPECT_EQ(ElabString::joinStage(2, {"1", "2"}), "2,1,2");
  EXPECT_EQ(ElabString::parseCode(" 4 ", 0, 10), 4);
  EXPECT_EQ(ElabString::parseCode("2.5", 0, 10), 2);  // halves to even
  EXPECT_FALSE(ElabString::parseCode("", 0, 10));
  EXPECT_FALSE(ElabString::parseCode("11", 0, 10));
}

TEST(ElabString, FilterLabelForTables) {
  koru::testing::ScriptedPrompts prompts;
  koru::ProgramStrings strings(prompts);
  strings.table().append(4019, "Low-pass");
  strings.table().append(4020, "Bessel");
  strings.table().append(4021, "Butterworth");
  cls_SEISMOGRAM r;
  const std::vector<std::pair<std::string, std::string>> cases = {{"0;0;0", "Low-pass 1 (180)"},
                                                                  {"1,75;0;0", "Low-pass 1 (180)"},
                                                                  {"2,150;0;0", "Low-pass 1 (150)"},
                                                                  {"3,120.5;0;0", "Low-pass 2 (120.5)"},
                                                                  {"4,200;0;0", "Bessel (200)"},
                                                                  {"5,180;4;0,0", "Butterworth (180)"},
                                                                  {"6;0;-1", "-"}};
  for (const auto& [elab, label] : cases) {
    r.set_elabString(elab);
    EXPECT_EQ(r.returnElabString(strings), label) << elab;
  }
  EXPECT_TRUE(prompts.messages.empty());
}

}  // namespace
