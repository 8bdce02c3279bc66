#pragma once

#include "settings/sync/SyncModel.h"

#include <QWidget>

#include <optional>
#include <vector>

class QHelpEvent;

namespace quorbit {

/// The rows of the clipboard history. However many there are, they are one widget as high as all of them,
/// which paints those that can be seen; it is made to lie in a form that scrolls. A click applies a row. The
/// list is one stop for the Tab key: the arrow keys move between its rows and Return or Space applies one.
class HistoryList final : public QWidget {
    Q_OBJECT

public:
    using Row = HistoryItem;

    explicit HistoryList(QWidget *parent = nullptr);
    ~HistoryList() override;

    const std::vector<Row> &rows() const { return rows_; }
    /// The row that the keyboard is at stays the one with the same identifier, or its place does.
    void setRows(std::vector<Row> rows);
    /// Rounds the highlight of the first row, where the list begins its card.
    void setRoundedTop(bool rounded);

    /// Where the keyboard is, -1 for nowhere.
    int currentRow() const { return current_; }
    void setCurrentRow(int row);
    void apply(int row);
    QRect rowRect(int row) const;
    /// -1 for none.
    int rowAt(const QPoint &position) const;
    /// Highlights what is under the pointer now that the list has moved.
    void followPointer();

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }
    /// Tells a scroll area that its focus widget is the current row, not the whole list.
    QVariant inputMethodQuery(Qt::InputMethodQuery query) const override;

Q_SIGNALS:
    void applied(qint64 id);
    /// The keyboard has moved to another row, which should be seen.
    void currentRowChanged(int row);

protected:
    void paintEvent(QPaintEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void leaveEvent(QEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    bool event(QEvent *event) override;

private:
    struct Places {
        QRect symbol, preview, source;
    };

    int count() const { return static_cast<int>(rows_.size()); }
    int rowHeight() const;
    Places places(int row) const;
    void paintRow(QPainter &painter, int row) const;
    void paintHighlight(QPainter &painter, int row, const QColor &color) const;
    void setHovered(int row);
    void showWholePreview(const QHelpEvent &event);

    std::vector<Row> rows_;
    int current_ = -1;
    int hovered_ = -1;
    std::optional<qint64> pressed_;  ///< the identifier of the row that the button went down on
    std::optional<QPointF> pointer_; ///< where it is on the screen, while it is over the list
    bool roundedTop_ = false;
};

} // namespace quorbit
