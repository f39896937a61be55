#pragma once

#include "Apps/Player/Terminal/ExitCode.h"
#include "HVViewer/Model/DisplayMode.h"
#include "Platform/Foundation/Geometry.h"
#include "Platform/Interface/Touch.h"

#include <string>
#include <variant>

/// `zanto-player [FILE-OR-URL]`
struct PlayCommand {
    /// Empty: the built-in panorama.
    std::string input;
    platform::TouchSlop touchSlop;
    /// Empty: none.
    std::string recordFile;
    std::string hotSpotsFile;
    std::string attitudeTraceFile;
};

/// `zanto-player render [INPUT] --output … --size …`
struct RenderCommand {
    /// Empty: the built-in panorama.
    std::string input;
    /// A file when it ends in `.png`, else a folder.
    std::string output;
    /// In points.
    platform::Size size;
    double scale = 1.0;
    DisplayMode mode = DisplayMode::Sphere;
    double timeSeconds = 0;
    /// Empty: none.
    std::string actionsFile;
    std::string traceFile;
    std::string hotSpotsFile;
    platform::TouchSlop touchSlop;
};

/// What the arguments ask for: a command, or to leave at once, everything said.
using Command = std::variant<PlayCommand, RenderCommand, ExitCode>;

/// Why a picture of that size cannot be drawn, as the end of a sentence; empty if it can.
[[nodiscard]] std::string pixelsRefusal(platform::Size points, double scale);

/// Reads the arguments. Help and version go to standard output, what is wrong to standard error.
[[nodiscard]] Command parseCommandLine(int argc, const char* const* argv);
