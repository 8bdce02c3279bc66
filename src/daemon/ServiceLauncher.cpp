#include "daemon/ServiceLauncher.h"

#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace quorbit {

std::optional<QString> ServiceLauncher::locateHelper() const {
    const QString name = u"quorbitd"_s;
    if (auto bundled = platform_.auxiliaryExecutable(name))
        return bundled;
    const auto own = platform_.executablePath();
    if (!own)
        return std::nullopt;
    return QFileInfo(*own).path() + u'/' + name;
}

bool ServiceLauncher::launch() {
    const auto helper = locateHelper();
    if (!helper)
        return false;
    try {
        process_ = platform_.launch(*helper, {u"run"_s, u"--no-tray"_s});
        return true;
    } catch (const LaunchError &error) {
        platform_.log(u"[Quorbit] 启动 quorbitd 失败:"_s + QString::fromUtf8(error.what()));
        return false;
    }
}

void ServiceLauncher::terminate() {
    if (process_ && process_->isRunning())
        process_->terminate();
}

} // namespace quorbit
