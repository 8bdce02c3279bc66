#pragma once

#include "daemon/Fixture.h"
#include "settings/SettingsView.h"
#include "support/ServiceStates.h"
#include "update/UpdateChecker.h"
#include "wording/TimeFormats.h"

namespace quorbit::test {

enum Tab { overviewTab, syncTab, kvmTab, devicesTab, aboutTab, tabCount };

/// A service that the test scripts, and all that a settings window needs beside it.
struct SettingsWorld : Fixture {
    /// The service is found and asked once, but for a state in which it has told nothing.
    explicit SettingsWorld(const ServiceState &state = usualState()) {
        if (!state.status)
            return;
        publish(state);
        if (!startAndPoll())
            qFatal("the service is not found");
        service.seen.clear();
    }

    void publish(const ServiceState &state) { answer(service, state); }

    SettingsServices services(const TimeFormats &formats) {
        const AboutServices about{.languages = {{{}, qtTrId("about.language.system")}},
                                  .storedLanguage = [] { return QString(); },
                                  .chooseLanguage = {},
                                  .restart = {},
                                  .openAddress = {}};
        const KvmServices kvm{[] { return true; }, {}, {}};
        return {*daemon, updater, viewClock, formats, about, u"1.4.1"_s, kvm};
    }

    FakeClock viewClock; ///< apart from the Daemon's, so that time can pass without a poll
    UpdateChecker updater{platform, viewClock, QUrl(u"https://updates.invalid/version.json"_s), {u"en"_s}};
};

} // namespace quorbit::test
