#include "Benchmarks/LongestCall.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdlib>

LongestCall::LongestCall() : statistics_(open("/proc/thread-self/schedstat", O_RDONLY)) {}

LongestCall::~LongestCall() {
    close(statistics_);
}

double LongestCall::millisecondsInQueue() const {
    std::array<char, 128> text{};
    if (pread(statistics_, text.data(), text.size() - 1, 0) <= 0)
        return 0;
    // The first number is the time on a processor in nanoseconds, the second that in the run queue.
    char* second = nullptr;
    static_cast<void>(std::strtoull(text.data(), &second, 10));
    return static_cast<double>(std::strtoull(second, nullptr, 10)) / 1e6;
}

void LongestCall::time(const std::function<void()>& call) {
    const double queuedBefore = millisecondsInQueue();
    const auto start = std::chrono::steady_clock::now();
    call();
    const std::chrono::duration<double, std::milli> wall = std::chrono::steady_clock::now() - start;
    const double queued = millisecondsInQueue() - queuedBefore;
    longest_.wall = std::max(longest_.wall, wall.count());
    longest_.own = std::max(longest_.own, std::max(wall.count() - queued, 0.0));
}
