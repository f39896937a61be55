#include "Apps/Player/Terminal/Message.h"

#include <cstdio>
#include <string>

void tell(std::string_view message) {
    const std::string line = "zanto-player: " + std::string(message) + "\n";
    std::fputs(line.c_str(), stderr);
}

void print(const std::string& text) {
    std::fputs(text.c_str(), stdout);
    std::fflush(stdout);
}
