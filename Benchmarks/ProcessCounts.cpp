#include "Benchmarks/ProcessCounts.h"

#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <system_error>

namespace {

int entriesOf(const char* folder) {
    const std::filesystem::directory_iterator entries(folder);
    return static_cast<int>(std::distance(begin(entries), end(entries)));
}

} // namespace

double residentKib() {
    std::ifstream statistics("/proc/self/statm");
    long pages = 0;
    statistics >> pages >> pages;
    return static_cast<double>(pages) * static_cast<double>(sysconf(_SC_PAGESIZE)) / 1024;
}

int threadCount() {
    return entriesOf("/proc/self/task");
}

int openFileCount() {
    return entriesOf("/proc/self/fd");
}

int openSocketCount() {
    const std::filesystem::directory_iterator files("/proc/self/fd");
    return static_cast<int>(std::count_if(begin(files), end(files), [](const auto& file) {
        std::error_code gone; // the descriptor of the folder itself is closed meanwhile
        return std::filesystem::read_symlink(file, gone).string().starts_with("socket:");
    }));
}
