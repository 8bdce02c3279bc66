#include "platform/linux/desktop/TrayHosts.h"

#include "platform/linux/desktop/X11.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusServiceWatcher>

using namespace Qt::StringLiterals;

namespace quorbit {

namespace {

const QString watcherService = u"org.kde.StatusNotifierWatcher"_s;
const QString watcherPath = u"/StatusNotifierWatcher"_s;

} // namespace

TrayHosts::TrayHosts(QObject *parent) : QObject(parent) {}

TrayHosts::~TrayHosts() = default;

void TrayHosts::start() {
    QCoreApplication::instance()->installNativeEventFilter(this);
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (bus.isConnected()) {
        auto *watcher =
            new QDBusServiceWatcher(watcherService, bus, QDBusServiceWatcher::WatchForOwnerChange, this);
        connect(watcher, &QDBusServiceWatcher::serviceOwnerChanged, this, &TrayHosts::busChanged);
        for (const char *change : {"StatusNotifierHostRegistered", "StatusNotifierHostUnregistered"})
            bus.connect(QString(), watcherPath, watcherService, QString::fromLatin1(change), this,
                        SLOT(busChanged()));
        askBus();
    }
    considerX11();
}

bool TrayHosts::isAvailable() const {
    switch (kind_) {
    case Kind::none:
        break;
    case Kind::bus:
        return busHasHost_ && QDBusConnection::sessionBus().isConnected();
    case Kind::x11:
        return x11::hasTray();
    }
    return false;
}

void TrayHosts::busChanged() {
    if (kind_ != Kind::x11)
        askBus();
}

void TrayHosts::askBus() {
    awaitsBus_ = true;
    QDBusMessage question = QDBusMessage::createMethodCall(watcherService, watcherPath,
                                                           u"org.freedesktop.DBus.Properties"_s, u"Get"_s);
    question << watcherService << u"IsStatusNotifierHostRegistered"_s;
    question.setAutoStartService(false);
    auto *answer = new QDBusPendingCallWatcher(QDBusConnection::sessionBus().asyncCall(question), this);
    connect(answer, &QDBusPendingCallWatcher::finished, this, [this, answer] {
        answer->deleteLater();
        awaitsBus_ = false;
        const QDBusPendingReply<QVariant> hasHost = *answer;
        busHasHost_ = !hasHost.isError() && hasHost.value().toBool();
        if (busHasHost_)
            announce(Kind::bus);
        else
            considerX11();
    });
}

void TrayHosts::considerX11() {
    if (!awaitsBus_ && kind_ == Kind::none && x11::hasTray())
        announce(Kind::x11);
}

bool TrayHosts::nativeEventFilter(const QByteArray &eventType, void *message, qintptr *) {
    if (x11::announcesTray(eventType, message))
        considerX11();
    return false;
}

void TrayHosts::announce(Kind kind) {
    if (kind_ != Kind::none)
        return;
    kind_ = kind;
    QCoreApplication::instance()->removeNativeEventFilter(this);
    Q_EMIT available();
}

} // namespace quorbit
