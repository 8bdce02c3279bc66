#pragma once

#include "ui/ControlStyle.h"
#include "ui/Theme.h"

#include <QApplication>
#include <QLatin1String>
#include <QTest>

namespace quorbit {

/// Makes programs that show the panel use the same fonts everywhere. Called before the application object is
/// made.
void useTestFonts();

/// Shows the panels made from now on in a language, "en" or "zh_Hans", read from its string table.
void useLanguage(QLatin1String language);

/// Gives the application the look of a desktop.
void useAppearance(const Appearance &appearance, double fontPoints);

/// Rows for a test that is to be run in every language and with fonts of these sizes; it begins with
/// useLook().
void addLooks(std::initializer_list<double> points);
void useLook();

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
