#pragma once

#include <fstream>
#include <string>

namespace tests {

/// The kilobytes that the process has used at most since the last call; -1 where the system does
/// not let a process begin anew.
inline long resetMemoryPeak() {
    std::ifstream status("/proc/self/status");
    long peak = -1;
    for (std::string line; std::getline(status, line);) {
        if (line.rfind("VmHWM:", 0) == 0)
            peak = std::stol(line.substr(6));
    }
    std::ofstream reset("/proc/self/clear_refs");
    reset << 5;
    return reset.flush() ? peak : -1;
}

} // namespace tests
