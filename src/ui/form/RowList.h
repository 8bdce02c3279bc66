#pragma once

#include <QBoxLayout>

#include <algorithm>
#include <span>
#include <utility>
#include <vector>

namespace quorbit {

/// The first rows of a layout, one for each value of a list; others may follow them. A row stays with the
/// value that it was made for, wherever that moves, and so keeps its hover, focus and pointer state.
///
/// The list ends after `mostRows`, many times what anybody has: a service gone wrong may tell of any number,
/// and the toolkit takes seconds to lay out thousands of rows and minutes to remove them again. `rest()` is
/// for the line that says so.
template <class Row>
class RowList {
public:
    static constexpr std::size_t mostRows = 200;

    explicit RowList(QBoxLayout *layout) : layout_(layout) {}

    const std::vector<Row *> &rows() const { return rows_; }

    /// How many values have no row because the list ended before them.
    std::size_t rest() const { return rest_; }

    /// `make` makes the row of a value that has none. True when the rows are others than before, or in
    /// another order.
    template <class Value, class Make>
    bool render(const std::vector<Value> &values, Make make) {
        std::vector<Row *> old = rows_;
        std::vector<Row *> next;
        const std::span shown(values.data(), std::min(values.size(), mostRows));
        rest_ = values.size() - shown.size();
        next.reserve(shown.size());
        for (const Value &value : shown) {
            const auto kept =
                std::find_if(old.begin(), old.end(), [&](Row *row) { return row && row->isFor(value); });
            next.push_back(kept == old.end() ? make(value) : std::exchange(*kept, nullptr));
            next.back()->render(value);
        }
        if (next == rows_)
            return false;
        for (Row *gone : old) {
            if (!gone)
                continue;
            layout_->removeWidget(gone);
            gone->hide();
            gone->deleteLater(); // the row may be the one whose click led here
        }
        for (int place = 0; place < static_cast<int>(next.size()); ++place) {
            Row *row = next[static_cast<std::size_t>(place)];
            if (layout_->indexOf(row) == place)
                continue;
            layout_->removeWidget(row);
            layout_->insertWidget(place, row);
            row->show();
        }
        // Screen readers follow the order of the children, which is that of the stack.
        for (Row *row : next)
            row->raise();
        rows_ = std::move(next);
        return true;
    }

private:
    QBoxLayout *layout_;
    std::vector<Row *> rows_;
    std::size_t rest_ = 0;
};

} // namespace quorbit
