#pragma once

#include "Platform/Foundation/Export.h"

#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace platform {

/// How a device is turned against its reference frame (z up, x free): the unit quaternion that
/// takes the device's axes (x to the right of its portrait screen, y to the top, z out of it) into
/// that frame.
struct Attitude {
    double x = 0;
    double y = 0;
    double z = 0;
    double w = 1;
    friend bool operator==(const Attitude&, const Attitude&) = default;
};

/// Where attitude samples come from: one a process, filled in by the host. Without a host that
/// fills it in, it stays unavailable.
///
/// Thread: main.
class ZANTO_EXPORT AttitudeSource {
public:
    /// A listener's token: the listener is told until its last holder lets go.
    class Subscription;

    AttitudeSource() = default;
    [[nodiscard]] static AttitudeSource& shared();
    AttitudeSource(const AttitudeSource&) = delete;
    AttitudeSource& operator=(const AttitudeSource&) = delete;

    /// For hosts. A source is available once the host says so or a sample has come; whoever listens
    /// is told when it goes away.
    void setAvailable(bool available);
    [[nodiscard]] bool isAvailable() const { return available_; }
    /// For hosts: a new sample. Whoever listens is told in a later turn of the main queue, once for
    /// all samples that came before that turn. Its length need not be 1, but lies between 0.01 and
    /// 100.
    ///
    /// Errors: any other sample changes nothing; a log line for the first of several in a row.
    void publish(const Attitude& attitude);
    /// For hosts whose sensor costs power: called with whether anybody listens, now and whenever
    /// that changes. Empty: nobody wants to know.
    void setDemandListener(std::function<void(bool)> listener);
    /// For a host that starts anew: no sample, not available, nobody who wants to know. Listeners
    /// stay, but are not told of what came before.
    void reset();

    /// The last sample; it is kept for those who begin to listen later.
    [[nodiscard]] const std::optional<Attitude>& latest() const { return latest_; }
    /// Whether listeners have something to look at: a sample, or that there is no source any more.
    [[nodiscard]] bool hasNews() const { return latest_ || hasGone_; }

    /// Calls the handler for every sample until the token goes, never afterwards; first in the next
    /// turn where the source is available and has a sample already. The handler reads `latest()`,
    /// and may drop its own token or another's, subscribe and publish.
    [[nodiscard]] std::shared_ptr<Subscription> subscribe(std::function<void()> handler);
    [[nodiscard]] bool isWanted() const { return !subscriptions_.empty(); }

private:
    void remove(const Subscription& subscription);
    void tellDemand();
    void tellListeners();

    bool available_ = false;
    bool hasGone_ = false;    // which is told like a sample
    bool hasRefused_ = false; // the last sample
    std::optional<Attitude> latest_;
    std::vector<Subscription*> subscriptions_; // in the order of subscribing; each removes itself
    std::function<void(bool)> demandListener_;
};

} // namespace platform
