#include "Apps/Player/Scripts/TouchReaders.h"

#include "Apps/Player/Scripts/ActionNames.h"

#include <string>
#include <utility>

using platform::Point;
using platform::TouchKind;
using platform::TouchPhase;

namespace {

/// The initial distance of each finger from the centre of a pinch, in points.
constexpr double kPinchRadius = 50;
constexpr double kMovesPerSecond = 60;
constexpr double kLongestPinch = 600;

TouchPhase phaseNamed(const std::string& name) {
    for (const auto& [known, phase] : kPhaseNames) {
        if (known == name)
            return phase;
    }
    throw LineRefused("unknown phase \"" + name + "\"");
}

Action touch(double at, TouchPhase phase, std::int64_t id, Point location) {
    return {at, TouchAction{{phase, id, location}}};
}

/// Collects the touches of one pinch.
class Pinch {
public:
    explicit Pinch(const ActionLine& line) : line_(line) {
        const auto center = line.numbers("center", 2, "[x, y]");
        center_ = {center[0], center[1]};
    }

    void both(double at, TouchPhase phase, double factor) {
        for (const int finger : {0, 1})
            one(at, phase, factor, finger);
    }
    void one(double at, TouchPhase phase, double factor, int finger) {
        const double side = finger == 0 ? -kPinchRadius : kPinchRadius;
        actions_.push_back(
            touch(at, phase, line_.ownTouchId(finger), {center_.x + side * factor, center_.y}));
    }
    [[nodiscard]] std::vector<Action> take() { return std::move(actions_); }

private:
    const ActionLine& line_;
    Point center_;
    std::vector<Action> actions_;
};

} // namespace

std::vector<Action> readTouch(const ActionLine& line) {
    Action action = touch(line.at(), phaseNamed(line.text("touch")), line.integer("id"),
                          {line.number("x"), line.number("y")});
    if (line.has("mouse") && line.flag("mouse"))
        std::get<TouchAction>(action.what).event.kind = TouchKind::Mouse;
    return {action};
}

std::vector<Action> readTap(const ActionLine& line) {
    const auto place = line.numbers("tap", 2, "[x, y]");
    const Point location{place[0], place[1]};
    const double at = line.at();
    const std::int64_t id = line.ownTouchId(0);
    return {touch(at, TouchPhase::Down, id, location), touch(at, TouchPhase::Up, id, location)};
}

std::vector<Action> readPinch(const ActionLine& line) {
    const double factor = line.number("pinch");
    if (factor <= 0)
        throw LineRefused("\"pinch\" is not above 0");
    const double over = line.number("over");
    if (over < 0 || over > kLongestPinch)
        throw LineRefused("\"over\" is not between 0 and 600 seconds");
    const double start = line.at();
    Pinch pinch(line);
    pinch.both(start, TouchPhase::Down, 1);
    // The pinch gesture begins with the first move, so that move must not spread the fingers yet.
    pinch.one(start, TouchPhase::Move, 1, 0);
    for (int step = 1; step / kMovesPerSecond < over; ++step) {
        const double elapsed = step / kMovesPerSecond;
        pinch.both(start + elapsed, TouchPhase::Move, 1 + (factor - 1) * elapsed / over);
    }
    pinch.both(start + over, TouchPhase::Move, factor);
    pinch.both(start + over, TouchPhase::Up, factor);
    return pinch.take();
}
