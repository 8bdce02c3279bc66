#pragma once

#include "ui/SymbolLabel.h"
#include "ui/TextLabel.h"

namespace quorbit {

/// A symbol before a text.
class IconLabel final : public QWidget {
    Q_OBJECT

public:
    IconLabel(const QString &symbol, const QString &text, TextStyle style, TextColor color,
              QWidget *parent = nullptr);

    void setSymbol(const QString &name);
    void setText(const QString &text);
    /// The colour of both.
    void setColor(TextColor color);
    SymbolLabel &symbol() { return *symbol_; }
    TextLabel &text() { return *text_; }

private:
    SymbolLabel *symbol_;
    TextLabel *text_;
};

} // namespace quorbit
