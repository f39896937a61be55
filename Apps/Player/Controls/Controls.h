#pragma once

#include "Apps/Player/Controls/ControlsClient.h"
#include "Apps/Player/Controls/ControlsFade.h"
#include "Apps/Player/Controls/ControlsLayout.h"
#include "Platform/Foundation/Clock.h"
#include "Platform/Foundation/Geometry.h"
#include "Platform/Interface/Touch.h"

#include <cstdint>
#include <optional>

/// Everything that a picture of the controls is made of.
struct ControlsPicture {
    ControlsState state;
    ControlsLayout layout;
    /// Of the bar at the bottom.
    double opacity = 0;
    /// Whether the notice of loading is there; what loads quickly gets none.
    bool showsLoading = false;
    /// How long it has been there, for the bar that nobody knows the length of.
    platform::Instant loadingTime{};
    /// Under the mouse, and under a finger or the pressed button.
    std::optional<Control> pointedAt = {};
    std::optional<Control> pressed = {};
    /// Where on the seek bar either of them is, 0 to 1.
    std::optional<double> seekPoint = {};

    /// Whether there is anything to draw.
    [[nodiscard]] bool isEmpty() const {
        return opacity <= 0 && !showsLoading && !state.showsHelp && state.message.empty();
    }
};

/// The controls over the picture, without their looks: when they are there, what is under a finger,
/// what comes of it.
///
/// Owner:  the client outlives it. Thread: main.
class Controls {
public:
    /// What takes less to load is not spoken of.
    static constexpr platform::Instant kLoadingPatience = std::chrono::milliseconds(300);

    explicit Controls(ControlsClient& client) : client_(client) {}

    void setSize(platform::Size size) { size_ = size; }

    /// Whether the touch is the controls' and not the picture's; what counts is the answer to its
    /// Down.
    bool touch(const platform::TouchEvent& event, platform::Instant now);
    /// Where the mouse is; none: it has left.
    void pointAt(std::optional<platform::Point> point, platform::Instant now);
    /// Has them appear, as somebody's stirring does.
    void show(platform::Instant now) { fade_.show(now); }

    [[nodiscard]] ControlsPicture picture(platform::Instant now);
    /// When the picture is another next, if nobody does anything: now while it moves.
    [[nodiscard]] std::optional<platform::Instant> nextChange(platform::Instant now);
    /// Whether there is something to be seen, or was in the picture that was asked for last.
    [[nodiscard]] bool isSeen(platform::Instant now) const;
    /// Whether the picture that was asked for last is not that of this moment, the client's state
    /// apart.
    [[nodiscard]] bool isOutdated(platform::Instant now);

private:
    struct Press {
        std::int64_t touch;
        std::optional<Control> control; // none: the panel between them
    };
    /// What of a picture can change while nothing plays.
    struct Look {
        double opacity = 0;
        bool showsLoading = false;
        platform::Instant::rep loadingStep = 0; // of the bar that moves
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
    /// A finger on the picture that may yet turn out to be a tap.
    std::optional<platform::TouchEvent> tap_;
    bool wasShownBeforeTap_ = false;
    std::optional<platform::Instant> loadingSince_;
    bool isLoadingEndless_ = false; // nobody knows how long it takes
    bool wasSeen_ = false;
    Look last_; // of the picture that was asked for last
};
