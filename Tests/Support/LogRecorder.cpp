#include "Tests/Support/LogRecorder.h"

#include <algorithm>

LogRecorder::LogRecorder() {
    previous_ = platform::setLogSink([this](platform::LogLevel level, std::string_view text) {
        if (level != platform::LogLevel::Debug)
            lines_.emplace_back(text);
    });
}

LogRecorder::~LogRecorder() {
    platform::setLogSink(previous_);
}

int LogRecorder::count(std::string_view text) const {
    return static_cast<int>(
        std::count_if(lines_.begin(), lines_.end(), [&](const std::string& line) {
            return line.find(text) != std::string::npos;
        }));
}
