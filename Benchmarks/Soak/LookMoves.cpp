#include "Benchmarks/Soak/Moves.h"
#include "Benchmarks/Soak/Scene.h"

#include <chrono>
#include <cmath>

using namespace std::chrono_literals;
using platform::Point;
using enum platform::TouchPhase;

namespace {

Point anywhere(Dice& dice) {
    return {dice.real(0, 1), dice.real(0, 1)};
}

void tap(Scene& scene) {
    const Point place = anywhere(scene.dice());
    scene.touch(Down, 1, place);
    scene.touch(Up, 1, place);
}

void drag(Scene& scene) {
    const Point from = anywhere(scene.dice());
    const Point to = anywhere(scene.dice());
    constexpr int steps = 6;
    scene.touch(Down, 1, from);
    for (int i = 1; i <= steps; ++i) {
        scene.run(16ms);
        const double way = static_cast<double>(i) / steps;
        scene.touch(Move, 1, {from.x + way * (to.x - from.x), from.y + way * (to.y - from.y)});
    }
    scene.touch(scene.dice().oneIn(5) ? Cancel : Up, 1, to);
}

void pinch(Scene& scene) {
    const double last = scene.dice().real(0.02, 0.45);
    constexpr int steps = 5;
    const auto both = [&scene](platform::TouchPhase phase, double apart) {
        scene.touch(phase, 1, {0.5 - apart, 0.5});
        scene.touch(phase, 2, {0.5 + apart, 0.5});
    };
    both(Down, 0.2);
    for (int i = 1; i <= steps; ++i) {
        scene.run(16ms);
        both(Move, 0.2 + (last - 0.2) * i / steps);
    }
    both(Up, last);
}

/// The finger stays down until touches are cancelled or a later gesture uses the same id.
void layFinger(Scene& scene) {
    const Point place = anywhere(scene.dice());
    scene.touch(Down, 3, place);
    scene.touch(Move, 3, anywhere(scene.dice()));
}

void cancelTouches(Scene& scene) {
    scene.embedded().cancelTouches();
}

void turnDevice(Scene& scene) {
    const double first = scene.dice().real(-3, 3);
    const int samples = scene.dice().whole(1, 8);
    for (int i = 0; i < samples; ++i) {
        const double half = (first + 0.02 * i) / 2;
        scene.embedded().setAttitude({std::sin(half), 0, 0, std::cos(half)});
        scene.run(10ms);
    }
}

void plugSensor(Scene& scene) {
    scene.embedded().setAttitudeAvailable(!scene.dice().oneIn(3));
}

void switchMotion(Scene& scene) {
    scene.player().turnOnDeviceMotionInterraction(scene.dice().either());
}

void switchGestures(Scene& scene) {
    scene.player().turnOnTouchMotionInterraction(!scene.dice().oneIn(4));
    scene.player().turnOnScaleInterraction(!scene.dice().oneIn(4));
    scene.player().setLockVerticalRotation(scene.dice().either());
}

void setOffset(Scene& scene) {
    scene.player().setSphericalOffset(static_cast<float>(scene.dice().real(-4, 4)));
}

void switchBackground(Scene& scene) {
    scene.player().setEnableTransparentBackground(scene.dice().either());
}

} // namespace

Moves lookMoves() {
    return {{"tap", 5, tap},
            {"drag", 4, drag},
            {"pinch", 3, pinch},
            {"finger left down", 1, layFinger},
            {"cancelled touches", 1, cancelTouches},
            {"turned device", 3, turnDevice},
            {"sensor", 2, plugSensor},
            {"device motion", 2, switchMotion},
            {"gestures", 1, switchGestures},
            {"offset", 1, setOffset},
            {"background", 1, switchBackground}};
}
