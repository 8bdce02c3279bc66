#include "update/ManifestAddress.h"

namespace quorbit {

QUrl manifestAddress() {
    static const QUrl address(QStringLiteral("https://" QUORBIT_UPDATE_HOST "/version.json"),
                              QUrl::StrictMode);
    return address;
}

} // namespace quorbit
