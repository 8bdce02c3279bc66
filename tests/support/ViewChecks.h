#pragma once

#include "ui/access/Accessibility.h"
#include "ui/text/TextLabel.h"

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

} // namespace quorbit::test
