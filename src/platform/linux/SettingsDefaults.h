#pragma once

#include "platform/UserDefaults.h"

#include <QSettings>

namespace quorbit {

/// User defaults in an INI file.
class SettingsDefaults : public UserDefaults {
public:
    explicit SettingsDefaults(const QString &file = userFile());

    /// The program's file in the user's configuration folder.
    static QString userFile();

    bool contains(const QString &key) const override;
    QString string(const QString &key) const override;
    QStringList strings(const QString &key) const override;
    qint64 integer(const QString &key) const override;
    double real(const QString &key) const override;

    void set(const QString &key, const QString &value) override;
    void set(const QString &key, const QStringList &value) override;
    void set(const QString &key, qint64 value) override;
    void set(const QString &key, double value) override;
    void remove(const QString &key) override;
    void synchronize() override;

private:
    QSettings settings_;
};

} // namespace quorbit
