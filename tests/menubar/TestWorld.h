#pragma once

#include "ui/Theme.h"

#include <QLatin1String>

namespace quorbit {

/// Makes programs that show the panel use the same fonts everywhere. Called before the application object is
/// made.
void useTestFonts();

/// Shows the panels made from now on in a language, "en" or "zh_Hans", read from its string table.
void useLanguage(QLatin1String language);

/// Gives the application the look of a desktop.
void useAppearance(const Appearance &appearance, double fontPoints);

} // namespace quorbit
