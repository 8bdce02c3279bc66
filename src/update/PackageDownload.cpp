#include "update/PackageDownload.h"

#include "async/Waiting.h"
#include "platform/AtomicFile.h"

#include <QDir>
#include <QFileInfo>

#include <algorithm>
#include <exception>

using namespace Qt::StringLiterals;

namespace quorbit {

namespace {

constexpr std::chrono::seconds stallTimeout(60);
constexpr qint64 readBufferSize = 256LL * 1024;
constexpr qsizetype longestName = 255; // bytes, in every file system in common use

/// Keeps the body of a reply as it arrives.
class Arrival : public QObject {
    Q_OBJECT

public:
    Arrival(QNetworkReply &reply, Clock &clock, const QString &folder)
        : reply_(reply), clock_(clock), folder_(folder) {
        connect(&reply_, &QNetworkReply::readyRead, this, &Arrival::keep);
        connect(&reply_, &QNetworkReply::finished, this, &Arrival::ended);
        expectMore();
    }

    /// The whole file, after the end. Throws what went wrong.
    AtomicFile &whole() {
        if (failure_)
            std::rethrow_exception(failure_);
        if (reply_.error() != QNetworkReply::NoError)
            throw TransportError(reply_.errorString().toStdString());
        keepAvailable();
        return *file_;
    }

Q_SIGNALS:
    /// The reply is finished, or there is no use in waiting for the rest of it.
    void ended();

private:
    void expectMore() {
        timeout_ = clock_.after(stallTimeout, [this] {
            failWith(std::make_exception_ptr(TransportError("the server sends nothing more")));
        });
    }
    void keep() {
        expectMore();
        try {
            keepAvailable();
        } catch (...) {
            failWith(std::current_exception());
        }
    }
    void keepAvailable() {
        requirePackage();
        if (!file_)
            file_.emplace(folder_);
        file_->write(reply_.readAll());
    }
    /// Fails unless the server is sending the package and tells where it ends.
    void requirePackage() const {
        const int status = reply_.attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
        if (status < 200 || status > 299)
            throw DownloadError("the server answered with status " + std::to_string(status));
        // A body that ends with its connection cannot be told from one that was cut off.
        if (!reply_.hasRawHeader("Content-Length") && !reply_.hasRawHeader("Transfer-Encoding"))
            throw DownloadError("the server does not tell where the package ends");
    }
    void failWith(std::exception_ptr failure) {
        failure_ = std::move(failure);
        Q_EMIT ended(); // Whoever waits may destroy this object.
    }

    QNetworkReply &reply_;
    Clock &clock_;
    QString folder_;
    std::optional<AtomicFile> file_;
    std::unique_ptr<Clock::Alarm> timeout_;
    std::exception_ptr failure_;
};

} // namespace

std::optional<QString> packageFileName(const QUrl &address) {
    const QString path = address.path(QUrl::FullyEncoded);
    const QByteArray encoded = path.sliced(path.lastIndexOf(u'/') + 1).toUtf8();
    const QByteArray bytes = QByteArray::fromPercentEncoding(encoded);
    const QString name = QString::fromUtf8(bytes);

    const bool isText = name.toUtf8() == bytes;
    // Hidden files are the user's settings, at least where downloads go to the home folder itself.
    const bool isSpecial = name.isEmpty() || name.startsWith(u'.');
    // Invisible characters can make a name look like another one.
    const bool isUnsafe = std::any_of(name.begin(), name.end(), [](QChar character) {
        return character == u'/' || character.category() == QChar::Other_Control ||
               character.category() == QChar::Other_Format;
    });
    if (!isText || isSpecial || isUnsafe || bytes.size() > longestName)
        return std::nullopt;
    return name;
}

QCoro::Task<QString> downloadPackage(SecureNetwork &network, Clock &clock, QUrl address, QString folder,
                                     std::stop_token token) {
    const std::optional<QString> name = packageFileName(address);
    if (!name)
        throw DownloadError("the address names no file");

    QNetworkRequest request(address);
    // The file is to be what lies on the server, byte by byte.
    request.setRawHeader("Accept-Encoding", "identity");
    const OwnedReply reply = network.get(request);
    reply->setReadBufferSize(readBufferSize);
    Arrival arrival(*reply, clock, folder);
    if (!reply->isFinished()) {
        Signal end(&arrival, &Arrival::ended, token);
        co_await end;
    }
    AtomicFile &file = arrival.whole();
    file.bringToDisk();
    const QString path = folder + u'/' + *name;
    const QFileInfo obstacle(path);
    if (obstacle.isDir() && !obstacle.isSymLink())
        QDir(path).removeRecursively(); // Should it fail, so does the renaming.
    file.takeName(*name);
    co_return path;
}

} // namespace quorbit

#include "PackageDownload.moc"
