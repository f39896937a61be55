#pragma once

#include "Platform/Foundation/Clock.h"
#include "Platform/Foundation/Environment.h"
#include "Platform/Foundation/Export.h"
#include "Platform/Foundation/Geometry.h"
#include "Platform/Foundation/Log.h"
#include "Platform/Foundation/Result.h"
#include "Platform/Graphics/GLDevice.h"
#include "Platform/Imaging/Image.h"
#include "Platform/Interface/Application.h"
#include "Platform/Interface/Touch.h"
#include "Platform/Motion/AttitudeSource.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>

namespace platform {
class ViewController;
class Window;
} // namespace platform

namespace zanto {

class WakeUpSignal;

/// Options that the host application passes to `EmbeddedHost::create`.
struct EmbeddedHostOptions {
    /// Required: the application's OpenGL ES 2.0 context with OES_vertex_array_object.
    /// `procAddress` is required, `makeCurrent` is optional. Both are kept until the host is
    /// destroyed or the context is replaced.
    platform::GLBindings gl;
    /// The rectangle to fill, in points, and its pixels per point.
    platform::Size size;
    double scale = 1.0;
    /// Optional; null uses the steady clock of the machine.
    std::shared_ptr<const platform::Clock> clock;
    /// The refresh rate of the display; above 0.
    double framesPerSecond = 60.0;
    platform::TouchSlop touchSlop = {};
    /// Optional. Called on any thread when `runDueWork()` is needed earlier than it returned, so it
    /// should only wake the loop of the application. If it is empty, the application must call
    /// `runDueWork()` often enough.
    std::function<void()> wakeUp;
    /// Optional. Receives the log lines of this host's players; if it is empty, the sink of the
    /// process receives them.
    platform::LogSink log = {};
};

/// What the application should do next.
struct EmbeddedHostStatus {
    /// When to call `runDueWork()` again. Without a value, the next call is due after the next
    /// event or wake-up.
    std::optional<platform::Instant> nextDeadline;
    /// Whether there is something new to show at this time; if so, call `draw`.
    bool drawNow = false;
};

/// Puts the player into an application that has its own window, GL context and event loop.
///
/// The application calls `runDueWork()` after every event, after every wake-up, and whenever the
/// deadline that it returned has passed. It calls `draw` when the returned status says so, or with
/// every frame of its own. The library has no loop of its own and never blocks, except in
/// `snapshot` with a virtual clock.
///
/// Several hosts can exist at the same time, each with its own context and its own environment:
/// players of different hosts share nothing. A controller belongs to the host in whose `perform` it
/// is created. If there is only one host, or for the first host, a controller can be created
/// anywhere. The main thread is the one that owns the GL contexts; it is the same for all hosts.
///
/// Owner:  the application. Release the controllers before the host, and the host before its
///         context.
/// Thread: main.
class ZANTO_EXPORT EmbeddedHost {
public:
    /// Errors: `Unavailable` if the context does not meet the requirements.
    [[nodiscard]] static platform::Result<std::unique_ptr<EmbeddedHost>>
    create(EmbeddedHostOptions options);
    ~EmbeddedHost();
    EmbeddedHost(const EmbeddedHost&) = delete;
    EmbeddedHost& operator=(const EmbeddedHost&) = delete;

    /// Runs the block with this host's environment and context current. Objects that it creates
    /// belong to this host, and functions such as `Screen::mainScreen()` return the objects of this
    /// host.
    void perform(const std::function<void()>& block);
    [[nodiscard]] const std::shared_ptr<platform::Environment>& environment() const {
        return environment_;
    }

    /// Loads the controller's view into the rectangle. Null removes the current controller.
    ///
    /// Errors: logs an error and changes nothing if the controller belongs to another host.
    void setRootViewController(const std::shared_ptr<platform::ViewController>& controller);
    /// Makes the view appear or disappear. The view is drawn in between.
    void appear();
    void disappear();

    /// Reports a new size of the rectangle (which includes a rotation of the device) or a new
    /// number of pixels per point.
    void resize(platform::Size size, double scale);
    /// Reports a new orientation of the device without a change of size.
    void setOrientation(platform::InterfaceOrientation orientation);

    /// Reports a new refresh rate of the display; above 0.
    void setFramesPerSecond(double framesPerSecond);

    /// Reports that a finger or the mouse went down, moved, was lifted or was cancelled. The
    /// location is in points of the rectangle, and `time` is on the clock of `now()`. Gesture
    /// handlers run inside the call; `runDueWork()` is due after it.
    void touch(const platform::TouchEvent& event);
    /// Cancels all touches, for instance because the window has lost the focus. Gestures in
    /// progress are cancelled.
    void cancelTouches();

    /// Reports the current attitude of the device; a sensor is available from then on. Consumers
    /// are notified in a later iteration of the main queue. While device motion is on, frames are
    /// requested by samples only, so samples must continue to come even if the device is at rest.
    /// See docs/embedding.md.
    ///
    /// Errors: logs one line and ignores a sample that is not a rotation.
    void setAttitude(const platform::Attitude& attitude);
    /// Reports whether there is a sensor; it can be called before the first sample.
    void setAttitudeAvailable(bool available);

    /// Reports that the GL context was lost and that a new one is current. All GL names of the lost
    /// context are forgotten without being deleted, and the content is set up again from its
    /// sources; cameras do not change. Do not call any other function between the loss and this
    /// call.
    ///
    /// Errors: logs an error and returns false if the new context does not meet the requirements.
    ///         Nothing is drawn then until a call succeeds.
    bool contextWasReplaced(platform::GLBindings gl);

    /// Runs every block that is due.
    EmbeddedHostStatus runDueWork();
    /// Draws what is visible into a rectangle of a framebuffer, which the application then
    /// presents. docs/embedding.md describes the GL state after the call.
    void draw(std::uint32_t framebuffer, platform::RectPx area);
    /// Whether the background is transparent. If so, the application draws its own content before
    /// every `draw`, and it shows where the player has no content.
    [[nodiscard]] bool isTransparent() const;
    /// Draws a new frame of the rectangle at `scale` pixels per point, in a separate framebuffer. A
    /// video shows the frame for `now()`: players tick for it inside the call, and with a virtual
    /// clock the call waits until that frame is decoded.
    [[nodiscard]] platform::Result<platform::ImagePtr> snapshot(double scale);

    [[nodiscard]] platform::Instant now() const { return clock_->now(); }

private:
    class Call;
    EmbeddedHost(EmbeddedHostOptions options, std::shared_ptr<platform::Environment> environment);
    [[nodiscard]] bool mayDraw(platform::Instant now, bool atInstant);
    void catchUp();

    std::shared_ptr<platform::Environment> environment_;
    std::shared_ptr<const platform::Clock> clock_;
    platform::FrameGrid grid_;
    std::shared_ptr<WakeUpSignal> signal_;
    std::shared_ptr<platform::Window> window_;
    std::optional<platform::Instant> nextPass_;
    std::optional<platform::Instant> lastPassInstant_;
};

} // namespace zanto
