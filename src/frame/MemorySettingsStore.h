#pragma once
// Settings held in memory only: for runs that must not read or change the user's settings
// (command-line batch work, tests).

#include <map>
#include <string>
#include <tuple>

#include "frame/SettingsStore.h"

namespace koru {

class MemorySettingsStore : public SettingsStore {
 public:
  std::string GetSetting(std::string_view app, std::string_view section, std::string_view key,
                         std::string_view defaultValue) const override;
  void SaveSetting(std::string_view app, std::string_view section, std::string_view key,
                   std::string_view value) override;
  void DeleteSetting(std::string_view app, std::string_view section, std::string_view key) override;

  bool contains(std::string_view app, std::string_view section, std::string_view key) const;
  size_t size() const { return values_.size(); }

 private:
  using Key = std::tuple<std::string, std::string, std::string>;
  std::map<Key, std::string> values_;
};

}  // namespace koru
