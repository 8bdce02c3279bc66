#pragma once

#include "daemon/Records.h"

#include <optional>
#include <utility>

namespace quorbit {

/// The whole record with one member replaced, ready to be saved; nothing while no settings are known.
/// For example `edited(state.settings, &DaemonSettings::kvm_enabled, true)`.
template <typename Member, typename Value>
std::optional<DaemonSettings> edited(std::optional<DaemonSettings> settings, Member DaemonSettings::*member,
                                     Value &&value) {
    if (settings)
        (*settings).*member = std::forward<Value>(value);
    return settings;
}

} // namespace quorbit
