#pragma once

#include "Platform/Foundation/Log.h"

#include <string>
#include <string_view>
#include <vector>

/// Collects the library's log lines while it lives, in place of the sink that was there.
class LogRecorder {
public:
    LogRecorder();
    ~LogRecorder();
    LogRecorder(const LogRecorder&) = delete;
    LogRecorder& operator=(const LogRecorder&) = delete;

    /// Every line but the debug ones.
    [[nodiscard]] const std::vector<std::string>& lines() const { return lines_; }
    /// How many lines contain `text`.
    [[nodiscard]] int count(std::string_view text) const;

private:
    std::vector<std::string> lines_;
    platform::LogSink previous_;
};
