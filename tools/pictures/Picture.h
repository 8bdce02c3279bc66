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
    QString name; ///< what it is a view of, a slash and the state
    std::function<std::unique_ptr<QWidget>(const TimeFormats &)> make;
    QSize size = {}; ///< the view's own unless it is given
    /// What is done to the view once it is shown.
    std::function<void(QWidget &, const TimeFormats &)> arrange = {};
};

std::vector<Picture> allPictures();

} // namespace quorbit
