#pragma once

#include "ui/Accessibility.h"
#include "ui/TextLabel.h"

#include <QAccessible>
#include <QApplication>
#include <QSet>
#include <QTest>

namespace quorbit::test {

/// The widgets that were painted while it lived.
class PaintWatch : public QObject {
public:
    PaintWatch() { qApp->installEventFilter(this); }

    QSet<QWidget *> painted() {
        QTest::qWait(60); // longer than any update waits
        return painted_;
    }

    bool eventFilter(QObject *object, QEvent *event) override {
        if (event->type() == QEvent::Paint && object->isWidgetType())
            painted_.insert(static_cast<QWidget *>(object));
        return false;
    }

private:
    QSet<QWidget *> painted_;
};

inline QAccessibleInterface *accessible(QWidget *widget) {
    return QAccessible::queryAccessibleInterface(widget);
}

inline QString nameOf(QWidget *widget) {
    return accessible(widget)->text(QAccessible::Name);
}

/// What a widget of this kind that is seen and has this accessible name is.
template <class Widget>
Widget *named(const QWidget &root, const QString &name) {
    for (Widget *widget : root.findChildren<Widget *>()) {
        if (widget->isVisible() && nameOf(widget) == name)
            return widget;
    }
    return nullptr;
}

/// Shows a window and waits until it has the keyboard and has settled.
inline void openWindow(QWidget &window) {
    window.show();
    window.activateWindow();
    if (!QTest::qWaitForWindowActive(&window))
        qFatal("the window does not open");
    QTest::qWait(60);
}

/// The texts that are seen, in no order.
inline QStringList textsOf(const QWidget &root) {
    QStringList texts;
    for (const TextLabel *label : root.findChildren<TextLabel *>()) {
        if (label->isVisible())
            texts << label->text();
    }
    return texts;
}

/// The first text or control in `root` that is cut, or nothing.
inline QString firstCut(const QWidget &root) {
    for (QWidget *widget : root.findChildren<QWidget *>()) {
        if (!widget->isVisible() || !dynamic_cast<AccessibleControl *>(widget) ||
            accessible(widget)->childCount() > 0)
            continue;
        const auto *label = qobject_cast<TextLabel *>(widget);
        const bool wraps = label && label->hasHeightForWidth();
        const QSize needed = wraps ? QSize(0, label->heightForWidth(label->width())) : widget->sizeHint();
        if (widget->width() < needed.width() || widget->height() < needed.height())
            return QLatin1String(widget->metaObject()->className()) + u' ' + nameOf(widget);
    }
    return {};
}

} // namespace quorbit::test
