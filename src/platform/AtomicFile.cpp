#include "platform/AtomicFile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QUuid>

#include <cerrno>
#include <cstdio>
#include <system_error>

#include <fcntl.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace quorbit {

namespace {

constexpr mode_t permissions = 0666; // less what the user's umask takes away
constexpr qint64 writeBackStep = 8LL * 1024 * 1024;

void require(bool success, const char *operation) {
    if (!success)
        throw std::system_error(errno, std::generic_category(), operation);
}

QByteArray temporaryNameIn(const QString &folder) {
    return QFile::encodeName(folder + u"/.quorbit-"_s + QUuid::createUuid().toString(QUuid::Id128) +
                             u".part"_s);
}

} // namespace

AtomicFile::AtomicFile(const QString &folder) : folder_(folder), temporaryName_(temporaryNameIn(folder)) {
    require(QDir().mkpath(folder_), "create the folder");
#ifdef O_TMPFILE
    descriptor_ =
        ::open(QFile::encodeName(folder_).constData(), O_TMPFILE | O_WRONLY | O_CLOEXEC, permissions);
#endif
    if (descriptor_ < 0) {
        descriptor_ =
            ::open(temporaryName_.constData(), O_CREAT | O_EXCL | O_WRONLY | O_CLOEXEC, permissions);
        require(descriptor_ >= 0, "create the file");
        named_ = true;
    }
}

AtomicFile::~AtomicFile() {
    ::close(descriptor_);
    if (named_)
        ::unlink(temporaryName_.constData());
}

void AtomicFile::write(QByteArrayView bytes) {
    while (!bytes.isEmpty()) {
        const ssize_t written = ::write(descriptor_, bytes.data(), static_cast<size_t>(bytes.size()));
        if (written < 0 && errno == EINTR)
            continue;
        require(written >= 0, "write the file");
        bytes = bytes.sliced(written);
        unsent_ += written;
    }
#ifdef SYNC_FILE_RANGE_WRITE
    // Sets the disk to work now, without waiting for it, so that finish() need not wait long.
    if (unsent_ >= writeBackStep) {
        ::sync_file_range(descriptor_, 0, 0, SYNC_FILE_RANGE_WRITE);
        unsent_ = 0;
    }
#endif
}

void AtomicFile::finish(const QString &name) {
    require(::fsync(descriptor_) == 0, "bring the file to disk");
    if (!named_) {
        // A nameless file can only be given a free name, hence the detour by the temporary one.
        const QByteArray self = "/proc/self/fd/" + QByteArray::number(descriptor_);
        require(::linkat(AT_FDCWD, self.constData(), AT_FDCWD, temporaryName_.constData(),
                         AT_SYMLINK_FOLLOW) == 0,
                "name the file");
        named_ = true;
    }
    const QString path = folder_ + u'/' + name;
    const QFileInfo obstacle(path);
    if (obstacle.isDir() && !obstacle.isSymLink())
        QDir(path).removeRecursively(); // Should it fail, so does the renaming.
    require(std::rename(temporaryName_.constData(), QFile::encodeName(path).constData()) == 0,
            "rename the file");
    named_ = false;
}

} // namespace quorbit
