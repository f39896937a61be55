#include "Apps/Player/Terminal/CommandLine.h"

#include "Apps/Player/Terminal/DisplayModeNames.h"
#include "Apps/Player/Terminal/Message.h"
#include "HVViewer/Utilities/ZNTMath.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <functional>
#include <iostream>
#include <system_error>

namespace {

constexpr double kLargestSidePx = 16384;
constexpr double kLargestSlop = 16384;

std::string versionText() {
    std::array<char, 32> number{};
    std::snprintf(number.data(), number.size(), "%.1f", ZantoPlayerFrameworkVersionNumber);
    return std::string("zanto-player ") + number.data();
}

/// Reads "640x360". Returns an empty string on success, otherwise the error message, as CLI11
/// expects.
std::string readSize(const std::string& text, platform::Size& size) {
    int width = 0;
    int height = 0;
    const char* const end = text.data() + text.size();
    const auto [cross, noWidth] = std::from_chars(text.data(), end, width);
    const bool crossed = noWidth == std::errc() && cross != end && *cross == 'x';
    const auto [rest, noHeight] = std::from_chars(crossed ? cross + 1 : end, end, height);
    if (noHeight != std::errc() || rest != end || width < 1 || height < 1)
        return "\"" + text + "\" is not a size such as 640x360";
    size = {static_cast<double>(width), static_cast<double>(height)};
    return {};
}

void addInput(CLI::App& app, std::string& input) {
    app.add_option_function<std::string>(
        "INPUT",
        [&input](const std::string& text) {
            if (text.empty())
                throw CLI::ValidationError("INPUT", "names nothing");
            input = text;
        },
        "A picture or a video: a file or a URL (default: the built-in panorama). "
        "Example: https://example.org/tour.mp4");
}

/// Rejects file names of other image formats; only PNG is written.
void addOutput(CLI::App& app, std::string& output) {
    app.add_option_function<std::string>(
           "--output",
           [&output](const std::string& path) {
               const std::string ending = std::filesystem::path(path).extension().string();
               for (const char* other : {".jpg", ".jpeg", ".webp", ".PNG", ".JPG"}) {
                   if (ending == other)
                       throw CLI::ValidationError("--output",
                                                  "pictures are written as .png, not " + ending);
               }
               output = path;
           },
           "The picture to write (a name ending in .png) or the folder for several. "
           "Example: --output picture.png")
        ->required();
}

/// Adds an option for a number from `least` to `most`. CLI::Range is not used, because it accepts
/// NaN.
void addNumber(CLI::App& app, const std::string& name, double least, double most,
               const std::function<void(double)>& take, const std::string& description) {
    app.add_option_function<double>(
        name,
        [=](double number) {
            if (!(number >= least && number <= most))
                throw CLI::ValidationError(name, "not between " + CLI::detail::to_string(least) +
                                                     " and " + CLI::detail::to_string(most));
            take(number);
        },
        description);
}

void addTouchSlop(CLI::App& app, platform::TouchSlop& slop) {
    addNumber(
        app, "--touch-slop", 0, kLargestSlop,
        [&slop](double points) { slop = {.finger = points, .mouse = points}; },
        "How far a touch may wander before it drags, in points (default: 10, a mouse 3). "
        "Example: --touch-slop 5");
}

void addHotSpots(CLI::App& app, std::string& file) {
    app.add_option(
        "--hot-spots", file,
        "Markers to show and to pick, a JSON object. Example: --hot-spots hot-spots.json");
}

void addRenderOptions(CLI::App& app, RenderCommand& render) {
    addInput(app, render.input);
    addOutput(app, render.output);
    app.add_option_function<std::string>(
           "--size",
           [&render](const std::string& text) {
               if (const std::string wrong = readSize(text, render.size); !wrong.empty())
                   throw CLI::ValidationError("--size", wrong);
           },
           "Size of the view in points, WxH. Example: --size 640x360")
        ->required();
    addNumber(
        app, "--scale", 0.1, 16, [&render](double scale) { render.scale = scale; },
        "Pixels per point, 0.1 to 16 (default: 1). Example: --scale 2");
    app.add_option_function<std::string>(
           "--mode",
           [&render](const std::string& name) {
               const auto mode = displayModeNamed(name);
               if (!mode)
                   throw CLI::ValidationError("--mode", "unknown mode \"" + name + "\"");
               render.mode = *mode;
           },
           "plane, sphere, little-planet or side-by-side. Example: --mode little-planet")
        ->default_str("sphere");
    addNumber(
        app, "--time", 0, 1e6, [&render](double seconds) { render.timeSeconds = seconds; },
        "The second that the picture shows (default: 0). Example: --time 2.5");
    app.add_option("--actions", render.actionsFile,
                   "A script of JSON lines to play. Example: --actions tour.jsonl");
    app.add_option("--trace", render.traceFile,
                   "Write what happened as JSON lines. Example: --trace trace.jsonl");
    addTouchSlop(app, render.touchSlop);
    addHotSpots(app, render.hotSpotsFile);
}

void addPlayOptions(CLI::App& app, PlayCommand& play) {
    addInput(app, play.input);
    addTouchSlop(app, play.touchSlop);
    addHotSpots(app, play.hotSpotsFile);
    app.add_option("--record", play.recordFile,
                   "Write what is done in the window as a script for render --actions. "
                   "Example: --record tour.jsonl");
    app.add_option("--attitude-trace", play.attitudeTraceFile,
                   "A recording of a device's attitude to steer by, lines of seconds,x,y,z,w. "
                   "Example: --attitude-trace walk.csv");
}

/// The first input or option of the window that precedes `render`; empty if there is none.
std::string strayBeforeRender(const CLI::App& app, const PlayCommand& play) {
    if (!play.input.empty())
        return play.input;
    for (const char* option : {"--touch-slop", "--record", "--attitude-trace", "--hot-spots"}) {
        if (app.count(option) > 0)
            return option;
    }
    return {};
}

} // namespace

std::string pixelsRefusal(platform::Size points, double scale) {
    const auto [shorter, longer] = std::minmax(points.width, points.height);
    if (longer * scale > kLargestSidePx)
        return "is over 16384 pixels a side";
    if (std::lround(shorter * scale) < 1)
        return "is less than a pixel a side";
    return {};
}

Command parseCommandLine(int argc, const char* const* argv) {
    PlayCommand play;
    RenderCommand render;
    CLI::App app("Shows a spherical picture or video in a window; h shows its keys.",
                 "zanto-player");
    app.set_version_flag("--version", versionText());
    addPlayOptions(app, play);
    CLI::App* renderApp = app.add_subcommand("render", "Writes pictures of it without a display.");
    addRenderOptions(*renderApp, render);
    app.footer("Examples:\n"
               "  zanto-player panorama.jpg\n"
               "  zanto-player https://example.org/tour.mp4\n"
               "  zanto-player --hot-spots hot-spots.json --record tour.jsonl panorama.jpg\n"
               "  zanto-player render panorama.jpg --output picture.png --size 1280x720");
    renderApp->footer("Example:\n"
                      "  zanto-player render panorama.jpg --output pictures --size 640x360 "
                      "--actions tour.jsonl --trace trace.jsonl");
    try {
        app.parse(argc, argv);
    } catch (const CLI::Success& helpOrVersion) {
        return static_cast<ExitCode>(app.exit(helpOrVersion, std::cout, std::cerr));
    } catch (const CLI::ParseError& wrong) {
        tell(wrong.what());
        return ExitCode::WrongUse;
    }
    if (!renderApp->parsed())
        return play;
    if (const std::string stray = strayBeforeRender(app, play); !stray.empty()) {
        tell("\"" + stray + "\" stands before render; input and options are given after it");
        return ExitCode::WrongUse;
    }
    if (const auto refusal = pixelsRefusal(render.size, render.scale); !refusal.empty()) {
        tell("--size times --scale " + refusal);
        return ExitCode::WrongUse;
    }
    return render;
}
