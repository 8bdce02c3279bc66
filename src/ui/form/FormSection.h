#pragma once

#include <QWidget>

class QHBoxLayout;
class QVBoxLayout;

namespace quorbit {

class Card;
class TextLabel;

/// A group of rows on a card, with a title over it and a caption under it.
class FormSection final : public QWidget {
    Q_OBJECT

public:
    /// An empty title is not shown.
    explicit FormSection(const QString &title = {}, QWidget *parent = nullptr);

    /// A control at the trailing end of the title.
    void setHeaderControl(QWidget *control);
    /// An empty text is not shown.
    void setFooter(const QString &text);
    /// Shows `footer` under the card, before the footer's text if both are given.
    void setFooterWidget(QWidget *footer);

    void addRow(QWidget *row);
    Card &card() { return *card_; }

private:
    QVBoxLayout *column_;
    QWidget *header_;
    QHBoxLayout *headerRow_;
    TextLabel *title_;
    Card *card_;
    TextLabel *footer_ = nullptr;
};

} // namespace quorbit
