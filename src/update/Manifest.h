#pragma once

#include "wire/Wire.h"

#include <QString>
#include <QStringList>
#include <QUrl>

#include <optional>

namespace quorbit {

/// The document that announces the newest release.
struct Manifest {
    struct Download {
        std::optional<QString> macos; ///< address of the package for this program
        std::optional<QString> linux_deb;

        static constexpr auto fields() {
            return std::tuple{wire::Field{"macos", &Download::macos},
                              wire::Field{"linux_deb", &Download::linux_deb}};
        }
        bool operator==(const Download &) const = default;
    };

    /// The publisher writes them in these two languages, whichever the interface has.
    struct Notes {
        std::optional<QString> zh;
        std::optional<QString> en;

        static constexpr auto fields() {
            return std::tuple{wire::Field{"zh", &Notes::zh}, wire::Field{"en", &Notes::en}};
        }
        bool operator==(const Notes &) const = default;
    };

    QString version;
    std::optional<QString> released_at;
    std::optional<QString> min_supported_version;
    Download download;
    std::optional<Notes> notes;

    static constexpr auto fields() {
        using wire::Field;
        return std::tuple{Field{"version", &Manifest::version}, Field{"released_at", &Manifest::released_at},
                          Field{"min_supported_version", &Manifest::min_supported_version},
                          Field{"download", &Manifest::download}, Field{"notes", &Manifest::notes}};
    }
    bool operator==(const Manifest &) const = default;
};

/// A newer release, as the views show it.
struct AvailableUpdate {
    QString version;
    std::optional<QUrl> downloadURL;
    std::optional<QString> releaseNotesText;
    Manifest manifestRaw;

    bool operator==(const AvailableUpdate &) const = default;
};

} // namespace quorbit
