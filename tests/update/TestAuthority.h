#pragma once

#include <QSslCertificate>
#include <QSslConfiguration>
#include <QString>
#include <QTemporaryDir>

namespace quorbit::test {

/// A certificate authority that lives as long as the test. Fails the test by an exception when the openssl
/// command does not do its work.
class TestAuthority {
public:
    TestAuthority();

    /// The authority's own certificate, for those who are to trust it.
    QSslCertificate certificate() const;
    /// What a server shows to prove that it is `host`.
    QSslConfiguration identity(const QString &host) const;

private:
    QString path(const QString &name) const { return folder_.filePath(name); }
    void makeCertificate(const QString &name, const QStringList &options) const;

    QTemporaryDir folder_;
};

/// Makes this program trust an authority, besides those that it trusts anyway.
void trust(const QSslCertificate &authority);

} // namespace quorbit::test
