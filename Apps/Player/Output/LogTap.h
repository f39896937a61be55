#pragma once

#include "Apps/Player/Output/Trace.h"
#include "Apps/Player/Terminal/Message.h"
#include "Platform/Foundation/Log.h"

#include <string_view>

/// Shows the library's log to the person at the terminal and to the trace while it lives.
///
/// Owner:  the trace outlives the tap.
class LogTap {
public:
    explicit LogTap(Trace& trace)
        : previous_(platform::setLogSink([&trace](platform::LogLevel level, std::string_view text) {
              if (level == platform::LogLevel::Debug)
                  return;
              // The program says why it failed, in a line of its own.
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
