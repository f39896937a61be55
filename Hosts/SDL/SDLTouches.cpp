#include "Hosts/SDL/SDLTouches.h"

#include <algorithm>

namespace zanto {

using platform::Instant;
using platform::Point;
using platform::TouchKind;
using platform::TouchPhase;

namespace {

constexpr std::int64_t kMouseId = 0;

Point placeOf(int x, int y) {
    return {static_cast<double>(x), static_cast<double>(y)};
}

} // namespace

void SDLTouches::setHints() {
    SDL_SetHint(SDL_HINT_TOUCH_MOUSE_EVENTS, "0");
    SDL_SetHint(SDL_HINT_MOUSE_TOUCH_EVENTS, "0");
}

void SDLTouches::take(const SDL_MouseButtonEvent& event, Instant time) {
    if (event.which == SDL_TOUCH_MOUSEID || event.button != SDL_BUTTON_LEFT)
        return;
    if (event.state == SDL_PRESSED)
        down(kMouseId, placeOf(event.x, event.y), time);
    else
        lift(TouchPhase::Up, kMouseId, placeOf(event.x, event.y), time);
}

void SDLTouches::take(const SDL_MouseMotionEvent& event, Instant time) {
    if (event.which != SDL_TOUCH_MOUSEID)
        move(kMouseId, placeOf(event.x, event.y), time);
}

void SDLTouches::take(const SDL_TouchFingerEvent& event, platform::Size window, Instant time) {
    if (event.touchId == SDL_MOUSE_TOUCHID)
        return;
    const Finger finger{event.touchId, event.fingerId};
    const Point location{static_cast<double>(event.x) * window.width,
                         static_cast<double>(event.y) * window.height};
    if (event.type == SDL_FINGERDOWN)
        return down(idOf(finger), location, time);
    const auto known = ids_.find(finger);
    if (known == ids_.end())
        return;
    const std::int64_t id = known->second;
    if (event.type == SDL_FINGERMOTION)
        return move(id, location, time);
    ids_.erase(known);
    lift(TouchPhase::Up, id, location, time);
}

std::int64_t SDLTouches::idOf(const Finger& finger) {
    if (const auto known = ids_.find(finger); known != ids_.end())
        return known->second;
    std::int64_t id = kMouseId + 1;
    while (std::any_of(ids_.begin(), ids_.end(),
                       [id](const auto& entry) { return entry.second == id; }))
        ++id;
    return ids_[finger] = id;
}

void SDLTouches::down(std::int64_t id, Point location, Instant time) {
    if (!places_.emplace(id, location).second)
        return;
    tell(TouchPhase::Down, id, location, time);
}

void SDLTouches::move(std::int64_t id, Point location, Instant time) {
    const auto place = places_.find(id);
    if (place == places_.end())
        return;
    place->second = location;
    tell(TouchPhase::Move, id, location, time);
}

void SDLTouches::lift(TouchPhase phase, std::int64_t id, Point location, Instant time) {
    if (places_.erase(id) > 0)
        tell(phase, id, location, time);
}

void SDLTouches::tell(TouchPhase phase, std::int64_t id, Point location, Instant time) const {
    const TouchKind kind = id == kMouseId ? TouchKind::Mouse : TouchKind::Finger;
    receiver_({phase, id, location, kind, time});
}

void SDLTouches::cancelMouse(Instant time) {
    if (const auto place = places_.find(kMouseId); place != places_.end())
        lift(TouchPhase::Cancel, kMouseId, place->second, time);
}

void SDLTouches::cancelAll(Instant time) {
    ids_.clear();
    while (!places_.empty()) {
        const auto [id, location] = *places_.begin();
        lift(TouchPhase::Cancel, id, location, time);
    }
}

} // namespace zanto
