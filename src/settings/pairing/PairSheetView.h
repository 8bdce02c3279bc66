#pragma once

#include "platform/Clock.h"
#include "settings/pairing/PairSheet.h"

#include <QWidget>

#include <QCoroTask>

#include <memory>

class QVBoxLayout;

namespace quorbit {

class Button;
class Daemon;
class IconLabel;
class SegmentedPicker;
class SelectableText;
class TextField;

/// What the sheet that pairs a computer contains. Requests that it still waits for when it is destroyed end
/// without effect on it.
class PairSheetView final : public QWidget {
    Q_OBJECT

public:
    /// Both must outlive the view.
    PairSheetView(Daemon &daemon, Clock &clock, QWidget *parent = nullptr);
    ~PairSheetView() override;

    /// Shows whether another device was paired. To be called whenever something was published.
    void showState();
    /// Shows `state`; costs one comparison when that is what is shown already.
    void render(const pairsheet::SheetState &state);

    Button *doneButton() const { return done_; }

Q_SIGNALS:
    /// The sheet is to be closed.
    void finished();

private:
    QWidget *makeShowPage();
    QWidget *makeConnectPage();
    void connectControls();

    void handle(const pairsheet::Event &event);
    void perform(const pairsheet::effect::RequestPin &effect);
    void perform(const pairsheet::effect::Connect &effect);
    void perform(const pairsheet::effect::Dismiss &effect);

    Daemon &daemon_;
    Clock &clock_;
    pairsheet::SheetState state_;
    std::unique_ptr<Clock::Alarm> closing_;

    pairsheet::SheetState shown_;
    SegmentedPicker *mode_;
    Button *generate_;
    QWidget *pinBlock_;
    SelectableText *pin_;
    IconLabel *waiting_;
    TextField *host_;
    TextField *inputPin_;
    IconLabel *failed_;
    Button *connect_;
    Button *done_;
    QWidget *showPage_;
    QWidget *connectPage_;
};

} // namespace quorbit
