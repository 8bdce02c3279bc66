#pragma once

#include "ui/access/Accessibility.h"
#include "ui/access/KeyboardArea.h"
#include "ui/text/TextLabel.h"

#include <QAccessible>
#include <QApplication>
#include <QHash>
#include <QTest>
#include <QVBoxLayout>

#include <algorithm>
#include <optional>
#include <stdexcept>

namespace quorbit::test {

using namespace Qt::StringLiterals;

/// Waits for longer than any update does.
inline void settle() {
    QTest::qWait(60);
}

/// Shows a window and waits until it has the keyboard and has settled.
inline void openWindow(QWidget &window) {
    window.show();
    window.activateWindow();
    if (!QTest::qWaitForWindowActive(&window))
        qFatal("the window does not open");
    settle();
}

/// An open window of these widgets, one below the other.
struct Window : KeyboardArea {
    explicit Window(const QList<QWidget *> &widgets, QSize size = {}) {
        auto *column = new QVBoxLayout(this);
        for (QWidget *widget : widgets)
            column->addWidget(widget);
        if (size.isValid())
            resize(size);
        openWindow(*this);
    }
};

inline QAccessibleInterface *accessible(QWidget *widget) {
    return QAccessible::queryAccessibleInterface(widget);
}

inline QString nameOf(QWidget *widget) {
    return accessible(widget)->text(QAccessible::Name);
}

/// Those of a kind that are seen, from top to bottom.
template <class Widget>
QList<Widget *> seen(const QWidget &root) {
    QList<Widget *> widgets = root.findChildren<Widget *>();
    widgets.removeIf([](Widget *widget) { return !widget->isVisible(); });
    std::ranges::stable_sort(widgets, {}, [&](Widget *widget) { return widget->mapTo(&root, QPoint()).y(); });
    return widgets;
}

template <class Widget>
QStringList namesOf(const QWidget &root) {
    QStringList names;
    for (Widget *widget : seen<Widget>(root))
        names << nameOf(widget);
    return names;
}

inline QStringList textsOf(const QWidget &root) {
    QStringList texts;
    for (const TextLabel *label : seen<TextLabel>(root))
        texts << label->text();
    return texts;
}

/// The first that is seen with this accessible name. Without one the test function fails and says which there
/// are.
template <class Widget>
Widget *named(const QWidget &root, const QString &name) {
    for (Widget *widget : seen<Widget>(root)) {
        if (nameOf(widget) == name)
            return widget;
    }
    throw std::runtime_error(qPrintable(QLatin1String(Widget::staticMetaObject.className()) + u" \""_s +
                                        name + u"\" is lost; there are: "_s +
                                        namesOf<Widget>(root).join(" | "_L1)));
}

/// Fails the test function when there is not one of the kind, be it seen or not.
template <class Widget>
Widget *only(const QWidget &root) {
    const QList<Widget *> all = root.findChildren<Widget *>();
    if (all.size() == 1)
        return all.front();
    throw std::runtime_error(qPrintable(
        u"there are %1 of %2"_s.arg(all.size()).arg(QLatin1String(Widget::staticMetaObject.className()))));
}

/// Notes which widgets are painted while it lives.
class PaintWatch : public QObject {
public:
    PaintWatch() { qApp->installEventFilter(this); }

    /// By class and name, but for `except` and what is made of it or it is a part of.
    QStringList painted(const QWidget *except = nullptr) {
        settle();
        QStringList others;
        for (QWidget *widget : sizes_.keys()) {
            if (!except ||
                !(widget == except || widget->isAncestorOf(except) || except->isAncestorOf(widget)))
                others << QLatin1String(widget->metaObject()->className()) + u' ' + nameOf(widget);
        }
        return others;
    }
    /// That a widget had when it was first painted; none that was not.
    std::optional<QSize> firstSize(QWidget *widget) {
        settle();
        return sizes_.contains(widget) ? std::optional(sizes_[widget]) : std::nullopt;
    }

    bool eventFilter(QObject *object, QEvent *event) override {
        auto *widget = qobject_cast<QWidget *>(object);
        if (widget && event->type() == QEvent::Paint && !sizes_.contains(widget))
            sizes_[widget] = widget->size();
        return false;
    }

private:
    QHash<QWidget *, QSize> sizes_;
};

} // namespace quorbit::test
