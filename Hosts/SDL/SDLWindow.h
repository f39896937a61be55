#pragma once

#include "Hosts/SDL/SDLHost.h"
#include "Hosts/SDL/WindowMetrics.h"
#include "Platform/Foundation/Result.h"

#include <SDL.h>

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

/// A window of SDL's and the OpenGL ES 2.0 context that draws into it.
///
/// Thread: the one that made it.
class SDLWindow {
public:
    /// Makes a window that is not shown yet. Errors: Unavailable, with the step that failed.
    [[nodiscard]] static platform::Result<std::unique_ptr<SDLWindow>>
    create(const SDLHostOptions& options);
    ~SDLWindow();
    SDLWindow(const SDLWindow&) = delete;
    SDLWindow& operator=(const SDLWindow&) = delete;

    /// Destroys the context and makes another. Errors: Unavailable, and there is none then.
    [[nodiscard]] std::optional<platform::Error> replaceContext();
    void makeCurrent() const;
    /// The same where another library may have made a context of its own current: SDL would
    /// believe that its context still is.
    void makeCurrentAgain() const;
    [[nodiscard]] static void* procAddress(const char* name);

    [[nodiscard]] Uint32 id() const { return SDL_GetWindowID(window_); }
    [[nodiscard]] WindowMetrics metrics() const;
    /// Refreshes of the display that the window is on; 60 where SDL does not know.
    [[nodiscard]] double framesPerSecond() const;
    /// The one that the window shows.
    [[nodiscard]] std::uint32_t framebuffer() const { return framebuffer_; }

    void show();
    /// Whether somebody could see what is drawn.
    [[nodiscard]] bool isVisible() const;
    void setTitle(const std::string& title) { SDL_SetWindowTitle(window_, title.c_str()); }
    [[nodiscard]] bool isFullScreen() const;
    void setFullScreen(bool fullScreen);
    /// Presents what has been drawn, without waiting for the display.
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
