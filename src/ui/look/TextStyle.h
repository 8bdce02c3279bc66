#pragma once

#include <QFont>
#include <QString>

namespace quorbit {

/// Text by its place in a view. At the default font size and 96 dpi: body and headline are 13 px, callout 12,
/// caption 11, caption2 10, title3 15, title2 17, display 40. Headline and title2 are semibold, title3 and
/// display bold. Monospaced body text is 12 px, which looks as large as the proportional text beside it.
enum class TextStyle { body, headline, callout, caption, caption2, title3, title2, display };

/// The font of a style in the user's family and at the user's size.
QFont textFont(TextStyle style, const QFont &userFont, bool monospaced = false);

/// A font of a size that a view computes itself, in pixels at the default font size and 96 dpi.
QFont sizedFont(double pixels, QFont::Weight weight, const QFont &userFont);

/// The width that a line of text needs, in whole pixels.
int textWidth(const QFont &font, const QString &text);

/// The application's font where ordinary text shall look as `desktopFont` does, enlarged by `scale`: body
/// text is in it then.
QFont applicationFont(const QFont &desktopFont, double scale);

/// `font`, larger by `scale`.
QFont scaledFont(QFont font, double scale);

/// How much larger than the default the user's font is; symbols and columns grow with it.
double fontScale(const QFont &userFont);

/// A measure given in pixels at the default font size, in whole pixels at the user's.
int scaled(double pixels, const QFont &userFont);

} // namespace quorbit
