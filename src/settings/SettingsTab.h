#pragma once

#include <QWidget>

namespace quorbit {

/// A tab of the settings window.
class SettingsTab : public QWidget {
public:
    using QWidget::QWidget;

    /// Shows what is published now. Called just before the tab comes into view, and as long as it can be seen
    /// whenever something was published.
    virtual void showState() = 0;
};

} // namespace quorbit
