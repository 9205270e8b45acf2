#include <gtest/gtest.h>

#include "program/OptionsDialog.h"
#include "frame/MemorySettingsStore.h"
#include "frame/strings/StringTable.h"
#include "scripted_prompts.h"

namespace koru {
namespace {

struct OptionsDialogTest : ::testing::Test {
  testing::ScriptedPrompts prompts;
  ProgramStrings strings{prompts};
  MemorySettingsStore settings;
  AppState state;

  OptionsDialogTest() {
    const char* rules[] = {"must be greater than", "must be at least", "must be less than",
                           "must be at most", "Invalid value", "must be a number"};
    for (int i = 0; i < 6; ++i) strings.table().append(static_cast<int16_t>(94 + i), rules[i]);
    state.strLanguage = "English";
    state.strPaperName = "A4";
    state.sngPaperHeight = 29.7f;
    state.sngPaperWidth = 21.0f;
    state.lngDMTImageResolution = 1250;
    state.lngSeismogramResolution = 1250;
    state.sngDG1G2 = 0.5f;
    state.sngDG3G4 = 0.604f;
  }
};

TEST(OptionsText, NumericTextAllowsOneLeadingMinusAndOnePoint) {
  for (const char* good : {"0", "-1", "1.5", ".5", "-.5", "5.", "007"}) EXPECT_TRUE(isNumericText(good)) << good;
  for (const char* bad : {"", ".", "-.", "-", "1.2.3", "1e3", "+1", "1-", " 1", "1,5", "--1"})
    EXPECT_FALSE(isNumericText(bad)) << bad;
}

TEST_F(OptionsDialogTest, ValidationMessageNamesTheFieldTheRuleAndTheLimit) {
  EXPECT_FALSE(validateNumber("1.19", "Id limit", 1.2, 1.8, "0.00", false, false, strings));
  EXPECT_FALSE(validateNumber("1.81", "Id limit", 1.2, 1.8, "0.00", false, false, strings));
  EXPECT_FALSE(validateNumber("0", "Gain", 0, 10, "0", true, false, strings));
  EXPECT_FALSE(validateNumber("10", "Gain", 0, 10, "0", false, true, strings));
  EXPECT_FALSE(validateNumber("abc", "Gain", 0, 10, "0", false, false, strings));
  EXPECT_TRUE(validateNumber("1.8", "Id limit", 1.2, 1.8, "0.00", false, false, strings));
  ASSERT_EQ(prompts.messages.size(), 5u);
  EXPECT_EQ(prompts.messages[0].text, "Id limit must be at least 1.20");
  EXPECT_EQ(prompts.messages[1].text, "Id limit must be at most 1.80");
  EXPECT_EQ(prompts.messages[2].text, "Gain must be greater than 0");
  EXPECT_EQ(prompts.messages[3].text, "Gain must be less than 10");
  EXPECT_EQ(prompts.messages[4].text, "Gain must be a number");
}

TEST_F(OptionsDialogTest, OpeningShowsTheStateInTheDialogsFormats) {
  state.dmtOptions.sngFilterEd = 5.0f;
  auto f = openOptions(state);
  EXPECT_EQ(f.distVs, "0.50");
  EXPECT_EQ(f.distVp, "0.604");
  EXPECT_EQ(f.gammaWater, "1000");
  EXPECT_EQ(f.factorOCR, "1.00");
  EXPECT_EQ(f.idLimit, "1.20");
  EXPECT_TRUE(f.filterEdOn);
  EXPECT_FALSE(f.filterIdOn);
  EXPECT_EQ(f.dmtResolutionSlider, 550);
  EXPECT_EQ(f.paperIndex, 0);
}

TEST_F(OptionsDialogTest, LetterPaperStoresItsSize) {
  auto f = openOptions(state);
  selectPaper(f, 1);
  EXPECT_EQ(confirmOptions(f, state, settings, strings, {}), OptionsField::None);
  EXPECT_EQ(settings.GetSetting("KORU", "Graphics", "PaperName", ""), "LETTER");
  EXPECT_EQ(settings.GetSetting("KORU", "Graphics", "PaperHeight", ""), "27.94");
  EXPECT_EQ(settings.GetSetting("KORU", "Graphics", "PaperWidth", ""), "21.59");
  EXPECT_FLOAT_EQ(state.sngPaperHeight, 27.94f);
}

TEST_F(OptionsDialogTest, SliderPositionIsResolutionLessSevenHundred) {
  auto f = openOptions(state);
  f.dmtResolutionSlider = 550;
  f.seismogramResolutionSlider = 300;
  confirmOptions(f, state, settings, strings, {});
  EXPECT_EQ(settings.GetSetting("KORU", "Graphics", "KORUImageResolution", ""), "1250");
  EXPECT_EQ(state.lngSeismogramResolution, 1000);
}

TEST_F(OptionsDialogTest, ABadFieldKeepsTheDialogOpenAndChangesNothing) {
  auto f = openOptions(state);
  f.idLimit = "1.81";
  f.distVs = "0.9";
  EXPECT_EQ(confirmOptions(f, state, settings, strings, {}), OptionsField::IdLimit);
  EXPECT_EQ(settings.size(), 0u);
  EXPECT_FLOAT_EQ(state.sngDG1G2, 0.5f);
}

TEST_F(OptionsDialogTest, ConfirmSavesGeometryButNotTheVpDepthStep) {
  auto f = openOptions(state);
  f.distVs = "0.75";
  confirmOptions(f, state, settings, strings, {});
  EXPECT_EQ(settings.GetSetting("KORU", "Geometry", "dG1G2", ""), "0.75");
  EXPECT_FALSE(settings.contains("KORU", "Geometry", "seismicDeltaZVp"));
  EXPECT_FLOAT_EQ(state.sngDG1G2, 0.75f);
}

TEST_F(OptionsDialogTest, InterpretationOptionsChangeTheRunButAreNeverStored) {
  auto f = openOptions(state);
  selectK0Method(f, 3);
  tickFilter(f, DataFilter::OCR, true);
  f.gammaWater = "1025";
  confirmOptions(f, state, settings, strings, {});
  EXPECT_FLOAT_EQ(state.dmtOptions.sngK0M, 0.68f);
  EXPECT_FLOAT_EQ(state.dmtOptions.sngFilterOCR, 0.9f);
  EXPECT_FLOAT_EQ(state.dmtOptions.sngGammaWater, 1.025f);
  EXPECT_EQ(settings.GetSetting("KORU", "DMT", "K0M", "none"), "none");
}

TEST_F(OptionsDialogTest, FilterBoxesFillTheirDefaults) {
  auto f = openOptions(state);
  tickFilter(f, DataFilter::Id, true);
  tickFilter(f, DataFilter::Ed, true);
  tickFilter(f, DataFilter::Kd, true);
  EXPECT_EQ(f.filterId, "0.12");
  EXPECT_EQ(f.filterEd, "5.0");
  EXPECT_EQ(f.filterKd, "0.2");
  EXPECT_EQ(filterLabel(DataFilter::OCR), "OCR < ");
}

TEST_F(OptionsDialogTest, PersonalMethodKeepsWhatWasTyped) {
  auto f = openOptions(state);
  f.cuM = "0.2";
  selectCuMethod(f, 3);
  EXPECT_EQ(f.cuM, "0.2");
  selectCuMethod(f, 1);
  EXPECT_EQ(f.cuM, "0.084");
  EXPECT_EQ(rmFormulaLine(0), "see ASCE '80 (p. 318)");
  EXPECT_EQ(rmFormulaLine(2), "Rm = m x Kd ^ n + k");
}

TEST_F(OptionsDialogTest, IdLimitOutsideItsRangeRestoresTheValueInForce) {
  auto f = openOptions(state);
  f.idLimit = "1.19";
  leaveIdLimit(f, state);
  EXPECT_EQ(f.idLimit, "1.20");
  f.idLimit = "1.5";
  leaveIdLimit(f, state);
  EXPECT_EQ(f.idLimit, "1.5");
  restoreIdLimitDefault(f);
  EXPECT_EQ(f.idLimit, "1.20");
}

TEST_F(OptionsDialogTest, WaitTimesStepByOneAndAreSavedAtOnce) {
  auto f = openOptions(state);
  stepWaitTime(f.txRx, +1);
  stepWaitTime(f.txTx, -1);
  saveWaitTimes(f, state, settings);
  EXPECT_EQ(settings.GetSetting("KORU", "SerPort", "txrx", ""), "11");
  EXPECT_EQ(settings.GetSetting("KORU", "SerPort", "txtx", ""), "9");
  std::string zero = "0";
  stepWaitTime(zero, -1);
  EXPECT_EQ(zero, "0");
}

TEST_F(OptionsDialogTest, ALanguageChangeIsSavedAndAnnouncedFirst) {
  auto f = openOptions(state);
  f.language = "Italiano";
  std::vector<std::string> order;
  OptionsHooks hooks{[&](const std::string& language) { order.push_back("language " + language); },
                     [&] { order.push_back("refresh"); }};
  confirmOptions(f, state, settings, strings, hooks);
  EXPECT_EQ(settings.GetSetting("KORU", "General", "Language", ""), "Italiano");
  EXPECT_EQ(order, (std::vector<std::string>{"language Italiano", "refresh"}));
}

TEST(OptionsExponents, DoubtfulExponentsAreOutsideThePublishedRange) {
  EXPECT_FALSE(isKoExponentDoubtful("0.47"));
  EXPECT_TRUE(isKoExponentDoubtful("1.5"));
  EXPECT_FALSE(isOCRExponentDoubtful("1.56"));
  EXPECT_TRUE(isOCRExponentDoubtful("0.5"));
  EXPECT_TRUE(isOCRExponentDoubtful("x"));
}

}  // namespace
}  // namespace koru
