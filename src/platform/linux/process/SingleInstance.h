#pragma once

#include <QByteArray>
#include <QObject>
#include <QPointer>

#include <chrono>
#include <deque>
#include <optional>

class QLocalServer;
class QLocalSocket;

namespace quorbit {

/// What a start of the program knows of the user's action behind it; it permits a window to come to the
/// front.
struct StartRequest {
    QByteArray activationToken; ///< XDG_ACTIVATION_TOKEN
    QByteArray startupId;       ///< DESKTOP_STARTUP_ID

    static StartRequest fromEnvironment();
    /// The X11 time of the user's action, if the start-up id tells it.
    std::optional<quint32> timestamp() const;

    bool operator==(const StartRequest &) const = default;
};

/// Lets one instance of the program run for each user. A second start hands its request to the first and
/// ends; it takes over from an instance that is on its way out, and from one that crashed or does not answer.
class SingleInstance : public QObject {
    Q_OBJECT

public:
    enum class Role { first, second };

    /// `folder` is private to the user; absent, every start is the first.
    explicit SingleInstance(std::optional<QString> folder,
                            std::chrono::milliseconds timeout = std::chrono::seconds(5));
    ~SingleInstance() override;

    /// Decides, within the timeout and two seconds; nothing else should have been started yet.
    Role claim(const StartRequest &request);
    /// Answers further starts from now on; those since claim() have waited.
    void listen();
    /// Stops answering; the place is free once this process has ended.
    void close();

    /// The user's folder for such things on this computer, made if need be.
    static std::optional<QString> userFolder();

Q_SIGNALS:
    void startedAgain(const StartRequest &request);

private:
    using Deadline = std::chrono::steady_clock::time_point;

    bool lock();
    void openSocket();
    bool deliver(const StartRequest &request, Deadline deadline) const;
    void endHolder() const;
    void serve(QLocalSocket *client);

    std::chrono::milliseconds timeout_;
    int folder_ = -1;
    int lock_ = -1;
    int socket_ = -1;
    QLocalServer *server_ = nullptr;
    std::deque<QPointer<QLocalSocket>> clients_; ///< the latest
};

} // namespace quorbit
