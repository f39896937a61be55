#pragma once

#include <cstdint>
#include <span>
#include <string>

namespace tests {

/// An empty folder of its own for one test, gone with it and all that is in it.
class TemporaryFolder {
public:
    TemporaryFolder();
    ~TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    /// Without a slash at its end.
    [[nodiscard]] const std::string& path() const { return path_; }
    [[nodiscard]] std::string pathOf(const std::string& name) const { return path_ + "/" + name; }
    /// Writes a file and gives its path.
    std::string add(const std::string& name, std::span<const std::uint8_t> contents) const;

private:
    std::string path_;
};

} // namespace tests
