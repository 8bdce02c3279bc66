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
    void insertRow(int index, QWidget *row);
    int rowCount() const;
    /// The layout of the rows.
    QVBoxLayout *rows() const { return rows_; }

    QAccessible::Role accessibleRole() const override { return QAccessible::Grouping; }
    bool isAccessibleLeaf() const override { return false; }

protected:
    void paintEvent(QPaintEvent *event) override;
    bool event(QEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void restyle();
    void roundOutermostRows();

    Kind kind_;
    QVBoxLayout *rows_;
};

} // namespace quorbit
