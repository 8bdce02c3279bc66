#pragma once

#include <QFile>
#include <QProcess>
#include <QSslCertificate>
#include <QSslConfiguration>
#include <QSslKey>
#include <QString>
#include <QTemporaryDir>

#include <stdexcept>

namespace quorbit::test {

/// A certificate authority that lives as long as the test. Fails the test by an exception when the openssl
/// command does not do its work.
class TestAuthority {
public:
    TestAuthority() {
        using namespace Qt::StringLiterals;
        // The system's own configuration file would add extensions of its own.
        QFile settings(path(u"openssl.cnf"_s));
        if (!settings.open(QFile::WriteOnly) ||
            settings.write("[req]\ndistinguished_name=name\n[name]\n") < 0)
            throw std::runtime_error("cannot write the settings of openssl");
        settings.close();
        makeCertificate(u"authority"_s, {u"-addext"_s, u"basicConstraints=critical,CA:TRUE"_s, u"-addext"_s,
                                         u"keyUsage=critical,keyCertSign"_s});
    }

    /// The authority's own certificate, for those who are to trust it.
    QSslCertificate certificate() const {
        return QSslCertificate(contents(path(QStringLiteral("authority.pem"))));
    }
    /// What a server shows to prove that it is `host`.
    QSslConfiguration identity(const QString &host) const {
        using namespace Qt::StringLiterals;
        makeCertificate(host, {u"-CA"_s, path(u"authority.pem"_s), u"-CAkey"_s, path(u"authority.key"_s),
                               u"-addext"_s, u"basicConstraints=critical,CA:FALSE"_s, u"-addext"_s,
                               u"subjectAltName=DNS:"_s + host});
        QSslConfiguration identity;
        identity.setLocalCertificate(QSslCertificate(contents(path(host + u".pem"_s))));
        identity.setPrivateKey(QSslKey(contents(path(host + u".key"_s)), QSsl::Ec));
        return identity;
    }

private:
    QString path(const QString &name) const { return folder_.filePath(name); }
    static QByteArray contents(const QString &path) {
        QFile file(path);
        if (!file.open(QFile::ReadOnly))
            throw std::runtime_error("cannot read " + path.toStdString());
        return file.readAll();
    }
    void makeCertificate(const QString &name, const QStringList &options) const {
        using namespace Qt::StringLiterals;
        QStringList arguments =
            u"req -x509 -days 2 -newkey ec -nodes -pkeyopt ec_paramgen_curve:prime256v1"_s.split(u' ');
        arguments << u"-config"_s << path(u"openssl.cnf"_s) << u"-subj"_s << u"/CN="_s + name << u"-keyout"_s
                  << path(name + u".key"_s) << u"-out"_s << path(name + u".pem"_s) << options;
        QProcess openssl;
        openssl.start(QStringLiteral(OPENSSL_COMMAND), arguments);
        if (!openssl.waitForFinished() || openssl.exitCode() != 0)
            throw std::runtime_error("openssl failed: " + openssl.readAllStandardError().toStdString());
    }

    QTemporaryDir folder_;
};

/// Makes this program trust an authority, besides those that it trusts anyway.
inline void trust(const QSslCertificate &authority) {
    QSslConfiguration trusting = QSslConfiguration::defaultConfiguration();
    trusting.addCaCertificate(authority);
    QSslConfiguration::setDefaultConfiguration(trusting);
}

} // namespace quorbit::test
