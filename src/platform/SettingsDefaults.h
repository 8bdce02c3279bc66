#pragma once

#include "platform/UserDefaults.h"

#include <QJsonObject>
#include <QJsonValue>
#include <QTimer>

#include <map>
#include <optional>

namespace quorbit {

/// User defaults in a JSON file, of which all but the keys that are set stays as it is. What lies in the
/// file's place is never waited for and, unless it can be read as a file, never replaced; a link stays, and
/// the file that it leads to is replaced. A file that holds something else than an object is kept beside the
/// new one, with ".broken" after its name.
class SettingsDefaults : public UserDefaults {
public:
    explicit SettingsDefaults(const QString &file = userFile());
    ~SettingsDefaults() override;
    SettingsDefaults(const SettingsDefaults &) = delete;
    SettingsDefaults &operator=(const SettingsDefaults &) = delete;

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
    bool synchronize() override;

private:
    /// Undefined when it is absent.
    QJsonValue value(const QString &key) const;
    /// An undefined value removes the key.
    void change(const QString &key, const QJsonValue &value);
    /// Whether there is a file that can be read, or nothing at all.
    bool read();
    /// Throws std::system_error.
    void write(const QByteArray &contents) const;

    QString path_;
    QJsonObject stored_; ///< as it was last read
    bool isBroken_ = false;
    std::map<QString, QJsonValue> changes_; ///< since the last writing
    QTimer writing_;
};

} // namespace quorbit
