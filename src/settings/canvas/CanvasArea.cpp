#include "settings/canvas/CanvasArea.h"

#include "settings/canvas/CanvasAccessible.h"
#include "settings/canvas/CanvasKeys.h"
#include "settings/canvas/CardPainter.h"
#include "ui/access/Accessibility.h"
#include "ui/access/KeyboardArea.h"
#include "ui/look/ToolTip.h"

#include <QFocusEvent>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>

#include <algorithm>
#include <cmath>
#include <utility>

namespace quorbit {

namespace {

constexpr int areaHeight = 320;
constexpr int leastWidth = 240;
constexpr double dragDistance = 10;
constexpr double leastTarget = 10; // points that a card offers to the pointer, however small it is drawn

QRectF target(const QRectF &place) {
    const double x = std::max(leastTarget - place.width(), 0.0) / 2;
    const double y = std::max(leastTarget - place.height(), 0.0) / 2;
    return place.adjusted(-x, -y, x, y);
}

} // namespace

CanvasArea::CanvasArea(QWidget *parent) : QWidget(parent) {
    setFocusPolicy(Qt::StrongFocus); // a click too, so that Escape reaches a drag
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    setMouseTracking(true); // a move without a button tells that the mouse grab was lost
    connect(&fade_, &MasterFade::changed, this, [this](const QString &id) { updateCard(cardWithID(id)); });
    installCanvasAccessibility();
}

CanvasArea::~CanvasArea() {
    forgetAccessible(this);
}

void CanvasArea::render(const ScreenDesk &desk, const QString &masterID) {
    if (desk == arrangement_.published() && masterID == masterID_)
        return;
    // The scale and the place of the canvas stay during a drag.
    const QPointF shift = arrangement_.publish(desk);
    fit_.shown.x += shift.x();
    fit_.shown.y += shift.y();
    masterID_ = masterID;
    reshow();
    fade_.moveTo(masterID);
}

void CanvasArea::ask(const std::optional<Arrangement::Save> &save) {
    reshow();
    if (save)
        Q_EMIT arranged(save->layout, save->number);
}

void CanvasArea::saveEnded(int save, bool isAnswered) {
    arrangement_.ended(save, isAnswered);
    ask(arrangement_.nextSave());
}

void CanvasArea::reshow() {
    const ScreenDesk desk = arrangement_.shown();
    if (!arrangement_.isHolding()) // its device has gone
        drag_.reset();
    if (!drag_)
        fit_ = fitInto(desk, QSizeF(size()));
    std::vector<CanvasCard> next = canvasCards(desk, masterID_, fit_);
    if (next == cards_)
        return;
    announceLeavingCards(*this, next);
    std::swap(cards_, next);
    const std::vector<CanvasCard> &before = next;
    keepCurrentCard(before);
    update();
    announceChangedCards(*this, before);
}

/// The keyboard stays at its device, or at the place where that was.
void CanvasArea::keepCurrentCard(const std::vector<CanvasCard> &before) {
    if (currentID_.isNull() || currentCard())
        return;
    const auto last = std::find_if(before.begin(), before.end(),
                                   [this](const CanvasCard &card) { return card.id == currentID_; });
    const auto index = std::min(static_cast<std::size_t>(last - before.begin()), cards_.size() - 1);
    currentID_ = cards_.empty() ? QString() : cards_[index].id;
    if (hasFocus())
        announceCurrentCard(*this);
}

QRectF CanvasArea::placeOf(const CanvasCard &card) const {
    const bool moved = drag_ && drag_->moves && drag_->id == card.id;
    return moved ? card.rect.translated(translation()) : card.rect;
}

QPointF CanvasArea::translation() const {
    return mapFrom(window(), drag_->pointer) - drag_->pressed;
}

const CanvasCard *CanvasArea::cardAt(const QPointF &position) const {
    const auto found = std::find_if(cards_.rbegin(), cards_.rend(), [&](const CanvasCard &card) {
        return target(placeOf(card)).contains(position);
    });
    return found == cards_.rend() ? nullptr : &*found;
}

const CanvasCard *CanvasArea::cardWithID(const QString &id) const {
    const auto found =
        std::find_if(cards_.begin(), cards_.end(), [&](const CanvasCard &card) { return card.id == id; });
    return found == cards_.end() ? nullptr : &*found;
}

void CanvasArea::setCurrentCard(const QString &id) {
    if (id == currentID_ || !cardWithID(id))
        return;
    updateCard(currentCard());
    currentID_ = id;
    updateCard(currentCard());
    if (hasFocus())
        announceCurrentCard(*this);
    followCurrentCard();
}

void CanvasArea::followCurrentCard() {
    const CanvasCard *current = currentCard();
    if (current && worksByKeyboard(*this))
        Q_EMIT currentCardAt(CardPainter::extent(placeOf(*current)));
}

void CanvasArea::makeMaster(const QString &id) {
    if (cardWithID(id) && id != masterID_)
        Q_EMIT masterPicked(id);
}

void CanvasArea::moveCurrentCard(QPointF distance) {
    arrangement_.step(currentID_, distance);
    ask(arrangement_.nextSave());
    followCurrentCard();
}

QSize CanvasArea::sizeHint() const {
    return {leastWidth, areaHeight};
}

QVariant CanvasArea::inputMethodQuery(Qt::InputMethodQuery query) const {
    const CanvasCard *current = currentCard();
    if (query == Qt::ImCursorRectangle && current)
        return CardPainter::extent(placeOf(*current));
    return QWidget::inputMethodQuery(query);
}

void CanvasArea::updateCard(const CanvasCard *card) {
    if (card)
        update(CardPainter::extent(placeOf(*card)));
}

void CanvasArea::paintEvent(QPaintEvent *event) {
    QPainter painter(this);
    const CardPainter cards(palette(), font());
    cards.paintBackground(painter, rect());
    paintCards(painter, cards, event->rect());

    const CanvasCard *current = currentCard();
    if (current && hasFocus() && worksByKeyboard(*this))
        cards.paintFocus(painter, placeOf(*current));
}

/// The one that is dragged floats above the others.
void CanvasArea::paintCards(QPainter &painter, const CardPainter &cards, const QRectF &dirty) const {
    const auto paint = [&](const CanvasCard &card) {
        const QRectF place = placeOf(card);
        if (dirty.intersects(CardPainter::extent(place)))
            cards.paintCard(painter, card, place, fade_.amount(card.id));
    };
    const CanvasCard *floating = drag_ && drag_->moves ? cardWithID(drag_->id) : nullptr;
    for (const CanvasCard &card : cards_) {
        if (&card != floating)
            paint(card);
    }
    if (floating)
        paint(*floating);
}

void CanvasArea::resizeEvent(QResizeEvent *) {
    reshow();
}

void CanvasArea::mousePressEvent(QMouseEvent *event) {
    if (event->button() != Qt::LeftButton)
        return;
    endDrag();
    // Qt rounds position() to whole points; scenePosition() tells the pixel of the screen.
    const QPointF pressed = mapFrom(window(), event->scenePosition());
    const CanvasCard *card = cardAt(pressed);
    if (!card)
        return;
    updateCard(currentCard());
    setCurrentCard(card->id);
    arrangement_.hold(card->id);
    drag_ = Drag{.id = card->id, .pressed = pressed, .pointer = event->scenePosition()};
}

void CanvasArea::mouseMoveEvent(QMouseEvent *event) {
    if (!drag_)
        return;
    if (!event->buttons().testFlag(Qt::LeftButton))
        return endDrag();
    followPointer(*event);
}

void CanvasArea::followPointer(const QMouseEvent &event) {
    updateCard(cardWithID(drag_->id));
    drag_->pointer = event.scenePosition();
    const QPointF by = translation();
    drag_->moves = drag_->moves || std::hypot(by.x(), by.y()) >= dragDistance;
    updateCard(cardWithID(drag_->id));
}

void CanvasArea::mouseReleaseEvent(QMouseEvent *event) {
    if (event->button() != Qt::LeftButton || !drag_)
        return;
    followPointer(*event);
    const QPointF distance = fit_.toUnits(translation());
    const Drag drag = *std::exchange(drag_, std::nullopt);
    update();
    if (drag.moves)
        return ask(arrangement_.drop(distance));
    arrangement_.letGo();
    reshow();
    makeMaster(drag.id);
}

/// Writes nothing.
void CanvasArea::endDrag() {
    if (!drag_)
        return;
    drag_.reset();
    arrangement_.letGo();
    update();
    reshow();
}

void CanvasArea::keyPressEvent(QKeyEvent *event) {
    if (drag_) {
        if (event->key() == Qt::Key_Escape)
            endDrag();
        return;
    }
    const Qt::KeyboardModifiers modifiers = event->modifiers() & ~Qt::KeypadModifier;
    const bool fine = modifiers == Qt::ShiftModifier;
    const auto step = stepOf(event->key(), fine);
    const bool activates =
        event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter || event->key() == Qt::Key_Space;
    // A click gives the canvas the focus for Escape's sake; other keys are for who sees where the keyboard
    // is.
    if (!worksByKeyboard(*this) || !currentCard() || (!step && !activates) ||
        (modifiers != Qt::NoModifier && !fine)) {
        QWidget::keyPressEvent(event);
        return;
    }
    if (step)
        moveCurrentCard(*step);
    else if (!event->isAutoRepeat())
        makeMaster(currentID_);
}

void CanvasArea::focusInEvent(QFocusEvent *event) {
    const Qt::FocusReason reason = event->reason();
    const bool byTab = reason == Qt::TabFocusReason || reason == Qt::BacktabFocusReason;
    if (byTab && !cards_.empty())
        currentID_ = reason == Qt::TabFocusReason ? cards_.front().id : cards_.back().id;
    else if (!currentCard() && !cards_.empty())
        currentID_ = cards_.front().id;
    update();
    followCurrentCard();
    // Qt itself announces the whole canvas once this returns; the card must be the last word.
    QMetaObject::invokeMethod(
        this,
        [this] {
            if (hasFocus())
                announceCurrentCard(*this);
        },
        Qt::QueuedConnection);
}

void CanvasArea::focusOutEvent(QFocusEvent *) {
    updateCard(currentCard());
}

bool CanvasArea::focusNextPrevChild(bool next) {
    const auto current = std::find_if(cards_.begin(), cards_.end(),
                                      [this](const CanvasCard &card) { return card.id == currentID_; });
    const bool isOnCard = hasFocus() && current != cards_.end();
    if (!isOnCard || current == (next ? cards_.end() - 1 : cards_.begin()))
        return QWidget::focusNextPrevChild(next);
    setCurrentCard(next ? (current + 1)->id : (current - 1)->id);
    return true;
}

void CanvasArea::changeEvent(QEvent *event) {
    if (event->type() == QEvent::EnabledChange)
        endDrag();
    QWidget::changeEvent(event);
}

// A name that was cut can be read whole by resting the pointer on its card.
void CanvasArea::showWholeTitle(const QHelpEvent &event) {
    const CanvasCard *card = cardAt(event.pos());
    if (card && !CardPainter(palette(), font()).showsWholeTitle(*card))
        showToolTip(event, card->title, this, CardPainter::extent(placeOf(*card)));
}

bool CanvasArea::event(QEvent *event) {
    switch (event->type()) {
    case QEvent::ToolTip:
        showWholeTitle(*static_cast<QHelpEvent *>(event));
        return true;
    case QEvent::ShortcutOverride:
        // Escape belongs to the drag, whatever else it is for in this window.
        if (drag_ && static_cast<QKeyEvent *>(event)->key() == Qt::Key_Escape)
            event->accept();
        break;
    case QEvent::Hide:
    case QEvent::UngrabMouse:
    case QEvent::WindowDeactivate:
        endDrag();
        break;
    default:
        break;
    }
    return QWidget::event(event);
}

} // namespace quorbit
