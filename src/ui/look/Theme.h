#pragma once

#include "platform/Appearance.h"
#include "ui/look/TextColor.h"

#include <QColor>
#include <QPalette>

namespace quorbit {

/// The palette that gives every control its colours. Set it on the application: all views follow by their
/// palette change events.
QPalette themePalette(const ColorPreferences &preferences);

/// The palette of what lies on a highlighted row: its text stays readable on the highlight.
QPalette highlightedPalette(const QPalette &palette);

/// The same for what lies on a card tinted in the accent colour.
QPalette tintedPalette(const QPalette &palette);

/// The colour for text, readable on the palette's window and card (4.5 : 1, in high contrast 7 : 1).
QColor textColor(const QPalette &palette, TextColor color);

/// The colour for symbols, dots and other shapes (3 : 1, in high contrast 4.5 : 1).
QColor shapeColor(const QPalette &palette, TextColor color);

/// The colour for text on another opaque surface than window and card.
QColor textOn(const QPalette &palette, TextColor color, const QColor &surface);

/// White or nearly black, whichever stands out more from an opaque surface.
QColor readableOn(const QColor &surface);

/// `fill`, made darker or lighter until `text` on it has the contrast of textColor().
QColor fillUnder(const QColor &text, const QColor &fill, const QPalette &palette);

/// All colours of a view, derived from the palette of the widget that paints. Those with an alpha are painted
/// over the surface that they lie on.
struct ThemeColors {
    bool dark = false;
    bool highContrast = false;
    QColor window, card, cardEdge, separator;
    QColor primary, secondary, tertiary;
    /// Shapes in the accent colour; `accentFill` is the accent as a background that `onAccent` is read on,
    /// and `accentText` the accent as text.
    QColor accent, accentFill, onAccent, accentText;
    /// Shapes; for text ask textColor().
    QColor green, orange, red, yellow;
    /// The highlight of a row under the pointer, the soft pill behind a chosen tab, and the tint of a card.
    QColor hover, pill, tint;
    /// The face and the edge of buttons, pickers and text fields.
    QColor control, controlEdge, field, fieldEdge;
    /// The track of a switch that is off, and the chosen one of several segments.
    QColor track, segment;
};
ThemeColors themeColors(const QPalette &palette);

/// The contrast of two opaque colours as WCAG 2 defines it, 1 to 21.
double contrastRatio(const QColor &a, const QColor &b);

/// `top` painted over the opaque `bottom`.
QColor composed(const QColor &top, const QColor &bottom);

/// `color` with the opacity `alpha`, 0 to 1.
QColor withAlpha(QColor color, double alpha);

} // namespace quorbit
