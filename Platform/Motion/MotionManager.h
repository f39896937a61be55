#pragma once

#include "Platform/Foundation/Clock.h"
#include "Platform/Foundation/Export.h"
#include "Platform/Motion/AttitudeSource.h"

#include <functional>
#include <memory>
#include <optional>

namespace platform {

/// What the device's sensors measure at one time.
struct DeviceMotion {
    Attitude attitude;
    friend bool operator==(const DeviceMotion&, const DeviceMotion&) = default;
};

/// Device motion for one client, from the environment's `AttitudeSource`.
///
/// Owner:  the client; the destructor stops the updates.
/// Thread: main.
class ZANTO_EXPORT MotionManager {
public:
    /// Receives a sample, or `nullopt` in its last call, when the source has become unavailable.
    using Handler = std::function<void(const std::optional<DeviceMotion>&)>;

    MotionManager() = default;
    MotionManager(const MotionManager&) = delete;
    MotionManager& operator=(const MotionManager&) = delete;

    /// The minimum time between two calls of the handler; samples in between are dropped. 0 (the
    /// default), negative or NaN: every sample.
    void setDeviceMotionUpdateInterval(double seconds);

    [[nodiscard]] bool isDeviceMotionAvailable() const;
    [[nodiscard]] bool isDeviceMotionActive() const;

    /// The source's newest sample, even if the handler was not called for it; `nullopt` while
    /// inactive and before the first sample.
    [[nodiscard]] std::optional<DeviceMotion> deviceMotion() const;

    /// Calls the handler for samples until stopped, in loop iterations of its own; the first call
    /// is for the sample that the source has already, if any. Without a source the updates begin
    /// when one arrives. No-op if started already. A source that becomes unavailable ends the
    /// updates with a last call of the handler. The handler may stop, start again and destroy the
    /// manager; an empty one is for clients that only read `deviceMotion()`.
    void startDeviceMotionUpdates(Handler handler);
    void stopDeviceMotionUpdates();

private:
    void deliver();
    void end();

    Instant interval_{0};
    Handler handler_;
    std::optional<Instant> lastDelivery_; // since the latest start
    std::shared_ptr<AttitudeSource::Subscription> subscription_;
};

} // namespace platform
