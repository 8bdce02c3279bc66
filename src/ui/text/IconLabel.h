#pragma once

#include "ui/text/SymbolLabel.h"
#include "ui/text/TextLabel.h"

class QHBoxLayout;

namespace quorbit {

/// A symbol before a text, or beside the first line of a text of several.
class IconLabel final : public QWidget {
    Q_OBJECT

public:
    IconLabel(const QString &symbol, const QString &text, TextStyle style, TextColor color,
              QWidget *parent = nullptr);

    void setSymbol(const QString &name);
    void setText(const QString &text);
    /// The colour of both.
    void setColor(TextColor color);
    void setGap(int gap);
    SymbolLabel &symbol() { return *symbol_; }
    TextLabel &text() { return *text_; }

protected:
    bool event(QEvent *event) override;

private:
    void placeSymbol();

    QHBoxLayout *row_;
    SymbolLabel *symbol_;
    TextLabel *text_;
};

} // namespace quorbit
