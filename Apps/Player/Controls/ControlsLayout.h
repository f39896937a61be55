#pragma once

#include "Apps/Player/Controls/Control.h"
#include "Apps/Player/Controls/ControlsState.h"
#include "Platform/Foundation/Geometry.h"

#include <optional>
#include <vector>

/// Where everything is, in points of the window. What there is no room for is left out: nothing
/// leaves the window, the places of the bar do not overlap, and whatever can be pressed is at least
/// 44 points high and wide. In a small window a notice may lie over the bar.
struct ControlsLayout {
    struct Place {
        Control control;
        platform::Rect area;
    };

    /// What can be pressed in the bar at the bottom.
    std::vector<Place> places;
    /// Behind them; empty when there is none.
    platform::Rect panel;
    /// Beside the seek bar: the second that plays, and the length.
    platform::Rect elapsed;
    platform::Rect length;
    /// At the top, one below the other, each with what can be pressed in it; empty when there is
    /// nothing to tell.
    platform::Rect loading;
    platform::Rect loadingBar;
    std::optional<Place> cancel;
    platform::Rect message;
    std::optional<Place> dismiss;

    [[nodiscard]] const platform::Rect* areaOf(Control control) const;
    /// Of the bar at the bottom.
    [[nodiscard]] std::optional<Control> controlAt(platform::Point point) const;
    /// Of what is at the top.
    [[nodiscard]] std::optional<Control> noticeControlAt(platform::Point point) const;
};

[[nodiscard]] ControlsLayout layOutControls(platform::Size window, const ControlsState& state);

[[nodiscard]] bool contains(const platform::Rect& area, platform::Point point);

/// How far along a bar a place is, 0 to 1; and the place of such a fraction.
[[nodiscard]] double fractionAt(const platform::Rect& bar, double x);
[[nodiscard]] double placeAt(const platform::Rect& bar, double fraction);
