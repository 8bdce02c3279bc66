#pragma once

#include "ui/access/Accessibility.h"

#include <QPointer>
#include <QWidget>

#include <functional>

namespace quorbit {

/// The window of the settings. Its content is built afresh at each opening and goes with the closing.
class SettingsWindow : public QWidget, public AccessibleControl {
    Q_OBJECT

public:
    explicit SettingsWindow(std::function<QWidget *()> makeContent);

    /// Opens the window, or brings the open one to the front.
    void open();

    QAccessible::Role accessibleRole() const override { return QAccessible::Window; }
    bool isAccessibleLeaf() const override { return false; }

protected:
    void closeEvent(QCloseEvent *event) override;

private:
    void keepSize();

    std::function<QWidget *()> makeContent_;
    QPointer<QWidget> content_;
};

} // namespace quorbit
