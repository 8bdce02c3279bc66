#include "ConnectionFiles.h"

#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <fstream>
#include <iterator>
#include <system_error>
#include <unistd.h>

namespace sim {

namespace {

void write(const std::filesystem::path &path, const std::string &text) {
    const std::filesystem::path fresh = path.string() + "." + std::to_string(getpid());
    const int file = open(fresh.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
    const bool written =
        file >= 0 && ::write(file, text.data(), text.size()) == static_cast<ssize_t>(text.size());
    const int error = errno;
    if (file >= 0)
        close(file);
    if (!written)
        throw std::system_error(error, std::generic_category(), fresh);
    std::filesystem::rename(fresh, path);
}

} // namespace

ConnectionFiles::ConnectionFiles(const std::string &url, const std::string &token) : url_(url) {
    const char *home = std::getenv("HOME");
    folder_ = std::filesystem::path(home ? home : "/") / "Library" / "Application Support" / "Quorbit";
    std::filesystem::create_directories(folder_);
    // The address comes last: a client that sees it finds the token beside it.
    write(folder_ / "ui-token", token + "\n");
    write(folder_ / "ui-url", url + "\n");
}

void ConnectionFiles::remove() const {
    std::ifstream file(folder_ / "ui-url");
    const std::string present{std::istreambuf_iterator<char>(file), {}};
    if (present != url_ + "\n")
        return;
    std::error_code ignored;
    std::filesystem::remove(folder_ / "ui-url", ignored);
    std::filesystem::remove(folder_ / "ui-token", ignored);
}

} // namespace sim
