#pragma once

#include "Hosts/Embedded/EmbeddedHost.h"
#include "Hosts/SDL/KeyPress.h"
#include "Platform/Foundation/Clock.h"
#include "Platform/Foundation/Export.h"
#include "Platform/Foundation/Geometry.h"
#include "Platform/Foundation/Result.h"
#include "Platform/Interface/Touch.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>

struct SDLHostOptions {
    /// UTF-8.
    std::string title;
    /// Of the window's content, in points; while it is full screen, of the window afterwards.
    platform::Size size{1280, 720};
    bool isFullScreen = false;
    platform::TouchSlop touchSlop = {};
};

/// Runs the player in a window of SDL's, with a loop of its own or a turn at a time.
///
/// ```cpp
/// auto host = SDLHost::create({.title = "Panorama"});
/// host.value()->embedded().setRootViewController(player);
/// host.value()->embedded().appear();
/// host.value()->run();
/// ```
///
/// The window appears with the first turn; it can be resized, and its pixels per point follow the
/// display. Frames are drawn when something has changed or the window needs them, at most one a
/// refresh of the display that the window is on, or 60 a second where SDL does not know; none while
/// it is minimised or hidden. Presenting never waits for the display. Mouse, wheel, fingers and
/// sensors reach the library by themselves; docs/embedding.md says as what.
///
/// Owner:  the application; one host at a time.
/// Thread: one, the process's first on some systems; SDL's video and events are used from no other.
class ZANTO_EXPORT SDLHost {
public:
    using KeyListener = std::function<void(const KeyPress&)>;
    using TouchListener = std::function<void(const platform::TouchEvent&)>;
    using SizeListener = std::function<void(platform::Size, double scale)>;
    using Overlay = std::function<void(platform::Size, double scale)>;
    using TouchFilter = std::function<bool(const platform::TouchEvent&)>;
    using PointerListener = std::function<void(std::optional<platform::Point>)>;
    using DropListener = std::function<void(const std::string&)>;

    /// Opens the display and makes the window, not shown yet, and its OpenGL ES 2.0 context. On
    /// Linux the display is what DISPLAY or WAYLAND_DISPLAY name, unless SDL_VIDEODRIVER names a
    /// driver.
    ///
    /// Errors: Unavailable, naming the step and SDL's reason; also when another SDLHost is alive.
    [[nodiscard]] static platform::Result<std::unique_ptr<SDLHost>>
    create(const SDLHostOptions& options);
    ~SDLHost();
    SDLHost(const SDLHost&) = delete;
    SDLHost& operator=(const SDLHost&) = delete;

    /// The embedding beneath: view controller, appearance, snapshots. Its size and its turns are
    /// this host's affair.
    [[nodiscard]] EmbeddedHost& embedded();

    /// Takes turns until `quit()` or until the window is closed.
    void run();
    /// One turn, for a program with a loop of its own: takes every event that SDL has, runs what is
    /// due, presents a frame if there is one to show, then waits for an event, a wake-up or the
    /// next deadline, but for `longest` at most (0: not at all; none: no limit).
    ///
    /// Returns whether to go on: not after `quit()` or once the window has been closed.
    bool turn(std::optional<platform::Instant> longest);
    /// Ends `run()` and all turns to come; from inside a turn, with that turn.
    void quit();

    /// Called inside a turn for every key that goes down in the window; it may do anything but
    /// destroy the host. Empty: nobody listens.
    void setKeyListener(KeyListener listener);

    /// Called inside a turn for every touch event right before the library gets it: fingers, the
    /// left mouse button, and the fingers that stand for the wheel. It may do anything but destroy
    /// the host. Empty: nobody listens.
    void setTouchListener(TouchListener listener);
    /// A touch of the program's own making, as if the machine had reported it: for keys that look
    /// around. Its id is none of the machine's: -100 or less.
    void touch(const platform::TouchEvent& event);
    /// Called after the window's content has another size in points or other pixels a point, and
    /// the library has been told. It may do anything but destroy the host.
    void setSizeListener(SizeListener listener);

    /// Draws over every frame of the library's before it is presented, given the content's size in
    /// points and the pixels per point. The window's framebuffer is bound and the viewport fills
    /// it; docs/embedding.md says which GL state is found and is to be left. Snapshots are without
    /// it. It may do anything but destroy the host. Empty: nothing is drawn over.
    void setOverlay(Overlay overlay);
    /// Asks for a frame at the next frame instant, whether the library has something new to show or
    /// not: for an overlay that has changed.
    void setNeedsFrame();
    /// Asked for every touch of a finger or the left mouse button before anybody else hears of it.
    /// With `true` for its Down the whole touch is the program's: neither the touch listener nor
    /// the library is told. Its other answers count for nothing. It may do anything but destroy the
    /// host. Empty: no touch is the program's.
    void setTouchFilter(TouchFilter filter);
    /// Told where the mouse points whenever it has moved over the window, buttons pressed or not;
    /// none: it has left. It may do anything but destroy the host.
    void setPointerListener(PointerListener listener);
    /// Told of the file, by its path, or of the text that is dropped on the window; of several
    /// things that are dropped together the first. It may do anything but destroy the host.
    void setDropListener(DropListener listener);
    /// Whether the mouse's arrow is to be seen over the window.
    void setPointerShown(bool shown);

    /// For machines without sensors: with it on there is a source of attitudes, and dragging with
    /// the right mouse button turns the device that it stands for, by 90 degrees every 640 points.
    /// With it off nothing more comes of it, and motion is unavailable again if it was before.
    void setEmulatesDevice(bool on);
    [[nodiscard]] bool emulatesDevice() const;

    /// UTF-8.
    void setTitle(const std::string& title);

    [[nodiscard]] bool isFullScreen() const;
    /// Fills the display that the window is on, or goes back to the size before.
    void setFullScreen(bool fullScreen);

    /// Destroys the GL context and sets everything up again in a new one, from the pictures that
    /// are kept: for a program that has learnt that the context is lost.
    ///
    /// Errors: Unavailable, naming the step; until another call succeeds turns only take events.
    [[nodiscard]] std::optional<platform::Error> recreateContext();

    /// How many frames the window has been given.
    [[nodiscard]] int framesPresented() const;

private:
    class Loop;
    explicit SDLHost(std::unique_ptr<Loop> loop);
    std::unique_ptr<Loop> loop_;
};
