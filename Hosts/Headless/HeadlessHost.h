#pragma once

#include "Hosts/Embedded/EmbeddedHost.h"
#include "Platform/Foundation/Clock.h"
#include "Platform/Foundation/Export.h"
#include "Platform/Foundation/Geometry.h"
#include "Platform/Foundation/Log.h"
#include "Platform/Foundation/Result.h"

#include <memory>

namespace platform {
class OffscreenTarget;
}

namespace zanto {

class SurfacelessContext;
class WakeUpSignal;

struct HeadlessHostOptions {
    enum class Time {
        Virtual, ///< jumps from deadline to deadline without waiting
        Real,    ///< follows the clock of the machine
    };
    /// In points.
    platform::Size size;
    double scale = 1.0;
    Time time = Time::Virtual;
    platform::TouchSlop touchSlop = {};
    /// Optional. Receives the log lines of this host's players; if it is empty, the sink of the
    /// process receives them.
    platform::LogSink log = {};
};

/// Runs the player without a window: it has its own GL context, a framebuffer that is not shown,
/// and a clock that can be virtual.
///
/// Virtual time stops at every deadline and frame time, and does not advance while work is in
/// progress, so the same calls give the same frames.
///
/// Owner:  the application. Several hosts can exist at the same time.
/// Thread: main.
class ZANTO_EXPORT HeadlessHost {
public:
    /// Errors: `Unavailable` if there is no suitable driver.
    [[nodiscard]] static platform::Result<std::unique_ptr<HeadlessHost>>
    create(const HeadlessHostOptions& options);
    ~HeadlessHost();
    HeadlessHost(const HeadlessHost&) = delete;
    HeadlessHost& operator=(const HeadlessHost&) = delete;

    /// The embedded host underneath, for the view controller, appearance, size and snapshots.
    [[nodiscard]] EmbeddedHost& embedded() { return *embedded_; }

    /// Runs what is due, waits for work in progress, and draws if something has changed.
    void settle();
    /// Advances to an instant, running everything that is due before it, and settles there.
    void advanceTo(platform::Instant instant);
    [[nodiscard]] platform::Instant now() const { return embedded_->now(); }

    /// Destroys the GL context and continues with a new one, as after a context loss.
    ///
    /// Errors: logs an error and returns false if no new context can be created.
    bool replaceContext();

    /// The number of frames presented so far.
    [[nodiscard]] int framesPresented() const { return framesPresented_; }

private:
    HeadlessHost(std::unique_ptr<SurfacelessContext> context, const HeadlessHostOptions& options);
    enum class WaitForWork { No, Yes };
    EmbeddedHostStatus runThisInstant(WaitForWork wait);
    [[nodiscard]] platform::GLBindings bindings();
    void waitForWork();
    void present();
    void makeTarget(platform::SizePx size);

    std::unique_ptr<SurfacelessContext> context_;
    std::shared_ptr<platform::VirtualClock> virtualClock_; // null in real time
    std::shared_ptr<WakeUpSignal> signal_;
    std::unique_ptr<EmbeddedHost> embedded_;
    std::unique_ptr<platform::OffscreenTarget> target_; // destroyed first, while its context exists
    platform::SizePx targetSize_;
    int framesPresented_ = 0;
};

} // namespace zanto
