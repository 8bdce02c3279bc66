#include "platform/AtomicFile.h"

#include <QDir>
#include <QFile>
#include <QUuid>

#include <cerrno>
#include <cstdio>
#include <system_error>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>
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
    if (descriptor_ >= 0)
        ::close(descriptor_);
    if (named_)
        ::unlink(temporaryName_.constData());
}

void AtomicFile::write(QByteArrayView bytes) {
    while (!bytes.isEmpty()) {
        const ssize_t written = ::write(descriptor_, bytes.data(), static_cast<size_t>(bytes.size()));
        if (written < 0 && errno == EINTR)
            continue;
        require(written > 0, "write the file");
        bytes = bytes.sliced(written);
        unsent_ += written;
    }
#ifdef SYNC_FILE_RANGE_WRITE
    // Sets the disk to work now, without waiting for it, so that bringToDisk() need not wait long.
    if (unsent_ >= writeBackStep) {
        ::sync_file_range(descriptor_, 0, 0, SYNC_FILE_RANGE_WRITE);
        unsent_ = 0;
    }
#endif
}

void AtomicFile::copyPermissions(const QString &path) {
    struct stat status {};
    require(::stat(QFile::encodeName(path).constData(), &status) == 0 &&
                ::fchmod(descriptor_, status.st_mode & 07777) == 0,
            "copy the permissions");
}

void AtomicFile::bringToDisk() {
    require(::fsync(descriptor_) == 0, "bring the file to disk");
    if (!named_) {
        // A nameless file can only be given a free name, hence the detour by the temporary one.
        const QByteArray self = "/proc/self/fd/" + QByteArray::number(descriptor_);
        require(::linkat(AT_FDCWD, self.constData(), AT_FDCWD, temporaryName_.constData(),
                         AT_SYMLINK_FOLLOW) == 0,
                "name the file");
        named_ = true;
    }
    // Some file systems tell only now that there was no room.
    require(::close(std::exchange(descriptor_, -1)) == 0, "close the file");
}

void AtomicFile::takeName(const QString &name) {
    const QByteArray path = QFile::encodeName(folder_ + u'/' + name);
    require(std::rename(temporaryName_.constData(), path.constData()) == 0, "rename the file");
    named_ = false;
}

} // namespace quorbit
