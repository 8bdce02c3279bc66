#pragma once

#include "menubar/MenuBarModel.h"

#include <QLatin1String>

#include <vector>

namespace quorbit {

/// A situation that the panel shows; the pictures and the layout tests go through all of them.
struct PanelState {
    QLatin1String name;
    ServiceState service;
    UpdateState update;

    MenuBarModel model() const { return menuBarModel(service, update); }
};

std::vector<PanelState> panelStates();

/// Two peers, an activity, a transfer, three history entries and an update.
PanelState busyPanelState();

} // namespace quorbit
