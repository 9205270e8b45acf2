#pragma once
// Key-value text settings addressed by (application, section, key), with a default at each read.

#include <string>
#include <string_view>

namespace koru {

class SettingsStore {
 public:
  virtual ~SettingsStore() = default;
  virtual std::string GetSetting(std::string_view app, std::string_view section, std::string_view key,
                                 std::string_view defaultValue) const = 0;
  virtual void SaveSetting(std::string_view app, std::string_view section, std::string_view key,
                           std::string_view value) = 0;
  // Removing a key that does not exist is not an error.
  virtual void DeleteSetting(std::string_view app, std::string_view section, std::string_view key) = 0;
};

// The program's own application name in the store.
inline constexpr std::string_view kSettingsApp = "KORU";

}  // namespace koru
