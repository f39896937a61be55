#include "Platform/Motion/MotionManager.h"

#include "Platform/Foundation/MainQueue.h"

#include <algorithm>
#include <utility>

namespace platform {

void MotionManager::setDeviceMotionUpdateInterval(double seconds) {
    // A year: practically never again, and far below the range of an `Instant`.
    constexpr double kLongest = 365.0 * 24 * 60 * 60;
    interval_ = seconds > 0 ? fromSeconds(std::min(seconds, kLongest)) : Instant::zero();
}

bool MotionManager::isDeviceMotionAvailable() const {
    return AttitudeSource::shared().isAvailable();
}

bool MotionManager::isDeviceMotionActive() const {
    return subscription_ && isDeviceMotionAvailable();
}

std::optional<DeviceMotion> MotionManager::deviceMotion() const {
    const auto& latest = AttitudeSource::shared().latest();
    if (!isDeviceMotionActive() || !latest)
        return std::nullopt;
    return DeviceMotion{*latest};
}

void MotionManager::startDeviceMotionUpdates(Handler handler) {
    if (subscription_)
        return;
    handler_ = std::move(handler);
    lastDelivery_.reset();
    subscription_ = AttitudeSource::shared().subscribe([this] { deliver(); });
}

void MotionManager::stopDeviceMotionUpdates() {
    subscription_.reset();
    handler_ = nullptr;
}

void MotionManager::end() {
    const auto handler = handler_;
    stopDeviceMotionUpdates();
    if (handler)
        handler(std::nullopt);
}

void MotionManager::deliver() {
    if (!isDeviceMotionAvailable())
        return end();
    const Instant now = MainQueue::main().now();
    if (lastDelivery_ && now - *lastDelivery_ < interval_)
        return;
    lastDelivery_ = now;
    const auto motion = deviceMotion();
    // A copy, because the handler may stop or destroy the manager.
    const auto handler = handler_;
    if (handler && motion)
        handler(motion);
}

} // namespace platform
