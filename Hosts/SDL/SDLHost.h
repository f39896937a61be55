#pragma once

#include "Hosts/Embedded/EmbeddedHost.h"
#include "Hosts/SDL/KeyEvent.h"
#include "Platform/Foundation/Clock.h"
#include "Platform/Foundation/Export.h"
#include "Platform/Foundation/Geometry.h"
#include "Platform/Foundation/Result.h"
#include "Platform/Interface/Touch.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace zanto {

struct SDLHostOptions {
    /// UTF-8.
    std::string title;
    /// The size of the window's content in points. For a full screen window, its size after full
    /// screen ends.
    platform::Size size{1280, 720};
    bool isFullScreen = false;
    platform::TouchSlop touchSlop = {};
};

/// Runs the player in an SDL window, with an event loop of its own or one iteration at a time.
///
/// ```cpp
/// auto host = SDLHost::create({.title = "Panorama"});
/// host.value()->embedded().setRootViewController(player);
/// host.value()->embedded().appear();
/// host.value()->run();
/// ```
///
/// The first iteration shows the window. It can be resized, and its pixels per point follow the
/// display. A frame is drawn when something has changed or the window needs one, at most once per
/// refresh of the window's display (60 a second if SDL does not know the rate), and never while the
/// window is minimised or hidden. Presenting does not wait for the display. Mouse, wheel, touch
/// screen and sensors are handled automatically, as docs/embedding.md describes.
///
/// Each callback below may do anything except destroy the host, and an empty function removes it.
///
/// On some systems, the main thread must be the first thread of the process. No other thread may
/// use SDL's video and events.
///
/// Owner:  the application; one host at a time.
/// Thread: main.
class ZANTO_EXPORT SDLHost {
public:
    using KeyListener = std::function<void(const KeyEvent&)>;
    using TouchListener = std::function<void(const platform::TouchEvent&)>;
    using SizeListener = std::function<void(platform::Size, double scale)>;
    using Overlay = std::function<void(platform::Size, double scale)>;
    using TouchFilter = std::function<bool(const platform::TouchEvent&)>;
    using PointerListener = std::function<void(std::optional<platform::Point>)>;
    using DropListener = std::function<void(const std::string&)>;

    /// Opens the display and creates the window, which is not shown yet, with an OpenGL ES 2.0
    /// context. On Linux, DISPLAY or WAYLAND_DISPLAY names the display, unless SDL_VIDEODRIVER
    /// names a driver.
    ///
    /// Errors: `Unavailable`, with the step and SDL's reason, or if another SDLHost exists.
    [[nodiscard]] static platform::Result<std::unique_ptr<SDLHost>>
    create(const SDLHostOptions& options);
    ~SDLHost();
    SDLHost(const SDLHost&) = delete;
    SDLHost& operator=(const SDLHost&) = delete;

    /// The embedded host underneath, for the view controller, appearance and snapshots. `SDLHost`
    /// itself sets its size and runs its work.
    [[nodiscard]] EmbeddedHost& embedded();

    /// Runs loop iterations until `quit()` is called or the window is closed.
    void run();
    /// Runs one loop iteration, for a program with its own loop: handles all pending SDL events,
    /// runs the work that is due, presents a frame if there is one to show, then waits for an
    /// event, a wake-up or the next deadline. It waits at most `longest` (0: not at all; none: no
    /// limit).
    ///
    /// Returns whether to continue: false after `quit()` and after the window was closed.
    bool turn(std::optional<platform::Instant> longest);
    /// Ends `run()` and prevents further iterations. Inside of an iteration, it is the last one.
    void quit();

    /// Called in the loop iteration for every key press in the window.
    void setKeyListener(KeyListener listener);

    /// Called in the loop iteration for every touch event, just before the library handles it:
    /// fingers, the left mouse button, and the emulated fingers of the mouse wheel.
    void setTouchListener(TouchListener listener);
    /// Injects a touch event of the program, as if an input device had reported it; useful for keys
    /// that look around. Use ids of -100 or less, which no device has.
    void touch(const platform::TouchEvent& event);
    /// Called when the window's content has a new size in points or a new number of pixels per
    /// point, after the library has been resized.
    void setSizeListener(SizeListener listener);

    /// Draws over every frame of the library before it is presented. The arguments are the size of
    /// the content in points and the pixels per point. The framebuffer of the window is bound and
    /// the viewport covers it; docs/embedding.md describes the GL state before and after the call.
    /// Snapshots do not contain the overlay.
    void setOverlay(Overlay overlay);
    /// Requests a frame at the next frame time even if the library has nothing new to show, because
    /// the overlay has changed.
    void setNeedsFrame();
    /// Called first for every touch event of a finger or the left mouse button. If it returns true
    /// for a Down event, the program owns that touch until it ends: neither the touch listener nor
    /// the library receives its events. The return value for other events is ignored.
    void setTouchFilter(TouchFilter filter);
    /// Called with the position of the mouse whenever it moves over the window, with or without a
    /// pressed button. Without a value, the mouse has left the window.
    void setPointerListener(PointerListener listener);
    /// Called with the path of the file, or the text, that is dropped on the window. If several
    /// things are dropped together, only the first one is reported.
    void setDropListener(DropListener listener);
    /// Whether the mouse cursor is visible over the window.
    void setPointerShown(bool shown);

    /// Emulates a motion sensor, for machines without one. While it is on, motion is available, and
    /// dragging with the right mouse button rotates the emulated device by 90 degrees per 640
    /// points. Switching it off makes motion unavailable again, unless it was available before.
    void setEmulatesDevice(bool on);
    [[nodiscard]] bool emulatesDevice() const;

    /// UTF-8.
    void setTitle(const std::string& title);

    [[nodiscard]] bool isFullScreen() const;
    /// Fills the display that the window is on, or restores the previous size.
    void setFullScreen(bool fullScreen);

    /// Destroys the GL context, creates a new one, and sets everything up again from the images
    /// that are kept. Call this when the context was lost.
    ///
    /// Errors: `Unavailable`, with the step that failed. Until a call succeeds, loop iterations
    ///         only handle events.
    [[nodiscard]] std::optional<platform::Error> recreateContext();

    /// The number of frames presented so far.
    [[nodiscard]] int framesPresented() const;

private:
    class Loop;
    explicit SDLHost(std::unique_ptr<Loop> loop);
    std::unique_ptr<Loop> loop_;
};

} // namespace zanto
