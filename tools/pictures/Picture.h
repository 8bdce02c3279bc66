#pragma once

#include <QSize>
#include <QString>
#include <QWidget>

#include <functional>
#include <memory>
#include <vector>

namespace quorbit {

class TimeFormats;

/// A view in one state, made anew for each language and appearance.
struct Picture {
    using Arrange = std::function<void(QWidget &, const TimeFormats &)>;

    QString name; ///< what it is a view of, a slash and the state
    std::function<std::unique_ptr<QWidget>(const TimeFormats &)> make;
    QSize size = {};      ///< the view's own unless it is given
    Arrange arrange = {}; ///< what is done to the view once it is shown
};

std::vector<Picture> allPictures();

} // namespace quorbit
