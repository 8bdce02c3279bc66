#include "platform/linux/desktop/DesktopAppearance.h"

#include "platform/linux/desktop/X11.h"

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMetaType>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusServiceWatcher>
#include <QDBusVariant>
#include <QGuiApplication>
#include <QPalette>
#include <QStandardPaths>

using namespace Qt::StringLiterals;

namespace quorbit {

namespace {

const QString portalService = u"org.freedesktop.portal.Desktop"_s;
const QString portalPath = u"/org/freedesktop/portal/desktop"_s;
const QString settingsInterface = u"org.freedesktop.portal.Settings"_s;

/// Three components from 0 to 1; a desktop without an accent colour sends values outside of that.
QColor color(const QDBusArgument &argument) {
    double red = -1;
    double green = -1;
    double blue = -1;
    argument.beginStructure();
    argument >> red >> green >> blue;
    argument.endStructure();
    for (const double part : {red, green, blue}) {
        if (!(part >= 0 && part <= 1))
            return {};
    }
    return QColor::fromRgbF(static_cast<float>(red), static_cast<float>(green), static_cast<float>(blue));
}

/// The value in a D-Bus variant: some portals put one variant into another.
QVariant plainValue(QVariant value) {
    while (value.metaType() == QMetaType::fromType<QDBusVariant>())
        value = value.value<QDBusVariant>().variant();
    if (value.metaType() == QMetaType::fromType<QDBusArgument>()) {
        const auto argument = value.value<QDBusArgument>();
        if (argument.currentSignature() == "(ddd)"_L1)
            return color(argument);
    }
    return value;
}

} // namespace

DesktopAppearance::DesktopAppearance(QObject *parent)
    : QObject(parent)
    , darkByPalette_(QGuiApplication::palette().color(QPalette::Window).lightnessF() < 0.5F)
    , gtk_(QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation)) {
    current_.colors.dark = darkByPalette_;
    connect(&gtk_, &GtkSettingsFiles::changed, this, &DesktopAppearance::update);
}

void DesktopAppearance::start() {
    gtk_.start();
    followPortal();
}

void DesktopAppearance::followPortal() {
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected())
        return;
    qDBusRegisterMetaType<PortalSettings>();
    auto *portal =
        new QDBusServiceWatcher(portalService, bus, QDBusServiceWatcher::WatchForOwnerChange, this);
    connect(portal, &QDBusServiceWatcher::serviceOwnerChanged, this,
            [this](const QString &, const QString &, const QString &owner) {
                if (!owner.isEmpty())
                    ask();
            });
    bus.connect(QString(), portalPath, settingsInterface, u"SettingChanged"_s, this,
                SLOT(settingChanged(QDBusMessage)));
    ask();
}

// ReadAll is in every version of the interface and the only question that always means the same: what Read
// and ReadOne answer differs by version.
void DesktopAppearance::ask() {
    QDBusMessage question =
        QDBusMessage::createMethodCall(portalService, portalPath, settingsInterface, u"ReadAll"_s);
    question << appearanceGroups();
    auto *answer = new QDBusPendingCallWatcher(QDBusConnection::sessionBus().asyncCall(question), this);
    connect(answer, &QDBusPendingCallWatcher::finished, this, [this, answer] {
        answer->deleteLater();
        const QDBusPendingReply<PortalSettings> settings = *answer;
        if (settings.isError())
            return;
        portal_ = settings.value();
        for (QVariantMap &group : portal_) {
            for (QVariant &value : group)
                value = plainValue(value);
        }
        update();
    });
}

void DesktopAppearance::settingChanged(const QDBusMessage &message) {
    if (message.signature() != "ssv"_L1)
        return;
    const QVariantList arguments = message.arguments();
    portal_[arguments[0].toString()].insert(arguments[1].toString(), plainValue(arguments[2]));
    update();
}

void DesktopAppearance::update() {
    Appearance next = desktopPreferences(portal_, gtk_.current(), darkByPalette_);
    // The settings daemon of an X11 session makes the scale of texts a part of the resolution, by which the
    // toolkit scales everything.
    if (x11::hasSettingsDaemon())
        next.textScale = 1;
    if (next == current_)
        return;
    current_ = next;
    Q_EMIT changed();
}

} // namespace quorbit
