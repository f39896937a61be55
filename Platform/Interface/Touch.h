#pragma once

#include "Platform/Foundation/Clock.h"
#include "Platform/Foundation/Export.h"
#include "Platform/Foundation/Geometry.h"

#include <cstdint>
#include <vector>

namespace platform {

enum class TouchPhase { Down, Move, Up, Cancel };

/// What touches: a finger wanders more than a mouse before it means to drag.
enum class TouchKind { Finger, Mouse };

/// A raw touch as the host reports it.
struct TouchEvent {
    TouchPhase phase = TouchPhase::Down;
    /// Tells the fingers apart that are down at the same time.
    std::int64_t id = 0;
    /// In the window's points.
    Point location;
    TouchKind kind = TouchKind::Finger;
    /// When it happened, on the host's clock.
    Instant time{};
};

/// How far a touch may wander, in points, and still be a tap; from there on it drags.
struct TouchSlop {
    double finger = 10;
    double mouse = 3;
};

/// One finger from down to up: where it has been. Locations are in the window's points.
class ZANTO_EXPORT Touch {
public:
    struct Report {
        Instant time;
        Point location;
    };

    Touch(const TouchEvent& down, double slop);
    void report(const TouchEvent& event);

    [[nodiscard]] std::int64_t id() const { return id_; }
    [[nodiscard]] double slop() const { return slop_; }
    [[nodiscard]] const Report& first() const { return first_; }
    [[nodiscard]] const Report& last() const { return recent_.back(); }
    [[nodiscard]] Instant age() const { return last().time - first().time; }
    /// Points between where it went down and where it is.
    [[nodiscard]] double distance() const;
    /// Points per second over the last tenth of a second, or since it went down if that is shorter:
    /// 0 for a finger that rests. Never measured over less than a sixtieth of a second: times that
    /// are closer say when a report was heard, not when it was made.
    [[nodiscard]] Point velocity() const;

private:
    std::int64_t id_;
    double slop_;
    Report first_;
    std::vector<Report> recent_; // as far back as the velocity looks
};

} // namespace platform
