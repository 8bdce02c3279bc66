#include "platform/linux/DesktopAppearance.h"

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusServiceWatcher>
#include <QDBusVariant>
#include <QGuiApplication>
#include <QPalette>

namespace quorbit {

namespace {

const QString portalService = QStringLiteral("org.freedesktop.portal.Desktop");
const QString portalPath = QStringLiteral("/org/freedesktop/portal/desktop");
const QString settingsInterface = QStringLiteral("org.freedesktop.portal.Settings");
const QString appearanceGroup = QStringLiteral("org.freedesktop.appearance");
const QString desktopGroup = QStringLiteral("org.gnome.desktop.interface");

using SettingsByGroup = QMap<QString, QVariantMap>;

/// Three components from 0 to 1; a desktop without an accent colour sends values outside of that.
std::optional<QColor> accentColor(const QVariant &value) {
    if (value.metaType() != QMetaType::fromType<QDBusArgument>())
        return std::nullopt;
    const auto argument = value.value<QDBusArgument>();
    if (argument.currentSignature() != QLatin1String("(ddd)"))
        return std::nullopt;
    double red = -1;
    double green = -1;
    double blue = -1;
    argument.beginStructure();
    argument >> red >> green >> blue;
    argument.endStructure();
    for (const double part : {red, green, blue}) {
        if (!(part >= 0 && part <= 1))
            return std::nullopt;
    }
    return QColor::fromRgbF(static_cast<float>(red), static_cast<float>(green), static_cast<float>(blue));
}

} // namespace

DesktopPreferences withPortalSetting(DesktopPreferences appearance, const QString &group, const QString &key,
                                     const QVariant &value, bool darkByPalette) {
    if (group == desktopGroup && key == QLatin1String("enable-animations")) {
        if (value.typeId() == QMetaType::Bool)
            appearance.reducedMotion = !value.toBool();
    } else if (group != appearanceGroup) {
        return appearance;
    } else if (key == QLatin1String("accent-color")) {
        appearance.accent = accentColor(value);
    } else if (value.typeId() != QMetaType::UInt) {
        return appearance;
    } else if (key == QLatin1String("color-scheme")) {
        constexpr uint preferDark = 1;
        constexpr uint preferLight = 2;
        const uint scheme = value.toUInt();
        appearance.dark = scheme == preferDark || (scheme != preferLight && darkByPalette);
    } else if (key == QLatin1String("contrast")) {
        appearance.highContrast = value.toUInt() == 1;
    } else if (key == QLatin1String("reduced-motion")) {
        appearance.reducedMotion = value.toUInt() == 1;
    }
    return appearance;
}

DesktopAppearance::DesktopAppearance(QObject *parent)
    : QObject(parent)
    , darkByPalette_(QGuiApplication::palette().color(QPalette::Window).lightnessF() < 0.5F) {
    current_.dark = darkByPalette_;
}

void DesktopAppearance::start() {
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected())
        return;
    qDBusRegisterMetaType<SettingsByGroup>();
    auto *portal =
        new QDBusServiceWatcher(portalService, bus, QDBusServiceWatcher::WatchForRegistration, this);
    connect(portal, &QDBusServiceWatcher::serviceRegistered, this, &DesktopAppearance::ask);
    bus.connect(QString(), portalPath, settingsInterface, QStringLiteral("SettingChanged"), this,
                SLOT(settingChanged(QDBusMessage)));
    ask();
}

void DesktopAppearance::ask() {
    QDBusMessage question = QDBusMessage::createMethodCall(portalService, portalPath, settingsInterface,
                                                           QStringLiteral("ReadAll"));
    question << QStringList{appearanceGroup, desktopGroup};
    auto *answer = new QDBusPendingCallWatcher(QDBusConnection::sessionBus().asyncCall(question), this);
    connect(answer, &QDBusPendingCallWatcher::finished, this, [this, answer] {
        answer->deleteLater();
        const QDBusPendingReply<SettingsByGroup> settings = *answer;
        if (settings.isError())
            return;
        DesktopPreferences next = current_;
        const SettingsByGroup groups = settings.value();
        for (auto group = groups.cbegin(); group != groups.cend(); ++group) {
            for (auto setting = group->cbegin(); setting != group->cend(); ++setting)
                next = withPortalSetting(next, group.key(), setting.key(), setting.value(), darkByPalette_);
        }
        publish(next);
    });
}

void DesktopAppearance::settingChanged(const QDBusMessage &message) {
    const QVariantList arguments = message.arguments();
    if (message.signature() == QLatin1String("ssv"))
        publish(withPortalSetting(current_, arguments[0].toString(), arguments[1].toString(),
                                  arguments[2].value<QDBusVariant>().variant(), darkByPalette_));
}

void DesktopAppearance::publish(const DesktopPreferences &next) {
    if (next == current_)
        return;
    current_ = next;
    Q_EMIT changed();
}

} // namespace quorbit
