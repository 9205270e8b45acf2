#include "frame/MemorySettingsStore.h"

namespace koru {

std::string MemorySettingsStore::GetSetting(std::string_view app, std::string_view section, std::string_view key,
                                            std::string_view defaultValue) const {
  auto it = values_.find(Key(app, section, key));
  return it == values_.end() ? std::string(defaultValue) : it->second;
}

void MemorySettingsStore::SaveSetting(std::string_view app, std::string_view section, std::string_view key,
                                      std::string_view value) {
  values_[Key(app, section, key)] = std::string(value);
}

void MemorySettingsStore::DeleteSetting(std::string_view app, std::string_view section, std::string_view key) {
  values_.erase(Key(app, section, key));
}

bool MemorySettingsStore::contains(std::string_view app, std::string_view section, std::string_view key) const {
  return values_.count(Key(app, section, key)) != 0;
}

}  // namespace koru
