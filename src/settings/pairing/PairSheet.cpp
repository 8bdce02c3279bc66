#include "settings/pairing/PairSheet.h"

#include "wording/TextRules.h"

namespace quorbit::pairsheet {

namespace {

using Outcome = std::optional<Effect>;

Outcome apply(SheetState &state, const event::ModeChosen &chosen) {
    state.mode = chosen.mode;
    return {};
}

Outcome apply(SheetState &state, const event::HostEdited &edited) {
    state.host = edited.text;
    return {};
}

Outcome apply(SheetState &state, const event::PinEdited &edited) {
    state.inputPin = edited.text;
    return {};
}

Outcome apply(SheetState &state, const event::GeneratePressed & /*pressed*/) {
    if (!canGenerate(state))
        return {};
    state.isGenerating = true;
    state.initialCount = state.deviceCount;
    return effect::RequestPin{};
}

Outcome apply(SheetState &state, const event::PinAnswered &answered) {
    state.pin = answered.pin;
    state.isGenerating = false;
    return {};
}

Outcome apply(SheetState &state, const event::DevicesPublished &published) {
    if (published.count == state.deviceCount)
        return {};
    state.deviceCount = published.count;
    const bool isWaiting = state.mode == Mode::show && state.pin && !state.isPaired;
    if (!isWaiting || state.deviceCount <= state.initialCount)
        return {};
    state.isPaired = true;
    return effect::Dismiss{successShownFor};
}

Outcome apply(SheetState &state, const event::ConnectPressed & /*pressed*/) {
    if (!canConnect(state))
        return {};
    state.isBusy = true;
    state.hasFailed = false;
    return effect::Connect{trimmedSpaces(state.host), trimmedSpaces(state.inputPin)};
}

Outcome apply(SheetState &state, const event::ConnectAnswered &answered) {
    state.isBusy = false;
    if (answered.isPaired)
        return effect::Dismiss{};
    state.hasFailed = true;
    return {};
}

Outcome apply(SheetState & /*state*/, const event::DonePressed & /*pressed*/) {
    return effect::Dismiss{};
}

} // namespace

bool canGenerate(const SheetState &state) {
    return !state.pin && !state.isGenerating;
}

bool canConnect(const SheetState &state) {
    return !state.isBusy && !trimmedSpaces(state.host).isEmpty() && !trimmedSpaces(state.inputPin).isEmpty();
}

std::pair<SheetState, std::optional<Effect>> reduced(SheetState state, const Event &event) {
    Outcome effect = std::visit([&state](const auto &each) { return apply(state, each); }, event);
    return {std::move(state), std::move(effect)};
}

} // namespace quorbit::pairsheet
