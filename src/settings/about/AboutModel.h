#pragma once

#include "ui/look/TextColor.h"
#include "update/UpdateState.h"

#include <QString>
#include <QStringList>
#include <QUrl>

#include <optional>

namespace quorbit {

class TimeFormats;

/// What the About tab shows and what neither the update checker nor the time tells.
struct AboutInput {
    std::optional<QString> bundleVersion;
    QString currentVersion; ///< what updates are compared with
    QStringList languages;  ///< stored values of the choices of language, the system's own first
    QString storedLanguage; ///< as found in the user defaults
    bool isRestartPending = false;
};

/// What the About tab shows, but for its fixed labels.
struct AboutModel {
    /// What the banner offers to do about the update.
    enum class Download { offered, running, done, failed };

    struct Banner {
        QString title;
        QString subtitle;
        QString notes; ///< empty: not shown
        Download download = Download::offered;
        bool canDownload = false;
        std::optional<QUrl> browserAddress; ///< where the package is, for a browser to open

        bool operator==(const Banner &) const = default;
    };

    struct CheckStatus {
        QString symbol; ///< empty: none
        TextColor symbolColor = TextColor::secondary;
        QString text;
        TextColor textColor = TextColor::primary;

        bool operator==(const CheckStatus &) const = default;
    };

    QString version; ///< empty: not shown
    std::optional<Banner> banner;
    CheckStatus checkStatus;
    bool isChecking = false;
    QString lastChecked;    ///< empty: not shown
    qsizetype language = 0; ///< index into the choices
    bool isRestartPending = false;

    bool operator==(const AboutModel &) const = default;
};

AboutModel aboutModel(const UpdateState &update, const AboutInput &input, const TimeFormats &formats);

} // namespace quorbit
