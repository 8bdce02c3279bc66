#include "app/QuorbitApp.h"
#include "platform/SettingsDefaults.h"
#include "platform/SystemClock.h"
#include "update/ManifestAddress.h"

#include <QApplication>

#include <array>

using namespace Qt::StringLiterals;
using namespace quorbit;

int main(int argc, char **argv) {
    const auto process = startNativeProcess(QStringLiteral(QUORBIT_VERSION), argc, argv);
    if (!process->claim())
        return 0;

    // The program has no command line; the toolkit's options are none of its own.
    std::array<char, 8> name{"quorbit"};
    std::array<char *, 2> ownArguments{name.data(), nullptr};
    int count = 1;
    const QApplication application(count, ownArguments.data());
    QApplication::setApplicationName(u"quorbit"_s);
    QApplication::setApplicationVersion(QStringLiteral(QUORBIT_VERSION));
    QApplication::setDesktopFileName(u"quorbit"_s);

    const auto desktop = process->makeDesktop();
    SystemClock clock;
    SettingsDefaults defaults;
    const QuorbitApp app(*process, *desktop, defaults, clock, manifestAddress());
    return QApplication::exec();
}
