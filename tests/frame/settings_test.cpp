#include <gtest/gtest.h>

#include "frame/MemorySettingsStore.h"

namespace koru {
namespace {

TEST(MemorySettings, AnEmptyValueIsAValueNotAMissingKey) {
  MemorySettingsStore store;
  store.SaveSetting("KORU", "General", "Language", "");
  EXPECT_EQ(store.GetSetting("KORU", "General", "Language", "English"), "");
}

}  // namespace
}  // namespace koru
