#include "ui/look/Inherited.h"

#include <QApplication>
#include <QEvent>
#include <QWidget>

#include <utility>

namespace quorbit {

namespace {

/// Belongs to the widget and watches its parent.
class ParentWatcher final : public QObject {
public:
    ParentWatcher(QWidget *widget, std::function<void()> restyle)
        : QObject(widget), widget_(widget), restyle_(std::move(restyle)) {
        widget->installEventFilter(this);
        watchParent();
    }

    bool eventFilter(QObject *watched, QEvent *event) override {
        const QEvent::Type type = event->type();
        if (watched != widget_) {
            if (type == QEvent::FontChange || type == QEvent::PaletteChange)
                restyle_();
        } else if (type == QEvent::ParentAboutToChange) {
            if (QWidget *parent = widget_->parentWidget())
                parent->removeEventFilter(this);
        } else if (type == QEvent::ParentChange) {
            watchParent();
        }
        return false;
    }

private:
    void watchParent() {
        if (QWidget *parent = widget_->parentWidget())
            parent->installEventFilter(this);
        restyle_();
    }

    QWidget *widget_;
    std::function<void()> restyle_;
};

} // namespace

QFont inheritedFont(const QWidget &widget) {
    return widget.parentWidget() ? widget.parentWidget()->font() : QApplication::font();
}

QPalette inheritedPalette(const QWidget &widget) {
    return widget.parentWidget() ? widget.parentWidget()->palette() : QApplication::palette();
}

void followInherited(QWidget *widget, std::function<void()> restyle) {
    new ParentWatcher(widget, std::move(restyle));
}

} // namespace quorbit
