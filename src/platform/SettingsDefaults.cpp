#include "platform/SettingsDefaults.h"

#include "platform/AtomicFile.h"
#include "platform/RegularFile.h"

#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QStandardPaths>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <system_error>

#include <sys/stat.h>

using namespace Qt::StringLiterals;

namespace quorbit {

namespace {

constexpr qint64 longestFile = 65'536;

[[noreturn]] void fail(std::errc error, const char *operation) {
    throw std::system_error(std::make_error_code(error), operation);
}

/// Whether there certainly is nothing, not even something that may not be looked at.
bool isFree(const QString &path) {
    struct stat status {};
    return ::stat(QFile::encodeName(path).constData(), &status) != 0 && errno == ENOENT;
}

/// The file that a path leads to, which need not be there.
QFileInfo withoutLinks(const QString &path) {
    QFileInfo file(path);
    for (int links = 0; file.isSymLink(); ++links) {
        if (links == 40) // as the system itself counts
            fail(std::errc::too_many_symbolic_link_levels, "follow the link");
        file.setFile(file.symLinkTarget());
        if (!QFileInfo::exists(file.path())) // perhaps on a disk that is to be mounted there
            fail(std::errc::no_such_file_or_directory, "find the link's folder");
    }
    return file;
}

} // namespace

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
           u"/Quorbit/settings.json"_s;
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
    if (!bytes && !isFree(path_))
        return false;
    const QJsonDocument document = QJsonDocument::fromJson(bytes.value_or(QByteArray()));
    stored_ = document.object();
    isBroken_ = bytes && !bytes->trimmed().isEmpty() && !document.isObject();
    return true;
}

bool SettingsDefaults::synchronize() {
    writing_.stop();
    // Read again first, so that what another hand has written since is kept.
    if (!read())
        return false;
    if (changes_.empty())
        return true;
    QJsonObject next = stored_;
    for (const auto &[key, value] : changes_)
        next.insert(key, value); // which removes the key when the value is undefined
    try {
        write(QJsonDocument(next).toJson());
    } catch (const std::system_error &) {
        return false;
    }
    stored_ = next;
    changes_.clear();
    return true;
}

void SettingsDefaults::write(const QByteArray &contents) const {
    if (contents.size() > longestFile)
        fail(std::errc::file_too_large, "write what could not be read again");
    const QFileInfo old = withoutLinks(path_);
    AtomicFile file(old.path());
    if (old.exists()) {
        if (!old.isWritable())
            fail(std::errc::permission_denied, "replace the file");
        file.copyPermissions(old.filePath());
    }
    file.write(contents);
    file.bringToDisk();
    if (isBroken_) {
        const QByteArray name = QFile::encodeName(old.filePath());
        if (std::rename(name.constData(), (name + ".broken").constData()) != 0)
            throw std::system_error(errno, std::generic_category(), "keep the broken file");
    }
    file.takeName(old.fileName());
}

} // namespace quorbit
