#pragma once

#include "Apps/Player/Controls/ControlsClient.h"
#include "Apps/Player/Controls/ControlsFade.h"
#include "Apps/Player/Controls/ControlsLayout.h"
#include "Platform/Foundation/Clock.h"
#include "Platform/Foundation/Geometry.h"
#include "Platform/Interface/Touch.h"

#include <cstdint>
#include <optional>

/// Everything that the painter needs to draw the controls.
struct ControlsPicture {
    ControlsState state;
    ControlsLayout layout;
    /// Of the bar at the bottom.
    double opacity = 0;
    /// Whether the loading notice is shown; content that loads quickly shows none.
    bool showsLoading = false;
    /// How long the notice has been shown; moves an indeterminate progress bar.
    platform::Instant loadingTime{};
    /// The control under the mouse, and the control that is pressed.
    std::optional<Control> pointedAt = {};
    std::optional<Control> pressed = {};
    /// The position of the mouse or the press on the seek bar, from 0 to 1.
    std::optional<double> seekPoint = {};

    /// Whether there is anything to draw.
    [[nodiscard]] bool isEmpty() const {
        return opacity <= 0 && !showsLoading && !state.showsHelp && state.message.empty();
    }
};

/// The behaviour of the controls over the scene, without their appearance: when they are visible,
/// which control is under a finger, and what a press does.
///
/// Owner:  the client must outlive it. Thread: main.
class Controls {
public:
    /// Loading that takes less than this shows no notice.
    static constexpr platform::Instant kLoadingPatience = std::chrono::milliseconds(300);

    explicit Controls(ControlsClient& client) : client_(client) {}

    void setSize(platform::Size size) { size_ = size; }

    /// Returns whether the controls handle the touch, so that the scene must not. The result for
    /// the Down event decides for the whole touch.
    bool touch(const platform::TouchEvent& event, platform::Instant now);
    /// Sets the position of the mouse; nullopt if it has left the window.
    void pointAt(std::optional<platform::Point> point, platform::Instant now);
    /// Shows the controls, as user input does.
    void show(platform::Instant now) { fade_.show(now); }

    [[nodiscard]] ControlsPicture picture(platform::Instant now);
    /// When the picture next changes without user input; `now` during an animation.
    [[nodiscard]] std::optional<platform::Instant> nextChange(platform::Instant now);
    /// Whether anything is visible now, or was in the picture requested last.
    [[nodiscard]] bool isSeen(platform::Instant now) const;
    /// Whether the picture requested last is out of date, apart from changes in the client's state.
    [[nodiscard]] bool isOutdated(platform::Instant now);

private:
    struct Press {
        std::int64_t touch;
        std::optional<Control> control; // nullopt: the panel between the controls
    };
    /// Those parts of a picture that can change while nothing plays.
    struct Look {
        double opacity = 0;
        bool showsLoading = false;
        platform::Instant::rep loadingStep = 0; // animation step of an indeterminate progress bar
        std::optional<Control> pointedAt = {};
        std::optional<Control> pressed = {};
        std::optional<double> seekPoint = {};
        friend bool operator==(const Look&, const Look&) = default;
    };

    [[nodiscard]] bool touchDown(const platform::TouchEvent& event, platform::Instant now);
    void touchMoved(const platform::TouchEvent& event, platform::Instant now);
    void touchEnded(const platform::TouchEvent& event, platform::Instant now);
    void press(std::optional<Control> control, const platform::TouchEvent& event,
               platform::Instant now);
    void activate(Control control);
    void slide(Control bar, double x);
    void noteLoading(const ControlsState& state, platform::Instant now);
    [[nodiscard]] bool showsLoading(platform::Instant now) const;
    [[nodiscard]] Look look(platform::Instant now) const;
    void updateHold(platform::Instant now);
    [[nodiscard]] ControlsLayout layout() const { return layOutControls(size_, client_.state()); }

    ControlsClient& client_;
    platform::Size size_;
    ControlsFade fade_;
    std::optional<Press> press_;
    std::optional<Control> pointedAt_;
    std::optional<double> seekPoint_;
    /// A finger on the scene that may become a tap.
    std::optional<platform::TouchEvent> tap_;
    bool wasShownBeforeTap_ = false;
    std::optional<platform::Instant> loadingSince_;
    bool isLoadingEndless_ = false; // the duration of loading is unknown
    bool wasSeen_ = false;
    Look last_; // of the picture requested last
};
