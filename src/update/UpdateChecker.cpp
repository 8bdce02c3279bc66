#include "update/UpdateChecker.h"

#include "async/Waiting.h"
#include "update/PackageDownload.h"
#include "update/Version.h"

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace quorbit {

namespace {

constexpr std::chrono::seconds checkPeriod = 12h;
constexpr std::chrono::seconds checkTimeout = 8s;
constexpr qint64 largestManifest = 1024LL * 1024; // bytes

/// The server answered, but not with a manifest.
struct ServerFailure {};

void requireSuccess(int status) {
    if (status < 200 || status > 299)
        throw ServerFailure{};
}

std::optional<QUrl> addressIn(const std::optional<QString> &text) {
    const QUrl address(text.value_or(QString()));
    return address.isValid() ? std::optional(address) : std::nullopt;
}

} // namespace

UpdateChecker::UpdateChecker(Platform &platform, Clock &clock, QUrl manifest, QStringList languages,
                             SecureNetwork network)
    : platform_(platform)
    , clock_(clock)
    , manifest_(std::move(manifest))
    , languages_(std::move(languages))
    , network_(std::move(network)) {
    if (!manifest_.isValid() || manifest_.scheme() != "https"_L1 || manifest_.host().isEmpty())
        qFatal("The address of the update manifest is not an HTTPS address: \"%s\"",
               qUtf8Printable(manifest_.toDisplayString()));
}

UpdateChecker::~UpdateChecker() {
    blockSignals(true);
    stop_.request_stop();
}

void UpdateChecker::startAutoChecking() {
    check();
    // Last, for the new alarm destroys the one whose function may be calling this.
    timer_ = clock_.after(checkPeriod, [this] { startAutoChecking(); });
}

QCoro::Task<> UpdateChecker::check() {
    publish(&UpdateState::state, check::Checking{});
    try {
        const QCoro::Task<Manifest> fetching = fetchManifest();
        finishCheck(co_await fetching);
    } catch (const Stopped &) {
        co_return;
    } catch (const TransportError &) {
        failCheck(FailureReason::network);
    } catch (const ServerFailure &) {
        failCheck(FailureReason::server);
    } catch (const wire::DecodeError &) {
        failCheck(FailureReason::parse);
    }
}

QCoro::Task<Manifest> UpdateChecker::fetchManifest() {
    OwnedReply reply = network_.get(QNetworkRequest(manifest_));
    // For the whole exchange; the toolkit's transfer timeout starts anew with every byte.
    const auto timeout = clock_.after(checkTimeout, [pending = reply.get()] { pending->abort(); });
    const auto receiving = receive(std::move(reply), largestManifest, stop_.get_token());
    HttpReply received;
    try {
        received = co_await receiving;
    } catch (const ReplyTooLarge &failure) {
        requireSuccess(failure.status());
        throw wire::DecodeError(failure.what());
    }
    requireSuccess(received.status);
    co_return wire::decode<Manifest>(received.body);
}

void UpdateChecker::finishCheck(const Manifest &manifest) {
    const QString current = currentVersion();
    publish(&UpdateState::lastChecked, now());
    if (version::compare(manifest.version, current)) {
        const AvailableUpdate update{manifest.version, addressIn(manifest.download.macos),
                                     pickNotes(manifest.notes, languages_), manifest};
        publish(&UpdateState::available, update);
        publish(&UpdateState::state, check::Available{update});
    } else {
        publish(&UpdateState::available, std::nullopt);
        publish(&UpdateState::state, check::UpToDate{current});
    }
}

void UpdateChecker::failCheck(FailureReason reason) {
    publish(&UpdateState::state, check::Failed{reason});
    publish(&UpdateState::lastChecked, now());
}

void UpdateChecker::downloadUpdate() {
    if (!state_.available || !state_.available->downloadURL ||
        state_.downloadState == DownloadState::downloading)
        return;
    publish(&UpdateState::downloadState, DownloadState::downloading);
    download(*state_.available->downloadURL);
}

QCoro::Task<> UpdateChecker::download(QUrl address) {
    QString file;
    try {
        const std::optional<QString> folder = platform_.downloadsDirectory();
        if (!folder)
            throw DownloadError("there is no folder for downloads");
        const auto downloading =
            downloadPackage(network_, clock_, std::move(address), *folder, stop_.get_token());
        file = co_await downloading;
    } catch (const Stopped &) {
        co_return;
    } catch (const std::exception &) {
        publish(&UpdateState::downloadState, DownloadState::failed);
        co_return;
    }
    publish(&UpdateState::downloadState, DownloadState::done);
    platform_.reveal(file);
}

QString UpdateChecker::currentVersion() const {
    return platform_.bundleVersion().value_or(u"0.0.0"_s);
}

QDateTime UpdateChecker::now() const {
    return QDateTime::fromMSecsSinceEpoch(static_cast<qint64>(clock_.now() * 1000));
}

template <class Value>
void UpdateChecker::publish(Value UpdateState::*field, std::type_identity_t<Value> value) {
    state_.*field = std::move(value);
    Q_EMIT changed();
}

} // namespace quorbit
