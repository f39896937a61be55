#pragma once

#include "Platform/Foundation/Export.h"

#include <functional>
#include <string_view>

namespace platform {

/// By consequence: a feature is lost, quality is lost, a fact worth knowing once, the rest.
enum class LogLevel { Error, Warning, Info, Debug };

/// Receives every log line of the library, without a line end.
using LogSink = std::function<void(LogLevel, std::string_view)>;

/// Writes one line to the sink.
///
/// Thread: any; the sink must stand calls from any thread.
ZANTO_EXPORT void log(LogLevel level, std::string_view text);

/// Replaces the sink and gives back the earlier one. An empty sink silences the library. The first
/// sink writes everything but `Debug` to standard error. When this returns, no other thread is in
/// the earlier sink any more; so the caller must hold no lock that the earlier sink takes.
///
/// Thread: any.
ZANTO_EXPORT LogSink setLogSink(LogSink sink);

} // namespace platform
