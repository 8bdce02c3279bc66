#pragma once

#include "ui/look/ControlStyle.h"
#include "ui/look/Theme.h"

#include <QApplication>
#include <QLatin1String>
#include <QTest>

namespace quorbit {

/// Makes views use the same fonts everywhere. Called before the application object is made.
void useTestFonts();

/// Shows the views made from now on in a language, "en" or "zh_Hans", read from its string table.
void useLanguage(QLatin1String language);

/// Gives the application the look of a desktop.
void useAppearance(const ColorPreferences &colors, double fontPoints);

/// The main function of a test of views.
template <class Test>
int runViewTest(int argc, char **argv) {
    useTestFonts();
    QApplication app(argc, argv);
    QApplication::setStyle(new ControlStyle);
    Test test;
    return QTest::qExec(&test, argc, argv);
}

} // namespace quorbit
