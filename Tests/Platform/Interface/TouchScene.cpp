#include "Tests/Platform/Interface/TouchScene.h"

#include "Platform/Foundation/Screen.h"

using namespace platform;

namespace {

TouchEvent eventOf(TouchPhase phase, std::int64_t id, Point location, double milliseconds,
                   TouchKind kind = TouchKind::Finger) {
    return {phase, id, location, kind, fromSeconds(milliseconds / 1000)};
}

void note(GestureLog& log, const GestureRecognizer& recognizer) {
    log.states.push_back(recognizer.state());
    const auto view = recognizer.view();
    log.locations.push_back(view ? recognizer.locationInView(*view) : Point{});
}

void finish(const GestureLog& log, GestureState state) {
    if (log.during)
        log.during(state);
}

} // namespace

TouchScene::TouchScene() {
    Screen::mainScreen().setSize({200, 100}, 1);
    window_->setRootViewController(controller_);
    window_->makeKeyAndVisible();
}

std::shared_ptr<View> TouchScene::add(Rect frame) {
    auto view = make<View>(frame);
    root()->addSubview(view);
    return view;
}

void TouchScene::down(std::int64_t id, Point location, double time, TouchKind kind) {
    window_->touch(eventOf(TouchPhase::Down, id, location, time, kind));
}

void TouchScene::move(std::int64_t id, Point location, double time) {
    window_->touch(eventOf(TouchPhase::Move, id, location, time));
}

void TouchScene::up(std::int64_t id, Point location, double time) {
    window_->touch(eventOf(TouchPhase::Up, id, location, time));
}

void TouchScene::cancel(std::int64_t id, Point location) {
    window_->touch(eventOf(TouchPhase::Cancel, id, location, 0));
}

std::shared_ptr<PanGestureRecognizer> addPan(const std::shared_ptr<View>& view, GestureLog& log,
                                             std::size_t mostTouches) {
    auto pan = make<PanGestureRecognizer>([&log](PanGestureRecognizer& recognizer) {
        note(log, recognizer);
        const auto owner = recognizer.view();
        log.velocities.push_back(owner ? recognizer.velocityInView(*owner) : Point{});
        finish(log, recognizer.state());
    });
    pan->setMaximumNumberOfTouches(mostTouches);
    view->addGestureRecognizer(pan);
    return pan;
}

std::shared_ptr<PinchGestureRecognizer> addPinch(const std::shared_ptr<View>& view,
                                                 GestureLog& log) {
    auto pinch = make<PinchGestureRecognizer>([&log](PinchGestureRecognizer& recognizer) {
        note(log, recognizer);
        log.scales.push_back(recognizer.scale());
        finish(log, recognizer.state());
    });
    view->addGestureRecognizer(pinch);
    return pinch;
}

std::shared_ptr<TapGestureRecognizer> addTap(const std::shared_ptr<View>& view, GestureLog& log) {
    auto tap = make<TapGestureRecognizer>([&log](TapGestureRecognizer& recognizer) {
        note(log, recognizer);
        finish(log, recognizer.state());
    });
    view->addGestureRecognizer(tap);
    return tap;
}
