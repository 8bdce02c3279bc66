#pragma once

#include "settings/canvas/Arrangement.h"
#include "settings/canvas/CanvasModel.h"
#include "settings/canvas/MasterFade.h"

#include <QWidget>

#include <optional>
#include <vector>

class QHelpEvent;

namespace quorbit {

class CardPainter;

/// The area of the canvas that the cards lie on. Each card is one stop for the Tab key; the arrow keys move
/// it, and Return or Space makes it the master.
///
/// Nothing that the service publishes disturbs a drag: the scale stays, and the card is dropped where the
/// pointer holds it, among what was published last. What the user arranged is shown until its save has ended.
class CanvasArea final : public QWidget {
    Q_OBJECT

public:
    explicit CanvasArea(QWidget *parent = nullptr);
    ~CanvasArea() override;

    void render(const ScreenDesk &desk, const QString &masterID);
    /// A save that `arranged` asked for has ended; what an answered one brought about is rendered.
    void saveEnded(int save, bool isAnswered);
    /// What would be asked for once the saves under way have ended, for an owner that does not wait for them.
    std::optional<Arrangement::Save> lastSave() { return arrangement_.lastSave(); }

    /// What is shown, in drawing order. No two cards have the same identifier.
    const std::vector<CanvasCard> &cards() const { return cards_; }
    /// Where a card is seen, also while it is dragged.
    QRectF placeOf(const CanvasCard &card) const;
    /// The topmost card at a position, or nullptr.
    const CanvasCard *cardAt(const QPointF &position) const;
    const CanvasCard *cardWithID(const QString &id) const;

    /// Where the keyboard is, or nullptr.
    const CanvasCard *currentCard() const { return cardWithID(currentID_); }
    void setCurrentCard(const QString &id);
    void makeMaster(const QString &id);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }
    /// Tells a scroll area that its focus widget is the current card, not the whole canvas.
    QVariant inputMethodQuery(Qt::InputMethodQuery query) const override;

Q_SIGNALS:
    /// The owner saves the layout, and tells by saveEnded().
    void arranged(const ScreenLayout &layout, int save);
    void masterPicked(const QString &id);
    /// The keyboard has reached or moved a card, which now lies at `place`.
    void currentCardAt(const QRect &place);

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;
    bool focusNextPrevChild(bool next) override;
    void changeEvent(QEvent *event) override;
    bool event(QEvent *event) override;

private:
    /// From the press of the button to its release.
    struct Drag {
        QString id;
        QPointF pressed;    ///< on the canvas
        QPointF pointer;    ///< in the window, in which the canvas may scroll
        bool moves = false; ///< has left the distance within which it is a tap
    };

    void reshow();
    void followPointer(const QMouseEvent &event);
    QPointF translation() const;
    void endDrag();
    void ask(const std::optional<Arrangement::Save> &save);
    void moveCurrentCard(QPointF distance);
    void followCurrentCard();
    void keepCurrentCard(const std::vector<CanvasCard> &before);
    void showWholeTitle(const QHelpEvent &event);
    void updateCard(const CanvasCard *card);
    void paintCards(QPainter &painter, const CardPainter &cards, const QRectF &dirty) const;

    Arrangement arrangement_;
    QString masterID_;
    CanvasFit fit_;
    std::vector<CanvasCard> cards_;
    std::optional<Drag> drag_;
    MasterFade fade_{*this};
    QString currentID_;
};

} // namespace quorbit
