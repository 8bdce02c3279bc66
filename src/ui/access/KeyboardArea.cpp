#include "ui/access/KeyboardArea.h"

#include <QApplication>
#include <QFocusEvent>
#include <QKeyEvent>
#include <QScrollArea>

#include <algorithm>

namespace quorbit {

namespace {

/// The focus chain of the window from what follows `start` to `start` itself.
QList<QPointer<QWidget>> chainFrom(QWidget *start) {
    QList<QPointer<QWidget>> chain;
    for (QWidget *each = start->nextInFocusChain(); each && each != start; each = each->nextInFocusChain())
        chain << each;
    return chain << start;
}

bool isSeenAndEnabled(const QWidget *control) {
    return control && control->isVisible() && control->isEnabled();
}

bool takesClicks(const QWidget &control) {
    return control.focusPolicy() & Qt::ClickFocus;
}

bool isByKey(Qt::FocusReason reason) {
    return reason == Qt::TabFocusReason || reason == Qt::BacktabFocusReason ||
           reason == Qt::ShortcutFocusReason;
}

void scrollTo(QWidget &control) {
    for (QWidget *above = control.parentWidget(); above; above = above->parentWidget())
        if (auto *scroller = qobject_cast<QScrollArea *>(above))
            scroller->ensureWidgetVisible(&control);
}

} // namespace

/// Sees every event of the program.
class KeyboardArea::Watcher final : public QObject {
public:
    explicit Watcher(KeyboardArea &area) : area_(area) { qApp->installEventFilter(this); }

    bool eventFilter(QObject *object, QEvent *event) override {
        area_.notice(object, *event);
        return false;
    }

private:
    KeyboardArea &area_;
};

KeyboardArea::KeyboardArea(QWidget *parent) : QWidget(parent), watcher_(std::make_unique<Watcher>(*this)) {
    connect(qApp, &QApplication::focusChanged, watcher_.get(), [this](QWidget *before, const QWidget *now) {
        // A control that is deleted, or disabled with its parent, leaves the focus to nobody.
        if (!now && of(before) == this && isActiveWindow() && !focused())
            takeFrom(before);
    });
}

KeyboardArea::~KeyboardArea() = default;

KeyboardArea *KeyboardArea::of(const QWidget *widget) {
    for (auto *each = const_cast<QWidget *>(widget); each; each = each->parentWidget())
        if (auto *area = qobject_cast<KeyboardArea *>(each))
            return area;
    return nullptr;
}

bool worksByKeyboard(const QWidget &control) {
    const KeyboardArea *area = KeyboardArea::of(&control);
    return area && area->byKeyboard_;
}

QWidget *KeyboardArea::focused() const {
    return window()->focusWidget();
}

/// Whether the focus may go there.
bool KeyboardArea::canTake(const QWidget *control) const {
    return isSeenAndEnabled(control) && control != this && control != focused() && of(control) == this &&
           (control->focusPolicy() & Qt::TabFocus) && !control->focusProxy();
}

/// The first that can take the focus, in the direction of the Tab key.
QWidget *KeyboardArea::firstStop(const Chain &chain, bool next) const {
    const auto isStop = [this](const QWidget *each) { return canTake(each); };
    if (next) {
        const auto stop = std::find_if(chain.begin(), chain.end(), isStop);
        return stop == chain.end() ? nullptr : stop->data();
    }
    const auto stop = std::find_if(chain.rbegin(), chain.rend(), isStop);
    return stop == chain.rend() ? nullptr : stop->data();
}

void KeyboardArea::remember(QWidget *place, QWidget *awaited) {
    awaited_ = awaited;
    place_ = place;
    following_ = place ? chainFrom(place) : Chain();
}

void KeyboardArea::rest(QWidget *place) {
    remember(place, nullptr);
    setFocus(Qt::OtherFocusReason);
}

/// The control cannot have the focus any longer, or not now.
void KeyboardArea::takeFrom(QWidget *control) {
    remember(control, control);
    setFocus(Qt::OtherFocusReason);
}

bool KeyboardArea::takeBack() {
    if (!canTake(awaited_) || (!byKeyboard_ && !takesClicks(*awaited_)))
        return false;
    awaited_->setFocus(Qt::OtherFocusReason);
    return true;
}

void KeyboardArea::pauseBelow() {
    below_ = of(focused());
    if (!below_)
        return;
    byKeyboard_ = below_->byKeyboard_;
    if (focused() != below_)
        below_->remember(focused(), focused());
}

void KeyboardArea::resumeBelow() {
    if (!below_)
        return;
    below_->byKeyboard_ = byKeyboard_;
    if (!below_->takeBack())
        below_->setFocus(Qt::OtherFocusReason);
}

void KeyboardArea::workByPointer() {
    byKeyboard_ = false;
    QWidget *control = focused();
    if (control == this || of(control) != this)
        return;
    if (takesClicks(*control))
        control->update(); // which may show where the keyboard is
    else
        rest(control);
}

void KeyboardArea::notice(QObject *object, QEvent &event) {
    switch (event.type()) {
    case QEvent::FocusIn:
        if (isByKey(static_cast<QFocusEvent &>(event).reason()) &&
            of(qobject_cast<QWidget *>(object)) == this)
            byKeyboard_ = true;
        break;
    case QEvent::KeyPress:
        if (const int key = static_cast<QKeyEvent &>(event).key();
            (key == Qt::Key_Tab || key == Qt::Key_Backtab) && object == focused() && of(focused()) == this)
            byKeyboard_ = true;
        break;
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
        if (const auto *pressed = qobject_cast<QWidget *>(object); pressed && pressed->window() == window())
            workByPointer();
        break;
    case QEvent::EnabledChange:
        if (object == awaited_ && focused() == this)
            takeBack();
        break;
    case QEvent::Show:
        if (object == this && !event.spontaneous())
            rest();
        break;
    case QEvent::WindowActivate:
        // What had the focus may have gone while another window was active.
        if (object == window() && !isSeenAndEnabled(focused()))
            takeFrom(focused());
        break;
    default:
        break;
    }
}

bool KeyboardArea::focusNextPrevChild(bool next) {
    if (!isVisible())
        return QWidget::focusNextPrevChild(next);
    QWidget *here = focused();
    // The toolkit asks so too when it has hidden or disabled a control.
    if (here && !isSeenAndEnabled(here)) {
        takeFrom(here);
        return true;
    }
    QWidget *start = of(here) == this && here != this ? here : place_.data();
    QWidget *stop = firstStop(start ? chainFrom(start) : following_, next);
    if (!stop)
        stop = firstStop(chainFrom(this), next);
    if (!stop)
        return true;
    remember(nullptr, nullptr);
    stop->setFocus(next ? Qt::TabFocusReason : Qt::BacktabFocusReason);
    scrollTo(*stop);
    return true;
}

} // namespace quorbit
