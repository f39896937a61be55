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

/// Records the actions on a player as a script. `render` plays it back to the same camera.
///
/// Each line is flushed as soon as it is written. Touches keep their times to the nanosecond,
/// because velocities depend on them. An action with a time before that of the last line gets the
/// time of that line.
///
/// Owner:  the stream must outlive the recorder. Thread: main.
class Recorder {
public:
    using Now = std::function<platform::Instant()>;

    Recorder(std::ostream& script, Now now);
    ~Recorder();
    Recorder(const Recorder&) = delete;
    Recorder& operator=(const Recorder&) = delete;

    /// The view appears in a window of this size: this is second 0, and nothing is written before
    /// it. From now on, attitude samples that differ from the one before are recorded.
    void begin(platform::Size size);
    /// Records a touch as the library receives it; a touch that the library would ignore is left
    /// out.
    void touch(const platform::TouchEvent& event);
    /// Records any other action, at the current time. Switching device motion on is written once
    /// there is an attitude, because without one a script has no device.
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
    platform::Instant last_{}; // time of the last line
    std::int64_t touches_ = 0;
    std::map<std::int64_t, std::int64_t> down_; // maps the host's ids to the script's
    /// The newest sample. It is written when another line follows or another sample arrives,
    /// because a touch that the host reports late may have to precede it.
    std::optional<Sample> waiting_;
    std::optional<platform::Attitude> lastAttitude_; // the last one written or waiting
    bool wantsDeviceMotion_ = false;
    std::shared_ptr<platform::AttitudeSource::Subscription> attitudes_;
};
