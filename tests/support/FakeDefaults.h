#pragma once

#include "platform/UserDefaults.h"

#include <QList>
#include <QMap>
#include <QVariant>

namespace quorbit::test {

/// User defaults in memory.
class FakeDefaults final : public UserDefaults {
public:
    QMap<QString, QVariant> values;
    int synchronizations = 0;
    QList<bool> outcomes; ///< what the next synchronizations tell; those after them succeed

    bool contains(const QString &key) const override { return values.contains(key); }
    QString string(const QString &key) const override { return read<QString>(key); }
    QStringList strings(const QString &key) const override { return read<QStringList>(key); }
    qint64 integer(const QString &key) const override { return read<qint64>(key); }
    double real(const QString &key) const override { return read<double>(key); }

    void set(const QString &key, const QString &value) override { values[key] = value; }
    void set(const QString &key, const QStringList &value) override { values[key] = value; }
    void set(const QString &key, qint64 value) override { values[key] = value; }
    void set(const QString &key, double value) override { values[key] = value; }
    void remove(const QString &key) override { values.remove(key); }
    bool synchronize() override {
        ++synchronizations;
        return outcomes.isEmpty() || outcomes.takeFirst();
    }

private:
    /// A value of another type reads as the neutral one.
    template <class T>
    T read(const QString &key) const {
        const QVariant value = values.value(key);
        return value.typeId() == qMetaTypeId<T>() ? value.value<T>() : T{};
    }
};

} // namespace quorbit::test
