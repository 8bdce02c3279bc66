#include "update/SecureNetwork.h"

#include <QNetworkProxyFactory>

using namespace Qt::StringLiterals;

namespace quorbit {

namespace {

constexpr int maximumRedirects = 5;

class SystemProxies : public QNetworkProxyFactory {
    QList<QNetworkProxy> queryProxy(const QNetworkProxyQuery &query) override {
        return systemProxyForQuery(query);
    }
};

} // namespace

SecureNetwork::SecureNetwork(std::unique_ptr<QNetworkAccessManager> manager) : manager_(std::move(manager)) {
    manager_->setProxyFactory(new SystemProxies); // The manager takes it over.
}

OwnedReply SecureNetwork::get(QNetworkRequest request) {
    if (request.url().scheme() != "https"_L1)
        throw TransportError("the address is not an HTTPS one");
    request.setAttribute(QNetworkRequest::CacheLoadControlAttribute, QNetworkRequest::AlwaysNetwork);
    // Nothing by which the server could tell one user from another.
    request.setAttribute(QNetworkRequest::CookieLoadControlAttribute, QNetworkRequest::Manual);
    request.setAttribute(QNetworkRequest::CookieSaveControlAttribute, QNetworkRequest::Manual);
    request.setAttribute(QNetworkRequest::AuthenticationReuseAttribute, QNetworkRequest::Manual);
    request.setRawHeader("Accept-Language", "*"); // the toolkit would name the user's own
    request.setAttribute(QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::NoLessSafeRedirectPolicy);
    // Over HTTP/2 the read buffer of a reply bounds nothing: what is not read in time piles up in memory.
    request.setAttribute(QNetworkRequest::Http2AllowedAttribute, false);
    request.setMaximumRedirectsAllowed(maximumRedirects);
    return OwnedReply(manager_->get(request));
}

} // namespace quorbit
