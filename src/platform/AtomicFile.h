#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QString>

namespace quorbit {

/// A file that is being written and gets its name only once it is whole and on the disk, so that what has the
/// name until then is never lost to a full disk. If it is destroyed before that, nothing is left of it; where
/// the file system knows nameless files, not even when the program is killed. Its operations throw
/// std::system_error.
class AtomicFile {
public:
    /// Creates the folder when it is missing.
    explicit AtomicFile(const QString &folder);
    ~AtomicFile();
    AtomicFile(const AtomicFile &) = delete;
    AtomicFile &operator=(const AtomicFile &) = delete;

    void write(QByteArrayView bytes);
    /// Gives it the permissions of another file.
    void copyPermissions(const QString &path);
    /// Brings what was written safely to disk; nothing more can be written then.
    void bringToDisk();
    /// Gives it its name, in its folder, in place of a file or a link of that name. Comes after
    /// bringToDisk().
    void takeName(const QString &name);

private:
    QString folder_;
    QByteArray temporaryName_; ///< the whole path, beside the final one
    int descriptor_ = -1;
    qint64 unsent_ = 0;  ///< bytes written since the disk was last set to work
    bool named_ = false; ///< whether something exists under the temporary name
};

} // namespace quorbit
