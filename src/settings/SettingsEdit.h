#pragma once

#include "daemon/Daemon.h"

#include <optional>
#include <type_traits>
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

/// Saves the settings with one member replaced; nothing while none are known. A save that fails is not shown:
/// the next poll tells how things stand.
template <class Value>
void save(Daemon &daemon, Value DaemonSettings::*member, std::type_identity_t<Value> value) {
    if (auto wanted = edited(daemon.state().settings, member, std::move(value)))
        daemon.saveSettings(*std::move(wanted));
}

} // namespace quorbit
