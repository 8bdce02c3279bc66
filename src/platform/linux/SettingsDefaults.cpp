#include "platform/linux/SettingsDefaults.h"

#include <QStandardPaths>

#include <cmath>

namespace quorbit {

namespace {

/// The file has text alone: a number is stored as its digits, and a list of one element as that element.
bool isText(const QVariant &value) {
    return value.typeId() == QMetaType::QString;
}
bool isNumber(const QVariant &value) {
    return value.typeId() == QMetaType::LongLong || value.typeId() == QMetaType::Double || isText(value);
}

} // namespace

SettingsDefaults::SettingsDefaults(const QString &file) : settings_(file, QSettings::IniFormat) {}

QString SettingsDefaults::userFile() {
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
           QStringLiteral("/Quorbit/Quorbit.conf");
}

bool SettingsDefaults::contains(const QString &key) const {
    return settings_.contains(key);
}

QString SettingsDefaults::string(const QString &key) const {
    const QVariant value = settings_.value(key);
    return isNumber(value) ? value.toString() : QString();
}

QStringList SettingsDefaults::strings(const QString &key) const {
    const QVariant value = settings_.value(key);
    return isText(value) || value.typeId() == QMetaType::QStringList ? value.toStringList() : QStringList();
}

qint64 SettingsDefaults::integer(const QString &key) const {
    const QVariant value = settings_.value(key);
    return isNumber(value) ? value.toLongLong() : 0;
}

double SettingsDefaults::real(const QString &key) const {
    const QVariant value = settings_.value(key);
    const double number = isNumber(value) ? value.toDouble() : 0;
    return std::isfinite(number) ? number : 0;
}

void SettingsDefaults::set(const QString &key, const QString &value) {
    settings_.setValue(key, value);
}
void SettingsDefaults::set(const QString &key, const QStringList &value) {
    settings_.setValue(key, value);
}
void SettingsDefaults::set(const QString &key, qint64 value) {
    settings_.setValue(key, value);
}
void SettingsDefaults::set(const QString &key, double value) {
    settings_.setValue(key, value);
}
void SettingsDefaults::remove(const QString &key) {
    // Removing what is not there would also look at the file again.
    if (settings_.contains(key))
        settings_.remove(key);
}
void SettingsDefaults::synchronize() {
    settings_.sync();
}

} // namespace quorbit
