#pragma once

#include <QScrollArea>

class QVBoxLayout;

namespace quorbit {

/// A scrolling column of sections without a background of its own.
class Form final : public QScrollArea {
    Q_OBJECT

public:
    explicit Form(QWidget *parent = nullptr);

    /// Adds a FormSection, or any other widget, below what is there.
    void addSection(QWidget *section);

    /// Scrolls so that a part of a widget inside the form is in sight.
    void reveal(const QWidget &widget, const QRect &part);

    /// The height that shows the whole form without scrolling.
    QSize sizeHint() const override;

private:
    QVBoxLayout *column_;
};

} // namespace quorbit
