#pragma once

#include <QFocusFrame>
#include <QPointer>

namespace quorbit {

/// A ring around a control while it has the focus and the user works by keyboard. It lies
/// beside the control in the same parent, so that it may be larger than the control. It is a QFocusFrame by
/// type alone, by which assistive technology knows to pass it over.
class FocusRing final : public QFocusFrame {
    Q_OBJECT

public:
    /// `gap` is the distance from the control's edge to the ring, negative for a ring inside it; `radius` the
    /// corner of the control. The ring belongs to the control and ends with it.
    static void install(QWidget *control, double radius, int gap = 1);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    class Watcher;
    FocusRing(QWidget *control, double radius, int gap);
    void follow();

    QPointer<QWidget> control_;
    double radius_;
    int gap_;
};

} // namespace quorbit
