#include "ui/Alert.h"
#include "ui/Button.h"
#include "ui/Card.h"
#include "ui/ControlStyle.h"
#include "ui/FormRow.h"
#include "ui/FormSection.h"
#include "ui/HoverRow.h"
#include "ui/MenuPicker.h"
#include "ui/ProgressIndicator.h"
#include "ui/SegmentedPicker.h"
#include "ui/Sheet.h"
#include "ui/Stepper.h"
#include "ui/Switch.h"
#include "ui/TabBar.h"
#include "ui/TextField.h"
#include "ui/Theme.h"

#include <QApplication>
#include <QMenu>
#include <QSignalSpy>
#include <QTest>
#include <QVBoxLayout>

using namespace quorbit;

namespace {

class PaintCounter : public QObject {
public:
    explicit PaintCounter(QWidget &window) {
        window.installEventFilter(this);
        for (auto *child : window.findChildren<QWidget *>())
            child->installEventFilter(this);
    }
    bool eventFilter(QObject *, QEvent *event) override {
        paints += event->type() == QEvent::Paint ? 1 : 0;
        return false;
    }
    int paints = 0;
};

QAccessibleInterface *accessible(QWidget &widget) {
    return QAccessible::queryAccessibleInterface(&widget);
}

using Emitted = QList<QList<QVariant>>;

} // namespace

class FormControlsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void theSameValuesCauseNoRepaint();
    void aStepperAsksWithinItsRange_data();
    void aStepperAsksWithinItsRange();
    void aHeldStepperWaitsForAnAnswer();
    void tabsAreOneStopAndMoveByArrows();
    void segmentsMirrorWithTheLayout();
    void aMenuPickerAsksAndSurvivesRendering();
    void buttonsPressByKeyboardAndKeepTheirSize();
    void aFieldSubmitsAndKeepsItsCursor();
    void aSpinnerStandsStillWhenMotionIsReduced();
    void rowsNameTheirControlsAndKeepTheirHeight();
    void hiddenRowsLeaveNoTrace();
    void textOnATintedCardFollowsTheTheme();
    void anAlertCancelsUnlessConfirmed_data();
    void anAlertCancelsUnlessConfirmed();
    void aSheetKeepsTheFocusAndGivesItBack();

private:
    ControlStyle *style_ = nullptr;
};

void FormControlsTest::init() {
    style_ = new ControlStyle;
    QApplication::setStyle(style_);
    QApplication::setPalette(themePalette({}));
    QApplication::setFont(QFont(QStringLiteral("Inter"), 9));
    QCoreApplication::processEvents();
}

void FormControlsTest::theSameValuesCauseNoRepaint() {
    QWidget window;
    auto *column = new QVBoxLayout(&window);
    auto *section = new FormSection(QStringLiteral("Title"));
    auto *stepper = new Stepper(1, 100, 1);
    auto *picker = new MenuPicker;
    auto *tabs = new TabBar;
    auto *field = new TextField;
    auto *button = new Button(QStringLiteral("Go"));
    auto *row = new FormRow(QStringLiteral("Row"), stepper);
    const auto render = [&] {
        section->setTitle(QStringLiteral("Title"));
        section->setFooter(QStringLiteral("Footer"));
        row->setLabel(QStringLiteral("Row"));
        row->setSymbol(QStringLiteral("clock"));
        stepper->setValue(7);
        picker->setOptions({QStringLiteral("a"), QStringLiteral("b")});
        picker->setCurrent(1);
        tabs->setChoices({{QStringLiteral("One"), QStringLiteral("clock")}, {QStringLiteral("Two"), {}}});
        tabs->setCurrent(0);
        field->setValue(QStringLiteral("name"));
        button->setLabel(QStringLiteral("Go"));
        button->setSymbol(QStringLiteral("plus"));
        button->setBusy(false);
        button->setEnabled(true);
    };
    section->addRow(row);
    for (QWidget *widget : std::initializer_list<QWidget *>{tabs, section, picker, field, button})
        column->addWidget(widget);
    render();
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    QTest::qWait(30);
    PaintCounter counter(window);
    render();
    QTest::qWait(30);
    QCOMPARE(counter.paints, 0);
    stepper->setValue(8);
    QTRY_VERIFY(counter.paints > 0);
}

void FormControlsTest::aStepperAsksWithinItsRange_data() {
    QTest::addColumn<int>("value");
    QTest::addColumn<int>("key");
    QTest::addColumn<Emitted>("wanted");
    QTest::newRow("up") << 100 << int(Qt::Key_Up) << Emitted{{110}};
    QTest::newRow("down") << 100 << int(Qt::Key_Down) << Emitted{{90}};
    QTest::newRow("up from the bottom") << 1 << int(Qt::Key_Up) << Emitted{{11}};
    QTest::newRow("up to the bound") << 10235 << int(Qt::Key_Up) << Emitted{{10240}};
    QTest::newRow("at the top") << 10240 << int(Qt::Key_Up) << Emitted{};
    QTest::newRow("down to the bound") << 5 << int(Qt::Key_Down) << Emitted{{1}};
    QTest::newRow("page down to the bound") << 50 << int(Qt::Key_PageDown) << Emitted{{1}};
    QTest::newRow("page up") << 100 << int(Qt::Key_PageUp) << Emitted{{200}};
}

void FormControlsTest::aStepperAsksWithinItsRange() {
    QFETCH(int, value);
    QFETCH(int, key);
    QFETCH(Emitted, wanted);
    Stepper stepper(1, 10240, 10);
    stepper.setValue(value);
    QSignalSpy stepped(&stepper, &Stepper::stepped);
    QTest::keyClick(&stepper, Qt::Key(key));
    QCOMPARE(Emitted(stepped), wanted);
    QCOMPARE(stepper.value(), value);

    QAccessibleInterface *interface = accessible(stepper);
    QCOMPARE(interface->role(), QAccessible::SpinBox);
    QCOMPARE(interface->valueInterface()->currentValue().toInt(), value);
    QCOMPARE(interface->valueInterface()->maximumValue().toInt(), 10240);
    interface->valueInterface()->setCurrentValue(42);
    QCOMPARE(stepped.last(), QList<QVariant>{42});
}

void FormControlsTest::aHeldStepperWaitsForAnAnswer() {
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
    const int reached = stepper.value();
    QTest::qWait(250);
    QCOMPARE(stepper.value(), reached);
}

void FormControlsTest::tabsAreOneStopAndMoveByArrows() {
    QWidget window;
    auto *column = new QVBoxLayout(&window);
    auto *tabs = new TabBar;
    auto *after = new Switch;
    column->addWidget(tabs);
    column->addWidget(after);
    tabs->setChoices({{QStringLiteral("One"), QStringLiteral("clock")},
                      {QStringLiteral("Two"), QStringLiteral("lock")},
                      {QStringLiteral("Three"), QStringLiteral("plus")}});
    tabs->setCurrent(0);
    QSignalSpy picked(tabs, &TabBar::picked);
    window.show();
    QVERIFY(QTest::qWaitForWindowActive(&window));
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

    QAccessibleInterface *list = accessible(*tabs);
    QCOMPARE(list->role(), QAccessible::PageTabList);
    QCOMPARE(list->childCount(), 3);
    QAccessibleInterface *first = list->child(0);
    QCOMPARE(first->role(), QAccessible::PageTab);
    QCOMPARE(first->text(QAccessible::Name), QStringLiteral("One"));
    QVERIFY(!first->state().selected && list->child(2)->state().selected);
    first->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    QCOMPARE(tabs->current(), 0);
}

void FormControlsTest::segmentsMirrorWithTheLayout() {
    SegmentedPicker picker;
    picker.setOptions({QStringLiteral("Show"), QStringLiteral("Enter a PIN")});
    picker.setCurrent(0);
    const auto items = picker.findChildren<ChoiceItem *>();
    QCOMPARE(items[0]->sizeHint(), items[1]->sizeHint());
    picker.setLayoutDirection(Qt::RightToLeft);
    QSignalSpy picked(&picker, &SegmentedPicker::picked);
    QTest::keyClick(items[0], Qt::Key_Right);
    QCOMPARE(picked.size(), 0);
    QTest::keyClick(items[0], Qt::Key_Left);
    QCOMPARE(Emitted(picked), (Emitted{{1}}));
    QCOMPARE(accessible(*items[0])->role(), QAccessible::RadioButton);
    QVERIFY(accessible(*items[0])->state().checked);
}

void FormControlsTest::aMenuPickerAsksAndSurvivesRendering() {
    MenuPicker picker;
    const QStringList options{QStringLiteral("Off"), QStringLiteral("100 ms"), QStringLiteral("R&D")};
    picker.setOptions(options);
    picker.setCurrent(-1);
    QCOMPARE(picker.accessibleText(), QString());
    QSignalSpy picked(&picker, &MenuPicker::picked);
    picker.show();
    QVERIFY(QTest::qWaitForWindowExposed(&picker));
    QTest::keyClick(&picker, Qt::Key_Space);
    auto *menu = picker.findChild<QMenu *>();
    QVERIFY(menu != nullptr && menu->isVisible());
    for (const QAction *action : menu->actions())
        QVERIFY(!action->isChecked());

    picker.setOptions(options);
    picker.setCurrent(1);
    QVERIFY(menu->isVisible());
    QVERIFY(menu->actions().at(1)->isChecked());
    QVERIFY(accessible(picker)->state().expanded);
    menu->setActiveAction(menu->actions().at(2));
    QTest::keyClick(menu, Qt::Key_Return);
    QCOMPARE(Emitted(picked), (Emitted{{2}}));
    QCOMPARE(picker.current(), 1);
    QCOMPARE(accessible(picker)->text(QAccessible::Value), QStringLiteral("100 ms"));
    QCOMPARE(accessible(picker)->role(), QAccessible::ComboBox);
}

void FormControlsTest::buttonsPressByKeyboardAndKeepTheirSize() {
    Button button(QStringLiteral("Connect & go"), ButtonKind::prominent);
    QSignalSpy clicked(&button, &Button::clicked);
    for (const auto key : {Qt::Key_Return, Qt::Key_Enter, Qt::Key_Space})
        QTest::keyClick(&button, key);
    QCOMPARE(clicked.size(), 3);
    const QSize size = button.sizeHint();
    button.resize(size);
    const QImage calm = button.grab().toImage();
    button.setBusy(true);
    QCOMPARE(button.sizeHint(), size);
    QVERIFY(accessible(button)->state().busy);
    QVERIFY(button.grab().toImage() != calm);
    button.setBusy(false);
    QCOMPARE(button.grab().toImage(), calm);
    button.setEnabled(false);
    accessible(button)->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    QCOMPARE(clicked.size(), 3);
    QCOMPARE(accessible(button)->text(QAccessible::Name), QStringLiteral("Connect & go"));
}

void FormControlsTest::aFieldSubmitsAndKeepsItsCursor() {
    TextField field(QStringLiteral("Address"));
    QSignalSpy submitted(&field, &TextField::submitted);
    QTest::keyClicks(&field, QStringLiteral("studio"));
    QTest::keyClick(&field, Qt::Key_Home);
    field.setValue(QStringLiteral("studio"));
    QTest::keyClicks(&field, QStringLiteral("my "));
    QCOMPARE(field.text(), QStringLiteral("my studio"));
    QTest::keyClick(&field, Qt::Key_Return);
    QCOMPARE(submitted.size(), 1);
}

void FormControlsTest::aSpinnerStandsStillWhenMotionIsReduced() {
    for (const bool reduced : {false, true}) {
        style_->setReducedMotion(reduced);
        ProgressIndicator spinner;
        spinner.show();
        QVERIFY(QTest::qWaitForWindowExposed(&spinner));
        const QImage before = spinner.grab().toImage();
        QTest::qWait(250);
        QCOMPARE(spinner.grab().toImage() == before, reduced);
    }
}

void FormControlsTest::rowsNameTheirControlsAndKeepTheirHeight() {
    auto *flip = new Switch;
    FormRow row(QStringLiteral("Images"), flip);
    QCOMPARE(flip->accessibleName(), QStringLiteral("Images"));
    row.setLabel(QStringLiteral("Pictures"));
    QCOMPARE(flip->accessibleName(), QStringLiteral("Pictures"));
    QCOMPARE(row.sizeHint().expandedTo(row.minimumSize()).height(), 38);
    FormRow empty(QStringLiteral("Port"), nullptr);
    QCOMPARE(empty.sizeHint().expandedTo(empty.minimumSize()).height(), 38);
}

void FormControlsTest::hiddenRowsLeaveNoTrace() {
    FormSection with;
    FormSection without;
    for (FormSection *section : {&with, &without})
        section->addRow(new FormRow(QStringLiteral("First"), nullptr));
    auto *hidden = new FormRow(QStringLiteral("Hidden"), nullptr);
    with.insertRow(0, hidden);
    hidden->hide();
    for (FormSection *section : {&with, &without}) {
        section->resize(300, section->sizeHint().height());
        section->show();
    }
    QCOMPARE(with.grab().toImage(), without.grab().toImage());
}

void FormControlsTest::textOnATintedCardFollowsTheTheme() {
    QWidget window;
    auto *column = new QVBoxLayout(&window);
    auto *card = new Card(Card::Kind::tinted);
    auto *row = new QWidget;
    card->addRow(row);
    column->addWidget(card);
    for (const bool dark : {false, true}) {
        Appearance appearance;
        appearance.dark = dark;
        const QPalette theme = themePalette(appearance);
        QApplication::setPalette(theme);
        QTRY_COMPARE(row->palette().color(QPalette::Window),
                     composed(themeColors(theme).tint, theme.color(QPalette::Window)));
    }
}

void FormControlsTest::anAlertCancelsUnlessConfirmed_data() {
    QTest::addColumn<QList<int>>("keys");
    QTest::addColumn<bool>("confirmed");
    QTest::newRow("escape") << QList<int>{Qt::Key_Escape} << false;
    QTest::newRow("return") << QList<int>{Qt::Key_Return} << false;
    QTest::newRow("to the second button and back")
        << QList<int>{Qt::Key_Tab, Qt::Key_Tab, Qt::Key_Tab, Qt::Key_Space} << false;
    QTest::newRow("the second button") << QList<int>{Qt::Key_Tab, Qt::Key_Tab, Qt::Key_Return} << true;
}

void FormControlsTest::anAlertCancelsUnlessConfirmed() {
    QFETCH(QList<int>, keys);
    QFETCH(bool, confirmed);
    QWidget window;
    window.resize(500, 400);
    auto *below = new Button(QStringLiteral("Below"), ButtonKind::bordered, ButtonSize::regular, &window);
    window.show();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    below->setFocus(Qt::TabFocusReason);
    QPointer<Alert> alert = new Alert({QStringLiteral("Remove?"), QStringLiteral("It must be paired again."),
                                       QStringLiteral("Cancel"), QStringLiteral("Remove")},
                                      below);
    QSignalSpy confirmations(alert.data(), &Alert::confirmed);
    QSignalSpy dismissals(alert.data(), &Alert::dismissed);
    QSignalSpy belowClicked(below, &Button::clicked);
    alert->open();
    QCOMPARE(accessible(*alert)->role(), QAccessible::AlertMessage);
    QCOMPARE(accessible(*alert)->text(QAccessible::Name), QStringLiteral("Remove?"));
    for (const int key : keys)
        QTest::keyClick(window.windowHandle(), Qt::Key(key));
    QCOMPARE(confirmations.size(), confirmed ? 1 : 0);
    QCOMPARE(dismissals.size(), 1);
    QCOMPARE(belowClicked.size(), 0);
    QVERIFY(below->hasFocus());
    QTRY_VERIFY(alert.isNull());
}

void FormControlsTest::aSheetKeepsTheFocusAndGivesItBack() {
    QWidget window;
    window.resize(580, 500);
    auto *below = new Button(QStringLiteral("Below"), ButtonKind::bordered, ButtonSize::regular, &window);
    below->setGeometry(10, 10, 80, 27);
    window.show();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    below->setFocus();
    QPointer<Sheet> sheet = new Sheet(QStringLiteral("Add"), QSize(400, 340), &window);
    auto *field = new TextField;
    auto *done = new Button(QStringLiteral("Done"), ButtonKind::prominent);
    sheet->content()->addWidget(field);
    sheet->content()->addWidget(done);
    sheet->setDefaultButton(done);
    connect(done, &Button::clicked, sheet.data(), &Sheet::dismiss);
    QSignalSpy clicked(below, &Button::clicked);
    sheet->open();
    QCOMPARE(sheet->size(), window.size());
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
    QTRY_VERIFY(sheet.isNull());
    QVERIFY(below->hasFocus());
}

QTEST_MAIN(FormControlsTest)
#include "form_controls_test.moc"
