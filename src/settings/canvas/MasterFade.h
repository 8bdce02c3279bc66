#pragma once

#include "settings/canvas/Spring.h"

#include <QElapsedTimer>
#include <QHash>
#include <QObject>
#include <QTimer>

class QWidget;

namespace quorbit {

/// How much of the master's look each card has while the look moves from one card to another.
class MasterFade final : public QObject {
    Q_OBJECT

public:
    /// `canvas` is what the cards are painted on: its screen and style say how it moves, and whether it does.
    explicit MasterFade(QWidget &canvas);

    /// Starts the change to another master; at once where nothing may move.
    void moveTo(const QString &id);
    /// From 0 for any card to 1 for the master; a little beyond either while it swings.
    double amount(const QString &id) const;

Q_SIGNALS:
    void changed(const QString &id);

private:
    Spring &springOf(const QString &id);
    void advance();

    QWidget &canvas_;
    QString master_;
    QHash<QString, Spring> moving_;
    QTimer timer_;
    QElapsedTimer clock_;
};

} // namespace quorbit
