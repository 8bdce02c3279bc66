#include "ui/ControlStyle.h"
#include "ui/Divider.h"
#include "ui/FocusRing.h"
#include "ui/HoverRow.h"
#include "ui/SelectableText.h"
#include "ui/Switch.h"
#include "ui/SymbolLabel.h"
#include "ui/TextLabel.h"

#include <QAccessible>
#include <QApplication>
#include <QHBoxLayout>
#include <QSignalSpy>
#include <QTest>

using namespace quorbit;

namespace {

class PaintCounter : public QObject {
public:
    explicit PaintCounter(QWidget &widget) { widget.installEventFilter(this); }
    bool eventFilter(QObject *, QEvent *event) override {
        paints += event->type() == QEvent::Paint ? 1 : 0;
        return false;
    }
    int paints = 0;
};

QAccessibleInterface *accessible(QWidget &widget) {
    return QAccessible::queryAccessibleInterface(&widget);
}

void settle() {
    QTest::qWait(20);
}

} // namespace

class BasicControlsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void theSameValueCausesNoRepaint();
    void aSwitchShowsOnlyWhatItIsTold();
    void aSwitchMovesOnlyWhereMotionIsWanted();
    void aSwitchTellsItsStateAndTakesActions();
    void aRowIsOneButton();
    void theRingShowsForTheKeyboardOnly();
    void labelsFollowFontAndPalette();
    void textThatDoesNotFitIsCutOrWrapped();
    void labelsTellTheirText();
    void selectableTextKeepsItsSelection();

private:
    ControlStyle *style_ = nullptr;
};

void BasicControlsTest::init() {
    style_ = new ControlStyle;
    QApplication::setStyle(style_);
    QApplication::setPalette(themePalette({}));
    QApplication::setFont(QFont(QStringLiteral("Inter"), 9));
    // Qt tells the widgets of both by posted events.
    QCoreApplication::processEvents();
}

void BasicControlsTest::theSameValueCausesNoRepaint() {
    QWidget window;
    auto *layout = new QHBoxLayout(&window);
    auto *label = new TextLabel(QStringLiteral("text"), TextStyle::body, TextColor::primary);
    auto *symbol = new SymbolLabel(QStringLiteral("clock"));
    auto *flip = new Switch;
    auto *selectable = new SelectableText(TextStyle::body, TextColor::secondary, true);
    for (QWidget *widget : std::initializer_list<QWidget *>{label, symbol, flip, selectable})
        layout->addWidget(widget);
    selectable->setValue(QStringLiteral("10b4e2"));
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    settle();

    PaintCounter labelPaints(*label);
    PaintCounter symbolPaints(*symbol);
    PaintCounter switchPaints(*flip);
    PaintCounter selectablePaints(*selectable);
    label->setText(QStringLiteral("text"));
    label->setColor(TextColor::primary);
    label->setStyle(TextStyle::body);
    symbol->setSymbol(QStringLiteral("clock"));
    symbol->setColor(TextColor::secondary);
    flip->setOn(false);
    selectable->setValue(QStringLiteral("10b4e2"));
    settle();
    QCOMPARE(labelPaints.paints, 0);
    QCOMPARE(symbolPaints.paints, 0);
    QCOMPARE(switchPaints.paints, 0);
    QCOMPARE(selectablePaints.paints, 0);

    label->setColor(TextColor::red);
    symbol->setSymbol(QStringLiteral("plus"));
    flip->setOn(true);
    QTRY_VERIFY(labelPaints.paints > 0 && symbolPaints.paints > 0 && switchPaints.paints > 0);
}

void BasicControlsTest::aSwitchShowsOnlyWhatItIsTold() {
    Switch flip;
    QSignalSpy flipped(&flip, &Switch::flipped);
    flip.show();
    QTest::mouseClick(&flip, Qt::LeftButton);
    QTest::keyClick(&flip, Qt::Key_Space);
    QVERIFY(!flip.isOn());
    flip.setOn(true);
    QTest::mouseClick(&flip, Qt::LeftButton);
    QVERIFY(flip.isOn());
    QCOMPARE(flipped, (QList<QList<QVariant>>{{true}, {true}, {false}}));
    flip.setEnabled(false);
    QTest::mouseClick(&flip, Qt::LeftButton);
    QCOMPARE(flipped.size(), 3);
}

void BasicControlsTest::aSwitchMovesOnlyWhereMotionIsWanted() {
    Switch flip;
    flip.resize(flip.sizeHint());
    const QImage off = flip.grab().toImage();
    flip.setOn(true);
    const QImage on = flip.grab().toImage();
    QVERIFY(on != off);

    flip.setOn(false);
    flip.show();
    QVERIFY(QTest::qWaitForWindowExposed(&flip));
    flip.setOn(true);
    QCOMPARE(flip.grab().toImage(), off);
    QTRY_COMPARE(flip.grab().toImage(), on);

    style_->setReducedMotion(true);
    flip.setOn(false);
    QCOMPARE(flip.grab().toImage(), off);
}

void BasicControlsTest::aSwitchTellsItsStateAndTakesActions() {
    Switch flip;
    flip.setAccessibleName(QStringLiteral("Pause"));
    QSignalSpy flipped(&flip, &Switch::flipped);
    QAccessibleInterface *interface = accessible(flip);
    QVERIFY(interface != nullptr);
    QCOMPARE(interface->role(), QAccessible::CheckBox);
    QCOMPARE(interface->text(QAccessible::Name), QStringLiteral("Pause"));
    QVERIFY(!interface->state().checked);
    flip.setOn(true);
    QVERIFY(interface->state().checked);
    for (const QString &action :
         {QAccessibleActionInterface::toggleAction(), QAccessibleActionInterface::pressAction()}) {
        QVERIFY(interface->actionInterface()->actionNames().contains(action));
        interface->actionInterface()->doAction(action);
    }
    QCOMPARE(flipped, (QList<QList<QVariant>>{{false}, {false}}));
    QVERIFY(flip.isOn());
}

void BasicControlsTest::aRowIsOneButton() {
    QWidget window;
    auto *column = new QVBoxLayout(&window);
    auto *row = new HoverRow;
    auto *label = new TextLabel(QStringLiteral("Quit"), TextStyle::body, TextColor::secondary);
    (new QHBoxLayout(row))->addWidget(label);
    column->addWidget(row);
    row->setAccessibleName(QStringLiteral("Quit"));
    QSignalSpy clicked(row, &HoverRow::clicked);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    QTest::mouseClick(window.windowHandle(), Qt::LeftButton, {}, label->mapTo(&window, QPoint(3, 3)));
    QCOMPARE(clicked.size(), 1);
    QTest::keyClick(row, Qt::Key_Return);
    QTest::keyClick(row, Qt::Key_Space);
    QCOMPARE(clicked.size(), 3);

    QEvent leave(QEvent::Leave);
    QApplication::sendEvent(row, &leave);
    const QColor calm = textColor(label->palette(), TextColor::secondary);
    QEnterEvent enter{QPointF(), QPointF(), QPointF()};
    QApplication::sendEvent(row, &enter);
    const QColor lit = textColor(label->palette(), TextColor::secondary);
    QVERIFY(lit != calm);
    Appearance night;
    night.dark = true;
    QApplication::setPalette(themePalette(night));
    QTRY_VERIFY(themeColors(label->palette()).dark);
    QApplication::sendEvent(row, &leave);
    QTRY_COMPARE(label->palette().color(QPalette::Window), themePalette(night).color(QPalette::Window));

    QAccessibleInterface *interface = accessible(*row);
    QCOMPARE(interface->role(), QAccessible::Button);
    QCOMPARE(interface->text(QAccessible::Name), QStringLiteral("Quit"));
    QCOMPARE(interface->childCount(), 0);
    interface->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    QCOMPARE(clicked.size(), 4);
}

void BasicControlsTest::theRingShowsForTheKeyboardOnly() {
    QWidget window;
    auto *layout = new QVBoxLayout(&window);
    layout->setContentsMargins(10, 10, 10, 10);
    auto *flip = new Switch;
    auto *other = new Switch;
    layout->addWidget(flip);
    layout->addWidget(other);
    window.show();
    QVERIFY(QTest::qWaitForWindowActive(&window));
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
    QVERIFY(rings().first()->geometry().contains(other->geometry()));
    other->move(other->pos() + QPoint(7, 5));
    QVERIFY(rings().first()->geometry().contains(other->geometry()));
    QTest::mouseClick(other, Qt::LeftButton);
    QVERIFY(rings().isEmpty());
}

void BasicControlsTest::labelsFollowFontAndPalette() {
    TextLabel label(QStringLiteral("Text"), TextStyle::body, TextColor::primary);
    SymbolLabel symbol(QStringLiteral("clock"), 15);
    QWidget parent;
    SelectableText selectable(TextStyle::caption, TextColor::secondary, true, &parent);
    selectable.setValue(QStringLiteral("10b4"));
    const QSize before = label.sizeHint();
    const int selectableBefore = selectable.sizeHint().height();
    QApplication::setFont(QFont(QStringLiteral("Inter"), 18));
    QTRY_VERIFY(label.sizeHint().width() > before.width() * 1.8);
    QTRY_COMPARE(symbol.sizeHint(), QSize(30, 30));
    QTRY_VERIFY(selectable.sizeHint().height() > selectableBefore * 1.8);

    Appearance night;
    night.dark = true;
    QApplication::setPalette(themePalette(night));
    QTRY_COMPARE(selectable.palette().color(QPalette::Text),
                 textColor(QApplication::palette(), TextColor::secondary));
}

void BasicControlsTest::textThatDoesNotFitIsCutOrWrapped() {
    TextLabel label(QStringLiteral("one two three\nfour five six seven eight"), TextStyle::body,
                    TextColor::primary);
    const int line = label.sizeHint().height();
    QVERIFY(label.minimumSizeHint().width() < label.sizeHint().width() / 4);
    QCOMPARE(label.heightForWidth(60), line);
    label.resize(80, line);
    const QImage end = label.grab().toImage();
    label.setOverflow(TextLabel::Overflow::cutMiddle);
    QVERIFY(label.grab().toImage() != end);
    label.setOverflow(TextLabel::Overflow::wrap);
    QVERIFY(label.heightForWidth(80) >= 3 * line - 2);
}

void BasicControlsTest::labelsTellTheirText() {
    TextLabel label(QStringLiteral("<b>plain</b>"), TextStyle::body, TextColor::primary);
    QCOMPARE(accessible(label)->role(), QAccessible::StaticText);
    QCOMPARE(accessible(label)->text(QAccessible::Name), QStringLiteral("<b>plain</b>"));
    SymbolLabel symbol(QStringLiteral("clock"));
    QVERIFY(accessible(symbol)->state().invisible);
    symbol.setAccessibleName(QStringLiteral("Connected"));
    symbol.show();
    QVERIFY(!accessible(symbol)->state().invisible);
    QCOMPARE(accessible(symbol)->role(), QAccessible::Graphic);
}

void BasicControlsTest::selectableTextKeepsItsSelection() {
    SelectableText text(TextStyle::body, TextColor::secondary, true);
    text.setValue(QStringLiteral("10b4e2f09a77c1d3"));
    text.setSelection(0, 4);
    text.setValue(QStringLiteral("10b4e2f09a77c1d3"));
    QCOMPARE(text.selectedText(), QStringLiteral("10b4"));
    QTest::keyClicks(&text, QStringLiteral("x"));
    QCOMPARE(text.text(), QStringLiteral("10b4e2f09a77c1d3"));
}

QTEST_MAIN(BasicControlsTest)
#include "basic_controls_test.moc"
