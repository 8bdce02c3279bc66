#pragma once

#include "ui/access/Accessibility.h"

#include <QWidget>

class QVBoxLayout;

namespace quorbit {

/// A rounded panel. Its rows lie under each other with hairlines between those that are visible.
class Card final : public QWidget, public AccessibleControl {
    Q_OBJECT

public:
    /// `plain` is the card of a grouped form; `tinted` carries a message in the accent colour.
    enum class Kind { plain, tinted };

    explicit Card(Kind kind = Kind::plain, QWidget *parent = nullptr);

    void addRow(QWidget *row);
    /// The layout of the rows.
    QVBoxLayout *rows() const { return rows_; }

    QAccessible::Role accessibleRole() const override { return QAccessible::Grouping; }
    bool isAccessibleLeaf() const override { return false; }

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    Kind kind_;
    QVBoxLayout *rows_;
};

} // namespace quorbit
