#include "support/Row.h"
#include "support/TestWorld.h"
#include "support/ViewChecks.h"
#include "ui/access/FocusRing.h"
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

using namespace Qt::StringLiterals;
using namespace quorbit;
using namespace quorbit::test;

namespace {

using Emitted = QList<QList<QVariant>>;

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

    void aFieldCutsBetweenCharacters() {
        const QString family = u"👨‍👩‍👧‍👦"_s;
        TextField field;
        field.setText(u"x"_s + family.repeated(500));
        field.setCursorPosition(1 + static_cast<int>(family.size()) * 20);
        field.insert(family.repeated(3000));
        QVERIFY(field.text().size() > 16'000);
        QCOMPARE(field.text().remove(family), u"x"_s);
    }

    void aSwitchMovesWhenItIsToldTo() {
        Switch flip;
        flip.resize(flip.sizeHint());
        const QImage off = pictureOf(flip);
        flip.show();
        flip.click();
        QVERIFY(!flip.isOn());
        flip.setOn(true);
        QCOMPARE(pictureOf(flip), off);
        QTRY_VERIFY(pictureOf(flip) != off);
        style_->setReducedMotion(true);
        flip.setOn(false);
        QCOMPARE(pictureOf(flip), off);
    }

    void labelsFollowFontAndPalette() {
        auto *card = new Card(Card::Kind::tinted);
        auto *row = new QWidget;
        card->addRow(row);
        Window window({card});
        TextLabel label(u"Text"_s, TextStyle::body, TextColor::primary);
        SymbolLabel symbol(u"clock"_s, 15);
        SelectableText selectable(TextStyle::caption, TextColor::secondary, true, &window);
        const QSize before = label.sizeHint();
        const QSize selectableBefore = selectable.sizeHint();
        useAppearance({.dark = true, .accent = {}}, 18);
        const QPalette theme = QApplication::palette();
        QTRY_VERIFY(label.sizeHint().width() > before.width() * 1.8);
        QTRY_COMPARE(symbol.sizeHint(), QSize(30, 30));
        QTRY_VERIFY(selectable.sizeHint().height() > selectableBefore.height() * 1.8);
        QTRY_COMPARE(selectable.palette().color(QPalette::Text), textColor(theme, TextColor::secondary));
        QTRY_COMPARE(row->palette().color(QPalette::Window),
                     composed(themeColors(theme).tint, theme.color(QPalette::Window)));
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
        const QPoint down(stepper.width() - 6, stepper.height() - 5);
        QTest::mousePress(&stepper, Qt::LeftButton, {}, down);
        QTest::qWait(700);
        QCOMPARE(stepped, (Emitted{{90}}));
        connect(&stepper, &Stepper::stepped, &stepper, &Stepper::setValue);
        stepper.setValue(90);
        QTRY_VERIFY(stepper.value() <= 60);
        QTest::mouseRelease(&stepper, Qt::LeftButton, {}, down);
    }

    void anOpenMenuSurvivesRendering() {
        MenuPicker picker;
        const QStringList options{u"Off"_s, u"100 ms"_s, u"R&D"_s};
        picker.setOptions(options);
        QSignalSpy picked(&picker, &MenuPicker::picked);
        picker.show();
        QTest::keyClick(&picker, Qt::Key_Space);
        auto *menu = only<QMenu>(picker);
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
        Window window({flip, other});
        const auto rings = [&] {
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
            return window.findChildren<FocusRing *>();
        };
        flip->setFocus(Qt::MouseFocusReason);
        QVERIFY(rings().isEmpty());
        QTest::keyClick(flip, Qt::Key_Tab);
        other->move(other->pos() + QPoint(7, 5));
        QVERIFY(rings().value(0) && rings()[0]->geometry().contains(other->geometry()));
        QTest::mouseClick(other, Qt::LeftButton);
        QVERIFY(rings().isEmpty() && window.hasFocus());
    }

    void theKeyboardGoesNowhereByItself() {
        // However a control goes, its window takes the keyboard. The Tab key goes on beside it, or starts
        // again.
        const struct {
            const char *way;
            std::function<void(Window &, QWidget *part, Switch *)> go;
            bool startsAgain = false;
        } rows[]{{"hidden", [](auto &, auto *, auto *control) { control->hide(); }},
                 {"hidden while another window is active",
                  [](auto &window, auto *, auto *control) {
                      Window other({new Switch});
                      control->hide();
                      window.activateWindow();
                  }},
                 {"disabled", [](auto &, auto *, auto *control) { control->setEnabled(false); }},
                 {"deleted", [](auto &, auto *, auto *control) { delete control; }, true},
                 {"went with its parent",
                  [](auto &, auto *part, auto *) {
                      part->hide();
                      part->deleteLater();
                      QCoreApplication::sendPostedEvents(part, QEvent::DeferredDelete);
                  }},
                 {"disabled with its parent", [](auto &, auto *part, auto *) { part->setEnabled(false); }}};
        for (const auto &[way, go, startsAgain] : rows) {
            const Row row(way);
            auto *first = new Switch;
            auto *part = new QWidget;
            auto *control = new Switch(Switch::Size::regular, part);
            auto *after = new Switch;
            Window window({first, part, after});
            control->setFocus(Qt::TabFocusReason);
            go(window, part, control);
            QTRY_VERIFY(window.hasFocus());
            QTest::keyClick(&window, Qt::Key_Tab);
            QVERIFY((startsAgain ? first : after)->hasFocus());
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

    void anAlertCancelsUnlessConfirmed() {
        auto *below = new Button(u"Below"_s);
        Window window({below}, {500, 400});
        auto *alert =
            new Alert({u"Remove?"_s, u"It must be paired again."_s, u"Cancel"_s, u"Remove"_s}, below);
        QSignalSpy confirmations(alert, &Alert::confirmed);
        QSignalSpy dismissals(alert, &Alert::dismissed);
        alert->open();
        QTest::keyClick(window.windowHandle(), Qt::Key_Return);
        QCOMPARE(dismissals.size(), 1);
        QCOMPARE(confirmations.size(), 0);
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
        useAppearance({}, 20);
        Window window({}, {400, 200});
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
            TextLabel label(text, TextStyle::caption, TextColor::primary);
            label.setOverflow(TextLabel::Overflow::wrap);
            label.setAlignment(Qt::AlignLeft | Qt::AlignTop);
            const int height = label.heightForWidth(240);
            QVERIFY(height >= 4 * (label.minimumSizeHint().height() - 1));
            // All that a label of twice the height shows is in its upper half.
            label.resize(240, 2 * height);
            const QImage large = pictureOf(label);
            const QImage rest = large.copy(0, height, 240, height);
            QImage blank = rest;
            blank.fill(rest.pixel(0, 0));
            QCOMPARE(rest, blank);
            label.resize(240, height);
            QCOMPARE(pictureOf(label), large.copy(label.rect()));
            QVERIFY(pictureOf(label) != blank);
        }
    }
};

int main(int argc, char **argv) {
    return runViewTest<ControlsTest>(argc, argv);
}
#include "ControlsTest.moc"
