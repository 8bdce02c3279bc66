#pragma once

#include "support/FakeService.h"
#include "update/SecureNetwork.h"

namespace quorbit::test {

/// Sends what is meant for any HTTPS server to a fake service, which needs no certificate.
class PlainNetwork : public QNetworkAccessManager {
public:
    explicit PlainNetwork(const FakeService &service) : service_(service.address()) {}

private:
    QNetworkReply *createRequest(Operation operation, const QNetworkRequest &request,
                                 QIODevice *data) override {
        QUrl address = request.url();
        address.setScheme(service_.scheme());
        address.setAuthority(service_.authority());
        QNetworkRequest plain(request);
        plain.setUrl(address);
        return QNetworkAccessManager::createRequest(operation, plain, data);
    }

    const QUrl service_;
};

/// A secure network for the code under test, whose requests all reach this service.
inline SecureNetwork plainNetwork(const FakeService &service) {
    return SecureNetwork(std::make_unique<PlainNetwork>(service));
}

} // namespace quorbit::test
