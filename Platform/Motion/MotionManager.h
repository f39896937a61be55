#pragma once

#include "Platform/Foundation/Clock.h"
#include "Platform/Foundation/Export.h"
#include "Platform/Motion/AttitudeSource.h"

#include <functional>
#include <memory>
#include <optional>

namespace platform {

/// What the device's sensors say at one time.
struct DeviceMotion {
    Attitude attitude;
    friend bool operator==(const DeviceMotion&, const DeviceMotion&) = default;
};

/// Device motion for one user of it, over the process's `AttitudeSource`.
///
/// Owner:  whoever turns motion on; its end stops the updates.
/// Thread: main.
class ZANTO_EXPORT MotionManager {
public:
    /// Given a sample, or none in its last call, when the source has gone away.
    using Handler = std::function<void(const std::optional<DeviceMotion>&)>;

    MotionManager() = default;
    MotionManager(const MotionManager&) = delete;
    MotionManager& operator=(const MotionManager&) = delete;

    /// The least time between two calls of the handler; what comes sooner is dropped. 0, as at
    /// first, below 0 or not a number: as fast as samples come.
    void setDeviceMotionUpdateInterval(double seconds);

    [[nodiscard]] bool isDeviceMotionAvailable() const;
    [[nodiscard]] bool isDeviceMotionActive() const;

    /// The source's newest sample, also one that the handler was not called for; none while
    /// inactive and before the source has any.
    [[nodiscard]] std::optional<DeviceMotion> deviceMotion() const;

    /// Calls the handler for samples until stopped, in turns of the main queue of their own; first
    /// for the sample that the source has kept, if it has one. Without a source the updates begin
    /// when one arrives. Without effect when started already. A source that goes away ends the
    /// updates, with a last call of the handler. The handler may stop, start again and release the
    /// manager; an empty one is for those who only read `deviceMotion()`.
    void startDeviceMotionUpdates(Handler handler);
    void stopDeviceMotionUpdates();

private:
    void deliver();
    void end();

    Instant interval_{0};
    Handler handler_;
    std::optional<Instant> lastDelivery_; // of this run
    std::shared_ptr<AttitudeSource::Subscription> subscription_;
};

} // namespace platform
