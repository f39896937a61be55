#pragma once

#include "Apps/Player/Scripts/Action.h"
#include "Platform/Foundation/Clock.h"
#include "Platform/Interface/Touch.h"
#include "Platform/Motion/AttitudeSource.h"

#include <nlohmann/json.hpp>

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <ostream>

/// Writes what is done to a player as an action script that `render` plays back to the same camera.
///
/// Every line is out of the program's hands once it is written. Touches keep their instants to the
/// nanosecond, for their velocities hang on them; what comes with an instant before the last line's
/// is taken to have come with that one.
///
/// Owner:  the stream outlives it. Thread: main.
class Recorder {
public:
    using Now = std::function<platform::Instant()>;

    Recorder(std::ostream& script, Now now);
    ~Recorder();
    Recorder(const Recorder&) = delete;
    Recorder& operator=(const Recorder&) = delete;

    /// The view appears in a window of that size: second 0. Nothing is written before. From here on
    /// the process's attitude samples are, where they differ.
    void begin(platform::Size size);
    /// A touch as the library gets it; one that the library would not understand is left out.
    void touch(const platform::TouchEvent& event);
    /// Anything else that a script can say, now. Device motion is written as on once there is an
    /// attitude, for without one a script has no device.
    void note(const decltype(Action::what)& what);

private:
    struct Sample {
        platform::Instant at;
        platform::Attitude attitude;
    };

    [[nodiscard]] platform::Instant sinceBegin(platform::Instant instant) const;
    void takeAttitude();
    void writeAttitude(platform::Instant latest);
    void write(platform::Instant at, const nlohmann::ordered_json& line);
    [[nodiscard]] std::optional<std::int64_t> idOf(const platform::TouchEvent& event);

    std::ostream& script_;
    Now now_;
    bool isRecording_ = false;
    platform::Instant start_{};
    platform::Instant last_{}; // of the lines
    std::int64_t touches_ = 0;
    std::map<std::int64_t, std::int64_t> down_; // from the host's ids to the script's
    /// The newest sample, until another line follows or another sample replaces it: a touch that
    /// the host learns of late may have to come before it.
    std::optional<Sample> waiting_;
    std::optional<platform::Attitude> lastAttitude_; // written or waiting
    bool wantsDeviceMotion_ = false;
    std::shared_ptr<platform::AttitudeSource::Subscription> attitudes_;
};
