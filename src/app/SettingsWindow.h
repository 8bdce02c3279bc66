#pragma once

#include <QPointer>
#include <QWidget>

#include <functional>

namespace quorbit {

/// The window of the settings. Its content is built afresh at each opening and goes with the closing.
class SettingsWindow : public QWidget {
    Q_OBJECT

public:
    explicit SettingsWindow(std::function<QWidget *()> makeContent);

    /// Opens the window, or brings the open one to the front.
    void open();

protected:
    void closeEvent(QCloseEvent *event) override;

private:
    void keepSize();

    std::function<QWidget *()> makeContent_;
    QPointer<QWidget> content_;
};

} // namespace quorbit
