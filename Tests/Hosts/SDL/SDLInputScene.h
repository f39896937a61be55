#pragma once

#include "HVViewer/Model/ZNTInterractor.h"
#include "Hosts/SDL/SDLInput.h"
#include "Tests/Support/HeadlessPlayer.h"

#include <SDL.h>

#include <cstdint>
#include <string>
#include <vector>

/// What comes of SDL's events over a window of 160 by 90 points, in virtual time and without a
/// window: SDL's counter goes with the host's clock.
class SDLInputScene {
public:
    static constexpr std::uint32_t kWindow = 7;
    static constexpr SDL_TouchID kScreen = 100;
    static constexpr SDL_TouchID kOtherScreen = 200;
    static constexpr SDL_TouchID kTrackPad = 300;

    SDLInputScene();

    [[nodiscard]] zanto::SDLInput& input() { return input_; }
    [[nodiscard]] HeadlessPlayer& player() { return player_; }
    [[nodiscard]] ZNTInterractor& camera() { return *player_.view().interractor(); }
    [[nodiscard]] platform::Instant now() { return player_.host().now(); }
    void advance(platform::Instant span) { player_.host().advanceTo(now() + span); }

    void pressMouse(int x, int y, Uint8 button = SDL_BUTTON_LEFT);
    void releaseMouse(int x, int y, Uint8 button = SDL_BUTTON_LEFT);
    void moveMouse(int x, int y);
    /// Across a window of width and height 1.
    void finger(SDL_EventType type, SDL_FingerID id, float x, float y,
                SDL_TouchID device = kScreen);
    void turnWheel(float ticks, SDL_MouseWheelDirection direction = SDL_MOUSEWHEEL_NORMAL);
    void pinchTrackPad(float spread, SDL_TouchID device = kTrackPad);
    void window(SDL_WindowEventID kind, std::uint32_t id = kWindow);
    /// Events that SDL has collected at once, and stamped a millisecond apart.
    void dispatchTogether(const std::vector<SDL_Event>& events);
    /// An event as it is but for its time, which is `age` milliseconds ago.
    void dispatch(SDL_Event event, std::uint32_t age = 0);

    [[nodiscard]] static SDL_Event buttonEvent(Uint32 type, int x, int y,
                                               Uint8 button = SDL_BUTTON_LEFT);
    [[nodiscard]] static SDL_Event motionEvent(int x, int y);
    [[nodiscard]] static SDL_Event wheelEvent(float ticks);

    /// What the host was told of.
    std::vector<platform::TouchEvent> touches;

private:
    void stamp(SDL_Event& event, std::uint32_t age);

    HeadlessPlayer player_;
    zanto::SDLInput input_;
};

/// The phases of touches in order, as letters: d, m, u, c.
[[nodiscard]] std::string phasesOf(const std::vector<platform::TouchEvent>& touches);
