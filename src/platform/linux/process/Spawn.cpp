#include "platform/linux/process/Spawn.h"

#include "platform/Platform.h"

#include <QByteArrayList>
#include <QFile>

#include <csignal>

#include <spawn.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace quorbit {

namespace {

class SpawnAttributes {
public:
    explicit SpawnAttributes(ProcessGroup group) {
        posix_spawnattr_init(&attributes_);
        sigset_t signals;
        sigemptyset(&signals);
        posix_spawnattr_setsigmask(&attributes_, &signals);
        sigfillset(&signals);
        posix_spawnattr_setsigdefault(&attributes_, &signals);
        const int grouping = group == ProcessGroup::session ? POSIX_SPAWN_SETSID : POSIX_SPAWN_SETPGROUP;
        posix_spawnattr_setflags(
            &attributes_, static_cast<short>(POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF | grouping));
        posix_spawn_file_actions_init(&actions_);
        posix_spawn_file_actions_addclosefrom_np(&actions_, STDERR_FILENO + 1);
    }
    ~SpawnAttributes() {
        posix_spawn_file_actions_destroy(&actions_);
        posix_spawnattr_destroy(&attributes_);
    }
    SpawnAttributes(const SpawnAttributes &) = delete;
    SpawnAttributes &operator=(const SpawnAttributes &) = delete;

    const posix_spawnattr_t *attributes() const { return &attributes_; }
    const posix_spawn_file_actions_t *actions() const { return &actions_; }

private:
    posix_spawnattr_t attributes_;
    posix_spawn_file_actions_t actions_;
};

} // namespace

Environment Environment::ofThisProcess() {
    Environment environment;
    for (char **variable = environ; variable && *variable; ++variable)
        environment.variables_.emplace_back(*variable);
    return environment;
}

std::vector<char *> Environment::pointers() const {
    std::vector<char *> pointers;
    pointers.reserve(variables_.size() + 1);
    for (const std::string &variable : variables_)
        pointers.push_back(const_cast<char *>(variable.c_str()));
    pointers.push_back(nullptr);
    return pointers;
}

pid_t spawn(const QString &executable, const QStringList &arguments, const Environment &environment,
            ProcessGroup group) {
    QByteArrayList words{QFile::encodeName(executable)};
    for (const QString &argument : arguments)
        words.append(argument.toLocal8Bit());
    std::vector<char *> argv;
    for (QByteArray &word : words)
        argv.push_back(word.data());
    argv.push_back(nullptr);

    const SpawnAttributes how(group);
    pid_t pid = -1;
    const int error = posix_spawn(&pid, argv.front(), how.actions(), how.attributes(), argv.data(),
                                  environment.pointers().data());
    if (error != 0)
        throw LaunchError(u"%1: %2"_s.arg(executable, qt_error_string(error)).toStdString());
    return pid;
}

} // namespace quorbit
