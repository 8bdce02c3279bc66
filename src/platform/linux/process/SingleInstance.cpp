#include "platform/linux/process/SingleInstance.h"

#include <QByteArrayList>
#include <QDir>
#include <QFile>
#include <QLocalServer>
#include <QLocalSocket>
#include <QStandardPaths>
#include <QSysInfo>
#include <QTimer>

#include <csignal>
#include <thread>

#include <fcntl.h>
#include <poll.h>
extern "C" { // missing from the header of glibc 2.36
#include <sys/pidfd.h>
}
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace quorbit {

using namespace std::chrono_literals;
using std::chrono::steady_clock;

namespace {

constexpr auto lockName = "instance.lock";
constexpr auto socketName = "instance.socket";
constexpr auto accepted = "accepted\n";
constexpr qsizetype longestRequest = 4096;
constexpr std::size_t mostClients = 16;

void closeDescriptor(int &descriptor) {
    if (descriptor >= 0)
        ::close(descriptor);
    descriptor = -1;
}

/// sun_path holds 108 bytes at most; by way of /proc/self/fd the path is short, wherever the folder lies.
sockaddr_un socketAddress(int folder) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    qsnprintf(address.sun_path, sizeof address.sun_path, "/proc/self/fd/%d/%s", folder, socketName);
    return address;
}

int unixSocket() {
    return ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
}

struct flock wholeFile() {
    struct flock lock {};
    lock.l_type = F_WRLCK;
    lock.l_whence = SEEK_SET;
    return lock;
}

/// The process that holds the lock, as the kernel knows it; 0 when none does.
pid_t holder(int lockFile) {
    struct flock lock = wholeFile();
    return ::fcntl(lockFile, F_GETLK, &lock) == 0 && lock.l_type != F_UNLCK ? lock.l_pid : 0;
}

int milliseconds(steady_clock::duration duration) {
    return std::max(0, static_cast<int>(std::chrono::ceil<std::chrono::milliseconds>(duration).count()));
}

bool makePrivate(const QString &path) {
    const QByteArray name = QFile::encodeName(path);
    ::mkdir(name.constData(), S_IRWXU);
    struct stat status {};
    return ::lstat(name.constData(), &status) == 0 && S_ISDIR(status.st_mode) &&
           status.st_uid == ::geteuid() &&
           ((status.st_mode & (S_IRWXG | S_IRWXO)) == 0 || ::chmod(name.constData(), S_IRWXU) == 0);
}

bool isOwn(const QString &path) {
    struct stat status {};
    return path.startsWith(u'/') && ::stat(QFile::encodeName(path).constData(), &status) == 0 &&
           status.st_uid == ::geteuid() && (status.st_mode & (S_IWGRP | S_IWOTH)) == 0;
}

/// Tab and line end separate; no token has them.
QByteArray word(QByteArray token) {
    return token.replace('\t', "").replace('\n', "");
}

} // namespace

StartRequest StartRequest::fromEnvironment() {
    return {qgetenv("XDG_ACTIVATION_TOKEN"), qgetenv("DESKTOP_STARTUP_ID")};
}

std::optional<quint32> StartRequest::timestamp() const {
    const qsizetype at = startupId.lastIndexOf("_TIME");
    bool isNumber = false;
    const quint32 time = at < 0 ? 0 : startupId.mid(at + 5).toUInt(&isNumber);
    return isNumber ? std::optional(time) : std::nullopt;
}

SingleInstance::SingleInstance(std::optional<QString> folder, std::chrono::milliseconds timeout)
    : timeout_(timeout) {
    if (!folder)
        return;
    folder_ = ::open(QFile::encodeName(*folder).constData(), O_PATH | O_DIRECTORY | O_CLOEXEC);
    if (folder_ >= 0)
        lock_ = ::openat(folder_, lockName, O_RDWR | O_CREAT | O_NOFOLLOW | O_CLOEXEC, S_IRUSR | S_IWUSR);
}

SingleInstance::~SingleInstance() {
    close();
    closeDescriptor(folder_);
    // The lock stays until the process has ended, whatever is still being cleaned up.
}

std::optional<QString> SingleInstance::userFolder() {
    const QString session = qEnvironmentVariable("XDG_RUNTIME_DIR");
    const QString login = u"/run/user/%1"_s.arg(::geteuid());
    for (const QString &parent : {session, login}) {
        const QString folder = parent + u"/quorbit"_s;
        if (isOwn(parent) && makePrivate(folder))
            return folder;
    }
    // A home may be shared by computers, on each of which the user may run the program.
    const QString cache = QStandardPaths::writableLocation(QStandardPaths::GenericCacheLocation);
    const QString folder =
        u"%1/Quorbit/%2"_s.arg(cache, QString::fromLatin1(QSysInfo::machineHostName().toUtf8().toHex()));
    if (QDir().mkpath(folder) && makePrivate(folder))
        return folder;
    return std::nullopt;
}

SingleInstance::Role SingleInstance::claim(const StartRequest &request) {
    if (lock_ < 0)
        return Role::first;
    Deadline deadline = steady_clock::now() + timeout_;
    bool endedHolder = false;
    while (!lock()) {
        if (!endedHolder && deliver(request, deadline))
            return Role::second;
        if (steady_clock::now() >= deadline) {
            if (endedHolder)
                return Role::first; // It cannot even be killed, and the user wants the program.
            endHolder();
            endedHolder = true;
            deadline = steady_clock::now() + 500ms;
        }
        std::this_thread::sleep_for(20ms);
    }
    openSocket();
    return Role::first;
}

bool SingleInstance::lock() {
    struct flock request = wholeFile();
    return ::fcntl(lock_, F_SETLK, &request) == 0;
}

void SingleInstance::openSocket() {
    ::unlinkat(folder_, socketName, 0);
    socket_ = unixSocket();
    const sockaddr_un address = socketAddress(folder_);
    constexpr int waitingStarts = 16;
    // fchmod() before bind(): at no moment has the socket a name and wider permissions.
    ::fchmod(socket_, S_IRUSR | S_IWUSR);
    if (::bind(socket_, reinterpret_cast<const sockaddr *>(&address), sizeof address) != 0 ||
        ::listen(socket_, waitingStarts) != 0)
        closeDescriptor(socket_);
}

bool SingleInstance::deliver(const StartRequest &request, Deadline deadline) const {
    int server = unixSocket();
    const sockaddr_un address = socketAddress(folder_);
    const QByteArray message =
        "open\t" + word(request.activationToken) + '\t' + word(request.startupId) + '\n';
    bool isAccepted = false;
    if (::connect(server, reinterpret_cast<const sockaddr *>(&address), sizeof address) == 0 &&
        ::send(server, message.constData(), static_cast<std::size_t>(message.size()), MSG_NOSIGNAL) ==
            message.size()) {
        pollfd answer{server, POLLIN, 0};
        char first = 0;
        isAccepted = ::poll(&answer, 1, milliseconds(deadline - steady_clock::now())) == 1 &&
                     ::recv(server, &first, 1, 0) == 1;
    }
    closeDescriptor(server);
    return isAccepted;
}

void SingleInstance::endHolder() const {
    const pid_t process = holder(lock_);
    int descriptor = process > 0 ? ::pidfd_open(process, 0) : -1;
    // Process ids are reused: only if the kernel still names this one, the descriptor is the holder's.
    if (descriptor >= 0 && holder(lock_) == process) {
        for (const int signal : {SIGTERM, SIGKILL}) {
            ::pidfd_send_signal(descriptor, signal, nullptr, 0);
            pollfd end{descriptor, POLLIN, 0};
            if (::poll(&end, 1, milliseconds(1s)) == 1)
                break;
        }
    }
    closeDescriptor(descriptor);
}

void SingleInstance::listen() {
    if (socket_ < 0)
        return;
    server_ = new QLocalServer(this);
    if (!server_->listen(socket_))
        return;
    connect(server_, &QLocalServer::newConnection, this, [this] {
        while (QLocalSocket *client = server_->nextPendingConnection())
            serve(client);
    });
}

void SingleInstance::serve(QLocalSocket *client) {
    // Whoever opens many and says nothing makes room for a start that is waiting.
    clients_.emplace_back(client);
    if (clients_.size() > mostClients) {
        delete clients_.front();
        clients_.pop_front();
    }
    connect(client, &QLocalSocket::disconnected, client, &QObject::deleteLater);
    QTimer::singleShot(5s, client, &QLocalSocket::abort);
    connect(client, &QLocalSocket::readyRead, this, [this, client] {
        if (client->bytesAvailable() > longestRequest) {
            client->abort();
        } else if (client->canReadLine()) {
            const QByteArrayList words = client->readLine().chopped(1).split('\t');
            if (words.size() == 3 && words[0] == "open") {
                client->write(accepted);
                Q_EMIT startedAgain({words[1], words[2]});
            }
            client->disconnectFromServer();
        }
    });
}

void SingleInstance::close() {
    if (socket_ < 0)
        return;
    // While the lock is held the name is this instance's own.
    ::unlinkat(folder_, socketName, 0);
    if (server_)
        server_->close();
    else
        closeDescriptor(socket_);
    socket_ = -1;
}

} // namespace quorbit
