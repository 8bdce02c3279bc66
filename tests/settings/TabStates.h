#pragma once

#include "support/FakeService.h"

#include <QLatin1String>

namespace quorbit {

/// A service in a situation that the settings window shows, as the documents that it answers with.
struct TabState {
    QLatin1String name;
    QByteArray status;
    QByteArray settings;
    QByteArray history;

    void answerFrom(test::FakeService &service) const;
};

std::vector<TabState> tabStates();

/// A history of `count` entries with the identifiers 1 to `count`; one in a hundred previews holds "needle".
QByteArray longHistory(int count);

} // namespace quorbit
