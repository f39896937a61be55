#pragma once

#include <GLES2/gl2.h>

#include <algorithm>
#include <chrono>
#include <vector>

/// The time of drawing until the GPU, or the software renderer, has finished.
double millisecondsOf(const auto& work) {
    const auto start = std::chrono::steady_clock::now();
    work();
    glFinish();
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start)
        .count();
}

[[nodiscard]] inline double median(std::vector<double> values) {
    std::nth_element(values.begin(),
                     values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2), values.end());
    return values[values.size() / 2];
}
