#include "Hosts/SDL/SDLWakeUp.h"

namespace zanto {

namespace {

/// SDL never frees event types, so all hosts of the process use the same one.
Uint32 wakeUpType() {
    static const Uint32 type = SDL_RegisterEvents(1);
    return type;
}

} // namespace

SDLWakeUp::SDLWakeUp() : type_(wakeUpType()) {}

void SDLWakeUp::ring() {
    if (pending_.exchange(true))
        return;
    SDL_Event event{};
    event.type = type_;
    // A full queue wakes the loop as well; the next ring tries again.
    if (SDL_PushEvent(&event) != 1)
        pending_ = false;
}

bool SDLWakeUp::take(const SDL_Event& event) {
    if (event.type != type_)
        return false;
    pending_ = false;
    return true;
}

} // namespace zanto
