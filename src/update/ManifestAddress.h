#pragma once

#include <QUrl>

namespace quorbit {

/// Where this build looks for news of releases: "/version.json" on the host that the build was configured
/// with.
QUrl manifestAddress();

} // namespace quorbit
