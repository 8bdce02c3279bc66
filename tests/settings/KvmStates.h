#pragma once

#include "settings/KvmModel.h"

namespace quorbit {

/// A situation that the KVM tab shows.
struct KvmState {
    QString name;
    ServiceState service;
    bool isTrusted = true;
    bool showsRestartHint = false;

    std::optional<KvmModel> model() const { return kvmModel(service, isTrusted, showsRestartHint); }
};

/// One for each thing that the tab can say.
std::vector<KvmState> kvmStates();

} // namespace quorbit
