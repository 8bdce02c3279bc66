#include "settings/about/AboutModel.h"

#include "wording/DisplayLine.h"
#include "wording/TimeFormats.h"

#include <QCoreApplication>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace quorbit {

namespace {

QString failureText(FailureReason reason) {
    switch (reason) {
    case FailureReason::network:
        return qtTrId("update.failed.network");
    case FailureReason::server:
        return qtTrId("update.failed.server");
    case FailureReason::parse:
        return qtTrId("update.failed.parse");
    case FailureReason::unknown:
        break;
    }
    return qtTrId("update.failed");
}

struct CheckStatusOf {
    using CheckStatus = AboutModel::CheckStatus;

    CheckStatus operator()(const check::Idle & /*state*/) const {
        return {{}, TextColor::secondary, qtTrId("update.never_checked"), TextColor::secondary};
    }
    CheckStatus operator()(const check::Checking & /*state*/) const {
        return {{}, TextColor::secondary, qtTrId("update.checking"), TextColor::secondary};
    }
    CheckStatus operator()(const check::UpToDate &state) const {
        return {u"checkmark.circle.fill"_s, TextColor::green,
                qtTrId("update.uptodate").arg(state.currentVersion), TextColor::primary};
    }
    CheckStatus operator()(const check::Available &state) const {
        return {u"arrow.down.circle.fill"_s, TextColor::accent,
                qtTrId("update.available.title").arg(displayLine(state.update.version)), TextColor::primary};
    }
    CheckStatus operator()(const check::Failed &state) const {
        return {u"exclamationmark.triangle.fill"_s, TextColor::orange, failureText(state.reason),
                TextColor::secondary};
    }
};

AboutModel::Download download(DownloadState state) {
    switch (state) {
    case DownloadState::idle:
        break;
    case DownloadState::downloading:
        return AboutModel::Download::running;
    case DownloadState::done:
        return AboutModel::Download::done;
    case DownloadState::failed:
        return AboutModel::Download::failed;
    }
    return AboutModel::Download::offered;
}

/// Others than a browser's start whatever program the desktop has for them, files included.
bool isForBrowser(const QUrl &address) {
    return (address.scheme() == "https"_L1 || address.scheme() == "http"_L1) && !address.host().isEmpty();
}

AboutModel::Banner banner(const AvailableUpdate &update, DownloadState state, const QString &currentVersion) {
    return {.title = qtTrId("update.available.title").arg(displayLine(update.version)),
            .subtitle = qtTrId("update.available.subtitle").arg(currentVersion),
            .notes = displayText(update.releaseNotesText.value_or(QString())),
            .download = download(state),
            .canDownload = update.downloadURL.has_value(),
            .browserAddress =
                update.downloadURL && isForBrowser(*update.downloadURL) ? update.downloadURL : std::nullopt};
}

} // namespace

AboutModel aboutModel(const UpdateState &update, const AboutInput &input, const TimeFormats &formats) {
    AboutModel model;
    if (input.bundleVersion)
        model.version = qtTrId("about.version").arg(*input.bundleVersion);
    if (update.available)
        model.banner = banner(*update.available, update.downloadState, input.currentVersion);
    model.checkStatus = std::visit(CheckStatusOf{}, update.state);
    model.isChecking = std::holds_alternative<check::Checking>(update.state);
    if (update.lastChecked)
        model.lastChecked = qtTrId("update.last_checked").arg(formats.dateTime(*update.lastChecked));
    // Whatever is stored that is no choice shows as the first, the system's language.
    model.language = std::max<qsizetype>(input.languages.indexOf(input.storedLanguage), 0);
    model.isRestartPending = input.isRestartPending;
    return model;
}

} // namespace quorbit
