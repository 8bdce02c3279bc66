#pragma once

#include <QObject>

namespace quorbit {

/// Turns the signals by which terminals and the system end a program into a Qt signal. One object a process.
class QuitSignals : public QObject {
    Q_OBJECT

public:
    explicit QuitSignals(QObject *parent = nullptr);

Q_SIGNALS:
    void received();
};

} // namespace quorbit
