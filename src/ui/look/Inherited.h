#pragma once

#include <QFont>
#include <QPalette>

#include <functional>

class QWidget;

namespace quorbit {

/// What a widget would look like without a font and a palette of its own: its parent's, or the application's.
QFont inheritedFont(const QWidget &widget);
QPalette inheritedPalette(const QWidget &widget);

/// Calls `restyle` now and whenever what `widget` would inherit has changed. A font or palette of its own
/// hides that from the widget.
void followInherited(QWidget *widget, std::function<void()> restyle);

} // namespace quorbit
