#include "update/Version.h"

#include <algorithm>
#include <charconv>

using namespace Qt::StringLiterals;

namespace quorbit {

namespace {

/// Strict, unlike QString::toLongLong, which lets surrounding spaces pass.
qint64 componentOf(const QString &text) {
    const QByteArray bytes = text.toUtf8();
    const char *begin = bytes.begin();
    // from_chars knows no leading plus, and a minus after one would be a second sign.
    if (bytes.startsWith('+') && !bytes.startsWith("+-"))
        ++begin;
    qint64 number = 0;
    const auto [end, error] = std::from_chars(begin, bytes.end(), number);
    return error == std::errc() && end == bytes.end() ? number : 0;
}

} // namespace

std::vector<qint64> version::parse(const QString &text) {
    const QStringList pieces = text.split(u'-', Qt::SkipEmptyParts);
    const QString number = pieces.isEmpty() ? text : pieces.first();
    std::vector<qint64> components;
    for (const QString &piece : number.split(u'.', Qt::SkipEmptyParts))
        components.push_back(componentOf(piece));
    return components;
}

bool version::compare(const QString &version, const QString &isNewerThan) {
    std::vector<qint64> left = parse(version);
    std::vector<qint64> right = parse(isNewerThan);
    const std::size_t length = std::max(left.size(), right.size());
    left.resize(length);
    right.resize(length);
    return left > right;
}

std::optional<QString> pickNotes(const std::optional<Manifest::Notes> &notes, const QStringList &languages) {
    if (!notes)
        return std::nullopt;
    const QString language = languages.value(0, u"en"_s);
    if (language.startsWith(u"zh") && notes->zh && !notes->zh->isEmpty())
        return notes->zh;
    return notes->en ? notes->en : notes->zh;
}

} // namespace quorbit
