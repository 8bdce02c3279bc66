#pragma once

#include <QObject>

namespace quorbit {

/// Marks the auto-repeat of a key that is held (QKeyEvent::isAutoRepeat) on X11, for the whole program. The
/// toolkit tells it from a release that the same key's press follows at once, and when that press has not
/// arrived yet, a held key passes for one that is pressed again and again.
class HeldKeys final : public QObject {
    Q_OBJECT

public:
    /// The application must be there already. On other sessions this does nothing.
    HeldKeys();

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    /// The scan code of the key that was pressed last, if it has not been released.
    quint32 held_ = 0;
    bool isAsked_ = false; ///< whether the X server has been asked to tell held keys
};

} // namespace quorbit
