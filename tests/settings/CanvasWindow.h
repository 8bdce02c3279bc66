#pragma once

#include "settings/canvas/CanvasArea.h"
#include "settings/canvas/ScreenLayoutCanvas.h"
#include "ui/access/KeyboardArea.h"

#include <QApplication>
#include <QLineEdit>
#include <QMouseEvent>
#include <QTest>
#include <QVBoxLayout>

#include <cmath>
#include <vector>

/// What the tests of the canvas arrange, and the window that they do it in.
namespace quorbit::test {

using namespace Qt::StringLiterals;

inline constexpr int settleTime = 60; // ms, longer than any update waits

inline ScreenDesk usualDesk() {
    return {{{u"mac"_s, {0, 0, 1778, 1000}}, {u"office"_s, {1778, 0, 1778, 1000}}},
            u"mac"_s,
            {{u"mac"_s, u"Studio Mac"_s, u"darwin"_s, true},
             {u"office"_s, u"Office Linux"_s, u"linux"_s, true},
             {u"travel"_s, u"Travel laptop"_s, u"windows"_s, false}}};
}

inline ScreenDesk crowd(int count) {
    ScreenDesk desk{{}, u"0"_s, {}};
    for (int i = 0; i < count; ++i) {
        desk.devices.push_back({QString::number(i), u"Computer %1"_s.arg(i), u"linux"_s, i % 2 == 0});
        desk.layout[QString::number(i)] = {i % 20 * 1800.0, std::floor(i / 20.0) * 1030, 1778, 1000};
    }
    return desk;
}

/// The canvas in a window between two fields, and what it asked for.
struct Window {
    explicit Window(const ScreenDesk &desk = usualDesk(), const QString &master = u"mac"_s) {
        auto *column = new QVBoxLayout(&view);
        column->addWidget(&before);
        column->addWidget(&canvas);
        column->addWidget(&after);
        canvas.render(desk, master);
        area = canvas.findChild<CanvasArea *>();
        view.resize(538, 460);
        view.show();
        view.activateWindow();
        if (!QTest::qWaitForWindowActive(&view))
            qFatal("the window does not open");
        QTest::qWait(settleTime);
        QObject::connect(&canvas, &ScreenLayoutCanvas::arranged,
                         [this](const ScreenLayout &layout) { arranged.push_back(layout); });
        QObject::connect(&canvas, &ScreenLayoutCanvas::masterPicked,
                         [this](const QString &id) { picked << id; });
    }

    QRectF place(const QString &id) const { return area->placeOf(*area->cardWithID(id)); }
    QPoint middle(const QString &id) const { return place(id).center().toPoint(); }
    double scale() const { return place(u"office"_s).width() / 1778; }

    void press(const QString &id) { press(middle(id)); }
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
    void click(const QString &id) {
        press(id);
        release(middle(id));
    }
    void drag(const QString &id, const QPoint &by) {
        const QPoint from = middle(id);
        press(from);
        move(from + by);
        release(from + by);
    }
    /// The last layout that was asked for is stored.
    void answer(int save) {
        ScreenDesk desk = usualDesk();
        desk.layout = arranged.back();
        canvas.render(desk, u"mac"_s);
        canvas.saveEnded(save, true);
    }
    void key(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) { // where the focus is
        QTest::keyClick(QApplication::focusWidget(), key, modifiers);
    }
    QString focused() const {
        return area->hasFocus() && area->currentCard() ? area->currentCard()->id : QString();
    }

    KeyboardArea view;
    QLineEdit before, after;
    ScreenLayoutCanvas canvas;
    CanvasArea *area = nullptr;
    std::vector<ScreenLayout> arranged;
    QStringList picked;
};

} // namespace quorbit::test
