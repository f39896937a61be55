#pragma once

#include "Platform/Foundation/Clock.h"
#include "Platform/Foundation/Export.h"
#include "Platform/Foundation/Geometry.h"
#include "Platform/Interface/Touch.h"

#include <functional>
#include <memory>
#include <utility>

namespace zanto {

/// Converts the mouse wheel into a pinch gesture: two fingers go down beside the pointer, spread or
/// close with every tick of the wheel, and are lifted shortly after the last tick. They are on a
/// horizontal line.
///
/// Their touch ids are -1 and -2. The receiver is called inside of the functions below, and from
/// blocks on the main queue.
///
/// Thread: main.
class ZANTO_EXPORT WheelPinch {
public:
    using Receiver = std::function<void(const platform::TouchEvent&)>;
    explicit WheelPinch(Receiver receiver) : receiver_(std::move(receiver)) {}

    /// The zoom factor of one tick.
    static constexpr double kFactorOfTick = 1.1;

    /// Multiplies the distance of the fingers by a factor. Puts the fingers down first if they are
    /// not: in a window of the given size, with `center` moved far enough inside. Factors that are
    /// not finite or not above 0 are ignored.
    void spread(double factor, platform::Point center, platform::Size window,
                platform::Instant time);
    /// End the gesture normally, or cancel it.
    void lift(platform::Instant time) { end(platform::TouchPhase::Up, time); }
    void cancel(platform::Instant time) { end(platform::TouchPhase::Cancel, time); }
    [[nodiscard]] bool isDown() const { return static_cast<bool>(gesture_); }

private:
    /// From the first tick to the lift of the fingers.
    struct Gesture {
        platform::Point center;
        double startDistance = 0;
        double factor = 1;
        platform::Instant liftTime{};
    };

    void begin(platform::Point center, platform::Size window, platform::Instant time);
    void end(platform::TouchPhase phase, platform::Instant time);
    void liftLater(platform::Instant delay);
    void tellBoth(platform::TouchPhase phase, const Gesture& gesture, platform::Instant time) const;
    void tell(platform::TouchPhase phase, int finger, const Gesture& gesture,
              platform::Instant time) const;

    Receiver receiver_;
    std::shared_ptr<Gesture> gesture_;
};

} // namespace zanto
