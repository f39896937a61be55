#include "Tests/Hosts/SDL/SDLInputScene.h"

#include "Hosts/Embedded/EmbeddedHost.h"

#include <chrono>

using platform::TouchEvent;

namespace {

/// So that an event may be older than the clock.
constexpr std::uint32_t kTicksAtZero = 5000;

zanto::SDLFacts factsOf(HeadlessPlayer& player) {
    zanto::SDLFacts facts;
    facts.ticks = [&player] {
        const auto now = std::chrono::floor<std::chrono::milliseconds>(player.host().now());
        return kTicksAtZero + static_cast<std::uint32_t>(now.count());
    };
    facts.touchDeviceType = [](SDL_TouchID device) {
        return device == SDLInputScene::kTrackPad ? SDL_TOUCH_DEVICE_INDIRECT_ABSOLUTE
                                                  : SDL_TOUCH_DEVICE_DIRECT;
    };
    return facts;
}

} // namespace

SDLInputScene::SDLInputScene()
    : player_({160, 90}), input_(player_.embedded(), kWindow, factsOf(player_)) {
    input_.setWindowSize({160, 90});
    input_.setTouchListener([this](const TouchEvent& event) { touches.push_back(event); });
    player_.show(flatPicture(8, 4, 255, 0, 0));
}

void SDLInputScene::stamp(SDL_Event& event, std::uint32_t age) {
    const auto time = std::chrono::floor<std::chrono::milliseconds>(now());
    event.common.timestamp = kTicksAtZero + static_cast<std::uint32_t>(time.count()) - age;
}

void SDLInputScene::dispatchTogether(const std::vector<SDL_Event>& events) {
    auto age = static_cast<std::uint32_t>(events.size());
    for (SDL_Event event : events) {
        stamp(event, --age);
        input_.dispatch(event);
    }
    input_.endPump();
}

void SDLInputScene::dispatch(SDL_Event event, std::uint32_t age) {
    stamp(event, age);
    input_.dispatch(event);
    input_.endPump();
}

SDL_Event SDLInputScene::buttonEvent(Uint32 type, int x, int y, Uint8 button) {
    SDL_Event event{};
    event.type = type;
    event.button.windowID = kWindow;
    event.button.button = button;
    event.button.state = type == SDL_MOUSEBUTTONDOWN ? SDL_PRESSED : SDL_RELEASED;
    event.button.x = x;
    event.button.y = y;
    return event;
}

SDL_Event SDLInputScene::motionEvent(int x, int y) {
    SDL_Event event{};
    event.type = SDL_MOUSEMOTION;
    event.motion.windowID = kWindow;
    event.motion.x = x;
    event.motion.y = y;
    return event;
}

SDL_Event SDLInputScene::wheelEvent(float ticks) {
    SDL_Event event{};
    event.type = SDL_MOUSEWHEEL;
    event.wheel.windowID = kWindow;
    event.wheel.preciseY = ticks;
    event.wheel.y = static_cast<Sint32>(ticks);
    return event;
}

void SDLInputScene::pressMouse(int x, int y, Uint8 button) {
    dispatch(buttonEvent(SDL_MOUSEBUTTONDOWN, x, y, button));
}

void SDLInputScene::releaseMouse(int x, int y, Uint8 button) {
    dispatch(buttonEvent(SDL_MOUSEBUTTONUP, x, y, button));
}

void SDLInputScene::moveMouse(int x, int y) {
    dispatch(motionEvent(x, y));
}

void SDLInputScene::finger(SDL_EventType type, SDL_FingerID id, float x, float y,
                           SDL_TouchID device) {
    SDL_Event event{};
    event.type = type;
    event.tfinger.touchId = device;
    event.tfinger.fingerId = id;
    event.tfinger.windowID = kWindow;
    event.tfinger.x = x;
    event.tfinger.y = y;
    dispatch(event);
}

void SDLInputScene::turnWheel(float ticks, SDL_MouseWheelDirection direction) {
    SDL_Event event = wheelEvent(ticks);
    event.wheel.direction = static_cast<Uint32>(direction);
    dispatch(event);
}

void SDLInputScene::pinchTrackPad(float spread, SDL_TouchID device) {
    SDL_Event event{};
    event.type = SDL_MULTIGESTURE;
    event.mgesture.touchId = device;
    event.mgesture.numFingers = 2;
    event.mgesture.dDist = spread;
    dispatch(event);
}

void SDLInputScene::window(SDL_WindowEventID kind, std::uint32_t id) {
    SDL_Event event{};
    event.type = SDL_WINDOWEVENT;
    event.window.windowID = id;
    event.window.event = static_cast<Uint8>(kind);
    dispatch(event);
}

std::string phasesOf(const std::vector<TouchEvent>& touches) {
    std::string phases;
    for (const TouchEvent& touch : touches)
        phases += "dmuc"[static_cast<int>(touch.phase)];
    return phases;
}
