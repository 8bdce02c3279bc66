#pragma once

#include <QString>
#include <QStringList>

#include <string>
#include <vector>

#include <sys/types.h>

namespace quorbit {

/// A copy of a process's environment variables, in the form that the system wants them.
class Environment {
public:
    static Environment ofThisProcess();

    /// Null-terminated; valid as long as this object is.
    std::vector<char *> pointers() const;

private:
    std::vector<std::string> variables_;
};

enum class ProcessGroup {
    own,     ///< a signal from the terminal's keyboard does not reach the program
    session, ///< the program also leaves the terminal and outlives its hang-up
};

/// posix_spawn() with nothing but the three standard streams and the working directory inherited, no signal
/// blocked or ignored. Throws LaunchError with the system's text. The caller reaps the process.
pid_t spawn(const QString &executable, const QStringList &arguments, const Environment &environment,
            ProcessGroup group);

} // namespace quorbit
