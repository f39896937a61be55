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

/// What a host application brings.
struct EmbeddedHostOptions {
    /// The application's OpenGL ES 2.0 context with OES_vertex_array_object.
    platform::GLBindings gl;
    /// The rectangle to fill, in points, and its pixels per point.
    platform::Size size;
    double scale = 1.0;
    /// Null: the machine's steady clock.
    std::shared_ptr<const platform::Clock> clock;
    /// Refreshes of the display.
    double framesPerSecond = 60.0;
    platform::TouchSlop touchSlop = {};
    /// Called when `runDueWork()` is wanted earlier than it said; from any thread, so it should
    /// only wake the application's loop. Empty: the application calls `runDueWork()` often enough.
    std::function<void()> wakeUp;
    /// Receives the log lines of this host's players; empty: the process's sink does.
    platform::LogSink log = {};
};

/// What the host application should do next.
struct EmbeddedHostStatus {
    /// When to call `runDueWork()` again; none: after the next event or wake-up.
    std::optional<platform::Instant> nextDeadline;
    /// There is something new to show, and its time has come: call `draw`.
    bool drawNow = false;
};

/// Puts the player into an application that has its own window, GL context and loop.
///
/// The application calls `runDueWork()` after every event and wake-up and whenever the deadline
/// that it returned has come, and `draw` when it says so (or with every frame of its own). The
/// library owns no loop and never waits.
///
/// Several hosts may be alive at a time, each with a context and an environment of its own: players
/// of one share nothing with players of another. A controller belongs to the host in whose
/// `perform` it is made; while only one host is alive, or for the first one, it may be made
/// anywhere.
///
/// Owner:  the application. Controllers are released before it, it before the context.
/// Thread: one, the contexts'; the same for all hosts.
class ZANTO_EXPORT EmbeddedHost {
public:
    /// Errors: Unavailable when the context is not what is needed.
    [[nodiscard]] static platform::Result<std::unique_ptr<EmbeddedHost>>
    create(EmbeddedHostOptions options);
    ~EmbeddedHost();
    EmbeddedHost(const EmbeddedHost&) = delete;
    EmbeddedHost& operator=(const EmbeddedHost&) = delete;

    /// Runs the block with this host's environment and context current: what it makes belongs to
    /// this host, and `Screen::mainScreen()` and their like answer for it.
    void perform(const std::function<void()>& block);
    [[nodiscard]] const std::shared_ptr<platform::Environment>& environment() const {
        return environment_;
    }

    /// Loads the controller's view into the rectangle; null takes the present one out.
    ///
    /// Errors: a log line for a controller that belongs to another host; nothing changes then.
    void setRootViewController(const std::shared_ptr<platform::ViewController>& controller);
    /// The view appears, or disappears; it is drawn in between.
    void appear();
    void disappear();

    /// The rectangle has another size, as if the device had been turned, or other pixels a point.
    void resize(platform::Size size, double scale);
    /// The device is held another way without a change of size.
    void setOrientation(platform::InterfaceOrientation orientation);

    /// The rectangle is on a display of another rate now; above 0.
    void setFramesPerSecond(double framesPerSecond);

    /// A finger or the mouse went down, moved, was lifted or was lost: in points of the rectangle,
    /// `time` as `now()` counts. Gestures act inside the call; `runDueWork()` is due after it.
    void touch(const platform::TouchEvent& event);
    /// All fingers are lost, for instance because the window is no longer in front: gestures end
    /// without having happened.
    void cancelTouches();

    /// How the device is turned now; it is there from then on. Whoever steers by it learns of it in
    /// a later turn. Samples are expected to go on coming while the device is in use, also when it
    /// rests: while the device steers they are what asks for frames. See docs/embedding.md.
    ///
    /// Errors: a sample that is not a rotation is ignored, with one log line.
    void setAttitude(const platform::Attitude& attitude);
    /// Whether there is a sensor at all, known before its first sample.
    void setAttitudeAvailable(bool available);

    /// The context was lost and another one is current now. Every GL name of the lost one is
    /// forgotten without being deleted, and what was shown is set up again from where it came;
    /// cameras stay as they are. Between the loss and this call, nothing else is called.
    ///
    /// Errors: false, and a log line, when the new context is not what is needed; nothing is drawn
    ///         until another one is brought.
    bool contextWasReplaced(platform::GLBindings gl);

    /// Runs every block whose time has come.
    EmbeddedHostStatus runDueWork();
    /// Draws what is visible into a rectangle of a framebuffer; the application presents it. The
    /// library's GL state is left as docs/embedding.md says.
    void draw(std::uint32_t framebuffer, platform::RectPx area);
    /// With a transparent background the application's own drawing shows through where no content
    /// is: it draws that before every `draw`.
    [[nodiscard]] bool isTransparent() const;
    /// A fresh frame of the rectangle at `scale` pixels a point, in a framebuffer of its own. A
    /// video shows the frame that belongs to `now()`: players tick for it inside the call, and with
    /// a virtual clock the call waits until that frame is decoded.
    [[nodiscard]] platform::Result<platform::ImagePtr> snapshot(double scale);

    [[nodiscard]] platform::Instant now() const { return clock_->now(); }

private:
    struct WakeUp;
    class Call;
    EmbeddedHost(EmbeddedHostOptions options, std::shared_ptr<platform::Environment> environment);
    [[nodiscard]] bool mayDraw(platform::Instant now, bool atInstant);
    void catchUp();

    std::shared_ptr<platform::Environment> environment_;
    std::shared_ptr<const platform::Clock> clock_;
    platform::FrameGrid grid_;
    std::shared_ptr<WakeUp> wakeUp_;
    std::shared_ptr<platform::Window> window_;
    std::optional<platform::Instant> nextPass_;
    std::optional<platform::Instant> lastPassInstant_;
};
