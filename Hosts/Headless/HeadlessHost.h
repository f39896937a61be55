#pragma once

#include "Hosts/Embedded/EmbeddedHost.h"
#include "Platform/Foundation/Clock.h"
#include "Platform/Foundation/Export.h"
#include "Platform/Foundation/Geometry.h"
#include "Platform/Foundation/Log.h"
#include "Platform/Foundation/Result.h"

#include <memory>

class SurfacelessContext;

namespace platform {
class OffscreenTarget;
}

struct HeadlessHostOptions {
    enum class Time {
        Virtual, ///< jumps from deadline to deadline; nothing waits
        Real,    ///< runs with the machine
    };
    /// In points.
    platform::Size size;
    double scale = 1.0;
    Time time = Time::Virtual;
    platform::TouchSlop touchSlop = {};
    /// Receives the log lines of this host's players; empty: the process's sink does.
    platform::LogSink log = {};
};

/// Runs the player without a window: a context of its own, a framebuffer that nobody sees, and time
/// that can be virtual.
///
/// In virtual time the clock stops at every deadline and frame instant, and stands still while work
/// is under way, so the same calls give the same pictures.
///
/// Owner:  the application; any number of hosts at a time.
/// Thread: one, the same for all hosts.
class ZANTO_EXPORT HeadlessHost {
public:
    /// Errors: Unavailable without a driver that can do it.
    [[nodiscard]] static platform::Result<std::unique_ptr<HeadlessHost>>
    create(const HeadlessHostOptions& options);
    ~HeadlessHost();
    HeadlessHost(const HeadlessHost&) = delete;
    HeadlessHost& operator=(const HeadlessHost&) = delete;

    /// The embedding beneath: view controller, appearance, size, snapshots.
    [[nodiscard]] EmbeddedHost& embedded() { return *embedded_; }

    /// Runs what is due now, waits for work under way, and draws what became dirty.
    void settle();
    /// Goes on to an instant, through every deadline before it, and settles there.
    void advanceTo(platform::Instant instant);
    [[nodiscard]] platform::Instant now() const { return embedded_->now(); }

    /// Destroys the GL context and goes on with a new one, as after a loss.
    ///
    /// Errors: false, and a log line, when there is no other.
    bool replaceContext();

    /// How many frames have been presented.
    [[nodiscard]] int framesPresented() const { return framesPresented_; }

private:
    struct WakeUp;
    HeadlessHost(std::unique_ptr<SurfacelessContext> context, const HeadlessHostOptions& options);
    enum class WaitForWork { No, Yes };
    EmbeddedHostStatus runThisInstant(WaitForWork wait);
    [[nodiscard]] platform::GLBindings bindings();
    void waitForWork();
    void present();
    void makeTarget(platform::SizePx size);

    std::unique_ptr<SurfacelessContext> context_;
    std::shared_ptr<platform::VirtualClock> virtualClock_; // null in real time
    std::shared_ptr<WakeUp> wakeUp_;
    std::unique_ptr<EmbeddedHost> embedded_;
    std::unique_ptr<platform::OffscreenTarget> target_; // goes first, while its context is there
    platform::SizePx targetSize_;
    int framesPresented_ = 0;
};
