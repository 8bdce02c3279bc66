#include "update/TestAuthority.h"

#include <QFile>
#include <QProcess>
#include <QSslKey>

#include <stdexcept>

using namespace Qt::StringLiterals;

namespace quorbit::test {

namespace {

QByteArray contents(const QString &path) {
    QFile file(path);
    if (!file.open(QFile::ReadOnly))
        throw std::runtime_error("cannot read " + path.toStdString());
    return file.readAll();
}

} // namespace

TestAuthority::TestAuthority() {
    // The system's own configuration file would add extensions of its own.
    QFile settings(path(u"openssl.cnf"_s));
    if (!settings.open(QFile::WriteOnly) || settings.write("[req]\ndistinguished_name=name\n[name]\n") < 0)
        throw std::runtime_error("cannot write the settings of openssl");
    settings.close();
    makeCertificate(u"authority"_s, {u"-addext"_s, u"basicConstraints=critical,CA:TRUE"_s, u"-addext"_s,
                                     u"keyUsage=critical,keyCertSign"_s});
}

QSslCertificate TestAuthority::certificate() const {
    return QSslCertificate(contents(path(u"authority.pem"_s)));
}

QSslConfiguration TestAuthority::identity(const QString &host) const {
    makeCertificate(host,
                    {u"-CA"_s, path(u"authority.pem"_s), u"-CAkey"_s, path(u"authority.key"_s), u"-addext"_s,
                     u"basicConstraints=critical,CA:FALSE"_s, u"-addext"_s, u"subjectAltName=DNS:"_s + host});
    QSslConfiguration identity;
    identity.setLocalCertificate(QSslCertificate(contents(path(host + u".pem"_s))));
    identity.setPrivateKey(QSslKey(contents(path(host + u".key"_s)), QSsl::Ec));
    return identity;
}

void TestAuthority::makeCertificate(const QString &name, const QStringList &options) const {
    QStringList arguments =
        u"req -x509 -days 2 -newkey ec -nodes -pkeyopt ec_paramgen_curve:prime256v1"_s.split(u' ');
    arguments << u"-config"_s << path(u"openssl.cnf"_s) << u"-subj"_s << u"/CN="_s + name << u"-keyout"_s
              << path(name + u".key"_s) << u"-out"_s << path(name + u".pem"_s) << options;
    QProcess openssl;
    openssl.start(QStringLiteral(OPENSSL_COMMAND), arguments);
    if (!openssl.waitForFinished() || openssl.exitCode() != 0)
        throw std::runtime_error("openssl failed: " + openssl.readAllStandardError().toStdString());
}

void trust(const QSslCertificate &authority) {
    QSslConfiguration trusting = QSslConfiguration::defaultConfiguration();
    trusting.addCaCertificate(authority);
    QSslConfiguration::setDefaultConfiguration(trusting);
}

} // namespace quorbit::test
