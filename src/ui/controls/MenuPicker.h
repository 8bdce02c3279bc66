#pragma once

#include "ui/controls/Pressable.h"

#include <QPointer>
#include <QStringList>

class QMenu;

namespace quorbit {

/// A button that shows the chosen option and opens a menu of all. Choosing asks by picked(); what is shown
/// changes with setCurrent() only. An open menu stays open when options or choice are set anew.
class MenuPicker final : public Pressable {
    Q_OBJECT

public:
    explicit MenuPicker(QWidget *parent = nullptr);

    void setOptions(const QStringList &titles);
    int current() const { return current_; }
    /// -1, and any index without an option, shows no selection.
    void setCurrent(int index);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }
    QAccessible::Role accessibleRole() const override { return QAccessible::ComboBox; }
    QString accessibleText() const override { return options_.value(current_); }
    void addAccessibleState(QAccessible::State &state) const override;
    QWidget *accessiblePopup() const override;
    QStringList accessibleActions() const override;

Q_SIGNALS:
    void picked(int index);

protected:
    void paintEvent(QPaintEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void openMenu();
    void updateMenu();

    QStringList options_;
    int current_ = -1;
    QPointer<QMenu> menu_;
};

} // namespace quorbit
