#include "daemon/ConnectionFiles.h"

#include <QFile>
#include <QStringDecoder>

#include <fcntl.h>
#include <sys/stat.h>

namespace quorbit {

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 maximumSize = 65'536;

/// A regular file's text. Opened without blocking, because a pipe in the file's place would otherwise hold
/// the program until somebody writes to it.
std::optional<QString> readText(const QString &path) {
    const int descriptor =
        ::open(QFile::encodeName(path).constData(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
    QFile file;
    if (descriptor < 0 || !file.open(descriptor, QFile::ReadOnly, QFile::AutoCloseHandle))
        return std::nullopt;
    struct stat kind {};
    if (::fstat(descriptor, &kind) != 0 || !S_ISREG(kind.st_mode))
        return std::nullopt;

    const QByteArray bytes = file.read(maximumSize + 1);
    if (file.error() != QFile::NoError || bytes.size() > maximumSize)
        return std::nullopt;
    // Stateless, so that a character cut off at the end counts as an error.
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    QString text = decoder.decode(bytes);
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
