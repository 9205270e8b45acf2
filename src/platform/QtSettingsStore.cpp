#include "platform/QtSettingsStore.h"

#include <QSettings>
#include <QString>

namespace koru {

namespace {

QString keyPath(std::string_view app, std::string_view section, std::string_view key) {
  // The application name leads the path so that one store can hold several applications, as
  // the window frame keys do under the program's own name.
  return QString::fromUtf8(app.data(), static_cast<qsizetype>(app.size())) + "/" +
         QString::fromUtf8(section.data(), static_cast<qsizetype>(section.size())) + "/" +
         QString::fromUtf8(key.data(), static_cast<qsizetype>(key.size()));
}

}  // namespace

QtSettingsStore::QtSettingsStore() : settings_(std::make_unique<QSettings>("KORU", "KORU")) {}

QtSettingsStore::QtSettingsStore(const std::string& iniFile)
    : settings_(std::make_unique<QSettings>(QString::fromStdString(iniFile), QSettings::IniFormat)) {}

QtSettingsStore::~QtSettingsStore() = default;

std::string QtSettingsStore::GetSetting(std::string_view app, std::string_view section, std::string_view key,
                                        std::string_view defaultValue) const {
  QVariant value = settings_->value(keyPath(app, section, key));
  if (!value.isValid()) return std::string(defaultValue);
  return value.toString().toStdString();
}

void QtSettingsStore::SaveSetting(std::string_view app, std::string_view section, std::string_view key,
                                  std::string_view value) {
  settings_->setValue(keyPath(app, section, key),
                      QString::fromUtf8(value.data(), static_cast<qsizetype>(value.size())));
}

void QtSettingsStore::DeleteSetting(std::string_view app, std::string_view section, std::string_view key) {
  settings_->remove(keyPath(app, section, key));
}

void QtSettingsStore::sync() { settings_->sync(); }

}  // namespace koru
