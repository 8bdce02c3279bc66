#pragma once

#include "ui/look/ControlStyle.h"
#include "ui/look/Theme.h"

#include <QApplication>
#include <QStringList>
#include <QTest>

#include <exception>

namespace quorbit {

/// Makes views use the same fonts everywhere. Called before the application object is made.
void useTestFonts();

/// The languages that there is a string table for, by its name: "en", "zh_Hans".
QStringList allLanguages();

/// Shows the views made from now on in a language, read from its string table.
void useLanguage(const QString &language);

/// Gives the application the look of a desktop.
void useAppearance(const ColorPreferences &colors, double fontPoints);

/// A test of which an exception ends the test function that it leaves; the toolkit would end the program.
template <class Test>
class Guarded final : public Test {
public:
    const QMetaObject *metaObject() const override { return &guarded; }

private:
    static void call(QObject *test, QMetaObject::Call what, int function, void **arguments) {
        try {
            Test::staticMetaObject.d.static_metacall(test, what, function, arguments);
        } catch (const std::exception &fault) {
            QTest::qFail(fault.what(), __FILE__, __LINE__);
        }
    }
    static inline const QMetaObject guarded = [] {
        QMetaObject own = Test::staticMetaObject;
        own.d.static_metacall = call;
        return own;
    }();
};

/// The main function of a test of views.
template <class Test>
int runViewTest(int argc, char **argv) {
    useTestFonts();
    QApplication app(argc, argv);
    QApplication::setStyle(new ControlStyle);
    useLanguage(QStringLiteral("en"));
    useAppearance({}, 9);
    Guarded<Test> test;
    return QTest::qExec(&test, argc, argv);
}

} // namespace quorbit
