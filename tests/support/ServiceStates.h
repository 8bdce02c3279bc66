#pragma once

#include "daemon/ServiceState.h"
#include "support/FakeService.h"

#include <QLatin1String>

/// What the service tells in the situations that views are tested, drawn and measured in.
namespace quorbit::test {

using namespace Qt::StringLiterals;

inline const QString ownId = u"10b4e2f09a77c1d3"_s;
inline const QString laptopId = u"10b91c33"_s;
inline const QString officeId = u"77aa01fe"_s;
inline const QString livingRoomId = u"5c01b8aa"_s;

/// This computer, two that are connected, one that was seen 90 seconds before a FakeClock begins, and three
/// entries of history.
ServiceState usualState();

struct NamedState {
    QLatin1String name;
    ServiceState service;
};

/// From nothing to more of everything than there is room for.
std::vector<NamedState> serviceStates();
ServiceState stateCalled(QLatin1String name);

/// `count` entries with the identifiers 1 to `count`; one in a hundred previews holds "needle".
std::vector<HistoryEntry> longHistory(int count);

/// Has the service answer with this state from now on.
void answer(FakeService &service, const ServiceState &state);

} // namespace quorbit::test
