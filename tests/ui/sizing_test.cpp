// What happens to texts and panels that are larger than the place that there is for them.

#include "ui/Button.h"
#include "ui/Sheet.h"
#include "ui/TextField.h"
#include "ui/TextLabel.h"

#include <QScrollBar>
#include <QTest>
#include <QVBoxLayout>

using namespace quorbit;

namespace {

QFont largeFont(double points) {
    QFont font;
    font.setPointSizeF(points);
    return font;
}

} // namespace

class SizingTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void wrappedTextIsSeenWhole_data() {
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("leastLines");
        QTest::newRow("short") << QStringLiteral("a b") << 1;
        QTest::newRow("words") << QStringLiteral("word ").repeated(40) << 4;
        QTest::newRow("one long word") << QString(200, u'W') << 4;
        QTest::newRow("a long word in Chinese text") << QStringLiteral("文字") + QString(100, u'W') << 3;
        QTest::newRow("paragraphs") << QStringLiteral("a\nb\n\nc") << 4;
    }
    void wrappedTextIsSeenWhole() {
        QFETCH(QString, text);
        QFETCH(int, leastLines);
        constexpr int width = 240;
        TextLabel label(text, TextStyle::caption, TextColor::primary);
        label.setOverflow(TextLabel::Overflow::wrap);
        const int height = label.heightForWidth(width);
        const int line = label.minimumSizeHint().height();
        QVERIFY(height >= leastLines * (line - 1));
        // All of the ink that a far larger label shows is in one of just that size.
        const auto ink = [&](const QSize &size) {
            label.resize(size);
            QImage image(size + QSize(400, 0), QImage::Format_RGB32);
            image.fill(Qt::white);
            label.render(&image, QPoint(), QRegion(), QWidget::DrawChildren);
            int sum = 0;
            for (int y = 0; y < image.height(); ++y) {
                for (int x = 0; x < image.width(); ++x)
                    sum += 255 - qGray(image.pixel(x, y));
            }
            return sum;
        };
        label.setAlignment(Qt::AlignLeft | Qt::AlignTop);
        QVERIFY(ink({width, height}) > 0);
        QCOMPARE(ink({width, height}), ink({width, height * 2}));
    }

    void aSheetScrollsInASmallWindow() {
        QWidget window;
        window.resize(400, 200);
        window.show();
        window.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&window));
        auto *sheet = new Sheet(QStringLiteral("Sheet"), QSize(300, 100), &window);
        QList<TextField *> fields;
        for (int i = 0; i < 3; ++i) {
            fields << new TextField(QString());
            sheet->content()->addWidget(fields.last());
        }
        auto *button = new Button(QStringLiteral("Done"));
        sheet->content()->addWidget(button);
        sheet->open();
        const auto isSeen = [&](const QWidget &widget) {
            return widget.visibleRegion().boundingRect() == widget.rect() &&
                   window.rect().contains(QRect(widget.mapTo(&window, QPoint()), widget.size()));
        };
        QCoreApplication::processEvents();
        const int usual = fields[0]->height();
        window.setFont(largeFont(20));
        QTRY_VERIFY(fields[0]->height() > usual * 2);
        QTRY_VERIFY(!isSeen(*button));
        for (const TextField *field : fields) {
            QTest::keyClick(window.focusWidget(), Qt::Key_Tab);
            QTRY_VERIFY(field->hasFocus() && isSeen(*field));
        }
        QTest::keyClick(window.focusWidget(), Qt::Key_Tab);
        QTRY_VERIFY(button->hasFocus() && isSeen(*button));
    }
};

QTEST_MAIN(SizingTest)
#include "sizing_test.moc"
