#pragma once
// Settings in the platform's native store (QSettings), organisation and application "KORU".
// Sections become groups; an INI file can be named instead, for portable installs and tests.

#include <memory>
#include <string>

#include "frame/SettingsStore.h"

class QSettings;

namespace koru {

class QtSettingsStore : public SettingsStore {
 public:
  QtSettingsStore();                                    // the user's native store
  explicit QtSettingsStore(const std::string& iniFile);  // an INI file
  ~QtSettingsStore() override;

  std::string GetSetting(std::string_view app, std::string_view section, std::string_view key,
                         std::string_view defaultValue) const override;
  void SaveSetting(std::string_view app, std::string_view section, std::string_view key,
                   std::string_view value) override;
  void DeleteSetting(std::string_view app, std::string_view section, std::string_view key) override;
  void sync();

 private:
  std::unique_ptr<QSettings> settings_;
};

}  // namespace koru
