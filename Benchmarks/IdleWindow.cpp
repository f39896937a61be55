// Measures the cost of a window that shows a still image while nothing happens: CPU seconds of the
// whole process and frames presented, under a virtual X server; first plain, then in side-by-side
// mode with a device at rest that controls both halves. Prints one JSON object.
//
// zanto-benchmark-idle-window [SECONDS]   (default: 10)

#include "Apps/Player/Contents/BuiltInPanorama.h"
#include "HVViewer/DisplayController/ZNTDisplayViewController.h"
#include "Hosts/SDL/SDLHost.h"
#include "Platform/Foundation/MainQueue.h"
#include "Tests/Support/VirtualDisplay.h"

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <ctime>

using platform::Instant;
using namespace std::chrono_literals;

namespace {

/// The process's counters so far.
struct Reading {
    Instant at{0};
    std::clock_t cpu = 0;
    int frames = 0;
};

Reading readingOf(zanto::SDLHost& host) {
    return {host.embedded().now(), std::clock(), host.framesPresented()};
}

/// Runs the host's loop for a while; returns the number of iterations.
int takeTurns(zanto::SDLHost& host, Instant duration) {
    const Instant end = host.embedded().now() + duration;
    int turns = 0;
    for (Instant now = host.embedded().now(); now < end; now = host.embedded().now()) {
        if (!host.turn(end - now))
            break;
        ++turns;
    }
    return turns;
}

/// Runs until the image is shown and nothing has been drawn for a second.
void waitUntilDrawn(zanto::SDLHost& host) {
    int before = 0;
    do {
        before = host.framesPresented();
        takeTurns(host, 1s);
    } while (host.framesPresented() == 0 || host.framesPresented() != before ||
             platform::MainQueue::main().outstandingWork() > 0);
}

/// Leaves the window idle for that time, once it has come to rest.
void measure(zanto::SDLHost& host, const char* what, Instant duration) {
    waitUntilDrawn(host);
    const Reading before = readingOf(host);
    const int turns = takeTurns(host, duration);
    const Reading after = readingOf(host);
    std::printf("\"%s\": {\"seconds\": %.3f, \"cpu_seconds\": %.6f, \"frames\": %d, "
                "\"turns\": %d, \"frames_before\": %d}",
                what, platform::toSeconds(after.at - before.at),
                static_cast<double>(after.cpu - before.cpu) / CLOCKS_PER_SEC,
                after.frames - before.frames, turns, before.frames);
}

int measureBoth(Instant duration) {
    auto created = zanto::SDLHost::create({.title = "idle"});
    if (!created) {
        std::fprintf(stderr, "idle-window: %s\n", created.error().detail.c_str());
        return 1;
    }
    zanto::SDLHost& host = *created.value();
    const auto controller = platform::make<ZNTDisplayViewController>();
    controller->prepareImage(builtInPanorama());
    host.embedded().setRootViewController(controller);
    host.embedded().appear();
    std::printf("{");
    measure(host, "plain", duration);
    host.setEmulatesDevice(true);
    controller->setDisplayMode(DisplayMode::SideBySide);
    std::printf(", ");
    measure(host, "steered", duration);
    std::printf("}\n");
    return 0;
}

} // namespace

int main(int argc, char** argv) {
    const double seconds = argc > 1 ? std::strtod(argv[1], nullptr) : 10.0;
    const auto display = tests::VirtualDisplay::start();
    if (!display || seconds <= 0) {
        std::fprintf(stderr, display ? "idle-window: how many seconds?\n"
                                     : "idle-window: Xvfb does not start\n");
        return 1;
    }
    setenv("DISPLAY", display->name().c_str(), 1);
    setenv("SDL_VIDEODRIVER", "x11", 1);
    return measureBoth(platform::fromSeconds(seconds));
}
