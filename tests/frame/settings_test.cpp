#include <gtest/gtest.h>

#include "frame/MemorySettingsStore.h"

namespace koru {
namespace {

TEST(MemorySettings, ReadsGiveTheDefaultUntilSaved) {
  MemorySettingsStore store;
  EXPECT_EQ(store.GetSetting("KORU", "General", "FIRM", "FIRM"), "FIRM");
  store.SaveSetting("KORU", "General", "FIRM", "Acme Geo");
  EXPECT_EQ(store.GetSetting("KORU", "General", "FIRM", "FIRM"), "Acme Geo");
}

TEST(MemorySettings, KeysAreAddressedByApplicationSectionAndKey) {
  MemorySettingsStore store;
  store.SaveSetting("KORU", "SerPort", "Number", "3");
  EXPECT_EQ(store.GetSetting("KORU", "Geometry", "Number", "1"), "1");
  EXPECT_EQ(store.GetSetting("OTHER", "SerPort", "Number", "1"), "1");
  store.DeleteSetting("KORU", "SerPort", "Number");
  store.DeleteSetting("KORU", "SerPort", "Number");  // a second delete is harmless
  EXPECT_EQ(store.GetSetting("KORU", "SerPort", "Number", "1"), "1");
}

TEST(MemorySettings, AnEmptyValueIsAValueNotAMissingKey) {
  MemorySettingsStore store;
  store.SaveSetting("KORU", "General", "Language", "");
  EXPECT_EQ(store.GetSetting("KORU", "General", "Language", "English"), "");
}

}  // namespace
}  // namespace koru
