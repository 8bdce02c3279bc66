#pragma once

#include "daemon/ServiceState.h"

#include <QByteArray>
#include <QLatin1String>

#include <vector>

namespace quorbit {

/// A service in a situation that the settings window shows, as the documents that it answers with. An empty
/// document is not answered.
struct TabState {
    QLatin1String name;
    QByteArray status;
    QByteArray settings;
    QByteArray history;
};

std::vector<TabState> tabStates();

/// A history of `count` entries with the identifiers 1 to `count`; one in a hundred previews holds "needle".
QByteArray longHistory(int count);

} // namespace quorbit
