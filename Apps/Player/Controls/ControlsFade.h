#pragma once

#include "Platform/Foundation/Clock.h"

#include <optional>

/// How much of the controls is to be seen: they appear when somebody stirs, and fade once nobody
/// has stirred for a while. A function of time alone.
class ControlsFade {
public:
    static constexpr platform::Instant kAppear = std::chrono::milliseconds(150);
    static constexpr platform::Instant kRest = std::chrono::seconds(3);
    static constexpr platform::Instant kDisappear = std::chrono::milliseconds(350);

    /// Somebody has stirred.
    void show(platform::Instant now);
    /// They are not wanted any more.
    void hide(platform::Instant now);
    /// While somebody is at them they do not fade; afterwards they rest as ever.
    void setHeld(bool held, platform::Instant now);

    /// 0 to 1.
    [[nodiscard]] double opacity(platform::Instant now) const;
    /// Whether they can be used: there, and not on their way out.
    [[nodiscard]] bool isShown(platform::Instant now) const;
    /// When the opacity is another next: now while it changes, later while it rests, none when only
    /// somebody's stirring brings a change.
    [[nodiscard]] std::optional<platform::Instant> nextChange(platform::Instant now) const;

private:
    bool wasShown_ = false;
    bool isHeld_ = false;
    platform::Instant appeared_{}; // when they began to, were they to have come from nothing
    platform::Instant goes_{};     // when they begin to fade, unless they are held
};
