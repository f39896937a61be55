#include "Tests/HVViewer/Model/InterractorScene.h"

#include "HVViewer/Utilities/ZNTMath.h"
#include "Platform/Interface/GestureArena.h"
#include "Tests/Support/HeadlessPlayer.h"

#include <algorithm>
#include <cmath>
#include <utility>

using platform::Point;
using platform::TouchPhase;

namespace {

constexpr Point kMiddle{160, 90};

} // namespace

InterractorScene::InterractorScene(platform::Size size, double scale)
    : host_(makeHost(size, scale)), view_(platform::make<platform::View>(platform::Rect{{}, size})),
      delegate_(platform::make<CountingDelegate>()),
      camera_(ZNTInterractor::interractorWithView(view_, delegate_)) {}

int InterractorScene::updates() {
    return std::exchange(delegate_->updates, 0);
}

std::weak_ptr<ZNTInterractor> InterractorScene::release() {
    return std::exchange(camera_, nullptr);
}

void InterractorScene::advance(platform::Instant span) {
    host_->advanceTo(host_->now() + span);
}

void InterractorScene::advanceFrames(int frames) {
    for (int i = 0; i < frames; ++i)
        host_->advanceTo(platform::FrameGrid().after(host_->now()));
}

void InterractorScene::touch(TouchPhase phase, Point point, std::int64_t finger) {
    const platform::TouchEvent event{phase, finger, point, platform::TouchKind::Finger,
                                     host_->now()};
    if (phase == TouchPhase::Down)
        view_->gestures().touchDown(event, 0);
    else if (phase == TouchPhase::Up)
        view_->gestures().touchUp(event);
    else
        view_->gestures().touchMoved(event);
}

void InterractorScene::down(Point point, std::int64_t finger) {
    touch(TouchPhase::Down, point, finger);
}

void InterractorScene::move(Point point, std::int64_t finger) {
    touch(TouchPhase::Move, point, finger);
}

void InterractorScene::up(Point point, std::int64_t finger) {
    touch(TouchPhase::Up, point, finger);
}

void InterractorScene::drag(Point from, Point to) {
    down(from);
    move(from);
    move(to);
}

void InterractorScene::flick(double pointsPerSecond) {
    using namespace std::chrono_literals;
    const double reach = pointsPerSecond * 0.1;
    down({0, 90});
    advance(50ms);
    move({reach / 2, 90});
    advance(50ms);
    move({reach, 90});
    up({reach, 90});
}

void InterractorScene::fling(Point pointsPerSecond) {
    using namespace std::chrono_literals;
    const Point reach{pointsPerSecond.x * 0.1, pointsPerSecond.y * 0.1};
    const Point end{kMiddle.x + reach.x, kMiddle.y + reach.y};
    down(kMiddle);
    advance(50ms);
    move({kMiddle.x + reach.x / 2, kMiddle.y + reach.y / 2});
    advance(50ms);
    move(end);
    up(end);
}

void InterractorScene::pinch(double factor) {
    pinchDistance_ = 50 * factor;
    down({kMiddle.x - 50, kMiddle.y}, 1);
    down({kMiddle.x + 50, kMiddle.y}, 2);
    move({kMiddle.x + 50, kMiddle.y}, 2);
    move({kMiddle.x - pinchDistance_, kMiddle.y}, 1);
    move({kMiddle.x + pinchDistance_, kMiddle.y}, 2);
}

void InterractorScene::liftPinch() {
    up({kMiddle.x - pinchDistance_, kMiddle.y}, 1);
    up({kMiddle.x + pinchDistance_, kMiddle.y}, 2);
}

bool areNear(const GLKMatrix4& one, const GLKMatrix4& other) {
    return std::equal(std::begin(one.m), std::end(one.m), std::begin(other.m),
                      [](float a, float b) { return std::abs(a - b) < 1e-6F; });
}

bool areEqual(const GLKMatrix4& one, const GLKMatrix4& other) {
    return std::equal(std::begin(one.m), std::end(one.m), std::begin(other.m));
}

GLKMatrix4 yawOf(double points) {
    return GLKMatrix4MakeRotation(static_cast<float>(DegToRad(70.0 / 180 * points)), 0, 0, 1);
}

GLKMatrix4 pitchOf(double points) {
    return GLKMatrix4MakeRotation(static_cast<float>(DegToRad(70.0 / 180 * points)), 1, 0, 0);
}
