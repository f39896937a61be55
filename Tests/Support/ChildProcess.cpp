#include "Tests/Support/ChildProcess.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <csignal>
#include <stdexcept>

namespace tests {
namespace {

/// The array that `exec` takes: a pointer a word, and null.
std::vector<char*> pointersTo(std::vector<std::string>& words) {
    std::vector<char*> pointers;
    pointers.reserve(words.size() + 1);
    for (std::string& word : words)
        pointers.push_back(word.data());
    pointers.push_back(nullptr);
    return pointers;
}

/// Each name once, because of two a program may take either.
std::vector<std::string> environmentWith(const std::vector<std::string>& additions) {
    std::vector<std::string> all = additions;
    for (char** entry = environ; *entry; ++entry) {
        const std::string variable = *entry;
        const std::string name = variable.substr(0, variable.find('=') + 1);
        const bool isReplaced =
            std::any_of(additions.begin(), additions.end(), [&name](const std::string& addition) {
                return addition.starts_with(name);
            });
        if (!isReplaced)
            all.push_back(variable);
    }
    return all;
}

/// After fork(): only calls that are safe then.
[[noreturn]] void become(char* const* arguments, char* const* environment, int output,
                         bool dropErrors) {
    prctl(PR_SET_PDEATHSIG, SIGTERM);
    dup2(output, STDOUT_FILENO);
    if (dropErrors)
        dup2(open("/dev/null", O_WRONLY | O_CLOEXEC), STDERR_FILENO);
    execvpe(arguments[0], arguments, environment);
    _exit(127);
}

} // namespace

ChildProcess::ChildProcess(std::vector<std::string> command,
                           const std::vector<std::string>& environment,
                           StandardError standardError) {
    std::vector<std::string> variables = environmentWith(environment);
    const std::vector<char*> arguments = pointersTo(command);
    const std::vector<char*> entries = pointersTo(variables);
    std::array<int, 2> ends{};
    if (pipe2(ends.data(), O_CLOEXEC) != 0)
        throw std::runtime_error("no pipe");
    pid_ = fork();
    if (pid_ == 0)
        become(arguments.data(), entries.data(), ends[1], standardError == StandardError::Dropped);
    close(ends[1]);
    output_ = ends[0];
}

ChildProcess::~ChildProcess() {
    close(output_);
    if (pid_ <= 0)
        return;
    kill(pid_, SIGTERM);
    waitpid(pid_, nullptr, 0);
}

std::optional<std::string> ChildProcess::readLine(std::chrono::milliseconds longest) {
    using Clock = std::chrono::steady_clock;
    const auto end = Clock::now() + longest;
    for (;;) {
        if (const auto length = unread_.find('\n'); length != std::string::npos) {
            std::string line = unread_.substr(0, length);
            unread_.erase(0, length + 1);
            return line;
        }
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(end - Clock::now()).count();
        pollfd ready{output_, POLLIN, 0};
        if (left <= 0 || poll(&ready, 1, static_cast<int>(left)) <= 0)
            return std::nullopt;
        std::array<char, 512> buffer{};
        const ssize_t count = read(output_, buffer.data(), buffer.size());
        if (count <= 0)
            return std::nullopt;
        unread_.append(buffer.data(), static_cast<std::size_t>(count));
    }
}

int ChildProcess::exitCode() {
    int status = -1;
    waitpid(pid_, &status, 0);
    pid_ = -1;
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

} // namespace tests
