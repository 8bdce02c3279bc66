#include "app/windows/PanelWindow.h"

#include "settings/AppIcon.h"
#include "ui/look/Theme.h"

#include <QApplication>
#include <QCursor>
#include <QKeyEvent>
#include <QPainter>
#include <QPainterPath>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>

namespace quorbit {

namespace {

constexpr int cornerRadius = 10;
/// A click on the icon takes the focus from the panel before it arrives as a click.
constexpr int sameClick = 300;

constexpr Qt::WindowFlags dropDownFlags = Qt::Tool | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint;
constexpr Qt::WindowFlags ordinaryFlags = Qt::Window | Qt::WindowTitleHint | Qt::WindowSystemMenuHint |
                                          Qt::WindowMinimizeButtonHint | Qt::WindowCloseButtonHint;

QPainterPath outline(const QRectF &rectangle) {
    QPainterPath path;
    path.addRoundedRect(rectangle, cornerRadius, cornerRadius);
    return path;
}

} // namespace

PanelWindow::PanelWindow(QWidget *content, std::function<bool()> isBlended)
    : QWidget(nullptr, dropDownFlags)
    , AccessibleControl(this)
    , content_(content)
    , scroller_(new QScrollArea(this))
    , isBlended_(std::move(isBlended)) {
    setAttribute(Qt::WA_TranslucentBackground);
    setAttribute(Qt::WA_QuitOnClose, false);
    setWindowTitle(qtTrId("common.app_name"));
    setAccessibleName(windowTitle());

    scroller_->setFrameShape(QFrame::NoFrame);
    scroller_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    scroller_->setFocusPolicy(Qt::NoFocus);
    scroller_->viewport()->setAutoFillBackground(false);
    scroller_->setWidget(content);
    content->setAutoFillBackground(false);
    content->installEventFilter(this);
}

PanelWindow::~PanelWindow() {
    content_->removeEventFilter(this);
}

void PanelWindow::dropDown(const QRect &icon) {
    const QRect beside = icon.isEmpty() ? QRect(QCursor::pos(), QSize(1, 1)) : icon;
    QScreen *screen = QGuiApplication::screenAt(beside.center());
    if (!screen)
        screen = QGuiApplication::primaryScreen();
    setScreen(screen);
    available_ = screen->availableGeometry();
    anchor_ = panelAnchor(beside, available_);
    hasFocus_ = hasFocus_ && isVisible();
    if (windowFlags() != dropDownFlags)
        setWindowFlags(dropDownFlags);
    fit();
    roundCorners();
    show();
    raise();
    activateWindow();
    content_->setFocus();
}

void PanelWindow::toggle(const QRect &icon) {
    const bool closedByThisClick = sinceFocusWasLost_.isValid() && sinceFocusWasLost_.elapsed() < sameClick;
    if (isVisible() && !isOrdinaryWindow())
        dismiss();
    else if (!closedByThisClick)
        dropDown(icon);
}

void PanelWindow::dismiss() {
    // The loss of focus that follows, at once or after the next opening, is not the user's doing.
    hasFocus_ = false;
    hide();
    // On X11 a window that comes back at once may get the focus before the toolkit has seen it go, and is
    // then taken for inactive. A new window has no such past, and a hidden one holds no memory.
    QMetaObject::invokeMethod(
        this,
        [this] {
            if (!isVisible())
                destroy();
        },
        Qt::QueuedConnection);
}

void PanelWindow::showAsWindow() {
    anchor_.reset();
    if (windowIcon().isNull())
        setWindowIcon(applicationIcon());
    if (windowFlags() != ordinaryFlags)
        setWindowFlags(ordinaryFlags);
    clearMask();
    fit();
    show();
    raise();
    activateWindow();
}

void PanelWindow::fit() {
    const QRect available = anchor_ ? available_ : screen()->availableGeometry();
    const int height = std::min(content_->height(), highestPanel(available));
    const bool isCut = height < content_->height();
    const QSize size(content_->width() + (isCut ? scroller_->verticalScrollBar()->sizeHint().width() : 0),
                     height);
    if (anchor_) {
        // Place and size change at once, or a panel above its icon would be seen to jump.
        setMinimumSize(0, 0);
        setMaximumSize(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX);
        setGeometry(panelGeometry(*anchor_, size, available));
    }
    // A window whose size is fixed is left floating where windows are tiled.
    setFixedSize(size);
    // One that has grown past the lower edge of the screen would hide its footer.
    const int hidden = frameGeometry().bottom() - available.bottom();
    if (!anchor_ && isVisible() && hidden > 0)
        move(x(), std::max(available.top(), y() - hidden));
}

void PanelWindow::roundCorners() {
    if (isBlended_())
        clearMask();
    else // Translucent corners would be black.
        setMask(QRegion(outline(rect()).toFillPolygon().toPolygon()));
}

bool PanelWindow::event(QEvent *event) {
    if (event->type() == QEvent::WindowActivate) {
        hasFocus_ = true;
    } else if (event->type() == QEvent::WindowDeactivate && hasFocus_ && !isOrdinaryWindow()) {
        sinceFocusWasLost_.start();
        dismiss();
    }
    return QWidget::event(event);
}

bool PanelWindow::eventFilter(QObject *watched, QEvent *event) {
    if (watched == content_ && event->type() == QEvent::Resize && isVisible())
        fit();
    return QWidget::eventFilter(watched, event);
}

void PanelWindow::keyPressEvent(QKeyEvent *event) {
    if (event->matches(QKeySequence::Cancel) && !isOrdinaryWindow())
        dismiss();
    else
        QWidget::keyPressEvent(event);
}

void PanelWindow::paintEvent(QPaintEvent *) {
    const ThemeColors colors = themeColors(palette());
    QPainter painter(this);
    if (isOrdinaryWindow()) {
        painter.fillRect(rect(), colors.window);
        return;
    }
    // A masked window shows what is behind its corners' half-covered pixels: nothing, which is black.
    if (!mask().isEmpty())
        painter.fillRect(rect(), colors.window);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(colors.window);
    painter.setPen(colors.cardEdge);
    painter.drawPath(outline(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5)));
}

void PanelWindow::resizeEvent(QResizeEvent *event) {
    QWidget::resizeEvent(event);
    scroller_->setGeometry(rect());
    if (!isOrdinaryWindow())
        roundCorners();
}

} // namespace quorbit
