#include "Benchmarks/Soak/Moves.h"
#include "Benchmarks/Soak/Scene.h"

#include <chrono>
#include <stdexcept>

using namespace std::chrono_literals;

namespace {

void changeMode(Scene& scene) {
    using enum DisplayMode;
    scene.player().setDisplayMode(
        scene.dice().of(std::vector{Plane, Sphere, LittlePlanet, SideBySide}));
}

void resize(Scene& scene) {
    static const std::vector<platform::Size> sizes{{320, 180}, {180, 320}, {200, 200},
                                                   {400, 225}, {97, 211},  {16, 9}};
    static const std::vector<double> scales{1, 1, 1.5, 2};
    scene.resize(scene.dice().of(sizes), scene.dice().of(scales));
}

void turnScreen(Scene& scene) {
    using enum platform::InterfaceOrientation;
    scene.embedded().setOrientation(
        scene.dice().of(std::vector{Portrait, PortraitUpsideDown, LandscapeRight, LandscapeLeft}));
}

void switchVisibility(Scene& scene) {
    if (scene.isVisible())
        scene.disappear();
    else
        scene.appear();
}

void appearAgain(Scene& scene) {
    scene.disappear();
    scene.appear();
}

void takeSnapshot(Scene& scene) {
    if (const auto picture = scene.embedded().snapshot(scene.dice().real(0.3, 1.5)); !picture)
        throw std::runtime_error("snapshot: " + picture.error().detail);
}

void replacePlayer(Scene& scene) {
    scene.replacePlayer();
}

void loseContext(Scene& scene) {
    if (!scene.host().replaceContext())
        throw std::runtime_error("no context in place of the lost one");
}

void changeRefreshRate(Scene& scene) {
    scene.embedded().setFramesPerSecond(scene.dice().of(std::vector<double>{30, 60, 60, 90}));
}

void wait(Scene& scene) {
    scene.run(std::chrono::milliseconds(scene.dice().whole(100, 500)));
}

} // namespace

Moves hostMoves() {
    return {{"mode", 10, changeMode},
            {"size", 4, resize},
            {"turned screen", 3, turnScreen},
            {"visibility", 3, switchVisibility},
            {"appearing again", 3, appearAgain},
            {"snapshot", 3, takeSnapshot},
            {"controller", 3, replacePlayer},
            {"lost context", 1, loseContext},
            {"refresh rate", 1, changeRefreshRate},
            {"wait", 10, wait}};
}
