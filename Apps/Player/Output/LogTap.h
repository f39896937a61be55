#pragma once

#include "Apps/Player/Output/Trace.h"
#include "Apps/Player/Terminal/Message.h"
#include "Platform/Foundation/Log.h"

#include <string_view>

/// While it exists, writes the library's log to standard error and to the trace.
///
/// Owner:  the trace must outlive the tap.
class LogTap {
public:
    explicit LogTap(Trace& trace)
        : previous_(platform::setLogSink([&trace](platform::LogLevel level, std::string_view text) {
              if (level == platform::LogLevel::Debug)
                  return;
              // The program itself prints why the content failed.
              if (text != "Player failed to play")
                  tell(text);
              trace.log(text);
          })) {}
    ~LogTap() { platform::setLogSink(previous_); }
    LogTap(const LogTap&) = delete;
    LogTap& operator=(const LogTap&) = delete;

private:
    platform::LogSink previous_;
};
