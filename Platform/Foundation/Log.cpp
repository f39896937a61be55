#include "Platform/Foundation/Log.h"

#include "Platform/Foundation/Environment.h"
#include "Platform/Foundation/ReplaceableFunction.h"

#include <cstdio>
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

using Sink = ReplaceableFunction<LogLevel, std::string_view>;

Sink& currentSink() {
    // Never destroyed: another thread may still log while the process exits.
    static auto& sink = *new Sink(writeToStandardError);
    return sink;
}

} // namespace

void log(LogLevel level, std::string_view text) {
    if (!Environment::current().log(level, text))
        currentSink()(level, text);
}

LogSink setLogSink(LogSink sink) {
    return currentSink().replace(std::move(sink));
}

} // namespace platform
