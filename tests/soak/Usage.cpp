#include "soak/Usage.h"

#include <QApplication>
#include <QWidget>

#include <filesystem>
#include <iterator>
#include <malloc.h>

#ifdef __SANITIZE_ADDRESS__
// g++ comes without the header that declares it.
extern "C" std::size_t __sanitizer_get_current_allocated_bytes(); // NOLINT(bugprone-reserved-identifier)
#endif

namespace quorbit::test {

namespace {

std::int64_t allocated() {
#ifdef __SANITIZE_ADDRESS__
    return static_cast<std::int64_t>(__sanitizer_get_current_allocated_bytes());
#else
    // What was mapped for one large block alone counts apart from the arenas.
    const auto info = ::mallinfo2();
    return static_cast<std::int64_t>(info.uordblks + info.hblkhd);
#endif
}

std::int64_t entries(const char *folder) {
    return std::distance(std::filesystem::directory_iterator(folder), std::filesystem::directory_iterator());
}

} // namespace

Usage currentUsage() {
    Usage usage;
    usage.heap = allocated();
    usage.objects = qApp->findChildren<QObject *>().size();
    for (const QWidget *window : QApplication::topLevelWidgets())
        usage.objects += window->findChildren<QObject *>().size();
    usage.widgets = QApplication::allWidgets().size();
    usage.descriptors = entries("/proc/self/fd");
    usage.threads = entries("/proc/self/task");
    return usage;
}

} // namespace quorbit::test
