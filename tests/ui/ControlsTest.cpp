#include "support/TestWorld.h"
#include "support/ViewChecks.h"
#include "ui/access/FocusRing.h"
#include "ui/access/KeyboardArea.h"
#include "ui/controls/Button.h"
#include "ui/controls/MenuPicker.h"
#include "ui/controls/Stepper.h"
#include "ui/controls/Switch.h"
#include "ui/form/Card.h"
#include "ui/form/FormRow.h"
#include "ui/form/FormSection.h"
#include "ui/look/ControlStyle.h"
#include "ui/overlay/Alert.h"
#include "ui/overlay/Sheet.h"
#include "ui/text/SelectableText.h"
#include "ui/text/SymbolLabel.h"
#include "ui/text/TextField.h"

#include <QMenu>
#include <QSignalSpy>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;
using namespace quorbit;
using namespace quorbit::test;

namespace {

using Emitted = QList<QList<QVariant>>;

/// A window of these widgets, one below the other, that the keyboard goes to.
struct Window : KeyboardArea {
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
    void aFieldCutsBetweenCharacters() {
        const QString family = u"👨‍👩‍👧‍👦"_s;
        TextField field;
        field.setText(u"x"_s + family.repeated(500));
        field.setCursorPosition(1 + static_cast<int>(family.size()) * 20);
        field.insert(family.repeated(3000));
        QVERIFY(field.text().size() > 16'000);
        QCOMPARE(field.text().remove(family), u"x"_s);
    }

    void init() {
        style_ = new ControlStyle;
        QApplication::setStyle(style_);
        useAppearance({}, 9);
        QCoreApplication::processEvents();
    }

    void motionIsShownOnlyWhereItIsWanted() {
        Switch flip;
        flip.resize(flip.sizeHint());
        const QImage off = pictureOf(flip);
        flip.show();
        flip.setOn(true);
        QCOMPARE(pictureOf(flip), off);
        QTRY_VERIFY(pictureOf(flip) != off);
        style_->setReducedMotion(true);
        flip.setOn(false);
        QCOMPARE(pictureOf(flip), off);
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

    void aStepperAsksWithinItsRange() {
        const std::tuple<int, Qt::Key, Emitted> rows[]{{10235, Qt::Key_Up, {{10240}}},
                                                       {10240, Qt::Key_Up, {}},
                                                       {20000, Qt::Key_Up, {{10240}}},
                                                       {5, Qt::Key_Down, {{1}}},
                                                       {100, Qt::Key_PageUp, {{200}}}};
        for (const auto &[value, key, wanted] : rows) {
            Stepper stepper(1, 10240, 10);
            stepper.setValue(value);
            QSignalSpy stepped(&stepper, &Stepper::stepped);
            QTest::keyClick(&stepper, key);
            QCOMPARE(stepped, wanted);
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
        QCOMPARE(stepped, (Emitted{{110}}));
        connect(&stepper, &Stepper::stepped, &stepper, &Stepper::setValue);
        stepper.setValue(110);
        QTRY_VERIFY(stepper.value() >= 140);
        QTest::mouseRelease(&stepper, Qt::LeftButton, {}, up);
    }

    void anOpenMenuSurvivesRendering() {
        MenuPicker picker;
        const QStringList options{u"Off"_s, u"100 ms"_s, u"R&D"_s};
        picker.setOptions(options);
        QSignalSpy picked(&picker, &MenuPicker::picked);
        picker.show();
        QTest::keyClick(&picker, Qt::Key_Space);
        auto *menu = picker.findChild<QMenu *>();
        picker.setOptions(options);
        picker.setCurrent(1);
        QVERIFY(menu->isVisible() && menu->actions().at(1)->isChecked());
        menu->setActiveAction(menu->actions().at(2));
        QTest::keyClick(menu, Qt::Key_Return);
        QCOMPARE(picked, (Emitted{{2}}));
        QCOMPARE(picker.accessibleText(), u"100 ms"_s);
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
        QTest::keyClick(flip, Qt::Key_Tab);
        other->move(other->pos() + QPoint(7, 5));
        QVERIFY(rings().first()->geometry().contains(other->geometry()));
        QTest::mouseClick(other, Qt::LeftButton);
        QVERIFY(rings().isEmpty() && window.hasFocus());
    }

    void theKeyboardGoesNowhereByItself() {
        // However a control goes, its window takes the keyboard. The Tab key goes on beside it, or starts
        // again.
        enum { hidden, hiddenUnseen, disabled, deleted, wentWithItsParent, disabledWithItsParent, ways };
        for (int way = 0; way < ways; ++way) {
            auto *first = new Switch;
            auto *part = new QWidget;
            auto *control = new Switch(Switch::Size::regular, part);
            auto *after = new Switch;
            Window window{first, part, after};
            control->setFocus(Qt::TabFocusReason);
            if (way == hidden) {
                control->hide();
            } else if (way == hiddenUnseen) {
                Window other{new Switch};
                control->hide();
                window.activateWindow();
            } else if (way == disabled) {
                control->setEnabled(false);
            } else if (way == deleted) {
                delete control;
            } else if (way == wentWithItsParent) {
                part->hide();
                part->deleteLater();
                QCoreApplication::sendPostedEvents(part, QEvent::DeferredDelete);
            } else {
                part->setEnabled(false);
            }
            QTRY_VERIFY2(window.hasFocus(), qPrintable(QString::number(way)));
            QTest::keyClick(&window, Qt::Key_Tab);
            QVERIFY2((way == deleted ? first : after)->hasFocus(), qPrintable(QString::number(way)));
        }
    }

    void hiddenRowsLeaveNoTrace() {
        FormSection with;
        FormSection without;
        auto *hidden = new FormRow(u"Hidden"_s, nullptr);
        with.addRow(hidden);
        hidden->hide();
        for (FormSection *section : {&with, &without}) {
            section->addRow(new FormRow(u"Shown"_s, nullptr));
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
        useAppearance({.dark = true, .accent = {}}, 9);
        const QPalette theme = QApplication::palette();
        QTRY_COMPARE(row->palette().color(QPalette::Window),
                     composed(themeColors(theme).tint, theme.color(QPalette::Window)));
    }

    void anAlertCancelsUnlessConfirmed() {
        auto *below = new Button(u"Below"_s);
        Window window({below}, {500, 400});
        auto *alert =
            new Alert({u"Remove?"_s, u"It must be paired again."_s, u"Cancel"_s, u"Remove"_s}, below);
        QSignalSpy confirmations(alert, &Alert::confirmed);
        QSignalSpy dismissals(alert, &Alert::dismissed);
        QSignalSpy belowClicked(below, &Button::clicked);
        alert->open();
        QTest::keyClick(window.windowHandle(), Qt::Key_Return);
        QCOMPARE(dismissals.size(), 1);
        QVERIFY(confirmations.isEmpty() && belowClicked.isEmpty());
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
        QFont large;
        large.setPointSizeF(20);
        window.setFont(large);
        auto *sheet = new Sheet(u"Sheet"_s, QSize(300, 100), &window);
        const QList<QWidget *> stops{new TextField, new TextField, new TextField, new Button(u"Done"_s)};
        for (QWidget *stop : stops)
            sheet->content()->addWidget(stop);
        sheet->open();
        QCoreApplication::processEvents();
        const auto isSeen = [&](const QWidget &widget) {
            return widget.visibleRegion().boundingRect() == widget.rect() &&
                   window.rect().contains(QRect(widget.mapTo(&window, QPoint()), widget.size()));
        };
        QVERIFY(!isSeen(*stops.last()));
        for (const QWidget *stop : stops) {
            QTest::keyClick(window.focusWidget(), Qt::Key_Tab);
            QTRY_VERIFY(stop->hasFocus() && isSeen(*stop));
        }
    }

    void wrappedTextIsSeenWhole() {
        for (const QString &text :
             {u"word "_s.repeated(40), u"文字"_s + QString(200, u'W'), u"a\nb\n\nc"_s}) {
            constexpr int width = 240;
            TextLabel label(text, TextStyle::caption, TextColor::primary);
            label.setOverflow(TextLabel::Overflow::wrap);
            label.setAlignment(Qt::AlignLeft | Qt::AlignTop);
            const int height = label.heightForWidth(width);
            QVERIFY(height >= 4 * (label.minimumSizeHint().height() - 1));
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
            QVERIFY(ink({width, height}) > 0);
            QCOMPARE(ink({width, height}), ink({width, height * 2}));
        }
    }
};

int main(int argc, char **argv) {
    return runViewTest<ControlsTest>(argc, argv);
}
#include "ControlsTest.moc"
