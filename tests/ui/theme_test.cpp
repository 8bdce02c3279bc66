#include "ui/TextStyle.h"
#include "ui/Theme.h"

#include <QTest>

using namespace quorbit;

namespace {

const std::initializer_list<TextColor> textColors{
    TextColor::primary, TextColor::secondary, TextColor::tertiary, TextColor::accent,
    TextColor::green,   TextColor::orange,    TextColor::red,      TextColor::yellow};

} // namespace

class ThemeTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void textAndShapesStandOut_data();
    void textAndShapesStandOut();
    void designColoursAreKept();
    void fontsFollowTheUser_data();
    void fontsFollowTheUser();
};

void ThemeTest::textAndShapesStandOut_data() {
    QTest::addColumn<bool>("dark");
    QTest::addColumn<bool>("highContrast");
    QTest::addColumn<QString>("accent");
    for (const bool dark : {false, true}) {
        for (const bool highContrast : {false, true}) {
            for (const char *accent : {"", "#ffffff", "#000000", "#ffd500", "#3a944a", "#e01b24", "#9141ac",
                                       "#7fdbff", "#808080", "#0000ff"}) {
                QTest::addRow("%s%s %s", dark ? "dark" : "light", highContrast ? " high contrast" : "",
                              accent)
                    << dark << highContrast << QString::fromLatin1(accent);
            }
        }
    }
}

void ThemeTest::textAndShapesStandOut() {
    QFETCH(bool, dark);
    QFETCH(bool, highContrast);
    QFETCH(QString, accent);
    Appearance appearance{.dark = dark, .accent = {}, .highContrast = highContrast, .reducedMotion = false};
    if (!accent.isEmpty())
        appearance.accent = QColor(accent);
    const QPalette palette = themePalette(appearance);
    const double text = highContrast ? 7 : 4.5;
    const double shape = highContrast ? 4.5 : 3;

    for (const QPalette &shown : {palette, highlightedPalette(palette), tintedPalette(palette)}) {
        const ThemeColors colors = themeColors(shown);
        QCOMPARE(colors.dark, dark);
        for (const QColor &surface : {colors.window, colors.card}) {
            for (const TextColor color : textColors) {
                const double reached = contrastRatio(textColor(shown, color), surface);
                QVERIFY2(reached >= text,
                         qPrintable(QStringLiteral("text %1: %2").arg(int(color)).arg(reached)));
                QVERIFY(contrastRatio(shapeColor(shown, color), surface) >= shape);
            }
        }
        QVERIFY(contrastRatio(colors.onAccent, colors.accentFill) >= text);
    }
    const ThemeColors colors = themeColors(palette);
    QVERIFY(contrastRatio(colors.accentText, composed(colors.pill, colors.window)) >= text);
    for (const QColor &surface :
         {colors.control, colors.field, colors.segment, composed(colors.pill, colors.window)})
        QVERIFY(contrastRatio(colors.primary, surface) >= text);
    for (const QColor &surface : {colors.control, colors.field}) {
        QVERIFY(contrastRatio(textOn(palette, TextColor::secondary, surface), surface) >= text);
        QVERIFY(contrastRatio(textOn(palette, TextColor::tertiary, surface), surface) >= text);
        QVERIFY(contrastRatio(textOn(palette, TextColor::red, surface), surface) >= text);
    }
    if (highContrast)
        QVERIFY(contrastRatio(composed(colors.cardEdge, colors.window), colors.window) >= 3);
}

void ThemeTest::designColoursAreKept() {
    const ThemeColors light = themeColors(themePalette({}));
    QCOMPARE(light.window.name(), QStringLiteral("#f2f2f4"));
    QCOMPARE(light.card.name(), QStringLiteral("#ffffff"));
    QCOMPARE(composed(light.cardEdge, light.card).name(), QStringLiteral("#e5e5e5"));
    QCOMPARE(light.secondary.name(), QStringLiteral("#6e6e73"));
    QCOMPARE(light.accent.name(), QStringLiteral("#0a6cff"));
    QCOMPARE(light.accentFill.name(), QStringLiteral("#0a6cff"));
    QCOMPARE(light.green.name(), QStringLiteral("#248a3d"));

    Appearance night;
    night.dark = true;
    const ThemeColors dark = themeColors(themePalette(night));
    QCOMPARE(dark.window.name(), QStringLiteral("#1f1f22"));
    QCOMPARE(composed(dark.cardEdge, dark.card).name(), QStringLiteral("#444447"));
    QCOMPARE(dark.secondary.name(), QStringLiteral("#a2a2a9"));
    QCOMPARE(dark.accent.name(), QStringLiteral("#4a98ff"));
    QCOMPARE(dark.onAccent, QColor(Qt::white));
}

void ThemeTest::fontsFollowTheUser_data() {
    QTest::addColumn<double>("points");
    QTest::addColumn<int>("pixels");
    QTest::addColumn<int>("style");
    QTest::addColumn<double>("expected");
    QTest::newRow("default body") << 9.0 << 0 << int(TextStyle::body) << 9.75;
    QTest::newRow("default caption") << 9.0 << 0 << int(TextStyle::caption) << 8.25;
    QTest::newRow("large body") << 18.0 << 0 << int(TextStyle::body) << 19.5;
    QTest::newRow("body in pixels") << 0.0 << 12 << int(TextStyle::body) << 13.0;
    QTest::newRow("large title in pixels") << 0.0 << 24 << int(TextStyle::title3) << 30.0;
}

void ThemeTest::fontsFollowTheUser() {
    QFETCH(double, points);
    QFETCH(int, pixels);
    QFETCH(int, style);
    QFETCH(double, expected);
    QFont user(QStringLiteral("Inter"));
    if (points > 0)
        user.setPointSizeF(points);
    else
        user.setPixelSize(pixels);
    const QFont font = textFont(TextStyle(style), user);
    QCOMPARE(points > 0 ? font.pointSizeF() : font.pixelSize(), expected);
    QCOMPARE(font.family(), user.family());
}

QTEST_MAIN(ThemeTest)
#include "theme_test.moc"
