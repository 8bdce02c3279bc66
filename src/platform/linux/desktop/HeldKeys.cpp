#include "platform/linux/desktop/HeldKeys.h"

#include "platform/linux/desktop/X11.h"

#include <QGuiApplication>
#include <QKeyEvent>
#include <QWindow>

#include <utility>

namespace quorbit {

HeldKeys::HeldKeys() {
    connect(qGuiApp, &QGuiApplication::focusWindowChanged, this, [this](const QWindow *window) {
        // Where the keyboard belongs to another program, the release goes there.
        if (!window)
            held_ = 0;
        // Not at the start, which waiting for the X server would delay: keys need a window first.
        else if (!std::exchange(isAsked_, true) && x11::useDetectableAutoRepeat())
            qGuiApp->installEventFilter(this);
    });
}

bool HeldKeys::eventFilter(QObject *watched, QEvent *event) {
    const bool isPress = event->type() == QEvent::KeyPress;
    if (!watched->isWindowType() || (!isPress && event->type() != QEvent::KeyRelease))
        return false;
    auto &key = *static_cast<QKeyEvent *>(event);
    if (key.isAutoRepeat() || key.nativeScanCode() == 0)
        return false;
    if (!isPress || key.nativeScanCode() != held_) {
        held_ = isPress ? key.nativeScanCode() : 0;
        return false;
    }
    QKeyEvent repeat(key.type(), key.key(), key.modifiers(), key.nativeScanCode(), key.nativeVirtualKey(),
                     key.nativeModifiers(), key.text(), true, static_cast<quint16>(key.count()),
                     key.device());
    repeat.setTimestamp(key.timestamp());
    QCoreApplication::sendEvent(watched, &repeat);
    key.setAccepted(repeat.isAccepted());
    return true;
}

} // namespace quorbit
