#pragma once

#include "Tests/Support/DirectionPanorama.h"
#include "Tests/Support/HeadlessPlayer.h"

/// A player in landscape that shows a picture whose every direction has a colour of its own.
struct ShownPanorama : HeadlessPlayer {
    explicit ShownPanorama(platform::Size size = {322, 180}) : HeadlessPlayer(size) {
        show(directionPanorama(1024));
    }
    [[nodiscard]] ZNTDisplayView& second() { return *controller().virtualDisplayView(); }
    void advance(platform::Instant span) { host().advanceTo(host().now() + span); }
    /// A finger, at the present time.
    void touch(platform::TouchPhase phase, platform::Point location) {
        embedded().touch({phase, 1, location, platform::TouchKind::Finger, host().now()});
    }
    /// A drag to the right that is lifted at full speed, so that the camera coasts.
    void flick();
};

/// Columns of a picture, from `left` on.
[[nodiscard]] platform::ImagePtr columnsOf(const platform::Image& picture, int left, int widthPx);
