#include "ui/Symbol.h"
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
    void textAndShapesStandOut_data() {
        QTest::addColumn<bool>("dark");
        QTest::addColumn<bool>("highContrast");
        QTest::addColumn<QString>("accent");
        for (const bool dark : {false, true}) {
            for (const bool highContrast : {false, true}) {
                for (const char *accent : {"", "#ffffff", "#000000", "#ffd500", "#3a944a", "#e01b24",
                                           "#9141ac", "#7fdbff", "#ffff00", "#808080", "#0000ff"}) {
                    QTest::addRow("%s%s %s", dark ? "dark" : "light", highContrast ? " high contrast" : "",
                                  accent)
                        << dark << highContrast << QString::fromLatin1(accent);
                }
            }
        }
    }
    void textAndShapesStandOut() {
        QFETCH(bool, dark);
        QFETCH(bool, highContrast);
        QFETCH(QString, accent);
        Appearance appearance{
            .dark = dark, .accent = {}, .highContrast = highContrast, .reducedMotion = false};
        if (!accent.isEmpty())
            appearance.accent = QColor(accent);
        const QPalette palette = themePalette(appearance);
        const double text = highContrast ? 7 : 4.5;
        const double shape = highContrast ? 4.5 : 3;

        const auto reads = [text](const char *what, const QColor &ink, const QColor &surface) {
            const double reached = contrastRatio(ink, surface);
            QVERIFY2(reached >= text, qPrintable(QStringLiteral("%1: %2 on %3 is %4")
                                                     .arg(QLatin1String(what), ink.name(), surface.name())
                                                     .arg(reached)));
        };

        // What lies plainly on a surface, on a highlighted row, and on a tinted card.
        for (const QPalette &shown : {palette, highlightedPalette(palette), tintedPalette(palette)}) {
            const ThemeColors colors = themeColors(shown);
            QCOMPARE(colors.dark, dark);
            QCOMPARE(colors.highContrast, highContrast);
            for (const QColor &surface : {colors.window, colors.card}) {
                for (const TextColor color : textColors) {
                    reads("text", textColor(shown, color), surface);
                    QVERIFY(contrastRatio(shapeColor(shown, color), surface) >= shape);
                }
            }
            reads("filled button", colors.onAccent, colors.accentFill);
            for (const TextColor color : {TextColor::primary, TextColor::red})
                reads("button", textOn(shown, color, colors.control), colors.control);
        }

        const ThemeColors colors = themeColors(palette);
        const QPalette onTint = tintedPalette(palette);
        QCOMPARE(themeColors(onTint).window, composed(colors.tint, colors.window)); // what Card paints
        reads("destructive button", Qt::white, fillUnder(Qt::white, colors.red, palette));
        for (const QColor &surface : {colors.window, colors.card}) {
            const QColor pill = composed(colors.pill, surface);
            reads("segment", colors.primary, pill);
            reads("chosen segment", colors.primary, colors.segment);
        }
        const QColor tab = composed(colors.pill, colors.window);
        reads("chosen tab", colors.accentText, tab);
        QVERIFY(contrastRatio(colors.accent, tab) >= shape * 0.85); // beside its title in accentText
        reads("picker", colors.primary, composed(withAlpha(colors.primary, 0.08), colors.control));
        reads("field", colors.primary, colors.field);
        reads("placeholder", palette.color(QPalette::PlaceholderText), colors.field);
        reads("tooltip", palette.color(QPalette::ToolTipText), palette.color(QPalette::ToolTipBase));
        reads("selection", palette.color(QPalette::HighlightedText), palette.color(QPalette::Highlight));
        reads("menu", colors.secondary, dark ? colors.card : colors.window);

        // Cards in colours of their own, as those on a canvas that lets half of the window's colour through.
        const QColor canvas = composed(withAlpha(colors.window, 0.55), colors.card);
        for (const QColor &fill :
             {withAlpha(colors.accent, 0.1), withAlpha(Qt::gray, 0.1), withAlpha(Qt::gray, 0.05)}) {
            const QColor surface = composed(fill, canvas);
            for (const TextColor color : textColors)
                reads("canvas", textOn(palette, color, surface), surface);
        }
        if (highContrast) {
            for (const QColor &surface : {colors.window, colors.card, colors.control})
                QVERIFY(contrastRatio(composed(colors.controlEdge, surface), surface) >= shape);
            for (const QColor &track : {colors.track, colors.accent})
                QVERIFY(contrastRatio(readableOn(track), track) >= 3); // the knob of a switch
        }
    }

    // Nobody tells what is behind the icon in the tray. At every size a good part of it must stand out from
    // any grey.
    void outlinedSymbolsStandOutAnywhere() {
        const QIcon icon = outlinedSymbolIcon(QStringLiteral("cursorarrow.and.square.on.square.dashed"));
        QVERIFY(!icon.availableSizes().empty());
        for (const QSize &size : icon.availableSizes()) {
            const QImage glyph = icon.pixmap(size).toImage().convertToFormat(QImage::Format_ARGB32);
            QCOMPARE(glyph.size(), size);
            for (int grey = 0; grey < 256; grey += 15) {
                const QColor behind(grey, grey, grey);
                int seen = 0;
                for (int y = 0; y < size.height(); ++y) {
                    for (int x = 0; x < size.width(); ++x) {
                        const QColor ink = glyph.pixelColor(x, y);
                        seen += contrastRatio(composed(ink, behind), behind) >= 3 ? 1 : 0;
                    }
                }
                QVERIFY2(seen * 12 >= size.width() * size.height(),
                         qPrintable(QStringLiteral("%1 px on %2: %3").arg(size.width()).arg(grey).arg(seen)));
            }
        }
    }

    /// Moving a colour until it can be read leaves those alone that can be.
    void designColoursAreKept() {
        const ThemeColors light = themeColors(themePalette({}));
        const ThemeColors dark = themeColors(themePalette({.dark = true, .accent = {}}));
        const std::pair<QColor, const char *> rows[]{{light.secondary, "#6e6e73"},  {light.accent, "#0a6cff"},
                                                     {light.accentFill, "#0a6cff"}, {light.green, "#248a3d"},
                                                     {dark.secondary, "#a2a2a9"},   {dark.accent, "#4a98ff"},
                                                     {dark.onAccent, "#ffffff"}};
        for (const auto &[color, name] : rows)
            QCOMPARE(color.name(), QLatin1String(name));
    }

    void fontsFollowTheUser_data() {
        QTest::addColumn<double>("points");
        QTest::addColumn<int>("pixels");
        QTest::addColumn<int>("style");
        QTest::addColumn<double>("expected");
        QTest::newRow("default body") << 9.0 << 0 << int(TextStyle::body) << 9.75;
        QTest::newRow("default caption") << 9.0 << 0 << int(TextStyle::caption) << 8.25;
        QTest::newRow("large title in pixels") << 0.0 << 24 << int(TextStyle::title3) << 30.0;
    }
    void fontsFollowTheUser() {
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

        // The desktop's own font, in half a size more, is what body text is in.
        const QFont body = textFont(TextStyle::body, applicationFont(user, 1.5));
        if (points > 0)
            QCOMPARE(body.pointSizeF(), points * 1.5);
        else
            QCOMPARE(body.pixelSize(), pixels * 3 / 2);
    }
};

QTEST_MAIN(ThemeTest)
#include "theme_test.moc"
