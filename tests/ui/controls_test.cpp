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
#include "ui/ProgressIndicator.h"
#include "ui/SegmentedPicker.h"
#include "ui/SelectableText.h"
#include "ui/Sheet.h"
#include "ui/Stepper.h"
#include "ui/Switch.h"
#include "ui/SymbolLabel.h"
#include "ui/TabBar.h"
#include "ui/TextField.h"

#include <QHBoxLayout>
#include <QMenu>
#include <QSignalSpy>

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

void doAction(QWidget *widget, const QString &action) {
    accessible(widget)->actionInterface()->doAction(action);
}

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

    void aSwitchShowsOnlyWhatItIsTold() {
        Switch flip;
        QSignalSpy flipped(&flip, &Switch::flipped);
        flip.show();
        QTest::mouseClick(&flip, Qt::LeftButton);
        QTest::keyClick(&flip, Qt::Key_Space);
        QVERIFY(!flip.isOn() && !accessible(&flip)->state().checked);
        flip.setOn(true);
        QTest::mouseClick(&flip, Qt::LeftButton);
        for (const QString &action :
             {QAccessibleActionInterface::toggleAction(), QAccessibleActionInterface::pressAction()}) {
            QVERIFY(accessible(&flip)->actionInterface()->actionNames().contains(action));
            doAction(&flip, action);
        }
        QVERIFY(flip.isOn() && accessible(&flip)->state().checked);
        flip.setEnabled(false);
        QTest::mouseClick(&flip, Qt::LeftButton);
        QCOMPARE(Emitted(flipped), (Emitted{{true}, {true}, {false}, {false}, {false}}));
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

        for (const bool reduced : {false, true}) {
            style_->setReducedMotion(reduced);
            ProgressIndicator spinner;
            spinner.show();
            QVERIFY(QTest::qWaitForWindowExposed(&spinner));
            const QImage before = pictureOf(spinner);
            QTest::qWait(250);
            QCOMPARE(pictureOf(spinner) == before, reduced);
        }
    }

    void aRowIsOneButton() {
        auto *row = new HoverRow;
        auto *label = new TextLabel(u"Quit"_s, TextStyle::body, TextColor::secondary);
        (new QHBoxLayout(row))->addWidget(label);
        QSignalSpy clicked(row, &HoverRow::clicked);
        Window window{row};
        QTest::mouseClick(window.windowHandle(), Qt::LeftButton, {}, label->mapTo(&window, QPoint(3, 3)));
        QTest::keyClick(row, Qt::Key_Return);
        QTest::keyClick(row, Qt::Key_Space);
        doAction(row, QAccessibleActionInterface::pressAction());
        QCOMPARE(clicked.size(), 4);
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

    void textThatDoesNotFitIsCutOrWrapped() {
        TextLabel label(u"one two three\nfour five six seven eight"_s, TextStyle::body, TextColor::primary);
        const int line = label.sizeHint().height();
        QVERIFY(label.minimumSizeHint().width() < label.sizeHint().width() / 4);
        QCOMPARE(label.heightForWidth(60), line);
        label.resize(80, line);
        const QImage end = pictureOf(label);
        label.setOverflow(TextLabel::Overflow::cutMiddle);
        QVERIFY(pictureOf(label) != end);
        label.setOverflow(TextLabel::Overflow::wrap);
        QVERIFY(label.heightForWidth(80) >= 3 * line - 2);
    }

    void screenReadersHearWhatAControlIs() {
        TextLabel label(u"<b>plain</b>"_s, TextStyle::body, TextColor::primary);
        QCOMPARE(nameOf(&label), u"<b>plain</b>"_s);
        SymbolLabel symbol(u"clock"_s);
        QVERIFY(accessible(&symbol)->state().invisible);
        symbol.setAccessibleName(u"Connected"_s);
        symbol.show();
        QVERIFY(!accessible(&symbol)->state().invisible);

        Switch flip;
        HoverRow row;
        MenuPicker picker;
        Stepper stepper(1, 2, 1);
        TabBar tabs;
        Button button(u"Go"_s);
        const std::pair<QWidget *, QAccessible::Role> roles[]{
            {&label, QAccessible::StaticText}, {&symbol, QAccessible::Graphic},
            {&flip, QAccessible::CheckBox},    {&row, QAccessible::Button},
            {&picker, QAccessible::ComboBox},  {&stepper, QAccessible::SpinBox},
            {&tabs, QAccessible::PageTabList}, {&button, QAccessible::Button}};
        for (const auto &[widget, role] : roles)
            QCOMPARE(accessible(widget)->role(), role);
    }

    void fieldsKeepSelectionAndCursor() {
        SelectableText text(TextStyle::body, TextColor::secondary, true);
        text.setValue(u"10b4e2f09a77c1d3"_s);
        text.setSelection(0, 4);
        text.setValue(u"10b4e2f09a77c1d3"_s);
        QCOMPARE(text.selectedText(), u"10b4"_s);

        TextField field(u"Address"_s);
        QSignalSpy submitted(&field, &TextField::submitted);
        QTest::keyClicks(&field, u"studio"_s);
        QTest::keyClick(&field, Qt::Key_Home);
        field.setValue(u"studio"_s);
        QTest::keyClicks(&field, u"my "_s);
        QCOMPARE(field.text(), u"my studio"_s);
        QTest::keyClick(&field, Qt::Key_Return);
        QCOMPARE(submitted.size(), 1);
    }

    void aStepperAsksWithinItsRange() {
        const std::tuple<int, Qt::Key, Emitted> rows[]{
            {100, Qt::Key_Up, {{110}}},     {100, Qt::Key_Down, {{90}}},   {1, Qt::Key_Up, {{11}}},
            {10235, Qt::Key_Up, {{10240}}}, {10240, Qt::Key_Up, {}},       {5, Qt::Key_Down, {{1}}},
            {50, Qt::Key_PageDown, {{1}}},  {100, Qt::Key_PageUp, {{200}}}};
        for (const auto &[value, key, wanted] : rows) {
            Stepper stepper(1, 10240, 10);
            stepper.setValue(value);
            QSignalSpy stepped(&stepper, &Stepper::stepped);
            QTest::keyClick(&stepper, key);
            QCOMPARE(Emitted(stepped), wanted);
            QAccessibleValueInterface *spoken = accessible(&stepper)->valueInterface();
            QCOMPARE(spoken->currentValue().toInt(), value);
            QCOMPARE(spoken->maximumValue().toInt(), 10240);
            spoken->setCurrentValue(42);
            QCOMPARE(stepped.last(), QList<QVariant>{42});
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

    void tabsAreOneStopAndMoveByArrows() {
        auto *tabs = new TabBar;
        auto *after = new Switch;
        tabs->setChoices({{u"One"_s, u"clock"_s}, {u"Two"_s, u"lock"_s}, {u"Three"_s, u"plus"_s}});
        tabs->setCurrent(0);
        QSignalSpy picked(tabs, &TabBar::picked);
        Window window{tabs, after};
        const auto items = tabs->findChildren<ChoiceItem *>();
        QTest::mouseClick(items[2], Qt::LeftButton);
        QCOMPARE(Emitted(picked), (Emitted{{2}}));
        QCOMPARE(tabs->current(), 0);
        connect(tabs, &TabBar::picked, tabs, &TabBar::setCurrent);
        items[0]->setFocus(Qt::TabFocusReason);
        QTest::keyClick(items[0], Qt::Key_Right);
        QCOMPARE(tabs->current(), 1);
        QVERIFY(items[1]->hasFocus());
        QTest::keyClick(items[1], Qt::Key_End);
        QTest::keyClick(items[2], Qt::Key_Right);
        QCOMPARE(tabs->current(), 2);
        QTest::keyClick(items[2], Qt::Key_Tab);
        QVERIFY(after->hasFocus());
        QTest::keyClick(after, Qt::Key_Backtab);
        QVERIFY(items[2]->hasFocus());

        QCOMPARE(accessible(tabs)->childCount(), 3);
        QAccessibleInterface *first = accessible(tabs)->child(0);
        QCOMPARE(first->role(), QAccessible::PageTab);
        QCOMPARE(first->text(QAccessible::Name), u"One"_s);
        QVERIFY(!first->state().selected && accessible(tabs)->child(2)->state().selected);
    }

    void segmentsMirrorWithTheLayout() {
        SegmentedPicker picker;
        picker.setOptions({u"Show"_s, u"Enter a PIN"_s});
        picker.setCurrent(0);
        const auto items = picker.findChildren<ChoiceItem *>();
        picker.setLayoutDirection(Qt::RightToLeft);
        QSignalSpy picked(&picker, &SegmentedPicker::picked);
        QTest::keyClick(items[0], Qt::Key_Right);
        QTest::keyClick(items[0], Qt::Key_Left);
        QCOMPARE(Emitted(picked), (Emitted{{1}}));
        QCOMPARE(accessible(items[0])->role(), QAccessible::RadioButton);
    }

    void aMenuPickerAsksAndSurvivesRendering() {
        MenuPicker picker;
        const QStringList options{u"Off"_s, u"100 ms"_s, u"R&D"_s};
        picker.setOptions(options);
        picker.setCurrent(-1);
        QCOMPARE(picker.accessibleText(), QString());
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
        QVERIFY(accessible(&picker)->state().expanded);
        menu->setActiveAction(menu->actions().at(2));
        QTest::keyClick(menu, Qt::Key_Return);
        QCOMPARE(Emitted(picked), (Emitted{{2}}));
        QCOMPARE(picker.current(), 1);
        QCOMPARE(accessible(&picker)->text(QAccessible::Value), u"100 ms"_s);
    }

    void buttonsPressByKeyboardAndKeepTheirSize() {
        Button button(u"Connect & go"_s, ButtonKind::prominent);
        QSignalSpy clicked(&button, &Button::clicked);
        for (const auto key : {Qt::Key_Return, Qt::Key_Enter, Qt::Key_Space})
            QTest::keyClick(&button, key);
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
        doAction(&button, QAccessibleActionInterface::pressAction());
        QCOMPARE(clicked.size(), 3);
    }

    void rowsNameTheirControlsAndHiddenOnesLeaveNoTrace() {
        auto *flip = new Switch;
        FormRow row(u"Images"_s, flip);
        row.setLabel(u"Pictures"_s);
        QCOMPARE(flip->accessibleName(), u"Pictures"_s);

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
        using Keys = QList<Qt::Key>;
        const std::pair<Keys, bool> rows[]{{{Qt::Key_Escape}, false},
                                           {{Qt::Key_Return}, false},
                                           {{Qt::Key_Tab, Qt::Key_Tab, Qt::Key_Tab, Qt::Key_Space}, false},
                                           {{Qt::Key_Tab, Qt::Key_Tab, Qt::Key_Return}, true}};
        for (const auto &[keys, confirmed] : rows) {
            auto *below = new Button(u"Below"_s);
            Window window({below}, {500, 400});
            below->setFocus(Qt::TabFocusReason);
            const QPointer<Alert> alert =
                new Alert({u"Remove?"_s, u"It must be paired again."_s, u"Cancel"_s, u"Remove"_s}, below);
            QSignalSpy confirmations(alert.data(), &Alert::confirmed);
            QSignalSpy dismissals(alert.data(), &Alert::dismissed);
            QSignalSpy belowClicked(below, &Button::clicked);
            alert->open();
            QCOMPARE(accessible(alert)->role(), QAccessible::AlertMessage);
            QCOMPARE(nameOf(alert), u"Remove?"_s);
            for (const Qt::Key key : keys)
                QTest::keyClick(window.windowHandle(), key);
            QCOMPARE(confirmations.size(), confirmed ? 1 : 0);
            QCOMPARE(dismissals.size(), 1);
            QCOMPARE(belowClicked.size(), 0);
            QVERIFY(below->hasFocus());
            QTRY_VERIFY(alert.isNull());
        }
    }

    void aSheetKeepsTheFocusAndGivesItBack() {
        auto *below = new Button(u"Below"_s);
        Window window({below}, {580, 500});
        below->setFocus();
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
        for (int i = 0; i < 5; ++i) {
            QTest::keyClick(window.windowHandle(), i < 3 ? Qt::Key_Tab : Qt::Key_Backtab);
            QVERIFY(field->hasFocus() || done->hasFocus());
        }
        QTest::mouseClick(window.windowHandle(), Qt::LeftButton, {}, below->geometry().center());
        QCOMPARE(clicked.size(), 0);
        field->setFocus();
        QTest::keyClick(window.windowHandle(), Qt::Key_Return);
        QTRY_VERIFY(sheet.isNull() && below->hasFocus());
    }
};

int main(int argc, char **argv) {
    return runViewTest<ControlsTest>(argc, argv);
}
#include "controls_test.moc"
