#include "update/PackageDownload.h"

#include "async/Waiting.h"
#include "update/PackageFile.h"

#include <algorithm>
#include <exception>

using namespace Qt::StringLiterals;

namespace quorbit {

namespace {

constexpr std::chrono::seconds longestStall(60);
constexpr qint64 readBufferSize = 256LL * 1024;
constexpr qsizetype longestName = 255; // bytes, in every file system in common use

/// Fails unless the server is sending the package and tells where it ends.
void requirePackage(const QNetworkReply &reply) {
    const int status = reply.attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
    if (status < 200 || status > 299)
        throw DownloadError("the server answered with status " + std::to_string(status));
    // A body that ends with its connection cannot be told from one that was cut off.
    if (!reply.hasRawHeader("Content-Length") && !reply.hasRawHeader("Transfer-Encoding"))
        throw DownloadError("the server does not tell where the package ends");
}

} // namespace

std::optional<QString> packageFileName(const QUrl &address) {
    const QString path = address.path(QUrl::FullyEncoded);
    const QByteArray encoded = path.sliced(path.lastIndexOf(u'/') + 1).toUtf8();
    const QByteArray bytes = QByteArray::fromPercentEncoding(encoded);
    const QString name = QString::fromUtf8(bytes);

    const bool isText = name.toUtf8() == bytes;
    const bool isSpecial = name.isEmpty() || name == "."_L1 || name == ".."_L1;
    const bool isUnsafe = std::any_of(name.begin(), name.end(), [](QChar character) {
        return character == u'/' || character.category() == QChar::Other_Control;
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

    std::unique_ptr<Clock::Alarm> stall;
    const auto expectMore = [&] { stall = clock.after(longestStall, [&] { reply->abort(); }); };
    expectMore();

    std::optional<PackageFile> file;
    const auto keep = [&] {
        requirePackage(*reply);
        if (!file)
            file.emplace(folder);
        file->write(reply->readAll());
    };
    std::exception_ptr failure;
    QObject::connect(reply.get(), &QNetworkReply::readyRead, reply.get(), [&] {
        expectMore();
        try {
            keep();
        } catch (...) {
            failure = std::current_exception();
        }
        if (failure)
            reply->abort(); // Ends the wait below, and with it this coroutine.
    });
    if (!reply->isFinished()) {
        Signal finished(reply.get(), &QNetworkReply::finished, token);
        co_await finished;
    }

    if (failure)
        std::rethrow_exception(failure);
    if (reply->error() != QNetworkReply::NoError)
        throw TransportError(reply->errorString().toStdString());
    keep();
    file->finish(*name);
    co_return folder + u'/' + *name;
}

} // namespace quorbit
