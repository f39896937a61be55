#pragma once

#include "Platform/Foundation/Clock.h"

#include <optional>

/// The opacity of the controls: they appear on user input and fade out after a time without input.
/// A function of time only.
class ControlsFade {
public:
    static constexpr platform::Instant kAppear = std::chrono::milliseconds(150);
    static constexpr platform::Instant kRest = std::chrono::seconds(3);
    static constexpr platform::Instant kDisappear = std::chrono::milliseconds(350);

    /// Called on user input.
    void show(platform::Instant now);
    /// Starts to fade the controls out.
    void hide(platform::Instant now);
    /// While held, for example during a press, the controls do not fade; afterwards they stay for
    /// `kRest`.
    void setHeld(bool held, platform::Instant now);

    /// From 0 to 1.
    [[nodiscard]] double opacity(platform::Instant now) const;
    /// Whether the controls can be used: they are visible and not fading out.
    [[nodiscard]] bool isShown(platform::Instant now) const;
    /// When the opacity next changes: `now` during a fade, a later time before fading out, nullopt
    /// if only user input changes it.
    [[nodiscard]] std::optional<platform::Instant> nextChange(platform::Instant now) const;

private:
    bool wasShown_ = false;
    bool isHeld_ = false;
    // when the fade-in began, or would have begun if it had started at opacity 0
    platform::Instant appeared_{};
    platform::Instant goes_{}; // when the fade-out begins unless held
};
