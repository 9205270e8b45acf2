#include <gtest/gtest.h>

#include "program/OptionsDialog.h"
#include "frame/MemorySettingsStore.h"
#include "frame/strings/Language.h"
#include "scripted_prompts.h"

namespace koru {
namespace {

struct OptionsDialogTest : ::testing::Test {
  testing::ScriptedPrompts prompts;
  ProgramStrings strings{prompts};
  MemorySettingsStore settings;
  AppState state;

  OptionsDialogTest() {
    loadLanguage(strings, std::filesystem::path(KORU_SOURCE_DIR) / "share", "English");
    state.strLanguage = "English";
    state.lngDMTImageResolution = state.lngSeismogramResolution = 1250;
    state.sngDG1G2 = 0.5f;
    state.sngDG3G4 = 0.604f;
  }
};

TEST(OptionsText, NumericTextAllowsOneLeadingMinusAndOnePoint) {
  for (const char* good : {"-1", ".5", "-.5", "5."}) EXPECT_TRUE(isNumericText(good)) << good;
  for (const char* bad : {"", ".", "-.", "1.2.3", "1e3", "+1", " 1", "1,5", "--1"})
    EXPECT_FALSE(isNumericText(bad)) << bad;
}

TEST_F(OptionsDialogTest, ValidationMessageNamesTheFieldTheRuleAndTheLimit) {
  EXPECT_FALSE(validateNumber("1.19", "Id limit", 1.2, 1.8, "0.00", false, false, strings));
  EXPECT_FALSE(validateNumber("10", "Gain", 0, 10, "0", false, true, strings));
  EXPECT_TRUE(validateNumber("1.8", "Id limit", 1.2, 1.8, "0.00", false, false, strings));
  ASSERT_EQ(prompts.messages.size(), 2u);
  EXPECT_EQ(prompts.messages[0].text, "Id limit must be at least 1.20");
  EXPECT_EQ(prompts.messages[1].text, "Gain must be less than 10");
}

TEST_F(OptionsDialogTest, ConfirmStoresPaperAndLanguageButInterpretationOptionsOnlyChangeTheRun) {
  auto f = openOptions(state);
  selectPaper(f, 1);
  selectK0Method(f, 3);
  tickFilter(f, DataFilter::OCR, true);
  f.language = "Italiano";
  std::vector<std::string> order;
  OptionsHooks hooks{[&](const std::string& language) { order.push_back("language " + language); },
                     [&] { order.push_back("refresh"); }};
  EXPECT_EQ(confirmOptions(f, state, settings, strings, hooks), OptionsField::None);
  EXPECT_EQ(settings.GetSetting("KORU", "Graphics", "PaperHeight", ""), "27.94");
  EXPECT_EQ(order, (std::vector<std::string>{"language Italiano", "refresh"})) << "announced first";
  EXPECT_EQ(settings.GetSetting("KORU", "General", "Language", ""), "Italiano");
  EXPECT_FLOAT_EQ(state.dmtOptions.sngK0M, 0.68f);
  EXPECT_FLOAT_EQ(state.dmtOptions.sngFilterOCR, 0.9f) << "a ticked filter takes its default";
  EXPECT_EQ(settings.GetSetting("KORU", "DMT", "K0M", "none"), "none");
}

TEST_F(OptionsDialogTest, ABadFieldKeepsTheDialogOpenAndChangesNothing) {
  auto f = openOptions(state);
  f.factorOCR = "two";
  f.distVs = "0.9";
  f.txRx = "12";
  EXPECT_EQ(confirmOptions(f, state, settings, strings, {}), OptionsField::FactorOCR);
  EXPECT_EQ(settings.size(), 0u);
  EXPECT_FLOAT_EQ(state.sngDG1G2, 0.5f);
  EXPECT_EQ(state.intTxRx, 10);
  ASSERT_EQ(prompts.messages.size(), 1u);
  EXPECT_EQ(prompts.messages[0].text, "OCR reduction factor must be a number") << "the label from the language file";
}

// Each step of a wait time is saved at once, but only once both fields can be stored.
TEST_F(OptionsDialogTest, WaitTimesAreSavedOnlyWhenBothAreValid) {
  auto f = openOptions(state);
  stepWaitTime(f.txRx, 3);
  f.txTx = "40000";
  EXPECT_EQ(saveWaitTimes(f, state, settings, strings), OptionsField::TxTx);
  EXPECT_EQ(settings.size(), 0u);
  EXPECT_EQ(state.intTxRx, 10);
  ASSERT_EQ(prompts.messages.size(), 1u);
  EXPECT_EQ(prompts.messages[0].text, "Wait between two sends (ms) must be at most 32767");
  f.txTx = "7";
  EXPECT_EQ(saveWaitTimes(f, state, settings, strings), OptionsField::None);
  EXPECT_EQ(settings.GetSetting("KORU", "SerPort", "txrx", ""), "13");
  EXPECT_EQ(state.intTxTx, 7);
}

}  // namespace
}  // namespace koru
