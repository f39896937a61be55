#pragma once

#include "Hosts/SDL/SDLHost.h"
#include "Hosts/SDL/WindowMetrics.h"
#include "Platform/Foundation/Result.h"

#include <SDL.h>

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

namespace zanto {

/// An SDL window and the OpenGL ES 2.0 context that draws into it.
///
/// Thread: main.
class SDLWindow {
public:
    /// Creates a window that is not shown yet. Errors: `Unavailable`, with the step that failed.
    [[nodiscard]] static platform::Result<std::unique_ptr<SDLWindow>>
    create(const SDLHostOptions& options);
    ~SDLWindow();
    SDLWindow(const SDLWindow&) = delete;
    SDLWindow& operator=(const SDLWindow&) = delete;

    /// Destroys the context and creates a new one. Errors: `Unavailable`; there is no context then.
    [[nodiscard]] std::optional<platform::Error> replaceContext();
    void makeCurrent() const;
    /// The same where another library may have made a context of its own current: SDL would
    /// believe that its context still is.
    void makeCurrentAgain() const;
    [[nodiscard]] static void* procAddress(const char* name);

    [[nodiscard]] Uint32 id() const { return SDL_GetWindowID(window_); }
    [[nodiscard]] WindowMetrics metrics() const;
    /// The refresh rate of the display that the window is on; 60 if SDL does not know it.
    [[nodiscard]] double framesPerSecond() const;
    /// The framebuffer that the window shows.
    [[nodiscard]] std::uint32_t framebuffer() const { return framebuffer_; }

    void show();
    /// Whether the user could see the window's content.
    [[nodiscard]] bool isVisible() const;
    void setTitle(const std::string& title) { SDL_SetWindowTitle(window_, title.c_str()); }
    [[nodiscard]] bool isFullScreen() const;
    void setFullScreen(bool fullScreen);
    /// Presents the frame without waiting for the display.
    void swap();

private:
    SDLWindow() = default;
    [[nodiscard]] std::optional<platform::Error> open(const SDLHostOptions& options);
    [[nodiscard]] std::optional<platform::Error> makeContext();

    bool hasVideo_ = false;
    SDL_Window* window_ = nullptr;
    SDL_GLContext context_ = nullptr;
    std::uint32_t framebuffer_ = 0;
    platform::SizePx windowedSize_; // while full screen
};

} // namespace zanto
