#pragma once

#include <QString>

#include <memory>

class QSettings;

namespace velmorak {

// Per-user section/key store (GetSetting / SaveSetting).
class Settings {
  public:
    virtual ~Settings() = default;
    virtual QString get(const QString& section, const QString& key,
                        const QString& def = QString()) const = 0;
    virtual void save(const QString& section, const QString& key, const QString& value) = 0;
};

// QSettings under organization and application "Velmorak": the registry on Windows,
// $XDG_CONFIG_HOME/Velmorak/Velmorak.conf on Linux.
class QtSettingsStore : public Settings {
  public:
    QtSettingsStore();
    // A given ini file, for tests and portable installs.
    explicit QtSettingsStore(const QString& iniPath);
    ~QtSettingsStore() override;
    QString get(const QString& section, const QString& key,
                const QString& def = QString()) const override;
    void save(const QString& section, const QString& key, const QString& value) override;
    QString fileName() const;

  private:
    std::unique_ptr<QSettings> s_;
};

} // namespace velmorak
