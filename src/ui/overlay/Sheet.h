#pragma once

#include "ui/overlay/Overlay.h"

namespace quorbit {

/// A small form over its window. Put its parts into content(). It deletes itself after dismissed().
class Sheet final : public Overlay {
    Q_OBJECT

public:
    /// `size` is at the default font size; `name` is what screen readers call the sheet.
    Sheet(const QString &name, QSize size, QWidget *over);

    /// Leading-aligned, 16 pixels between items, 20 pixels of padding.
    QVBoxLayout *content() const { return column(); }

    QAccessible::Role accessibleRole() const override { return QAccessible::Dialog; }
};

} // namespace quorbit
