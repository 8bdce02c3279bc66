#pragma once

#include "platform/Clock.h"
#include "update/SecureNetwork.h"

#include <QString>
#include <QUrl>

#include <QCoroTask>

#include <optional>
#include <stdexcept>
#include <stop_token>

namespace quorbit {

/// A package that cannot be had: its address names no file, or the server does not give it out.
class DownloadError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// The name that a package is kept under: the last component of its address's path, decoded. None when that
/// is not a name for a file right inside a folder.
std::optional<QString> packageFileName(const QUrl &address);

/// Downloads a package into a folder and returns the path of the file, which appears there only once it is
/// whole and then replaces what had its name. The download may take any time, but not stall for a minute.
/// Throws DownloadError, TransportError, std::system_error, or Stopped; nothing is then left of it.
QCoro::Task<QString> downloadPackage(SecureNetwork &network, Clock &clock, QUrl address, QString folder,
                                     std::stop_token token);

} // namespace quorbit
