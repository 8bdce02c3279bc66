#pragma once

#include <QFile>
#include <QProcess>
#include <QSslCertificate>
#include <QSslConfiguration>
#include <QSslKey>
#include <QTemporaryDir>

namespace quorbit::test {

/// A certificate authority that lives as long as the test.
class TestAuthority {
public:
    TestAuthority() {
        using namespace Qt::StringLiterals;
        makeCertificate(u"authority"_s, u"basicConstraints=critical,CA:TRUE"_s, {});
    }

    /// The authority's own certificate, for those who are to trust it.
    QSslCertificate certificate() const { return certificateOf(QStringLiteral("authority")); }
    /// What a server shows to prove that it is `host`.
    QSslConfiguration identity(const QString &host) const {
        using namespace Qt::StringLiterals;
        makeCertificate(host, u"subjectAltName=DNS:"_s + host,
                        {u"-CA"_s, path(u"authority.pem"_s), u"-CAkey"_s, path(u"authority.key"_s)});
        QFile key(path(host + u".key"_s));
        if (!key.open(QFile::ReadOnly))
            qFatal("no key of %s", qUtf8Printable(host));
        QSslConfiguration identity;
        identity.setLocalCertificate(certificateOf(host));
        identity.setPrivateKey(QSslKey(&key, QSsl::Ec));
        return identity;
    }

private:
    QString path(const QString &name) const { return folder_.filePath(name); }
    QSslCertificate certificateOf(const QString &name) const {
        return QSslCertificate::fromPath(path(name + QStringLiteral(".pem"))).value(0);
    }
    void makeCertificate(const QString &name, const QString &extension, const QStringList &issuer) const {
        using namespace Qt::StringLiterals;
        // The system's own configuration file would add extensions of its own.
        QStringList arguments = u"req -x509 -config /dev/null -days 2 -newkey ec -nodes "
                                "-pkeyopt ec_paramgen_curve:prime256v1 -addext"_s.split(u' ');
        arguments << extension << u"-subj"_s << u"/CN="_s + name << u"-keyout"_s << path(name + u".key"_s)
                  << u"-out"_s << path(name + u".pem"_s) << issuer;
        QProcess openssl;
        openssl.start(QStringLiteral(OPENSSL_COMMAND), arguments);
        if (!openssl.waitForFinished() || openssl.exitCode() != 0)
            qFatal("openssl: %s", openssl.readAllStandardError().constData());
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
