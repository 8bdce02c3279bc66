#pragma once

#include <QAbstractNativeEventFilter>
#include <QObject>

namespace quorbit {

/// Watches for something that shows tray icons: a status-notifier host on the session bus or a tray window of
/// an X11 session, whichever is there or comes first. The bus is preferred and its answer awaited, because
/// the kind is settled for the whole run when the first icon is made.
class TrayHosts : public QObject, QAbstractNativeEventFilter {
    Q_OBJECT

public:
    explicit TrayHosts(QObject *parent = nullptr);
    ~TrayHosts() override;

    void start();

Q_SIGNALS:
    /// Emitted once; an icon made from now on is taken in.
    void available();

private:
    bool nativeEventFilter(const QByteArray &eventType, void *message, qintptr *result) override;
    void askBus();
    void considerX11();
    void announce();

    bool awaitsBus_ = false;
    bool announced_ = false;

private Q_SLOTS:
    void hostRegistered();
};

} // namespace quorbit
