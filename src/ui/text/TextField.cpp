#include "ui/text/TextField.h"

#include "ui/look/Frame.h"
#include "ui/look/Inherited.h"
#include "ui/look/Theme.h"

#include <QKeyEvent>
#include <QPainter>
#include <QTextBoundaryFinder>
#include <QValidator>

#include <algorithm>

namespace quorbit {

namespace {
constexpr double fieldHeight = 27;
constexpr int fieldWidth = 240;
constexpr double radius = 5;
constexpr int textMargin = 6;

/// Cuts a text that is too long between two characters. Half of what QLineEdit takes, whose own cut halves
/// characters: wherever it has made one, that place lies beyond this limit.
class WholeCharacters : public QValidator {
public:
    using QValidator::QValidator;

    State validate(QString &text, int &cursor) const override {
        constexpr qsizetype mostUnits = 16'383;
        if (text.size() > mostUnits) {
            QTextBoundaryFinder boundaries(QTextBoundaryFinder::Grapheme, text);
            boundaries.setPosition(mostUnits);
            text.truncate(boundaries.isAtBoundary() ? mostUnits : boundaries.toPreviousBoundary());
            cursor = std::min(cursor, static_cast<int>(text.size()));
        }
        return Acceptable;
    }
};

} // namespace

TextField::TextField(const QString &placeholder, QWidget *parent)
    : StyledLineEdit(TextStyle::body, TextColor::primary, false, parent) {
    setPlaceholderText(placeholder);
    setTextMargins(textMargin, 0, textMargin, 0);
    setValidator(new WholeCharacters(this));
    connect(this, &QLineEdit::returnPressed, this, &TextField::submitted);
}

QSize TextField::sizeHint() const {
    // The width stays, for a window does not grow with the font and the label beside the field needs its
    // share.
    return {fieldWidth, scaled(fieldHeight, inheritedFont(*this))};
}

QSize TextField::minimumSizeHint() const {
    return {sizeHint().width() / 3, sizeHint().height()};
}

void TextField::keyPressEvent(QKeyEvent *event) {
    const bool submits = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (!submits || !event->isAutoRepeat())
        StyledLineEdit::keyPressEvent(event);
}

void TextField::paintEvent(QPaintEvent *event) {
    {
        const ThemeColors colors = themeColors(inheritedPalette(*this));
        QPainter painter(this);
        paintFrame(painter, rect(), radius, colors.field, hasFocus() ? colors.accent : colors.fieldEdge,
                   hasFocus() ? 2 : 1);
    }
    StyledLineEdit::paintEvent(event);
}

} // namespace quorbit
