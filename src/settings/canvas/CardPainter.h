#pragma once

#include "settings/canvas/CanvasModel.h"

#include <QFont>
#include <QPalette>

class QPainter;

namespace quorbit {

/// Paints the canvas and its cards in the colours of a palette. Edges lie on whole pixels of the screen.
class CardPainter {
public:
    CardPainter(const QPalette &palette, const QFont &userFont);

    void paintBackground(QPainter &painter, const QRectF &area) const;
    /// `mastery` is how much of the master's look the card has, 0 to 1.
    void paintCard(QPainter &painter, const CanvasCard &card, const QRectF &place, double mastery) const;
    void paintFocus(QPainter &painter, const QRectF &place) const;

    /// Whether the name of a card can be read on it.
    bool showsWholeTitle(const CanvasCard &card) const;

    /// All that painting a card at that place may touch.
    static QRect extent(const QRectF &place);

private:
    void paintContent(QPainter &painter, const CanvasCard &card, const QRectF &place, const QPalette &colors,
                      double mastery) const;

    /// The sizes on a card of this height, in pixels.
    CardMetrics sizes(double height) const;
    QFont font(double size, QFont::Weight weight) const;

    QPalette palette_;
    QFont font_;
    QColor surface_; ///< of the canvas
};

} // namespace quorbit
