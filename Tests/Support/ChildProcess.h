#pragma once

#include <sys/types.h>

#include <chrono>
#include <optional>
#include <string>
#include <vector>

namespace tests {

/// In the environment of a program that closes EGL at its end: that unloads the driver, and what
/// the driver keeps for good then looks like a leak from nowhere.
inline constexpr const char* kWithoutLeakCheck = "ASAN_OPTIONS=detect_leaks=0";

/// Another program that runs for as long as this object lives, its standard output read from here.
///
/// Owner:  the program is ended with the object, and with this process whatever ends that.
/// Thread: one.
class ChildProcess {
public:
    enum class StandardError { Shown, Dropped };

    /// Starts a program, looked up on the path. `environment` holds NAME=VALUE on top of what this
    /// process has.
    explicit ChildProcess(std::vector<std::string> command,
                          const std::vector<std::string>& environment = {},
                          StandardError standardError = StandardError::Shown);
    ~ChildProcess();
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;

    /// The next line of its standard output, without its end. None when the program closes it or
    /// time runs out before there is a whole one.
    [[nodiscard]] std::optional<std::string> readLine(std::chrono::milliseconds longest);

    /// Waits until it has ended; its exit code, or -1 if a signal ended it.
    [[nodiscard]] int exitCode();

private:
    pid_t pid_ = -1; // -1 once it has ended
    int output_ = -1;
    std::string unread_;
};

} // namespace tests
