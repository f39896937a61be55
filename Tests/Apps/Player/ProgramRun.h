#pragma once

#include <filesystem>
#include <string>

/// What a finished program leaves.
struct ProgramRun {
    int exitCode = -1;
    std::string standardError;
};

/// Runs `zanto-player` with arguments as a shell would take them, and waits for it.
[[nodiscard]] ProgramRun runPlayer(const std::string& arguments);

/// A folder of its own that goes with the object.
class ScratchFolder {
public:
    ScratchFolder();
    ~ScratchFolder();
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;

    [[nodiscard]] std::string path(const std::string& name) const {
        return (folder_ / name).string();
    }
    /// Writes a file there and gives back its path.
    [[nodiscard]] std::string write(const std::string& name, const std::string& content) const;
    [[nodiscard]] std::string read(const std::string& name) const;

private:
    std::filesystem::path folder_;
};
