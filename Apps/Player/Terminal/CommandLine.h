#pragma once

#include "Apps/Player/Terminal/ExitCode.h"
#include "HVViewer/Model/DisplayMode.h"
#include "Platform/Foundation/Geometry.h"
#include "Platform/Interface/Touch.h"

#include <string>
#include <variant>

/// `zanto-player [FILE-OR-URL]`
struct PlayCommand {
    /// Empty means the built-in panorama.
    std::string input;
    platform::TouchSlop touchSlop;
    /// For this and the following paths, empty means none.
    std::string recordFile;
    std::string hotSpotsFile;
    std::string attitudeTraceFile;
};

/// `zanto-player render [INPUT] --output … --size …`
struct RenderCommand {
    /// Empty means the built-in panorama.
    std::string input;
    /// A file if it ends in `.png`, otherwise a folder.
    std::string output;
    /// In points.
    platform::Size size;
    double scale = 1.0;
    DisplayMode mode = DisplayMode::Sphere;
    double timeSeconds = 0;
    /// For this and the following paths, empty means none.
    std::string actionsFile;
    std::string traceFile;
    std::string hotSpotsFile;
    platform::TouchSlop touchSlop;
};

/// The parsed command, or an exit code if the program must exit at once; messages have been
/// printed.
using Command = std::variant<PlayCommand, RenderCommand, ExitCode>;

/// Why an image of that size cannot be drawn, as the end of a sentence; empty if it can.
[[nodiscard]] std::string pixelsRefusal(platform::Size points, double scale);

/// Parses the arguments. Prints help and version to standard output and errors to standard error.
[[nodiscard]] Command parseCommandLine(int argc, const char* const* argv);
