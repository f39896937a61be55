#include "Tests/Apps/Player/ProgramRun.h"

#include <sys/wait.h>

#include <array>
#include <cstdio>

ProgramRun runPlayer(const std::string& arguments) {
    const std::string command = std::string(ZANTO_PLAYER) + " " + arguments + " 2>&1 >/dev/null";
    std::FILE* pipe = popen(command.c_str(), "r");
    if (!pipe)
        return {};
    ProgramRun run;
    std::array<char, 4096> buffer{};
    while (const std::size_t count = std::fread(buffer.data(), 1, buffer.size(), pipe))
        run.standardError.append(buffer.data(), count);
    const int status = pclose(pipe);
    run.exitCode = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    return run;
}
