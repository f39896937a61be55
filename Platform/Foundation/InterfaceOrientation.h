#pragma once

namespace platform {

/// The orientation in which the screen is held. The numeric values are part of the interface.
enum class InterfaceOrientation : int {
    Unknown = 0,
    Portrait = 1,
    PortraitUpsideDown = 2,
    LandscapeRight = 3,
    LandscapeLeft = 4,
};

[[nodiscard]] constexpr bool isPortrait(InterfaceOrientation orientation) {
    return orientation == InterfaceOrientation::Portrait ||
           orientation == InterfaceOrientation::PortraitUpsideDown;
}
[[nodiscard]] constexpr bool isLandscape(InterfaceOrientation orientation) {
    return orientation == InterfaceOrientation::LandscapeRight ||
           orientation == InterfaceOrientation::LandscapeLeft;
}

} // namespace platform
