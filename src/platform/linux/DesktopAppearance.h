#pragma once

#include <QColor>
#include <QDBusMessage>
#include <QObject>
#include <QVariant>

#include <optional>

namespace quorbit {

/// How the user wants programs to look.
struct DesktopPreferences {
    bool dark = false;
    std::optional<QColor> accent; ///< absent when the desktop names none
    bool highContrast = false;
    bool reducedMotion = false;

    bool operator==(const DesktopPreferences &) const = default;
};

/// Follows the desktop portal's settings. Until the portal answers, and where there is none, the lightness of
/// the palette that the application started with decides between light and dark.
class DesktopAppearance : public QObject {
    Q_OBJECT

public:
    explicit DesktopAppearance(QObject *parent = nullptr);

    const DesktopPreferences &current() const { return current_; }

    /// Asks the portal and listens to it from now on, without waiting for either.
    void start();

Q_SIGNALS:
    void changed();

private:
    void ask();
    void publish(const DesktopPreferences &next);

    bool darkByPalette_;
    DesktopPreferences current_;

private Q_SLOTS:
    void settingChanged(const QDBusMessage &message);
};

/// `appearance` after one setting of the portal was read; unknown settings and values leave it as it is.
DesktopPreferences withPortalSetting(DesktopPreferences appearance, const QString &group, const QString &key,
                                     const QVariant &value, bool darkByPalette);

} // namespace quorbit
