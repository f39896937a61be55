#include "Platform/Foundation/Log.h"

#include <cstdio>
#include <mutex>
#include <string>
#include <utility>

namespace platform {
namespace {

const char* levelName(LogLevel level) {
    switch (level) {
    case LogLevel::Error:
        return "error";
    case LogLevel::Warning:
        return "warning";
    case LogLevel::Info:
        return "info";
    case LogLevel::Debug:
        return "debug";
    }
    return "log";
}

void writeToStandardError(LogLevel level, std::string_view text) {
    if (level == LogLevel::Debug)
        return;
    // One call, so that lines of several threads do not mix.
    const std::string line =
        std::string("zanto: ") + levelName(level) + ": " + std::string(text) + "\n";
    std::fputs(line.c_str(), stderr);
}

struct SinkHolder {
    std::mutex mutex; // guards sink
    LogSink sink = writeToStandardError;
};

SinkHolder& holder() {
    static SinkHolder instance;
    return instance;
}

} // namespace

void log(LogLevel level, std::string_view text) {
    // Copied out, because a sink may itself log or replace the sink.
    LogSink sink;
    {
        const std::scoped_lock lock(holder().mutex);
        sink = holder().sink;
    }
    if (sink)
        sink(level, text);
}

LogSink setLogSink(LogSink sink) {
    const std::scoped_lock lock(holder().mutex);
    return std::exchange(holder().sink, std::move(sink));
}

} // namespace platform
