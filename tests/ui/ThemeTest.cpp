#include "ui/look/Theme.h"
#include "support/Row.h"
#include "ui/look/Symbol.h"
#include "ui/look/TextStyle.h"

#include <QImage>
#include <QPainter>

using namespace Qt::StringLiterals;
using namespace quorbit;
using namespace quorbit::test;

namespace {

/// A symbol in a square of 48, in the middle of one of 64.
QImage drawn(const QString &name) {
    QImage image(64, 64, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    paintSymbol(painter, QRectF(8, 8, 48, 48), name, Qt::black);
    return image;
}

/// How many pixels are inked.
double ink(const QImage &image) {
    double sum = 0;
    for (int pixel = 0; pixel < image.width() * image.height(); ++pixel)
        sum += qAlpha(image.pixel(pixel % image.width(), pixel / image.width())) / 255.0;
    return sum;
}

} // namespace

class ThemeTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void textAndShapesStandOut() {
        for (const char *accent : {"", "#ffffff", "#000000", "#ffd500", "#9141ac", "#7fdbff", "#808080"}) {
            for (const bool dark : {false, true}) {
                for (const bool highContrast : {false, true}) {
                    const Row row(QByteArray("accent ") + accent + (dark ? ", dark" : ", light") +
                                  (highContrast ? ", high contrast" : ""));
                    checkContrasts(
                        {dark, *accent ? std::optional(QColor(accent)) : std::nullopt, highContrast});
                }
            }
        }
    }

    // Nobody tells what is behind the icon in the tray. At every size a good part of it must stand out from
    // any grey.
    void outlinedSymbolsStandOutAnywhere() {
        const QIcon icon = outlinedSymbolIcon(u"cursorarrow.and.square.on.square.dashed"_s);
        QVERIFY(!icon.availableSizes().empty());
        for (const QSize &size : icon.availableSizes()) {
            const QImage glyph = icon.pixmap(size).toImage().convertToFormat(QImage::Format_ARGB32);
            QCOMPARE(glyph.size(), size);
            const int pixels = size.width() * size.height();
            for (int grey = 0; grey < 256; grey += 15) {
                const Row row(QByteArray::number(size.width()) + " px on " + QByteArray::number(grey));
                const QColor behind(grey, grey, grey);
                int seen = 0;
                for (int pixel = 0; pixel < pixels; ++pixel) {
                    const QColor ink = glyph.pixelColor(pixel % size.width(), pixel / size.width());
                    seen += contrastRatio(composed(ink, behind), behind) >= 3 ? 1 : 0;
                }
                QVERIFY(seen * 12 >= pixels);
            }
        }
    }

    void fontsFollowTheUser() {
        QFont points(u"Inter"_s);
        points.setPointSizeF(9);
        QFont pixels(u"Inter"_s);
        pixels.setPixelSize(24);
        QCOMPARE(textFont(TextStyle::caption, points).pointSizeF(), 8.25);
        QCOMPARE(textFont(TextStyle::title3, pixels).pixelSize(), 30);
        // The desktop's own font, in half a size more, is what body text is in.
        QCOMPARE(textFont(TextStyle::body, applicationFont(points, 1.5)).pointSizeF(), 13.5);
        QCOMPARE(textFont(TextStyle::body, applicationFont(pixels, 1.5)).pixelSize(), 36);
    }

    void everySymbolIsKnownAndLiesInItsSquare() {
        const QImage unknown = drawn(u"no.such.symbol"_s);
        QVERIFY(symbolNames().size() > 45);
        for (const QString &name : symbolNames()) {
            const Row row(name.toUtf8());
            const QImage symbol = drawn(name);
            QVERIFY(symbol != unknown && ink(symbol) > 40);
            QVERIFY(ink(symbol.copy(8, 8, 48, 48)) > 0.999 * ink(symbol));
        }
    }

private:
    static void checkContrasts(const ColorPreferences &preferences) {
        const QPalette palette = themePalette(preferences);
        const ThemeColors colors = themeColors(palette);
        QCOMPARE(colors.dark, preferences.dark);
        const double text = preferences.highContrast ? 7 : 4.5;
        const double shape = preferences.highContrast ? 4.5 : 3;
        const auto differs = [](const char *what, const QColor &ink, const QColor &surface, double least) {
            QVERIFY2(contrastRatio(ink, surface) >= least,
                     qPrintable(u"%1: %2 on %3 is %4"_s.arg(QLatin1String(what), ink.name(), surface.name())
                                    .arg(contrastRatio(ink, surface))));
        };

        // What lies plainly on a surface, on a highlighted row, and on a tinted card.
        using enum TextColor;
        for (const QPalette &shown : {palette, highlightedPalette(palette), tintedPalette(palette)}) {
            const ThemeColors on = themeColors(shown);
            for (const QColor &surface : {on.window, on.card}) {
                for (const TextColor color :
                     {primary, secondary, tertiary, TextColor::accent, green, orange, red, yellow}) {
                    differs("text", textColor(shown, color), surface, text);
                    differs("shape", shapeColor(shown, color), surface, shape);
                }
            }
            differs("filled button", on.onAccent, on.accentFill, text);
            for (const TextColor color : {primary, red})
                differs("button", textOn(shown, color, on.control), on.control, text);
        }

        differs("destructive button", Qt::white, fillUnder(Qt::white, colors.red, palette), text);
        for (const QColor &surface : {colors.window, colors.card})
            differs("segment", colors.primary, composed(colors.pill, surface), text);
        differs("chosen segment", colors.primary, colors.segment, text);
        const QColor tab = composed(colors.pill, colors.window);
        differs("chosen tab", colors.accentText, tab, text);
        differs("its symbol", colors.accent, tab, shape * 0.85); // beside its title in accentText
        differs("picker", colors.primary, composed(withAlpha(colors.primary, 0.08), colors.control), text);
        differs("field", colors.primary, colors.field, text);
        for (const auto &[ink, surface] : {std::pair(QPalette::PlaceholderText, QPalette::Base),
                                           {QPalette::ToolTipText, QPalette::ToolTipBase},
                                           {QPalette::HighlightedText, QPalette::Highlight}})
            differs("toolkit", palette.color(ink), palette.color(surface), text);
        if (!preferences.highContrast)
            return;
        for (const QColor &surface : {colors.window, colors.card, colors.control})
            differs("edge", composed(colors.controlEdge, surface), surface, shape);
        for (const QColor &track : {colors.track, colors.accent})
            differs("knob", readableOn(track), track, 3);
    }
};

QTEST_MAIN(ThemeTest)
#include "ThemeTest.moc"
