#pragma once

#include <filesystem>
#include <string>

namespace sim {

/// The two files by which clients find the service, readable by the user alone.
class ConnectionFiles {
public:
    /// Writes both, each at once; throws std::system_error or std::filesystem::filesystem_error.
    ConnectionFiles(const std::string &url, const std::string &token);
    /// Removes them unless another service has written its own since.
    void remove() const;

private:
    std::filesystem::path folder_;
    std::string url_;
};

} // namespace sim
