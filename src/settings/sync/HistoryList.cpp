#include "settings/sync/HistoryList.h"

#include "settings/sync/HistoryListAccessible.h"
#include "ui/access/Accessibility.h"
#include "ui/access/KeyboardArea.h"
#include "ui/look/Symbol.h"
#include "ui/look/TextStyle.h"
#include "ui/look/Theme.h"
#include "ui/look/ToolTip.h"
#include "wording/DisplayLine.h"

#include <QHelpEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QStyle>

#include <algorithm>

namespace quorbit {

namespace {

constexpr double leastHeight = 38;
constexpr int sideMargin = 12;
constexpr int columnGap = 10;
constexpr int leastSpace = 8; // between the preview and what follows it, beside the gaps
constexpr double symbolSide = 16;
constexpr double cornerRadius = 7; // of the card, inside its edge

} // namespace

HistoryList::HistoryList(QWidget *parent) : QWidget(parent) {
    setFocusPolicy(Qt::TabFocus);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    setMouseTracking(true);
    installHistoryListAccessibility();
}

HistoryList::~HistoryList() {
    forgetAccessible(this);
}

void HistoryList::setRows(std::vector<Row> rows) {
    if (rows == rows_)
        return;
    const std::optional<qint64> kept =
        current_ >= 0 ? std::optional(rows_[static_cast<std::size_t>(current_)].id) : std::nullopt;
    const bool resized = rows.size() != rows_.size();
    rows_ = std::move(rows); // not in the room of a list that may have been much longer
    if (kept) {
        const auto same = [&](const Row &row) { return row.id == *kept; };
        // Entries that claim to be the same one are told apart by their place.
        if (current_ >= count() || !same(rows_[static_cast<std::size_t>(current_)])) {
            const auto found = std::find_if(rows_.begin(), rows_.end(), same);
            current_ = found != rows_.end() ? static_cast<int>(found - rows_.begin())
                                            : std::min(current_, count() - 1);
            if (hasFocus())
                announceCurrentRow(*this);
        }
    }
    if (resized)
        updateGeometry();
    update();
    followPointer();
}

void HistoryList::setRoundedTop(bool rounded) {
    if (rounded == roundedTop_)
        return;
    roundedTop_ = rounded;
    update();
}

void HistoryList::setCurrentRow(int row) {
    if (row == current_ || row < 0 || row >= count())
        return;
    if (current_ >= 0)
        update(rowRect(current_));
    current_ = row;
    update(rowRect(row));
    if (hasFocus())
        announceCurrentRow(*this);
    Q_EMIT currentRowChanged(row);
}

void HistoryList::apply(int row) {
    if (row >= 0 && row < count())
        Q_EMIT applied(rows_[static_cast<std::size_t>(row)].id);
}

int HistoryList::rowHeight() const {
    return scaled(leastHeight, font());
}

QRect HistoryList::rowRect(int row) const {
    return {0, row * rowHeight(), width(), rowHeight()};
}

int HistoryList::rowAt(const QPoint &position) const {
    const int row = rect().contains(position) ? position.y() / rowHeight() : -1;
    return row < count() ? row : -1;
}

QSize HistoryList::sizeHint() const {
    return {0, count() * rowHeight()};
}

QVariant HistoryList::inputMethodQuery(Qt::InputMethodQuery query) const {
    if (query == Qt::ImCursorRectangle)
        return rowRect(std::max(current_, 0));
    return QWidget::inputMethodQuery(query);
}

HistoryList::Places HistoryList::places(int row) const {
    const int side = scaled(symbolSide, font());
    const QRect whole = rowRect(row);
    const QRect inside = whole.adjusted(sideMargin, 0, -sideMargin, 0);
    const QString source = displayLine(rows_[static_cast<std::size_t>(row)].source);
    // However long the source's name is, most of the row belongs to the preview.
    const int sourceWidth =
        source.isEmpty()
            ? 0
            : std::min(textWidth(textFont(TextStyle::caption, font()), source), inside.width() / 3);
    const int space = leastSpace + columnGap * (source.isEmpty() ? 1 : 2);
    const QRect symbol(inside.left(), inside.center().y() - side / 2 + 1, side, side);
    const QRect preview = inside.adjusted(side + columnGap, 0, -sourceWidth - space, 0);
    const QRect sourceRect = inside.adjusted(inside.width() - sourceWidth, 0, 0, 0);
    const auto mirrored = [&](const QRect &rect) {
        return QStyle::visualRect(layoutDirection(), whole, rect);
    };
    return {mirrored(symbol), mirrored(preview), mirrored(sourceRect)};
}

void HistoryList::paintEvent(QPaintEvent *event) {
    if (rows_.empty())
        return;
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const int first = std::max(event->rect().top() / rowHeight(), 0);
    const int last = std::min(event->rect().bottom() / rowHeight(), count() - 1);
    for (int row = first; row <= last; ++row)
        paintRow(painter, row);
}

void HistoryList::paintRow(QPainter &painter, int row) const {
    const QRect whole = rowRect(row);
    const QPalette colors = row == hovered_ ? highlightedPalette(palette()) : palette();
    if (row > 0)
        painter.fillRect(QRect(0, whole.top(), whole.width(), 1), themeColors(palette()).separator);
    if (row == hovered_)
        paintHighlight(painter, row, themeColors(colors).hover);

    const Row &entry = rows_[static_cast<std::size_t>(row)];
    const Places place = places(row);
    paintSymbol(painter, place.symbol, entry.symbol, shapeColor(colors, TextColor::secondary));
    const auto paintText = [&](const QRect &rect, const QString &text, TextStyle style, TextColor color,
                               Qt::TextElideMode mode, Qt::AlignmentFlag side) {
        painter.setFont(textFont(style, font()));
        painter.setPen(textColor(colors, color));
        const auto alignment = QStyle::visualAlignment(layoutDirection(), side | Qt::AlignVCenter);
        painter.drawText(rect, static_cast<int>(alignment) | Qt::TextSingleLine,
                         painter.fontMetrics().elidedText(displayLine(text), mode, rect.width()));
    };
    paintText(place.preview, entry.preview, TextStyle::body, TextColor::primary, Qt::ElideMiddle,
              Qt::AlignLeading);
    if (!entry.source.isEmpty())
        paintText(place.source, entry.source, TextStyle::caption, TextColor::tertiary, Qt::ElideRight,
                  Qt::AlignTrailing);

    if (row == current_ && hasFocus() && worksByKeyboard(*this)) {
        painter.setPen(QPen(themeColors(palette()).accent, 2));
        painter.setBrush(Qt::NoBrush);
        painter.drawRoundedRect(QRectF(whole).adjusted(3, 3, -3, -3), 3, 3);
    }
}

void HistoryList::paintHighlight(QPainter &painter, int row, const QColor &color) const {
    const bool top = row == 0 && roundedTop_;
    const bool bottom = row == count() - 1;
    // A corner that is not wanted is pushed out of sight.
    const QRectF shape =
        QRectF(rowRect(row)).adjusted(0, top ? 0 : -cornerRadius, 0, bottom ? 0 : cornerRadius);
    painter.save();
    painter.setClipRect(rowRect(row));
    painter.setPen(Qt::NoPen);
    painter.setBrush(color);
    const double radius = top || bottom ? cornerRadius : 0;
    painter.drawRoundedRect(shape, radius, radius);
    painter.restore();
}

void HistoryList::setHovered(int row) {
    if (row == hovered_)
        return;
    if (hovered_ >= 0)
        update(rowRect(hovered_));
    hovered_ = row;
    if (row >= 0)
        update(rowRect(row));
}

void HistoryList::followPointer() {
    setHovered(pointer_ ? rowAt(mapFromGlobal(*pointer_).toPoint()) : -1);
}

void HistoryList::mouseMoveEvent(QMouseEvent *event) {
    pointer_ = event->globalPosition();
    followPointer();
}

void HistoryList::mousePressEvent(QMouseEvent *event) {
    const int row = rowAt(event->position().toPoint());
    if (event->button() != Qt::LeftButton || row < 0)
        return;
    pressed_ = rows_[static_cast<std::size_t>(row)].id;
}

void HistoryList::mouseReleaseEvent(QMouseEvent *event) {
    if (event->button() != Qt::LeftButton)
        return;
    const std::optional<qint64> pressed = std::exchange(pressed_, std::nullopt);
    const int row = rowAt(event->position().toPoint());
    // The rows may have moved since the button went down; then nothing was chosen.
    if (row >= 0 && pressed == rows_[static_cast<std::size_t>(row)].id)
        apply(row);
}

void HistoryList::leaveEvent(QEvent *) {
    pointer_.reset();
    setHovered(-1);
}

void HistoryList::focusInEvent(QFocusEvent *) {
    if (current_ < 0)
        current_ = std::max(rowAt(visibleRegion().boundingRect().topLeft()), rows_.empty() ? -1 : 0);
    update();
    announceCurrentRow(*this);
}

void HistoryList::focusOutEvent(QFocusEvent *) {
    update();
}

void HistoryList::keyPressEvent(QKeyEvent *event) {
    const int last = count() - 1;
    const int page = std::max(visibleRegion().boundingRect().height() / rowHeight() - 1, 1);
    const auto moveTo = [&](int row) { setCurrentRow(std::clamp(row, 0, std::max(last, 0))); };
    switch (event->key()) {
    case Qt::Key_Up:
        return moveTo(current_ - 1);
    case Qt::Key_Down:
        return moveTo(current_ + 1);
    case Qt::Key_PageUp:
        return moveTo(current_ - page);
    case Qt::Key_PageDown:
        return moveTo(current_ + page);
    case Qt::Key_Home:
        return moveTo(0);
    case Qt::Key_End:
        return moveTo(last);
    case Qt::Key_Space:
    case Qt::Key_Return:
    case Qt::Key_Enter:
        if (!event->isAutoRepeat())
            apply(current_);
        return;
    default:
        QWidget::keyPressEvent(event);
    }
}

bool HistoryList::event(QEvent *event) {
    if (event->type() == QEvent::ToolTip) {
        showWholePreview(*static_cast<QHelpEvent *>(event));
        return true;
    }
    return QWidget::event(event);
}

// A preview that was cut can be read whole by resting the pointer on it.
void HistoryList::showWholePreview(const QHelpEvent &event) {
    const int row = rowAt(event.pos());
    if (row < 0)
        return;
    const QString preview = displayLine(rows_[static_cast<std::size_t>(row)].preview);
    if (textWidth(textFont(TextStyle::body, font()), preview) > places(row).preview.width())
        showToolTip(event, preview, this, rowRect(row));
}

} // namespace quorbit
