#include "ui/access/FocusRing.h"

#include "ui/access/KeyboardArea.h"
#include "ui/look/Theme.h"

#include <QEvent>
#include <QPainter>

#include <algorithm>

namespace quorbit {

namespace {
constexpr int plainWidth = 2;
constexpr int strongWidth = 3;

int ringWidth(const QWidget &control) {
    return themeColors(control.palette()).highContrast ? strongWidth : plainWidth;
}
} // namespace

/// Lives as long as the control and decides when there is a ring.
class FocusRing::Watcher final : public QObject {
public:
    Watcher(QWidget *control, double radius, int gap)
        : QObject(control), control_(control), radius_(radius), gap_(gap) {
        control->installEventFilter(this);
    }

    ~Watcher() override { delete ring_; }

    bool eventFilter(QObject *, QEvent *event) override {
        switch (event->type()) {
        case QEvent::FocusOut:
        case QEvent::Hide:
        case QEvent::ParentAboutToChange:
            remove();
            break;
        case QEvent::FocusIn:
        case QEvent::Show:
        case QEvent::Move:
        case QEvent::Resize:
        case QEvent::ZOrderChange:
            update();
            break;
        default:
            break;
        }
        return false;
    }

private:
    void update() {
        const bool wanted = worksByKeyboard(*control_) && control_->hasFocus() && control_->isVisible() &&
                            control_->parentWidget() && !control_->isWindow();
        if (!wanted) {
            remove();
            return;
        }
        if (!ring_)
            ring_ = new FocusRing(control_, radius_, gap_);
        ring_->follow();
    }

    /// The parent may be walking through its children, this ring among them, when it must go.
    void remove() {
        if (!ring_)
            return;
        ring_->hide();
        ring_->deleteLater();
        ring_ = nullptr;
    }

    QWidget *control_;
    double radius_;
    int gap_;
    QPointer<FocusRing> ring_;
};

void FocusRing::install(QWidget *control, double radius, int gap) {
    new Watcher(control, radius, gap);
}

FocusRing::FocusRing(QWidget *control, double radius, int gap)
    : QFocusFrame(control->parentWidget()), control_(control), radius_(radius), gap_(gap) {}

void FocusRing::follow() {
    const int reach = gap_ + ringWidth(*control_);
    setGeometry(control_->geometry().adjusted(-reach, -reach, reach, reach));
    show();
    raise();
}

void FocusRing::paintEvent(QPaintEvent *) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const int width = ringWidth(*this);
    painter.setPen(QPen(themeColors(palette()).accent, width));
    const double half = width / 2.0;
    const double radius = std::max(radius_ + gap_ + half, 2.0);
    painter.drawRoundedRect(QRectF(rect()).adjusted(half, half, -half, -half), radius, radius);
}

} // namespace quorbit
