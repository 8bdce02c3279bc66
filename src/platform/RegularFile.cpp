#include "platform/RegularFile.h"

#include <QFile>

#include <fcntl.h>
#include <sys/stat.h>

namespace quorbit {

std::optional<QByteArray> readRegularFile(const QString &path, qint64 maximumSize) {
    // O_NONBLOCK: a pipe would otherwise hold the program until somebody writes to it.
    const int descriptor =
        ::open(QFile::encodeName(path).constData(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
    QFile file;
    if (descriptor < 0 || !file.open(descriptor, QFile::ReadOnly, QFile::AutoCloseHandle))
        return std::nullopt;
    struct stat kind {};
    if (::fstat(descriptor, &kind) != 0 || !S_ISREG(kind.st_mode))
        return std::nullopt;
    QByteArray bytes = file.read(maximumSize + 1);
    if (file.error() != QFile::NoError || bytes.size() > maximumSize)
        return std::nullopt;
    return bytes;
}

} // namespace quorbit
