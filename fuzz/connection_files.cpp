#include "Property.h"

#include "daemon/ConnectionFiles.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <fcntl.h>
#include <unistd.h>

using namespace quorbit;

namespace {

/// A home folder with connection files that are written again for every input.
class Home {
public:
    Home() {
        HOLDS(directory_.isValid());
        HOLDS(QDir(directory_.path()).mkpath(QStringLiteral("Library/Application Support/Quorbit")));
    }

    void write(const char *name, const QByteArray &bytes) const {
        const QByteArray path = folder() + name;
        const int file = ::open(path.constData(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
        HOLDS(file >= 0);
        HOLDS(::write(file, bytes.constData(), static_cast<std::size_t>(bytes.size())) == bytes.size());
        ::close(file);
    }

    QString path() const { return directory_.path(); }

private:
    QByteArray folder() const {
        return QFile::encodeName(directory_.path()) + "/Library/Application Support/Quorbit/";
    }

    // In memory where the system has such a folder; a disk would be the slowest part of a run.
    QTemporaryDir directory_{
        (QDir(QStringLiteral("/dev/shm")).exists() ? QStringLiteral("/dev/shm") : QDir::tempPath()) +
        QStringLiteral("/quorbit-fuzz-XXXXXX")};
};

} // namespace

/// The address, a zero byte, and the token.
int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    static const Home home;
    InputReader input(data, size);
    const QByteArray address = input.line();
    const QByteArray token = input.line();
    home.write("ui-url", address);
    home.write("ui-token", token);

    const auto connection = readConnectionFiles(home.path());
    if (!connection)
        return 0;
    HOLDS(connection->address.isValid());
    // An address of nothing but question marks is kept, and refused later for having no host.
    HOLDS(!connection->address.hasQuery() || connection->address.host().isEmpty());
    HOLDS(connection->token == connection->token.trimmed());
    HOLDS(connection->token == QString::fromUtf8(token).trimmed());

    // What a request can be sent to can be written and read again.
    if (connection->address.host().isEmpty() || connection->address.hasFragment())
        return 0;
    home.write("ui-url", connection->address.toEncoded());
    home.write("ui-token", connection->token.toUtf8());
    const auto again = readConnectionFiles(home.path());
    HOLDS(again && again->address == connection->address && again->token == connection->token);
    return 0;
}
