#pragma once

#include "settings/canvas/Arrangement.h"

#include <QWidget>

namespace quorbit {

class CanvasArea;

/// Shows where the screens of all computers lie and which one has the keyboard and mouse, and lets the user
/// arrange them. It changes nothing by itself: the owner renders what was really stored.
class ScreenLayoutCanvas final : public QWidget {
    Q_OBJECT

public:
    explicit ScreenLayoutCanvas(QWidget *parent = nullptr);

    /// What is arranged; nothing is repainted while it stays the same.
    void render(const ScreenDesk &desk, const QString &masterID);
    /// A save that `arranged` asked for has ended; what an answered one brought about is rendered.
    void saveEnded(int save, bool isAnswered);
    /// What would be asked for once the saves under way have ended, for an owner that does not wait for them.
    std::optional<Arrangement::Save> lastSave();

Q_SIGNALS:
    /// The user dropped a card or moved it by keyboard. The owner saves the layout, and tells by saveEnded().
    void arranged(const quorbit::ScreenLayout &layout, int save);
    /// The user chose a card other than the master's.
    void masterPicked(const QString &id);
    /// The keyboard has reached or moved the card at `place`, which should be in sight.
    void currentCardAt(const QRect &place);

private:
    CanvasArea *area_;
};

} // namespace quorbit
