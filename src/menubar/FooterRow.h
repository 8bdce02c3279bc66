#pragma once

#include "ui/controls/HoverRow.h"

#include <QKeySequence>

namespace quorbit {

/// An action at the panel's foot: its title and the keys that stand for it, which the row only shows.
class FooterRow final : public HoverRow {
    Q_OBJECT

public:
    FooterRow(const QString &title, const QKeySequence &shortcut, QWidget *parent = nullptr);
};

} // namespace quorbit
