#pragma once

#include "Platform/Foundation/Export.h"
#include "Platform/Foundation/Geometry.h"
#include "Platform/Foundation/InterfaceOrientation.h"

#include <memory>
#include <optional>

namespace platform {

class Window;

/// Posted before and after a change of the content rectangle or of its orientation. The first
/// notification carries the new frame, a `Rect`, under the key.
inline constexpr const char* kWillChangeStatusBarFrame =
    "ApplicationWillChangeStatusBarFrameNotification";
inline constexpr const char* kDidChangeStatusBarFrame =
    "ApplicationDidChangeStatusBarFrameNotification";
inline constexpr const char* kStatusBarFrameUserInfoKey = "ApplicationStatusBarFrameUserInfoKey";

/// The running program as the views see it: its window, and the orientation of the screen.
///
/// Thread: main.
class ZANTO_EXPORT Application {
public:
    [[nodiscard]] static Application& sharedApplication();

    [[nodiscard]] InterfaceOrientation statusBarOrientation() const { return orientation_; }
    /// The content rectangle: there is no status bar to stay clear of.
    [[nodiscard]] Rect statusBarFrame() const { return frame_; }

    [[nodiscard]] std::shared_ptr<Window> keyWindow() const { return window_.lock(); }
    void setKeyWindow(const std::weak_ptr<Window>& window) { window_ = window; }
    /// For hosts: forgets the window and the orientation of an earlier host.
    void startAnew();

    /// Changes the size, as if the device had been rotated. Wider than high is landscape,
    /// everything else portrait; of the two orientations of either, the one that was set last is
    /// used.
    ///
    /// Order:  the will-notification with the new frame; orientation and screen; notification of
    ///         the controller; layout; the did-notification.
    void setContentSize(Size points, double scale);

    /// Rotates the content without a change of size, in the same order.
    void setOrientation(InterfaceOrientation orientation);

private:
    void change(Size points, double scale, InterfaceOrientation orientation);

    InterfaceOrientation orientation_ = InterfaceOrientation::Unknown;
    InterfaceOrientation landscape_ = InterfaceOrientation::LandscapeRight;
    InterfaceOrientation portrait_ = InterfaceOrientation::Portrait;
    Rect frame_;
    std::weak_ptr<Window> window_;
};

} // namespace platform
