#pragma once

#include "HVViewer/DisplayController/ZNTDisplayViewController.h"
#include "Hosts/SDL/SDLHost.h"
#include "Platform/Imaging/Image.h"

#include <SDL.h>

#include <memory>

/// A window of SDL's for one test, with a player in it or without.
class SDLScene {
public:
    explicit SDLScene(platform::Size size = {160, 90});
    explicit SDLScene(const zanto::SDLHostOptions& options);

    [[nodiscard]] zanto::SDLHost& host() { return *host_; }
    [[nodiscard]] zanto::EmbeddedHost& embedded() { return host_->embedded(); }
    [[nodiscard]] SDL_Window* window() const { return window_; }
    [[nodiscard]] Uint32 windowId() const { return SDL_GetWindowID(window_); }

    /// Has a player show a picture and waits until the window does.
    void show(const platform::ImagePtr& picture);
    [[nodiscard]] ZNTDisplayViewController& controller() { return *controller_; }
    /// Lets go of the controller, as a host application does.
    void releaseController();
    /// The host goes; whatever else there is stays.
    void endHost() { host_.reset(); }

    /// Takes turns until nothing is left to run, to wait for or to draw.
    void settle();
    /// Has the host act on everything that was pushed. The first turn may end at a mark that an
    /// earlier wait of SDL's has left in the queue.
    void act();
    /// Takes turns for that long; how many.
    int turnsWithin(platform::Instant duration);
    /// What has been drawn into the window.
    [[nodiscard]] platform::ImagePtr windowPicture();

    /// Has an event of this window arrive.
    void push(SDL_WindowEventID kind) const;
    void pushButton(Uint32 type, int x, int y, Uint8 button = SDL_BUTTON_LEFT) const;
    void pushMotion(int x, int y) const;
    void pressKey(SDL_Keycode key, Uint16 modifiers = KMOD_NONE) const;

private:
    std::unique_ptr<zanto::SDLHost> host_;
    SDL_Window* window_;
    std::shared_ptr<ZNTDisplayViewController> controller_;
};
