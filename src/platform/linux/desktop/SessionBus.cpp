#include "platform/linux/desktop/SessionBus.h"

#include <QByteArray>
#include <QByteArrayList>

#include <cstddef>
#include <cstring>

#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace quorbit {

namespace {

class Socket {
public:
    Socket() : descriptor_(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0)) {}
    ~Socket() {
        if (descriptor_ >= 0)
            ::close(descriptor_);
    }
    Socket(const Socket &) = delete;
    Socket &operator=(const Socket &) = delete;

    int descriptor() const { return descriptor_; }

private:
    int descriptor_;
};

QByteArray busAddress() {
    QByteArray address = qgetenv("DBUS_SESSION_BUS_ADDRESS");
    if (!address.isEmpty())
        return address;
    const QByteArray folder = qgetenv("XDG_RUNTIME_DIR");
    return folder.isEmpty() ? QByteArray() : "unix:path=" + folder + "/bus";
}

/// The name of the socket in an address such as "unix:path=/run/user/1000/bus,guid=1f"; an abstract one
/// starts with a null byte.
QByteArray socketName(const QByteArray &address) {
    const QByteArrayList pairs = address.mid(address.indexOf(':') + 1).split(',');
    for (const QByteArray &pair : pairs) {
        if (pair.startsWith("path="))
            return QByteArray::fromPercentEncoding(pair.mid(5));
        if (pair.startsWith("abstract="))
            return '\0' + QByteArray::fromPercentEncoding(pair.mid(9));
    }
    return {};
}

bool answers(const QByteArray &name, std::chrono::milliseconds timeout) {
    sockaddr_un address{};
    const auto length = static_cast<std::size_t>(name.size());
    if (length == 0 || length >= sizeof address.sun_path)
        return false;
    address.sun_family = AF_UNIX;
    std::memcpy(address.sun_path, name.constData(), length);
    const auto size = static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + length + (name[0] ? 1 : 0));

    const Socket socket;
    if (::connect(socket.descriptor(), reinterpret_cast<const sockaddr *>(&address), size) != 0)
        return false;
    const QByteArray greeting =
        '\0' + QByteArray("AUTH EXTERNAL ") + QByteArray::number(getuid()).toHex() + "\r\n";
    if (::send(socket.descriptor(), greeting.constData(), static_cast<std::size_t>(greeting.size()),
               MSG_NOSIGNAL) != greeting.size())
        return false;
    pollfd reply{socket.descriptor(), POLLIN, 0};
    char first = 0;
    return ::poll(&reply, 1, static_cast<int>(timeout.count())) == 1 &&
           ::recv(socket.descriptor(), &first, 1, 0) == 1;
}

} // namespace

bool sessionBusAnswers(std::chrono::milliseconds timeout) {
    const QByteArrayList addresses = busAddress().split(';');
    for (const QByteArray &address : addresses) {
        if (address.startsWith("unix:")) {
            if (answers(socketName(address), timeout))
                return true;
        } else if (address.startsWith("tcp:") || address.startsWith("unixexec:")) {
            return true; // Rare, and not to be tried out in passing.
        }
    }
    return false;
}

void forgoSessionBus() {
    qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/dev/null");
}

} // namespace quorbit
