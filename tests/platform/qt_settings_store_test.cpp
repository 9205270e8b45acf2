#include <gtest/gtest.h>

#include "platform/QtSettingsStore.h"
#include "scratch_folder.h"

namespace koru {
namespace {

TEST(QtSettings, ValuesSurviveAReopenOfTheStore) {
  testing::ScratchFolder dir;
  const std::string ini = (dir / "koru.ini").string();
  {
    QtSettingsStore store(ini);
    store.SaveSetting("KORU", "Geometry", "dG1G2", "0.75");
    store.SaveSetting("KORU", "General", "Pressure Unit", "1");
    store.SaveSetting("KORU", "Geometry", "dHAMMER", "1.5");
    store.DeleteSetting("KORU", "Geometry", "dHAMMER");
  }
  QtSettingsStore reopened(ini);
  EXPECT_EQ(reopened.GetSetting("KORU", "Geometry", "dG1G2", "0.5"), "0.75");
  EXPECT_EQ(reopened.GetSetting("KORU", "General", "Pressure Unit", "0"), "1");
  EXPECT_EQ(reopened.GetSetting("KORU", "Geometry", "dHAMMER", "none"), "none");
}

TEST(QtSettings, TextWithSpacesAndAccentsIsKeptAsIs) {
  testing::ScratchFolder dir;
  QtSettingsStore store((dir / "koru.ini").string());
  store.SaveSetting("KORU", "General", "Language", "Fran\u00e7ais");
  store.SaveSetting("KORU", "General", "FIRM", "Studio Geologico, S.r.l.");
  EXPECT_EQ(store.GetSetting("KORU", "General", "Language", ""), "Fran\u00e7ais");
  EXPECT_EQ(store.GetSetting("KORU", "General", "FIRM", ""), "Studio Geologico, S.r.l.");
}

}  // namespace
}  // namespace koru
