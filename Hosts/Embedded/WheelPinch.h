#pragma once

#include "Platform/Foundation/Clock.h"
#include "Platform/Foundation/Export.h"
#include "Platform/Foundation/Geometry.h"
#include "Platform/Interface/Touch.h"

#include <functional>
#include <memory>
#include <utility>

/// Zooms without a touch screen: two fingers, level, that are set down around the pointer, spread
/// or close with every tick of the wheel and are lifted a little after the last one.
///
/// Their ids are -1 and -2.
///
/// Thread: main. The receiver is called inside, and in turns of the main queue.
class ZANTO_EXPORT WheelPinch {
public:
    using Receiver = std::function<void(const platform::TouchEvent&)>;
    explicit WheelPinch(Receiver receiver) : receiver_(std::move(receiver)) {}

    /// How much a tick zooms in.
    static constexpr double kFactorOfTick = 1.1;

    /// Spreads the fingers by a factor, after setting them down in a window of that size if they
    /// are not; `center` is brought inside it. Factors that are not above 0 and finite are ignored.
    void spread(double factor, platform::Point center, platform::Size window,
                platform::Instant time);
    /// Ends the gesture, and ends it without having happened.
    void lift(platform::Instant time) { end(platform::TouchPhase::Up, time); }
    void cancel(platform::Instant time) { end(platform::TouchPhase::Cancel, time); }
    [[nodiscard]] bool isDown() const { return static_cast<bool>(gesture_); }

private:
    /// From the first tick to the lift.
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
