#pragma once

#include <QAbstractNativeEventFilter>
#include <QObject>

namespace quorbit {

/// Watches for something that shows tray icons: a status-notifier host on the session bus or a tray window of
/// an X11 session, whichever is there or comes first. The bus is preferred and its answer awaited, because
/// the kind is settled for the whole run when the first icon is made. An icon comes back by itself with a
/// tray of its kind.
class TrayHosts : public QObject, QAbstractNativeEventFilter {
    Q_OBJECT

public:
    explicit TrayHosts(QObject *parent = nullptr);
    ~TrayHosts() override;

    void start();
    /// Whether a tray of the kind that was settled is there now.
    bool isAvailable() const;

Q_SIGNALS:
    /// Emitted once; an icon made from now on is taken in.
    void available();

private:
    enum class Kind { none, bus, x11 };

    bool nativeEventFilter(const QByteArray &eventType, void *message, qintptr *result) override;
    void askBus();
    void considerX11();
    void announce(Kind kind);

    bool awaitsBus_ = false;
    bool busHasHost_ = false;
    Kind kind_ = Kind::none;

private Q_SLOTS:
    void busChanged();
};

} // namespace quorbit
