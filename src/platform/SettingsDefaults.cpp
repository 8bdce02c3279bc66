#include "platform/SettingsDefaults.h"

#include "platform/RegularFile.h"

#include <QDir>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QSaveFile>
#include <QStandardPaths>

#include <algorithm>

namespace quorbit {

namespace {
constexpr qint64 longestFile = 65'536;
}

SettingsDefaults::SettingsDefaults(const QString &file) : path_(file) {
    read();
    // At the end of the turn, so that several changes are written at once.
    writing_.setSingleShot(true);
    QObject::connect(&writing_, &QTimer::timeout, &writing_, [this] { synchronize(); });
}

SettingsDefaults::~SettingsDefaults() {
    SettingsDefaults::synchronize();
}

QString SettingsDefaults::userFile() {
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
           QStringLiteral("/Quorbit/settings.json");
}

QJsonValue SettingsDefaults::value(const QString &key) const {
    const auto changed = changes_.find(key);
    return changed != changes_.end() ? changed->second : stored_.value(key);
}

bool SettingsDefaults::contains(const QString &key) const {
    return !value(key).isUndefined();
}

QString SettingsDefaults::string(const QString &key) const {
    return value(key).toString();
}

QStringList SettingsDefaults::strings(const QString &key) const {
    const QJsonArray array = value(key).toArray();
    if (!std::all_of(array.begin(), array.end(), [](const QJsonValue &each) { return each.isString(); }))
        return {};
    return QVariant(array.toVariantList()).toStringList();
}

qint64 SettingsDefaults::integer(const QString &key) const {
    return value(key).toInteger();
}

double SettingsDefaults::real(const QString &key) const {
    return value(key).toDouble();
}

void SettingsDefaults::set(const QString &key, const QString &value) {
    change(key, value);
}
void SettingsDefaults::set(const QString &key, const QStringList &value) {
    change(key, QJsonArray::fromStringList(value));
}
void SettingsDefaults::set(const QString &key, qint64 value) {
    change(key, value);
}
void SettingsDefaults::set(const QString &key, double value) {
    change(key, value);
}
void SettingsDefaults::remove(const QString &key) {
    change(key, QJsonValue::Undefined);
}

void SettingsDefaults::change(const QString &key, const QJsonValue &value) {
    if (this->value(key) == value)
        return;
    changes_.insert_or_assign(key, value);
    writing_.start(0);
}

bool SettingsDefaults::read() {
    const auto bytes = readRegularFile(path_, longestFile);
    if (!bytes && QFileInfo::exists(path_))
        return false;
    const QJsonDocument document = QJsonDocument::fromJson(bytes.value_or(QByteArray()));
    stored_ = document.object();
    isBroken_ = bytes && !bytes->trimmed().isEmpty() && !document.isObject();
    return true;
}

void SettingsDefaults::synchronize() {
    writing_.stop();
    // Read again first, so that what another hand has written since is kept.
    if (changes_.empty() || !read())
        return;
    QJsonObject next = stored_;
    for (const auto &[key, value] : changes_)
        next.insert(key, value); // which removes the key when the value is undefined
    QDir().mkpath(QFileInfo(path_).path());
    QSaveFile file(path_); // The old file stays until the new one is complete.
    if (!file.open(QIODevice::WriteOnly))
        return;
    file.write(QJsonDocument(next).toJson());
    if (isBroken_)
        QFile::rename(path_, path_ + QStringLiteral(".broken"));
    if (!file.commit())
        return;
    stored_ = next;
    changes_.clear();
}

} // namespace quorbit
