#pragma once

#include "Platform/Foundation/Export.h"

#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace platform {

/// The orientation of a device relative to its reference frame (z up, x arbitrary): the unit
/// quaternion that rotates the device's axes (x to the right of its portrait screen, y to the top,
/// z out of it) into that frame.
struct Attitude {
    double x = 0;
    double y = 0;
    double z = 0;
    double w = 1;
    friend bool operator==(const Attitude&, const Attitude&) = default;
};

/// The environment's source of attitude samples, which a host publishes. Without such a host it
/// stays unavailable.
///
/// Thread: main.
class ZANTO_EXPORT AttitudeSource {
public:
    /// A listener's token: the listener is notified until the last reference to it is released.
    class Subscription;

    AttitudeSource() = default;
    [[nodiscard]] static AttitudeSource& shared();
    AttitudeSource(const AttitudeSource&) = delete;
    AttitudeSource& operator=(const AttitudeSource&) = delete;

    /// For hosts. A source is available once the host says so or a sample has been published;
    /// listeners are notified when it becomes unavailable.
    void setAvailable(bool available);
    [[nodiscard]] bool isAvailable() const { return available_; }
    /// For hosts: publishes a new sample. Listeners are notified in a later loop iteration of the
    /// main queue, once for all samples before it. The length of the quaternion need not be 1, but
    /// is between 0.01 and 100.
    ///
    /// Errors: any other sample changes nothing; a log line for the first of several in a row.
    void publish(const Attitude& attitude);
    /// For hosts whose sensor costs power. The demand listener is called with whether there is any
    /// listener to samples, now and whenever that changes. An empty function removes it.
    void setDemandListener(std::function<void(bool)> listener);
    /// For a host that starts again: removes the sample, the availability and the demand listener.
    /// Listeners to samples stay, but are not notified of earlier samples.
    void reset();

    /// The last sample; it is kept for later listeners.
    [[nodiscard]] const std::optional<Attitude>& latest() const { return latest_; }
    /// Whether there is something for listeners: a sample, or that the source has become
    /// unavailable.
    [[nodiscard]] bool hasNews() const { return latest_ || hasGone_; }

    /// Calls the handler for every sample until the token is released, and never afterwards. The
    /// first call is in the next loop iteration if the source is available and has a sample
    /// already. The handler reads `latest()`; it may release its own token or another one,
    /// subscribe and publish.
    [[nodiscard]] std::shared_ptr<Subscription> subscribe(std::function<void()> handler);
    [[nodiscard]] bool isWanted() const { return !subscriptions_.empty(); }

private:
    void remove(const Subscription& subscription);
    void tellDemand();
    void tellListeners();

    bool available_ = false;
    bool hasGone_ = false;    // became unavailable, which is notified like a sample
    bool hasRefused_ = false; // refused the last sample
    std::optional<Attitude> latest_;
    std::vector<Subscription*> subscriptions_; // in the order of subscribing; each removes itself
    std::function<void(bool)> demandListener_;
};

} // namespace platform
