#include <gtest/gtest.h>

#include "frame/MemorySettingsStore.h"
#include "program/Startup.h"
#include "scratch_folder.h"
#include "scripted_prompts.h"

namespace koru {
namespace {

using testing::ScratchFolder;

struct StartupTest : ::testing::Test {
  ScratchFolder root;
  MemorySettingsStore settings;
  testing::ScriptedPrompts prompts;
  AppState state;
  StartupReport report;

  void start() {
    state.folders.dataRoot = root.path();
    state.folders.shareDir = std::filesystem::path(KORU_SOURCE_DIR) / "share";
    report = readSettings(state, settings, prompts);
    EXPECT_TRUE(report.problems.empty());
    initDefaults(state);
  }
};

TEST_F(StartupTest, WithNoSettingsEveryDefaultApplies) {
  start();
  EXPECT_EQ(state.intPressureUnit, 0);
  EXPECT_EQ(state.intTxRx, 10);
  EXPECT_EQ(state.intTxTx, 10);
  EXPECT_EQ(state.intPortNumber, 1);
  EXPECT_EQ(state.strFirmName, "FIRM");
  EXPECT_FALSE(state.blnVersionWarning);
  EXPECT_FLOAT_EQ(state.sngDG3G4, 0.604f);
  EXPECT_FLOAT_EQ(state.sngHammerVp, 1.60f);
  EXPECT_FLOAT_EQ(state.sngSeismicDeltaZVp, 1.0f);
  EXPECT_EQ(state.intNumSamplesS, 700);
  EXPECT_EQ(state.intNumSamplesP, 1700);
  EXPECT_EQ(state.strPaperName, "A4");
  EXPECT_FLOAT_EQ(state.sngPaperHeight, 29.70f);
  EXPECT_EQ(state.lngDMTImageResolution, 1250);
  EXPECT_FLOAT_EQ(state.sngZOffset, 0.896666f);
  EXPECT_EQ(state.strLastExportPath, "C:\\");
  EXPECT_EQ(state.sngSampleStep, 20.0f);
  EXPECT_EQ(state.strMaskChar, "=");
  EXPECT_FLOAT_EQ(state.dmtOptions.sngK0M, 0.826f);
  // A fresh machine starts in English and asks for the language; the only key written is it.
  EXPECT_EQ(state.strLanguage, "English");
  EXPECT_TRUE(report.language.showPicker);
  EXPECT_EQ(settings.size(), 1u);
  EXPECT_EQ(state.strings->getString(3800).empty(), false);
}

TEST_F(StartupTest, TheStoredLanguageComesFirstAndOlderNumbersStillWork) {
  settings.SaveSetting("KORU", "General", "Language", "20");
  start();
  EXPECT_EQ(state.strLanguage, "Italiano");
  EXPECT_FALSE(report.language.showPicker);
  EXPECT_EQ(settings.GetSetting("KORU", "General", "Language", ""), "Italiano");
  EXPECT_TRUE(prompts.messages.empty());
}

TEST_F(StartupTest, TheSitesFolderIsCreatedUnderTheDataRoot) {
  start();
  EXPECT_TRUE(std::filesystem::is_directory(root / "SITES"));
  EXPECT_EQ(state.strSitesPath, root / "SITES");
  EXPECT_EQ(state.strTempPath, root / "Temp");
}

TEST_F(StartupTest, AStaleHammerDistanceKeyDisappears) {
  settings.SaveSetting("KORU", "Geometry", "dHAMMER", "1.5");
  start();
  EXPECT_FALSE(settings.contains("KORU", "Geometry", "dHAMMER"));
}

TEST_F(StartupTest, StoredValuesAreReadWithAPoint) {
  settings.SaveSetting("KORU", "General", "Pressure Unit", "1");
  settings.SaveSetting("KORU", "Geometry", "dG1G2", "0.75");
  settings.SaveSetting("KORU", "Graphics", "PaperName", "letter");
  settings.SaveSetting("KORU", "SerPort", "versionWarning", "1");
  start();
  EXPECT_EQ(state.intPressureUnit, 1);
  EXPECT_FLOAT_EQ(state.sngDG1G2, 0.75f);
  EXPECT_EQ(state.strPaperName, "LETTER");
  EXPECT_TRUE(state.blnVersionWarning);
}

TEST_F(StartupTest, UnreadableValuesFallBack) {
  settings.SaveSetting("KORU", "SerPort", "txrx", "fast");
  settings.SaveSetting("KORU", "Geometry", "dCenters", "half a metre");
  start();
  EXPECT_EQ(state.intTxRx, 10);
  EXPECT_EQ(state.sngDCenters, 0.0f);  // numbers that cannot be read are 0
}

TEST_F(StartupTest, TheProgramStartsWithNoSiteOpen) {
  state.folders.dataRoot = root.path();
  state.folders.shareDir = std::filesystem::path(KORU_SOURCE_DIR) / "share";
  state.blnVerticalOpen = true;
  state.curSite.strFolder = "SITE_3";
  report = startUp(state, settings, prompts);
  EXPECT_TRUE(state.curSite.strFolder.empty());
  EXPECT_EQ(state.curVertical, nullptr);
  EXPECT_FALSE(state.blnVerticalOpen);
  EXPECT_EQ(state.strTempPath, root / "Temp");
  EXPECT_EQ(state.strLanguage, "English");
}

TEST_F(StartupTest, InterpretationOptionsAreBackToDefaultsAtEachStart) {
  state.dmtOptions.sngFactorOCR = 2.0f;
  start();
  EXPECT_EQ(state.dmtOptions.sngFactorOCR, 1.0f);
}

}  // namespace
}  // namespace koru
