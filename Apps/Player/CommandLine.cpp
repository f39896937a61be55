#include "Apps/Player/CommandLine.h"

#include "Apps/Player/DisplayModeNames.h"
#include "Apps/Player/Message.h"
#include "HVViewer/Utilities/ZNTMath.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdio>
#include <iostream>
#include <system_error>

namespace {

constexpr double kLargestSidePx = 16384;

std::string versionText() {
    std::array<char, 32> number{};
    std::snprintf(number.data(), number.size(), "%.1f", ZantoPlayerFrameworkVersionNumber);
    return std::string("zanto-player ") + number.data();
}

/// Reads "640x360"; an empty string when it is one, else what is wrong, as the option parser wants.
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
    app.add_option("INPUT", input, "A picture: a file or a URL (default: the built-in panorama)");
}

void addRenderOptions(CLI::App& app, RenderCommand& render) {
    addInput(app, render.input);
    app.add_option("--output", render.output,
                   "The picture to write (a name ending in .png) or the folder for several")
        ->required();
    app.add_option_function<std::string>(
           "--size",
           [&render](const std::string& text) {
               if (const std::string wrong = readSize(text, render.size); !wrong.empty())
                   throw CLI::ValidationError("--size", wrong);
           },
           "Size of the view in points, WxH")
        ->required();
    app.add_option("--scale", render.scale, "Pixels per point")->check(CLI::Range(0.1, 16.0));
    app.add_option_function<std::string>(
           "--mode",
           [&render](const std::string& name) {
               const auto mode = displayModeNamed(name);
               if (!mode)
                   throw CLI::ValidationError("--mode", "unknown mode \"" + name + "\"");
               render.mode = *mode;
           },
           "plane, sphere or little-planet")
        ->default_str("sphere");
    app.add_option("--time", render.timeSeconds, "The second that the picture shows")
        ->check(CLI::Range(0.0, 1e6));
    app.add_option("--actions", render.actionsFile, "A script of JSON lines to play");
    app.add_option("--trace", render.traceFile, "Write what happened as JSON lines");
}

bool fits(const RenderCommand& render) {
    return std::max(render.size.width, render.size.height) * render.scale <= kLargestSidePx;
}

} // namespace

Command parseCommandLine(int argc, const char* const* argv) {
    PlayCommand play;
    RenderCommand render;
    CLI::App app("Shows a spherical picture.", "zanto-player");
    app.set_version_flag("--version", versionText());
    addInput(app, play.input);
    CLI::App* renderApp = app.add_subcommand("render", "Writes pictures of it without a display.");
    addRenderOptions(*renderApp, render);
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
    if (!play.input.empty()) {
        tell("\"" + play.input + "\" stands before render; give the input after it");
        return ExitCode::WrongUse;
    }
    if (!fits(render)) {
        tell("--size times --scale is over 16384 pixels a side");
        return ExitCode::WrongUse;
    }
    return render;
}
