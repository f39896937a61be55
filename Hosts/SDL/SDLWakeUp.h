#pragma once

#include <SDL.h>

#include <atomic>

/// Gets the loop out of its wait: an event of its own kind, of which one at most is on its way.
///
/// Owner:  shared by the host and whoever may still ring when the host goes.
/// Thread: `ring` any; the rest the loop's.
class SDLWakeUp {
public:
    SDLWakeUp();

    void ring();
    /// Whether an event is the wake-up; from then on the next ring sends another.
    [[nodiscard]] bool take(const SDL_Event& event);

private:
    Uint32 type_;
    std::atomic<bool> pending_ = false;
};
