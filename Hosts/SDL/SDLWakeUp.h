#pragma once

#include <SDL.h>

#include <atomic>

namespace zanto {

/// Wakes the event loop with an event of its own type. At most one such event is queued.
///
/// Owner:  shared by the host and by callers of `ring` that may outlive it.
/// Thread: main, except `ring`, which is any; thread-safe.
class SDLWakeUp {
public:
    SDLWakeUp();

    void ring();
    /// Whether the event is a wake-up. If so, the next `ring` sends a new event.
    [[nodiscard]] bool take(const SDL_Event& event);

private:
    Uint32 type_;
    std::atomic<bool> pending_ = false;
};

} // namespace zanto
