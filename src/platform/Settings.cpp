#include "platform/Settings.h"

#include <QSettings>

namespace velmorak {

QtSettingsStore::QtSettingsStore() : s_(std::make_unique<QSettings>("Velmorak", "Velmorak")) {}

QtSettingsStore::QtSettingsStore(const QString& iniPath)
    : s_(std::make_unique<QSettings>(iniPath, QSettings::IniFormat)) {}

QtSettingsStore::~QtSettingsStore() = default;

QString QtSettingsStore::get(const QString& section, const QString& key, const QString& def) const {
    return s_->value(section + "/" + key, def).toString();
}

void QtSettingsStore::save(const QString& section, const QString& key, const QString& value) {
    s_->setValue(section + "/" + key, value);
    s_->sync();
}

QString QtSettingsStore::fileName() const {
    return s_->fileName();
}

} // namespace velmorak
