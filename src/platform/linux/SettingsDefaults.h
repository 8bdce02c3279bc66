#pragma once

#include "platform/UserDefaults.h"

#include <QByteArrayList>
#include <QTimer>

#include <map>
#include <optional>

namespace quorbit {

/// User defaults in an INI file, of which all but the keys that are set stays as it is. What lies in the
/// file's place is never waited for and, unless it can be read as a file, never replaced.
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
    void synchronize() override;

private:
    /// As written after the "=".
    std::optional<QByteArray> text(const QString &key) const;
    /// The words of a value; none when it is absent or of a kind that nothing here stores.
    QStringList words(const QString &key) const;
    void change(const QString &key, std::optional<QByteArray> text);
    bool read();

    QString path_;
    QByteArrayList lines_; ///< as they were last read
    std::map<QString, std::optional<QByteArray>> changes_;
    QTimer writing_;
};

} // namespace quorbit
