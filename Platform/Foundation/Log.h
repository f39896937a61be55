#pragma once

#include "Platform/Foundation/Export.h"

#include <functional>
#include <string_view>

namespace platform {

/// The severity of a line, by consequence. `Error`: a feature is lost; `Warning`: quality is lost;
/// `Info`: a fact worth knowing once; `Debug`: everything else.
enum class LogLevel { Error, Warning, Info, Debug };

/// Receives the log lines of the library, without line ends. Any thread may call it, also several
/// at the same time.
using LogSink = std::function<void(LogLevel, std::string_view)>;

/// Writes one line to the sink of the current environment, or to the process's sink if the
/// environment has none.
///
/// Thread: any; thread-safe.
ZANTO_EXPORT void log(LogLevel level, std::string_view text);

/// Replaces the process's sink and returns the earlier one. An empty sink discards every line. The
/// initial sink writes all levels except `Debug` to standard error.
///
/// The call returns once no other thread runs the earlier sink any more. The caller must not hold a
/// lock that the earlier sink acquires, because that is a deadlock.
///
/// Thread: any; thread-safe.
ZANTO_EXPORT LogSink setLogSink(LogSink sink);

} // namespace platform
