#include "app/windows/SettingsWindow.h"

#include "settings/AppIcon.h"

#include <QCloseEvent>
#include <QScreen>
#include <QShortcut>
#include <QVBoxLayout>
#include <QWindow>

using namespace Qt::StringLiterals;

namespace quorbit {

namespace {

constexpr QSize leastSize(560, 460);
constexpr QSize idealSize(580, 520);

QString title() {
    // The menu says by its dots that a window follows.
    return qtTrId("menu.settings").remove(QChar(0x2026)).remove(u"..."_s);
}

} // namespace

SettingsWindow::SettingsWindow(std::function<QWidget *()> makeContent)
    : AccessibleControl(this), makeContent_(std::move(makeContent)) {
    setAttribute(Qt::WA_QuitOnClose, false);
    setWindowTitle(title());
    setWindowIcon(applicationIcon());
    setMinimumSize(leastSize);
    resize(idealSize);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    auto *closing = new QShortcut(QKeySequence::Close, this);
    closing->setAutoRepeat(false);
    connect(closing, &QShortcut::activated, this, &QWidget::close);
}

void SettingsWindow::open() {
    if (!content_) {
        content_ = makeContent_();
        content_->setAccessibleName(windowTitle());
        layout()->addWidget(content_);
    }
    setWindowState(windowState() & ~Qt::WindowMinimized);
    show();
    connect(windowHandle(), &QWindow::screenChanged, this, &SettingsWindow::keepSize, Qt::UniqueConnection);
    raise();
    activateWindow();
}

void SettingsWindow::keepSize() {
    const bool isSizedByDesktop = isMaximized() || isFullScreen();
    if (isSizedByDesktop || windowHandle()->size() == size())
        return;
    // On X11 a window keeps its pixels, which are smaller on a screen of a higher scale; the widget has not
    // been told yet. Other sessions never come here.
    const QSize wanted = size().boundedTo(screen()->availableGeometry().size());
    QMetaObject::invokeMethod(
        this, [this, wanted] { resize(wanted); }, Qt::QueuedConnection);
}

void SettingsWindow::closeEvent(QCloseEvent *event) {
    QWidget::closeEvent(event);
    // The closing may have come from within the content.
    if (content_)
        content_->deleteLater();
    content_.clear();
}

} // namespace quorbit
