#include "ui/look/Theme.h"
#include "support/Row.h"
#include "ui/look/Symbol.h"
#include "ui/look/TextStyle.h"

#include <QImage>
#include <QPainter>

#include <map>
#include <set>

using namespace Qt::StringLiterals;
using namespace quorbit;
using namespace quorbit::test;

namespace {

const std::initializer_list<TextColor> textColors{
    TextColor::primary, TextColor::secondary, TextColor::tertiary, TextColor::accent,
    TextColor::green,   TextColor::orange,    TextColor::red,      TextColor::yellow};

/// A symbol in a square of 48, in the middle of one of 64.
QImage drawn(const QString &name) {
    QImage image(64, 64, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    paintSymbol(painter, QRectF(8, 8, 48, 48), name, Qt::black);
    return image;
}

/// How much of the image is inked, 0 to 1, counting the difference to `other` when there is one.
double ink(const QImage &image, const QImage &other = {}) {
    double sum = 0;
    for (int pixel = 0; pixel < image.width() * image.height(); ++pixel) {
        const QPoint at(pixel % image.width(), pixel / image.width());
        sum += std::abs(qAlpha(image.pixel(at)) - (other.isNull() ? 0 : qAlpha(other.pixel(at))));
    }
    return sum / 255 / image.width() / image.height();
}

} // namespace

class ThemeTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void textAndShapesStandOut() {
        for (const char *accent : {"", "#ffffff", "#000000", "#ffd500", "#9141ac", "#7fdbff", "#808080"}) {
            for (const bool dark : {false, true}) {
                for (const bool highContrast : {false, true}) {
                    ColorPreferences preferences{.dark = dark, .accent = {}, .highContrast = highContrast};
                    if (*accent)
                        preferences.accent = QColor(accent);
                    const Row row(qPrintable(u"accent %1, dark %2, contrast %3"_s.arg(QLatin1String(accent))
                                                 .arg(dark)
                                                 .arg(highContrast)));
                    checkContrasts(preferences);
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
                         qPrintable(u"%1 px on %2: %3"_s.arg(size.width()).arg(grey).arg(seen)));
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

    void everySymbolIsAnotherAndLiesInItsSquare() {
        // The font has one glyph for each of these pairs, and no view shows both of a pair with different
        // meanings.
        const std::set<std::pair<QString, QString>> sisters{
            {u"arrow.down.circle"_s, u"arrow.down.circle.fill"_s},
            {u"computermouse.fill"_s, u"cursorarrow.motionlines"_s},
            {u"keyboard"_s, u"keyboard.fill"_s}};
        std::map<QString, QImage> images{{u"unknown"_s, drawn(u"no.such.symbol"_s)}};
        for (const QString &name : symbolNames())
            images[name] = drawn(name);
        QVERIFY(images.size() > 45);
        for (auto one = images.begin(); one != images.end(); ++one) {
            const double whole = ink(one->second);
            QVERIFY2(whole > 0.01, qPrintable(one->first));
            QVERIFY2(ink(one->second.copy(8, 8, 48, 48)) * 48 * 48 > 0.999 * whole * 64 * 64,
                     qPrintable(one->first));
            for (auto other = std::next(one); other != images.end(); ++other) {
                if (!sisters.contains({one->first, other->first}))
                    QVERIFY2(ink(one->second, other->second) > 0.003,
                             qPrintable(one->first + u' ' + other->first));
            }
        }
    }

private:
    static void checkContrasts(const ColorPreferences &preferences) {
        const QPalette palette = themePalette(preferences);
        const double text = preferences.highContrast ? 7 : 4.5;
        const double shape = preferences.highContrast ? 4.5 : 3;
        const auto reads = [text](const char *what, const QColor &ink, const QColor &surface) {
            const double reached = contrastRatio(ink, surface);
            QVERIFY2(reached >= text,
                     qPrintable(u"%1: %2 on %3 is %4"_s.arg(QLatin1String(what), ink.name(), surface.name())
                                    .arg(reached)));
        };

        // What lies plainly on a surface, on a highlighted row, and on a tinted card.
        for (const QPalette &shown : {palette, highlightedPalette(palette), tintedPalette(palette)}) {
            const ThemeColors colors = themeColors(shown);
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
        QCOMPARE(colors.dark, preferences.dark);
        reads("destructive button", Qt::white, fillUnder(Qt::white, colors.red, palette));
        for (const QColor &surface : {colors.window, colors.card}) {
            reads("segment", colors.primary, composed(colors.pill, surface));
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
        if (preferences.highContrast) {
            for (const QColor &surface : {colors.window, colors.card, colors.control})
                QVERIFY(contrastRatio(composed(colors.controlEdge, surface), surface) >= shape);
            for (const QColor &track : {colors.track, colors.accent})
                QVERIFY(contrastRatio(readableOn(track), track) >= 3); // the knob of a switch
        }
    }
};

QTEST_MAIN(ThemeTest)
#include "ThemeTest.moc"
