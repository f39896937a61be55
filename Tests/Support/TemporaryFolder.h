#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

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
    std::string addText(const std::string& name, std::string_view text) const;
    /// What a file holds; nothing where there is none.
    [[nodiscard]] std::string read(const std::string& name) const;

private:
    std::string path_;
};

} // namespace tests
