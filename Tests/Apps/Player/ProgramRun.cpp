#include "Tests/Apps/Player/ProgramRun.h"

#include <gtest/gtest.h>
#include <sys/wait.h>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>

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

ScratchFolder::ScratchFolder() {
    std::string name = ::testing::TempDir() + "zanto-XXXXXX";
    folder_ = mkdtemp(name.data());
}

ScratchFolder::~ScratchFolder() {
    std::filesystem::remove_all(folder_);
}

std::string ScratchFolder::write(const std::string& name, const std::string& content) const {
    std::ofstream(folder_ / name, std::ios::binary) << content;
    return path(name);
}

std::string ScratchFolder::read(const std::string& name) const {
    std::ifstream file(folder_ / name, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}
