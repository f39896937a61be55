#pragma once

#include "Platform/Foundation/Clock.h"
#include "Platform/Foundation/Export.h"
#include "Platform/Foundation/Geometry.h"

#include <cstdint>
#include <vector>

namespace platform {

enum class TouchPhase { Down, Move, Up, Cancel };

/// The pointing device: a finger wanders more than a mouse before a drag is meant.
enum class TouchKind { Finger, Mouse };

/// A raw touch event as the host reports it.
struct TouchEvent {
    TouchPhase phase = TouchPhase::Down;
    /// Distinguishes the touches that are down at the same time.
    std::int64_t id = 0;
    /// In the window's points.
    Point location;
    TouchKind kind = TouchKind::Finger;
    /// The time of the event on the host's clock.
    Instant time{};
};

/// The distance in points within which a touch is still a tap; at this distance a drag begins.
struct TouchSlop {
    double finger = 10;
    double mouse = 3;
};

/// One touch from down to up, with its recent positions. Locations are in the window's points.
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
    /// The distance in points from where the touch began to where it is.
    [[nodiscard]] double distance() const;
    /// In points per second over the last tenth of a second, or since the touch began if that is
    /// shorter; 0 for a finger at rest. The span is at least a sixtieth of a second, because times
    /// that are closer are those at which events were received, not those at which they happened.
    [[nodiscard]] Point velocity() const;

private:
    std::int64_t id_;
    double slop_;
    Report first_;
    std::vector<Report> recent_; // as far back as `velocity()` needs them
};

} // namespace platform
