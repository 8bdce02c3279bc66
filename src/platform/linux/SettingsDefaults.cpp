#include "platform/linux/SettingsDefaults.h"

#include "platform/RegularFile.h"

#include <QDir>
#include <QFileInfo>
#include <QSaveFile>
#include <QStandardPaths>

#include <algorithm>
#include <cmath>

namespace quorbit {

namespace {

constexpr qint64 longestFile = 64 * 1024;
constexpr auto section = "[General]";

/// The place of the key's line, or where it would have to stand: -1 without its section.
struct Place {
    qsizetype line = -1;
    bool isThere = false;
};

Place find(const QByteArrayList &lines, const QString &key) {
    Place place;
    bool inSection = false;
    for (qsizetype i = 0; i < lines.size(); ++i) {
        const QByteArray line = lines[i].trimmed();
        if (line.startsWith('[')) {
            inSection = line == section;
        } else if (inSection && QString::fromUtf8(line.left(line.indexOf('=')).trimmed()) == key &&
                   line.contains('=')) {
            return {i, true};
        }
        if (inSection && !line.isEmpty())
            place.line = i + 1;
    }
    return place;
}

void apply(QByteArrayList &lines, const QString &key, const std::optional<QByteArray> &text) {
    Place place = find(lines, key);
    if (place.isThere)
        lines.removeAt(place.line);
    if (!text)
        return;
    if (place.line < 0) {
        lines.append(section);
        place.line = lines.size();
    }
    lines.insert(place.line, key.toUtf8() + '=' + *text);
}

QByteArray quoted(const QString &word) {
    QByteArray text = word.toUtf8();
    const bool isPlain = text == text.trimmed() && !text.startsWith('@') &&
                         std::none_of(text.begin(), text.end(), [](char character) {
                             return character == ',' || character == ';' || character == '"' ||
                                    character == '\\' || static_cast<unsigned char>(character) < 0x20;
                         });
    if (isPlain)
        return text;
    text.replace('\\', "\\\\").replace('"', "\\\"").replace('\n', "\\n");
    return '"' + text + '"';
}

/// Words between commas; a quoted one may hold commas, and what follows a backslash.
QStringList split(const QByteArray &text) {
    QStringList words;
    QByteArray word;
    bool isQuoted = false;
    bool wasQuoted = false;
    const auto finish = [&] {
        words.append(QString::fromUtf8(wasQuoted ? word : word.trimmed()));
        word.clear();
        wasQuoted = false;
    };
    for (qsizetype i = 0; i < text.size(); ++i) {
        const char character = text[i];
        if (character == '\\' && i + 1 < text.size()) {
            const char escaped = text[++i];
            word += escaped == 'n' ? '\n' : escaped;
        } else if (character == '"') {
            isQuoted = !isQuoted;
            word = wasQuoted ? word : word.trimmed();
            wasQuoted = true;
        } else if (character == ',' && !isQuoted) {
            finish();
        } else if (isQuoted || !wasQuoted) {
            word += character;
        }
    }
    finish();
    return words;
}

} // namespace

SettingsDefaults::SettingsDefaults(const QString &file) : path_(file) {
    read();
    writing_.setSingleShot(true);
    QObject::connect(&writing_, &QTimer::timeout, &writing_, [this] { synchronize(); });
}

SettingsDefaults::~SettingsDefaults() {
    SettingsDefaults::synchronize();
}

QString SettingsDefaults::userFile() {
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
           QStringLiteral("/Quorbit/Quorbit.conf");
}

std::optional<QByteArray> SettingsDefaults::text(const QString &key) const {
    if (const auto change = changes_.find(key); change != changes_.end())
        return change->second;
    const Place place = find(lines_, key);
    if (!place.isThere)
        return std::nullopt;
    const QByteArray &line = lines_[place.line];
    return line.mid(line.indexOf('=') + 1).trimmed();
}

QStringList SettingsDefaults::words(const QString &key) const {
    const auto value = text(key);
    // So are marked what other programs store in such files: rectangles, dates and the like.
    return value && !value->startsWith('@') ? split(*value) : QStringList();
}

bool SettingsDefaults::contains(const QString &key) const {
    return text(key).has_value();
}

QString SettingsDefaults::string(const QString &key) const {
    const QStringList found = words(key);
    return found.size() == 1 ? found.front() : QString();
}

QStringList SettingsDefaults::strings(const QString &key) const {
    return words(key);
}

qint64 SettingsDefaults::integer(const QString &key) const {
    return string(key).toLongLong();
}

double SettingsDefaults::real(const QString &key) const {
    const double number = string(key).toDouble();
    return std::isfinite(number) ? number : 0;
}

void SettingsDefaults::change(const QString &key, std::optional<QByteArray> value) {
    if (text(key) == value)
        return;
    changes_[key] = std::move(value);
    writing_.start(0);
}

void SettingsDefaults::set(const QString &key, const QString &value) {
    change(key, quoted(value));
}
void SettingsDefaults::set(const QString &key, const QStringList &value) {
    QByteArrayList quotedWords;
    for (const QString &word : value)
        quotedWords.append(quoted(word));
    change(key, quotedWords.join(", "));
}
void SettingsDefaults::set(const QString &key, qint64 value) {
    change(key, QByteArray::number(value));
}
void SettingsDefaults::set(const QString &key, double value) {
    change(key, QByteArray::number(value, 'g', QLocale::FloatingPointShortest));
}
void SettingsDefaults::remove(const QString &key) {
    change(key, std::nullopt);
}

bool SettingsDefaults::read() {
    const auto bytes = readRegularFile(path_, longestFile);
    if (!bytes && QFileInfo::exists(path_))
        return false;
    lines_ = bytes ? bytes->split('\n') : QByteArrayList();
    if (!lines_.isEmpty() && lines_.back().isEmpty())
        lines_.removeLast();
    return true;
}

void SettingsDefaults::synchronize() {
    writing_.stop();
    // Read again first, so that what another hand has written since is kept.
    if (changes_.empty() || !read())
        return;
    QByteArrayList lines = lines_;
    for (const auto &[key, value] : changes_)
        apply(lines, key, value);
    QDir().mkpath(QFileInfo(path_).path());
    QSaveFile file(path_); // The old file stays until the new one is complete.
    if (!file.open(QIODevice::WriteOnly))
        return;
    file.write(lines.join('\n') + '\n');
    if (!file.commit())
        return;
    lines_ = std::move(lines);
    changes_.clear();
}

} // namespace quorbit
