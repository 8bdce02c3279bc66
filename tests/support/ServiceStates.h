#pragma once

#include "daemon/ServiceState.h"
#include "support/FakeService.h"

/// What the service tells in the situations that views are tested, drawn and measured in: the scenarios of
/// the simulated service.
namespace quorbit::test {

using namespace Qt::StringLiterals;

inline const QString ownId = u"10b4e2f09a77c1d3"_s;
inline const QString laptopId = u"10b91c33"_s;
inline const QString officeId = u"77aa01fe"_s;

ServiceState scenario(const char *name);
/// This computer and the two that are connected, and three entries of history.
inline ServiceState usualState() {
    return scenario("still");
}
/// More of everything than there is room for.
ServiceState crowdedState();

/// `count` entries with the identifiers 1 to `count`; one in a hundred previews holds "needle".
std::vector<HistoryEntry> longHistory(int count);

/// Has the service answer with this state from now on.
void answer(FakeService &service, const ServiceState &state);

} // namespace quorbit::test
