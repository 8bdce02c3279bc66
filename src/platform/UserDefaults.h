#pragma once

#include <QString>
#include <QStringList>

namespace quorbit {

/// The user's own small settings of this program. Reading a key that is absent or of another type yields the
/// neutral value, and nothing here fails loudly: settings that cannot be stored hold for this run.
class UserDefaults {
public:
    virtual ~UserDefaults() = default;

    virtual bool contains(const QString &key) const = 0;
    virtual QString string(const QString &key) const = 0;
    virtual QStringList strings(const QString &key) const = 0;
    virtual qint64 integer(const QString &key) const = 0;
    virtual double real(const QString &key) const = 0;

    virtual void set(const QString &key, const QString &value) = 0;
    virtual void set(const QString &key, const QStringList &value) = 0;
    virtual void set(const QString &key, qint64 value) = 0;
    virtual void set(const QString &key, double value) = 0;
    virtual void remove(const QString &key) = 0;
    /// Reads what is stored, writes everything through to it before it returns, and tells whether both
    /// succeeded: only then is a value that is absent here known to be stored nowhere.
    virtual bool synchronize() = 0;
};

} // namespace quorbit
