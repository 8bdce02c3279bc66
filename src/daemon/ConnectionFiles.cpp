#include "daemon/ConnectionFiles.h"

#include "platform/RegularFile.h"

#include <QStringDecoder>

using namespace Qt::StringLiterals;

namespace quorbit {

namespace {

constexpr qint64 maximumSize = 65'536;

std::optional<QString> readText(const QString &path) {
    const auto bytes = readRegularFile(path, maximumSize);
    if (!bytes)
        return std::nullopt;
    // Stateless, so that a character cut off at the end counts as an error.
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    QString text = decoder.decode(*bytes);
    if (decoder.hasError())
        return std::nullopt;
    return text;
}

} // namespace

std::optional<ConnectionInfo> readConnectionFiles(const QString &homeDirectory) {
    const QString folder = homeDirectory + "/Library/Application Support/Quorbit/"_L1;
    const auto address = readText(folder + "ui-url"_L1);
    const auto token = readText(folder + "ui-token"_L1);
    if (!address || !token)
        return std::nullopt;

    const QString trimmed = address->trimmed();
    const QStringList pieces = trimmed.split(u'?', Qt::SkipEmptyParts);
    const QUrl url(pieces.isEmpty() ? trimmed : pieces.first(), QUrl::StrictMode);
    if (!url.isValid())
        return std::nullopt;
    return ConnectionInfo{url, token->trimmed()};
}

} // namespace quorbit
