#pragma once

#include "settings/canvas/CanvasArea.h"
#include "settings/canvas/ScreenLayoutCanvas.h"
#include "support/ViewChecks.h"

#include <QLineEdit>
#include <QMouseEvent>

namespace quorbit::test {

inline ScreenDesk usualDesk() {
    return {{{u"mac"_s, {0, 0, 1778, 1000}}, {u"office"_s, {1778, 0, 1778, 1000}}},
            u"mac"_s,
            {{u"mac"_s, u"Studio Mac"_s, u"darwin"_s, true},
             {u"office"_s, u"Office Linux"_s, u"linux"_s, true},
             {u"travel"_s, u"Travel laptop"_s, u"windows"_s, false}}};
}

/// The canvas in a window above a field, with this computer as the master, and what it asked for.
struct CanvasWindow {
    explicit CanvasWindow(const ScreenDesk &desk = usualDesk()) {
        QObject::connect(canvas, &ScreenLayoutCanvas::arranged,
                         [this](const ScreenLayout &layout) { arranged.push_back(layout); });
        QObject::connect(canvas, &ScreenLayoutCanvas::masterPicked,
                         [this](const QString &id) { picked << id; });
        show(desk);
    }

    void show(const ScreenDesk &desk) { canvas->render(desk, desk.selfID); }

    QRectF place(const QString &id) const { return area->placeOf(*area->cardWithID(id)); }
    QPoint middle(const QString &id) const { return place(id).center().toPoint(); }
    double scale() const { return place(u"office"_s).width() / 1778; }

    void press(const QPointF &at, Qt::MouseButton button = Qt::LeftButton) {
        area->setFocus(Qt::MouseFocusReason);
        send(QEvent::MouseButtonPress, at, button, button);
    }
    void move(const QPointF &to, Qt::MouseButtons buttons = Qt::LeftButton) {
        send(QEvent::MouseMove, to, Qt::NoButton, buttons);
    }
    void release(const QPointF &at, Qt::MouseButton button = Qt::LeftButton) {
        send(QEvent::MouseButtonRelease, at, button, {});
    }
    /// As the toolkit sends it: only in the window's coordinates it tells parts of a point.
    void send(QEvent::Type type, const QPointF &at, Qt::MouseButton button, Qt::MouseButtons buttons) {
        QMouseEvent event(type, at.toPoint(), area->mapTo(&view, at), area->mapToGlobal(at.toPoint()), button,
                          buttons, {});
        QCoreApplication::sendEvent(area, &event);
    }
    void key(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) { // where the focus is
        QTest::keyClick(QApplication::focusWidget(), key, modifiers);
    }
    QString focused() const {
        return area->hasFocus() && area->currentCard() ? area->currentCard()->id : QString();
    }

    ScreenLayoutCanvas *canvas = new ScreenLayoutCanvas;
    QLineEdit *after = new QLineEdit;
    Window view{{canvas, after}, {538, 460}};
    CanvasArea *area = only<CanvasArea>(view);
    std::vector<ScreenLayout> arranged;
    QStringList picked;
};

} // namespace quorbit::test
