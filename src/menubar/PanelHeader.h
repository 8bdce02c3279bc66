#pragma once

#include "menubar/MenuBarModel.h"

#include <QWidget>

namespace quorbit {

class SymbolLabel;
class TextLabel;
class UpdateBadge;

/// The panel's head: the status dot, the product's and this computer's name, and the update badge.
class PanelHeader final : public QWidget {
    Q_OBJECT

public:
    explicit PanelHeader(QWidget *parent = nullptr);

    void render(const MenuBarModel &model);

Q_SIGNALS:
    void updateRequested();

private:
    void showBadge(bool shown);

    SymbolLabel *dot_;
    TextLabel *deviceName_;
    UpdateBadge *badge_;
};

} // namespace quorbit
