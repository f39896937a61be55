#include "Benchmarks/ProcessCounts.h"

#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <iterator>

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
