#include "support/Row.h"
#include "support/TestWorld.h"
#include "support/ViewChecks.h"
#include "ui/access/FocusRing.h"
#include "ui/controls/Button.h"
#include "ui/controls/Stepper.h"
#include "ui/controls/Switch.h"
#include "ui/form/Card.h"
#include "ui/form/FormRow.h"
#include "ui/form/FormSection.h"
#include "ui/overlay/Alert.h"
#include "ui/overlay/Sheet.h"
#include "ui/text/TextField.h"

#include <QKeyEvent>
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

// Plain use of the controls is tried in the real program; here is what only shows when one looks closely.
class ControlsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { useAppearance({}, 9); }

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
        flip.show();
        const QImage off = pictureOf(flip);
        QSignalSpy flipped(&flip, &Switch::flipped);
        QTest::keyClick(&flip, Qt::Key_Return);
        QKeyEvent held(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier, {}, true);
        QCoreApplication::sendEvent(&flip, &held);
        QCOMPARE(flipped, (Emitted{{true}}));
        QVERIFY(!flip.isOn());
        flip.setOn(true);
        QCOMPARE(pictureOf(flip), off); // it is on its way
        QTRY_VERIFY(pictureOf(flip) != off);
        auto *style = static_cast<ControlStyle *>(QApplication::style());
        style->setReducedMotion(true);
        flip.setOn(false);
        style->setReducedMotion(false);
        QCOMPARE(pictureOf(flip), off);
    }

    void textsFollowFontAndPalette() {
        auto *card = new Card(Card::Kind::tinted);
        auto *label = new TextLabel(u"Text"_s, TextStyle::body, TextColor::primary);
        card->addRow(label);
        Window window({card});
        const int before = label->sizeHint().width();
        useAppearance({.dark = true, .accent = {}}, 18);
        const QPalette theme = QApplication::palette();
        QTRY_VERIFY(label->sizeHint().width() > before * 1.8);
        QTRY_COMPARE(label->palette().color(QPalette::Window),
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

    void theRingFollowsItsControl() {
        auto *other = new Switch;
        Window window({new Switch, other});
        QTest::keyClick(&window, Qt::Key_Backtab);
        other->move(other->pos() + QPoint(7, 5));
        QVERIFY(only<FocusRing>(window)->geometry().contains(other->geometry()));
    }

    void theKeyboardGoesNowhereByItself() {
        // However a control goes, its window takes the keyboard. The Tab key goes on beside it, or starts
        // again.
        const std::tuple<const char *, std::function<void(Window &, QWidget *, Switch *)>, int> rows[]{
            {"hidden", [](auto &, auto *, auto *control) { control->hide(); }, 2},
            {"hidden while another window is active",
             [](auto &window, auto *, auto *control) {
                 Window other({new Switch});
                 control->hide();
                 window.activateWindow();
             },
             2},
            {"disabled with its parent", [](auto &, auto *part, auto *) { part->setEnabled(false); }, 2},
            {"deleted", [](auto &, auto *, auto *control) { delete control; }, 0},
            {"went with its parent", [](auto &, auto *part, auto *) { part->hide(), delete part; }, 2}};
        for (const auto &[name, go, next] : rows) {
            const Row row(name);
            const QList<QWidget *> parts{new Switch, new QWidget, new Switch};
            auto *control = new Switch(Switch::Size::regular, parts[1]);
            Window window(parts);
            control->setFocus(Qt::TabFocusReason);
            go(window, parts[1], control);
            QTRY_VERIFY(window.hasFocus());
            QTest::keyClick(&window, Qt::Key_Tab);
            QVERIFY(parts[next]->hasFocus());
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
        }
        QCOMPARE(pictureOf(with), pictureOf(without));
    }

    void anAlertCancelsUnlessConfirmed() {
        auto *below = new Button(u"Below"_s);
        Window window({below}, {500, 400});
        auto *alert = new Alert({u"Remove?"_s, u"For good."_s, u"Cancel"_s, u"Remove"_s}, below);
        QSignalSpy confirmations(alert, &Alert::confirmed);
        QSignalSpy dismissals(alert, &Alert::dismissed);
        alert->open();
        QTest::keyClick(window.windowHandle(), Qt::Key_Return);
        QCOMPARE(dismissals.size(), 1);
        QCOMPARE(confirmations.size(), 0);
    }

    void theTabKeyScrollsToWhereItGoes() {
        useAppearance({}, 20);
        Window window({}, {400, 200});
        auto *sheet = new Sheet(u"Sheet"_s, QSize(300, 100), &window);
        auto *last = new Button(u"Done"_s);
        for (QWidget *stop : std::initializer_list<QWidget *>{new TextField, new TextField, last})
            sheet->content()->addWidget(stop);
        sheet->open();
        settle();
        const auto isSeen = [&] { return last->visibleRegion().boundingRect() == last->rect(); };
        QVERIFY(!isSeen());
        QTest::keyClick(sheet, Qt::Key_Backtab);
        QTRY_VERIFY(last->hasFocus() && isSeen());
    }

    void wrappedTextIsSeenWhole() {
        for (const QString &text :
             {u"word "_s.repeated(40), u"文字"_s + QString(200, u'W'), u"a\nb\n\nc"_s}) {
            TextLabel label(text, TextStyle::caption, TextColor::primary);
            wrapping(&label)->setAlignment(Qt::AlignLeft | Qt::AlignTop);
            const int height = label.heightForWidth(240);
            QVERIFY(height >= 4 * (label.minimumSizeHint().height() - 1));
            // All that a label of twice the height shows is in its upper half.
            label.resize(240, 2 * height);
            const QImage large = pictureOf(label);
            QImage blank = large.copy(0, height, 240, height);
            blank.fill(blank.pixel(0, 0));
            QCOMPARE(large.copy(0, height, 240, height), blank);
            QVERIFY(large.copy(0, 0, 240, height) != blank);
        }
    }
};

int main(int argc, char **argv) {
    return runViewTest<ControlsTest>(argc, argv);
}
#include "ControlsTest.moc"
