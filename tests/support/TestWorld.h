#pragma once

#include "ui/look/ControlStyle.h"
#include "ui/look/Theme.h"

#include <QApplication>
#include <QStringList>
#include <QTest>

namespace quorbit {

/// Makes views use the same fonts everywhere. Called before the application object is made.
void useTestFonts();

/// The languages that there is a string table for, by its name: "en", "zh_Hans".
QStringList allLanguages();

/// Shows the views made from now on in a language, read from its string table.
void useLanguage(const QString &language);

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
