#include "settings/canvas/CanvasAccessible.h"

#include "settings/canvas/CanvasArea.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QCoreApplication>
#include <QHash>
#include <QPointer>
#include <QWindow>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace quorbit {

namespace {

QString nameOf(const CanvasCard &card) {
    return card.statusText.isEmpty() ? card.title : card.title + u", "_s + card.statusText;
}

QString placeText(CardRelation::Side side, const QString &neighbour) {
    switch (side) {
    case CardRelation::Side::left:
        return qtTrId("kvm.canvas.place.left_of").arg(neighbour);
    case CardRelation::Side::right:
        return qtTrId("kvm.canvas.place.right_of").arg(neighbour);
    case CardRelation::Side::above:
        return qtTrId("kvm.canvas.place.above").arg(neighbour);
    case CardRelation::Side::below:
        return qtTrId("kvm.canvas.place.below").arg(neighbour);
    case CardRelation::Side::samePlace:
        break;
    }
    return qtTrId("kvm.canvas.place.same_place").arg(neighbour);
}

/// Where the card lies, and what pressing it does.
QString descriptionOf(const CanvasCard &card, const CanvasArea &area) {
    const QString hint = qtTrId("kvm.canvas.tap_master");
    const CanvasCard *neighbour = card.relation ? area.cardWithID(card.relation->neighbourID) : nullptr;
    return !neighbour ? hint : placeText(card.relation->side, neighbour->title) + u' ' + hint;
}

/// The card of one device, wherever it stands among the others.
class CardInterface final : public QAccessibleInterface, public QAccessibleActionInterface {
public:
    CardInterface(CanvasArea *area, QString id) : area_(area), id_(std::move(id)) {}

    const QString &id() const { return id_; }
    const CanvasCard *card() const { return area_ ? area_->cardWithID(id_) : nullptr; }

    bool isValid() const override { return card() != nullptr; }
    QObject *object() const override { return nullptr; }
    QWindow *window() const override { return area_ ? area_->window()->windowHandle() : nullptr; }
    QAccessibleInterface *parent() const override {
        return QAccessible::queryAccessibleInterface(area_.data());
    }
    QAccessibleInterface *child(int) const override { return nullptr; }
    QAccessibleInterface *childAt(int, int) const override { return nullptr; }
    int childCount() const override { return 0; }
    int indexOfChild(const QAccessibleInterface *) const override { return -1; }
    QAccessible::Role role() const override { return QAccessible::Button; }

    QRect rect() const override {
        const CanvasCard *shown = card();
        if (!shown)
            return {};
        const QRect inArea = area_->placeOf(*shown).toAlignedRect();
        return {area_->mapToGlobal(inArea.topLeft()), inArea.size()};
    }

    QAccessible::State state() const override {
        QAccessible::State state;
        const CanvasCard *shown = card();
        if (!shown) {
            state.invalid = true;
            return state;
        }
        state.disabled = !area_->isEnabled();
        state.focusable = area_->isEnabled();
        state.focused = area_->hasFocus() && area_->currentCard() == shown;
        state.selectable = true;
        state.selected = shown->isMaster;
        state.invisible = !area_->isVisible();
        state.offscreen = !area_->visibleRegion().intersects(area_->placeOf(*shown).toAlignedRect());
        return state;
    }

    QString text(QAccessible::Text kind) const override {
        const CanvasCard *shown = card();
        if (!shown)
            return {};
        if (kind == QAccessible::Name)
            return nameOf(*shown);
        return kind == QAccessible::Description ? descriptionOf(*shown, *area_) : QString();
    }
    void setText(QAccessible::Text, const QString &) override {}

    void *interface_cast(QAccessible::InterfaceType type) override {
        return type == QAccessible::ActionInterface ? static_cast<QAccessibleActionInterface *>(this)
                                                    : nullptr;
    }
    QStringList actionNames() const override {
        return area_ && area_->isEnabled() ? QStringList{pressAction(), setFocusAction()} : QStringList();
    }
    void doAction(const QString &action) override {
        if (!isValid() || !area_->isEnabled())
            return;
        if (action == pressAction()) {
            area_->makeMaster(id_);
        } else if (action == setFocusAction()) {
            area_->setCurrentCard(id_);
            area_->clearFocus(); // a click may have left it there, without a ring
            area_->setFocus(Qt::ShortcutFocusReason);
        }
    }
    QStringList keyBindingsForAction(const QString &) const override { return {}; }

private:
    QPointer<CanvasArea> area_;
    QString id_;
};

class AreaInterface final : public QAccessibleWidget {
public:
    explicit AreaInterface(CanvasArea *area)
        : QAccessibleWidget(area, QAccessible::Grouping, qtTrId("kvm.section.layout")), area_(area) {}
    ~AreaInterface() override {
        for (const QAccessible::Id id : std::as_const(made_))
            QAccessible::deleteAccessibleInterface(id);
    }

    QString text(QAccessible::Text kind) const override {
        return kind == QAccessible::Description ? qtTrId("kvm.canvas.drag_arrange")
                                                : QAccessibleWidget::text(kind);
    }

    QAccessible::State state() const override {
        QAccessible::State state = QAccessibleWidget::state();
        state.focused = state.focused && !area_->currentCard(); // else the card has the focus
        return state;
    }

    int childCount() const override { return static_cast<int>(area_->cards().size()); }
    QAccessibleInterface *child(int index) const override {
        if (index < 0 || index >= childCount())
            return nullptr;
        return of(&area_->cards()[static_cast<std::size_t>(index)]);
    }
    QAccessibleInterface *childAt(int x, int y) const override {
        return of(area_->cardAt(area_->mapFromGlobal(QPoint(x, y))));
    }
    int indexOfChild(const QAccessibleInterface *child) const override {
        const auto *card = dynamic_cast<const CardInterface *>(child);
        const CanvasCard *shown = card ? card->card() : nullptr;
        return shown ? static_cast<int>(shown - area_->cards().data()) : -1;
    }
    QAccessibleInterface *focusChild() const override {
        return area_->hasFocus() ? of(area_->currentCard()) : nullptr;
    }

    QAccessibleInterface *of(const CanvasCard *card) const {
        if (!card)
            return nullptr;
        if (QAccessibleInterface *known = madeFor(card->id))
            return known;
        auto *made = new CardInterface(area_, card->id);
        made_.insert(card->id, QAccessible::registerAccessibleInterface(made));
        return made;
    }
    /// What somebody has already asked for.
    QAccessibleInterface *madeFor(const QString &id) const {
        const auto known = made_.constFind(id);
        return known != made_.constEnd() ? QAccessible::accessibleInterface(*known) : nullptr;
    }
    void forget(const QString &id) { QAccessible::deleteAccessibleInterface(made_.take(id)); }

private:
    CanvasArea *area_;
    mutable QHash<QString, QAccessible::Id> made_;
};

QAccessibleInterface *makeInterface(const QString &, QObject *object) {
    auto *area = qobject_cast<CanvasArea *>(object);
    return area ? new AreaInterface(area) : nullptr;
}

AreaInterface *interfaceOf(CanvasArea &area) {
    return QAccessible::isActive()
               ? static_cast<AreaInterface *>(QAccessible::queryAccessibleInterface(&area))
               : nullptr;
}

void announce(QAccessibleInterface *card, QAccessible::Event type) {
    QAccessibleEvent event(card, type);
    QAccessible::updateAccessibility(&event);
}

const CanvasCard *find(const std::vector<CanvasCard> &cards, const QString &id) {
    const auto found =
        std::find_if(cards.begin(), cards.end(), [&](const CanvasCard &card) { return card.id == id; });
    return found == cards.end() ? nullptr : &*found;
}

} // namespace

void installCanvasAccessibility() {
    QAccessible::installFactory(makeInterface); // Qt keeps each factory once
}

void announceCurrentCard(CanvasArea &area) {
    const AreaInterface *group = interfaceOf(area);
    if (group && area.currentCard())
        announce(group->of(area.currentCard()), QAccessible::Focus);
}

void announceLeavingCards(CanvasArea &area, const std::vector<CanvasCard> &next) {
    AreaInterface *group = interfaceOf(area);
    if (!group)
        return;
    for (const CanvasCard &card : area.cards()) {
        if (find(next, card.id))
            continue;
        announce(group->of(&card), QAccessible::ObjectDestroyed);
        group->forget(card.id);
    }
}

void announceChangedCards(CanvasArea &area, const std::vector<CanvasCard> &before) {
    const AreaInterface *group = interfaceOf(area);
    if (!group)
        return;
    for (const CanvasCard &card : area.cards()) {
        const CanvasCard *old = find(before, card.id);
        QAccessibleInterface *shown = !old ? group->of(&card) : group->madeFor(card.id);
        if (!shown)
            continue; // no interface was made, so no client caches it
        if (!old) {
            announce(shown, QAccessible::ObjectCreated);
            continue;
        }
        if (nameOf(*old) != nameOf(card))
            announce(shown, QAccessible::NameChanged);
        if (old->relation != card.relation)
            announce(shown, QAccessible::DescriptionChanged);
        if (old->rect != card.rect)
            announce(shown, QAccessible::LocationChanged);
        if (old->isMaster != card.isMaster)
            announce(shown, QAccessible::Selection);
    }
}

} // namespace quorbit
