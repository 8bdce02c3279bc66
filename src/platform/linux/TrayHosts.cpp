#include "platform/linux/TrayHosts.h"

#include "platform/linux/X11.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusServiceWatcher>

namespace quorbit {

namespace {

const QString watcherService = QStringLiteral("org.kde.StatusNotifierWatcher");
const QString watcherPath = QStringLiteral("/StatusNotifierWatcher");

} // namespace

TrayHosts::TrayHosts(QObject *parent) : QObject(parent) {}

TrayHosts::~TrayHosts() = default;

void TrayHosts::start() {
    QCoreApplication::instance()->installNativeEventFilter(this);
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (bus.isConnected()) {
        auto *watcher =
            new QDBusServiceWatcher(watcherService, bus, QDBusServiceWatcher::WatchForRegistration, this);
        connect(watcher, &QDBusServiceWatcher::serviceRegistered, this, &TrayHosts::askBus);
        bus.connect(QString(), watcherPath, watcherService, QStringLiteral("StatusNotifierHostRegistered"),
                    this, SLOT(hostRegistered()));
        askBus();
    }
    considerX11();
}

void TrayHosts::hostRegistered() {
    askBus();
}

void TrayHosts::askBus() {
    if (announced_)
        return;
    awaitsBus_ = true;
    QDBusMessage question = QDBusMessage::createMethodCall(watcherService, watcherPath,
                                                           QStringLiteral("org.freedesktop.DBus.Properties"),
                                                           QStringLiteral("Get"));
    question << watcherService << QStringLiteral("IsStatusNotifierHostRegistered");
    question.setAutoStartService(false);
    auto *answer = new QDBusPendingCallWatcher(QDBusConnection::sessionBus().asyncCall(question), this);
    connect(answer, &QDBusPendingCallWatcher::finished, this, [this, answer] {
        answer->deleteLater();
        awaitsBus_ = false;
        const QDBusPendingReply<QVariant> hasHost = *answer;
        if (!hasHost.isError() && hasHost.value().toBool())
            announce();
        else
            considerX11();
    });
}

void TrayHosts::considerX11() {
    if (!awaitsBus_ && !announced_ && x11::hasTray())
        announce();
}

bool TrayHosts::nativeEventFilter(const QByteArray &eventType, void *message, qintptr *) {
    if (!announced_ && x11::announcesTray(eventType, message))
        considerX11();
    return false;
}

void TrayHosts::announce() {
    if (announced_)
        return;
    announced_ = true;
    QCoreApplication::instance()->removeNativeEventFilter(this);
    Q_EMIT available();
}

} // namespace quorbit
