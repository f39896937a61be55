#pragma once

#include <string>

/// What a finished program leaves.
struct ProgramRun {
    int exitCode = -1;
    std::string standardError;
};

/// Runs `zanto-player` with arguments as a shell would take them, and waits for it.
[[nodiscard]] ProgramRun runPlayer(const std::string& arguments);
