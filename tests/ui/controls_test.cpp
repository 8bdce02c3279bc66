#include "support/TestWorld.h"
#include "support/ViewChecks.h"
#include "ui/Alert.h"
#include "ui/Button.h"
#include "ui/Card.h"
#include "ui/ControlStyle.h"
#include "ui/FocusRing.h"
#include "ui/FormRow.h"
#include "ui/FormSection.h"
#include "ui/HoverRow.h"
#include "ui/MenuPicker.h"
#include "ui/SelectableText.h"
#include "ui/Sheet.h"
#include "ui/Spring.h"
#include "ui/Stepper.h"
#include "ui/Switch.h"
#include "ui/SymbolLabel.h"
#include "ui/TabBar.h"
#include "ui/TextField.h"

#include <QHBoxLayout>
#include <QMenu>
#include <QSignalSpy>

#include <cmath>

using namespace Qt::StringLiterals;
using namespace quorbit;
using namespace quorbit::test;

namespace {

using Emitted = QList<QList<QVariant>>;

/// A window of these widgets, one below the other, that the keyboard goes to.
struct Window : QWidget {
    explicit Window(std::initializer_list<QWidget *> widgets, QSize size = {}) {
        auto *column = new QVBoxLayout(this);
        for (QWidget *widget : widgets)
            column->addWidget(widget);
        if (size.isValid())
            resize(size);
        show();
        if (!QTest::qWaitForWindowActive(this))
            qFatal("the window does not open");
        QTest::qWait(30);
    }
};

QImage pictureOf(QWidget &widget) {
    return widget.grab().toImage();
}

} // namespace

class ControlsTest : public QObject {
    Q_OBJECT

    ControlStyle *style_ = nullptr;

private Q_SLOTS:
    void init() {
        style_ = new ControlStyle;
        QApplication::setStyle(style_);
        useAppearance({}, 9);
        QCoreApplication::processEvents();
    }

    void theSameValuesCauseNoRepaint() {
        auto *label = new TextLabel(u"text"_s, TextStyle::body, TextColor::primary);
        auto *symbol = new SymbolLabel(u"clock"_s);
        auto *flip = new Switch;
        auto *selectable = new SelectableText(TextStyle::body, TextColor::secondary, true);
        auto *section = new FormSection(u"Title"_s);
        auto *stepper = new Stepper(1, 100, 1);
        auto *picker = new MenuPicker;
        auto *tabs = new TabBar;
        auto *field = new TextField;
        auto *button = new Button(u"Go"_s);
        auto *row = new FormRow(u"Row"_s, stepper);
        section->addRow(row);
        const auto render = [&] {
            label->setText(u"text"_s);
            label->setColor(TextColor::primary);
            label->setStyle(TextStyle::body);
            symbol->setSymbol(u"clock"_s);
            symbol->setColor(TextColor::secondary);
            flip->setOn(false);
            selectable->setValue(u"10b4e2"_s);
            section->setTitle(u"Title"_s);
            section->setFooter(u"Footer"_s);
            row->setLabel(u"Row"_s);
            row->setSymbol(u"clock"_s);
            stepper->setValue(7);
            picker->setOptions({u"a"_s, u"b"_s});
            picker->setCurrent(1);
            tabs->setChoices({{u"One"_s, u"clock"_s}, {u"Two"_s, {}}});
            tabs->setCurrent(0);
            field->setValue(u"name"_s);
            button->setLabel(u"Go"_s);
            button->setSymbol(u"plus"_s);
            button->setBusy(false);
            button->setEnabled(true);
        };
        render();
        Window window{tabs, label, symbol, flip, selectable, section, picker, field, button};
        PaintWatch calm;
        render();
        QCOMPARE(calm.painted(), QSet<QWidget *>());
        PaintWatch watch;
        label->setColor(TextColor::red);
        symbol->setSymbol(u"plus"_s);
        flip->setOn(true);
        stepper->setValue(8);
        QVERIFY(watch.painted().contains({label, symbol, flip, stepper}));
    }

    void motionIsShownOnlyWhereItIsWanted() {
        Switch flip;
        flip.resize(flip.sizeHint());
        const QImage off = pictureOf(flip);
        flip.setOn(true);
        const QImage on = pictureOf(flip);
        QVERIFY(on != off);
        flip.setOn(false);
        flip.show();
        QVERIFY(QTest::qWaitForWindowExposed(&flip));
        flip.setOn(true);
        QCOMPARE(pictureOf(flip), off);
        QTRY_COMPARE(pictureOf(flip), on);
        style_->setReducedMotion(true);
        flip.setOn(false);
        QCOMPARE(pictureOf(flip), off);
    }

    void aRowIsOneButton() {
        auto *row = new HoverRow;
        auto *label = new TextLabel(u"Quit"_s, TextStyle::body, TextColor::secondary);
        (new QHBoxLayout(row))->addWidget(label);
        QSignalSpy clicked(row, &HoverRow::clicked);
        Window window{row};
        QTest::mouseClick(window.windowHandle(), Qt::LeftButton, {}, label->mapTo(&window, QPoint(3, 3)));
        QCOMPARE(clicked.size(), 1);
        QCOMPARE(accessible(row)->childCount(), 0);

        // The highlight, and the theme that changes under it.
        QEvent leave(QEvent::Leave);
        QApplication::sendEvent(row, &leave);
        const QColor calm = textColor(label->palette(), TextColor::secondary);
        QEnterEvent enter{QPointF(), QPointF(), QPointF()};
        QApplication::sendEvent(row, &enter);
        QVERIFY(textColor(label->palette(), TextColor::secondary) != calm);
        useAppearance({.dark = true, .accent = {}}, 9);
        QTRY_VERIFY(themeColors(label->palette()).dark);
        QApplication::sendEvent(row, &leave);
        QTRY_COMPARE(label->palette().color(QPalette::Window),
                     QApplication::palette().color(QPalette::Window));
    }

    void theRingShowsForTheKeyboardOnly() {
        auto *flip = new Switch;
        auto *other = new Switch;
        Window window{flip, other};
        const auto rings = [&] {
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
            return window.findChildren<FocusRing *>();
        };
        flip->setFocus(Qt::MouseFocusReason);
        QVERIFY(rings().isEmpty());
        flip->setFocus(Qt::OtherFocusReason);
        QTest::keyClick(flip, Qt::Key_Tab);
        QVERIFY(other->hasFocus());
        QCOMPARE(rings().size(), 1);
        other->move(other->pos() + QPoint(7, 5));
        QVERIFY(rings().first()->geometry().contains(other->geometry()));
        QTest::mouseClick(other, Qt::LeftButton);
        QVERIFY(rings().isEmpty());
    }

    void labelsFollowFontAndPalette() {
        TextLabel label(u"Text"_s, TextStyle::body, TextColor::primary);
        SymbolLabel symbol(u"clock"_s, 15);
        QWidget parent;
        SelectableText selectable(TextStyle::caption, TextColor::secondary, true, &parent);
        selectable.setValue(u"10b4"_s);
        const int before = label.sizeHint().width();
        const int selectableBefore = selectable.sizeHint().height();
        useAppearance({.dark = true, .accent = {}}, 18);
        QTRY_VERIFY(label.sizeHint().width() > before * 1.8);
        QTRY_COMPARE(symbol.sizeHint(), QSize(30, 30));
        QTRY_VERIFY(selectable.sizeHint().height() > selectableBefore * 1.8);
        QTRY_COMPARE(selectable.palette().color(QPalette::Text),
                     textColor(QApplication::palette(), TextColor::secondary));
    }

    void textThatDoesNotFitIsCutWhereItIsTold() {
        TextLabel label(u"one two three\nfour five six seven eight"_s, TextStyle::body, TextColor::primary);
        const int line = label.sizeHint().height();
        QVERIFY(label.minimumSizeHint().width() < label.sizeHint().width() / 4);
        QCOMPARE(label.heightForWidth(60), line);
        label.resize(80, line);
        const QImage end = pictureOf(label);
        label.setOverflow(TextLabel::Overflow::cutMiddle);
        QVERIFY(pictureOf(label) != end);
    }

    void aStepperAsksWithinItsRange() {
        const std::tuple<int, Qt::Key, Emitted> rows[]{
            {100, Qt::Key_Up, {{110}}},     {10235, Qt::Key_Up, {{10240}}}, {10240, Qt::Key_Up, {}},
            {20000, Qt::Key_Up, {{10240}}}, {5, Qt::Key_Down, {{1}}},       {100, Qt::Key_PageUp, {{200}}}};
        for (const auto &[value, key, wanted] : rows) {
            Stepper stepper(1, 10240, 10);
            stepper.setValue(value);
            QSignalSpy stepped(&stepper, &Stepper::stepped);
            QTest::keyClick(&stepper, key);
            QCOMPARE(Emitted(stepped), wanted);
        }
    }

    void aHeldStepperWaitsForAnAnswer() {
        Stepper stepper(1, 10240, 10);
        stepper.setValue(100);
        stepper.resize(stepper.sizeHint());
        stepper.show();
        QSignalSpy stepped(&stepper, &Stepper::stepped);
        const QPoint up(stepper.width() - 6, 5);
        QTest::mousePress(&stepper, Qt::LeftButton, {}, up);
        QTest::qWait(700);
        QCOMPARE(Emitted(stepped), (Emitted{{110}}));
        connect(&stepper, &Stepper::stepped, &stepper, &Stepper::setValue);
        stepper.setValue(110);
        QTRY_VERIFY(stepper.value() >= 140);
        QTest::mouseRelease(&stepper, Qt::LeftButton, {}, up);
    }

    void aMenuPickerAsksAndSurvivesRendering() {
        MenuPicker picker;
        const QStringList options{u"Off"_s, u"100 ms"_s, u"R&D"_s};
        picker.setOptions(options);
        QSignalSpy picked(&picker, &MenuPicker::picked);
        picker.show();
        QVERIFY(QTest::qWaitForWindowExposed(&picker));
        QTest::keyClick(&picker, Qt::Key_Space);
        auto *menu = picker.findChild<QMenu *>();
        QVERIFY(menu != nullptr && menu->isVisible());
        picker.setOptions(options);
        picker.setCurrent(1);
        QVERIFY(menu->isVisible());
        QVERIFY(menu->actions().at(1)->isChecked());
        menu->setActiveAction(menu->actions().at(2));
        QTest::keyClick(menu, Qt::Key_Return);
        QCOMPARE(Emitted(picked), (Emitted{{2}}));
        QCOMPARE(accessible(&picker)->text(QAccessible::Value), u"100 ms"_s);
    }

    void busyButtonsKeepTheirSize() {
        Button button(u"Connect & go"_s, ButtonKind::prominent);
        QSignalSpy clicked(&button, &Button::clicked);
        QTest::keyClick(&button, Qt::Key_Enter);
        const QSize size = button.sizeHint();
        button.resize(size);
        const QImage calm = pictureOf(button);
        button.setBusy(true);
        QCOMPARE(button.sizeHint(), size);
        QVERIFY(accessible(&button)->state().busy);
        QVERIFY(pictureOf(button) != calm);
        button.setBusy(false);
        QCOMPARE(pictureOf(button), calm);
        button.setEnabled(false);
        accessible(&button)->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
        QCOMPARE(clicked.size(), 1);
    }

    void hiddenRowsLeaveNoTrace() {
        FormSection with;
        FormSection without;
        for (FormSection *section : {&with, &without})
            section->addRow(new FormRow(u"First"_s, nullptr));
        auto *hidden = new FormRow(u"Hidden"_s, nullptr);
        with.insertRow(0, hidden);
        hidden->hide();
        for (FormSection *section : {&with, &without}) {
            section->resize(300, section->sizeHint().height());
            section->show();
        }
        QCOMPARE(pictureOf(with), pictureOf(without));
    }

    void textOnATintedCardFollowsTheTheme() {
        auto *card = new Card(Card::Kind::tinted);
        auto *row = new QWidget;
        card->addRow(row);
        Window window{card};
        for (const bool dark : {false, true}) {
            useAppearance({.dark = dark, .accent = {}}, 9);
            const QPalette theme = QApplication::palette();
            QTRY_COMPARE(row->palette().color(QPalette::Window),
                         composed(themeColors(theme).tint, theme.color(QPalette::Window)));
        }
    }

    void anAlertCancelsUnlessConfirmed() {
        const std::pair<QList<Qt::Key>, bool> rows[]{{{Qt::Key_Return}, false},
                                                     {{Qt::Key_Tab, Qt::Key_Tab, Qt::Key_Return}, true}};
        for (const auto &[keys, confirmed] : rows) {
            auto *below = new Button(u"Below"_s);
            Window window({below}, {500, 400});
            const QPointer<Alert> alert =
                new Alert({u"Remove?"_s, u"It must be paired again."_s, u"Cancel"_s, u"Remove"_s}, below);
            QSignalSpy confirmations(alert.data(), &Alert::confirmed);
            QSignalSpy dismissals(alert.data(), &Alert::dismissed);
            QSignalSpy belowClicked(below, &Button::clicked);
            alert->open();
            for (const Qt::Key key : keys)
                QTest::keyClick(window.windowHandle(), key);
            QCOMPARE(confirmations.size(), confirmed ? 1 : 0);
            QCOMPARE(dismissals.size(), 1);
            QCOMPARE(belowClicked.size(), 0);
            QTRY_VERIFY(alert.isNull());
        }
    }

    void aSheetCoversItsWindow() {
        auto *below = new Button(u"Below"_s);
        Window window({below}, {580, 500});
        const QPointer<Sheet> sheet = new Sheet(u"Add"_s, QSize(400, 340), &window);
        auto *field = new TextField;
        auto *done = new Button(u"Done"_s, ButtonKind::prominent);
        sheet->content()->addWidget(field);
        sheet->content()->addWidget(done);
        sheet->setDefaultButton(done);
        connect(done, &Button::clicked, sheet.data(), &Sheet::dismiss);
        QSignalSpy clicked(below, &Button::clicked);
        sheet->open();
        window.resize(620, 520);
        QTRY_COMPARE(sheet->size(), window.size());
        QTest::mouseClick(window.windowHandle(), Qt::LeftButton, {}, below->geometry().center());
        QCOMPARE(clicked.size(), 0);
        field->setFocus();
        QTest::keyClick(window.windowHandle(), Qt::Key_Return);
        QTRY_VERIFY(sheet.isNull());
    }

    void aSheetScrollsInASmallWindow() {
        Window window({}, {400, 200});
        auto *sheet = new Sheet(u"Sheet"_s, QSize(300, 100), &window);
        QList<QWidget *> stops;
        for (int i = 0; i < 3; ++i)
            stops << new TextField(QString());
        stops << new Button(u"Done"_s);
        for (QWidget *stop : stops)
            sheet->content()->addWidget(stop);
        sheet->open();
        const auto isSeen = [&](const QWidget &widget) {
            return widget.visibleRegion().boundingRect() == widget.rect() &&
                   window.rect().contains(QRect(widget.mapTo(&window, QPoint()), widget.size()));
        };
        QCoreApplication::processEvents();
        const int usual = stops[0]->height();
        QFont large;
        large.setPointSizeF(20);
        window.setFont(large);
        QTRY_VERIFY(stops[0]->height() > usual * 2);
        QTRY_VERIFY(!isSeen(*stops.last()));
        for (const QWidget *stop : stops) {
            QTest::keyClick(window.focusWidget(), Qt::Key_Tab);
            QTRY_VERIFY(stop->hasFocus() && isSeen(*stop));
        }
    }

    void wrappedTextIsSeenWhole() {
        const std::pair<QString, int> rows[]{{u"a b"_s, 1},
                                             {u"word "_s.repeated(40), 4},
                                             {QString(200, u'W'), 4},
                                             {u"文字"_s + QString(100, u'W'), 3},
                                             {u"a\nb\n\nc"_s, 4}};
        for (const auto &[text, leastLines] : rows) {
            constexpr int width = 240;
            TextLabel label(text, TextStyle::caption, TextColor::primary);
            label.setOverflow(TextLabel::Overflow::wrap);
            const int height = label.heightForWidth(width);
            QVERIFY(height >= leastLines * (label.minimumSizeHint().height() - 1));
            // All of the ink that a far larger label shows is in one of just that size.
            const auto ink = [&](const QSize &size) {
                label.resize(size);
                QImage image(size + QSize(400, 0), QImage::Format_RGB32);
                image.fill(Qt::white);
                label.render(&image, QPoint(), QRegion(), QWidget::DrawChildren);
                int sum = 0;
                for (int pixel = 0; pixel < image.width() * image.height(); ++pixel)
                    sum += 255 - qGray(image.pixel(pixel % image.width(), pixel / image.width()));
                return sum;
            };
            label.setAlignment(Qt::AlignLeft | Qt::AlignTop);
            QVERIFY(ink({width, height}) > 0);
            QCOMPARE(ink({width, height}), ink({width, height * 2}));
        }
    }

    void aSpringMovesAsItsEquationSays() {
        // The same movement, added up in small steps: x'' = -k x - c x'.
        constexpr double response = 0.3;
        constexpr double damping = 0.8;
        const double natural = 2 * M_PI / response;
        double offset = -1;
        double velocity = 0;
        Spring spring(response, damping);
        spring.setTarget(1);
        double most = 0;
        for (int frame = 1; frame <= 40; ++frame) {
            for (int step = 0; step < 10000; ++step) {
                velocity += (-natural * natural * offset - 2 * damping * natural * velocity) * 1e-6;
                offset += velocity * 1e-6;
            }
            spring.advance(0.01);
            QVERIFY2(std::abs(spring.value() - (1 + offset)) < 0.003, qPrintable(QString::number(frame)));
            most = std::max(most, spring.value());
            if (frame == 12) { // turns round without a jump
                const double value = spring.value();
                spring.setTarget(0);
                QCOMPARE(spring.value(), value);
                spring.setTarget(1);
            }
        }
        QVERIFY(most > 1.01 && most < 1.02);
        spring.advance(10);
        QVERIFY(spring.isAtRest());
        QCOMPARE(spring.value(), 1);
    }
};

int main(int argc, char **argv) {
    return runViewTest<ControlsTest>(argc, argv);
}
#include "controls_test.moc"
