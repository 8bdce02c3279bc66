#pragma once

#include "menubar/MenuBarModel.h"
#include "ui/access/Accessibility.h"

#include <QWidget>

namespace quorbit {

class SymbolLabel;
class TextLabel;

/// A line of information: a symbol, a text and, behind a peer's name, that it is connected.
class MenuRow final : public QWidget, public AccessibleControl {
    Q_OBJECT

public:
    explicit MenuRow(const MenuBarModel::InfoRow &model, QWidget *parent = nullptr);

    /// Whether the row stands for the same thing, though its text may have changed.
    bool isFor(const MenuBarModel::InfoRow &model) const;
    void render(const MenuBarModel::InfoRow &model);

    QAccessible::Role accessibleRole() const override { return QAccessible::StaticText; }
    QString accessibleFallbackName() const override;

protected:
    void changeEvent(QEvent *event) override;

private:
    void keepSomeText();

    MenuBarModel::InfoRow shown_;
    SymbolLabel *symbol_;
    TextLabel *text_;
    TextLabel *connected_ = nullptr; ///< peers only
};

} // namespace quorbit
