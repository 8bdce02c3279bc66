#include "menubar/MenuRow.h"

#include "menubar/PanelMetrics.h"
#include "ui/text/SymbolLabel.h"
#include "ui/text/TextLabel.h"

#include <QCoreApplication>
#include <QEvent>
#include <QHBoxLayout>

using namespace Qt::StringLiterals;

namespace quorbit {

namespace {

using Kind = MenuBarModel::InfoRow::Kind;

TextStyle styleOf(Kind kind) {
    return kind == Kind::peer || kind == Kind::notice ? TextStyle::body : TextStyle::caption;
}

TextLabel::Overflow overflowOf(Kind kind) {
    switch (kind) {
    case Kind::notice:
        return TextLabel::Overflow::wrap; // says what to do, so all of it must be read
    case Kind::transfer:
        return TextLabel::Overflow::cutMiddle; // keeps the percentage behind a long name
    case Kind::peer:
    case Kind::lastActivity:
        break;
    }
    return TextLabel::Overflow::cutEnd;
}

} // namespace

MenuRow::MenuRow(const MenuBarModel::InfoRow &model, QWidget *parent)
    : QWidget(parent)
    , AccessibleControl(this)
    , shown_(model)
    , symbol_(panel::columnSymbol(model.symbol))
    , text_(new TextLabel(model.text, styleOf(model.kind), model.color)) {
    text_->setOverflow(overflowOf(model.kind));
    panel::takeRemainingWidth(text_);
    QHBoxLayout *line = panel::rowLayout(this, panel::rowInset);
    line->addWidget(symbol_);
    line->addWidget(text_, 1);
    if (model.kind == Kind::peer) {
        connected_ = new TextLabel(qtTrId("menu.connected"), TextStyle::caption, TextColor::green);
        line->addWidget(connected_);
    }
    keepSomeText();
}

/// However large the font is, something of the name is to be seen before what follows it is whole.
void MenuRow::keepSomeText() {
    constexpr int leastCharacters = 5;
    text_->setMinimumWidth(leastCharacters * text_->fontMetrics().averageCharWidth());
}

void MenuRow::changeEvent(QEvent *event) {
    if (event->type() == QEvent::FontChange)
        keepSomeText();
    QWidget::changeEvent(event);
}

bool MenuRow::isFor(const MenuBarModel::InfoRow &model) const {
    return shown_.kind == model.kind && shown_.deviceId == model.deviceId;
}

void MenuRow::render(const MenuBarModel::InfoRow &model) {
    if (shown_ == model)
        return;
    shown_ = model;
    symbol_->setSymbol(model.symbol);
    text_->setColor(model.color);
    text_->setText(model.text);
    layout()->activate(); // the panel asks for the height at once, and a notice may have got another line
    accessibleNameChanged();
}

QString MenuRow::accessibleFallbackName() const {
    return connected_ ? shown_.text + u", "_s + connected_->text() : shown_.text;
}

} // namespace quorbit
