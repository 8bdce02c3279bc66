#include "platform/linux/process/Child.h"

#include <QSocketNotifier>

#include <csignal>

extern "C" { // missing from the header of glibc 2.36
#include <sys/pidfd.h>
}
#include <sys/wait.h>
#include <unistd.h>

namespace quorbit {

Child::Child(pid_t pid, QObject *parent) : QObject(parent), pid_(pid), pidfd_(pidfd_open(pid, 0)) {
    if (pidfd_ < 0)
        return;
    auto *ending = new QSocketNotifier(pidfd_, QSocketNotifier::Read, this);
    connect(ending, &QSocketNotifier::activated, this, [this, ending] {
        if (hasEnded())
            ending->setEnabled(false);
    });
}

Child::~Child() {
    if (pidfd_ >= 0)
        ::close(pidfd_);
}

bool Child::hasEnded() {
    if (ended_)
        return true;
    // Until it is reaped here the number belongs to this process. No such child means that the system reaped
    // it, which it does where SIGCHLD is ignored.
    siginfo_t info{};
    const int result = waitid(P_PID, static_cast<id_t>(pid_), &info, WEXITED | WNOHANG);
    ended_ = (result == 0 && info.si_pid == pid_) || (result != 0 && errno == ECHILD);
    if (ended_)
        deleteLater();
    return ended_;
}

void Child::terminate() {
    if (hasEnded())
        return;
    if (pidfd_ >= 0)
        pidfd_send_signal(pidfd_, SIGTERM, nullptr, 0);
    else
        ::kill(pid_, SIGTERM);
}

} // namespace quorbit
