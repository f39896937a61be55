#pragma once

#include "Apps/Player/Controls/Control.h"
#include "Apps/Player/Controls/ControlsState.h"
#include "Platform/Foundation/Geometry.h"

#include <optional>
#include <vector>

/// The positions of all controls, in points of the window. Controls that do not fit are left out:
/// nothing extends beyond the window, the controls of the bar do not overlap, and each control is
/// at least 44 points high and wide. In a small window a notice may cover the bar.
struct ControlsLayout {
    struct Place {
        Control control;
        platform::Rect area;
    };

    /// The controls of the bar at the bottom.
    std::vector<Place> places;
    /// The background of the bar; empty if there is no bar.
    platform::Rect panel;
    /// The labels beside the seek bar: the current time and the duration.
    platform::Rect elapsed;
    platform::Rect length;
    /// The notices at the top, one below the other, each with its button; empty if there is nothing
    /// to show.
    platform::Rect loading;
    platform::Rect loadingBar;
    std::optional<Place> cancel;
    platform::Rect message;
    std::optional<Place> dismiss;

    [[nodiscard]] const platform::Rect* areaOf(Control control) const;
    /// Only controls of the bar at the bottom.
    [[nodiscard]] std::optional<Control> controlAt(platform::Point point) const;
    /// Only controls of the notices at the top.
    [[nodiscard]] std::optional<Control> noticeControlAt(platform::Point point) const;
};

[[nodiscard]] ControlsLayout layOutControls(platform::Size window, const ControlsState& state);

[[nodiscard]] bool contains(const platform::Rect& area, platform::Point point);

/// Convert a position on a slider to a fraction from 0 to 1, and back.
[[nodiscard]] double fractionAt(const platform::Rect& bar, double x);
[[nodiscard]] double placeAt(const platform::Rect& bar, double fraction);
