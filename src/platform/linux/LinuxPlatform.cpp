#include "platform/linux/LinuxPlatform.h"

#include "platform/linux/desktop/AccessibilitySettings.h"
#include "platform/linux/desktop/X11.h"
#include "platform/linux/process/Child.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QDBusPendingCallWatcher>
#include <QDesktopServices>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLocale>
#include <QStandardPaths>

#include <array>
#include <climits>

#include <malloc.h>
#include <syslog.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace quorbit {

namespace {

/// Runs as `sh -c <this> <name> <process> <service> <executable> <arguments>...`, the service being the
/// program that the process launched, or 0. It comes to its end after the process that told it to; a new
/// instance that still found it would take it for one that stays. The shell is a child of the process that it
/// waits for and gets another parent the moment that process ends, and the service is known by when it was
/// started, so a number that is given to a new process misleads neither. After half a minute the shell waits
/// for nothing more: what has not ended then is left to the new instance to be found.
constexpr auto reopenScript = R"sh(
old=$1
service=$2
shift 2
service_start() {
    { IFS= read -r line <"/proc/$service/stat"; } 2>/dev/null || return
    set -- ${line##*) }
    [ "$1" = Z ] || echo "${20}"
}
start=$(service_start)
old_runs() { read -r own name state parent rest <"/proc/$$/stat" && [ "$parent" = "$old" ]; }
service_runs() { [ "$start" ] && [ "$(service_start)" = "$start" ]; }
sleep 0.5
tries=300
while [ "$tries" -gt 0 ] && { old_runs || service_runs; }; do
    sleep 0.1
    tries=$((tries - 1))
done
exec "$@"
)sh";

QString ownExecutable() {
    std::array<char, PATH_MAX> target{};
    const ssize_t length = ::readlink("/proc/self/exe", target.data(), target.size());
    if (length <= 0)
        return {};
    QString path = QFile::decodeName(QByteArray(target.data(), length));
    const QString replaced = u" (deleted)"_s;
    if (path.endsWith(replaced) && !QFile::exists(path))
        path.chop(replaced.size());
    return path;
}

} // namespace

Bundle Bundle::ofThisProcess(std::optional<QString> version, QStringList arguments) {
    const QString executable = ownExecutable();
    return {executable.isEmpty() ? std::nullopt : std::optional(executable), std::move(version),
            std::move(arguments)};
}

LinuxPlatform::LinuxPlatform(Bundle bundle)
    : bundle_(std::move(bundle)), environment_(Environment::ofThisProcess()) {}

std::optional<QString> LinuxPlatform::auxiliaryExecutable(const QString &name) const {
    if (!bundle_.executable)
        return std::nullopt;
    const QDir bin = QFileInfo(*bundle_.executable).dir();
    const QString path = QDir::cleanPath(bin.filePath(u"../libexec/quorbit/"_s + name));
    const QFileInfo file(path);
    return file.isFile() && file.isExecutable() ? std::optional(path) : std::nullopt;
}

QString LinuxPlatform::homeDirectory() const {
    return QDir::homePath();
}

std::optional<QString> LinuxPlatform::downloadsDirectory() const {
    const QString path = QStandardPaths::writableLocation(QStandardPaths::DownloadLocation);
    return path.isEmpty() ? std::nullopt : std::optional(path);
}

QStringList LinuxPlatform::systemLanguages() const {
    return QLocale::system().uiLanguages();
}

std::unique_ptr<ChildProcess> LinuxPlatform::launch(const QString &executable, const QStringList &arguments) {
    const pid_t pid = spawn(executable, arguments, environment_, ProcessGroup::own);
    launched_ = new Child(pid, this);
    return std::make_unique<ChildHandle>(launched_);
}

void LinuxPlatform::reopenAfterExit() {
    if (reopening_ || !bundle_.executable)
        return;
    reopening_ = true;
    const pid_t service = launched_ && !launched_->hasEnded() ? launched_->pid() : 0;
    const QStringList command{u"-c"_s,
                              QString::fromLatin1(reopenScript),
                              u"quorbit-reopen"_s,
                              QString::number(::getpid()),
                              QString::number(service),
                              *bundle_.executable};
    try {
        spawn(u"/bin/sh"_s, command + bundle_.arguments, environment_, ProcessGroup::session);
    } catch (const LaunchError &) {
        // The program then ends without coming back.
    }
}

void LinuxPlatform::returnFreeMemory() {
#ifdef __GLIBC__
    ::malloc_trim(0);
#endif
}

void LinuxPlatform::log(const QString &line) {
    QByteArray text = line.toUtf8();
    ::syslog(LOG_USER | LOG_NOTICE, "%s", text.constData());
    text += '\n';
    QFile standardError;
    if (standardError.open(STDERR_FILENO, QIODevice::WriteOnly | QIODevice::Unbuffered))
        standardError.write(text);
}

bool LinuxPlatform::isAccessibilityTrusted() const {
    // On a Wayland session XTEST reaches none but the few X11 programs.
    if (!mayInjectThroughX11_)
        mayInjectThroughX11_ = qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY") && x11::hasXTest();
    return *mayInjectThroughX11_ || ::access("/dev/uinput", W_OK) == 0;
}

void LinuxPlatform::observeAccessibilityChanges(std::function<void()> changed) {
    accessibilityObservers_.push_back(std::move(changed));
    if (accessibilityObservers_.size() > 1)
        return;
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (bus.isConnected())
        bus.connect(QString(), QString(), u"com.apple.accessibility"_s, u"api"_s, this,
                    SLOT(accessibilityChanged()));
}

void LinuxPlatform::accessibilityChanged() {
    for (const auto &changed : accessibilityObservers_)
        changed();
}

void LinuxPlatform::openAccessibilitySettings() {
    const auto command =
        accessibilitySettingsCommand(qEnvironmentVariable("XDG_CURRENT_DESKTOP"), [](const QString &name) {
            return QStandardPaths::findExecutable(name);
        });
    if (!command)
        return;
    try {
        new Child(spawn(command->executable, command->arguments, environment_, ProcessGroup::session), this);
    } catch (const LaunchError &) {
        // There is no other page to show instead.
    }
}

void LinuxPlatform::open(const QUrl &address) {
    QDesktopServices::openUrl(address);
}

void LinuxPlatform::reveal(const QString &path) {
    const QUrl folder = QUrl::fromLocalFile(QFileInfo(path).absolutePath());
    const QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected()) {
        open(folder);
        return;
    }
    QDBusMessage request =
        QDBusMessage::createMethodCall(u"org.freedesktop.FileManager1"_s, u"/org/freedesktop/FileManager1"_s,
                                       u"org.freedesktop.FileManager1"_s, u"ShowItems"_s);
    request << QStringList{QUrl::fromLocalFile(path).toString(QUrl::FullyEncoded)} << QString();
    auto *answer = new QDBusPendingCallWatcher(bus.asyncCall(request), this);
    connect(answer, &QDBusPendingCallWatcher::finished, this, [this, answer, folder] {
        answer->deleteLater();
        if (answer->isError())
            open(folder);
    });
}

} // namespace quorbit
