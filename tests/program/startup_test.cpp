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
    report = startUp(state, settings, prompts);
  }
};

TEST_F(StartupTest, AFreshMachineAsksForTheLanguageWritesOnlyItAndOpensNoSite) {
  state.blnVerticalOpen = true;
  state.curSite.strFolder = "SITE_3";
  state.dmtOptions.sngFactorOCR = 2.0f;  // interpretation options are back to defaults at each start
  start();
  EXPECT_TRUE(report.language.showPicker);
  EXPECT_EQ(settings.size(), 1u);
  EXPECT_TRUE(std::filesystem::is_directory(root / "SITES"));
  EXPECT_FALSE(state.blnVerticalOpen);
  EXPECT_EQ(state.dmtOptions.sngFactorOCR, 1.0f);
}

TEST_F(StartupTest, StoredValuesAreReadWithAPointAndOldKeysAndNumbersAreUpdated) {
  settings.SaveSetting("KORU", "General", "Language", "20");  // an older language number
  settings.SaveSetting("KORU", "Geometry", "dHAMMER", "1.5");  // a stale key
  settings.SaveSetting("KORU", "Geometry", "dG1G2", "0.75");
  settings.SaveSetting("KORU", "Graphics", "PaperName", "letter");
  settings.SaveSetting("KORU", "SerPort", "txrx", "fast");
  settings.SaveSetting("KORU", "Geometry", "dCenters", "half a metre");
  start();
  EXPECT_EQ(settings.GetSetting("KORU", "General", "Language", ""), "Italiano");
  EXPECT_FALSE(settings.contains("KORU", "Geometry", "dHAMMER"));
  EXPECT_FLOAT_EQ(state.sngDG1G2, 0.75f);
  EXPECT_EQ(state.strPaperName, "LETTER");
  EXPECT_EQ(state.intTxRx, 10) << "unreadable: the default";
  EXPECT_EQ(state.sngDCenters, 0.0f) << "numbers that cannot be read are 0";
}

// Every language borrows from English: without its file the start goes on with the texts there
// are, and says why the rest are missing.
TEST_F(StartupTest, AMissingEnglishFileIsToldAndAThirdLanguageKeepsItsOwnTexts) {
  ScratchFolder share;
  share.write("Language/French.h", "1 \"Un\"\r\n");
  for (const char* language : {"English", "French"}) {
    settings.SaveSetting("KORU", "General", "Language", language);
    state.folders.dataRoot = root.path();
    state.folders.shareDir = share.path();
    report = startUp(state, settings, prompts);
    ASSERT_EQ(report.problems.size(), 1u) << language;
    EXPECT_EQ(report.problems[0].file, share / "Language/English.h");
  }
  EXPECT_EQ(state.strings->getString(1), "Un");
}

}  // namespace
}  // namespace koru
