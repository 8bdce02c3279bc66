#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QString>

namespace quorbit {

/// A file that appears whole or not at all: it has no name of its own until it is complete. If the object is
/// destroyed before that, nothing is left of it; where the file system knows nameless files (O_TMPFILE), not
/// even when the program is killed. Its operations throw std::system_error.
class AtomicFile {
public:
    /// Creates the folder when it is missing.
    explicit AtomicFile(const QString &folder);
    ~AtomicFile();
    AtomicFile(const AtomicFile &) = delete;
    AtomicFile &operator=(const AtomicFile &) = delete;

    void write(QByteArrayView bytes);
    /// Brings the file safely to disk and names it `name`, in its folder. Replaces a file, a link or a whole
    /// folder of that name.
    void finish(const QString &name);

private:
    QString folder_;
    QByteArray temporaryName_; ///< the whole path, beside the final one
    int descriptor_ = -1;
    qint64 unsent_ = 0;  ///< bytes written since the disk was last set to work
    bool named_ = false; ///< whether something exists under the temporary name
};

} // namespace quorbit
