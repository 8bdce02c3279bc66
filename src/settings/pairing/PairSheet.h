#pragma once

#include <QString>

#include <chrono>
#include <cstddef>
#include <optional>
#include <utility>
#include <variant>

/// The sheet that pairs a new computer, as a state machine: what happens goes in, the next state and what is
/// to be done about it come out.
namespace quorbit::pairsheet {

/// Which of the two computers shows the PIN.
enum class Mode { show, connect };

/// How long a success stays readable before the sheet closes.
constexpr std::chrono::milliseconds successShownFor{1300};

struct SheetState {
    std::size_t deviceCount = 0; ///< paired devices as last published; give it when the sheet opens
    Mode mode = Mode::show;
    std::optional<QString> pin;   ///< that this computer shows
    bool isGenerating = false;    ///< a PIN was asked for
    std::size_t initialCount = 0; ///< paired devices when the PIN was asked for
    bool isPaired = false;        ///< another device appeared while the PIN was shown
    QString host;
    QString inputPin;
    bool isBusy = false;    ///< connecting
    bool hasFailed = false; ///< the last attempt to connect

    bool operator==(const SheetState &) const = default;
};

/// What the buttons can do.
bool canGenerate(const SheetState &state);
bool canConnect(const SheetState &state);

/// What happens to the sheet.
namespace event {
struct ModeChosen {
    Mode mode = Mode::show;
};
struct HostEdited {
    QString text;
};
struct PinEdited {
    QString text;
};
struct GeneratePressed {};
struct PinAnswered {
    std::optional<QString> pin;
};
/// May tell the same number any number of times.
struct DevicesPublished {
    std::size_t count = 0;
};
struct ConnectPressed {};
struct ConnectAnswered {
    bool isPaired = false;
};
struct DonePressed {};
} // namespace event

using Event = std::variant<event::ModeChosen, event::HostEdited, event::PinEdited, event::GeneratePressed,
                           event::PinAnswered, event::DevicesPublished, event::ConnectPressed,
                           event::ConnectAnswered, event::DonePressed>;

/// What the owner of the sheet has to do.
namespace effect {
struct RequestPin {
    bool operator==(const RequestPin &) const = default;
};
struct Connect {
    QString host;
    QString pin;
    bool operator==(const Connect &) const = default;
};
struct Dismiss {
    std::chrono::milliseconds after{0};
    bool operator==(const Dismiss &) const = default;
};
} // namespace effect

using Effect = std::variant<effect::RequestPin, effect::Connect, effect::Dismiss>;

std::pair<SheetState, std::optional<Effect>> reduced(SheetState state, const Event &event);

} // namespace quorbit::pairsheet
