// Prints how many megabytes a download of 300 MB takes at most, those of its server in this process included.

#include "HttpsServer.h"
#include "TestAuthority.h"
#include "platform/SystemClock.h"
#include "update/PackageDownload.h"

#include <QCoreApplication>

#include <QCoroTask>

#include <cstdio>

using namespace Qt::StringLiterals;
using namespace quorbit;
using namespace quorbit::test;

namespace {

/// What this program occupies by a line of /proc/self/status, in kilobytes.
qint64 memory(const QByteArray &name) {
    QFile file(u"/proc/self/status"_s);
    if (!file.open(QFile::ReadOnly))
        qFatal("cannot read what memory is taken");
    const QByteArray status = file.readAll();
    return status.mid(status.indexOf(name)).simplified().split(' ').value(1).toLongLong();
}

void countThePeakFromHere() {
    QFile file(u"/proc/self/clear_refs"_s);
    if (!file.open(QFile::WriteOnly) || file.write("5") != 1)
        qFatal("cannot set back the peak");
}

} // namespace

int main(int argc, char **argv) {
    const QCoreApplication application(argc, argv);
    const TestAuthority authority;
    trust(authority.certificate());
    HttpsServer server(authority.identity(u"localhost"_s));
    SecureNetwork network;
    SystemClock clock;
    const QTemporaryDir folder;
    const auto download = [&](qint64 size) {
        server.size = size;
        QCoro::waitFor(downloadPackage(network, clock, server.address(u"/package"_s), folder.path(), {}));
    };
    constexpr qint64 megabyte = 1024LL * 1024;
    download(megabyte); // sets up what is set up only once
    countThePeakFromHere();
    const qint64 before = memory("VmRSS");
    download(300 * megabyte);
    std::printf("%.1f\n", static_cast<double>(memory("VmHWM") - before) / 1024);
}
