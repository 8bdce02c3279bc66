#include "ui/Symbol.h"

#include <QImage>
#include <QPainter>
#include <QTest>

#include <set>

using namespace Qt::StringLiterals;
using namespace quorbit;

namespace {

QImage drawn(const QString &name) {
    QImage image(48, 48, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    paintSymbol(painter, image.rect(), name, Qt::black);
    return image;
}

/// How much of the square is inked, 0 to 1, counting the difference to `other` when there is one.
double ink(const QImage &image, const QImage &other = {}) {
    double sum = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            sum += std::abs(qAlpha(image.pixel(x, y)) - (other.isNull() ? 0 : qAlpha(other.pixel(x, y))));
    }
    return sum / 255 / image.width() / image.height();
}

} // namespace

class SymbolTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void everySymbolCanBeToldFromTheOthers() {
        // The font has one glyph for each of these pairs, and no view shows both of a pair with different
        // meanings.
        const std::set<std::pair<QString, QString>> sisters{
            {u"arrow.down.circle"_s, u"arrow.down.circle.fill"_s},
            {u"computermouse.fill"_s, u"cursorarrow.motionlines"_s},
            {u"keyboard"_s, u"keyboard.fill"_s}};
        const QStringList names = symbolNames();
        QVERIFY(names.size() >= 45);
        const QImage unknown = drawn(u"no.such.symbol"_s);
        QVERIFY(ink(unknown) > 0.02);
        QCOMPARE(drawn(QString()), unknown);
        for (qsizetype i = 0; i < names.size(); ++i) {
            const QImage image = drawn(names[i]);
            QVERIFY2(ink(image) > 0.02 && ink(image, unknown) > 0.02, qPrintable(names[i]));
            for (qsizetype j = i + 1; j < names.size(); ++j) {
                if (!sisters.contains({names[i], names[j]}))
                    QVERIFY2(ink(image, drawn(names[j])) > 0.005, qPrintable(names[i] + u' ' + names[j]));
            }
        }
    }

    void everySymbolLiesInItsSquare() {
        for (const QString &name : symbolNames()) {
            QImage image(64, 64, QImage::Format_ARGB32_Premultiplied);
            image.fill(Qt::transparent);
            QPainter painter(&image);
            paintSymbol(painter, QRectF(8, 8, 48, 48), name, Qt::black);
            painter.end();
            QRect inked;
            for (int pixel = 0; pixel < 64 * 64; ++pixel) {
                if (qAlpha(image.pixel(pixel % 64, pixel / 64)) > 40)
                    inked |= QRect(pixel % 64, pixel / 64, 1, 1);
            }
            QVERIFY2(QRect(8, 8, 48, 48).contains(inked), qPrintable(name));
            QVERIFY2((inked.center() - QPoint(32, 32)).manhattanLength() <= 7, qPrintable(name));
        }
    }
};

QTEST_MAIN(SymbolTest)
#include "symbol_test.moc"
