#include "Hosts/SDL/SDLWindow.h"

#include <GLES2/gl2.h>

#include <cmath>
#include <cstdlib>
#include <string_view>

namespace zanto {

using platform::Error;
using platform::ErrorCode;
using platform::Result;

namespace {

Error failure(const std::string& step) {
    return {ErrorCode::Unavailable, "SDL: " + step + " failed: " + SDL_GetError()};
}

bool isSet(const char* variable) {
    const char* const value = std::getenv(variable);
    return value != nullptr && *value != '\0';
}

/// The video drivers to try, in order of preference; empty if none. By default SDL also tries
/// drivers whose window is invisible, and a library below it logs errors to standard error.
std::string driversOfThisDesktop() {
    std::string drivers;
    if (isSet("DISPLAY"))
        drivers = "x11";
    if (isSet("WAYLAND_DISPLAY") && isSet("XDG_RUNTIME_DIR"))
        drivers += drivers.empty() ? "wayland" : ",wayland";
    return drivers;
}

bool driverIsGiven() {
    const char* const given = SDL_GetHint(SDL_HINT_VIDEODRIVER);
    return given != nullptr && *given != '\0';
}

std::optional<Error> openVideo() {
    const bool choose = SDL_WasInit(SDL_INIT_VIDEO) == 0 && !driverIsGiven() &&
                        std::string_view(SDL_GetPlatform()) == "Linux";
    if (choose) {
        const std::string drivers = driversOfThisDesktop();
        if (drivers.empty())
            return Error{ErrorCode::Unavailable,
                         "there is no display: neither DISPLAY nor WAYLAND_DISPLAY is set"};
        SDL_SetHintWithPriority(SDL_HINT_VIDEODRIVER, drivers.c_str(), SDL_HINT_OVERRIDE);
    }
    const bool failed = SDL_InitSubSystem(SDL_INIT_VIDEO) != 0;
    if (choose)
        SDL_ResetHint(SDL_HINT_VIDEODRIVER);
    return failed ? std::optional(failure("opening the display")) : std::nullopt;
}

/// SDL reads these when it opens the display and creates the window.
void setHints() {
    // Otherwise X11 provides an ES context of GLX, whose swap interval cannot be set.
    SDL_SetHint(SDL_HINT_OPENGL_ES_DRIVER, "1");
    // A still image should neither keep the screen on nor disable the compositor.
    SDL_SetHint(SDL_HINT_VIDEO_ALLOW_SCREENSAVER, "1");
    SDL_SetHint(SDL_HINT_VIDEO_X11_NET_WM_BYPASS_COMPOSITOR, "0");
}

/// SDL keeps these attributes with the open display.
void askForContext() {
    SDL_GL_ResetAttributes();
    SDL_GL_SetAttribute(SDL_GL_CONTEXT_PROFILE_MASK, SDL_GL_CONTEXT_PROFILE_ES);
    SDL_GL_SetAttribute(SDL_GL_CONTEXT_MAJOR_VERSION, 2);
    SDL_GL_SetAttribute(SDL_GL_CONTEXT_MINOR_VERSION, 0);
    for (const SDL_GLattr colour : {SDL_GL_RED_SIZE, SDL_GL_GREEN_SIZE, SDL_GL_BLUE_SIZE})
        SDL_GL_SetAttribute(colour, 8);
    // Blending leaves alpha below 1, which a desktop must not interpret as a transparent window.
    for (const SDL_GLattr unused : {SDL_GL_ALPHA_SIZE, SDL_GL_DEPTH_SIZE, SDL_GL_STENCIL_SIZE,
                                    SDL_GL_MULTISAMPLEBUFFERS, SDL_GL_MULTISAMPLESAMPLES})
        SDL_GL_SetAttribute(unused, 0);
    SDL_GL_SetAttribute(SDL_GL_DOUBLEBUFFER, 1);
}

} // namespace

Result<std::unique_ptr<SDLWindow>> SDLWindow::create(const SDLHostOptions& options) {
    std::unique_ptr<SDLWindow> window(new SDLWindow());
    if (const auto error = window->open(options))
        return *error;
    return window;
}

std::optional<Error> SDLWindow::open(const SDLHostOptions& options) {
    setHints();
    if (auto error = openVideo())
        return error;
    hasVideo_ = true;
    askForContext();
    windowedSize_ = {static_cast<int>(std::lround(options.size.width)),
                     static_cast<int>(std::lround(options.size.height))};
    Uint32 flags =
        SDL_WINDOW_OPENGL | SDL_WINDOW_RESIZABLE | SDL_WINDOW_ALLOW_HIGHDPI | SDL_WINDOW_HIDDEN;
    if (options.isFullScreen)
        flags |= SDL_WINDOW_FULLSCREEN_DESKTOP;
    window_ =
        SDL_CreateWindow(options.title.c_str(), SDL_WINDOWPOS_UNDEFINED, SDL_WINDOWPOS_UNDEFINED,
                         windowedSize_.width, windowedSize_.height, flags);
    if (!window_)
        return failure("making the window");
    return makeContext();
}

SDLWindow::~SDLWindow() {
    if (context_)
        SDL_GL_DeleteContext(context_);
    if (window_)
        SDL_DestroyWindow(window_);
    if (hasVideo_)
        SDL_QuitSubSystem(SDL_INIT_VIDEO);
}

std::optional<Error> SDLWindow::makeContext() {
    context_ = SDL_GL_CreateContext(window_);
    if (!context_)
        return failure("making the OpenGL ES 2.0 context");
    if (SDL_GL_MakeCurrent(window_, context_) != 0)
        return failure("making the OpenGL ES 2.0 context current");
    // The loop controls the frame rate. With an interval of 1, a covered window may block it for
    // much longer than a frame. A driver without swap intervals does not block, either.
    SDL_GL_SetSwapInterval(0);
    // Not 0 on every system: some show a framebuffer object, which SDL has bound already.
    GLint bound = 0;
    glGetIntegerv(GL_FRAMEBUFFER_BINDING, &bound);
    framebuffer_ = static_cast<std::uint32_t>(bound);
    return std::nullopt;
}

std::optional<Error> SDLWindow::replaceContext() {
    if (context_)
        SDL_GL_DeleteContext(context_);
    askForContext(); // the program may have set other ones
    return makeContext();
}

void SDLWindow::makeCurrent() const {
    SDL_GL_MakeCurrent(window_, context_);
}

void SDLWindow::makeCurrentAgain() const {
    SDL_GL_MakeCurrent(nullptr, nullptr);
    makeCurrent();
}

void* SDLWindow::procAddress(const char* name) {
    return SDL_GL_GetProcAddress(name);
}

WindowMetrics SDLWindow::metrics() const {
    platform::SizePx points;
    WindowMetrics metrics;
    SDL_GetWindowSize(window_, &points.width, &points.height);
    SDL_GL_GetDrawableSize(window_, &metrics.pixels.width, &metrics.pixels.height);
    metrics.points = {static_cast<double>(points.width), static_cast<double>(points.height)};
    return metrics;
}

double SDLWindow::framesPerSecond() const {
    constexpr double usual = 60;
    SDL_DisplayMode mode{};
    const int display = SDL_GetWindowDisplayIndex(window_);
    if (display < 0 || SDL_GetCurrentDisplayMode(display, &mode) != 0 || mode.refresh_rate <= 0)
        return usual;
    return mode.refresh_rate;
}

void SDLWindow::show() {
    SDL_ShowWindow(window_);
}

bool SDLWindow::isVisible() const {
    return (SDL_GetWindowFlags(window_) & (SDL_WINDOW_HIDDEN | SDL_WINDOW_MINIMIZED)) == 0;
}

bool SDLWindow::isFullScreen() const {
    return (SDL_GetWindowFlags(window_) & SDL_WINDOW_FULLSCREEN) != 0;
}

void SDLWindow::setFullScreen(bool fullScreen) {
    if (fullScreen == isFullScreen())
        return;
    if (fullScreen) {
        SDL_GetWindowSize(window_, &windowedSize_.width, &windowedSize_.height);
        SDL_SetWindowFullscreen(window_, SDL_WINDOW_FULLSCREEN_DESKTOP);
        return;
    }
    SDL_SetWindowFullscreen(window_, 0);
    // Without a window manager that restores the size, nothing else does.
    SDL_SetWindowSize(window_, windowedSize_.width, windowedSize_.height);
}

void SDLWindow::swap() {
    SDL_GL_SwapWindow(window_);
}

} // namespace zanto
